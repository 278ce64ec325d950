// FLDFile::readGeometry: reads one region set and assembles its geometry.
#include <cstdio>

#include "dataset/fld_file.h"
#include "dataset/index_base.h"
#include "dataset/region_set_reader.h"
#include "dataset/type_counts.h"
#include "support/errors.h"

namespace fld {

namespace {

// Region sets of at least this many bytes are read with a large buffer.
constexpr int64_t kLarge = int64_t{64} << 10;
// A header up to this size takes no longer to read than the file to open.
constexpr int64_t kLongHeader = int64_t{4} << 10;

// Brings the sections that were read into the form in which they are served. Throws FLDReadException for
// material numbers out of range.
void assemble(FLDGEO& geo, int bias, const LoadedSections& loaded) {
  modifyIndicies(geo, bias, loaded);
  count_types(geo);
  if (!loaded.materials) return;
  modifyMAT(geo.matOfElements);
  geo.materials = distinct_materials(geo.matOfElements.get());
}

// The same for the sections before a read error, which is the one to report.
void assemble_after_failure(FLDGEO& geo, int bias, const LoadedSections& loaded) {
  try {
    assemble(geo, bias, loaded);
  } catch (const FLDException&) {
    return;
  }
}

}  // namespace

Access FLDFile::access_to(size_t region) const {
  const bool is_last = region + 1 == m_overlap.size();
  const int64_t end = is_last ? checked_.size : m_overlap[region + 1].m_begin;
  return end - m_overlap[region].m_begin < kLarge ? Access::walk : Access::bulk;
}

int FLDFile::go_to_region_set(const InputFile& file, size_t region) const {
  const int64_t begin = m_overlap[region].m_begin;
  // If the file is unchanged, a long header is not read again for each region set.
  if (header_end_ > kLongHeader && file && file.stamp() == checked_) {
    if (is_region_set_at(file.stream(), begin)) return 0;
    rewind(file.stream());
  }
  FLDHeader header;
  const int status = read_file_header(file, m_path, header);
  if (status == 0) find_region_set(file.stream(), begin, static_cast<int>(region));
  return status;
}

int FLDFile::readGeometry(int region, FLDGEO& geo) const {
  trace_reading(m_path);
  if (region < 0 || static_cast<size_t>(region) >= m_overlap.size()) {
    fputs("INVALID OVERLAP REGION WAS SPECIFIED.\n", stderr);
    return -1;
  }
  try {
    const InputFile file(m_path, access_to(static_cast<size_t>(region)));
    const int status = go_to_region_set(file, static_cast<size_t>(region));
    if (status != 0) return status - 1;
    geo.coordinateSystem = 0;
    LoadedSections loaded;
    try {
      read_region_set(file.stream(), geo, loaded);
    } catch (...) {
      assemble_after_failure(geo, m_bias, loaded);
      throw;
    }
    assemble(geo, m_bias, loaded);
  } catch (const FLDException& error) {
    fprintf(stderr, "ERROR : %s", error.getMessage());
    return kReadInPart;
  }
  return 0;
}

}  // namespace fld
