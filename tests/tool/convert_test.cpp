// `fldtool convert`: what VTK's own reader finds in the files is what the reader plug-in gives.
#include "gtest/gtest.h"
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkFieldData.h>
#include <vtkPointData.h>
#include <vtkStringArray.h>

#include "samples/samples.h"
#include "testkit/file_writer.h"
#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/host/open_file.h"
#include "tests/tool/converted_series.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

namespace fs = std::filesystem;
using tool_test::CollectionStep;
using tool_test::Composite;
using tool_test::convert;
using tool_test::expect_steps;
using tool_test::Names;
using tool_test::Result;
using tool_test::run_fldtool;
using tool_test::steps_of;

class Convert : public tool_test::ConvertTest {};

class ConvertedSample : public testing::TestWithParam<int> {};

TEST_P(ConvertedSample, ReadsBackAsThePluginGivesIt) {
  const testkit::TemporaryDirectory directory;
  const samples::SampleInfo sample =
      samples::write_samples(directory.path())[static_cast<std::size_t>(GetParam())];
  const fs::path collection = convert(sample.file.string(), directory / "out/case.pvd", {"--parts", "all"});
  host_test::Reader reader;
  reader.session().open(sample.file);
  std::vector<int> steps;
  for (int step = 0; step < reader.session().step_count(); ++step) steps.push_back(step);
  expect_steps(collection, reader.session(), steps);
}

INSTANTIATE_TEST_SUITE_P(Samples, ConvertedSample, testing::Range(0, 4));

TEST_F(Convert, KeepsGroupsAndNames) {
  EXPECT_EQ(first_step().places(),
            (Names{"Surfaces/外", "Surfaces/Undefined_Regions/@between", "Volumes/lower", "Volumes/upper"}));
}

TEST_F(Convert, KeepsLabelsUnitsAndTimes) {
  const Composite composite = first_step();
  vtkFieldData* fields = composite.part("外")->GetFieldData();
  auto* labels = vtkStringArray::SafeDownCast(fields->GetAbstractArray("Labels"));
  ASSERT_NE(labels, nullptr);
  ASSERT_EQ(labels->GetNumberOfValues(), 2);
  EXPECT_EQ(labels->GetValue(0), "p: 圧力");
  EXPECT_EQ(labels->GetValue(1), "v: Position");
  ASSERT_NE(fields->GetArray("TimeValue"), nullptr);
}

TEST_F(Convert, ChoosesPartsAndVariables) {
  const Composite composite = first_step({"--parts", "lower,whole,@bet*", "--variables", "v"});
  EXPECT_EQ(composite.places(),
            (Names{"Surfaces/Undefined_Regions/@between", "Volumes/lower", "Whole mesh/ALL_ELEMENTS"}));
  EXPECT_EQ(composite.part("lower")->GetPointData()->GetNumberOfArrays(), 1);
  EXPECT_NE(composite.part("lower")->GetPointData()->GetArray("v"), nullptr);
  EXPECT_EQ(composite.part("lower")->GetCellData()->GetNumberOfArrays(), 0);
}

TEST_F(Convert, TakesOptionsInFrontOfTheFile) {
  for (const auto& [option, list] :
       {std::pair("--steps", "0"), std::pair("--parts", "lower"), std::pair("--variables", "p")}) {
    fs::remove(collection);
    const Result result = run_fldtool({"convert", option, list, dataset.path(), collection.string()});
    EXPECT_EQ(result.status, 0) << option;
    EXPECT_EQ(result.errors, "") << option;
    EXPECT_TRUE(fs::exists(collection)) << option;
  }
}

TEST_F(Convert, ChoosesSteps) {
  const std::string file = write_series(5);
  const std::vector<CollectionStep> steps = steps_of(convert(file, collection, {"--steps", "3-4,1"}));
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[0].time, "1");
  EXPECT_EQ(steps[1].time, "3");
  EXPECT_EQ(steps[2].time, "4");
}

