// A copy of a reader library in memory, so that one process can load it a second time.
//
// A reader keeps its state in globals, and the loader knows a file that it has loaded already; a copy is
// another file and gets globals of its own. A namespace of the loader's (dlmopen) would bring a second C++
// runtime along, whose exceptions nobody here could catch; a copy shares the one that is there, and takes no
// place on a disk.
#pragma once

#include <filesystem>

namespace host {

class PrivateCopy {
 public:
  // Throws Error when the library cannot be read or copied.
  explicit PrivateCopy(const std::filesystem::path& library);
  PrivateCopy(const PrivateCopy&) = delete;
  PrivateCopy& operator=(const PrivateCopy&) = delete;
  ~PrivateCopy();

  // What to load; valid while the copy lives, which has to outlive the loaded library.
  std::filesystem::path path() const;

 private:
  int descriptor_;
};

}  // namespace host
