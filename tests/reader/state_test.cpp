// The state kept between calls.
#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "reader/globals.h"
#include "reader/work_tables.h"
#include "tests/reader/linked_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using State = LinkedReader;

// The state as it was before the first test.
struct LoadTimeState {
  std::string geom_file, resu_file;
  std::array<int, 2> toggles{};
  int num_toggle = -1;
  float undefined = -1.0F;
  std::array<int, 2> servers{};
  std::array<int, 2> current{};
  std::vector<int> step_counts;
  int parts = -1;
  int variables = -1;
  bool holds_objects = true;
  bool holds_names = true;
  bool holds_tables = true;
};
LoadTimeState load_time;

class LoadTime : public testing::Environment {
 public:
  void SetUp() override {
    load_time = {.geom_file = fld::Geom_file,
                 .resu_file = fld::Resu_file,
                 .toggles = {fld::Toggle_user[0], fld::Toggle_user[1]},
                 .num_toggle = fld::Num_toggle,
                 .undefined = fld::Ens_Undef_value,
                 .servers = {fld::Server_Number, fld::Tot_Servers},
                 .current = {fld::Current_timeset, fld::Current_time_step},
                 .step_counts = {std::begin(fld::Num_time_steps), std::end(fld::Num_time_steps)},
                 .parts = fld::Numparts_available,
                 .variables = fld::Num_variables,
                 .holds_objects = fld::g_fld || fld::g_fldgeo || fld::g_scalar || fld::g_vector,
                 .holds_names = !fld::g_prev_scalar_xxxx.empty() || !fld::g_prev_vector_xxxx.empty(),
                 .holds_tables = !fld::g_mark_node.empty() || !fld::g_globalNode2localNode.empty() ||
                                 fld::g_ele2head.heads != nullptr};
  }
};
const auto* const kLoadTime = testing::AddGlobalTestEnvironment(new LoadTime);

TEST_F(State, IsEmptyAfterLoading) {
  ASSERT_NE(nullptr, kLoadTime);
  EXPECT_EQ("", load_time.geom_file);
  EXPECT_EQ("", load_time.resu_file);
  EXPECT_EQ((std::array<int, 2>{0, 0}), load_time.toggles);
  EXPECT_EQ(0, load_time.num_toggle);
  EXPECT_EQ(0.0F, load_time.undefined);
  EXPECT_EQ((std::array<int, 2>{1, 1}), load_time.servers);
  EXPECT_EQ((std::array<int, 2>{1, 0}), load_time.current);
  EXPECT_EQ(std::vector<int>(300, 0), load_time.step_counts);
  EXPECT_EQ(0, load_time.parts);
  EXPECT_EQ(0, load_time.variables);
  EXPECT_FALSE(load_time.holds_objects);
  EXPECT_FALSE(load_time.holds_names);
  EXPECT_FALSE(load_time.holds_tables);
}

TEST_F(State, ConstantsAreTwoTimeSetsAndNoFilesAndMaterialSets) {
  EXPECT_EQ(2, fld::Num_timesets);
  EXPECT_EQ(0, fld::Num_dataset_files);
  EXPECT_EQ(0, fld::Num_material_sets);
}

TEST_F(State, ServerNumbersAreKept) {
  api().set_server_number(3, 8);
  EXPECT_EQ(3, fld::Server_Number);
  EXPECT_EQ(8, fld::Tot_Servers);
}

TEST_F(State, TogglesAreKeptAsTheHostSetThem) {
  std::array<int, 2> toggles = {5, -1};
  api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  EXPECT_EQ(2, fld::Num_toggle);
  EXPECT_EQ(5, fld::Toggle_user[0]);
  EXPECT_EQ(-1, fld::Toggle_user[1]);
}

TEST_F(State, UndefinedValueIsKept) {
  int request = 0x40000000;
  float value = -1.0e20F;
  api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &value);
  EXPECT_EQ(-1.0e20F, fld::Ens_Undef_value);
}

TEST_F(State, FileNamesAreKept) {
  const auto path = write(testkit::file_of(numbered_mesh(4)));
  stderr_of([&] { host.open(path, "second.res"); });
  EXPECT_EQ(path.string(), fld::Geom_file);
  EXPECT_STREQ("second.res", fld::Resu_file);
}

