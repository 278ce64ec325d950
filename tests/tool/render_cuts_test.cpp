// fldtool render inside of volumes: cuts, streamlines, arrows; and what the picture has room for.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "testkit/box_dataset.h"
#include "testkit/description.h"
#include "testkit/file_writer.h"
#include "tests/tool/pictures.h"
#include "tests/tool/render_fixture.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::expect_near;
using tool_test::kWhite;
using tool_test::OneFile;
using tool_test::Picture;
using tool_test::Pixel;
using Words = std::vector<std::string>;

constexpr Pixel kMiddleGrey = {0x88, 0x88, 0x88};  // of the map "grey"

// A box from 0 to 1 along each axis; scalar_1 is 1 + x + 10 y + 100 z + x y z.
class RenderCuts : public tool_test::RenderTest {
 protected:
  RenderCuts() : box(testkit::box_file({.nx = 6, .ny = 6, .nz = 6, .volumes = 2})) {}

  Picture draw_box(Words options) const {
    options.insert(options.end(), {"--colours", "grey"});
    return draw_file(box.path(), options);
  }
  void expect_box_error(const Words& options, int status, const std::string& line) const {
    expect_error_of_file(box.path(), options, status, line);
  }

  OneFile box;
};

int differing_pixels(Picture& a, Picture& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y);
  }
  return count;
}

TEST_F(RenderCuts, SliceShowsTheValuesInside) {
  // In the middle of the box 56.625, and 106.75 on the face in front of it.
  const Words inside = {"--variable", "scalar_1", "--range", "0,113.25", "--parts", "volumes"};
  Words sliced = inside;
  sliced.insert(sliced.end(), {"--slice", "0,0,0.5:0,0,1"});
  expect_near(draw_box(sliced).at(0.52, tool_test::kMiddle), kMiddleGrey);
  expect_near(draw_box(inside).at(0.52, tool_test::kMiddle), {0xe4, 0xe4, 0xe4});
}

TEST_F(RenderCuts, IsosurfaceHasItsValue) {
  Picture picture =
      draw_box({"--iso", "scalar_1=51", "--variable", "scalar_1", "--range", "0,102", "--parts", "volumes"});
  for (const double x : {0.4, 0.52, 0.6}) expect_near(picture.at(x, tool_test::kMiddle), kMiddleGrey);
}

TEST_F(RenderCuts, SurfacesAreFaintBesideCutsUnlessTheyAreChosen) {
  const Words slice = {"--slice", "0.5,0,0:1,0,0", "--variable", "none", "--view", "+x"};
  Picture faint = draw_box(slice);
  Words chosen = slice;
  chosen.insert(chosen.end(), {"--parts", "x_high"});
  Picture covered = draw_box(chosen);
  EXPECT_NE(faint.at(0.5, tool_test::kMiddle), covered.at(0.5, tool_test::kMiddle));
  Words bare = slice;
  bare.insert(bare.end(), {"--parts", "volumes"});
  EXPECT_NE(faint.at(0.5, tool_test::kMiddle), draw_box(bare).at(0.5, tool_test::kMiddle));
}

TEST_F(RenderCuts, StreamlinesAndArrowsAreDrawn) {
  const Words parts = {"--parts", "volumes", "--slice", "0,0,0.5:0,0,1"};
  Picture plain = draw_box(parts);
  for (const Words& added : {Words{"--streamlines", "0.1,0.5,0.5:0.9,0.5,0.5"},
                             Words{"--streamlines", "0.5,0.5,0.7:0.2", "--seeds", "40", "--flow", "vector_1"},
                             Words{"--arrows", "vector_1"}}) {
    Words options = parts;
    options.insert(options.end(), added.begin(), added.end());
    Picture picture = draw_box(options);
    EXPECT_GT(differing_pixels(picture, plain), 300) << added.front();
  }
}

TEST_F(RenderCuts, ArrowsHaveTheSizeOfWhatIsShown) {
  for (const double length : {0.01, 1.0, 100.0}) {
    const OneFile scaled(
        testkit::box_file({.nx = 6, .ny = 6, .nz = 6, .lengths = {length, length, length}, .volumes = 2}));
    const Words parts = {"--parts", "z_high", "--variable", "none"};
    Words arrows = parts;
    arrows.insert(arrows.end(), {"--arrows", "vector_1"});
    Picture plain = draw_file(scaled.path(), parts);
    Picture picture = draw_file(scaled.path(), arrows);
    const int count = differing_pixels(picture, plain);
    EXPECT_GT(count, 5000) << length;
    EXPECT_LT(count, 20000) << length;
  }
}

TEST_F(RenderCuts, ArrowsAreDrawnOnParts) {
  Picture plain = draw_box({"--parts", "z_high"});
  Picture picture = draw_box({"--parts", "z_high", "--arrows", "vector_1"});
  EXPECT_GT(differing_pixels(picture, plain), 300);
}

