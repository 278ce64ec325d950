// The two time sets: their descriptions, steps, times, and whether the geometry changes.
#include <array>
#include <limits>
#include <string>
#include <vector>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class TimeSets : public LoadedReader {
 protected:
  // Adds a file to the series. `geometry`: with node coordinates.
  void write_step(int cycle, double time, bool geometry = true, bool overset = false) {
    testkit::File file = file_at(cycle, time);
    auto& set = file.add_region_set();
    if (geometry) set.add(testkit::mesh_sections(numbered_mesh(4)));
    if (overset) set.add(numbered_scalar("@BNODE", 4));
    write(file, "case_" + std::to_string(cycle) + ".fld");
  }
  void open_series() { open(in("case_10.fld")); }
  int status() { return api().get_changing_geometry_status(); }
};

TEST_F(TimeSets, ThereAreTwoAndTheGeometryIsTheFirst) {
  EXPECT_EQ(2, api().get_number_of_timesets());
  EXPECT_EQ(1, api().get_geom_timeset_number());
}

TEST_F(TimeSets, DescriptionsNameThem) {
  std::array<char, 84> text;
  text.fill(kUntouchedChar);
  EXPECT_EQ(1, api().get_timeset_description(1, text.data()));
  EXPECT_STREQ("timeset_geometry", text.data());
  EXPECT_EQ(1, api().get_timeset_description(2, text.data()));
  EXPECT_STREQ("timeset_variables", text.data());
  EXPECT_EQ(kUntouchedChar, text[80]);
}

TEST_F(TimeSets, DescriptionOfAnotherSetIs80Terminators) {
  for (const int set : {3, 0, -1, 1000000}) {
    std::array<char, 84> text;
    text.fill(kUntouchedChar);
    EXPECT_EQ(1, api().get_timeset_description(set, text.data()));
    std::string expected(80, '\0');
    expected.append(4, kUntouchedChar);
    EXPECT_EQ(expected, std::string(text.data(), text.size())) << set;
  }
}

TEST_F(TimeSets, SingleFileHasOneStepInBothAndStaticGeometry) {
  write_step(10, 0.0);
  open_series();
  EXPECT_EQ((std::vector<float>{10.0F}), host.times(kGeometry));
  EXPECT_EQ((std::vector<float>{10.0F}), host.times(kVariables));
  EXPECT_EQ(0, status());
}

TEST_F(TimeSets, OnlyFilesWithGeometryAreStepsOfTheGeometry) {
  write_step(10, 0.0);
  for (const int cycle : {20, 30, 40}) write_step(cycle, 0.0, false);
  open_series();
  EXPECT_EQ((std::vector<float>{10.0F}), host.times(kGeometry));
  EXPECT_EQ((std::vector<float>{10.0F, 20.0F, 30.0F, 40.0F}), host.times(kVariables));
  EXPECT_EQ(0, status());
}

TEST_F(TimeSets, FilesWithAMotionAreStepsOfTheGeometryToo) {
  write_step(10, 0.0);
  write_step(20, 0.0, false);
  testkit::File moved = file_at(30);
  moved.add_region_set().add(motion_of(10, {}));
  write(moved, "case_30.fld");
  open_series();
  EXPECT_EQ((std::vector<float>{10.0F, 30.0F}), host.times(kGeometry));
  EXPECT_EQ((std::vector<float>{10.0F, 20.0F, 30.0F}), host.times(kVariables));
  EXPECT_EQ(1, status());
}

TEST_F(TimeSets, GeometryInOneOfTheRegionSetsIsEnough) {
  write(file_at(10, {numbered_mesh(4), numbered_mesh(4)}), "case_10.fld");
  testkit::File second = file_at(20);
  second.add_region_set();
  second.add_region_set().add(testkit::mesh_sections(numbered_mesh(4)));
  write(second, "case_20.fld");
  open_series();
  EXPECT_EQ(2, api().get_num_of_time_steps(kGeometry));
}

TEST_F(TimeSets, TimesAreTheHeadersAsSoonAsOneIsPositive) {
  write_step(10, 0.0);
  write_step(20, 0.0, false);
  write_step(30, 0.125, false);
  write_step(40, -1.5);
  open_series();
  EXPECT_EQ((std::vector<float>{0.0F, 0.0F, 0.125F, -1.5F}), host.times(kVariables));
  EXPECT_EQ((std::vector<float>{0.0F, -1.5F}), host.times(kGeometry));
}