TEST_F(State, FileNamesThatDoNotFitAreKeptAsFarAsTheyFit) {
  std::filesystem::path folder = in("deep");
  for (int depth = 0; depth < 3; ++depth) folder /= std::string(150, 'd');
  std::filesystem::create_directories(folder);
  testkit::write_file(testkit::file_of(numbered_mesh(4)), folder / "case.fld");
  const std::string path = (folder / "case.fld").string();
  fld::Toggle_user[0] = 77;  // stands near the buffers
  stderr_of([&] { EXPECT_EQ(1, host.open(path, std::string(1000, 'r'))); });
  EXPECT_EQ(path.substr(0, 254), fld::Geom_file);
  EXPECT_EQ(std::string(254, 'r'), fld::Resu_file);
  EXPECT_EQ(77, fld::Toggle_user[0]);
}

TEST_F(State, MissingSecondFileNameIsAnEmptyOne) {
  std::string path = write(testkit::file_of(numbered_mesh(4))).string();
  stderr_of([&] {
    host.open(path, "before");
    api().set_filenames(path.data(), nullptr, nullptr, 0);
  });
  EXPECT_STREQ("", fld::Resu_file);
}

TEST_F(State, MissingFileLeavesTheFileNamesAsTheyWere) {
  const auto path = write(testkit::file_of(numbered_mesh(4)));
  stderr_of([&] {
    host.open(path, "second");
    host.open(in("missing.fld"), "other");
  });
  EXPECT_EQ(path.string(), fld::Geom_file);
  EXPECT_STREQ("second", fld::Resu_file);
}

TEST_F(State, OpeningFillsNoCounters) {
  write_and_open(testkit::file_of(testkit::one_of_each()));
  EXPECT_EQ(0, fld::Numparts_available);
  EXPECT_EQ(0, fld::Num_variables);
  EXPECT_TRUE(std::all_of(std::begin(fld::Num_time_steps), std::end(fld::Num_time_steps),
                          [](int count) { return count == 0; }));
}

TEST_F(State, CountsAreKeptWhenTheHostAsks) {
  testkit::File file = testkit::file_of(testkit::one_of_each());
  file.region_sets[0].add(numbered_scalar("T", 11));
  write_and_open(file);
  EXPECT_EQ(5, api().get_number_of_model_parts());
  EXPECT_EQ(5, fld::Numparts_available);
  EXPECT_EQ(2, api().get_number_of_variables());
  EXPECT_EQ(2, fld::Num_variables);
  api().get_num_of_time_steps(1);
  api().get_num_of_time_steps(2);
  EXPECT_EQ(1, fld::Num_time_steps[1]);
  EXPECT_EQ(1, fld::Num_time_steps[2]);
}

TEST_F(State, StepCountsAreOnlyWrittenInsideTheirTable) {
  write_and_open(testkit::file_of(numbered_mesh(4)));
  std::fill(std::begin(fld::Num_time_steps), std::end(fld::Num_time_steps), 7);
  const auto before = std::array{fld::Numparts_available, fld::Num_variables, fld::Current_timeset,
                                 fld::Current_time_step,  fld::Server_Number, fld::Tot_Servers};
  for (const int set :
       {-1, 300, 301, 4000, -4000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(0, api().get_num_of_time_steps(set));
  }
  EXPECT_TRUE(std::all_of(std::begin(fld::Num_time_steps), std::end(fld::Num_time_steps),
                          [](int count) { return count == 7; }));
  EXPECT_EQ(before, (std::array{fld::Numparts_available, fld::Num_variables, fld::Current_timeset,
                                fld::Current_time_step, fld::Server_Number, fld::Tot_Servers}));
  EXPECT_EQ(0, api().get_num_of_time_steps(0));
  EXPECT_EQ(0, api().get_num_of_time_steps(299));
  EXPECT_EQ(0, fld::Num_time_steps[0]);
  EXPECT_EQ(0, fld::Num_time_steps[299]);
  EXPECT_EQ(7, fld::Num_time_steps[298]);
}

TEST_F(State, SelectedSetAndStepAreKeptWhateverTheyAre) {
  write_and_open(testkit::file_of(numbered_mesh(4)));
  for (const auto& [set, step] : {std::pair{2, 0}, {1, 99}, {1, -3}, {17, 5}}) {
    select(set, step);
    EXPECT_EQ(set, fld::Current_timeset);
    EXPECT_EQ(step, fld::Current_time_step);
  }
}

TEST_F(State, ExitKeepsOptionsAndTheSelectedStepAlone) {
  write_and_open(testkit::file_of(numbered_mesh(4)));
  std::array<int, 2> toggles = {1, 1};
  api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  int request = 1;
  float value = 5.0F;
  api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &value);
  select(2, 3);
  EXPECT_EQ("", stderr_of([&] { api().exit_routine(); }));
  EXPECT_EQ(2, fld::Current_timeset);
  EXPECT_EQ(3, fld::Current_time_step);
  EXPECT_EQ(1, fld::Toggle_user[0]);
  EXPECT_EQ(1, fld::Toggle_user[1]);
  EXPECT_EQ(5.0F, fld::Ens_Undef_value);
  EXPECT_FALSE(fld::g_fld);
  EXPECT_FALSE(fld::g_fldgeo);
}

