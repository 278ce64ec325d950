// Where in a file findings are said to be.
#include "gtest/gtest.h"
#include <string>

#include "inspect/byte_source.h"
#include "inspect/check.h"
#include "tests/inspect/checked.h"

namespace {

using inspect::Kind;
using inspect_test::small_file;
using inspect_test::with_integer;
using inspect_test::Written;

// The place of the first finding of this kind.
std::string place_of(inspect::Kind kind, const std::string& bytes) {
  inspect::StringSource source(bytes);
  const inspect::FileReport report = inspect::check_bytes(source, {.full = true});
  for (const inspect::Finding& finding : report.findings.kept()) {
    if (finding.kind == kind) return finding.place;
  }
  ADD_FAILURE() << "no such finding";
  return "";
}

TEST(Places, OfTheFileAsAWhole) {
  EXPECT_EQ(place_of(Kind::not_fld, "This is some other file."), "");
  testkit::File file = small_file();
  file.version = 3;
  EXPECT_EQ(place_of(Kind::other_version, testkit::to_bytes(file)), "");
}

TEST(Places, InTheHeader) {
  const Written file(small_file());
  EXPECT_EQ(place_of(Kind::dimension_two, with_integer(file.bytes, file.value("Dimension", 0), 2)),
            "Dimension");
  EXPECT_EQ(place_of(Kind::trailing_marker, with_integer(file.bytes, file.rule("Dimension", 0) + 28, 5)),
            "Dimension, dimension");
}

TEST(Places, InARegionSet) {
  const Written file(small_file());
  EXPECT_EQ(place_of(Kind::element_node, with_integer(file.bytes, file.value("LS_Elements", 3), 99)),
            "region set 0, LS_Elements, connectivity");
  EXPECT_EQ(place_of(Kind::face_node, with_integer(file.bytes, file.value("LS_SurfaceGeometry", 7), 99)),
            "region set 0, LS_SurfaceGeometry, nodes of the faces of region 0");
}

TEST(Places, OfWhatHasNoNameItself) {
  testkit::File file = small_file();
  file.region_sets.front().add({.title = "LS_Unheard", .blocks = {testkit::Block::integers({1, 2, 3})}});
  const Written written(file);
  EXPECT_EQ(
      place_of(Kind::trailing_marker, with_integer(written.bytes, written.value("LS_Unheard", 0) + 12, 13)),
      "region set 0, LS_Unheard");
}

TEST(Places, BehindTheRegionSets) {
  testkit::File file = small_file();
  file.trailing_bytes = "xyz";
  EXPECT_EQ(place_of(Kind::bytes_after_end, testkit::to_bytes(file)), "OverlapEnd");
}

}  // namespace
