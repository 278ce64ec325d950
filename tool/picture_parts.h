// The parts of a dataset that a picture shows, and the scalar that colours them.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>
#include <vtkDataArray.h>
#include <vtkSmartPointer.h>

#include "host/session.h"
#include "render/scene.h"
#include "tool/chosen_parts.h"

namespace tool {

// A scalar variable, or one component or the magnitude of a vector.
struct PictureScalar {
  int variable = 0;
  std::optional<int> component;  // of a vector; none: the magnitude
  std::string name;              // in UTF-8, with the component
  std::string title;             // the same with the label, if there is one, in place of the name
};

// The scalars that the lists mean: numbers and names of variables. A vector's may be followed by ".x", ".y",
// ".z" or
// ".magnitude", the default. Throws CommandError (wrong usage) for an item that means none.
std::vector<PictureScalar> find_scalars(host::Session& session, const std::vector<std::string>& lists);
// The one that `text` means. Throws CommandError also when it means several.
PictureScalar find_scalar(host::Session& session, const std::string& text);

// The first scalar per node that one of the parts has at the session's step, or else the first such vector's
// magnitude; none when there is neither.
std::optional<PictureScalar> first_scalar(host::Session& session, const std::vector<int>& parts);

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

// Values as one number per tuple: of a vector a component, or the magnitude without one. Null for null.
vtkSmartPointer<vtkDataArray> as_scalars(vtkDataArray* values, std::optional<int> component);

// The scalar's values on a part at the session's step, per node or element; null when there are none.
vtkSmartPointer<vtkDataArray> scalar_values(host::Session& session, const PictureScalar& scalar, int part);

}  // namespace tool
