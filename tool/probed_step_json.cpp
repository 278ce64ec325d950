#include "tool/probed_step_json.h"

#include <cstring>
#include <string>
#include <string_view>

#include "nlohmann/json.hpp"
#include "tool/jobs.h"

namespace tool {
namespace {

template <typename Value>
Json bytes_of(const std::vector<Value>& values) {
  return as_bytes({reinterpret_cast<const char*>(values.data()), values.size() * sizeof(Value)});
}

template <typename Value>
std::vector<Value> values_of_bytes(const Json& json) {
  const std::string bytes = text_of(json);
  std::vector<Value> values(bytes.size() / sizeof(Value));
  if (!values.empty()) std::memcpy(values.data(), bytes.data(), values.size() * sizeof(Value));
  return values;
}

}  // namespace

Json as_json(const ProbedStep& step) {
  return {{"found", bytes_of(step.found)},
          {"region_set", bytes_of(step.region_set)},
          {"element", bytes_of(step.element)},
          {"values", bytes_of(step.values)}};
}

ProbedStep probed_step(const Json& json) {
  return {values_of_bytes<PointFound>(json.at("found")), values_of_bytes<int>(json.at("region_set")),
          values_of_bytes<std::int64_t>(json.at("element")), values_of_bytes<double>(json.at("values"))};
}

}  // namespace tool
