#include "tests/decoders/expected_geometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace decoders {
namespace {

using Point = std::array<double, 3>;
using Matrix = std::array<Point, 3>;  // rows

constexpr double kUnknown = std::numeric_limits<double>::infinity();

// Files may have any number; the difference wraps around.
void subtract(std::vector<std::int32_t>& numbers, std::int32_t bias, bool keeps_none) {
  for (std::int32_t& number : numbers) {
    if (keeps_none && number == -1) continue;
    number = static_cast<std::int32_t>(static_cast<std::uint32_t>(number) - static_cast<std::uint32_t>(bias));
  }
}

double sum_of_sizes(const Point& p) {
  return std::abs(p[0]) + std::abs(p[1]) + std::abs(p[2]);
}

Point point_of(const DecodedAction& action, std::size_t place) {
  return {action.numbers.at(place), action.numbers.at(place + 1), action.numbers.at(place + 2)};
}

Point minus(const Point& a, const Point& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Point times(const Matrix& m, const Point& p) {
  Point result{};
  for (std::size_t i = 0; i < 3; ++i) result[i] = m[i][0] * p[0] + m[i][1] * p[1] + m[i][2] * p[2];
  return result;
}

// An affine map p -> m (p - before) + after, and how exact its numbers are.
struct Map {
  bool changes = true;
  Matrix m{Point{1, 0, 0}, Point{0, 1, 0}, Point{0, 0, 1}};
  Point before{}, after{};
  bool is_exact = true;
};

Map rotation(const DecodedAction& action) {
  Point u = point_of(action, 3);
  const double length = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
  if (length > 0) {
    for (double& component : u) component /= length;
  }
  const double co = std::cos(action.numbers.at(6));
  const double si = std::sin(action.numbers.at(6));
  const double t = 1 - co;
  Map map{.before = point_of(action, 0)};
  map.m = {Point{u[0] * u[0] * t + co, u[0] * u[1] * t - u[2] * si, u[0] * u[2] * t + u[1] * si},
           Point{u[0] * u[1] * t + u[2] * si, u[1] * u[1] * t + co, u[1] * u[2] * t - u[0] * si},
           Point{u[0] * u[2] * t - u[1] * si, u[1] * u[2] * t + u[0] * si, u[2] * u[2] * t + co}};
  return map;
}

Map four_points(const DecodedAction& action) {
  Matrix a{};  // columns are the edges
  Matrix b{};
  for (std::size_t k = 0; k < 3; ++k) {
    const Point from = minus(point_of(action, 3 * (k + 1)), point_of(action, 0));
    const Point to = minus(point_of(action, 12 + 3 * (k + 1)), point_of(action, 12));
    for (std::size_t i = 0; i < 3; ++i) {
      a[i][k] = from[i];
      b[i][k] = to[i];
    }
  }
  const auto cofactor = [&](std::size_t i, std::size_t k) {
    const std::size_t i1 = (i + 1) % 3;
    const std::size_t i2 = (i + 2) % 3;
    const std::size_t k1 = (k + 1) % 3;
    const std::size_t k2 = (k + 2) % 3;
    return a[i1][k1] * a[i2][k2] - a[i1][k2] * a[i2][k1];
  };
  double determinant = 0.0;
  double size = 0.0;
  for (std::size_t k = 0; k < 3; ++k) {
    determinant += a[0][k] * cofactor(0, k);
    for (const std::size_t other : {(k + 1) % 3, (k + 2) % 3}) {
      size += std::abs(a[0][k] * a[1][other] * a[2][3 - k - other]);
    }
  }
  Map map{.changes = determinant != 0.0};
  // Where the determinant is lost in rounding, what the map does is too.
  map.is_exact = size == 0.0 || std::abs(determinant) > 1e-6 * size;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t k = 0; k < 3; ++k) {
      map.m[i][k] = 0.0;
      for (std::size_t l = 0; l < 3; ++l) map.m[i][k] += b[i][l] * cofactor(k, l) / determinant;
    }
  }
  map.before = point_of(action, 0);
  map.after = point_of(action, 12);
  return map;
}

Map map_of(const DecodedAction& action) {
  const std::string_view kind = action.kind;
  if (kind.starts_with("Rotate")) return rotation(action);
  if (kind.starts_with("Translate")) return {.after = point_of(action, 0)};
  if (kind.starts_with("4Points")) return four_points(action);
  Map map{.before = point_of(action, 0), .after = point_of(action, 0)};
  for (std::size_t i = 0; i < 3; ++i) map.m[i][i] = action.numbers.at(3 + i);
  return map;
}

