#include "dataset/region_set_reader.h"

#include "format/data_block.h"
#include "format/nodes.h"
#include "format/record.h"
#include "support/errors.h"

namespace fld {

namespace {

// Reads sections into a geometry.
class Reading {
 public:
  Reading(FILE* stream, FLDGEO& geo, LoadedSections& loaded) : stream_(stream), geo_(geo), loaded_(loaded) {}

  FILE* stream() const { return stream_; }
  void coordinate_system() { FLDV4_CoordinateSystem(stream_, geo_.coordinateSystem); }
  void surfaces() { read(FLDV4_SurfaceGeometry, geo_.surfaces, loaded_.surfaces); }
  void surface_array() { read(FLDV4_SurfaceGeometryArray, geo_.surfaces, loaded_.surfaces); }
  void volumes() { read(FLDV4_VolumeGeometry, geo_.volumes, loaded_.volumes); }
  void volume_array() { read(FLDV4_VolumeGeometryArray, geo_.volumes, loaded_.volumes); }
  void elements() { read(FLDV4_Elements, geo_.elements, loaded_.elements); }
  void materials() { read(FLDV4_MatOfElements, geo_.matOfElements, loaded_.materials); }
  void nodes() { geo_.nodes = FLDV4_Nodes(stream_); }

 private:
  // Reads into a temporary, so that `list` never holds a partially read region.
  template <class Regions>
  void read(void (*read_list)(FILE*, Regions&), Regions& list, bool& loaded) {
    Regions regions;
    read_list(stream_, regions);
    list = std::move(regions);
    loaded = true;
  }
  template <class Object>
  void read(smart_ptr<Object> (*read_object)(FILE*), smart_ptr<Object>& object, bool& loaded) {
    object = read_object(stream_);
    loaded = true;
  }

  FILE* stream_;
  FLDGEO& geo_;
  LoadedSections& loaded_;
};

// Notes the locations of the sections' arrays.
class Locating {
 public:
  Locating(FILE* stream, RegionSetLayout& layout) : stream_(stream), layout_(layout) {}

  FILE* stream() const { return stream_; }
  void coordinate_system() { FLDV4_CoordinateSystem(stream_, layout_.coordinateSystem); }
  void surfaces() { locate_surfaces(stream_, layout_.surfaces.emplace()); }
  void surface_array() { locate_surface_array(stream_, layout_.surfaces.emplace()); }
  void volumes() { locate_volumes(stream_, layout_.volumes.emplace()); }
  void volume_array() { locate_volume_array(stream_, layout_.volumes.emplace()); }
  void elements() { locate(stream_, layout_.elements.emplace()); }
  void materials() { locate(stream_, layout_.materials.emplace()); }
  void nodes() { locate(stream_, layout_.nodes.emplace()); }

 private:
  FILE* stream_;
  RegionSetLayout& layout_;
};

// Handles the body of one section of the requested region set.
template <class Sections>
void take_section(const char* title, int n, Sections& sections) {
  const auto is = [title, n](const char* key) { return titlecmp(title, key, n) == 0; };
  if (is("LS_CoordinateSystem")) {
    sections.coordinate_system();
  } else if (is("LS_SurfaceGeometry")) {
    sections.surfaces();
  } else if (is("LS_VolumeGeometry")) {
    sections.volumes();
  } else if (is("LS_SurfaceGeometryArray")) {
    sections.surface_array();
  } else if (is("LS_VolumeGeometryArray")) {
    sections.volume_array();
  } else if (is("LS_Elements")) {
    sections.elements();
  } else if (is("LS_MatOfElements")) {
    sections.materials();
  } else if (is("LS_Nodes")) {
    sections.nodes();
  } else {
    FLDV4_I_SKIP(sections.stream());
  }
}

template <class Sections>
void walk_region_set(Sections sections) {
  FILE* const stream = sections.stream();
  for (;;) {
    char title[kTitleLength + 1];
    const int n = FLDV4_I_TITLE(stream, title);
    if (title_starts_with(title, "OverlapStart_") || titlecmp(title, "OverlapEnd", n) == 0) return;
    read_int(stream);
    take_section(title, n, sections);
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
  walk_region_set(Reading(stream, geo, loaded));
}

void locate_region_set(FILE* stream, RegionSetLayout& layout) {
  walk_region_set(Locating(stream, layout));
}

}  // namespace fld
