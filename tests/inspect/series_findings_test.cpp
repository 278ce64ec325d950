// The findings about the files of a series: FLD-901 to FLD-904, and which files belong to it.
#include "gtest/gtest.h"
#include <cstdint>
#include <filesystem>
#include <vector>

#include "inspect/series.h"
#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "tests/inspect/series_files.h"

namespace {

using inspect_test::line;
using inspect_test::Lines;
using inspect_test::lines;
using inspect_test::SeriesFiles;
using inspect_test::small_file_at;
using inspect_test::Written;

TEST(Series, FilesOfTheSameBaseInTheOrderOfTheirCycles) {
  const testkit::TemporaryDirectory directory;
  for (const char* name : {"case_0200.fld", "CASE_30.FLD", "case_4.bak", "case2_5.fld", "case_.fld",
                           "case_6a.fld", "case_9999999999.fld", "case.fld"}) {
    testkit::write_bytes(directory / name, "");
  }
  std::vector<std::string> names;
  for (const inspect::SeriesFile& file : inspect::find_series((directory / "case_0200.fld").string())) {
    names.push_back(std::filesystem::path(file.path).filename().string() + " " + std::to_string(file.cycle));
  }
  // 9999999999 cut to 32 bits is 1410065407.
  EXPECT_EQ(names, (std::vector<std::string>{"case_4.bak 4", "CASE_30.FLD 30", "case_0200.fld 200",
                                             "case_9999999999.fld 1410065407"}));
  EXPECT_TRUE(inspect::find_series((directory / "case.fld").string()).empty());
  EXPECT_TRUE(inspect::find_series("/nowhere/case_1.fld").empty());
}

TEST(Series, NamesWithACycle) {
  EXPECT_TRUE(inspect::has_cycle("/data/case_100.fld"));
  EXPECT_TRUE(inspect::has_cycle("_12.fld"));
  EXPECT_FALSE(inspect::has_cycle("case100.fld"));
  EXPECT_FALSE(inspect::has_cycle("case_.fld"));
  EXPECT_FALSE(inspect::has_cycle("100.fld"));
  EXPECT_FALSE(inspect::has_cycle("folder_3/case.fld"));
}

TEST(Series, TheFirstBrokenFile) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 1.0));
  testkit::File without_mesh = small_file_at(20, 2.0);
  without_mesh.region_sets.front().remove("LS_Nodes");
  files.add("case_20.fld", without_mesh);
  const std::string given = files.path("case_20.fld");
  EXPECT_EQ(inspect::first_broken_file(given), "");

  const Written last = files.add("case_30.fld", small_file_at(30, 3.0));
  testkit::write_bytes(files.path("case_30.fld"), last.bytes.substr(0, 500));
  EXPECT_EQ(inspect::first_broken_file(given), files.path("case_30.fld"));

  // The first file of a dataset needs a mesh.
  std::filesystem::remove(files.path("case_10.fld"));
  EXPECT_EQ(inspect::first_broken_file(files.path("case_30.fld")), given);
  EXPECT_EQ(inspect::first_broken_file(files.path("none.fld")), files.path("none.fld"));
}

TEST(SeriesFindings, AllFilesAreCheckedOnce) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 1.0));
  files.add("case_20.fld", small_file_at(20, 2.0));
  std::vector<std::string> paths;
  inspect::check_files({files.path("case_20.fld"), files.path("case_10.fld"), files.path("case_20.fld")},
                       {.full = true}, [&](const inspect::FileReport& report) {
                         paths.push_back(report.path);
                         EXPECT_TRUE(report.findings.is_fine());
                       });
  EXPECT_EQ(paths, (std::vector<std::string>{files.path("case_10.fld"), files.path("case_20.fld")}));
}

TEST(SeriesFindings, OnlyTheGivenFileWithoutTheContent) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 1.0));
  files.add("case_20.fld", small_file_at(20, 2.0));
  int count = 0;
  inspect::check_files({files.path("case_20.fld")}, {}, [&](const inspect::FileReport&) { ++count; });
  EXPECT_EQ(count, 1);
}

// The number of walks during a check of these files of a series.
int walks(const SeriesFiles& files, bool full, const std::vector<std::string>& names = {"case_10.fld"}) {
  std::vector<std::string> paths;
  for (const std::string& name : names) paths.push_back(files.path(name));
  int count = 0;
  const auto progress = [&](std::uint64_t done, std::uint64_t) { count += done == 0 ? 1 : 0; };
  inspect::check_files(paths, {.full = full, .progress = progress}, [](const inspect::FileReport&) {});
  return count;
}

TEST(SeriesFindings, EveryWalkTellsItsProgress) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 1.0));
  files.add("case_20.fld", small_file_at(20, 2.0));
  EXPECT_EQ(walks(files, false), 1);
  // Both for what they say about each other, then each twice: its structure and its content.
  EXPECT_EQ(walks(files, true), 6);
  EXPECT_EQ(walks(files, true, {"case_20.fld", "case_10.fld", "case_20.fld"}), 6);
}

