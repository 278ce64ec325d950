// The exit routine, and unloading the library.
#include <optional>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/open_counter.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class Teardown : public LoadedReader {
 protected:
  // A dataset of two steps, with everything requested once.
  void go_through_a_dataset() {
    for (const int cycle : {1, 2}) {
      testkit::File file = file_at(cycle, {testkit::one_of_each(), testkit::one_tetrahedron()});
      for (auto& set : file.region_sets) {
        set.add(numbered_scalar("T", 11));
        set.add(numbered_vector("U", 11));
      }
      if (cycle == 2) {
        file.region_sets[0].add(
            motion_of(1, {{.names = {"lower"}, .actions = {testkit::Action::translate({1.0, 0.0, 0.0})}}}));
      }
      write(file, "case_" + std::to_string(cycle) + ".fld");
    }
    open(in("case_1.fld"));
    for (const int step : {0, 1}) {
      select(1, step);
      select(2, step);
      for (const PartInfo& part : host.parts()) {
        host.coordinates(part.id);
        for (const auto& [slot, count] : part.elements) host.rows(part.id, slot, count);
        host.scalar(1, part.id);
        host.vector(2, part.id, 2);
      }
    }
  }
  std::string exit() {
    return stderr_of([&] { api().exit_routine(); });
  }
};

TEST_F(Teardown, BeforeAnyOpeningWritesNothing) {
  EXPECT_EQ("", exit());
}

TEST_F(Teardown, AfterAWholeSessionReportsNoLeak) {
  go_through_a_dataset();
  EXPECT_EQ("", exit());
}

TEST_F(Teardown, MayBeCalledTwice) {
  go_through_a_dataset();
  EXPECT_EQ("", exit());
  EXPECT_EQ("", exit());
}

TEST_F(Teardown, AfterAFailedOpeningWritesNothing) {
  stderr_of([&] { EXPECT_EQ(-1, host.open(write(testkit::file_of(numbered_nodes(4))))); });
  EXPECT_EQ("", exit());
}

TEST_F(Teardown, AfterAnOpeningThatThrewWritesNothing) {
  const auto path = write(testkit::file_of(testkit::one_of_each()));
  std::filesystem::resize_file(path, 1000);
  EXPECT_ANY_THROW(stderr_of([&] { host.open(path); }));
  EXPECT_EQ("", exit());
}

TEST_F(Teardown, AllSessionsOfAProcessAreAlike) {
  for (int session = 0; session < 3; ++session) {
    go_through_a_dataset();
    EXPECT_EQ("", exit());
    EXPECT_EQ(0, host.part_count());
  }
}

TEST_F(Teardown, ReaderAnswersAsWithoutADatasetAfterwards) {
  go_through_a_dataset();
  exit();
  EXPECT_EQ(0, host.part_count());
  EXPECT_EQ((std::vector<VariableInfo>{{"MatOfElements", 1, 1}}), host.variables());
  EXPECT_EQ(0, api().get_num_of_time_steps(1));
  EXPECT_EQ(0, api().get_num_of_time_steps(2));
  EXPECT_EQ(1, api().get_changing_geometry_status());
  EXPECT_EQ("error : not found geometry data in current time.\n", select(1, 0));
}

TEST_F(Teardown, FilesAreNotKeptOpen) {
  go_through_a_dataset();
  std::filesystem::remove(in("case_1.fld"));
  std::filesystem::remove(in("case_2.fld"));
  // A file that is still open is listed as deleted.
  for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    const auto target = std::filesystem::read_symlink(descriptor.path(), gone).string();
    EXPECT_FALSE(target.ends_with(".fld (deleted)")) << target;
  }
}

// Without the exit routine; the library itself releases everything.
TEST_F(Teardown, LibraryMayBeUnloadedWithADatasetOpen) {
  std::optional<host::Library> library(FLD_PLUGIN_FILE);
  const auto path = write(testkit::file_of(testkit::one_of_each()));
  const HostCalls calls(library->entry_points());
  stderr_of([&] { EXPECT_EQ(1, calls.open(path)); });
  EXPECT_EQ(5, calls.part_count());
  EXPECT_EQ("", stderr_of([&] { library.reset(); }));
}

}  // namespace
}  // namespace reader_test
