#include "samples/sector.h"

#include <cmath>
#include <numbers>
#include <string>

#include "samples/fields.h"
#include "testkit/file_writer.h"
#include "testkit/grid_mesh.h"

namespace samples::sector {
namespace {

using testkit::CellIndex;
using testkit::CellKind;
using testkit::Side;
using testkit::Vec3;

constexpr double kInnerRadius = 0.3;
constexpr double kOuterRadius = 0.6;
constexpr double kHeight = 0.4;
constexpr double kAngle = std::numbers::pi / 3.0;
constexpr CellIndex kCells{16, 24, 16};

constexpr double kDensity = 1.2;  // kg/m3
constexpr double kSwirl = 6.0;    // radius times velocity around the axis, m2/s
constexpr double kAxial = 20.0;   // largest velocity along the axis, m/s

// From -1 at the hub to 1 at the casing.
double across(double radius) {
  return (2.0 * radius - kInnerRadius - kOuterRadius) / (kOuterRadius - kInnerRadius);
}

std::string surface_of(Side side) {
  switch (side) {
    case Side::kLowI:
      return "hub";
    case Side::kHighI:
      return "casing";
    case Side::kLowJ:
      return "periodic_low";
    case Side::kHighJ:
      return "periodic_high";
    case Side::kLowK:
      return "inlet";
    default:
      return "outlet";
  }
}

}  // namespace

Vec3 velocity(double x, double y, double /*z*/) {
  // A free vortex and a parabola along the axis.
  const double r2 = x * x + y * y;
  const double s = across(std::sqrt(r2));
  return {-kSwirl * y / r2, kSwirl * x / r2, kAxial * (1.0 - s * s)};
}

double pressure(double x, double y, double z) {
  return 101325.0 - 0.5 * kDensity * kSwirl * kSwirl / (x * x + y * y) - 100.0 * z / kHeight;
}

double temperature(double x, double y, double z) {
  const double angle = std::atan2(y, x);
  return 300.0 + 20.0 * across(std::hypot(x, y)) +
         10.0 * std::cos(2.0 * std::numbers::pi * angle / kAngle) * z / kHeight;
}

testkit::Mesh mesh() {
  testkit::Grid grid;
  grid.cells = kCells;
  grid.point = [](const CellIndex& p) {
    return Vec3{std::lerp(kInnerRadius, kOuterRadius, static_cast<double>(p[0]) / kCells[0]),
                kAngle * p[1] / kCells[1], kHeight * p[2] / kCells[2]};
  };
  grid.kind = [](const CellIndex& cell) {
    return cell[0] < kCells[0] / 2 ? CellKind::kPrisms : CellKind::kHexahedron;
  };
  const testkit::GridMesh meshed = testkit::mesh_grid(grid);
  testkit::Mesh mesh;
  mesh.coordinate_system = 1;
  testkit::append(mesh, meshed, "", 1, [](const testkit::GridFace& face) { return surface_of(face.side); });
  round_to_single(mesh.nodes);
  mesh.volumes = {{.name = "inner"}, {.name = "outer"}};
  for (std::size_t e = 0; e < meshed.cell_of_element.size(); ++e) {
    const std::size_t volume = meshed.cell_of_element[e][0] < kCells[0] / 2 ? 0 : 1;
    mesh.volumes[volume].elements.values().push_back(static_cast<std::int32_t>(e));
  }
  return mesh;
}

SampleInfo write(const std::filesystem::path& directory) {
  const testkit::Mesh mesh = sector::mesh();
  // The formulas at the Cartesian position of a node.
  const auto cartesian = [](auto formula) {
    return [formula](double radius, double angle, double z) {
      return formula(radius * std::cos(angle), radius * std::sin(angle), z);
    };
  };
  testkit::File file;
  file.header.set_bias(1);
  testkit::RegionSet& set = file.add_region_set();
  set.add(testkit::mesh_sections(mesh));
  set.add(scalar_section(scalar_at(mesh.nodes, "Pressure", "Static pressure [Pa]", cartesian(pressure))));
  set.add(scalar_section(scalar_at(mesh.nodes, "Temperature", "Temperature [K]", cartesian(temperature))));
  set.add(vector_section(vector_at(mesh.nodes, "Velocity", "Velocity [m/s]", cartesian(velocity))));
  const auto folder = directory / "sector";
  std::filesystem::create_directories(folder);
  write_file(file, folder / "sector.fld");
  return {.name = "sector",
          .file = folder / "sector.fld",
          .description = "swirling flow through an annulus sector; cylindrical coordinates, index base 1"};
}

}  // namespace samples::sector
