// Disabled parts and variables are not read.
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <vtkPointData.h>

#include "paraview/step_reader.h"
#include "samples/samples.h"
#include "testkit/temporary_directory.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

// With the fake reader, which logs its calls.
class Choices : public testing::Test {
 protected:
  Choices() { session_.open(fake::file(fake::kTwoSets)); }

  paraview::Ending read(int step, std::vector<int> parts, std::vector<int> variables, int piece = 0,
                        int pieces = 1) {
    const auto is_in = [](const std::vector<int>& list, int number) {
      return std::find(list.begin(), list.end(), number) != list.end();
    };
    const paraview::Choice choice{
        [&](const paraview::PartInfo& part) { return is_in(parts, part.number); },
        [&](const paraview::VariableInfo& variable) { return is_in(variables, variable.number); }};
    paraview::Outlet outlet(store_, nullptr, piece, pieces);
    fake_.forget_calls();
    return steps_.read(step, choice, outlet, [&](double done) {
      EXPECT_LE(0.0, done);
      EXPECT_LT(done, 1.0);
      return items_ < 0 || items_-- > 0;
    });
  }
  // The array of a part in the output; null if missing.
  vtkDataArray* array(unsigned index, const char* name) {
    output_ = store_.collection(info_);
    return output_->GetPartition(index, 0)->GetPointData()->GetArray(name);
  }
  std::size_t calls(const std::string& start) { return fake_.calls(start).size(); }

  fake::Reader fake_;
  host::Session session_{fake_.library};
  paraview::DatasetInfo info_ =
      (session_.open(fake::file(fake::kTwoSets)), paraview::ask_dataset_info(session_));
  paraview::ShareStore store_;
  vtkSmartPointer<vtkPartitionedDataSetCollection> output_;
  paraview::StepReader steps_{session_, info_};
  int items_ = -1;  // read before reading is stopped; all if negative
};

TEST_F(Choices, NothingIsAskedOfAPartThatIsOff) {
  read(0, {1, 3}, {fake::kPressure});
  EXPECT_EQ(calls("USERD_get_part_coords"), 2U);
  EXPECT_EQ(calls("USERD_get_part_coords 1"), 1U);
  EXPECT_EQ(calls("USERD_get_part_coords 3"), 1U);
  EXPECT_EQ(calls("USERD_get_part_elements_by_type"), 2U);
  EXPECT_EQ(calls("USERD_get_var_by_component"), 2U);
}

TEST_F(Choices, NothingIsAskedOfAVariableThatIsOff) {
  read(0, {1}, {fake::kVelocity});
  EXPECT_EQ(calls("USERD_get_var_by_component"), 3U);
  EXPECT_EQ(calls("USERD_get_var_by_component 6 1"), 3U);
}

TEST_F(Choices, OnlyWhatIsSwitchedOnIsReadAnew) {
  read(0, {1}, {fake::kPressure});
  read(0, {1}, {fake::kPressure, fake::kHole});
  EXPECT_EQ(calls("USERD_get_part_"), 0U);
  EXPECT_EQ(calls("USERD_get_var_by_component"), 1U);
  EXPECT_EQ(calls("USERD_get_var_by_component 4 1"), 1U);
  read(0, {1}, {fake::kHole});
  EXPECT_EQ(calls("USERD_get_var_by_component"), 0U);
}

TEST_F(Choices, AnotherStepAsksForItsValues) {
  read(0, {1}, {fake::kPressure});
  read(1, {1}, {fake::kPressure});
  EXPECT_EQ(calls("USERD_get_var_by_component"), 1U);
  EXPECT_EQ(array(0, "P")->GetComponent(1, 0), fake::pressure(1, 0, 1));
}

TEST_F(Choices, WhatCannotBeReadIsNamedAndTheRestIsRead) {
  EXPECT_EQ(read(0, {1}, {fake::kPressure, fake::kBroken}), paraview::Ending::complete);
  ASSERT_EQ(steps_.problems().size(), 1U);
  EXPECT_TRUE(steps_.problems()[0].starts_with("cannot read 'B' on part 'WALL (1)': "))
      << steps_.problems()[0];
  EXPECT_NE(array(0, "P"), nullptr);
  EXPECT_EQ(array(0, "B"), nullptr);
}

TEST_F(Choices, AVariableOfAnotherStepIsNotThere) {
  read(0, {1}, {fake::kOnlyFirst});
  EXPECT_NE(array(0, "F"), nullptr);
  read(1, {1}, {fake::kOnlyFirst});
  EXPECT_TRUE(steps_.problems().empty());
  EXPECT_EQ(array(0, "F"), nullptr);
}