TEST_F(Convert, LeavesAPartOutWhereAStepLacksIt) {
  const std::string file = tool_test::write_series_that_loses_a_part(dataset.directory().path());
  const Result result = run_fldtool({"convert", file, collection.string(), "--parts", "lower,upper"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "fldtool: " + file + ": step 1 does not have: volume lower\n");
  EXPECT_EQ(Composite(steps_of(collection)[0].file).places(), (Names{"Volumes/lower", "Volumes/upper"}));
  EXPECT_EQ(Composite(steps_of(collection)[1].file).places(), Names{"Volumes/upper"});
  EXPECT_TRUE(fs::exists(dataset.directory() / "out/step_1/part_3_upper.vtu"));

  EXPECT_EQ(run_fldtool({"convert", file, collection.string(), "--parts", "lower"}).status, 0);
  EXPECT_EQ(Composite(steps_of(collection)[1].file).places(), Names{});
  EXPECT_FALSE(fs::exists(dataset.directory() / "out/step_1"));
}

TEST_F(Convert, CompressesWithoutLoss) {
  host_test::Reader reader;
  reader.session().open(dataset.path());
  for (const char* method : {"lz4", "zlib"}) {
    convert(dataset.path(), collection, {"--parts", "all", "--compress", method});
    expect_steps(collection, reader.session(), {0});
  }
}

TEST_F(Convert, WritesDoublePrecision) {
  const Composite composite = first_step({"--precision", "double"});
  EXPECT_EQ(composite.part("lower")->GetPoints()->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(composite.part("lower")->GetPointData()->GetArray("p")->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(first_step({"--precision", "single"}).part("lower")->GetPoints()->GetDataType(), VTK_FLOAT);
}

TEST_F(Convert, NamesTheCollectionLikeTheFileInAFolder) {
  const std::string folder = (dataset.directory() / "some/where").string();
  const Result result = run_fldtool({"convert", dataset.path(), folder});
  EXPECT_EQ(result.output, folder + "/case.pvd\n");
  EXPECT_EQ(steps_of(folder + "/case.pvd").size(), 1U);
}

TEST_F(Convert, HoldsMotionAndOddParts) {
  testkit::Mesh mesh = testkit::one_of_each();
  mesh.surfaces.push_back({.name = "nothing"});
  mesh.surfaces.push_back({.name = "../up/down: *\n"});
  mesh.surfaces.back().add(mesh.surfaces.front());
  testkit::File file = testkit::file_of(mesh);
  file.header.set_cycle(0, 0.0);
  testkit::write_file(file, dataset.directory() / "m_0.fld");
  testkit::File moved;
  moved.header.set_cycle(1, 0.5);
  moved.add_region_set().add(testkit::motion_section(
      {.base_cycle = 0,
       .regions = {{.names = {"upper"}, .actions = {testkit::Action::translate({0.0, 0.0, 3.0})}}}}));
  testkit::write_file(moved, dataset.directory() / "m_1.fld");
  const std::string path = (dataset.directory() / "m_0.fld").string();
  convert(path, collection, {"--parts", "all"});
  host_test::Reader reader;
  reader.session().open(path);
  expect_steps(collection, reader.session(), {0, 1});
  EXPECT_EQ(Composite(steps_of(collection)[1].file).part("nothing")->GetNumberOfPoints(), 0);
}

TEST_F(Convert, HoldsAQuantityThatAStepLacks) {
  const std::string file = write_series(2);
  testkit::File without = tool_test::one_of_each_file();
  without.header.set_cycle(1, 1.0);
  without.region_sets.front().remove("LS_Scalar:p");
  testkit::write_file(without, dataset.directory() / "s_1.fld");
  convert(file, collection, {"--parts", "all"});
  host_test::Reader reader;
  reader.session().open(file);
  expect_steps(collection, reader.session(), {0, 1});
}

}  // namespace
