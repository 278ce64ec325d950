// One file of a dataset: its path, its header and, per region set, the index of its quantities.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dataset/file_header.h"
#include "dataset/fld_seek.h"
#include "dataset/fldgeo.h"
#include "dataset/region_set_layout.h"
#include "format/quantity.h"

namespace fld {

// Result of readGeometry after a partial read.
inline constexpr int kReadInPart = -5;

class FLDFile : public FLDHeader {
 public:
  explicit FLDFile(std::string path) : m_path(std::move(path)) {}

  // Reads the header and walks the sections: sets the header's members and, per region set, the flags and the
  // motion. Returns 0, -1 (cannot open), -2 (not an FLD file) or -3 (wrong version or dimension). Throws
  // FLDReadException.
  int checkSections();

  // Appends one entry per quantity section to the lists of its region set. Call after checkSections. Walks
  // the file again only if no notes were kept or it changed. Results and exceptions as for checkSections.
  int seekFLD();

  // Whether any region set has node coordinates, a motion or overset data.
  bool hasGeometry() const;
  bool hasALE() const;
  bool hasOverset() const;

  // The first quantity of this name in region set `ioverlap`, or null.
  const FLDTITLE_Scalar* findSeekScalar(const char* name, int ioverlap) const;
  const FLDTITLE_Vector* findSeekVector(const char* name, int ioverlap) const;

  // Reads region set `region` into `geo`. Each section of the file replaces the corresponding part of `geo`;
  // indices become zero-based, negative material numbers are shifted, and elements are counted by type. Call
  // after checkSections. Returns 0, or writes a message and returns -1 (no such region set), -2 (cannot
  // open), -3 (not an FLD file), -4 (wrong version or dimension) or kReadInPart (read error; `geo` keeps the
  // sections read so far). Throws std::bad_alloc.
  int readGeometry(int region, FLDGEO& geo) const;

  // The locations of the sections of region set `region` that readGeometry reads. Throws FLDReadException.
  RegionSetLayout locateGeometry(int region) const;

  // The location of a quantity's values, given its title's entry. Throws FLDReadException.
  ScalarLayout locateValues(const FLDTITLE_Scalar& title) const;
  VectorLayout locateValues(const FLDTITLE_Vector& title) const;

  std::string m_path;
  std::vector<FLDSEEKOverlap> m_overlap;  // region sets in file order

 private:
  void take_noted_sections();
  // The access that suits the size of region set `region`.
  Access access_to(size_t region) const;
  // Positions the stream after the opening title of region set `region`: at the offset noted by checkSections
  // or, if the file has changed, by walking it. Results and exceptions as for read_file_header.
  int go_to_region_set(const InputFile& file, size_t region) const;

  // Per region set, the quantities noted by checkSections. Empty if seekFLD might find others.
  std::vector<FLDSEEK> noted_;
  FileStamp checked_;       // of the file when checkSections read it
  int64_t header_end_ = 0;  // offset of the first section
};

}  // namespace fld
