// Suggestions for names that are unknown.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Those of `names` that `text` may be a slip of, the nearest first, three at most. Upper and lower case count
// as the same.
std::vector<std::string> nearest_names(std::string_view text, const std::vector<std::string>& names);

// "did you mean 'a' or 'b'?", with `before` in front; empty if no name is near.
std::string suggestion(std::string_view before, std::string_view text, const std::vector<std::string>& names);

}  // namespace tool