TEST(SeriesFindings, ALookIntoAnotherFileTellsThePlaceInThisOne) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 1.0));
  testkit::File moved = small_file_at(20, 2.0);
  moved.region_sets.front().remove("LS_Nodes");
  moved.region_sets.front().add(testkit::motion_section(
      {.base_cycle = 10,
       .regions = {{.names = {"fluid"}, .actions = {testkit::Action::translate({1, 2, 3})}}}}));
  const Written second = files.add("case_20.fld", moved);
  std::vector<std::uint64_t> places;
  std::vector<std::uint64_t> sizes;
  const auto progress = [&](std::uint64_t done, std::uint64_t total) {
    places.push_back(done);
    sizes.push_back(total);
  };
  inspect::check_files({files.path("case_20.fld")}, {.full = true, .progress = progress},
                       [&](const inspect::FileReport& report) {
                         if (report.path == files.path("case_20.fld")) return;
                         places.clear();
                         sizes.clear();
                       });
  // Of the second file: its structure, its content, and the look into the first one at that place. Each walk
  // through so small a file fills its buffer once.
  EXPECT_EQ(places, (std::vector<std::uint64_t>{0, 0, 0}));
  EXPECT_EQ(sizes, std::vector<std::uint64_t>(3, second.bytes.size()));
}

TEST(SeriesFindings, AnotherCycleThanInTheName) {
  const SeriesFiles files;
  const Written file = files.add("case_10.fld", small_file_at(11, 1.0));
  EXPECT_EQ(lines(files.check("case_10.fld").at(0)), Lines{line(901, file.value("Cycle", 0), "10", "11")});
}

TEST(SeriesFindings, AnotherNumberOfRegionSets) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 1.0));
  testkit::File second = small_file_at(20, 2.0);
  second.add_region_set().sections = second.region_sets.front().sections;
  files.add("case_20.fld", second);
  EXPECT_EQ(lines(files.check("case_10.fld").at(1)), Lines{line(902, 0, "1", "2")});
}

TEST(SeriesFindings, ATimeThatDoesNotGrow) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 1.5));
  const Written second = files.add("case_20.fld", small_file_at(20, 1.5));
  EXPECT_EQ(lines(files.check("case_10.fld").at(1)),
            Lines{line(903, second.value("Cycle", 1), "more than 1.5", "1.5")});
}

TEST(SeriesFindings, TimesOfASteadySeriesStayZero) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 0.0));
  files.add("case_20.fld", small_file_at(20, 0.0));
  EXPECT_EQ(lines(files.check("case_10.fld").at(1)), Lines{});
}

TEST(SeriesFindings, ACycleTwice) {
  const SeriesFiles files;
  files.add("case_010.fld", small_file_at(10, 1.0));
  const Written second = files.add("case_10.fld", small_file_at(10, 2.0));
  EXPECT_EQ(
      lines(files.check("case_10.fld").at(1)),
      Lines{line(904, second.value("Cycle", 0), "another cycle", "10 as in " + files.path("case_010.fld"))});
}

TEST(SeriesFindings, TheFirstFileNeedsNodesAndTheOthersDoNot) {
  const SeriesFiles files;
  testkit::File file = small_file_at(10, 1.0);
  files.add("case_10.fld", file);
  testkit::File later = small_file_at(20, 2.0);
  later.region_sets.front().remove("LS_Nodes");
  const Written second = files.add("case_20.fld", later);
  EXPECT_EQ(lines(files.check("case_20.fld").at(1)), Lines{});
  std::filesystem::remove(files.path("case_10.fld"));
  EXPECT_EQ(lines(files.check("case_20.fld").at(0)),
            Lines{line(212, second.title("OverlapStart_1"), "LS_Nodes", "none")});
}

TEST(SeriesFindings, QuantitiesGoWithTheNodesOfAnEarlierFile) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 1.0));
  testkit::File later = small_file_at(20, 2.0);
  later.region_sets.front().sections = {testkit::scalar_section({.name = "p", .values = {1, 2, 3}})};
  const Written second = files.add("case_20.fld", later);
  EXPECT_EQ(lines(files.check("case_20.fld").at(1)),
            Lines{line(701, second.value("LS_Scalar:p", 1), "4", "3")});
}

// Of each file 64 region sets are kept for the others.
TEST(SeriesFindings, TheNodesOfAnEarlierFileAreKnownOfTheFirst64RegionSets) {
  const SeriesFiles files;
  testkit::File first = small_file_at(10, 1.0);
  testkit::File later = small_file_at(20, 2.0);
  later.region_sets.front().sections = {testkit::coordinate_system_section(0)};
  for (int i = 1; i < 66; ++i) {
    first.add_region_set().sections = first.region_sets.front().sections;
    later.add_region_set().sections = later.region_sets.front().sections;
  }
  for (std::size_t i : {62U, 63U, 64U, 65U})
    later.region_sets[i].add(testkit::scalar_section({.name = "p", .values = {1, 2, 3}}));
  files.add("case_10.fld", first);
  const Written second = files.add("case_20.fld", later);
  const auto count_of = [&](int occurrence) {
    return second.places.of("LS_Scalar:p", occurrence).blocks[1] + 24;
  };
  EXPECT_EQ(lines(files.check("case_10.fld").at(1)),
            (Lines{line(701, count_of(0), "4", "3"), line(701, count_of(1), "4", "3")}));
}

TEST(SeriesFindings, AFileThatCannotBeReadHasItsOwnReport) {
  const SeriesFiles files;
  files.add("case_10.fld", small_file_at(10, 1.0));
  testkit::write_bytes(files.path("case_20.fld"), "something else");
  std::filesystem::create_directory(files.path("case_30.fld"));
  const auto reports = files.check("case_10.fld");
  ASSERT_EQ(reports.size(), 3U);
  EXPECT_TRUE(reports[0].is_readable());
  EXPECT_FALSE(reports[1].is_readable());
  EXPECT_EQ(lines(reports[1]), Lines{line(101, 0, "VTRL-FLD", "\"thing el\"")});
  EXPECT_EQ(reports[2].reason, "is a directory");
}

}  // namespace
