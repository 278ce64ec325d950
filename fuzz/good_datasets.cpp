#include "fuzz/good_datasets.h"

#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"

namespace fuzz {
namespace {

using namespace testkit;

constexpr double kUndefined = 1.0e30;  // as in the usual header

Section pressure(const Mesh& mesh, Precision precision = Precision::kSingle) {
  std::vector<double> values =
      at_nodes(mesh.nodes, [](double x, double y, double z) { return 1.0 + x + 2.0 * y + 4.0 * z; });
  values.front() = kUndefined;
  return scalar_section(
      {.name = "Pressure", .label = "Pressure [Pa]", .values = values, .precision = precision});
}

Section velocity(const Mesh& mesh, std::array<Precision, 3> precision = {
                                       Precision::kSingle, Precision::kSingle, Precision::kSingle}) {
  Vector vector{.name = "Velocity", .label = "Velocity [m/s]", .precision = precision};
  vector.x = mesh.nodes.x;
  vector.y = mesh.nodes.y;
  vector.z = mesh.nodes.z;
  return vector_section(vector);
}

Section fringe(const Mesh& mesh) {
  std::vector<double> values(static_cast<std::size_t>(mesh.nodes.size()), 0.0);
  values.back() = 1.0;
  return scalar_section({.name = "@BNODE", .label = "fringe", .values = values});
}

// Only the header items that matter, to keep the file small.
Header short_header(int cycle, double time) {
  Header header;
  header.set_dimension(3);
  header.set_bias(0);
  header.set_cycle(cycle, time);
  header.set_unused(1.0e30F, kUndefined);
  return header;
}

File file_at(int cycle, double time) {
  File file;
  file.header = short_header(cycle, time);
  return file;
}

File plain_file() {
  const Mesh mesh = one_tetrahedron();
  File file;  // with the usual header
  RegionSet& set = file.add_region_set();
  set.add(mesh_sections(mesh));
  set.add(pressure(mesh));
  set.add(velocity(mesh));
  return file;
}

// Array forms, index base 1, short records, other widths.
File gathered_file() {
  const Mesh mesh = one_of_each();
  File file = file_at(7, 0.25);
  file.header.set_bias(1);
  file.split = 5;
  RegionSet& set = file.add_region_set();
  set.add(mesh_sections(mesh, {.surface_form = RegionForm::kArray,
                               .volume_form = RegionForm::kArray,
                               .name_length = 12,
                               .conn_length_width = 4}));
  set.add(pressure(mesh, Precision::kDouble));
  set.add(velocity(mesh, {Precision::kSingle, Precision::kDouble, Precision::kSingle}));
  return file;
}

// Triangles and quadrilaterals as elements, line faces, cylindrical coordinates, negative materials, no
// regions of one kind.
File flat_file() {
  Mesh mesh;
  mesh.coordinate_system = 1;
  mesh.nodes.precision = {Precision::kDouble, Precision::kSingle, Precision::kDouble};
  mesh.nodes.x = {1.0, 2.0, 2.0, 1.0, 1.5};
  mesh.nodes.y = {0.0, 0.0, 0.5, 0.5, 0.7};
  mesh.nodes.z = {0.0, 0.0, 0.0, 0.0, 0.0};
  mesh.elements.add(kQuadrilateral, {0, 1, 2, 3});
  mesh.elements.add(kTriangle, {3, 2, 4});
  mesh.materials = {-3, 2};
  Surface edge{.name = "&VFG_edge"};
  edge.add(kLineFace, {0, 1}, 0);
  edge.add(kTriangleFace, {3, 2, 4}, 1);
  edge.add(kQuadrilateralFace, {0, 1, 2, 3});
  mesh.surfaces = {edge};
  File file = file_of(mesh);
  file.header = short_header(0, 0.0);
  file.region_sets.front().add(pressure(mesh));
  return file;
}

// Two region sets with different elements.
File overset_file() {
  File file = file_at(3, 0.0);
  for (const Mesh& mesh : {one_of_each(), one_tetrahedron()}) {
    RegionSet& set = file.add_region_set();
    set.add(mesh_sections(mesh));
    set.add(fringe(mesh));
    set.add(pressure(mesh));
  }
  return file;
}

GoodDataset moving_series() {
  const Mesh mesh = one_of_each();
  File first = file_at(1, 0.0);
  first.add_region_set().add(mesh_sections(mesh));
  first.region_sets.front().add(pressure(mesh));
  const std::array<Vec3, 4> corners = {Vec3{0, 0, 0}, Vec3{1, 0, 0}, Vec3{0, 1, 0}, Vec3{0, 0, 1}};
  const std::array<Vec3, 4> moved = {Vec3{1, 0, 0}, Vec3{2, 0, 0}, Vec3{1, 2, 0}, Vec3{1, 0, 1}};
  Motion motion{.base_cycle = 1};
  motion.regions = {{.names = {"lower"},
                     .actions = {Action::rotate({0, 0, 0}, {0, 0, 1}, 0.5), Action::translate({1, 0, 0})}},
                    {.names = {"upper", "missing"},
                     .actions = {Action::scale({0, 0, 0}, {2, 2, 2}), Action::four_points(corners, moved)}}};
  File second = file_at(2, 0.5);
  RegionSet& set = second.add_region_set();
  set.add(motion_section(motion));
  set.add(pressure(mesh, Precision::kDouble));
  motion.precision = Precision::kSingle;
  motion.regions.resize(1);
  File third = file_at(3, 1.0);
  third.add_region_set().add(motion_section(motion));
  return {"moving", {first, second, third}};
}

// The mesh of the second file has more nodes and other elements; the quantities differ.
GoodDataset changing_series() {
  File first = plain_file();
  first.header = short_header(1, 0.0);
  const Mesh mesh = one_of_each();
  File second = file_at(2, 0.0);
  RegionSet& set = second.add_region_set();
  set.add(mesh_sections(mesh, {.surface_form = RegionForm::kArray}));
  set.add(velocity(mesh));
  return {"changing", {first, second}};
}

// The second file has only quantities.
GoodDataset steady_mesh_series() {
  const Mesh mesh = one_tetrahedron();
  File first = plain_file();
  first.header = short_header(1, 0.0);
  File second = file_at(2, 0.125);
  second.add_region_set().add(pressure(mesh));
  second.region_sets.front().add(velocity(mesh));
  return {"steady", {first, second}};
}

}  // namespace

std::string GoodDataset::file_name(std::size_t index) const {
  return files.size() == 1 ? name + ".fld" : name + "_" + std::to_string(index + 1) + ".fld";
}

std::vector<GoodDataset> good_datasets() {
  return {{"plain", {plain_file()}}, {"gathered", {gathered_file()}},
          {"flat", {flat_file()}},   {"overset", {overset_file()}},
          moving_series(),           changing_series(),
          steady_mesh_series()};
}

}  // namespace fuzz
