// Calls in unusual order: before any opening and after the exit routine, every entry point answers as for a
// dataset without files, parts and variables.
#include <array>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

enum class OddMoment { kBeforeAnyOpening, kAfterAFailedOpening, kAfterTheExit, kAfterTheExitTwice };

class WithoutADataset : public LoadedReader, public testing::WithParamInterface<OddMoment> {
 protected:
  void SetUp() override {
    switch (GetParam()) {
      case OddMoment::kBeforeAnyOpening:
        break;
      case OddMoment::kAfterAFailedOpening:
        stderr_of([&] { EXPECT_EQ(-1, host.open(write(testkit::file_of(numbered_nodes(4))))); });
        break;
      default:
        go_through_a_dataset();
        stderr_of([&] {
          api().exit_routine();
          if (GetParam() == OddMoment::kAfterTheExitTwice) api().exit_routine();
        });
    }
  }

  void go_through_a_dataset() {
    testkit::File file = testkit::file_of(testkit::one_of_each());
    file.region_sets[0].add(numbered_scalar("T", 11));
    file.region_sets[0].add(numbered_vector("U", 11));
    write_and_open(file);
    select(1, 0);
    for (const PartInfo& part : host.parts()) {
      host.coordinates(part.id);
      host.rows(part.id, 26);
      host.scalar(1, part.id);
      host.vector(2, part.id, 1);
    }
  }
};

TEST_P(WithoutADataset, ThereAreNoParts) {
  EXPECT_EQ("", stderr_of([&] {
              EXPECT_EQ(0, host.part_count());
              EXPECT_EQ(std::vector<PartInfo>{}, host.parts());
              EXPECT_EQ(1, api().get_gold_part_build_info(nullptr, nullptr, nullptr, nullptr, nullptr,
                                                          nullptr, nullptr));
            }));
}

TEST_P(WithoutADataset, PartsHaveNeitherCoordinatesNorElements) {
  for (const int part : {1, 2, 0, -1, 1000}) {
    EXPECT_EQ((Points{{kUntouchedFloat, kUntouchedFloat, kUntouchedFloat}}), host.coordinates(part, 1));
    for (const int slot : {6, 10, 14, 18, 22, 26, 0}) {
      const Rows rows = host.rows(part, slot, 1);
      EXPECT_EQ((Rows{std::vector<int>(rows[0].size(), kUntouchedInt)}), rows);
    }
    EXPECT_EQ(1, api().get_part_coords(part, nullptr));
    EXPECT_EQ(1, api().get_part_elements_by_type(part, 26, nullptr));
  }
}

TEST_P(WithoutADataset, MaterialIsTheOnlyVariable) {
  EXPECT_EQ(1, api().get_number_of_variables());
  EXPECT_EQ((std::vector<VariableInfo>{{"MatOfElements", 1, 1}}), host.variables());
}

TEST_P(WithoutADataset, NoVariableHasValues) {
  for (const int variable : {0, 1, 2, 3}) {
    for (const int type : {1, 2}) {
      for (const int part : {0, 1, 2}) {
        EXPECT_EQ((Answer{1, {kUntouchedFloat}}),
                  host.ask({.variable = variable, .part = part, .var_type = type, .slot = 26}, 1));
      }
    }
  }
  EXPECT_EQ((Answer{2, {kUntouchedFloat}}), host.ask({.variable = 1, .part = 1, .imaginary = 1}, 1));
}

TEST_P(WithoutADataset, BothTimeSetsAreThereWithoutSteps) {
  EXPECT_EQ(2, api().get_number_of_timesets());
  EXPECT_EQ(1, api().get_geom_timeset_number());
  for (const int set : {1, 2, 3}) {
    EXPECT_EQ(0, api().get_num_of_time_steps(set));
    EXPECT_EQ(std::vector<float>{}, host.times(set));
    EXPECT_EQ(1, api().get_sol_times(set, nullptr));
  }
  EXPECT_EQ(1, api().get_changing_geometry_status());
}

TEST_P(WithoutADataset, NoStepOfTheGeometryIsFound) {
  for (const int step : {0, 1, -1}) {
    EXPECT_EQ("error : not found geometry data in current time.\n", select(1, step));
    EXPECT_EQ("", select(2, step));
    EXPECT_EQ("", select(3, step));
  }
}

TEST_P(WithoutADataset, ThereAreNoPartGroups) {
  int size = kUntouchedInt;
  EXPECT_EQ(1, api().get_metadata(&size, nullptr));
  EXPECT_EQ(0, size);
  std::array<int, 2> toggles = {0, 1};
  api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  EXPECT_EQ(std::string::npos, host.metadata().find("<part "));
}

TEST_P(WithoutADataset, ADatasetCanBeOpenedAfterwards) {
  host.parts();
  host.variables();
  host.coordinates(1, 1);
  select(1, 0);
  go_through_a_dataset();
  EXPECT_EQ(5, host.part_count());
}

INSTANTIATE_TEST_SUITE_P(Session, WithoutADataset,
                         testing::Values(OddMoment::kBeforeAnyOpening, OddMoment::kAfterAFailedOpening,
                                         OddMoment::kAfterTheExit, OddMoment::kAfterTheExitTwice),
                         [](const testing::TestParamInfo<OddMoment>& info) {
                           switch (info.param) {
                             case OddMoment::kBeforeAnyOpening:
                               return "BeforeAnyOpening";
                             case OddMoment::kAfterAFailedOpening:
                               return "AfterAFailedOpening";
                             case OddMoment::kAfterTheExit:
                               return "AfterTheExit";
                             default:
                               return "AfterTheExitTwice";
                           }
                         });

}  // namespace
}  // namespace reader_test
