#include "format/surface_geometry.h"

#include "format/record.h"
#include "format/region_lists.h"

namespace fld {

namespace {

constexpr size_t kLeastSurface = 128;     // bytes: a character block and five rule records
constexpr size_t kLeastArraySurface = 8;  // bytes: its two counts

template <class List>
void take_surfaces(FILE* stream, List& list) {
  const int count = read_region_count(stream, kLeastSurface);
  const int name_length = read_name_length(stream);
  renew_regions(list, count);
  for (auto& entry : list) {
    auto& region = region_of(entry);
    take_name(stream, name_length, 1100259, region.name);
    region.nface = read_int(stream);
    take_ints(stream, region.nface, 1100263, region.faceType);
    take_ints(stream, region.nface, 1100265, region.faceLink);
    region.nfaceNode = read_int(stream);
    take_ints(stream, region.nfaceNode, 1100268, region.faceNode);
  }
  FLDV4_I_END(stream);
}

template <class Surface, class List>
void take_surface_array(FILE* stream, List& list) {
  const int count = read_region_count(stream, kLeastArraySurface);
  const int name_length = read_name_length(stream);
  renew_regions(list, count);
  if (count == 0) {
    FLDV4_I_SKIP(stream);
    return;
  }
  take_gathered_names(stream, list, name_length, 1100290, 1100296);
  take_counts(stream, list, &Surface::nface, 1100291);
  take_gathered(stream, list, &Surface::nface, &Surface::faceType, 1100308, 1100312);
  take_gathered(stream, list, &Surface::nface, &Surface::faceLink, 1100321, 1100325);
  take_counts(stream, list, &Surface::nfaceNode, 1100333);
  take_gathered(stream, list, &Surface::nfaceNode, &Surface::faceNode, 1100345, 1100349);
  FLDV4_I_END(stream);
}

}  // namespace

SurfaceGeometry::~SurfaceGeometry() {
  cv_mfree(name);
  cv_mfree(faceType);
  cv_mfree(faceLink);
  cv_mfree(faceNode);
}

void FLDV4_SurfaceGeometry(FILE* stream, std::vector<smart_ptr<SurfaceGeometry>>& list) {
  take_surfaces(stream, list);
}

void FLDV4_SurfaceGeometryArray(FILE* stream, std::vector<smart_ptr<SurfaceGeometry>>& list) {
  take_surface_array<SurfaceGeometry>(stream, list);
}

void locate_surfaces(FILE* stream, std::vector<SurfaceLayout>& list) {
  take_surfaces(stream, list);
}

void locate_surface_array(FILE* stream, std::vector<SurfaceLayout>& list) {
  take_surface_array<SurfaceLayout>(stream, list);
}

}  // namespace fld
