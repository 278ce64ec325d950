#include "testkit/mesh.h"

#include <algorithm>
#include <stdexcept>

namespace testkit {
namespace {

void append(Ints& list, const Ints& more) {
  list.values().insert(list.values().end(), more.values().begin(), more.values().end());
}

Block count_of(std::int64_t count) {
  return Block::integer(static_cast<std::int32_t>(count));
}

template <class Region>
Region& region_named(std::vector<Region>& regions, std::string_view name) {
  const auto found =
      std::find_if(regions.begin(), regions.end(), [&](const Region& region) { return region.name == name; });
  if (found == regions.end()) throw std::out_of_range("no region " + std::string(name));
  return *found;
}

template <class Region>
std::size_t length_of_names(const std::vector<Region>& regions, std::size_t given) {
  if (given > 0) return given;
  std::size_t length = 1;
  for (const Region& region : regions) length = std::max(length, region.name.size());
  return length;
}

template <class Region>
Block all_names(const std::vector<Region>& regions, std::size_t length) {
  std::string names;
  for (const Region& region : regions) names += padded(region.name, length);
  return Block::characters(names);
}

// The lengths of one list of every region, and the concatenated lists.
template <class Region>
Block all_sizes(const std::vector<Region>& regions, Ints Region::*list) {
  std::vector<std::int32_t> sizes;
  sizes.reserve(regions.size());
  for (const Region& region : regions) sizes.push_back(static_cast<std::int32_t>((region.*list).size()));
  return Block::integers(std::move(sizes));
}

template <class Region>
Block all_values(const std::vector<Region>& regions, Ints Region::*list, IndexBase base) {
  std::vector<Ints> lists;
  lists.reserve(regions.size());
  for (const Region& region : regions) lists.push_back(region.*list);
  return Block::integers(concatenate(std::move(lists)), base);
}

}  // namespace

int corner_count(std::int32_t code) {
  switch (code) {
    case kLineFace:
      return 2;
    case kTriangle:
    case kTriangleFace:
      return 3;
    case kQuadrilateral:
    case kQuadrilateralFace:
    case kTetrahedron:
      return 4;
    case kPyramid:
      return 5;
    case kPrism:
      return 6;
    case kHexahedron:
      return 8;
    default:
      return 0;
  }
}

std::int32_t Nodes::add(double node_x, double node_y, double node_z) {
  x.values().push_back(node_x);
  y.values().push_back(node_y);
  z.values().push_back(node_z);
  return static_cast<std::int32_t>(size() - 1);
}

std::int32_t Elements::add(std::int32_t code, const std::vector<std::int32_t>& corners) {
  type.values().push_back(code);
  conn.values().insert(conn.values().end(), corners.begin(), corners.end());
  return static_cast<std::int32_t>(size() - 1);
}

void Surface::add(std::int32_t code, const std::vector<std::int32_t>& corners, std::int32_t element) {
  type.values().push_back(code);
  link.values().push_back(element);
  node.values().insert(node.values().end(), corners.begin(), corners.end());
}

void Surface::add(const Surface& other) {
  append(type, other.type);
  append(link, other.link);
  append(node, other.node);
}

Surface& Mesh::surface(std::string_view name) {
  return region_named(surfaces, name);
}

Volume& Mesh::volume(std::string_view name) {
  return region_named(volumes, name);
}

std::vector<Section> mesh_sections(const Mesh& mesh, const Layout& layout) {
  std::vector<Section> sections;
  if (mesh.coordinate_system) sections.push_back(coordinate_system_section(*mesh.coordinate_system));
  sections.push_back(surfaces_section(mesh.surfaces, layout.surface_form, layout.name_length));
  sections.push_back(volumes_section(mesh.volumes, layout.volume_form, layout.name_length));
  sections.push_back(elements_section(mesh.elements, layout.conn_length_width));
  if (mesh.materials.size() > 0) sections.push_back(materials_section(mesh.materials));
  sections.push_back(nodes_section(mesh.nodes));
  return sections;
}

Section coordinate_system_section(std::int32_t coordinate_system) {
  return {.title = "LS_CoordinateSystem", .blocks = {Block::integer(coordinate_system)}};
}

Section surfaces_section(const std::vector<Surface>& surfaces, RegionForm form, std::size_t name_length) {
  const std::size_t length = length_of_names(surfaces, name_length);
  Section section;
  section.blocks = {count_of(std::ssize(surfaces)), count_of(static_cast<std::int64_t>(length))};
  auto& blocks = section.blocks;
  if (form == RegionForm::kArray) {
    section.title = "LS_SurfaceGeometryArray";
    blocks.push_back(all_names(surfaces, length));
    blocks.push_back(all_sizes(surfaces, &Surface::type));
    blocks.push_back(all_values(surfaces, &Surface::type, IndexBase::kNone));
    blocks.push_back(all_values(surfaces, &Surface::link, IndexBase::kAllButMinusOne));
    blocks.push_back(all_sizes(surfaces, &Surface::node));
    blocks.push_back(all_values(surfaces, &Surface::node, IndexBase::kAll));
    return section;
  }
  section.title = "LS_SurfaceGeometry";
  for (const Surface& surface : surfaces) {
    blocks.push_back(Block::characters(surface.name, length));
    blocks.push_back(count_of(surface.type.size()));
    blocks.push_back(Block::integers(surface.type));
    blocks.push_back(Block::integers(surface.link, IndexBase::kAllButMinusOne));
    blocks.push_back(count_of(surface.node.size()));
    blocks.push_back(Block::integers(surface.node, IndexBase::kAll));
  }
  return section;
}

Section volumes_section(const std::vector<Volume>& volumes, RegionForm form, std::size_t name_length) {
  const std::size_t length = length_of_names(volumes, name_length);
  Section section;
  section.blocks = {count_of(std::ssize(volumes)), count_of(static_cast<std::int64_t>(length))};
  auto& blocks = section.blocks;
  if (form == RegionForm::kArray) {
    section.title = "LS_VolumeGeometryArray";
    blocks.push_back(all_names(volumes, length));
    blocks.push_back(all_sizes(volumes, &Volume::elements));
    blocks.push_back(all_values(volumes, &Volume::elements, IndexBase::kAll));
    return section;
  }
  section.title = "LS_VolumeGeometry";
  for (const Volume& volume : volumes) {
    blocks.push_back(Block::characters(volume.name, length));
    blocks.push_back(count_of(volume.elements.size()));
    blocks.push_back(Block::integers(volume.elements, IndexBase::kAll));
  }
  return section;
}

Section elements_section(const Elements& elements, std::int32_t conn_length_width) {
  return {.title = "LS_Elements",
          .blocks = {count_of(elements.size()), Block::integers(elements.type),
                     Block::long_integer(elements.conn.size(), conn_length_width),
                     Block::integers(elements.conn, IndexBase::kAll)}};
}

Section materials_section(const Ints& materials) {
  return {.title = "LS_MatOfElements", .blocks = {count_of(materials.size()), Block::integers(materials)}};
}

Section nodes_section(const Nodes& nodes) {
  return {.title = "LS_Nodes",
          .blocks = {count_of(nodes.size()), Block::reals(nodes.x, nodes.precision[0]),
                     Block::reals(nodes.y, nodes.precision[1]), Block::reals(nodes.z, nodes.precision[2])}};
}

}  // namespace testkit
