#include "dataset/region_set_reader.h"

#include "format/coordinate_system.h"
#include "format/data_block.h"
#include "format/record.h"
#include "support/errors.h"

namespace fld {

namespace {

// Reads into a temporary, so that `list` never holds a partially read region.
template <class Regions>
void read_regions(FILE* stream, void (*read)(FILE*, Regions&), Regions& list, bool& loaded) {
  Regions regions;
  read(stream, regions);
  list = std::move(regions);
  loaded = true;
}

template <class Object>
void read_object(FILE* stream, smart_ptr<Object> (*read)(FILE*), smart_ptr<Object>& object, bool& loaded) {
  object = read(stream);
  loaded = true;
}

// Reads the body of one section of the requested region set.
void read_section(FILE* stream, const char* title, int n, FLDGEO& geo, LoadedSections& loaded) {
  const auto is = [title, n](const char* key) { return titlecmp(title, key, n) == 0; };
  if (is("LS_CoordinateSystem")) {
    FLDV4_CoordinateSystem(stream, geo.coordinateSystem);
  } else if (is("LS_SurfaceGeometry")) {
    read_regions(stream, FLDV4_SurfaceGeometry, geo.surfaces, loaded.surfaces);
  } else if (is("LS_VolumeGeometry")) {
    read_regions(stream, FLDV4_VolumeGeometry, geo.volumes, loaded.volumes);
  } else if (is("LS_SurfaceGeometryArray")) {
    read_regions(stream, FLDV4_SurfaceGeometryArray, geo.surfaces, loaded.surfaces);
  } else if (is("LS_VolumeGeometryArray")) {
    read_regions(stream, FLDV4_VolumeGeometryArray, geo.volumes, loaded.volumes);
  } else if (is("LS_Elements")) {
    read_object(stream, FLDV4_Elements, geo.elements, loaded.elements);
  } else if (is("LS_MatOfElements")) {
    read_object(stream, FLDV4_MatOfElements, geo.matOfElements, loaded.materials);
  } else if (is("LS_Nodes")) {
    geo.nodes = FLDV4_Nodes(stream);
  } else {
    FLDV4_I_SKIP(stream);
  }
}

}  // namespace

bool is_region_set_at(FILE* stream, int64_t begin) {
  char title[kTitleLength + 1];
  try {
    if (fseeko(stream, begin, SEEK_SET) != 0) return false;
    FLDV4_I_TITLE(stream, title);
  } catch (const FLDReadException&) {
    return false;  // the file was truncated
  }
  return title_starts_with(title, "OverlapStart_");
}

void find_region_set(FILE* stream, int64_t begin, int region) {
  const off_t header_end = ftello(stream);
  if (is_region_set_at(stream, begin)) return;
  if (fseeko(stream, header_end, SEEK_SET) != 0) throw FLDReadException("A REGION SET CANNOT BE FOUND.");
  for (;;) {
    char title[kTitleLength + 1];
    const int n = FLDV4_I_TITLE(stream, title);
    if (title_starts_with(title, "OverlapStart_")) {
      if (region-- == 0) return;
      continue;
    }
    if (titlecmp(title, "OverlapEnd", n) == 0) throw FLDReadException("A REGION SET CANNOT BE FOUND.");
    read_int(stream);
    FLDV4_I_SKIP(stream);
  }
}

void read_region_set(FILE* stream, FLDGEO& geo, LoadedSections& loaded) {
  for (;;) {
    char title[kTitleLength + 1];
    const int n = FLDV4_I_TITLE(stream, title);
    if (title_starts_with(title, "OverlapStart_") || titlecmp(title, "OverlapEnd", n) == 0) return;
    read_int(stream);
    read_section(stream, title, n, geo, loaded);
  }
}

}  // namespace fld
