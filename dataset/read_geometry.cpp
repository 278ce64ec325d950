// FLDFile::readGeometry: reads one region set of a file and puts its geometry together.
#include <cstdio>

#include "dataset/fld_file.h"
#include "dataset/index_base.h"
#include "dataset/region_set_reader.h"
#include "dataset/type_counts.h"
#include "support/errors.h"

namespace fld {

namespace {

// A large buffer is worth filling for region sets of so many bytes.
constexpr int64_t kLarge = int64_t{64} << 10;
// Reading a header of no more bytes costs as little as opening the file.
constexpr int64_t kLongHeader = int64_t{4} << 10;

}  // namespace

Access FLDFile::access_to(size_t region) const {
  const bool is_last = region + 1 == m_overlap.size();
  const int64_t end = is_last ? checked_.size : m_overlap[region + 1].m_begin;
  return end - m_overlap[region].m_begin < kLarge ? Access::walk : Access::bulk;
}

int FLDFile::go_to_region_set(const InputFile& file, size_t region) const {
  const int64_t begin = m_overlap[region].m_begin;
  // A long header is not read once more for each of many region sets while the file is the one that was
  // checked.
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
  LoadedSections loaded;
  // Zero-based numbering and counts come last, and also when the reading broke off: whatever a geometry holds
  // is ready to be served.
  const auto put_together = [&] {
    modifyIndicies(geo, m_bias, loaded);
    count_types(geo);
  };
  try {
    const InputFile file(m_path, access_to(static_cast<size_t>(region)));
    const int status = go_to_region_set(file, static_cast<size_t>(region));
    if (status != 0) return status - 1;
    geo.coordinateSystem = 0;
    read_region_set(file.stream(), geo, loaded);
    if (loaded.materials) {
      modifyMAT(geo.matOfElements);
      geo.materials = distinct_materials(geo.matOfElements.get());
    }
  } catch (const FLDException& error) {
    put_together();
    fprintf(stderr, "ERROR : %s", error.getMessage());
    return kReadInPart;
  } catch (...) {
    put_together();
    throw;
  }
  put_together();
  report_bad_indices(geo, m_path);
  return 0;
}

}  // namespace fld
