// Options whose values have names.
#pragma once

#include <map>
#include <string>

#include "CLI/CLI.hpp"

namespace tool {

// Takes the names for the values; the message for another text lists the names.
template <typename Value>
CLI::Validator named_values(const std::map<std::string, Value>& values) {
  return CLI::Validator(
      [values](std::string& text) {
        const auto found = values.find(text);
        if (found == values.end()) {
          std::string names;
          for (const auto& [name, value] : values) names += (names.empty() ? "" : ", ") + name;
          return "'" + text + "' is none of " + names;
        }
        text = std::to_string(static_cast<int>(found->second));
        return std::string();
      },
      "");
}

}  // namespace tool
