// The findings about titles and their order: FLD-201 to FLD-217.
#include "gtest/gtest.h"
#include <algorithm>

#include "inspect/byte_source.h"
#include "testkit/small_meshes.h"
#include "tests/inspect/checked.h"

namespace {

using inspect_test::line;
using inspect_test::Lines;
using inspect_test::small_file;
using inspect_test::told;
using inspect_test::Written;
using testkit::Block;
using testkit::File;
using testkit::Section;

// The small file with one more section.
File with(Section section) {
  File file = small_file();
  file.region_sets.front().add(std::move(section));
  return file;
}

TEST(TitleFindings, BytesThatAreNotText) {
  const Written file(with({.title = "Half\x01"
                                    "way"}));
  EXPECT_EQ(told(file.bytes), Lines{line(201,
                                         file.title("Half\x01"
                                                    "way") +
                                             4,
                                         "a known title", "\"Half\\x01way\"")});
}

TEST(TitleFindings, ASimilarTitleIsAWarning) {
  for (const std::string title : {"LS_MatOfElement", "LS_matofelements", "LS_MatOfElemints"}) {
    File file = small_file();
    file.region_sets.front().section("LS_MatOfElements").title = title;
    const Written written(file);
    EXPECT_EQ(told(written.bytes),
              (Lines{line(214, written.title("OverlapStart_1"), "LS_MatOfElements", "none"),
                     line(202, written.title(title.c_str()) + 4, "LS_MatOfElements", '"' + title + '"')}));
  }
  EXPECT_EQ(inspect::info(inspect::Kind::title_misspelt).severity, inspect::Severity::warning);
}

// A letter in eight may differ, but no more than two.
TEST(TitleFindings, HowManyLettersOfASimilarTitleMayDiffer) {
  const auto number_of = [](const std::string& title) {
    const Written file(with({.title = title}));
    const Lines found = told(file.bytes);
    EXPECT_EQ(found.size(), 1U) << title;
    return found.at(0).substr(0, 7);
  };
  EXPECT_EQ(number_of("LS_Nxdes"), "FLD-202");
  EXPECT_EQ(number_of("LS_Nxdxs"), "FLD-203");
  EXPECT_EQ(number_of("LS_MxtOfElxments"), "FLD-202");
  EXPECT_EQ(number_of("LS_MxtOxElxments"), "FLD-203");
  EXPECT_EQ(number_of("LS_SxrfaceGexmetryArray"), "FLD-202");
  EXPECT_EQ(number_of("LS_SxrfaceGexmetryArrxy"), "FLD-203");
  EXPECT_EQ(number_of("LS_SxrfxceGexmetryxrrxy"), "FLD-203");
}

TEST(TitleFindings, AShortTitleIsSimilarToNothing) {
  for (const char* title : {"Case", "Name", "Data", "Cycles", "Base"}) {
    File file = small_file();
    file.header.items.push_back(testkit::header_item(title, {Block::integer(1)}));
    const Written written(file);
    EXPECT_EQ(told(written.bytes),
              Lines{line(203, written.title(title) + 4, "a known title", '"' + std::string(title) + '"')});
  }
}

// Its blocks are not decoded as those of the known section.
TEST(TitleFindings, ASectionOfASimilarTitleIsSteppedOver) {
  const Written file(with({.title = "LS_Modes", .blocks = {Block::characters("any"), Block::real(1.0)}}));
  EXPECT_EQ(told(file.bytes), Lines{line(202, file.title("LS_Modes") + 4, "LS_Nodes", "\"LS_Modes\"")});
}

// Readers compare a title only up to the first blank after the known text.
TEST(TitleFindings, AKnownTitleMayBeFollowedByMore) {
  File file = small_file();
  file.region_sets.front().section("LS_MatOfElements").title = "LS_MatOfElements  !";
  EXPECT_EQ(told(file), Lines{});
}

TEST(TitleFindings, UnknownIsANote) {
  const Written file(with({.title = "LS_Whatever", .blocks = {Block::integer(1)}}));
  EXPECT_EQ(told(file.bytes),
            Lines{line(203, file.title("LS_Whatever") + 4, "a known title", "\"LS_Whatever\"")});
  EXPECT_FALSE(inspect_test::finds(file.bytes, true));
}

TEST(TitleFindings, AHeaderItemAmongTheSections) {
  File file = with(testkit::header_item("ReleaseDate", {Block::integer(1)}));
  file.header.remove("ReleaseDate");
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(204, written.title("ReleaseDate"), "a section", "ReleaseDate")});
}

