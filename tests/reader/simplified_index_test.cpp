// The option "Simplify reading sequential FLD files": the index of the first file serves the whole series.
#include <array>
#include <filesystem>
#include <string>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class SimplifiedIndex : public LoadedReader {
 protected:
  std::filesystem::path path(int cycle) const { return in("case_" + std::to_string(cycle) + ".fld"); }
  void set_option(int on) {
    std::array<int, 2> toggles = {on, 0};
    api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  }
  // A file with these scalars of four values each.
  static testkit::File with_scalars(int cycle, const std::vector<std::string>& names) {
    testkit::File file = file_at(cycle, {numbered_mesh(4)});
    for (const auto& name : names) file.region_sets[0].add(numbered_scalar(name, 4, 100.0 * cycle));
    return file;
  }
  void write_step(int cycle, const testkit::File& file) { testkit::write_file(file, path(cycle)); }
  void write_three_alike() {
    for (const int cycle : {1, 2, 3}) write_step(cycle, with_scalars(cycle, {"P", "T"}));
  }
  // The messages of opening the series.
  std::string opening() {
    return stderr_of([&] { EXPECT_EQ(1, host.open(path(1))); });
  }
  std::string traces(const std::vector<int>& cycles) const {
    std::string text;
    for (const int cycle : cycles) text += trace(path(cycle));
    return text;
  }
};
using SimplifiedIndexDeathTest = SimplifiedIndex;

TEST_F(SimplifiedIndex, OnlyTheFirstFileIsIndexed) {
  write_three_alike();
  set_option(1);
  EXPECT_EQ(traces({1, 1}) + "read done\n", opening()) << "one line for the index, one for the geometry";
}

TEST_F(SimplifiedIndex, WithoutTheOptionEveryFileIs) {
  write_three_alike();
  set_option(0);
  EXPECT_EQ(traces({1, 2, 3, 1}) + "read done\n", opening());
}

TEST_F(SimplifiedIndex, OtherFilesTakeTheOffsetsOfTheFirst) {
  write_three_alike();
  set_option(1);
  opening();
  EXPECT_EQ(3, api().get_number_of_variables());
  for (const int step : {0, 1, 2}) {
    select(2, step);
    const auto start = static_cast<float>(100 * (step + 1));
    for (const int variable : {1, 2}) {
      EXPECT_EQ((Floats{start, start + 1, start + 2, start + 3}), host.scalar(variable, 1));
    }
  }
}

TEST_F(SimplifiedIndex, QuantitiesOfLaterFilesAloneAreNotKnown) {
  write_step(1, with_scalars(1, {"P"}));
  write_step(2, with_scalars(2, {"P", "T"}));
  set_option(1);
  opening();
  EXPECT_EQ(2, api().get_number_of_variables());
  set_option(0);
  opening();
  EXPECT_EQ(3, api().get_number_of_variables());
}

TEST_F(SimplifiedIndex, QuantityThatIsElsewhereIsNotFound) {
  write_step(1, with_scalars(1, {"P", "T"}));
  write_step(2, with_scalars(2, {"T", "P"}));
  set_option(1);
  opening();
  select(2, 1);
  EXPECT_EQ("error : failed to seek fld file.\n", stderr_of([&] {
              EXPECT_EQ((Answer{-1, {kUntouchedFloat}}), host.ask({.variable = 1, .part = 1}, 1));
            }));
}

TEST_F(SimplifiedIndex, QuantityBehindTheEndOfAShorterFileIsNotFound) {
  write_step(1, with_scalars(1, {"P", "T", "X", "Y"}));
  write_step(2, with_scalars(2, {"P"}));
  set_option(1);
  opening();
  select(2, 1);
  EXPECT_EQ((Floats{200, 201, 202, 203}), host.scalar(1, 1));
  for (const int variable : {2, 3, 4}) {
    EXPECT_EQ("error : failed to seek fld file.\n", stderr_of([&] {
                EXPECT_EQ((Answer{-1, {kUntouchedFloat}}), host.ask({.variable = variable, .part = 1}, 1));
              }));
  }
  EXPECT_EQ((Floats{200, 201, 202, 203}), host.scalar(1, 1));
}

