// The content of a data block, by its position in a section.
#pragma once

#include <cstdint>
#include <string_view>

namespace inspect {

enum class Content : std::uint8_t {
  data,  // of a section or header item whose blocks are not known
  section_integer,
  application_version,
  release_date,
  dimension,
  bias,
  cycle,
  time,
  undefined_single,
  undefined_double,
  coordinate_system,
  region_count,
  name_length,
  region_name,
  region_names,
  face_count,
  face_types,
  face_links,
  face_node_count,
  face_nodes,
  region_element_count,
  region_elements,
  element_count,
  element_types,
  connectivity_length,
  connectivity,
  material_count,
  materials,
  node_count,
  x,
  y,
  z,
  vector_integer,
  label,
  value_count,
  values,
  base_cycle,
  moving_region_count,
  moved_name_count,
  moved_name,
  action_count,
  action_kind,
  item_count,
  item,
};

// "number of nodes"
std::string_view name(Content content);

}  // namespace inspect
