// Series of files: "<base>_<cycle>.fld" in one folder are the time steps of one dataset.
#pragma once

#include <string>
#include <vector>

namespace fld {

// The parts of the picked file's path. The file name is what follows the last "/" or "\".
struct SeriesName {
  explicit SeriesName(const std::string& path);

  // Whether the first three characters of the extension are "fld" in any case.
  bool has_fld_extension() const;

  std::string directory;  // up to the last separator, not included; empty without one
  std::string base;       // before the "_" of the cycle; only with a cycle
  std::string cycle;      // the digits after the last "_" of the name; empty when the name does not end so
  std::string extension;  // what follows the last "." of the file name
};

// One file of a series while it is being put in order.
struct FCYC {
  static bool compare_cyc(const FCYC& a, const FCYC& b) { return a.cyc < b.cyc; }

  std::string name;  // full path
  int cyc = 0;
};

// Appends the files of `dir` that belong to the series of `base`, with their cycle numbers, in the order of
// the folder's listing: names that begin with the base in any case, then "_", then digits up to the last four
// characters, which are taken for the extension whatever they are. A folder that cannot be opened has none.
void search_fld(const char* dir, const char* base, std::vector<std::string>& files, std::vector<int>& cycles);

// The paths of that series in ascending order of their cycle numbers.
std::vector<std::string> find_series(const std::string& directory, const std::string& base);

}  // namespace fld
