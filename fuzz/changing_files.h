// The files that random calls open: good datasets, and what cannot be opened. They can change while a dataset
// is open, as when a solver goes on writing or somebody cleans up.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "fuzz/scratch_directory.h"

namespace fuzz {

class ChangingFiles {
 public:
  // Writes all files into `scratch`, which has to outlive the object.
  explicit ChangingFiles(const ScratchDirectory& scratch);

  // What may be opened: the good datasets by their numbers first.
  const std::vector<std::filesystem::path>& paths() const { return paths_; }

  // Removes a file of the good datasets, cuts it, or replaces it by another one, as `choice` says.
  void change(unsigned choice);
  // Every file is again as it was written first.
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
