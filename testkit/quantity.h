// Scalar and vector quantities: one value per node.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "testkit/mesh.h"
#include "testkit/section.h"

namespace testkit {

struct Scalar {
  std::string name{};   // at most 22 characters
  std::string label{};  // at most 32 characters
  Reals values{};
  Precision precision = Precision::kSingle;
};

struct Vector {
  std::string name{};
  std::string label{};
  Reals x{}, y{}, z{};
  std::array<Precision, 3> precision{Precision::kSingle, Precision::kSingle, Precision::kSingle};
  std::int32_t leading = 0;  // the integer before the label
};

// "LS_Scalar:<name>": 0 label, 1 value count, 2 values. Throws std::invalid_argument for a name over 22
// characters.
Section scalar_section(const Scalar& scalar);
// "LS_Vector:<name>": 0 vector's leading integer, 1 label, 2 count per component, 3 x, 4 y, 5 z.
Section vector_section(const Vector& vector);

// The values of a function of the coordinates at all nodes (the coordinates being lists).
template <class Function>
std::vector<double> at_nodes(const Nodes& nodes, Function function) {
  const auto& x = nodes.x.values();
  const auto& y = nodes.y.values();
  const auto& z = nodes.z.values();
  std::vector<double> values(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) values[i] = function(x[i], y[i], z[i]);
  return values;
}

}  // namespace testkit
