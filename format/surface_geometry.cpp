#include "format/surface_geometry.h"

#include "format/record.h"
#include "format/region_lists.h"

namespace fld {

namespace {

constexpr size_t kLeastRegion = 128;     // bytes: a character block and five rule records
constexpr size_t kLeastArrayRegion = 8;  // bytes: its two counts

}  // namespace

SurfaceGeometry::~SurfaceGeometry() {
  cv_mfree(name);
  cv_mfree(faceType);
  cv_mfree(faceLink);
  cv_mfree(faceNode);
}

void FLDV4_SurfaceGeometry(FILE* stream, std::vector<smart_ptr<SurfaceGeometry>>& list) {
  const int count = read_region_count(stream, kLeastRegion);
  const int name_length = read_name_length(stream);
  renew_regions(list, count);
  for (auto& region : list) {
    region->name = read_name(stream, name_length, 1100259).release();
    region->nface = read_int(stream);
    region->faceType = read_int_array(stream, region->nface, 1100263).release();
    region->faceLink = read_int_array(stream, region->nface, 1100265).release();
    region->nfaceNode = read_int(stream);
    region->faceNode = read_int_array(stream, region->nfaceNode, 1100268).release();
  }
  FLDV4_I_END(stream);
}

void FLDV4_SurfaceGeometryArray(FILE* stream, std::vector<smart_ptr<SurfaceGeometry>>& list) {
  using Surface = SurfaceGeometry;
  const int count = read_region_count(stream, kLeastArrayRegion);
  const int name_length = read_name_length(stream);
  renew_regions(list, count);
  if (count == 0) {
    FLDV4_I_SKIP(stream);
    return;
  }
  read_gathered_names(stream, list, name_length, 1100290, 1100296);
  read_counts(stream, list, &Surface::nface, 1100291);
  read_gathered(stream, list, &Surface::nface, &Surface::faceType, 1100308, 1100312);
  read_gathered(stream, list, &Surface::nface, &Surface::faceLink, 1100321, 1100325);
  read_counts(stream, list, &Surface::nfaceNode, 1100333);
  read_gathered(stream, list, &Surface::nfaceNode, &Surface::faceNode, 1100345, 1100349);
  FLDV4_I_END(stream);
}

}  // namespace fld
