// Objects that are kept between steps, and the step of a time.
#include <cmath>
#include <gtest/gtest.h>
#include <vtkFieldData.h>
#include <vtkInformation.h>
#include <vtkInformationDoubleKey.h>
#include <vtkPointData.h>
#include <vtkStringArray.h>

#include "samples/samples.h"
#include "testkit/box_dataset.h"
#include "testkit/box_values.h"
#include "testkit/temporary_directory.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

// The objects of a grid.
struct Objects {
  explicit Objects(vtkUnstructuredGrid* grid)
      : points(grid->GetPoints()), cells(grid->GetCells()), types(grid->GetCellTypesArray()) {}
  bool operator==(const Objects&) const = default;

  vtkSmartPointer<vtkPoints> points;
  vtkSmartPointer<vtkCellArray> cells;
  vtkSmartPointer<vtkUnsignedCharArray> types;
};

class Steps : public testing::Test {
 protected:
  std::filesystem::path tank() {
    for (const samples::SampleInfo& sample : samples::write_samples(directory_.path())) {
      if (sample.name == "tank") return sample.file;
    }
    return {};
  }

  // A series with the mesh only in its first file.
  std::filesystem::path static_series() {
    for (int step = 0; step < 3; ++step) {
      testkit::BoxOptions options;
      options.nx = options.ny = options.nz = 4;
      options.cycle = step;
      options.time = 0.5 * step;
      testkit::write_file(step == 0 ? testkit::box_file(options) : testkit::box_values_file(options),
                          directory_ / ("box_" + std::to_string(step) + ".fld"));
    }
    return directory_ / "box_0.fld";
  }

  testkit::TemporaryDirectory directory_;
};

TEST_F(Steps, OfAStaticMeshShareEverythingButTheValues) {
  Reader reader(static_series());
  ASSERT_TRUE(reader.update(0.0));
  ASSERT_EQ(reader.times().size(), 3U);
  const Objects before(reader.grid("volume_1"));
  const vtkSmartPointer<vtkDataArray> values = reader.grid("volume_1")->GetPointData()->GetArray("scalar_1");
  const vtkMTimeType points_time = before.points->GetMTime();
  ASSERT_TRUE(reader.update(1.0));
  const Objects after(reader.grid("volume_1"));
  EXPECT_EQ(before, after);
  EXPECT_EQ(points_time, after.points->GetMTime());
  EXPECT_NE(values, reader.grid("volume_1")->GetPointData()->GetArray("scalar_1"));
}

TEST_F(Steps, OfAMovingMeshShareTheCells) {
  Reader reader(tank());
  ASSERT_TRUE(reader.update(0.0));
  const Objects moving(reader.grid("impeller_zone"));
  const Objects resting(reader.grid("tank_zone"));
  ASSERT_TRUE(reader.update(0.1));
  const Objects moved(reader.grid("impeller_zone"));
  EXPECT_EQ(moving.cells, moved.cells);
  EXPECT_EQ(moving.types, moved.types);
  EXPECT_NE(moving.points, moved.points);
  EXPECT_EQ(resting, Objects(reader.grid("tank_zone")));
}

TEST_F(Steps, OfAMeshThatEveryFileHasShareItToo) {
  for (int step = 0; step < 2; ++step)
    testkit::write_box_dataset(directory_ / ("again_" + std::to_string(step) + ".fld"),
                               {.cycle = step, .time = static_cast<double>(step)});
  Reader reader(directory_ / "again_0.fld");
  ASSERT_TRUE(reader.update(0.0));
  const Objects before(reader.grid("volume_1"));
  ASSERT_TRUE(reader.update(1.0));
  EXPECT_EQ(before, Objects(reader.grid("volume_1")));
}

TEST_F(Steps, AreSharedInPiecesToo) {
  Reader reader(tank());
  ASSERT_TRUE(reader.update_piece(1, 3));
  const Objects before(reader.grid("impeller_zone"));
  ASSERT_TRUE(reader.update(0.1));
  const Objects after(reader.grid("impeller_zone"));
  EXPECT_EQ(before.cells, after.cells);
  EXPECT_NE(before.points, after.points);
}

