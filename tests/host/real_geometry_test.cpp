// The solver results: time sets, groups, variables, parts, connectivity, and per step boxes and points.
#include "gtest/gtest.h"
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "host/bounding_box.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "tests/host/real_data.h"
#include "tests/testkit/emulator.h"

namespace {

using nlohmann::json;

class RealGeometry : public real_data::RealData {};
INSTANTIATE_TEST_SUITE_P(Datasets, RealGeometry, testing::Values("tjunction", "propeller"),
                         [](const auto& info) { return info.param; });

std::string kind_text(host::PartKind kind) {
  if (kind == host::PartKind::surface) return "surface";
  return kind == host::PartKind::volume ? "volume" : "whole";
}

std::string hex_text(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    text += kDigits[static_cast<unsigned char>(byte) >> 4];
    text += kDigits[static_cast<unsigned char>(byte) & 15];
  }
  return text;
}

TEST_P(RealGeometry, FilesAreIndexedInTheOrderOfTheSteps) {
  std::vector<std::string> names;
  for (const std::string& path : session->traced_files()) {
    names.push_back(std::filesystem::path(path).filename().string());
  }
  EXPECT_EQ(names, expected["files"].get<std::vector<std::string>>());
}

TEST_P(RealGeometry, TimeSetsHoldTheTimesOfTheirFiles) {
  for (const auto& [set, key] : std::map<const host::TimeSet*, const char*>{
           {&session->geometry_times(), "geometry_files"}, {&session->variable_times(), "variable_files"}}) {
    std::vector<float> times;
    for (const json& file : expected["timesets"][key]) {
      times.push_back(static_cast<float>(expected["steps"][file.get<std::size_t>()]["time"].get<double>()));
    }
    EXPECT_EQ(set->times, times) << key;
  }
  EXPECT_EQ(static_cast<int>(session->changing_geometry()), expected["timesets"]["changing_geometry"]);
}

TEST_P(RealGeometry, GroupsHoldTheirSurfaces) {
  std::map<std::string, std::vector<std::string>> groups;
  for (const host::PartGroup& group : session->metadata().groups) groups[group.name] = group.parts;
  for (const auto& [name, parts] : expected["groups"].items()) {
    EXPECT_EQ(groups[name], parts.get<std::vector<std::string>>()) << name;
  }
  EXPECT_EQ(groups.size(), expected["groups"].size());
}

TEST_P(RealGeometry, VariablesHaveTheirOrderKindAndDescription) {
  ASSERT_EQ(session->variables().size(), expected["variables"].size());
  for (const json& wanted : expected["variables"]) {
    const host::Variable& variable = session->variable(wanted["number"]);
    EXPECT_EQ(variable.name, wanted["name"].get<std::string>());
    EXPECT_EQ(variable.description, wanted["description"].get<std::string>());
    EXPECT_EQ(variable.kind == host::VariableKind::vector, wanted["type"] == "vector") << variable.name;
    EXPECT_EQ(variable.kind == host::VariableKind::scalar, wanted["type"] == "scalar") << variable.name;
    EXPECT_EQ(variable.location == host::Location::node, wanted["per"] == "node") << variable.name;
    EXPECT_EQ(variable.location == host::Location::element, wanted["per"] == "element") << variable.name;
  }
}

TEST_P(RealGeometry, PartsHaveTheirNamesKindsAndCounts) {
  ASSERT_EQ(session->parts().size(), expected["parts"].size());
  for (const json& wanted : expected["parts"]) {
    const host::Part& part = session->part(wanted["number"]);
    const bool is_ascii = !wanted.contains("name_bytes_hex");
    if (is_ascii || !kUnderEmulator) {
      EXPECT_EQ(host::to_utf8(part.name), wanted["name"].get<std::string>());
    }
    if (!is_ascii) {
      EXPECT_EQ(hex_text(part.name), wanted["name_bytes_hex"].get<std::string>());
    }
    EXPECT_EQ(kind_text(part.kind), wanted["kind"].get<std::string>()) << part.name;
    EXPECT_EQ(part.region_set.value_or(-1), wanted["region_set"]) << part.name;
    EXPECT_EQ(part.nodes, wanted["nodes"]) << part.name;
    json counts = json::object();
    for (const host::ElementShape& shape : host::kElementShapes) {
      const int count = part.elements[static_cast<std::size_t>(shape.slot)];
      if (count > 0) counts[std::string(shape.name)] = count;
    }
    EXPECT_EQ(counts, wanted["elements"]) << part.name;
  }
}

TEST_P(RealGeometry, ElementsHaveTheirNodes) {
  for (const json& wanted : expected["elements"]) {
    bool found = false;
    for (const host::ElementBlock& block : session->elements(wanted["part"])) {
      if (block.shape.name != wanted["shape"].get<std::string>()) continue;
      found = true;
      const auto number = wanted["element"].get<std::size_t>();
      ASSERT_LE(number, block.size());
      const auto nodes = block.element(number - 1);
      EXPECT_EQ(std::vector<int>(nodes.begin(), nodes.end()), wanted["nodes"].get<std::vector<int>>())
          << wanted;
    }
    EXPECT_TRUE(found) << wanted;
  }
}

TEST_P(RealGeometry, BoxesAtEveryStep) {
  ASSERT_EQ(session->step_count(), static_cast<int>(expected["steps"].size()));
  const double allowed = tolerance("coordinates");
  for (int step = 0; step < session->step_count(); ++step) {
    session->select_step(step);
    const json& wanted = expected["steps"][static_cast<std::size_t>(step)]["parts"];
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      const auto box = host::bounding_box(session->coordinates(static_cast<int>(i) + 1));
      ASSERT_TRUE(box);
      for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(box->lowest[axis], wanted[i]["bounds"][0][axis].get<double>(), allowed)
            << "step " << step;
        EXPECT_NEAR(box->highest[axis], wanted[i]["bounds"][1][axis].get<double>(), allowed)
            << "step " << step;
      }
    }
  }
}

TEST_P(RealGeometry, PointsAtEveryStep) {
  const double allowed = tolerance("coordinates");
  for (int step = session->step_count() - 1; step >= 0; --step) {
    session->select_step(step);
    for (const json& wanted : expected["steps"][static_cast<std::size_t>(step)]["points"]) {
      const host::Coordinates coordinates = session->coordinates(wanted["part"]);
      const auto node = wanted["node"].get<std::size_t>() - 1;
      ASSERT_LT(node, coordinates.size());
      for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(coordinates.axes[axis].values()[node], wanted["xyz"][axis].get<double>(), allowed)
            << "step " << step << " part " << wanted["part"] << " node " << wanted["node"];
      }
    }
  }
}

}  // namespace
