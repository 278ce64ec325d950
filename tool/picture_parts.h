// What of a dataset a picture shows, and the scalar that its colours come from.
#pragma once

#include <optional>
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
  std::string title;             // the label (or name) in UTF-8, with the component
};

// The scalar that `text` means: a variable by number or name, behind a vector's ".x", ".y", ".z" or
// ".magnitude" (which it is without). Throws CommandError (wrong usage) when there is none.
PictureScalar find_scalar(host::Session& session, const std::string& text);

// The first scalar that is given per node, or else the first vector's magnitude; none when there is neither.
std::optional<PictureScalar> first_scalar(host::Session& session);

// The surfaces that are in none of the reader's groups, whose members are there twice or lie inside; else all
// surfaces; else the volumes; else the whole meshes.
ChosenParts usual_parts(host::Session& session);

// The lowest and highest number among values.
struct ValueRange {
  double low = 0;
  double high = 0;
  bool has_numbers = false;

  void add(vtkDataArray* values);
  // The range for a colour scale: 0 to 1 without numbers, and never of width 0.
  ValueRange widened() const;
};

// The scalar's values on a part at the session's step, per node or element; null when there are none.
vtkSmartPointer<vtkDataArray> scalar_values(host::Session& session, const PictureScalar& scalar, int part);

// The part's outer faces at the session's step with the scalar's values, which are added to `range`.
render::ShownPart make_shown_part(host::Session& session, int part,
                                  const std::optional<PictureScalar>& scalar, ValueRange& range);

}  // namespace tool
