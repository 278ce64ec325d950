// The names of variables that are derived from those of a dataset: grad(NAME), vorticity(NAME), q(NAME) and
// mag(NAME).
#pragma once

#include <optional>
#include <string>
#include <string_view>

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

struct DerivedVariable {
  Derivation derivation = Derivation::gradient;
  int variable = 0;   // number of the one that it is derived from, which is given per node
  int component = 0;  // of that one: which is taken where a scalar is wanted and it is a vector
  std::string name;   // UTF-8: "grad(Pressure)"
};

}  // namespace analysis
