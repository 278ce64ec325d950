// What can still be said about a file that the reader refuses, found out without the reader.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "inspect/walker.h"

namespace tool {

struct Remains {
  // A title that was found, in file order.
  struct Entry {
    std::uint64_t offset = 0;
    std::int64_t region_set = -1;  // from 0; -1 before the first one
    std::string title;             // UTF-8
    bool is_whole = false;         // it came to its end rule, or has no body
  };

  std::uint64_t size = 0;
  std::vector<Entry> entries;
  std::vector<std::string> problems;  // the first errors and warnings of the structure, in words
  inspect::WalkResult walk;
};

// Empty for a file that cannot be opened or is not an FLD file.
std::optional<Remains> find_remains(const std::string& file);

std::string remains_text(const std::string& file, const std::string& reason, const Remains& remains);
std::string remains_json(const std::string& file, const std::string& reason, const Remains& remains);

}  // namespace tool
