// The summary for programs.
#include <string>

#include "fmt/format.h"
#include "nlohmann/json.hpp"
#include "tool/json_values.h"
#include "tool/summary.h"

namespace tool {
namespace {

template <typename Values>
Json numbers(const Values& values) {
  Json array = Json::array();
  for (const float value : values) array.push_back(json_number(value));
  return array;
}

template <typename Value>
Json or_null(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json bounds_json(const std::optional<host::BoundingBox>& box) {
  if (!box) return nullptr;
  return Json::array({numbers(box->lowest), numbers(box->highest)});
}

Json counts_json(const host::Part& part) {
  Json counts = Json::object();
  for (const host::ElementShape& shape : host::kElementShapes) {
    const int count = part.elements[static_cast<std::size_t>(shape.slot)];
    if (count > 0) counts[std::string(shape.name)] = count;
  }
  return counts;
}

Json reader_json(const DatasetSummary& summary) {
  Json options = Json::object();
  for (const host::Toggle& toggle : summary.options) options[toggle.title] = toggle.is_on;
  return {{"name", summary.reader.name},
          {"release", summary.reader.release},
          {"api_version", summary.reader.api_version},
          {"library", summary.library},
          {"options", options}};
}

Json steps_json(const DatasetSummary& summary) {
  Json steps = Json::array();
  for (const StepSummary& step : summary.steps) {
    steps.push_back({{"step", step.step},
                     {"time", json_number(step.time)},
                     {"geometry_step", step.geometry_step},
                     {"cycle", or_null(step.cycle)},
                     {"file", or_null(step.file)}});
  }
  return steps;
}

Json time_sets_json(const DatasetSummary& summary) {
  Json sets = Json::array();
  for (const host::TimeSet& set : summary.time_sets) {
    sets.push_back({{"number", set.number},
                    {"description", set.description},
                    {"of_geometry", set.number == summary.geometry_set},
                    {"of_variables", set.number == summary.variable_set},
                    {"times", numbers(set.times)}});
  }
  return sets;
}

std::string hex_text(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) text += fmt::format("{:02x}", static_cast<unsigned char>(byte));
  return text;
}

Json parts_json(const DatasetSummary& summary) {
  Json parts = Json::array();
  for (std::size_t i = 0; i < summary.parts.size(); ++i) {
    const PartSummary& part = summary.parts[i];
    Json entry = {{"number", part.part.number}, {"name", part.name}};
    if (part.name != part.part.name) entry["name_bytes_hex"] = hex_text(part.part.name);
    entry["kind"] = kind_word(part.part.kind);
    entry["region_set"] = or_null(part.part.region_set);
    entry["group"] = part.group.empty() ? Json(nullptr) : Json(part.group);
    entry["nodes"] = part.part.nodes;
    entry["elements"] = counts_json(part.part);
    if (summary.has_ranges && part.axes != kAxes) entry["axes"] = part.axes;
    if (summary.has_ranges) entry["bounds"] = bounds_json(summary.shown.boxes[i]);
    parts.push_back(std::move(entry));
  }
  return parts;
}

Json region_sets_json(const DatasetSummary& summary) {
  Json sets = Json::array();
  for (const host::Part& part : summary.whole_meshes) {
    sets.push_back({{"region_set", or_null(part.region_set)},
                    {"part", part.number},
                    {"nodes", part.nodes},
                    {"elements", counts_json(part)}});
  }
  return sets;
}

Json ranges_json(const VariableSummary& variable) {
  Json ranges = Json::array();
  for (const host::ValueStatistics& component : variable.components) {
    ranges.push_back(statistics_json(component));
  }
  return ranges;
}

Json variables_json(const StepContents& contents, bool with_description, bool with_ranges) {
  Json variables = Json::array();
  for (const VariableSummary& variable : contents.variables) {
    Json entry = {{"number", variable.variable.number}, {"name", variable.name}};
    if (with_description) {
      entry["label"] = variable.label;
      entry["type"] = kind_word(variable.variable.kind);
      entry["per"] = location_word(variable.variable.location);
    }
    if (with_ranges) {
      entry["availability"] = availability_word(variable.availability);
      if (!variable.reason.empty()) entry["reason"] = variable.reason;
      entry["ranges"] = ranges_json(variable);
    }
    variables.push_back(std::move(entry));
  }
  return variables;
}

Json groups_json(const DatasetSummary& summary) {
  Json groups = Json::array();
  for (const host::PartGroup& group : summary.groups) {
    groups.push_back({{"name", group.name}, {"parts", group.parts}});
  }
  return groups;
}

Json all_steps_json(const DatasetSummary& summary) {
  Json steps = Json::array();
  for (const StepContents& contents : summary.all_steps) {
    Json bounds = Json::array();
    for (const auto& box : contents.boxes) bounds.push_back(bounds_json(box));
    steps.push_back(
        {{"step", contents.step}, {"bounds", bounds}, {"variables", variables_json(contents, false, true)}});
  }
  return steps;
}

}  // namespace

std::string summary_json(const DatasetSummary& summary) {
  Json json = {
      {"file", summary.file},
      {"reader", reader_json(summary)},
      {"steps", steps_json(summary)},
      {"time_sets", time_sets_json(summary)},
      {"changing_geometry",
       {{"status", static_cast<int>(summary.changing_geometry)},
        {"text", changing_geometry_words(summary.changing_geometry)}}},
      {"motion",
       {{"compared_geometry_steps", summary.motion.compared_steps},
        {"moving_parts", summary.motion.moving_parts}}},
      {"region_sets", region_sets_json(summary)},
      {"groups", groups_json(summary)},
      {"step", summary.shown.step},
      {"parts", parts_json(summary)},
      {"variables", variables_json(summary.shown, true, summary.has_ranges)},
  };
  if (!summary.all_steps.empty()) json["all_steps"] = all_steps_json(summary);
  json["warnings"] = summary.warnings;
  json["problems"] = summary.problems;
  return json_text(json) + "\n";
}

}  // namespace tool
