// Variables that are derived from those of a dataset: grad(NAME), vorticity(NAME), q(NAME) and mag(NAME).
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vtkFloatArray.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

namespace analysis {

enum class Derivation {
  gradient,     // grad(NAME), of a scalar: a vector
  vorticity,    // vorticity(NAME), the curl of a vector: a vector
  q_criterion,  // q(NAME) of a vector, positive where rotation outweighs strain: a scalar
  magnitude,    // mag(NAME), the length of a vector: a scalar
};

struct DerivedName {
  Derivation derivation = Derivation::gradient;
  std::string of;  // what is between the parentheses, without the blanks around it

  friend bool operator==(const DerivedName&, const DerivedName&) = default;
};

// What `text` means; none if it has not the form of such a name. Whether there is such a variable is not
// looked at.
std::optional<DerivedName> parse_derived_name(std::string_view text);

// "grad", "vorticity", "q" or "mag".
const char* derivation_word(Derivation derivation);

// Whether it is derived from a vector (3 components) or from a scalar (1).
bool takes_vector(Derivation derivation);

// Whether the result is a vector (3 components) or a scalar (1).
bool gives_vector(Derivation derivation);

// Whether the elements around a node matter, and not the node alone. Such a variable on a surface is that of
// the volume behind it, so it is derived from the whole mesh.
bool needs_elements(Derivation derivation);

// The derived values, one tuple per point of the grid, NaN where they are undefined: where a value is, or
// where a value of an element around the node is. `values` has a tuple per point of the grid with as many
// components as takes_vector says; anything else is an std::invalid_argument. Derivatives are those of the
// elements' shape functions at the node, averaged over the solid elements around it, so they are exact where
// the variable is linear. The coordinates have to be Cartesian. The result has `name`.
vtkSmartPointer<vtkFloatArray> derive(vtkUnstructuredGrid* grid, vtkDataArray* values, Derivation derivation,
                                      const std::string& name);

// The lengths of vectors of 3 components, NaN where one of them is.
vtkSmartPointer<vtkFloatArray> magnitudes(vtkDataArray* vectors, const std::string& name);

}  // namespace analysis
