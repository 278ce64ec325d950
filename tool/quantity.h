// What --variables chooses in commands that take derived names as well: grad(NAME), vorticity(NAME), q(NAME)
// and mag(NAME).
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/derived_name.h"
#include "host/session.h"

namespace tool {

class DerivedReader;

// For the manuals of commands with such variables.
inline constexpr char kDerivedText[] =
    R"(Variables may also be what is derived from variables per node: grad(NAME), the gradient of a scalar or of a component
(grad(U.x)); vorticity(NAME), the curl of a vector; q(NAME), which is positive where rotation outweighs strain;
mag(NAME), the length of a vector. Derivatives are exact where a variable is linear; on a surface they are those of the
volume behind it. They are undefined at a node without elements, and where an element around the node has an undefined value.

)";

// A variable of the dataset, or one that is derived from it.
struct Quantity {
  host::Variable variable;       // of a derived one: number 0, its name and kind
  std::optional<int> component;  // of a vector: 0, 1, 2 or kMagnitude
  std::optional<analysis::DerivedVariable> derived;

  // Of the variable, or of the one that it is derived from.
  int source_number() const { return derived ? derived->variable : variable.number; }
  bool is_per_element() const { return variable.location == host::Location::element; }
};

// Whether they are the same but for their components. The names of derived variables are printable, so those
// of two variables can be the same.
inline bool is_same_variable(const Quantity& a, const Quantity& b) {
  return a.source_number() == b.source_number() && a.variable.name == b.variable.name;
}

// Whether any of them may be derived, before a dataset is there to tell.
bool may_be_derived(const std::vector<std::string>& lists);

// In the order of the lists; all variables of the dataset when there are none. Throws CommandError (wrong
// usage) for an item that chooses nothing, and for a derived name of something that it cannot be derived
// from.
std::vector<Quantity> choose_quantities(host::Session& session, const std::vector<std::string>& lists);

// The one that `text` means. Throws CommandError also when it means several.
Quantity choose_quantity(host::Session& session, const std::string& text);

// The same for commands that take whole variables: the numbers of the variables, ascending, and what is
// derived.
struct WholeQuantities {
  std::vector<int> variables;
  std::vector<analysis::DerivedVariable> derived;
};
WholeQuantities choose_whole_quantities(host::Session& session, const std::vector<std::string>& lists);

// The values of quantities at the session's step.
class QuantityValues {
 public:
  explicit QuantityValues(host::Session& session);
  QuantityValues(const QuantityValues&) = delete;
  QuantityValues& operator=(const QuantityValues&) = delete;
  ~QuantityValues();

  host::Session& session() const { return session_; }

  // One component on a part; when the reader throws, they have failed.
  host::PartValues values(const Quantity& quantity, int part, int component);

 private:
  host::PartValues derived_values(const Quantity& quantity, int part, int component);

  host::Session& session_;
  std::unique_ptr<DerivedReader> derived_;  // made when it is needed
};

// Whether this program derives variables, which takes VTK.
extern const bool kDerivesVariables;

}  // namespace tool
