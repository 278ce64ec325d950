// Derived variables in fldtool render: as colours, on cuts, as isosurfaces, flow and arrows, in films.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "tests/tool/pictures.h"
#include "tests/tool/render_fixture.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::expect_near;
using tool_test::OneFile;
using tool_test::Picture;
using Words = std::vector<std::string>;

constexpr tool_test::Pixel kGreyOfTheMiddle = {0x88, 0x88, 0x88};  // of the map "grey"

// A box from 0 to 1 along each axis. scalar_1 is 1 + x + 10 y + 100 z + x y z, vector_1 is
// (y - z, z - x + 0.25, x - y + 0.5).
class RenderDerived : public tool_test::RenderTest {
 protected:
  RenderDerived() : box(testkit::box_file({.nx = 6, .ny = 6, .nz = 6, .volumes = 2})) {}

  // From +z, where the middle of the picture has this value.
  void expect_middle(double value, Words options) const {
    options.insert(options.end(), {"--colours", "grey", "--range",
                                   std::to_string(value - 1) + "," + std::to_string(value + 1)});
    Picture picture = draw_file(box.path(), options);
    expect_near(picture.at(0.52, tool_test::kMiddle), kGreyOfTheMiddle);
  }
  void expect_box_error(const Words& options, const std::string& line) const {
    expect_error_of_file(box.path(), options, 2, line);
  }
  Words written() const {
    Words names;
    for (const auto& entry : std::filesystem::directory_iterator(dataset.directory().path())) {
      if (entry.path().extension() == ".png") names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  OneFile box;
};

TEST_F(RenderDerived, ColoursParts) {
  expect_middle(-2, {"--parts", "z_high", "--variable", "vorticity(vector_1).x"});
  expect_middle(3.4641016, {"--parts", "z_high", "--variable", "vorticity(vector_1)"});
  expect_middle(3, {"--parts", "volumes", "--variable", "q(vector_1)"});
  expect_middle(1, {"--parts", "volumes", "--variable", "grad(vector_1.x).y"});
}

TEST_F(RenderDerived, ColoursCuts) {
  const Words slice = {"--parts", "volumes", "--slice", "0,0,0.5:0,0,1"};
  Words gradient = slice;
  gradient.insert(gradient.end(), {"--variable", "grad(scalar_1).z"});
  // 100 + x y: in the middle 100.25, at the place that is looked at 100.26.
  expect_middle(100.26, gradient);
  Words length = slice;
  length.insert(length.end(), {"--variable", "mag(vector_1)"});
  // Of (0, 0.25, 0.5); interpolated between nodes at a sixth of the box.
  expect_middle(0.5590170, length);
}

// d scalar_1 / d x is 1 + y z. From above, the surface where it is 1.25 is where y z is a quarter.
TEST_F(RenderDerived, IsASurfaceOfAValue) {
  const Words parts = {"--parts", "volumes", "--iso", "grad(scalar_1).x=1.25"};
  Words same = parts;
  same.insert(same.end(), {"--variable", "grad(scalar_1).x"});
  expect_middle(1.25, same);
  expect_box_error({"--iso", "grad(scalar_1).x=2.5"},
                   box.path() + ": --iso grad(scalar_1).x=2.5 meets nothing in the volumes at step 0");
}

TEST_F(RenderDerived, GuidesStreamlinesAndArrows) {
  const Words parts = {"--parts", "volumes", "--slice", "0,0,0.5:0,0,1", "--variable", "none"};
  const auto ink = [&](const Words& added) {
    Words options = parts;
    options.insert(options.end(), added.begin(), added.end());
    Picture with = draw_file(box.path(), options);
    Picture without = draw_file(box.path(), parts);
    int count = 0;
    for (int y = 0; y < with.height(); ++y) {
      for (int x = 0; x < with.width(); ++x) count += with.pixel(x, y) != without.pixel(x, y);
    }
    return count;
  };
  EXPECT_GT(ink({"--arrows", "vorticity(vector_1)"}), 300);
  EXPECT_GT(ink({"--streamlines", "0.9,0.9,0.6:0.6,0.9,0.9", "--flow", "grad(scalar_1)"}), 300);
}

TEST_F(RenderDerived, IsCompared) {
  testkit::File file = tool_test::three_plates(4, 10);
  file.region_sets.front().remove("LS_Scalar:p");  // the vector's number is another one than here
  const OneFile other(file);
  Picture picture =
      draw_file(dataset.path(), {"--compare", other.path(), "--colours", "grey", "--variable", "mag(v)"});
  expect_near(picture.at(tool_test::kFirst, tool_test::kMiddle), {0x20, 0x20, 0x20});
  expect_near(picture.at(tool_test::kSecond, tool_test::kMiddle), kGreyOfTheMiddle);
  expect_near(picture.at(tool_test::kThird, tool_test::kMiddle), tool_test::kUndefined);
  file.region_sets.front().remove("LS_Vector:v");
  const OneFile without(file);
  expect_error({"--compare", without.path(), "--variable", "mag(v)"}, 2,
               without.path() + ": there is no variable 'v' to compare");
}

TEST_F(RenderDerived, HasPicturesOfItsOwnAtEveryStep) {
  for (int step = 0; step < 2; ++step) {
    testkit::write_file(testkit::box_file({.nx = 3, .ny = 3, .nz = 3, .cycle = step, .time = 0.5 * step}),
                        dataset.directory() / ("s_" + std::to_string(step) + ".fld"));
  }
  const auto result = tool_test::run_fldtool({"render", (dataset.directory() / "s_0.fld").string(), "-o",
                                              output().string(), "--steps", "all", "--size", "100x100",
                                              "--variables", "scalar_1,mag(vector_1),vorticity(vector_1).y"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(written(),
            (Words{"picture_1_scalar_1_0.png", "picture_1_scalar_1_1.png", "picture_3_mag_vector_1__0.png",
                   "picture_3_mag_vector_1__1.png", "picture_3_vorticity_vector_1__y_0.png",
                   "picture_3_vorticity_vector_1__y_1.png"}));
}

TEST_F(RenderDerived, WrongNamesAreExplained) {
  const std::string where = box.path() + ": ";
  expect_box_error({"--variable", "vorticity(scalar_1)"},
                   where + "vorticity(scalar_1): vorticity needs a vector, and scalar_1 is a scalar");
  expect_box_error({"--variable", "mag(vector_1).x"},
                   where + "mag(vector_1).x: only vectors have components");
  expect_box_error({"--iso", "grad(vector_1)=1"},
                   where + "grad(vector_1): grad needs a scalar: vector_1.x, vector_1.y or vector_1.z");
  expect_box_error({"--arrows", "q(vector_1)"}, "--arrows: 'q(vector_1)' is not a vector per node");
  expect_box_error({"--arrows", "vorticity(vector_1).x"},
                   "--arrows: 'vorticity(vector_1).x' is not a vector per node");
  expect_box_error({"--variable", "grad(MatOfElements)"},
                   where + "grad(MatOfElements): MatOfElements is not given per node");
}

// The surface has no volume behind it: there is nothing to derive from.
TEST_F(RenderDerived, IsUndefinedWithoutElements) {
  Picture picture = draw_file(dataset.path(), {"--variable", "grad(p)"});
  expect_near(picture.at(tool_test::kFirst, tool_test::kMiddle), tool_test::kUndefined);
}

}  // namespace
