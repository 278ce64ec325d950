// The findings about names and texts: FLD-601 to FLD-605.
#include "gtest/gtest.h"
#include <algorithm>

#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/inspect/checked.h"

namespace {

using inspect_test::line;
using inspect_test::Lines;
using inspect_test::told;
using inspect_test::Written;
using testkit::RegionForm;

constexpr char kOutside[] = "\x8a\x4f\x93\x9b";  // two characters of Shift_JIS

// Two surfaces and one volume region of these names, 8 characters each.
Written named(const char* first, const char* second, const char* volume,
              RegionForm form = RegionForm::kPerRegion) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.push_back(mesh.surfaces.front());
  mesh.surfaces[0].name = first;
  mesh.surfaces[1].name = second;
  mesh.volumes[0].name = volume;
  return Written(testkit::file_of(mesh, {.surface_form = form, .volume_form = form, .name_length = 8}));
}

TEST(NameFindings, GoodNames) {
  EXPECT_EQ(told(named("wall", kOutside, "wall").bytes), Lines{});
  EXPECT_EQ(told(named("wall", kOutside, "\xc3\xa4", RegionForm::kArray).bytes), Lines{});
}

TEST(NameFindings, AnEmptyName) {
  const Written file = named("wall", "", "fluid");
  EXPECT_EQ(told(file.bytes), Lines{line(601, file.value("LS_SurfaceGeometry", 8), "a name", "blanks")});
  const Written gathered = named("wall", "", "fluid", RegionForm::kArray);
  EXPECT_EQ(told(gathered.bytes),
            Lines{line(601, gathered.value("LS_SurfaceGeometryArray", 2) + 8, "a name", "blanks")});
}

TEST(NameFindings, AQuantityWithoutAName) {
  testkit::File file = inspect_test::small_file();
  file.region_sets.front().section("LS_Scalar:p").title = "LS_Scalar:";
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(601, written.title("LS_Scalar:") + 14, "a name", "blanks")});
}

TEST(NameFindings, ANameTwice) {
  const Written file = named("wall", "wall", "fluid");
  EXPECT_EQ(told(file.bytes),
            Lines{line(602, file.value("LS_SurfaceGeometry", 8), "another name", "\"wall\"")});
}

TEST(NameFindings, ANameThatIsNotText) {
  const Written file = named("wa\x07ll", "good", "fl\xff", RegionForm::kArray);
  EXPECT_EQ(told(file.bytes),
            (Lines{line(603, file.value("LS_SurfaceGeometryArray", 2), "text", "\"wa\\x07ll\""),
                   line(603, file.value("LS_VolumeGeometryArray", 2), "text", "\"fl\\xff\"")}));
}

TEST(NameFindings, AQuantitysNameThatIsNotText) {
  testkit::File file = inspect_test::small_file();
  file.region_sets.front().section("LS_Scalar:p").title = "LS_Scalar:\x02";
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(603, written.title("LS_Scalar:\x02") + 14, "text", "\"\\x02\"")});
}

TEST(NameFindings, ALabelThatIsNotText) {
  testkit::File file = inspect_test::small_file();
  file.region_sets.front().section("LS_Scalar:p").blocks[0] = testkit::Block::characters("Pa\n", 32);
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(604, written.value("LS_Scalar:p", 0), "text", "\"Pa\\x0a\"")});
}

TEST(NameFindings, TooManyNamesToCompare) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.clear();
  // 64 bytes are counted for each beside its own 936: the 8389th is the first beyond 8 MiB.
  for (int i = 0; i < 8390; ++i) {
    mesh.surfaces.push_back({.name = std::to_string(i) + std::string(936 - std::to_string(i).size(), 'x')});
  }
  const Written file(testkit::file_of(mesh, {.surface_form = RegionForm::kArray}));
  EXPECT_EQ(told(file.bytes),
            Lines{line(605, file.value("LS_SurfaceGeometryArray", 2) + 936 * 8388, "fewer names", "more")});
}

}  // namespace
