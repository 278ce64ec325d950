// What rank 0 sends arrives unchanged.
#include <gtest/gtest.h>

#include "paraview/dataset_info.h"
#include "paraview/share_store.h"

namespace paraview {
namespace {

TEST(Messages, CarryADataset) {
  DatasetInfo info;
  info.parts = {{1, "wall", false}, {2, "ALL_ELEMENTS", true}};
  info.variables = {{3, "p", "Pa", false}, {4, "MatOfElements", "", true}};
  info.times = {0.0, 1.5};
  info.times_are_numbers = true;
  info.labels = {"p: Pressure [Pa]"};
  vtkMultiProcessStream stream;
  put(stream, info);
  const DatasetInfo other = take_dataset_info(stream);
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
  vtkMultiProcessStream stream;
  put(stream, plan);
  const StepPlan other = take_step_plan(stream);
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
