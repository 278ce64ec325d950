#include "analysis/integrals.h"

#include <array>
#include <cmath>

#include "analysis/simplices.h"
#include "host/undefined_value.h"

namespace analysis {
namespace {

constexpr std::size_t kMostNodes = 8;
using Corners = std::array<Vec3, kMostNodes>;
using Weights = std::array<double, kMostNodes>;

bool has_value(float value) {
  return !host::is_undefined(value) && !std::isnan(value);
}

std::int64_t count_undefined(std::span<const float> values) {
  std::int64_t count = 0;
  for (const float value : values) count += has_value(value) ? 0 : 1;
  return count;
}

void take_corners(const host::Coordinates& nodes, std::span<const int> element, Corners& corners) {
  for (std::size_t c = 0; c < element.size(); ++c) {
    const auto node = static_cast<std::size_t>(element[c]) - 1;
    corners[c] = {static_cast<double>(nodes.x()[node]), static_cast<double>(nodes.y()[node]),
                  static_cast<double>(nodes.z()[node])};
  }
}

Vec3 triangle_area(const Corners& corners, const Simplex& triangle) {
  const Vec3& a = corners[static_cast<std::size_t>(triangle[0])];
  const Vec3& b = corners[static_cast<std::size_t>(triangle[1])];
  const Vec3& c = corners[static_cast<std::size_t>(triangle[2])];
  return 0.5 * cross(b - a, c - a);
}

// Adds the area, and per corner the integral of the function that is 1 there and 0 at the other corners.
double weigh_face(const Corners& corners, std::span<const Simplex> triangles, Weights& weights) {
  double area = 0;
  for (const Simplex& triangle : triangles) {
    const double part = length(triangle_area(corners, triangle));
    area += part;
    for (std::size_t i = 0; i < 3; ++i) weights[static_cast<std::size_t>(triangle[i])] += part / 3;
  }
  return area;
}

double weigh_solid(const Corners& corners, std::size_t nodes, Weights& weights) {
  double volume = 0;
  for (const Simplex& simplex : tetrahedra_of(std::span(corners).first(nodes))) {
    const auto corner = [&](std::size_t i) { return corners[static_cast<std::size_t>(simplex[i])]; };
    const double part = six_volumes(corner(0), corner(1), corner(2), corner(3)) / 6;
    volume += part;
    for (const int node : simplex) weights[static_cast<std::size_t>(node)] += part / 4;
  }
  return volume;
}

// Calls visit(element, corners of one, nodes of one, number from 0 in the part) for every element of the
// blocks of this dimension, or of all for 0.
template <typename Visit>
void for_each_element(const PartMesh& mesh, Visit visit) {
  Corners corners{};
  std::size_t number = 0;
  for (const host::ElementBlock& block : mesh.blocks) {
    const std::size_t count = block.size();
    for (std::size_t i = 0; i < count; ++i) {
      const std::span<const int> element = block.element(i);
      take_corners(mesh.nodes, element, corners);
      visit(block.shape, element, corners, number++);
    }
  }
}

template <typename Visit>
void for_each_face(const PartMesh& mesh, Visit visit) {
  for_each_element(mesh, [&](const host::ElementShape& shape, std::span<const int> element,
                             const Corners& corners, std::size_t number) {
    if (shape.dimension == 2) visit(element, corners, triangles_of(shape.nodes), number);
  });
}

double weigh(const host::ElementShape& shape, const Corners& corners, Weights& weights) {
  weights.fill(0);
  if (shape.dimension == 2) return weigh_face(corners, triangles_of(shape.nodes), weights);
  return weigh_solid(corners, static_cast<std::size_t>(shape.nodes), weights);
}

// The values of an element's corners; whether all are there.
bool take_values(const Column& column, std::span<const int> element, std::size_t number, Weights& values) {
  if (column.location == host::Location::element) {
    const float value = column.values[number];
    values.fill(static_cast<double>(value));
    return has_value(value);
  }
  bool are_there = true;
  for (std::size_t c = 0; c < element.size(); ++c) {
    const float value = column.values[static_cast<std::size_t>(element[c]) - 1];
    are_there = are_there && has_value(value);
    values[c] = static_cast<double>(value);
  }
  return are_there;
}

}  // namespace

std::size_t PartMesh::element_count() const {
  std::size_t count = 0;
  for (const host::ElementBlock& block : blocks) count += block.size();
  return count;
}

double measure_of(const PartMesh& mesh) {
  double measure = 0;
  Weights weights{};
  for_each_element(mesh, [&](const host::ElementShape& shape, std::span<const int>, const Corners& corners,
                             std::size_t) { measure += weigh(shape, corners, weights); });
  return measure;
}

std::vector<Integral> integrate(const PartMesh& mesh, std::span<const Column> columns) {
  std::vector<Integral> integrals(columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i)
    integrals[i].over.undefined = count_undefined(columns[i].values);
  Weights weights{};
  Weights values{};
  for_each_element(mesh, [&](const host::ElementShape& shape, std::span<const int> element,
                             const Corners& corners, std::size_t number) {
    const double measure = weigh(shape, corners, weights);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (!take_values(columns[i], element, number, values)) {
        ++integrals[i].over.left_out;
        continue;
      }
      integrals[i].over.measure += measure;
      for (std::size_t c = 0; c < element.size(); ++c) integrals[i].value += weights[c] * values[c];
    }
  });
  return integrals;
}

