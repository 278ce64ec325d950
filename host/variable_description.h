// Splits the description of a variable, "label (name)".
#pragma once

#include <string>
#include <string_view>

namespace host {

struct VariableDescription {
  std::string label;
  std::string name;
};

// The name is the content of the last outermost pair of parentheses; without one, the whole description is
// the name.
VariableDescription split_description(std::string_view description);

}  // namespace host
