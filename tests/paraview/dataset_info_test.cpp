// What ranks tell each other of a dataset and of a step.
#include "paraview/dataset_info.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "paraview/step_plan.h"

namespace paraview_test {
namespace {

using paraview::DatasetInfo;
using paraview::PartInfo;
using paraview::StepPlan;
using Names = std::vector<std::string>;

std::vector<PartInfo> two_parts() {
  return {{1, "wall", false}, {2, "ALL_ELEMENTS", true}};
}

std::vector<host::PartFolder> two_folders() {
  return {{"Surfaces", {}, {{"Groups", {1}, {}}}}, {"Whole mesh", {2}, {}}};
}

void expect_parts(const std::vector<PartInfo>& parts) {
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_EQ(parts[0].number, 1);
  EXPECT_EQ(parts[0].name, "wall");
  EXPECT_FALSE(parts[0].is_whole_mesh);
  EXPECT_EQ(parts[1].number, 2);
  EXPECT_EQ(parts[1].name, "ALL_ELEMENTS");
  EXPECT_TRUE(parts[1].is_whole_mesh);
}

void expect_folders(const std::vector<host::PartFolder>& folders) {
  ASSERT_EQ(folders.size(), 2U);
  EXPECT_EQ(folders[0].name, "Surfaces");
  EXPECT_TRUE(folders[0].parts.empty());
  ASSERT_EQ(folders[0].folders.size(), 1U);
  EXPECT_EQ(folders[0].folders[0].name, "Groups");
  EXPECT_EQ(folders[0].folders[0].parts, std::vector<int>{1});
  EXPECT_EQ(folders[1].name, "Whole mesh");
  EXPECT_EQ(folders[1].parts, std::vector<int>{2});
}

TEST(DatasetInfo, ArrivesAsItIsSent) {
  DatasetInfo sent;
  sent.files = {"/data/a_0.fld", "/data/a_1.fld"};
  sent.parts = two_parts();
  sent.folders = two_folders();
  sent.variables = {{1, "p", "Pa", 1, false}, {2, "v", "", 3, false}, {3, "MatOfElements", "", 1, true}};
  sent.times = {0.0, 0.5};
  sent.times_are_numbers = true;
  sent.labels = {"p: Pressure [Pa]"};
  const DatasetInfo got = paraview::dataset_info_from(to_bytes(sent));
  EXPECT_EQ(got.files, (Names{"/data/a_0.fld", "/data/a_1.fld"}));
  expect_parts(got.parts);
  expect_folders(got.folders);
  ASSERT_EQ(got.variables.size(), 3U);
  EXPECT_EQ(got.variables[0].number, 1);
  EXPECT_EQ(got.variables[0].name, "p");
  EXPECT_EQ(got.variables[0].unit, "Pa");
  EXPECT_EQ(got.variables[1].components, 3);
  EXPECT_FALSE(got.variables[1].is_per_cell);
  EXPECT_EQ(got.variables[2].number, 3);
  EXPECT_TRUE(got.variables[2].is_per_cell);
  EXPECT_EQ(got.times, (std::vector<double>{0.0, 0.5}));
  EXPECT_TRUE(got.times_are_numbers);
  EXPECT_EQ(got.labels, Names{"p: Pressure [Pa]"});
}

TEST(StepPlan, ArrivesAsItIsSent) {
  StepPlan sent;
  sent.failure = "FILE NOT FOUND";
  sent.parts = two_parts();
  sent.folders = two_folders();
  sent.layout.step = 7;
  sent.ghost_layers = 2;
  const StepPlan got = paraview::step_plan_from(to_bytes(sent));
  EXPECT_EQ(got.failure, "FILE NOT FOUND");
  expect_parts(got.parts);
  expect_folders(got.folders);
  EXPECT_EQ(got.layout.step, 7);
  EXPECT_EQ(got.ghost_layers, 2);
}

// Within a millionth of it.
TEST(DatasetInfo, TheStepOfATime) {
  DatasetInfo info;
  info.times = {-1.0, 0.0, 2.0};
  EXPECT_EQ(info.step_at(-5.0), 0);
  EXPECT_EQ(info.step_at(-1.0), 0);
  EXPECT_EQ(info.step_at(-0.1), 0);
  EXPECT_EQ(info.step_at(0.0), 1);
  EXPECT_EQ(info.step_at(1.99999), 1);
  EXPECT_EQ(info.step_at(1.999999), 2);
  EXPECT_EQ(info.step_at(2.0), 2);
  EXPECT_EQ(info.step_at(9.0), 2);
}

}  // namespace
}  // namespace paraview_test