TEST_F(State, OpeningPublishesTheDatasetAndItsGeometry) {
  for (const int cycle : {1, 2}) {
    write(file_at(cycle, {numbered_mesh(4), numbered_mesh(5)}), "case_" + std::to_string(cycle) + ".fld");
  }
  open(in("case_1.fld"));
  ASSERT_TRUE(fld::g_fld);
  EXPECT_EQ(2U, fld::g_fld->m_fld.size());
  ASSERT_TRUE(fld::g_fldgeo);
  EXPECT_EQ(2U, fld::g_fldgeo->geos.size());
  EXPECT_EQ((std::vector<int>{0, 0}), fld::g_fldgeo->loadedStep);
}

TEST_F(State, FailedOpeningLeavesTheVeryObjectsInPlace) {
  write_and_open(testkit::file_of(numbered_mesh(4)));
  const auto* const dataset = fld::g_fld.get();
  const auto* const geometry = fld::g_fldgeo.get();
  const char* const marks = fld::g_mark_node.data();
  const long* const heads = fld::g_ele2head.heads.get();
  stderr_of([&] { EXPECT_EQ(-1, host.open(write(testkit::file_of(numbered_nodes(50)), "other.fld"))); });
  EXPECT_EQ(dataset, fld::g_fld.get());
  EXPECT_EQ(geometry, fld::g_fldgeo.get());
  EXPECT_EQ(marks, fld::g_mark_node.data());
  EXPECT_EQ(4U, fld::g_mark_node.size());
  EXPECT_EQ(heads, fld::g_ele2head.heads.get());
}

TEST_F(State, LoadedFilesFollowTheSteps) {
  for (const int cycle : {1, 2, 3}) {
    testkit::File file = file_at(cycle);
    file.add_region_set().add(testkit::mesh_sections(numbered_mesh(4)));
    auto& second = file.add_region_set();
    if (cycle != 3) second.add(testkit::mesh_sections(numbered_mesh(4)));
    write(file, "case_" + std::to_string(cycle) + ".fld");
  }
  open(in("case_1.fld"));
  select(1, 1);
  EXPECT_EQ((std::vector<int>{1, 1}), fld::g_fldgeo->loadedStep);
  select(1, 2);
  EXPECT_EQ((std::vector<int>{2, 1}), fld::g_fldgeo->loadedStep);
  std::filesystem::remove(in("case_1.fld"));
  select(1, 0);
  EXPECT_EQ((std::vector<int>{2, 1}), fld::g_fldgeo->loadedStep) << "nothing was read";
}

TEST_F(State, MotionSwitchesTheSimplifyingOptionOff) {
  testkit::File file = testkit::file_of(numbered_mesh(4));
  file.region_sets[0].add(motion_of(0, {}));
  fld::Toggle_user[0] = 1;
  fld::Toggle_user[1] = 1;
  write_and_open(file);
  EXPECT_EQ(0, fld::Toggle_user[0]);
  EXPECT_EQ(1, fld::Toggle_user[1]);
  EXPECT_TRUE(fld::g_fld->m_anyALE);
}

TEST_F(State, SimplifiedIndexGivesEveryFileTheEntriesOfTheFirst) {
  for (const int cycle : {1, 2, 3}) {
    testkit::File file = file_at(cycle, {numbered_mesh(4)});
    file.region_sets[0].add(numbered_scalar("P", 4));
    if (cycle == 1) file.region_sets[0].add(numbered_vector("V", 4));
    write(file, "case_" + std::to_string(cycle) + ".fld");
  }
  fld::Toggle_user[0] = 1;
  open(in("case_3.fld"));
  EXPECT_EQ(1, fld::Toggle_user[0]);
  const auto& first = fld::g_fld->m_fld[0].m_overlap[0];
  for (const auto& file : fld::g_fld->m_fld) {
    const auto& overlap = file.m_overlap[0];
    ASSERT_EQ(1U, overlap.m_scalars.size());
    EXPECT_EQ(first.m_scalars[0].m_seek, overlap.m_scalars[0].m_seek);
    EXPECT_STREQ("P", overlap.m_scalars[0].m_name);
    ASSERT_EQ(1U, overlap.m_vectors.size());
    EXPECT_STREQ("V", overlap.m_vectors[0].m_name);
  }
}

}  // namespace
}  // namespace reader_test
