// The mesh of the stirred tank: two grids around the axis, without the cells of impeller, shaft and baffles.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "samples/tank.h"
#include "samples/tank_shape.h"
#include "testkit/grid_mesh.h"

namespace samples::tank {
namespace {

using testkit::CellIndex;
using testkit::CellKind;
using testkit::Grid;
using testkit::GridFace;
using testkit::Mesh;
using testkit::Vec3;

constexpr double kHubRadius = 0.0125;
constexpr double kBladeRoot = 0.04;
constexpr double kDiscRadius = 0.0625;
constexpr double kBladeBottom = 0.163;
constexpr double kBladeTop = 0.197;
constexpr double kDiscBottom = 0.177;
constexpr double kDiscTop = 0.183;
constexpr double kBaffleRadius = 0.225;  // they reach from here to the wall
constexpr int kBlades = 6;
constexpr int kBaffles = 4;

// Lines of a grid in cylindrical coordinates; `angle` without the one at 2 pi.
struct Lines {
  std::vector<double> radius, angle, z;
};

struct Middle {
  double radius = 0.0;
  double z = 0.0;
};

// Angles of a full circle, with `count` thin cells of this width around the multiples of 2 pi / count, and
// `between` equal cells between them. Cell c is thin if c is a multiple of between + 1.
std::vector<double> angles(int count, double width, int between) {
  std::vector<double> result;
  const double whole = 2.0 * std::numbers::pi / count;
  for (int n = 0; n < count; ++n) {
    const double start = n * whole - width / 2.0;
    result.push_back(start);
    for (int b = 0; b < between; ++b) result.push_back(start + width + b * (whole - width) / between);
  }
  return result;
}

constexpr int kBetweenBlades = 9;
constexpr int kBetweenBaffles = 13;

Lines impeller_lines() {
  return {.radius = {0.0, kShaftRadius, kHubRadius, 0.02, 0.03, kBladeRoot, 0.05, kDiscRadius, 0.073,
                     kBladeTip, 0.095, 0.108, kZoneRadius},
          .angle = angles(kBlades, 3.0 * std::numbers::pi / 180.0, kBetweenBlades),
          .z = {kZoneBottom, 0.135, 0.15, kBladeBottom, 0.17, kDiscBottom, kDiscTop, 0.19, kBladeTop, 0.21,
                0.225, kZoneTop}};
}

Lines tank_lines() {
  return {.radius = {0.0, kShaftRadius, 0.02, 0.04, 0.06, 0.08, 0.1, kZoneRadius, 0.15, 0.175, 0.2,
                     kBaffleRadius, 0.2375, kTankRadius},
          .angle = angles(kBaffles, 2.0 * std::numbers::pi / 180.0, kBetweenBaffles),
          .z = {0.0,  0.02, 0.04,  0.06, 0.08, 0.1,  kZoneBottom, 0.15, 0.18,  0.21,       kZoneTop,
                0.26, 0.28, 0.305, 0.33, 0.36, 0.39, 0.42,        0.45, 0.475, kTankHeight}};
}

// The grid over these lines, without kinds of cells; `lines` must outlive it.
Grid grid_over(const Lines& lines) {
  Grid grid;
  grid.cells = {static_cast<int>(lines.radius.size()) - 1, static_cast<int>(lines.angle.size()),
                static_cast<int>(lines.z.size()) - 1};
  grid.closes_along_j = true;
  grid.has_axis = true;
  grid.point = [&lines](const CellIndex& p) {
    const double r = lines.radius[static_cast<std::size_t>(p[0])];
    const double a = lines.angle[static_cast<std::size_t>(p[1])];
    return Vec3{r * std::cos(a), r * std::sin(a), lines.z[static_cast<std::size_t>(p[2])]};
  };
  return grid;
}

Middle middle_of(const Lines& lines, const CellIndex& cell) {
  const auto at = [](const std::vector<double>& list, int index) {
    const auto i = static_cast<std::size_t>(index);
    return (list[i] + list[i + 1]) / 2.0;
  };
  return {.radius = at(lines.radius, cell[0]), .z = at(lines.z, cell[2])};
}

bool between(double value, double low, double high) {
  return value > low && value < high;
}

enum class Solid { kNone, kBlade, kDisc, kHub };

// What occupies a cell of the impeller's zone.
Solid solid_at(const Lines& lines, const CellIndex& cell) {
  const Middle m = middle_of(lines, cell);
  const bool in_impeller = between(m.z, kBladeBottom, kBladeTop);
  if (m.radius < kHubRadius && in_impeller) return Solid::kHub;
  if (m.radius < kShaftRadius && m.z > kBladeTop) return Solid::kHub;
  if (m.radius < kDiscRadius && between(m.z, kDiscBottom, kDiscTop)) return Solid::kDisc;
  const bool is_thin = cell[1] % (kBetweenBlades + 1) == 0;
  return is_thin && in_impeller && between(m.radius, kBladeRoot, kBladeTip) ? Solid::kBlade : Solid::kNone;
}

CellIndex beyond(const GridFace& face, int cells_round) {
  CellIndex cell = face.cell;
  const auto side = static_cast<std::size_t>(face.side);
  cell[side / 2] += side % 2 == 0 ? -1 : 1;
  cell[1] = (cell[1] + cells_round) % cells_round;
  return cell;
}

void add_impeller_zone(Mesh& mesh) {
  const Lines lines = impeller_lines();
  Grid grid = grid_over(lines);
  grid.kind = [&](const CellIndex& cell) {
    return solid_at(lines, cell) == Solid::kNone ? CellKind::kHexahedron : CellKind::kNone;
  };
  const auto surface_of = [&](const GridFace& face) -> std::string {
    const CellIndex cell = beyond(face, grid.cells[1]);
    const bool is_inside = cell[0] >= 0 && cell[0] < grid.cells[0] && cell[2] >= 0 && cell[2] < grid.cells[2];
    if (!is_inside) return "sliding_impeller";
    switch (solid_at(lines, cell)) {
      case Solid::kBlade:
        return "blade_" + std::to_string(cell[1] / (kBetweenBlades + 1) + 1);
      case Solid::kDisc:
        return "disc";
      default:
        return "hub";
    }
  };
  testkit::append(mesh, testkit::mesh_grid(grid), "impeller_zone", 1, surface_of);
}

void add_tank_zone(Mesh& mesh) {
  const Lines lines = tank_lines();
  Grid grid = grid_over(lines);
  const auto in_impeller_zone = [](const Middle& m) {
    return m.radius < kZoneRadius && between(m.z, kZoneBottom, kZoneTop);
  };
  const auto in_shaft = [](const Middle& m) { return m.radius < kShaftRadius && m.z > kZoneTop; };
  grid.kind = [&](const CellIndex& cell) {
    const Middle m = middle_of(lines, cell);
    const bool in_baffle = m.radius > kBaffleRadius && cell[1] % (kBetweenBaffles + 1) == 0;
    return in_impeller_zone(m) || in_shaft(m) || in_baffle ? CellKind::kNone : CellKind::kHexahedron;
  };
  const auto surface_of = [&](const GridFace& face) -> std::string {
    const CellIndex cell = beyond(face, grid.cells[1]);
    if (cell[2] < 0) return "tank_bottom";
    if (cell[2] >= grid.cells[2]) return "water_surface";
    if (cell[0] >= grid.cells[0]) return "tank_wall";
    const Middle m = middle_of(lines, cell);
    if (in_impeller_zone(m)) return "sliding_tank";
    return in_shaft(m) ? "shaft" : "baffles";
  };
  testkit::append(mesh, testkit::mesh_grid(grid), "tank_zone", 2, surface_of);
}

}  // namespace

Mesh mesh() {
  Mesh mesh;
  add_impeller_zone(mesh);
  add_tank_zone(mesh);
  mesh.nodes.precision.fill(testkit::Precision::kDouble);
  testkit::Surface impeller{.name = "&VFG_impeller"};
  for (int blade = 1; blade <= kBlades; ++blade) impeller.add(mesh.surface("blade_" + std::to_string(blade)));
  impeller.add(mesh.surface("disc"));
  impeller.add(mesh.surface("hub"));
  testkit::Surface sliding{.name = "@sliding"};
  sliding.add(mesh.surface("sliding_impeller"));
  sliding.add(mesh.surface("sliding_tank"));
  std::fill(sliding.link.values().begin(), sliding.link.values().end(), -1);
  mesh.surfaces.push_back(std::move(impeller));
  mesh.surfaces.push_back(std::move(sliding));
  return mesh;
}

}  // namespace samples::tank