TEST(TitleFindings, TheHeaderIsClosedAgainAmongTheSections) {
  File file = small_file();
  file.region_sets.push_front({.opener = "HeaderDataEnd", .sections = {}});
  const Written written(file);
  const std::uint64_t place = written.places.of("HeaderDataEnd", 1).offset;
  EXPECT_EQ(told(written.bytes),
            (Lines{line(204, place, "a section", "HeaderDataEnd"), line(208, place, "once", "again")}));
}

TEST(TitleFindings, TheHeaderIsNotClosed) {
  File file = small_file();
  file.header_end.reset();
  const Written written(file);
  EXPECT_EQ(told(written.bytes),
            Lines{line(205, written.title("OverlapStart_1"), "HeaderDataEnd", "OverlapStart_1")});
}

TEST(TitleFindings, TheFileEndsInTheHeader) {
  const Written written(small_file());
  const std::uint64_t place = written.title("HeaderDataEnd");
  EXPECT_EQ(told(written.bytes.substr(0, place)),
            (Lines{line(207, 0, "OverlapStart_", "none"),
                   line(205, place, "HeaderDataEnd", "the end of the file")}));
}

TEST(TitleFindings, ASectionOutsideTheRegionSets) {
  File file = small_file();
  testkit::RegionSet before{.opener = std::nullopt, .sections = {testkit::coordinate_system_section(0)}};
  file.region_sets.push_front(before);
  const Written written(file);
  EXPECT_EQ(told(written.bytes),
            Lines{line(206, written.title("LS_CoordinateSystem"), "OverlapStart_", "LS_CoordinateSystem")});
}

TEST(TitleFindings, NoRegionSet) {
  EXPECT_EQ(told(File{}), Lines{line(207, 0, "OverlapStart_", "none")});
}

TEST(TitleFindings, ASectionTwice) {
  const Written file(with(testkit::materials_section({1})));
  EXPECT_EQ(told(file.bytes),
            Lines{line(208, file.places.of("LS_MatOfElements", 1).offset, "once", "again")});
}

TEST(TitleFindings, AQuantityTwice) {
  File file = small_file();
  testkit::RegionSet& set = file.region_sets.front();
  set.add(Section(set.section("LS_Scalar:p")));
  const Written written(file);
  EXPECT_EQ(told(written.bytes),
            Lines{line(208, written.places.of("LS_Scalar:p", 1).offset, "once", "again")});
}

TEST(TitleFindings, AHeaderItemTwice) {
  File file = small_file();
  file.header.items.push_back(file.header.item("Bias"));
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(209, written.places.of("Bias", 1).offset, "once", "again")});
}

TEST(TitleFindings, TheFileIsNotClosed) {
  File file = small_file();
  file.closer.reset();
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(210, written.places.size, "OverlapEnd", "the end of the file")});
}

TEST(TitleFindings, AnEmptyRegionSetAndOneWithoutNodes) {
  File file = small_file();
  file.add_region_set();
  const Written written(file);
  const std::uint64_t place = written.title("OverlapStart_2");
  EXPECT_EQ(told(written.bytes),
            (Lines{line(211, place, "sections", "none"), line(212, place, "LS_Nodes", "none")}));
}

TEST(TitleFindings, NoNodes) {
  File file = small_file();
  file.region_sets.front().remove("LS_Nodes");
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(212, written.title("OverlapStart_1"), "LS_Nodes", "none")});
}

