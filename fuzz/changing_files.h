// The files that random calls open: valid datasets, and files that cannot be opened. They can change while a
// dataset is open, as when a solver is still writing or files are deleted.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "fuzz/scratch_directory.h"

namespace fuzz {

class ChangingFiles {
 public:
  // Writes all files into `scratch`, which must outlive the object.
  explicit ChangingFiles(const ScratchDirectory& scratch);

  // The paths to open: first the valid datasets, in order.
  const std::vector<std::filesystem::path>& paths() const { return paths_; }

  // Removes, truncates or replaces a file of the valid datasets, depending on `choice`.
  void change(unsigned choice);
  // Restores all files.
  void restore();

 private:
  struct File {
    std::string name;
    std::string bytes;
    bool is_changed = false;
  };

  const ScratchDirectory& scratch_;
  std::vector<File> files_;
  std::vector<std::filesystem::path> paths_;
};

}  // namespace fuzz
