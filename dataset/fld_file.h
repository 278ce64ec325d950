// One file of a dataset: its path, its header and, per region set, where its quantities stand.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dataset/file_header.h"
#include "dataset/fld_seek.h"
#include "dataset/fldgeo.h"

namespace fld {

// The result of a geometry that could be read only in part.
inline constexpr int kReadInPart = -5;

class FLDFile : public FLDHeader {
 public:
  explicit FLDFile(std::string path) : m_path(std::move(path)) {}

  // Reads the header and classifies the sections of every region set: sets the header's members and, per
  // region set, the flags and the motion. Returns 0, -1 (cannot open), -2 (not an FLD file) or -3 (wrong
  // version or dimension). Throws FLDReadException.
  int checkSections();

  // Appends one title entry per quantity section to each region set's lists. Results and exceptions as of
  // checkSections, which must have run before and has noted the entries when it could; if not, or if the file
  // has changed since, it is walked once more.
  int seekFLD();

  // Whether any region set has node coordinates, a motion, or overset data.
  bool hasGeometry() const;
  bool hasALE() const;
  bool hasOverset() const;

  // The first quantity of that name in region set `ioverlap`; null when there is none or no such region set.
  const FLDTITLE_Scalar* findSeekScalar(const char* name, int ioverlap) const;
  const FLDTITLE_Vector* findSeekVector(const char* name, int ioverlap) const;

  // Reads region set `region` of this file, as checkSections found it, into `geo`: every section that the
  // file has there replaces what `geo` holds, indices are brought to zero-based numbering, material numbers
  // to positive ones, and elements are counted by type. Returns 0, or writes a message and returns -1 (no
  // such region set), -2 (cannot open), -3 (not an FLD file), -4 (wrong version or dimension) or kReadInPart
  // (the file cannot be read; `geo` keeps what was read before). An allocation failure outside the tracked
  // allocator leaves as std::bad_alloc.
  int readGeometry(int region, FLDGEO& geo) const;

  std::string m_path;
  std::vector<FLDSEEKOverlap> m_overlap;  // region sets in file order

 private:
  void take_noted_sections();
  // How region set `region` is best read.
  Access access_to(size_t region) const;
  // Brings the stream of `file` behind the opening title of region set `region`: where checkSections found it
  // or, when the file has changed since, where a walk finds it. Results and exceptions as of
  // read_file_header.
  int go_to_region_set(const InputFile& file, size_t region) const;

  // Per region set, the quantities that checkSections met; only when seekFLD would find the very same ones.
  std::vector<FLDSEEK> noted_;
  FileStamp checked_;       // of the file that checkSections walked
  int64_t header_end_ = 0;  // offset of its first section
};

}  // namespace fld