TEST_F(Steps, BelongToTheTimesUpToTheNext) {
  Reader reader(static_series());
  const auto time_shown = [&](double asked) {
    EXPECT_TRUE(reader.update(asked));
    return reader.output()->GetInformation()->Get(vtkDataObject::DATA_TIME_STEP());
  };
  EXPECT_EQ(time_shown(-1.0), 0.0);
  EXPECT_EQ(time_shown(0.49), 0.0);
  EXPECT_EQ(time_shown(0.5), 0.5);
  EXPECT_EQ(time_shown(7.0), 1.0);
}

TEST_F(Steps, HaveTheTimesThatTheFilesSay) {
  for (int step = 0; step < 4; ++step) {
    testkit::BoxOptions options;
    options.cycle = step;
    testkit::File file = testkit::box_file(options);
    file.header.set_cycle(step, 0.1 * step, testkit::Precision::kSingle);
    testkit::write_file(file, directory_ / ("tenths_" + std::to_string(step) + ".fld"));
  }
  Reader reader(directory_ / "tenths_0.fld");
  ASSERT_TRUE(reader.open());
  const std::vector<double> times = reader.times();
  ASSERT_EQ(times, (std::vector<double>{0.0, 0.1, 0.2, 0.3}));
  for (std::size_t step = 0; step < times.size(); ++step) {
    const double tenths = static_cast<double>(step) / 10.0;
    ASSERT_TRUE(reader.update(tenths));
    EXPECT_EQ(reader.output()->GetInformation()->Get(vtkDataObject::DATA_TIME_STEP()), times[step]);
    // Not quite there, as after arithmetic in single precision.
    ASSERT_TRUE(reader.update(tenths * (1.0 - 1.0e-7)));
    EXPECT_EQ(reader.output()->GetInformation()->Get(vtkDataObject::DATA_TIME_STEP()), times[step]);
  }
}

TEST_F(Steps, HaveTheSameArraysAlsoWhereOneLacksAVariable) {
  for (int step = 0; step < 2; ++step) {
    testkit::BoxOptions options;
    options.cycle = step;
    options.time = step;
    options.scalars = 2 - step;
    testkit::write_box_dataset(directory_ / ("lacks_" + std::to_string(step) + ".fld"), options);
  }
  Reader reader(directory_ / "lacks_0.fld");
  ASSERT_TRUE(reader.update(0.0));
  const int arrays = reader.grid("volume_1")->GetPointData()->GetNumberOfArrays();
  EXPECT_EQ(reader.output()->GetFieldData()->GetAbstractArray("Missing"), nullptr);
  ASSERT_TRUE(reader.update(1.0));
  EXPECT_EQ(reader.grid("volume_1")->GetPointData()->GetNumberOfArrays(), arrays);
  vtkDataArray* values = reader.grid("volume_1")->GetPointData()->GetArray("scalar_2");
  ASSERT_NE(values, nullptr);
  ASSERT_EQ(values->GetNumberOfTuples(), reader.grid("volume_1")->GetNumberOfPoints());
  for (vtkIdType i = 0; i < values->GetNumberOfTuples(); ++i)
    EXPECT_TRUE(std::isnan(values->GetComponent(i, 0)));
  auto* missing = vtkStringArray::SafeDownCast(reader.output()->GetFieldData()->GetAbstractArray("Missing"));
  ASSERT_NE(missing, nullptr);
  ASSERT_EQ(missing->GetNumberOfValues(), 1);
  EXPECT_EQ(missing->GetValue(0), "scalar_2");
}

// Meshes in the files 0, 2 and 3, of which the first three have the same time.
TEST_F(Steps, HaveTheMeshOfTheirFile) {
  const double times[] = {0.0, 0.0, 0.0, 0.001};
  for (int step = 0; step < 4; ++step) {
    testkit::BoxOptions options;
    options.cycle = step;
    options.time = times[step];
    options.lengths = {1.0 + step, 1.0, 1.0};
    testkit::write_file(step == 1 ? testkit::box_values_file(options) : testkit::box_file(options),
                        directory_ / ("paired_" + std::to_string(step) + ".fld"));
  }
  Reader reader(directory_ / "paired_0.fld");
  ASSERT_TRUE(reader.open());
  ASSERT_EQ(reader.times(), (std::vector<double>{0.0, 1.0, 2.0, 3.0}));  // numbers
  const double lengths[] = {1.0, 1.0, 3.0, 4.0};
  for (int step = 0; step < 4; ++step) {
    ASSERT_TRUE(reader.update(step));
    EXPECT_EQ(reader.grid("volume_1")->GetBounds()[1], lengths[step]) << "step " << step;
  }
}

