#include "tool/json_values.h"

#include <cmath>
#include <string>

#include "fmt/format.h"
#include "nlohmann/json.hpp"

namespace tool {

Json json_number(float value) {
  if (!std::isfinite(value)) return nullptr;
  return std::stod(fmt::format("{}", value));
}

Json json_number(double value) {
  if (!std::isfinite(value)) return nullptr;
  return value;
}

Json statistics_json(const host::ValueStatistics& statistics) {
  const bool any = statistics.has_numbers();
  return {{"minimum", any ? json_number(statistics.minimum) : Json(nullptr)},
          {"maximum", any ? json_number(statistics.maximum) : Json(nullptr)},
          {"mean", any ? json_number(statistics.mean()) : Json(nullptr)},
          {"undefined", statistics.undefined},
          {"not_numbers", statistics.not_numbers}};
}

std::string json_text(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace tool
