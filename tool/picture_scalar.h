// What colours a picture: a scalar, or one number of a vector, of the dataset or derived from it.
#pragma once

#include <optional>
#include <string>
#include <vector>
#include <vtkDataArray.h>
#include <vtkSmartPointer.h>

#include "host/session.h"
#include "tool/derived_reader.h"
#include "tool/quantity.h"

namespace tool {

struct PictureScalar {
  Quantity quantity;  // without a component: the scalar, or the magnitude of the vector
  std::string name;   // in UTF-8, with the component
  std::string title;  // the same with the label, if there is one, in place of the name
};

// The scalars that the lists mean: numbers, names and derived names of variables. A vector's may be followed
// by ".x", ".y", ".z" or ".magnitude", the default. Throws CommandError (wrong usage) for an item that means
// none.
std::vector<PictureScalar> find_scalars(host::Session& session, const std::vector<std::string>& lists);
// The one that `text` means. Throws CommandError also when it means several.
PictureScalar find_scalar(host::Session& session, const std::string& text);
PictureScalar scalar_of(Quantity quantity);

// The first scalar per node that one of the parts has at the session's step, or else the first such vector's
// magnitude; none when there is neither.
std::optional<PictureScalar> first_scalar(host::Session& session, const std::vector<int>& parts);

// Values as one number per tuple: of a vector a component, or the magnitude without one. Null for null.
vtkSmartPointer<vtkDataArray> as_scalars(vtkDataArray* values, std::optional<int> component);

// The values of pictures at the session's step.
class PictureValues {
 public:
  explicit PictureValues(host::Session& session) : session_(session), derived_(session) {}

  host::Session& session() const { return session_; }

  // Each is null when the step has no such values, and throws host::Error when they cannot be read.

  // A tuple per node or element of the part, of all components.
  vtkSmartPointer<vtkDataArray> of(const Quantity& quantity, int part);
  // One number per node or element.
  vtkSmartPointer<vtkDataArray> of(const PictureScalar& scalar, int part);

 private:
  host::Session& session_;
  DerivedReader derived_;
};

}  // namespace tool
