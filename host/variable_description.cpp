#include "host/variable_description.h"

#include <cstddef>

namespace host {

VariableDescription split_description(std::string_view description) {
  if (!description.ends_with(')')) return {"", std::string(description)};
  // The second byte of a two-byte Shift_JIS character is never a parenthesis, so bytes can be compared.
  int depth = 0;
  for (std::size_t i = description.size(); i-- > 0;) {
    if (description[i] == ')') ++depth;
    if (description[i] == '(' && --depth == 0) {
      const std::string_view name = description.substr(i + 1, description.size() - i - 2);
      std::string_view label = description.substr(0, i);
      while (label.ends_with(' ')) label.remove_suffix(1);
      return {std::string(label), std::string(name)};
    }
  }
  return {"", std::string(description)};
}

}  // namespace host
