// Numbers and statistics in the JSON that commands print.
#pragma once

#include "host/value_statistics.h"
#include "nlohmann/json_fwd.hpp"

namespace tool {

using Json = nlohmann::ordered_json;

// A float in the fewest digits that give it back; null if it is not finite.
Json json_number(float value);
// The same for a double.
Json json_number(double value);

// minimum, maximum and mean (null without numbers), undefined, not_numbers.
Json statistics_json(const host::ValueStatistics& statistics);

// The text of a JSON value with what is not UTF-8 in it replaced: a path may hold any bytes.
std::string json_text(const Json& json, int indent = 2);

}  // namespace tool
