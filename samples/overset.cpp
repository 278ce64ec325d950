#include "samples/overset.h"

#include <cmath>
#include <numbers>
#include <string>

#include "samples/fields.h"
#include "testkit/file_writer.h"
#include "testkit/grid_mesh.h"

namespace samples::overset {
namespace {

using testkit::CellIndex;
using testkit::CellKind;
using testkit::Vec3;

constexpr double kSpeed = 10.0;   // m/s
constexpr double kDensity = 1.2;  // kg/m3
// Radii in m: within the first, the background is blanked; within the second, its values come from the ring.
// No node is close enough to these circles for rounding to matter.
constexpr double kBlanked = 0.38;
constexpr double kReceives = 0.46;
constexpr double kDepth = 0.15;  // along z, m
constexpr CellIndex kBoxCells{60, 40, 3};
constexpr CellIndex kRingCells{14, 72, 3};

using SideNames = std::array<const char*, 6>;

std::function<std::string(const testkit::GridFace&)> names_of_sides(const SideNames& names) {
  return [names](const testkit::GridFace& face) {
    return std::string(names[static_cast<std::size_t>(face.side)]);
  };
}

void use_double(testkit::Mesh& mesh) {
  mesh.nodes.precision.fill(testkit::Precision::kDouble);
}

// Geometry and quantities of one region set; `is_defined` tells which nodes have values.
template <class IsDefined, class Fringe>
void fill(testkit::RegionSet& set, const testkit::Mesh& mesh, IsDefined is_defined, Fringe fringe) {
  testkit::Layout layout;
  layout.conn_length_width = 4;
  set.add(testkit::mesh_sections(mesh, layout));
  testkit::Scalar p = scalar_at(
      mesh.nodes, "Pressure", "Static pressure [Pa]",
      [&](double x, double y, double z) { return is_defined(x, y) ? pressure(x, y, z) : kUndefined; });
  testkit::Vector v = vector_at(mesh.nodes, "Velocity", "Velocity [m/s]", [&](double x, double y, double z) {
    return is_defined(x, y) ? velocity(x, y, z) : Vec3{kUndefined, kUndefined, kUndefined};
  });
  testkit::Scalar marks = scalar_at(mesh.nodes, "@BNODE", "Overset boundary node [-]", fringe);
  p.precision = testkit::Precision::kDouble;
  v.precision.fill(testkit::Precision::kDouble);
  marks.precision = testkit::Precision::kDouble;
  set.add(scalar_section(p));
  set.add(scalar_section(marks));
  set.add(vector_section(v));
}

}  // namespace

Vec3 velocity(double x, double y, double /*z*/) {
  const double r2 = x * x + y * y;
  const double ratio = kRadius * kRadius / (r2 * r2);
  return {kSpeed * (1.0 - ratio * (x * x - y * y)), -kSpeed * ratio * 2.0 * x * y, 0.0};
}

double pressure(double x, double y, double z) {
  const Vec3 v = velocity(x, y, z);
  return 0.5 * kDensity * (kSpeed * kSpeed - v[0] * v[0] - v[1] * v[1]);
}

bool is_blanked(double x, double y) {
  return std::hypot(x, y) < kBlanked;
}

double background_fringe(double x, double y, double /*z*/) {
  return !is_blanked(x, y) && std::hypot(x, y) < kReceives ? 1.0 : 0.0;
}

double ring_fringe(double x, double y, double /*z*/) {
  return std::hypot(x, y) > kRimRadius - 1e-6 ? 1.0 : 0.0;
}

testkit::Mesh background_mesh() {
  testkit::Grid grid;
  grid.cells = kBoxCells;
  grid.point = [](const CellIndex& p) {
    return Vec3{-1.0 + 3.0 * p[0] / kBoxCells[0], -1.0 + 2.0 * p[1] / kBoxCells[1],
                kDepth * p[2] / kBoxCells[2]};
  };
  testkit::Mesh mesh;
  testkit::append(mesh, testkit::mesh_grid(grid), "background", 1,
                  names_of_sides({"inlet", "outlet", "sides", "sides", "floor", "ceiling"}));
  use_double(mesh);
  return mesh;
}

testkit::Mesh ring_mesh() {
  testkit::Grid grid;
  grid.cells = kRingCells;
  grid.closes_along_j = true;
  grid.point = [](const CellIndex& p) {
    // Finer at the cylinder.
    const double s = static_cast<double>(p[0]) / kRingCells[0];
    const double radius = kRadius + (kRimRadius - kRadius) * s * (0.5 + 0.5 * s);
    const double angle = 2.0 * std::numbers::pi * p[1] / kRingCells[1];
    return Vec3{radius * std::cos(angle), radius * std::sin(angle), kDepth * p[2] / kRingCells[2]};
  };
  grid.kind = [](const CellIndex&) { return CellKind::kPrisms; };
  testkit::Mesh mesh;
  testkit::append(mesh, testkit::mesh_grid(grid), "ring", 2,
                  names_of_sides({"cylinder", "ring_rim", "", "", "ring_floor", "ring_ceiling"}));
  use_double(mesh);
  return mesh;
}

SampleInfo write(const std::filesystem::path& directory) {
  testkit::File file;
  file.split = 4096;
  fill(
      file.add_region_set(), background_mesh(), [](double x, double y) { return !is_blanked(x, y); },
      background_fringe);
  fill(
      file.add_region_set(), ring_mesh(), [](double, double) { return true; }, ring_fringe);
  const auto folder = directory / "overset";
  std::filesystem::create_directories(folder);
  write_file(file, folder / "overset.fld");
  return {
      .name = "overset",
      .file = folder / "overset.fld",
      .description = "flow past a cylinder on two overset meshes; hexahedra and prisms, double precision"};
}

}  // namespace samples::overset
