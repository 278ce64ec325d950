// FLDFile::readGeometry: reads one region set of a file and puts its geometry together.
#include <cstdio>

#include "dataset/fld_file.h"
#include "dataset/index_base.h"
#include "dataset/region_set_reader.h"
#include "dataset/type_counts.h"
#include "support/errors.h"

namespace fld {

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
    const InputFile file(m_path, Access::bulk);
    FLDHeader header;
    const int status = read_file_header(file, m_path, header);
    if (status != 0) return status - 1;
    geo.coordinateSystem = 0;
    find_region_set(file.stream(), m_overlap[static_cast<size_t>(region)].m_begin, region);
    read_region_set(file.stream(), geo, loaded);
    if (loaded.materials) {
      modifyMAT(geo.matOfElements);
      geo.materials = distinct_materials(geo.matOfElements.get());
    }
  } catch (const FLDException& error) {
    put_together();
    fprintf(stderr, "ERROR : %s", error.getMessage());
    return -5;
  } catch (...) {
    put_together();
    throw;
  }
  put_together();
  report_bad_indices(geo, m_path);
  return 0;
}

}  // namespace fld
