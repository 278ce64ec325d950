// The parts of a dataset that a picture shows, and the range of the values that colour them.
#pragma once

#include <array>
#include <span>
#include <vtkDataArray.h>

#include "host/session.h"
#include "tool/chosen_parts.h"

namespace tool {

// The surfaces outside of the reader's groups, because grouped surfaces repeat others or lie inside; else all
// surfaces; else the volumes; else the whole meshes.
ChosenParts usual_parts(host::Session& session);

// Whether a scalar has values on the parts of a picture.
enum class ValuesOnParts {
  none,       // and some part has nodes
  undefined,  // no finite number among them
  defined,    // or no part has nodes
};

// The smallest and largest of the finite values on parts.
class ValueRange {
 public:
  ValueRange() = default;
  ValueRange(double low, double high) : low_(low), high_(high), is_empty_(false) {}

  // The values of a part with so many nodes; null when there are none.
  void add(vtkDataArray* values, int nodes);
  void add(std::span<const float> values);
  void add(const ValueRange& other);

  // What was added.
  ValuesOnParts on_parts() const;

  // The ends of a colour scale: 0 and 1 if the range is empty, and never the same.
  std::array<double, 2> ends() const;

 private:
  double low_ = 0;
  double high_ = 0;
  bool is_empty_ = true;
  bool has_nodes_ = false;
  bool has_values_ = false;
};

}  // namespace tool
