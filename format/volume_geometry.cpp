#include "format/volume_geometry.h"

#include "format/record.h"
#include "format/region_lists.h"

namespace fld {

namespace {

constexpr size_t kLeastRegion = 68;      // bytes: a character block and two rule records
constexpr size_t kLeastArrayRegion = 4;  // bytes: its count

}  // namespace

VolumeGeometry::~VolumeGeometry() {
  cv_mfree(name);
  cv_mfree(elem);
}

void FLDV4_VolumeGeometry(FILE* stream, std::vector<smart_ptr<VolumeGeometry>>& list) {
  const int count = read_region_count(stream, kLeastRegion);
  const int name_length = read_name_length(stream);
  renew_regions(list, count);
  for (auto& region : list) {
    region->name = read_name(stream, name_length, 1100375).release();
    region->nelem = read_int(stream);
    region->elem = read_int_array(stream, region->nelem, 1100379).release();
  }
  FLDV4_I_END(stream);
}

void FLDV4_VolumeGeometryArray(FILE* stream, std::vector<smart_ptr<VolumeGeometry>>& list) {
  using Volume = VolumeGeometry;
  const int count = read_region_count(stream, kLeastArrayRegion);
  const int name_length = read_name_length(stream);
  renew_regions(list, count);
  if (count == 0) {
    FLDV4_I_SKIP(stream);
    return;
  }
  read_gathered_names(stream, list, name_length, 1100401, 1100407);
  read_counts(stream, list, &Volume::nelem, 1100402);
  read_gathered(stream, list, &Volume::nelem, &Volume::elem, 1100419, 1100423);
  FLDV4_I_END(stream);
}

}  // namespace fld