TEST(TitleFindings, NoElements) {
  File file = small_file();
  file.region_sets.front().remove("LS_Elements");
  const Written written(file);
  const std::uint64_t place = written.title("OverlapStart_1");
  EXPECT_EQ(told(written.bytes),
            (Lines{line(213, place, "LS_Elements", "none"), line(217, place, "elements", "none")}));
}

// Only the region set with the most nodes needs elements.
TEST(TitleFindings, NoElementsInASmallerMesh) {
  File file = small_file();
  testkit::RegionSet& second = file.add_region_set();
  testkit::Nodes nodes;
  nodes.add(0.0, 0.0, 0.0);
  second.add(testkit::nodes_section(nodes));
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(213, written.title("OverlapStart_2"), "LS_Elements", "none")});
}

// Of two meshes of one size it is the first.
TEST(TitleFindings, NoElementsInOneOfTwoMeshesOfOneSize) {
  for (const bool is_first : {true, false}) {
    File file = small_file();
    file.region_sets.push_back(file.region_sets.front());
    file.region_sets.back().opener = "OverlapStart_2";
    file.region_sets[is_first ? 0 : 1].remove("LS_Elements");
    const Written written(file);
    const std::uint64_t place = written.title(is_first ? "OverlapStart_1" : "OverlapStart_2");
    Lines expected{line(213, place, "LS_Elements", "none")};
    if (is_first) expected.push_back(line(217, place, "elements", "none"));
    EXPECT_EQ(told(written.bytes), expected);
  }
}

TEST(TitleFindings, NoElementsInAMeshOfOneNode) {
  File file = small_file();
  file.region_sets.front().sections.clear();
  testkit::Nodes nodes;
  nodes.add(0.0, 0.0, 0.0);
  file.add_region_set().add(testkit::nodes_section(nodes));
  const Written written(file);
  const std::uint64_t first = written.title("OverlapStart_1");
  const std::uint64_t second = written.title("OverlapStart_2");
  EXPECT_EQ(told(written.bytes),
            (Lines{line(211, first, "sections", "none"), line(212, first, "LS_Nodes", "none"),
                   line(213, second, "LS_Elements", "none"), line(217, second, "elements", "none")}));
}

TEST(TitleFindings, AnythingMayFollowTheTitleOfAMotion) {
  const Written written(with({.title = "LS_ALE2", .blocks = {Block::integer(-1)}}));
  EXPECT_EQ(told(written.bytes), Lines{line(308, written.value("LS_ALE2", 0), "0 or more", "-1")});
}

TEST(TitleFindings, NoMaterialsIsANote) {
  File file = small_file();
  file.region_sets.front().remove("LS_MatOfElements");
  const Written written(file);
  EXPECT_EQ(told(written.bytes),
            Lines{line(214, written.title("OverlapStart_1"), "LS_MatOfElements", "none")});
  EXPECT_FALSE(inspect_test::finds(written.bytes, true));
}

TEST(TitleFindings, AMissingHeaderItemIsANote) {
  File file = small_file();
  file.header.remove("Unused");
  EXPECT_EQ(told(file), Lines{line(215, 0, "Unused", "none")});
  EXPECT_FALSE(inspect_test::finds(testkit::to_bytes(file), true));
}

TEST(TitleFindings, TooManyRegionSets) {
  File file = small_file();
  for (int i = 0; i < 10000; ++i) file.add_region_set();
  // What is in the last one that is checked is told of, and what is behind it is not.
  for (std::size_t i : {9999U, 10000U}) file.region_sets[i].add(testkit::coordinate_system_section(2));
  const Written written(file);
  const Lines all = told(written.bytes);
  for (const std::string& wanted : {line(216, written.title("OverlapStart_10001"), "at most 10000", "more"),
                                    line(512, written.value("LS_CoordinateSystem", 0), "0 or 1", "2")}) {
    EXPECT_EQ(std::count(all.begin(), all.end(), wanted), 1) << wanted;
  }
  const std::string behind =
      line(512, written.places.of("LS_CoordinateSystem", 1).blocks[0] + 24, "0 or 1", "2");
  EXPECT_EQ(std::count(all.begin(), all.end(), behind), 0);
}

}  // namespace