TEST_F(TimeSets, WithoutAPositiveTimeTheTimesAreCycleNumbers) {
  write_step(10, 0.0);
  write_step(20, -5.0);
  open_series();
  EXPECT_EQ((std::vector<float>{10.0F, 20.0F}), host.times(kVariables));
}

TEST_F(TimeSets, TimesNarrowToFloat) {
  write_step(10, 0.1);
  write_step(20, 16777217.0);
  open_series();
  EXPECT_EQ((std::vector<float>{0.1F, 16777216.0F}), host.times(kVariables));
}

TEST_F(TimeSets, TimesStoredInSinglePrecisionAreTheSame) {
  testkit::File file = file_at(10, {numbered_mesh(4)});
  file.header.set_cycle(10, 0.1, testkit::Precision::kSingle);
  open(write(file));
  EXPECT_EQ((std::vector<float>{0.1F}), host.times(kVariables));
}

TEST_F(TimeSets, StepsFollowTheCyclesInTheFileNamesWhateverTheHeadersSay) {
  write(file_at(77, {numbered_mesh(4)}), "case_10.fld");
  write(file_at(5, {numbered_mesh(4)}), "case_9.fld");
  open_series();
  EXPECT_EQ((std::vector<float>{5.0F, 77.0F}), host.times(kVariables));
}

TEST_F(TimeSets, FilesWithTheSameCycleAreBothSteps) {
  write(file_at(1, {numbered_mesh(4)}), "case_1.fld");
  write(file_at(1, {numbered_mesh(4)}), "case_01.fld");
  open(in("case_1.fld"));
  EXPECT_EQ((std::vector<float>{1.0F, 1.0F}), host.times(kVariables));
}

TEST_F(TimeSets, OtherSetsHaveNoStepsAndNoTimes) {
  write_step(10, 0.0);
  open_series();
  for (const int set :
       {0, -1, 3, 299, 300, 301, 1000000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(0, api().get_num_of_time_steps(set)) << set;
    EXPECT_EQ(std::vector<float>{}, host.times(set)) << set;
  }
  EXPECT_EQ(1, api().get_num_of_time_steps(kGeometry));
}

TEST_F(TimeSets, GeometryInSeveralFilesChangesItsCoordinates) {
  for (const int cycle : {10, 20, 30}) write_step(cycle, 0.0);
  open_series();
  EXPECT_EQ(1, status());
}

TEST_F(TimeSets, OversetDataInAnyFileChangesTheConnectivityToo) {
  write_step(10, 0.0);
  write_step(20, 0.0, true, true);
  write_step(30, 0.0);
  open_series();
  EXPECT_EQ(2, status());
}

TEST_F(TimeSets, OversetDataInAFileWithoutGeometryCounts) {
  write_step(10, 0.0);
  write_step(20, 0.0);
  write_step(30, 0.0, false, true);
  open_series();
  EXPECT_EQ(2, status());
}

TEST_F(TimeSets, OneStepOfGeometryIsStaticWhateverOversetDataThereIs) {
  write_step(10, 0.0, true, true);
  write_step(20, 0.0, false, true);
  open_series();
  EXPECT_EQ(0, status());
}

TEST_F(TimeSets, QuantityWhoseNameOnlyContainsTheMarkIsNoOversetData) {
  write_step(10, 0.0);
  write_step(20, 0.0);
  testkit::File file = file_at(30, {numbered_mesh(4)});
  file.region_sets[0].add(numbered_scalar("X@BNODE", 4));
  file.region_sets[0].add(numbered_vector("@BNODE", 4));
  write(file, "case_30.fld");
  open_series();
  EXPECT_EQ(1, status());
}

TEST_F(TimeSets, QuantityWhoseNameBeginsWithTheMarkIsOversetData) {
  write_step(10, 0.0);
  testkit::File file = file_at(30, {numbered_mesh(4)});
  file.region_sets[0].add(numbered_scalar("@BNODE_2", 4));
  write(file, "case_30.fld");
  open_series();
  EXPECT_EQ(2, status());
}

TEST_F(TimeSets, AskingWritesNothingToTheErrorStream) {
  write_step(10, 0.0);
  open_series();
  EXPECT_EQ("", stderr_of([&] {
              host.times(kGeometry);
              host.times(kVariables);
              status();
            }));
}

}  // namespace
}  // namespace reader_test
