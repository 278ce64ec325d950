// Takes a variable's label and name out of the description that a reader gives: "label (name)".
#pragma once

#include <string>
#include <string_view>

namespace host {

struct VariableDescription {
  std::string label;
  std::string name;
};

// The name is what the last pair of parentheses holds, inner pairs included; a description without one is all
// name.
VariableDescription split_description(std::string_view description);

}  // namespace host
