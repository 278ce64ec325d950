// Evaluates formulas at the nodes of the samples.
#pragma once

#include <string>

#include "testkit/mesh.h"
#include "testkit/quantity.h"
#include "testkit/vec3.h"

namespace samples {

// The marker of undefined values in the header of every sample.
inline constexpr double kUndefined = 1.0e30;

// Rounds the coordinates to single precision, so that formulas are evaluated exactly where a reader finds the
// nodes.
inline void round_to_single(testkit::Nodes& nodes) {
  for (testkit::Reals* list : {&nodes.x, &nodes.y, &nodes.z}) {
    for (double& value : list->values()) value = static_cast<double>(static_cast<float>(value));
  }
}

// A scalar quantity with the values f(x, y, z).
template <class Function>
testkit::Scalar scalar_at(const testkit::Nodes& nodes, const std::string& name, const std::string& label,
                          Function f) {
  return {.name = name, .label = label, .values = testkit::at_nodes(nodes, f)};
}

// A vector quantity with the values f(x, y, z), a Vec3.
template <class Function>
testkit::Vector vector_at(const testkit::Nodes& nodes, const std::string& name, const std::string& label,
                          Function f) {
  const auto component = [&](std::size_t c) {
    return testkit::at_nodes(nodes, [&](double x, double y, double z) { return f(x, y, z)[c]; });
  };
  return {.name = name, .label = label, .x = component(0), .y = component(1), .z = component(2)};
}

}  // namespace samples
