// The fake reader, loaded, with its call log.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/library.h"

namespace fake {

class Reader {
 public:
  Reader();

  host::Library library;

  // The calls since forget_calls(), one entry each.
  std::vector<std::string> calls() const;
  // The calls whose line begins with `start`.
  std::vector<std::string> calls(const std::string& start) const;
  void forget_calls() const;
  int reads() const;

 private:
  void* symbol(const char* name) const;
};

// The path of a fake dataset; the file does not exist.
std::filesystem::path file(const char* name);

}  // namespace fake