Vec3 vector_area(const PartMesh& mesh, Signs signs) {
  Vec3 sum{};
  for_each_face(mesh, [&](std::span<const int>, const Corners& corners, std::span<const Simplex> triangles,
                          std::size_t number) {
    for (const Simplex& triangle : triangles)
      sum += static_cast<double>(signs[number]) * triangle_area(corners, triangle);
  });
  return sum;
}

Integral integrate_flow(const PartMesh& mesh, Signs signs, std::span<const Column, 3> vector) {
  Integral flow;
  const std::size_t entries = vector[0].values.size();
  for (std::size_t i = 0; i < entries; ++i) {
    if (!has_value(vector[0].values[i]) || !has_value(vector[1].values[i]) || !has_value(vector[2].values[i]))
      ++flow.over.undefined;
  }
  std::array<Weights, 3> values{};
  for_each_face(mesh, [&](std::span<const int> element, const Corners& corners,
                          std::span<const Simplex> triangles, std::size_t number) {
    bool are_there = true;
    for (std::size_t axis = 0; axis < 3; ++axis)
      are_there = take_values(vector[axis], element, number, values[axis]) && are_there;
    if (!are_there) {
      ++flow.over.left_out;
      return;
    }
    for (const Simplex& triangle : triangles) {
      const Vec3 area = triangle_area(corners, triangle);
      flow.over.measure += length(area);
      Vec3 mean{};
      for (std::size_t i = 0; i < 3; ++i) {
        const auto corner = static_cast<std::size_t>(triangle[i]);
        mean += (1.0 / 3) * Vec3{values[0][corner], values[1][corner], values[2][corner]};
      }
      flow.value += static_cast<double>(signs[number]) * dot(mean, area);
    }
  });
  return flow;
}

PressureForce integrate_pressure(const PartMesh& mesh, Signs signs, const Column& pressure,
                                 double reference_pressure, const Vec3& about) {
  PressureForce result;
  result.over.undefined = count_undefined(pressure.values);
  Weights values{};
  for_each_face(mesh, [&](std::span<const int> element, const Corners& corners,
                          std::span<const Simplex> triangles, std::size_t number) {
    if (!take_values(pressure, element, number, values)) {
      ++result.over.left_out;
      return;
    }
    for (const Simplex& triangle : triangles) {
      const Vec3 area = triangle_area(corners, triangle);
      result.over.measure += length(area);
      double sum = 0;
      Vec3 arms{};      // the sum of the corners' places
      Vec3 products{};  // the sum of place times pressure
      for (std::size_t i = 0; i < 3; ++i) {
        const auto corner = static_cast<std::size_t>(triangle[i]);
        const Vec3 arm = corners[corner] - about;
        const double value = values[corner] - reference_pressure;
        sum += value;
        arms += arm;
        products += value * arm;
      }
      const Vec3 outwards = static_cast<double>(signs[number]) * area;
      result.force += (sum / 3) * outwards;
      // The integral of the product of two linear functions over a triangle.
      result.moment += cross((1.0 / 12) * (sum * arms + products), outwards);
    }
  });
  return result;
}

}  // namespace analysis