// The nodes of the volumes that a moving region names.
std::vector<char> moved_nodes(const ExpectedGeometry& geometry, const DecodedMovingRegion& region) {
  std::vector<char> is_moved(geometry.nodes.count());
  for (const std::string& name : region.names) {
    const auto volume =
        std::find_if(geometry.volumes.begin(), geometry.volumes.end(),
                     [&](const DecodedVolume& candidate) { return name.starts_with(candidate.name); });
    if (volume == geometry.volumes.end()) continue;
    for (const std::int32_t element : volume->elements) {
      if (!geometry.has_element(element)) continue;
      for (const std::int32_t node : geometry.nodes_of(static_cast<std::size_t>(element))) {
        if (geometry.has_node(node)) is_moved[static_cast<std::size_t>(node)] = 1;
      }
    }
  }
  return is_moved;
}

void apply(const Map& map, ExpectedGeometry& geometry, std::size_t node) {
  double epsilon = 0x1p-46;
  Point p{};
  for (std::size_t i = 0; i < 3; ++i) {
    p[i] = geometry.nodes.axes[i].values[node];
    if (geometry.nodes.axes[i].is_single) epsilon = 0x1p-21;
  }
  const double size = sum_of_sizes(p) + sum_of_sizes(map.before);
  const double factor = sum_of_sizes(map.m[0]) + sum_of_sizes(map.m[1]) + sum_of_sizes(map.m[2]);
  const Point moved = times(map.m, minus(p, map.before));
  for (std::size_t i = 0; i < 3; ++i) {
    const double value = moved[i] + map.after[i];
    Reals& axis = geometry.nodes.axes[i];
    axis.values[node] = axis.is_single ? static_cast<double>(static_cast<float>(value)) : value;
  }
  double& tolerance = geometry.tolerance[node];
  tolerance = factor * (tolerance + epsilon * size) + epsilon * sum_of_sizes(map.after) + 1e-30;
  if (!map.is_exact || !std::isfinite(tolerance)) tolerance = kUnknown;
}

}  // namespace

int nodes_of_element_code(std::int32_t code) {
  switch (code) {
    case 23:
      return 3;
    case 24:
    case 34:
      return 4;
    case 35:
      return 5;
    case 36:
      return 6;
    case 38:
      return 8;
    default:
      return 0;
  }
}

int nodes_of_face_code(std::int32_t code) {
  switch (code) {
    case 122:
      return 2;
    case 133:
      return 3;
    case 134:
      return 4;
    default:
      return 0;
  }
}

std::vector<std::int32_t> ExpectedGeometry::nodes_of(std::size_t element) const {
  std::vector<std::int32_t> corners;
  for (int j = 0; j < nodes_of_element_code(elements.types[element]); ++j) {
    const std::size_t place = heads[element] + static_cast<std::size_t>(j);
    if (place < elements.nodes.size()) corners.push_back(elements.nodes[place]);
  }
  return corners;
}

void ExpectedGeometry::load(const DecodedRegionSet& set, std::int32_t bias) {
  coordinate_system = set.coordinate_system.value_or(0);
  if (set.nodes) {
    nodes = *set.nodes;
    tolerance.assign(nodes.count(), 0.0);
  }
  if (set.elements) {
    elements = *set.elements;
    subtract(elements.nodes, bias, false);
    heads.clear();
    std::size_t head = 0;
    for (const std::int32_t type : elements.types) {
      heads.push_back(head);
      // Triangles and quadrilaterals do not count, whatever they say.
      if (type >= 30) head += static_cast<std::size_t>(nodes_of_element_code(type));
    }
  }
  if (set.surfaces) {
    surfaces = *set.surfaces;
    for (DecodedSurface& surface : surfaces) {
      subtract(surface.nodes, bias, false);
      subtract(surface.links, bias, true);
    }
  }
  if (set.volumes) {
    volumes = *set.volumes;
    for (DecodedVolume& volume : volumes) subtract(volume.elements, bias, false);
  }
  if (set.materials) {
    materials = *set.materials;
    const std::int32_t smallest =
        materials.empty() ? 0 : *std::min_element(materials.begin(), materials.end());
    if (smallest < 0) subtract(materials, smallest - 1, false);
  }
}

void ExpectedGeometry::move(const DecodedMotion& motion) {
  const DecodedNodes entry = nodes;
  const std::vector<double> entry_tolerance = tolerance;
  for (const DecodedMovingRegion& region : motion.regions) {
    const std::vector<char> is_moved = moved_nodes(*this, region);
    for (std::size_t node = 0; node < is_moved.size(); ++node) {
      if (is_moved[node] == 0) continue;
      for (std::size_t i = 0; i < 3; ++i) nodes.axes[i].values[node] = entry.axes[i].values[node];
      tolerance[node] = entry_tolerance[node];
    }
    for (const DecodedAction& action : region.actions) {
      const Map map = map_of(action);
      for (std::size_t node = 0; map.changes && node < is_moved.size(); ++node) {
        if (is_moved[node] != 0) apply(map, *this, node);
      }
    }
  }
}

}  // namespace decoders
