// The list of the files that `fldtool convert` wrote into a folder, kept in that folder, so that a later run
// removes those and nothing else.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace tool {

class WrittenFiles {
 public:
  // Reads the list of the folder, if it has one. Entries that are not names of a step's files are ignored.
  explicit WrittenFiles(const std::filesystem::path& folder);

  // Notes files, relative to the folder, before they are there. Throws CommandError when the list cannot be
  // written.
  void add(const std::set<std::string>& files);

  // Removes the files of the list that are not in `kept` and that begin with `beginning` (all with ""), and
  // then the folders of steps that have become empty.
  void remove_others(const std::set<std::string>& kept, const std::string& beginning);

 private:
  void save() const;

  std::filesystem::path folder_;
  std::set<std::string> files_;
};

}  // namespace tool