TEST_F(RenderCuts, SeveralCutsAreDrawnInEveryStep) {
  for (int step = 0; step < 3; ++step) {
    testkit::write_file(testkit::box_file({.nx = 4, .ny = 4, .nz = 4, .cycle = step, .time = 0.5 * step}),
                        dataset.directory() / ("s_" + std::to_string(step) + ".fld"));
  }
  const std::string file = (dataset.directory() / "s_0.fld").string();
  const auto result = tool_test::run_fldtool(
      {"render", file, "-o", output().string(), "--steps", "all", "--size", "300x200", "--slice",
       "0.5,0.5,0.5:1,1,0", "--slice", "0.5,0.5,0.5:0,0,-3", "--iso", "scalar_2=60", "--arrows", "vector_1"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  Picture first(dataset.directory() / "picture_0.png");
  for (const char* name : {"picture_1.png", "picture_2.png"}) {
    Picture other(dataset.directory() / name);
    EXPECT_LT(differing_pixels(first, other), 2000) << name;  // the title
  }
}

// On the slice from 1.5 to 112, and in its middle 56.625.
TEST_F(RenderCuts, TheColoursOfAllStepsAreThoseOfTheirCuts) {
  for (int step = 0; step < 2; ++step) {
    testkit::write_file(testkit::box_file({.nx = 2, .ny = 2, .nz = 2, .cycle = step, .time = 0.5 * step}),
                        dataset.directory() / ("s_" + std::to_string(step) + ".fld"));
  }
  const auto result =
      tool_test::run_fldtool({"render", (dataset.directory() / "s_0.fld").string(), "-o", output().string(),
                              "--steps", "all", "--size", "600x400", "--view", "+x", "--parts", "volumes",
                              "--slice", "0.5,0,0:1,0,0", "--variable", "scalar_1", "--colours", "grey"});
  ASSERT_EQ(result.status, 0) << result.errors;
  for (const char* name : {"picture_0.png", "picture_1.png"})
    expect_near(Picture(dataset.directory() / name).at(0.52, tool_test::kMiddle), kMiddleGrey);
}

TEST_F(RenderCuts, SaysWhatMeetsNothing) {
  const std::string where = box.path() + ": ";
  expect_box_error({"--slice", "0,0,2:0,0,1"}, 2,
                   where + "--slice 0,0,2:0,0,1 meets nothing in the volumes at step 0");
  expect_box_error({"--iso", "scalar_1=-5"}, 2,
                   where + "--iso scalar_1=-5 meets nothing in the volumes at step 0");
  expect_box_error({"--streamlines", "5,5,5:6,6,6"}, 2,
                   where + "--streamlines 5,5,5:6,6,6 meets nothing in the volumes at step 0");
}

TEST_F(RenderCuts, RejectsWrongOptions) {
  const std::string help = " (see fldtool render --help)";
  for (const std::string slice : {"z=1", "0,0,0", "0,0,0:0,0,0", "0,0:0,0,1", "0,0,0:0,0,1,2", "a,0,0:0,0,1",
                                  "0,0,nan:0,0,1", "0,0,0:inf,0,1", ""}) {
    expect_box_error({"--slice", slice}, 2,
                     "--slice: '" + slice + "' is not X,Y,Z:NX,NY,NZ, a point and a direction" + help);
  }
  for (const std::string iso : {"scalar_1", "=5", "scalar_1=", "scalar_1=x", "scalar_1=inf"})
    expect_box_error({"--iso", iso}, 2, "--iso: '" + iso + "' is not NAME=VALUE" + help);
  for (const std::string seeds : {"0,0,0", "0,0,0:0", "0,0,0:-1", "0,0:1", "0,0,0:1,2", "x:1"}) {
    expect_box_error(
        {"--streamlines", seeds}, 2,
        "--streamlines: '" + seeds + "' is not X,Y,Z:X,Y,Z, a line, or X,Y,Z:R, a sphere" + help);
  }
  expect_box_error({"--arrows", "scalar_1"}, 2, "--arrows: 'scalar_1' is not a vector per node");
  expect_box_error({"--arrows", "vector_1.x"}, 2, "--arrows: 'vector_1.x' is not a vector per node");
  expect_box_error({"--streamlines", "0,0,0:1,1,1", "--flow", "MatOfElements"}, 2,
                   "--flow: 'MatOfElements' is not a vector per node");
  expect_box_error({"--flow", "vector_1"}, 2, "--flow is what --streamlines follow, and there are none");
  expect_box_error({"--iso", "MatOfElements=1"}, 2, "--iso: 'MatOfElements' is not given per node");
  expect_box_error({"--seeds", "0"}, 2, "--seeds: '0' is not a number from 1 to 10000" + help);
  for (const std::string zoom : {"0", "-1", "x", "nan", "1001"})
    expect_box_error({"--zoom", zoom}, 2, "--zoom: '" + zoom + "' is not a number from 0.01 to 1000" + help);
  expect_box_error({"--focus", "none such"}, 2,
                   box.path() + ": there is no part 'none such': the parts are 1 to 9");
}

TEST_F(RenderCuts, ZoomEnlargesAndFocusMakesRoom) {
  Picture zoomed = draw({"--zoom", "2"});
  expect_near(zoomed.at(0.25, tool_test::kMiddle), tool_test::kHighest);
  expect_near(zoomed.at(0.5, tool_test::kMiddle), tool_test::kHighest);
  Picture small = draw({"--zoom", "0.5"});
  EXPECT_EQ(small.at(0.1, tool_test::kMiddle), kWhite);

  // Four volumes, one beyond the other along y.
  const OneFile column(testkit::box_file({.ny = 4, .lengths = {4, 4, 1}, .volumes = 4}));
  Picture part =
      draw_file(column.path(), {"--parts", "volumes", "--variable", "none", "--focus", "volume_2"});
  expect_near(part.at(0.5, tool_test::kMiddle), {217, 173, 128});  // its colour
  EXPECT_NE(part.at(0.5, 0.75), kWhite);                           // of another, which is cut off above
}

TEST_F(RenderCuts, AKeyNamesThePartsThatHaveColours) {
  Picture with_key = draw_box({"--variable", "none", "--parts", "x_low,z_high"});
  int coloured = 0;
  for (int x = 0; x < with_key.width(); ++x) {
    for (int y = 0; y < with_key.height() / 7; ++y) {
      const Pixel pixel = with_key.pixel(x, y);
      if (pixel[0] == 153 && std::abs(pixel[1] - 179) <= 1 && pixel[2] == 204) ++coloured;
    }
  }
  EXPECT_GT(coloured, 20);  // of the first part
}

}  // namespace