TEST_F(Steps, AreThereAgainAfterOneThatFailed) {
  const std::filesystem::path first = static_series();
  const std::filesystem::path second = directory_ / "box_1.fld";
  Reader reader(first);
  ASSERT_TRUE(reader.update(0.0));
  const Objects before(reader.grid("volume_1"));
  std::filesystem::resize_file(second, 400);
  // The step's values cannot be read: one message per variable, and the mesh.
  ASSERT_TRUE(reader.update(0.5));
  EXPECT_EQ(reader.take_errors().size(), 3U);
  EXPECT_EQ(before, Objects(reader.grid("volume_1")));
  EXPECT_TRUE(std::isnan(reader.grid("volume_1")->GetPointData()->GetArray("scalar_1")->GetComponent(0, 0)));
  ASSERT_TRUE(reader.update(0.0));
  EXPECT_TRUE(reader.take_errors().empty());
  ASSERT_NE(reader.grid("volume_1"), nullptr);
  EXPECT_EQ(before, Objects(reader.grid("volume_1")));
  EXPECT_FALSE(std::isnan(reader.grid("volume_1")->GetPointData()->GetArray("scalar_1")->GetComponent(0, 0)));
}

TEST_F(Steps, WhoseMeshFailsSaySoAndLeaveTheOthersUsable) {
  for (int step = 0; step < 2; ++step)
    testkit::write_box_dataset(directory_ / ("full_" + std::to_string(step) + ".fld"),
                               {.cycle = step, .time = static_cast<double>(step)});
  Reader reader(directory_ / "full_0.fld");
  ASSERT_TRUE(reader.update(0.0));
  std::filesystem::resize_file(directory_ / "full_1.fld", 600);
  EXPECT_FALSE(reader.update(1.0));
  const std::vector<std::string> errors = reader.take_errors();
  ASSERT_EQ(errors.size(), 1U);
  EXPECT_NE(errors[0].find("cannot read step 1 of "), std::string::npos) << errors[0];
  EXPECT_NE(errors[0].find("full_1.fld: "), std::string::npos) << errors[0];
  EXPECT_FALSE(reader.update(1.0));
  EXPECT_TRUE(reader.take_errors().empty());
  ASSERT_TRUE(reader.update(0.0));
  ASSERT_NE(reader.grid("volume_1"), nullptr);
  EXPECT_GT(reader.grid("volume_1")->GetNumberOfCells(), 0);
}

// With the places of the first file's sections a file that is laid out in another way cannot be read.
TEST_F(Steps, OfFilesThatDifferAreReadUnlessReadingIsSimplified) {
  for (int step = 0; step < 2; ++step) {
    testkit::BoxOptions options;
    options.cycle = step;
    options.time = step;
    testkit::File file = testkit::box_file(options);
    if (step == 1) file.region_sets.front().remove("LS_MatOfElements");
    testkit::write_file(file, directory_ / ("differ_" + std::to_string(step) + ".fld"));
  }
  for (const bool simplify : {false, true}) {
    Reader reader(directory_ / "differ_0.fld");
    reader->SetSimplifyReading(simplify);
    reader.update(1.0);
    EXPECT_EQ(reader.take_errors().empty(), !simplify);
  }
}

TEST_F(Steps, AreNumberedWhereTheTimesDoNotAscend) {
  for (int step = 0; step < 2; ++step) {
    testkit::BoxOptions options;
    options.cycle = step;
    options.time = 2.0;
    testkit::write_box_dataset(directory_ / ("same_" + std::to_string(step) + ".fld"), options);
  }
  Reader reader(directory_ / "same_0.fld");
  ASSERT_TRUE(reader.open());
  EXPECT_EQ(reader.times(), (std::vector<double>{0.0, 1.0}));
  const std::vector<std::string> warnings = reader.take_warnings();
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_NE(warnings[0].find("the solution times of"), std::string::npos);
}

}  // namespace
}  // namespace paraview_test
