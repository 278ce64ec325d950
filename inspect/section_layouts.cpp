#include "inspect/section_layouts.h"

#include <string>

#include "inspect/section_reader.h"

namespace inspect {
namespace {

using enum Content;

// The items of an action: `vectors` points or vectors of three values, then `values` single values.
struct ActionItems {
  const char* kind;
  std::int64_t vectors;
  std::int64_t values;
};

constexpr ActionItems kActions[] = {
    {"Rotate", 2, 1}, {"Translate", 1, 0}, {"Scale", 2, 0}, {"4Points", 8, 0}};

void read_action(SectionReader& section, std::int64_t name_length) {
  const std::string kind = section.characters(action_kind, name_length);
  for (const ActionItems& action : kActions) {
    if (!kind.starts_with(action.kind)) continue;
    section.integer_that_is(item_count, action.vectors + action.values, Kind::item_count);
    for (std::int64_t i = 0; i < action.vectors; ++i) section.reals(item, 3);
    for (std::int64_t i = 0; i < action.values; ++i) section.reals(item, 1);
    return;
  }
  section.give_up(Kind::unknown_action, "Rotate, Translate, Scale or 4Points", in_quotes(kind));
}

void read_faces(SectionReader& section) {
  const std::int64_t faces = section.count(face_count);
  section.integers(face_types, faces);
  section.integers(face_links, faces);
  section.integers(face_nodes, section.count(face_node_count));
}

}  // namespace

void read_anything(SectionReader& section) {
  section.anything();
}

void read_application_version(SectionReader& item) {
  item.integer(application_version);
}

void read_release_date(SectionReader& item) {
  item.integer(release_date);
}

void read_dimension(SectionReader& item) {
  item.set_dimension(item.integer(dimension));
}

void read_bias(SectionReader& item) {
  item.integer(bias);
}

void read_cycle(SectionReader& item) {
  item.integer(cycle);
  item.reals(time, 1);
}

void read_unused(SectionReader& item) {
  item.reals(undefined_single, 1, 4);
  item.reals(undefined_double, 1, 8);
}

void read_coordinate_system(SectionReader& section) {
  section.integer(coordinate_system);
}

void read_surfaces(SectionReader& section) {
  const std::int64_t regions = section.count(region_count);
  const std::int64_t length = section.count(name_length);
  for (std::int64_t r = 0; r < regions; ++r) {
    section.set_region(r);
    section.characters(region_name, length);
    read_faces(section);
  }
}

void read_surfaces_array(SectionReader& section) {
  const std::int64_t regions = section.count(region_count);
  const std::int64_t length = section.count(name_length);
  if (regions == 0 && section.is_at_end()) return;
  section.characters(region_names, regions * length);
  const std::int64_t faces = section.sum(face_count, regions);
  section.integers(face_types, faces);
  section.integers(face_links, faces);
  section.integers(face_nodes, section.sum(face_node_count, regions));
}

void read_volumes(SectionReader& section) {
  const std::int64_t regions = section.count(region_count);
  const std::int64_t length = section.count(name_length);
  for (std::int64_t r = 0; r < regions; ++r) {
    section.set_region(r);
    section.characters(region_name, length);
    section.integers(region_elements, section.count(region_element_count));
  }
}

void read_volumes_array(SectionReader& section) {
  const std::int64_t regions = section.count(region_count);
  const std::int64_t length = section.count(name_length);
  if (regions == 0 && section.is_at_end()) return;
  section.characters(region_names, regions * length);
  section.integers(region_elements, section.sum(region_element_count, regions));
}

void read_elements(SectionReader& section) {
  section.integers(element_types, section.count(element_count));
  section.integers(connectivity, section.long_count(connectivity_length));
}

void read_materials(SectionReader& section) {
  section.integers(materials, section.count(material_count));
}

void read_nodes(SectionReader& section) {
  const std::int64_t nodes = section.count(node_count);
  for (const Content axis : {x, y, z}) section.reals(axis, nodes);
}

void read_motion(SectionReader& section) {
  const std::int64_t length = section.count(name_length);
  section.integer(base_cycle);
  const std::int64_t regions = section.count(moving_region_count);
  for (std::int64_t r = 0; r < regions; ++r) {
    section.set_region(r);
    const std::int64_t names = section.count(moved_name_count);
    for (std::int64_t n = 0; n < names; ++n) section.characters(moved_name, length);
    const std::int64_t actions = section.count(action_count);
    for (std::int64_t a = 0; a < actions; ++a) read_action(section, length);
  }
}

void read_scalar(SectionReader& section) {
  section.characters(label, kLabelLength);
  section.reals(values, section.count(value_count));
}

void read_vector(SectionReader& section) {
  section.integer(vector_integer);
  section.characters(label, kLabelLength);
  const std::int64_t count = section.count(value_count);
  const int components = section.dimension() == 2 ? 2 : 3;
  for (int c = 0; c < components; ++c) section.reals(values, count);
}

}  // namespace inspect
