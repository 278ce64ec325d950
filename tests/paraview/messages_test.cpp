#include "paraview/messages.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string_view>

#include "paraview/dataset_info.h"
#include "paraview/share_store.h"

namespace paraview {
namespace {

using std::string_view_literals::operator""sv;

TEST(Messages, ComeOutAsTheyWentIn) {
  MessageWriter writer;
  writer.put(std::int64_t{-7});
  writer.put(0.25);
  writer.put("two\0words"sv);
  writer.put("");
  MessageReader reader(writer.bytes());
  EXPECT_EQ(reader.number(), -7);
  EXPECT_EQ(reader.real(), 0.25);
  EXPECT_EQ(reader.text(), "two\0words"sv);
  EXPECT_EQ(reader.text(), "");
  EXPECT_THROW(reader.number(), std::out_of_range);
}

TEST(Messages, CarryADataset) {
  DatasetInfo info;
  info.parts = {{1, "wall", false}, {2, "ALL_ELEMENTS", true}};
  info.variables = {{3, "p", "Pa", false}, {4, "MatOfElements", "", true}};
  info.times = {0.0, 1.5};
  info.times_are_numbers = true;
  info.labels = {"p: Pressure [Pa]"};
  const DatasetInfo other = dataset_info_from(to_bytes(info));
  ASSERT_EQ(other.parts.size(), 2U);
  EXPECT_EQ(other.parts[1].name, "ALL_ELEMENTS");
  EXPECT_TRUE(other.parts[1].is_whole_mesh);
  ASSERT_EQ(other.variables.size(), 2U);
  EXPECT_EQ(other.variables[0].number, 3);
  EXPECT_EQ(other.variables[0].unit, "Pa");
  EXPECT_TRUE(other.variables[1].is_per_cell);
  EXPECT_EQ(other.times, info.times);
  EXPECT_TRUE(other.times_are_numbers);
  EXPECT_EQ(other.labels, info.labels);
}

TEST(Messages, CarryAPlan) {
  StepPlan plan;
  plan.parts = {{5, "wall", false}};
  plan.folders = {{"Surfaces", {5}, {{"Grouping_Regions", {6, 7}, {}}}}};
  plan.variables = {1, 4};
  plan.is_other_step = true;
  const StepPlan other = step_plan_from(to_bytes(plan));
  ASSERT_EQ(other.parts.size(), 1U);
  EXPECT_EQ(other.parts[0].number, 5);
  ASSERT_EQ(other.folders.size(), 1U);
  EXPECT_EQ(other.folders[0].parts, std::vector{5});
  ASSERT_EQ(other.folders[0].folders.size(), 1U);
  EXPECT_EQ(other.folders[0].folders[0].name, "Grouping_Regions");
  EXPECT_EQ(other.folders[0].folders[0].parts, (std::vector{6, 7}));
  EXPECT_EQ(other.variables, plan.variables);
  EXPECT_TRUE(other.is_other_step);
}

}  // namespace
}  // namespace paraview
