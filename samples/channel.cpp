#include "samples/channel.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "samples/fields.h"
#include "testkit/element_faces.h"
#include "testkit/file_writer.h"
#include "testkit/grid_mesh.h"

namespace samples::channel {
namespace {

using testkit::CellIndex;
using testkit::CellKind;
using testkit::GridFace;
using testkit::Mesh;
using testkit::Side;
using testkit::Vec3;

constexpr double kSpeed = 5.0;         // mean, m/s
constexpr double kDensity = 1.2;       // kg/m3
constexpr double kPressureDrop = 2.0;  // Pa/m
constexpr double kSquare = 0.08;       // half the side of the square of cells that the cylinder replaces
constexpr double kBentTo = 0.36;       // distance from the axis up to which the grid is deformed
constexpr int kLayers = 8;             // of cells along z
constexpr double kPlane = 0.4;         // x of the plane in the wake

// Lines of the grid, every 0.04 m, every 0.02 m around the cylinder, and every 0.04 m again; `start` counts
// steps of 0.02 m.
std::vector<double> lines(int start, int coarse_before, int fine, int coarse_after) {
  constexpr double kStep = 0.02;
  int at = start;
  std::vector<double> result{kStep * at};
  const auto go_on = [&](int count, int steps) {
    for (int n = 0; n < count; ++n) {
      at += steps;
      result.push_back(kStep * at);
    }
  };
  go_on(coarse_before, 2);
  go_on(fine, 1);
  go_on(coarse_after, 2);
  return result;
}

// The rectangular grid.
struct Lines {
  std::vector<double> x = lines(-30, 11, 18, 40);
  std::vector<double> y = lines(-20, 6, 16, 6);

  double middle_x(const CellIndex& cell) const { return middle(x, cell[0]); }
  double middle_y(const CellIndex& cell) const { return middle(y, cell[1]); }