TEST_F(Choices, ReadingStopsWhereItIsAskedTo) {
  items_ = 1;
  EXPECT_EQ(read(0, {1, 2, 3}, {fake::kPressure}), paraview::Ending::stopped);
  EXPECT_EQ(calls("USERD_get_part_coords"), 1U);
  EXPECT_EQ(calls("USERD_get_var_by_component"), 0U);
  items_ = -1;
  EXPECT_EQ(read(0, {1, 2, 3}, {fake::kPressure}), paraview::Ending::complete);
  EXPECT_EQ(calls("USERD_get_part_coords"), 2U);
}

// The mesh of the fake reader moves.
TEST_F(Choices, WhereReadingStopsIsNoMeshOfAnotherStep) {
  const auto x = [&](unsigned index) {
    output_ = store_.collection(info_);
    auto* grid = vtkUnstructuredGrid::SafeDownCast(output_->GetPartition(index, 0));
    return grid == nullptr ? -1.0F : static_cast<float>(grid->GetPoint(1)[0]);
  };
  read(0, {1, 3}, {fake::kPressure});
  EXPECT_EQ(x(1), fake::x(0, 0, 1));
  items_ = 1;
  EXPECT_EQ(read(1, {1, 3}, {fake::kPressure}), paraview::Ending::stopped);
  EXPECT_EQ(x(0), fake::x(1, 0, 1));
  EXPECT_EQ(output_->GetPartition(1, 0), nullptr);
  items_ = -1;
  EXPECT_EQ(read(1, {1, 3}, {fake::kPressure}), paraview::Ending::complete);
  EXPECT_EQ(calls("USERD_get_part_coords"), 1U);
  EXPECT_EQ(x(1), fake::x(1, 0, 1));
}

// The second surface is a triangle and a quadrilateral.
TEST_F(Choices, AnotherPieceHasNoValuesOfTheOneBefore) {
  read(0, {2}, {fake::kPressure}, 0, 2);
  ASSERT_NE(array(0, "P"), nullptr);
  EXPECT_EQ(array(0, "P")->GetNumberOfTuples(), 3);
  items_ = 1;
  EXPECT_EQ(read(0, {2}, {fake::kPressure}, 1, 2), paraview::Ending::stopped);
  EXPECT_EQ(array(0, "P"), nullptr);
  EXPECT_EQ(output_->GetPartition(0, 0)->GetNumberOfElements(vtkDataObject::POINT), 4);
  items_ = -1;
  EXPECT_EQ(read(0, {2}, {fake::kPressure}, 1, 2), paraview::Ending::complete);
  EXPECT_EQ(array(0, "P")->GetNumberOfTuples(), 4);
}

TEST_F(Choices, APartThatCannotBeReadIsTakenBack) {
  session_.open(fake::file(fake::kBadNodeNumber));
  read(0, {1, 3}, {});
  ASSERT_EQ(steps_.problems().size(), 1U);
  EXPECT_TRUE(steps_.problems()[0].starts_with("cannot read part 'WALL (1)': ")) << steps_.problems()[0];
  EXPECT_EQ(store_.collection(info_)->GetPartition(0, 0), nullptr);
  EXPECT_NE(store_.collection(info_)->GetPartition(1, 0), nullptr);
}

// Bytes that this process has read from files so far.
long bytes_read() {
  std::ifstream counts("/proc/self/io");
  std::string name;
  long bytes = 0;
  counts >> name >> bytes;
  return name == "rchar:" ? bytes : -1;
}

TEST(ChosenVariables, AreTheOnlyOnesReadFromTheFile) {
  const testkit::TemporaryDirectory directory;
  const samples::SampleInfo sample = samples::write_samples(directory.path()).front();
  const auto cost = [&](std::initializer_list<const char*> off) {
    Reader reader(sample.file);
    EXPECT_TRUE(reader.open());
    for (const char* name : off) reader->SetPointArrayStatus(name, 0);
    const long before = bytes_read();
    EXPECT_TRUE(reader.update());
    return bytes_read() - before;
  };
  const long all = cost({});
  const long without_scalars = cost({"Pressure", "Temperature"});
  const long nothing = cost({"Pressure", "Temperature", "Velocity"});
  EXPECT_LT(nothing, 65536);
  EXPECT_LT(nothing + 100000, without_scalars);
  EXPECT_LT(without_scalars + 100000, all);
}

}  // namespace
}  // namespace paraview_test
