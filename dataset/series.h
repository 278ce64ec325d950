// Series of files: the files "<base>_<cycle>.fld" of a directory are the time steps of one dataset.
#pragma once

#include <string>
#include <vector>

namespace fld {

// The components of a path. The file name follows the last "/" or "\".
struct SeriesName {
  explicit SeriesName(const std::string& path);

  // Whether the first three characters of the extension are "fld" in any case.
  bool has_fld_extension() const;

  std::string directory;  // before the last separator; empty if there is none
  std::string base;       // before the "_" of the cycle; empty without a cycle
  std::string cycle;      // the digits after the last "_"; empty if the name does not end in "_<digits>"
  std::string extension;  // after the last "." of the file name
};

// A file of a series, for sorting.
struct FCYC {
  static bool compare_cyc(const FCYC& a, const FCYC& b) { return a.cyc < b.cyc; }

  std::string name;  // full path
  int cyc = 0;
};

// Appends the files of the series `base` in `dir` and their cycle numbers, in directory order. A name belongs
// to the series if it consists of the base (in any case), "_", digits and any four characters, which are
// taken as the extension. Appends nothing if the directory cannot be opened.
void search_fld(const char* dir, const char* base, std::vector<std::string>& files, std::vector<int>& cycles);

// The paths of the series, sorted by cycle number.
std::vector<std::string> find_series(const std::string& directory, const std::string& base);

}  // namespace fld
