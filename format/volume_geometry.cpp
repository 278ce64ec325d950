#include "format/volume_geometry.h"

#include "format/record.h"
#include "format/region_lists.h"

namespace fld {

namespace {

constexpr size_t kLeastVolume = 68;      // bytes: a character block and two rule records
constexpr size_t kLeastArrayVolume = 4;  // bytes: its count

template <class List>
void take_volumes(FILE* stream, List& list) {
  const int count = read_region_count(stream, kLeastVolume);
  const int name_length = read_name_length(stream);
  renew_regions(list, count);
  for (auto& entry : list) {
    auto& region = region_of(entry);
    take_name(stream, name_length, 1100375, region.name);
    region.nelem = read_int(stream);
    take_ints(stream, region.nelem, 1100379, region.elem);
  }
  FLDV4_I_END(stream);
}

template <class Volume, class List>
void take_volume_array(FILE* stream, List& list) {
  const int count = read_region_count(stream, kLeastArrayVolume);
  const int name_length = read_name_length(stream);
  renew_regions(list, count);
  if (count == 0) {
    FLDV4_I_SKIP(stream);
    return;
  }
  take_gathered_names(stream, list, name_length, 1100401, 1100407);
  take_counts(stream, list, &Volume::nelem, 1100402);
  take_gathered(stream, list, &Volume::nelem, &Volume::elem, 1100419, 1100423);
  FLDV4_I_END(stream);
}

}  // namespace

VolumeGeometry::~VolumeGeometry() {
  cv_mfree(name);
  cv_mfree(elem);
}

void FLDV4_VolumeGeometry(FILE* stream, std::vector<smart_ptr<VolumeGeometry>>& list) {
  take_volumes(stream, list);
}

void FLDV4_VolumeGeometryArray(FILE* stream, std::vector<smart_ptr<VolumeGeometry>>& list) {
  take_volume_array<VolumeGeometry>(stream, list);
}

void locate_volumes(FILE* stream, std::vector<VolumeLayout>& list) {
  take_volumes(stream, list);
}

void locate_volume_array(FILE* stream, std::vector<VolumeLayout>& list) {
  take_volume_array<VolumeLayout>(stream, list);
}

}  // namespace fld
