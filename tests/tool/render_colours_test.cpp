// `fldtool render`: what the colours show, and the legend that explains them.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "render/layout.h"
#include "render/scene.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/tool/pictures.h"
#include "tests/tool/render_fixture.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::expect_near;
using tool_test::kFirst;
using tool_test::kHighest;
using tool_test::kLowest;
using tool_test::kMiddle;
using tool_test::kSecond;
using tool_test::kUndefined;
using tool_test::kWhite;
using tool_test::Picture;
using tool_test::Pixel;
using tool_test::three_plates;
using Words = std::vector<std::string>;
using RenderColours = tool_test::RenderTest;

constexpr double kUndefinedValue = 1.0e30;

render::Area legend_of(Picture& picture) {
  return render::make_layout(picture.width(), picture.height(), 1).legend;
}

bool is_grey(const Pixel& pixel) {
  const auto [low, high] = std::minmax({pixel[0], pixel[1], pixel[2]});
  return high - low <= 8;
}

// The coloured pixels of the legend's bar, from left to right; none without a legend.
std::vector<Pixel> legend_colours(Picture& picture) {
  const render::Area area = legend_of(picture);
  std::vector<Pixel> longest;
  for (int y = static_cast<int>(area.bottom); y < area.top(); ++y) {
    std::vector<Pixel> row;
    for (int x = static_cast<int>(area.left); x < area.right(); ++x) {
      const Pixel pixel = picture.pixel(x, y);
      if (!is_grey(pixel)) row.push_back(pixel);
    }
    if (row.size() > longest.size()) longest = row;
  }
  return longest;
}

// The pixels of the legend's area that are not background.
int legend_ink(Picture& picture) {
  const render::Area area = legend_of(picture);
  int count = 0;
  for (int y = static_cast<int>(area.bottom); y < area.top(); ++y) {
    for (int x = static_cast<int>(area.left); x < area.right(); ++x)
      count += picture.pixel(x, y) != kWhite ? 1 : 0;
  }
  return count;
}

// In the middle of the scene, where the plate with the highest value is, whatever the view.
Pixel middle_of_scene(Picture& picture) {
  const render::Area scene = render::make_layout(picture.width(), picture.height(), 1).scene;
  return picture.pixel(static_cast<int>(scene.left + scene.width / 2),
                       static_cast<int>(scene.bottom + scene.height / 2));
}

TEST_F(RenderColours, FacesThatLookAtTheEyeHaveTheColoursOfTheLegend) {
  Picture picture = draw({});
  const std::vector<Pixel> colours = legend_colours(picture);
  ASSERT_GT(colours.size(), 100U);
  expect_near(picture.at(kFirst, kMiddle), colours[1]);
  expect_near(picture.at(kSecond, kMiddle), colours[colours.size() - 2]);
}

// At most a fifth of the brightness: 51 of 255.
TEST_F(RenderColours, ShadingTakesAtMostAFifthOfTheBrightness) {
  constexpr double kMost = render::kLargestShade * 255;
  for (const char* view : {"iso", "20,60", "200,45", "0,10"}) {
    Picture picture = draw({"--view", view});
    const std::vector<Pixel> colours = legend_colours(picture);
    ASSERT_GT(colours.size(), 100U) << view;
    const Pixel wanted = colours[colours.size() - 2];
    const Pixel found = middle_of_scene(picture);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_GE(found[i], wanted[i] - kMost) << view;
      EXPECT_LE(found[i], wanted[i] + 6) << view;
    }
  }
}

// s_0.fld and so on: the plates, which only the first file has the scalar p of. Returns the path of that one.
std::string write_series_that_loses_p(const std::filesystem::path& folder, int steps) {
  for (int step = 0; step < steps; ++step) {
    testkit::File file = three_plates();
    file.header.set_cycle(step, step);
    if (step > 0) file.region_sets.front().remove("LS_Scalar:p");
    testkit::write_file(file, folder / ("s_" + std::to_string(step) + ".fld"));
  }
  return (folder / "s_0.fld").string();
}

TEST_F(RenderColours, AVariableThatTheStepLacksIsAnError) {
  const std::string file = write_series_that_loses_p(dataset.directory().path(), 2);
  expect_error_of_file(file, {"--step", "1", "--variable", "p"}, 2,
                       file + ": variable p is not there for the parts at step 1");
  // The default is a variable that the step has.
  Picture velocity = draw_file(file, {"--step", "1"});
  expect_near(velocity.at(kSecond, kMiddle), kHighest);
}

TEST_F(RenderColours, AVariableThatNoStepHasIsAnError) {
  const std::string file = write_series_that_loses_p(dataset.directory().path(), 3);
  expect_error_of_file(file, {"--step", "1-2", "--variable", "p"}, 2,
                       file + ": variable p is not there for the parts at any of the steps");
  EXPECT_FALSE(std::filesystem::exists(dataset.directory() / "picture_1.png"));
}

