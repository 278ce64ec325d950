// The dataset: the files of a series in time-step order and the catalogue of their quantities.
#pragma once

#include <string>
#include <vector>

#include "dataset/field.h"
#include "dataset/fld_file.h"

namespace fld {

class FLD {
 public:
  // Builds the file list from the file that the user selected: finds its series, validates every file and
  // sets m_transient. Returns 0, -1 (bad extension) or -2 (a file fails validation); messages go to stderr.
  // Throws FLDReadException.
  int searchFLD(const char* fldpath);

  // The paths of the series of the selected file, in time-step order. Returns 0, or -2 for a bad extension.
  int searchFLD(const char* fldpath, std::vector<std::string>& files) const;

  // Validates each file in order and appends it to `fld`. Returns 0, -1 (cannot open), -2 (not an FLD file),
  // -3 (wrong version or dimension) or -5 (the first file lacks node coordinates in a region set).
  int checkFLD(const std::vector<std::string>& files, std::vector<FLDFile>& fld) const;

  // Indexes the quantities of every file (`full`), or of the first file only and uses its index for all
  // files, and builds the catalogue. Returns 0, or -1 if a file cannot be indexed. Throws FLDReadException.
  int seekFLD(bool full);

  // Whether any file's time is greater than 0.
  bool isTransient_inner(const std::vector<FLDFile>& fld) const;

  // The first file with this cycle number, or null.
  const FLDFile* findFLDFileByCycle(int cycle) const;

  // The file whose geometry applies to region set `ioverlap` of file `i`: the base file if it has a motion,
  // otherwise the nearest file at or before `i` with geometry for this region set. Null if there is none.
  const FLDFile* refGeometryFLDFile(int i, int ioverlap) const;

  // The nearest file at or before `i` with geometry for region set `ioverlap`, ignoring motions; null if
  // there is none.
  const FLDFile* nearestGeometryFLDFile(int i, int ioverlap) const;

  // The position of a file of m_fld.
  int index_of(const FLDFile* file) const { return static_cast<int>(file - m_fld.data()); }

  std::vector<FLDFile> m_fld;  // in time-step order
  Field m_field;
  bool m_anyALE = false;     // any file has a motion
  bool m_transient = false;  // any file's time is greater than 0
};

}  // namespace fld