 private:
  static double middle(const std::vector<double>& list, int cell) {
    const auto at = static_cast<std::size_t>(cell);
    return (list[at] + list[at + 1]) / 2.0;
  }
};

// Deforms squares around the axis to circles, less so further out.
Vec3 bent(double x, double y, double z) {
  const double reach = std::max(std::abs(x), std::abs(y));
  if (reach == 0.0 || reach >= kBentTo) return {x, y, z};
  const double weight = std::min(1.0, (kBentTo - reach) / (kBentTo - kSquare));
  const double on_circle = kRadius / kSquare * reach / std::hypot(x, y);
  const double factor = (1.0 - weight) + weight * on_circle;
  return {x * factor, y * factor, z};
}

CellKind kind_at(double x, double y) {
  const double reach = std::max(std::abs(x), std::abs(y));
  if (reach < kSquare) return CellKind::kNone;
  if (reach < 0.16) return CellKind::kTetrahedra;
  return x > kPlane && x < 1.0 ? CellKind::kPrisms : CellKind::kHexahedron;
}

std::string surface_of(const GridFace& face, const Lines& grid) {
  switch (face.side) {
    case Side::kLowK:
      return "floor";
    case Side::kHighK:
      return "ceiling";
    default:
      break;
  }
  if (std::max(std::abs(grid.middle_x(face.cell)), std::abs(grid.middle_y(face.cell))) < 0.16)
    return "obstacle";
  if (face.side == Side::kLowI) return "inlet";
  return face.side == Side::kHighI ? "outlet" : "sides";
}

void add_grouping_surface(Mesh& mesh) {
  testkit::Surface walls{.name = "&VFG_walls"};
  for (const char* name : {"floor", "ceiling", "sides", "obstacle"}) walls.add(mesh.surface(name));
  mesh.surfaces.push_back(std::move(walls));
}

// Every face in the plane, once, from the elements upstream.
void add_wake_plane(Mesh& mesh, double plane) {
  testkit::Surface surface{.name = "@wake_plane"};
  const auto& x = mesh.nodes.x.values();
  testkit::for_each_element(mesh.elements, [&](std::int32_t, std::int32_t code, const auto& corners) {
    const bool lies_before = std::all_of(corners.begin(), corners.end(), [&](auto node) {
      return x[static_cast<std::size_t>(node)] < plane + 1e-6;
    });
    if (!lies_before) return;
    for (const testkit::FaceCorners& local : testkit::faces_of(code)) {
      const testkit::Face face = testkit::face_of(corners, local, -1);
      const auto end = face.corners.begin() + static_cast<std::ptrdiff_t>(face.corner_count());
      const bool lies_in_plane = std::all_of(face.corners.begin(), end, [&](auto node) {
        return std::abs(x[static_cast<std::size_t>(node)] - plane) < 1e-6;
      });
      if (lies_in_plane) add_face(surface, face);
    }
  });
  mesh.surfaces.push_back(std::move(surface));
}

}  // namespace

Vec3 velocity(double x, double y, double z) {
  // Potential flow past a cylinder, slower near floor and ceiling.
  const double profile = 6.0 * z * (kHeight - z) / (kHeight * kHeight);
  const double r2 = x * x + y * y;
  const double ratio = kRadius * kRadius / (r2 * r2);
  return {kSpeed * profile * (1.0 - ratio * (x * x - y * y)), -kSpeed * profile * ratio * 2.0 * x * y, 0.0};
}

double pressure(double x, double y, double z) {
  const Vec3 v = velocity(x, y, z);
  return 0.5 * kDensity * (kSpeed * kSpeed - v[0] * v[0] - v[1] * v[1]) - kPressureDrop * x;
}

double temperature(double x, double y, double z) {
  // A plume that starts at the cylinder and becomes wider and cooler; slightly warmer at the ceiling.
  const double width = kRadius * std::sqrt(1.0 + std::max(x, 0.0) / (2.0 * kRadius));
  const double strength = 20.0 * (1.0 + std::tanh(x / kRadius)) * kRadius / width;
  return 293.15 + strength * std::exp(-y * y / (2.0 * width * width)) + 2.0 * z / kHeight;
}

bool has_temperature(double x, double y, double z) {
  // No node is close enough to the ball's surface for rounding to matter.
  return std::hypot(x - 0.9, y, z - 0.16) > 0.105;
}

Mesh mesh() {
  const Lines grid_lines;
  testkit::Grid grid;
  grid.cells = {static_cast<int>(grid_lines.x.size()) - 1, static_cast<int>(grid_lines.y.size()) - 1,
                kLayers};
  grid.point = [&](const CellIndex& point) {
    return bent(grid_lines.x[static_cast<std::size_t>(point[0])],
                grid_lines.y[static_cast<std::size_t>(point[1])], kHeight * point[2] / kLayers);
  };
  grid.kind = [&](const CellIndex& cell) {
    return kind_at(grid_lines.middle_x(cell), grid_lines.middle_y(cell));
  };
  const testkit::GridMesh meshed = testkit::mesh_grid(grid);

  Mesh mesh;
  testkit::append(mesh, meshed, "", 1, [&](const GridFace& face) { return surface_of(face, grid_lines); });
  round_to_single(mesh.nodes);
  mesh.volumes = {{.name = "upstream"}, {.name = "around_obstacle"}, {.name = "wake"}};
  for (std::size_t e = 0; e < meshed.cell_of_element.size(); ++e) {
    const double x = grid_lines.middle_x(meshed.cell_of_element[e]);
    const std::size_t volume = x < -0.2 ? 0 : x < 0.24 ? 1 : 2;
    mesh.volumes[volume].elements.values().push_back(static_cast<std::int32_t>(e));
    mesh.materials.values()[e] = static_cast<std::int32_t>(volume) + 1;
  }
  add_grouping_surface(mesh);
  add_wake_plane(mesh, kPlane);
  return mesh;
}

SampleInfo write(const std::filesystem::path& directory) {
  const Mesh mesh = channel::mesh();
  testkit::File file;
  testkit::RegionSet& set = file.add_region_set();
  set.add(testkit::mesh_sections(mesh));
  set.add(scalar_section(scalar_at(mesh.nodes, "Pressure", "Static pressure [Pa]", pressure)));
  set.add(scalar_section(
      scalar_at(mesh.nodes, "Temperature", "Temperature [K]", [](double x, double y, double z) {
        return has_temperature(x, y, z) ? temperature(x, y, z) : kUndefined;
      })));
  set.add(vector_section(vector_at(mesh.nodes, "Velocity", "Velocity [m/s]", velocity)));
  const auto folder = directory / "channel";
  std::filesystem::create_directories(folder);
  write_file(file, folder / "channel.fld");
  return {
      .name = "channel",
      .file = folder / "channel.fld",
      .description = "steady flow past a hot cylinder in a channel; tetrahedra, prisms, pyramids, hexahedra"};
}

}  // namespace samples::channel