TEST_F(RenderColours, APictureOfASeriesSaysThatItsStepLacksTheVariable) {
  const std::string file = write_series_that_loses_p(dataset.directory().path(), 2);
  for (const Words& range : {Words{}, Words{"--range", "0,10"}}) {
    Words arguments = {"render",  file,     "-o", output().string(), "--steps", "all", "--size",
                       "600x400", "--view", "+z", "--variable",      "p"};
    arguments.insert(arguments.end(), range.begin(), range.end());
    const tool_test::Result result = tool_test::run_fldtool(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    Picture with(dataset.directory() / "picture_0.png");
    expect_near(with.at(kSecond, kMiddle), kHighest);
    EXPECT_GT(legend_colours(with).size(), 100U);
    Picture lacking(dataset.directory() / "picture_1.png");
    expect_near(lacking.at(kSecond, kMiddle), kUndefined);
    EXPECT_EQ(legend_colours(lacking).size(), 0U);
    EXPECT_GT(legend_ink(lacking), 100);
  }
}

TEST_F(RenderColours, WithoutDefinedValuesThereIsNoLegend) {
  const tool_test::OneFile undefined(three_plates(kUndefinedValue, kUndefinedValue));
  for (const Words& range : {Words{}, Words{"--range", "0,10"}}) {
    Picture picture = draw_file(undefined.path(), range);
    expect_near(picture.at(kFirst, kMiddle), kUndefined);
    EXPECT_EQ(legend_colours(picture).size(), 0U);
    // It says why.
    EXPECT_GT(legend_ink(picture), 100);
  }
}

TEST_F(RenderColours, WithoutColouredPartsThereIsNoLegend) {
  Picture faint = draw({"--faint", "plates"});
  EXPECT_EQ(legend_ink(faint), 0);

  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.push_back({.name = "empty"});
  testkit::File file = testkit::file_of(mesh);
  file.region_sets.front().add(testkit::scalar_section({.name = "p", .values = {1, 2, 3, 4}}));
  const tool_test::OneFile empty(file);
  Picture nothing = draw_file(empty.path(), {"--parts", "empty", "--variable", "p"});
  EXPECT_EQ(legend_ink(nothing), 0);
}

// Two surfaces that fill the same square, from 0 to 1: `fine`, of 8 x 8 faces, and `coarse`, of two
// triangles.
testkit::File two_squares(double fine_value, double coarse_value, bool fine_is_first) {
  constexpr int kFaces = 8;
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.clear();
  std::vector<double> values(4, 0.0);
  std::vector<std::int32_t> nodes;
  for (int j = 0; j <= kFaces; ++j) {
    for (int i = 0; i <= kFaces; ++i)
      nodes.push_back(mesh.nodes.add(1.0 * i / kFaces, 1.0 * j / kFaces, 0.1 * i / kFaces));
  }
  values.insert(values.end(), nodes.size(), fine_value);
  const auto node = [&](int i, int j) { return nodes[static_cast<std::size_t>(j * (kFaces + 1) + i)]; };
  testkit::Surface fine{.name = "fine"};
  for (int j = 0; j < kFaces; ++j) {
    for (int i = 0; i < kFaces; ++i)
      fine.add(testkit::kQuadrilateralFace, {node(i, j), node(i + 1, j), node(i + 1, j + 1), node(i, j + 1)});
  }
  const std::int32_t base = mesh.nodes.add(0, 0, 0);
  mesh.nodes.add(1, 0, 0.1);
  mesh.nodes.add(1, 1, 0.1);
  mesh.nodes.add(0, 1, 0);
  values.insert(values.end(), 4, coarse_value);
  testkit::Surface coarse{.name = "coarse"};
  coarse.add(testkit::kTriangleFace, {base, base + 1, base + 2});
  coarse.add(testkit::kTriangleFace, {base, base + 2, base + 3});
  mesh.surfaces = fine_is_first ? std::vector{fine, coarse} : std::vector{coarse, fine};
  testkit::File file = testkit::file_of(mesh);
  file.region_sets.front().add(testkit::scalar_section({.name = "p", .values = values}));
  return file;
}

// Among the pixels of the middle of a picture.
int count_of(Picture& picture, const Pixel& colour, int distance) {
  int count = 0;
  for (int i = 0; i < 40; ++i) {
    for (int j = 0; j < 40; ++j) {
      const Pixel found = picture.at(0.4 + 0.005 * i, 0.45 + 0.005 * j);
      bool is_near = true;
      for (std::size_t k = 0; k < 3; ++k) is_near = is_near && std::abs(found[k] - colour[k]) <= distance;
      count += is_near ? 1 : 0;
    }
  }
  return count;
}

TEST_F(RenderColours, DefinedValuesCoverUndefinedOnesWhereFacesCoincide) {
  const Pixel lowest = {0x20, 0x20, 0x20};
  for (const bool fine_is_first : {false, true}) {
    for (const bool fine_is_defined : {false, true}) {
      const tool_test::OneFile file(two_squares(fine_is_defined ? 1 : kUndefinedValue,
                                                fine_is_defined ? kUndefinedValue : 1, fine_is_first));
      for (const char* view : {"+z", "-z", "20,50"}) {
        Picture picture = draw_file(file.path(), {"--range", "1,2", "--colours", "grey", "--view", view});
        EXPECT_EQ(count_of(picture, lowest, 8), 1600) << view << fine_is_first << fine_is_defined;
      }
    }
  }
}

TEST_F(RenderColours, TheFirstPartCoversOthersThatCoincideWithIt) {
  const tool_test::OneFile file(two_squares(1, 2, true));
  for (const char* view : {"+z", "-z", "20,50"}) {
    Picture picture = draw_file(file.path(), {"--colours", "grey", "--view", view});
    EXPECT_EQ(count_of(picture, {0x20, 0x20, 0x20}, 8), 1600) << view;
  }
}

}  // namespace
