// Numbers and their ranges as they are written on the command line: "4", "last", "2-5", "6-", "0-100:10".
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "tool/cli_names.h"

namespace tool {

struct NumberRange {
  int from = 0;
  int to = 0;  // included
  int stride = 1;
};

// The range that `text` means among the numbers from `lowest` to `highest`; none if it is not a range or not
// within these numbers.
std::optional<NumberRange> parse_range(std::string_view text, int lowest, int highest);

// Whether `text` has the form of a range, whatever its numbers are.
bool is_range(std::string_view text);

// For options that take a whole number from `lowest` to `highest`.
CLI::Validator whole_number(std::size_t lowest, std::size_t highest);

// How ranges are written, for messages.
inline constexpr char kRangeForms[] = "4, 2-5, 6-, 0-100:10 or last";

}  // namespace tool
