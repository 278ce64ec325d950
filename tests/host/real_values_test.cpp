// The solver results: values at points, and range, mean and undefined places of every variable on every part,
// at every step.
#include "gtest/gtest.h"
#include <algorithm>
#include <cmath>
#include <string>

#include "host/undefined_value.h"
#include "host/value_statistics.h"
#include "nlohmann/json.hpp"
#include "tests/host/real_data.h"

namespace {

using nlohmann::json;

class RealValues : public real_data::RealData {
 protected:
  // Compares one number with an expected one that is a number or null.
  void expect_value(float value, const json& wanted, const std::string& where) const {
    const double number = wanted.get<double>();
    EXPECT_NEAR(value, number, std::abs(number) * tolerance("values_relative")) << where;
  }

  void expect_statistics(const host::PartValues& values, const json& wanted, const std::string& where) const {
    ASSERT_EQ(values.availability, host::Availability::given) << where << ' ' << values.reason;
    host::ValueStatistics statistics;
    statistics.add(values.values());
    EXPECT_EQ(statistics.undefined, wanted["undefined"].get<std::size_t>()) << where;
    EXPECT_EQ(statistics.not_numbers, 0U) << where;
    ASSERT_EQ(statistics.has_numbers(), !wanted["min"].is_null()) << where;
    if (!statistics.has_numbers()) return;
    expect_value(statistics.minimum, wanted["min"], where);
    expect_value(statistics.maximum, wanted["max"], where);
    const double largest = std::max(std::abs(statistics.minimum), std::abs(statistics.maximum));
    EXPECT_NEAR(statistics.mean(), wanted["mean"].get<double>(),
                largest * tolerance("mean_relative_to_largest"))
        << where;
  }

  // Calls `compare(component, expected component, where)` for each component of the variables of a step, and
  // expects the other variables to be missing.
  template <typename Compare>
  void for_each_component(const json& values, int part, Compare compare) {
    for (const auto& [name, wanted] : values.items()) {
      const host::Variable& asked = variable(name);
      std::string where = name;
      where += " on part " + std::to_string(part) + " at step " + std::to_string(session->step());
      if (wanted.is_null()) {
        EXPECT_EQ(session->values(asked.number, part).availability, host::Availability::not_in_this_step)
            << where;
        continue;
      }
      EXPECT_EQ(wanted.is_array(), asked.components() == 3) << where;
      for (int component = 0; component < asked.components(); ++component) {
        compare(session->values(asked.number, part, component),
                wanted.is_array() ? wanted[static_cast<std::size_t>(component)] : wanted,
                where + " component " + std::to_string(component));
      }
    }
  }
};
INSTANTIATE_TEST_SUITE_P(Datasets, RealValues, testing::Values("tjunction", "propeller"),
                         [](const auto& info) { return info.param; });

TEST_P(RealValues, RangesMeansAndUndefinedPlaces) {
  for (int step = 0; step < session->step_count(); ++step) {
    session->select_step(step);
    const json& parts = expected["steps"][static_cast<std::size_t>(step)]["parts"];
    ASSERT_EQ(parts.size(), session->parts().size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
      EXPECT_EQ(parts[i]["values"].size(), session->variables().size());
      for_each_component(parts[i]["values"], static_cast<int>(i) + 1,
                         [&](const host::PartValues& values, const json& wanted, const std::string& where) {
                           expect_statistics(values, wanted, where);
                         });
    }
  }
}

TEST_P(RealValues, ValuesAtPoints) {
  for (int step = 0; step < session->step_count(); ++step) {
    session->select_step(step);
    for (const json& point : expected["steps"][static_cast<std::size_t>(step)]["points"]) {
      const auto node = point["node"].get<std::size_t>() - 1;
      for_each_component(point["values"], point["part"],
                         [&](const host::PartValues& values, const json& wanted, const std::string& where) {
                           ASSERT_LT(node, values.values().size()) << where << ' ' << values.reason;
                           const float value = values.values()[node];
                           ASSERT_EQ(host::is_undefined(value), wanted == "undefined") << where;
                           if (wanted != "undefined") expect_value(value, wanted, where);
                         });
    }
  }
}

// The option assumes the section offsets of the first file for all files, which is right only for files with
// the same layout.
class RealSeriesOfDifferentFiles : public real_data::RealData {};
INSTANTIATE_TEST_SUITE_P(Datasets, RealSeriesOfDifferentFiles, testing::Values("tjunction"),
                         [](const auto& info) { return info.param; });

TEST_P(RealSeriesOfDifferentFiles, CannotBeReadSimplified) {
  const auto path = session->path();
  session.reset();
  host::SessionOptions options;
  options.capture_diagnostics = true;
  options.toggles[host::kSimplifyToggle] = true;
  session = std::make_unique<host::Session>(*library, options);
  session->open(path);
  EXPECT_EQ(session->traced_files().size(), 1U);
  EXPECT_EQ(session->values(1, 1).availability, host::Availability::given);
  session->select_step(1);
  EXPECT_EQ(session->values(1, 1).availability, host::Availability::failed);
}

}  // namespace
