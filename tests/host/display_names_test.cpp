// Names of parts and variables as programs show them.
#include "host/display_names.h"

#include "gtest/gtest.h"
#include <string>
#include <vector>

#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/host/open_file.h"
#include "tests/testkit/emulator.h"

namespace {

using Names = std::vector<std::string>;

testkit::File with_surfaces(const Names& names) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  const testkit::Surface wall = mesh.surfaces.front();
  mesh.surfaces.clear();
  for (const std::string& name : names) {
    mesh.surfaces.push_back(wall);
    mesh.surfaces.back().name = name;
  }
  return testkit::file_of(mesh);
}

TEST(PartNames, AreUtf8) {
  if (kUnderEmulator) GTEST_SKIP() << kWithoutConverters;
  host_test::OpenFile file(with_surfaces({"\x8a\x4f"}));
  EXPECT_EQ(host::part_names(file.session()), (Names{"外", "fluid", "ALL_ELEMENTS"}));
}

TEST(PartNames, AreThereOnce) {
  host_test::OpenFile file(with_surfaces({"wall", "lid", "wall", "wall (1)"}));
  EXPECT_EQ(host::part_names(file.session()),
            (Names{"wall (1)'", "lid", "wall (3)", "wall (1)", "fluid", "ALL_ELEMENTS"}));
}

TEST(PartNames, OfWholeMeshesTellTheRegionSet) {
  testkit::File description = with_surfaces({"wall"});
  description.region_sets.push_back(description.region_sets.front());
  host_test::OpenFile file(description);
  EXPECT_EQ(host::part_names(file.session()),
            (Names{"wall (1)", "wall (2)", "fluid (3)", "fluid (4)", "ALL_ELEMENTS (region set 0)",
                   "ALL_ELEMENTS (region set 1)"}));
}

TEST(PartNames, AreNeverEmptyAndHaveNoControlCharacters) {
  host_test::OpenFile file(with_surfaces({"", "a\tb\x01"}));
  EXPECT_EQ(host::part_names(file.session()), (Names{"part 1", "a b ", "fluid", "ALL_ELEMENTS"}));
}

TEST(PartNames, HaveNoCodePointsThatAreNoCharacters) {
  host_test::OpenFile file(with_surfaces({"\xEF\xBF\xBE\xEF\xBF\xBE!", "\xEF\xBF\xBF"}));
  EXPECT_EQ(host::part_names(file.session())[0], "\uFFFD\uFFFD!");
  EXPECT_EQ(host::part_names(file.session())[1], "\uFFFD");
}

TEST(VariableNames, OfAScalarAndAVectorWithTheSameName) {
  testkit::File description = testkit::file_of(testkit::one_tetrahedron());
  testkit::RegionSet& set = description.region_sets.front();
  set.add(testkit::scalar_section({.name = "f", .label = "one", .values = {1, 2, 3, 4}}));
  set.add(testkit::vector_section(
      {.name = "f", .label = "three", .x = {1, 2, 3, 4}, .y = {1, 2, 3, 4}, .z = {1, 2, 3, 4}}));
  host_test::OpenFile file(description);
  EXPECT_EQ(host::variable_names(file.session()), (Names{"f (1)", "f (2)", "MatOfElements"}));
  EXPECT_EQ(host::labelled_names(file.session()), (Names{"f (1): one", "f (2): three"}));
}

TEST(UnitOfLabel, IsWhatTheLastBracketsHold) {
  EXPECT_EQ(host::unit_of_label("Static pressure [Pa]"), "Pa");
  EXPECT_EQ(host::unit_of_label("a [b] c [m/s]"), "m/s");
  EXPECT_EQ(host::unit_of_label("a [b] c"), "");
  EXPECT_EQ(host::unit_of_label("odd]"), "");
  EXPECT_EQ(host::unit_of_label(""), "");
}

}  // namespace
