// fldtool render --compare
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "testkit/box_dataset.h"
#include "tests/tool/pictures.h"
#include "tests/tool/render_fixture.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::expect_near;
using tool_test::kFirst;
using tool_test::kMiddle;
using tool_test::kSecond;
using tool_test::kThird;
using tool_test::OneFile;
using tool_test::Picture;

using RenderCompare = tool_test::RenderTest;

TEST_F(RenderCompare, DrawsTheDifference) {
  const OneFile other(tool_test::three_plates(4, 10));
  Picture picture = draw({"--compare", other.path(), "--colours", "grey"});
  expect_near(picture.at(kFirst, kMiddle), {0x20, 0x20, 0x20});   // 0 - 4 of -4 to 4
  expect_near(picture.at(kSecond, kMiddle), {0x88, 0x88, 0x88});  // 10 - 10
  expect_near(picture.at(kThird, kMiddle), tool_test::kUndefined);
  Picture scaled = draw({"--compare", other.path(), "--colours", "grey", "--range", "-8,8"});
  expect_near(scaled.at(kFirst, kMiddle), {0x54, 0x54, 0x54});
}

TEST_F(RenderCompare, SaysWhatIsNotThere) {
  expect_error({"--compare", "/nowhere.fld"}, 3, "/nowhere.fld: FILE NOT FOUND : /nowhere.fld");
  const OneFile box(testkit::box_file({}));
  expect_error({"--compare", box.path()}, 2, box.path() + ": there is no part 'plates' to compare");
  testkit::File file = tool_test::three_plates();
  file.region_sets.front().remove("LS_Scalar:p");
  const OneFile without(file);
  expect_error({"--compare", without.path()}, 2, without.path() + ": there is no variable 'p' to compare");
  expect_error({"--compare", box.path(), "--variable", "none"}, 2,
               "--compare draws the difference of a variable: --variable is none");
}

TEST_F(RenderCompare, SaysWhenTheMeshesDiffer) {
  const OneFile a(testkit::box_file({.nx = 2, .ny = 2, .nz = 2}));
  const OneFile finer(testkit::box_file({.nx = 2, .ny = 3, .nz = 2}));
  const OneFile longer(testkit::box_file({.nx = 2, .ny = 2, .nz = 2, .lengths = {1, 1, 1.1}}));
  for (const OneFile* other : {&finer, &longer}) {
    expect_error_of_file(a.path(), {"--compare", other->path(), "--parts", "x_low"}, 2,
                         other->path() +
                             ": the meshes differ at part 'x_low': --compare needs the same nodes at "
                             "the same places");
  }
}

}  // namespace