// The title must begin with the expected name; it may be longer.
TEST_F(SimplifiedIndex, QuantityWhoseNameIsLongerIsTakenForTheExpectedOne) {
  write_step(1, with_scalars(1, {"P"}));
  write_step(2, with_scalars(2, {"P_total"}));
  set_option(1);
  opening();
  select(2, 1);
  EXPECT_EQ((Floats{200, 201, 202, 203}), host.scalar(1, 1));
}

TEST_F(SimplifiedIndex, GeometryOfEveryStepIsReadAllTheSame) {
  for (const int cycle : {1, 2}) {
    testkit::File file = with_scalars(cycle, {"P"});
    file.region_sets[0].section("LS_Nodes").blocks[1] = testkit::Block::reals({10.0 * cycle, 1.0, 2.0, 3.0});
    write_step(cycle, file);
  }
  set_option(1);
  opening();
  EXPECT_EQ(traces({2}), select(1, 1));
  EXPECT_EQ(20.0F, host.coordinates(1)[0][0]);
}

TEST_F(SimplifiedIndex, MotionInAnyFileIndexesEveryFileAndSwitchesTheOptionOff) {
  write_step(1, with_scalars(1, {"P"}));
  write_step(2, with_scalars(2, {"P"}));
  testkit::File moved = with_scalars(3, {"P"});
  moved.region_sets[0].add(motion_of(1, {}));
  write_step(3, moved);
  set_option(1);
  EXPECT_EQ(traces({1, 2, 3, 1}) + "read done\n", opening());

  write_step(3, with_scalars(3, {"P"}));
  EXPECT_EQ(traces({1, 2, 3, 1}) + "read done\n", opening()) << "the option is off for the next dataset too";
  set_option(1);
  EXPECT_EQ(traces({1, 1}) + "read done\n", opening()) << "until the host sets it again";
}

TEST_F(SimplifiedIndex, FailingOpeningWithAMotionSwitchesTheOptionOffToo) {
  write_three_alike();
  testkit::File broken = testkit::file_of(numbered_nodes(4));
  broken.region_sets[0].add(motion_of(0, {}));
  set_option(1);
  stderr_of([&] { EXPECT_EQ(-1, host.open(write(broken, "broken.fld"))); });
  EXPECT_EQ(traces({1, 2, 3, 1}) + "read done\n", opening());
}

TEST_F(SimplifiedIndex, OptionOutlivesTheExit) {
  write_three_alike();
  set_option(1);
  opening();
  stderr_of([&] { api().exit_routine(); });
  EXPECT_EQ(traces({1, 1}) + "read done\n", opening());
}

TEST_F(SimplifiedIndex, LaterFilesAreStillValidated) {
  write_three_alike();
  testkit::File file = with_scalars(2, {"P", "T"});
  file.version = 3;
  write_step(2, file);
  set_option(1);
  EXPECT_EQ("FLD FILE VERSION HAS TO BE 4.\n", stderr_of([&] { EXPECT_EQ(-1, host.open(path(1))); }));
}

TEST_F(SimplifiedIndexDeathTest, FilesThatDifferInTheNumberOfRegionSetsEndTheProcess) {
  write_step(1, file_at(1, {numbered_mesh(4), numbered_mesh(4)}));
  write_step(2, file_at(2, {numbered_mesh(4)}));
  set_option(1);
  EXPECT_DEATH(host.open(path(1)),
               "fld:[0-9]+: int FLD::seekFLD\\(bool\\): Assertion `it_s->m_overlap.size\\(\\) == "
               "it_d->m_overlap.size\\(\\)' failed");
}

}  // namespace
}  // namespace reader_test
