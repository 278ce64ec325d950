// `fldtool render`: titles, legend and axes have room beside each other, in a font that has their characters.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "render/fonts.h"
#include "render/layout.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/tool/pictures.h"
#include "tests/tool/render_fixture.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::kWhite;
using tool_test::Picture;
using tool_test::Result;
using tool_test::run_fldtool;
using Words = std::vector<std::string>;
using RenderTexts = tool_test::RenderTest;

constexpr char kPrivate[] = "\xf4\x8f\xbf\xbd";  // U+10FFFD, which no font has

// Whether the rows from `bottom` to `top` are background in the columns from `left` to `right`.
bool is_blank(Picture& picture, double left, double right, double bottom, double top) {
  for (int y = static_cast<int>(std::ceil(bottom)); y < static_cast<int>(top); ++y) {
    for (int x = static_cast<int>(std::ceil(left)); x < static_cast<int>(right); ++x) {
      if (picture.pixel(x, y) != kWhite) return false;
    }
  }
  return true;
}

TEST_F(RenderTexts, LegendAndAxesStayInTheirAreas) {
  for (const auto& [size, title] :
       {std::pair("600x1200", "Title"), std::pair("200x2000", "Title"), std::pair("1200x900", "Title"),
        std::pair("120x120", "Title"), std::pair("2000x200", "A title")}) {
    Picture picture = draw({"--size", size, "--title", title, "--view", "iso"});
    const render::Layout layout = render::make_layout(picture.width(), picture.height(), 1);
    const render::Area& axes = layout.axes;
    const render::Area& legend = layout.legend;
    const double top = std::max(axes.top(), legend.top());
    EXPECT_FALSE(is_blank(picture, axes.left, axes.right(), axes.bottom, axes.top())) << size;
    EXPECT_FALSE(is_blank(picture, legend.left, legend.right(), legend.bottom, legend.top())) << size;
    EXPECT_TRUE(is_blank(picture, 0, axes.left - 1, 0, top)) << size;
    EXPECT_TRUE(is_blank(picture, axes.right() + 1, legend.left - 1, 0, top)) << size;
    EXPECT_TRUE(is_blank(picture, legend.right() + 1, picture.width(), 0, top)) << size;
    EXPECT_TRUE(is_blank(picture, 0, picture.width(), top + 1, layout.scene.bottom - 1)) << size;
    EXPECT_TRUE(is_blank(picture, 0, picture.width(), layout.scene.top() + 1, layout.title.bottom - 1))
        << size;
  }
}

// The whole mesh is drawn at its radii, angles and heights, whatever they mean, and the axes say which.
TEST_F(RenderTexts, AxesOfAWholeCylindricalMeshHaveItsNames) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  const tool_test::OneFile cartesian(testkit::file_of(mesh));
  mesh.coordinate_system = 1;
  const tool_test::OneFile cylindrical(testkit::file_of(mesh));
  const Words options = {"--parts", "ALL_ELEMENTS", "--view", "iso"};
  Picture plain = draw_file(cartesian.path(), options);
  Picture named = draw_file(cylindrical.path(), options);
  const render::Area axes = render::make_layout(600, 400, 1).axes;
  int in_axes = 0;
  int elsewhere = 0;
  for (int y = 0; y < 400; ++y) {
    for (int x = 0; x < 600; ++x) {
      if (plain.pixel(x, y) == named.pixel(x, y)) continue;
      const bool is_in_axes = x >= axes.left && x <= axes.right() && y >= axes.bottom && y <= axes.top();
      ++(is_in_axes ? in_axes : elsewhere);
    }
  }
  EXPECT_GT(in_axes, 0);
  EXPECT_EQ(elsewhere, 0);
}

TEST_F(RenderTexts, LongTitlesEndInThePicture) {
  const std::string title(300, 'M');
  Picture picture = draw({"--title", title});
  const render::Layout layout = render::make_layout(600, 400, 1);
  EXPECT_FALSE(
      is_blank(picture, layout.title.left, layout.title.right(), layout.title.bottom, layout.title.top()));
  EXPECT_TRUE(is_blank(picture, layout.title.right() + 1, 600, layout.title.bottom, 400));
  EXPECT_FALSE(is_blank(picture, layout.title.right() - 60, layout.title.right(), layout.title.bottom,
                        layout.title.top()));
}

TEST_F(RenderTexts, TitlesMayHaveSeveralLines) {
  Picture picture = draw({"--title", "One\nTwo"});
  const render::Layout layout = render::make_layout(600, 400, 2);
  const double middle = layout.title.bottom + layout.title.height / 2;
  EXPECT_FALSE(is_blank(picture, 0, 200, middle, layout.title.top()));
  EXPECT_FALSE(is_blank(picture, 0, 200, layout.title.bottom, middle));
}

TEST_F(RenderTexts, ReportsMissingCharactersOnce) {
  for (int step = 0; step < 2; ++step) {
    testkit::File file = tool_test::three_plates();
    file.header.set_cycle(step, step);
    testkit::write_file(file, dataset.directory() / ("s_" + std::to_string(step) + ".fld"));
  }
  const Result result =
      run_fldtool({"render", (dataset.directory() / "s_0.fld").string(), "-o", output().string(), "--steps",
                   "all", "--title", std::string("a") + kPrivate + kPrivate});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors,
            "fldtool: the built-in font lacks the characters U+10FFFD (--font names another font)\n");
}

TEST_F(RenderTexts, ReportsWhatTheGivenFontLacks) {
  const std::string font = render::font_for("Привет");
  if (font.empty()) GTEST_SKIP() << "no installed font has Cyrillic letters";
  const Result result = run_fldtool({"render", dataset.path(), "-o", output().string(), "--font", font,
                                     "--title", std::string("Привет") + kPrivate});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors,
            "fldtool: " + font + " lacks the characters U+10FFFD (--font names another font)\n");
}

// Pixels of the legend that differ between two pictures.
int differences_in_legend(Picture& picture, Picture& other) {
  const render::Area area = render::make_layout(picture.width(), picture.height(), 0).legend;
  int count = 0;
  for (int y = static_cast<int>(area.bottom); y < area.top(); ++y) {
    for (int x = static_cast<int>(area.left); x < area.right(); ++x)
      count += picture.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
  }
  return count;
}

// Without glyphs two characters look like any other two.
TEST_F(RenderTexts, DrawsJapaneseLabels) {
  if (!render::missing_characters("圧力外", render::font_for("圧力外")).empty())
    GTEST_SKIP() << "there is no font with Japanese characters";
  const auto with_label = [](const std::string& bytes) {
    testkit::File file = tool_test::three_plates();
    testkit::RegionSet& set = file.region_sets.front();
    set.remove("LS_Scalar:p");
    set.add(testkit::scalar_section({.name = "p", .label = bytes, .values = std::vector<double>(16, 1.0)}));
    return file;
  };
  const tool_test::OneFile pressure(with_label(tool_test::kPressureBytes));
  const tool_test::OneFile outside(
      with_label(std::string(tool_test::kOutsideBytes) + tool_test::kOutsideBytes));
  const Words plain = {"--title", "", "--range", "0,1"};
  Picture first = draw_file(pressure.path(), plain);
  Picture second = draw_file(outside.path(), plain);
  Picture again = draw_file(pressure.path(), plain);
  EXPECT_GT(differences_in_legend(first, second), 20);
  EXPECT_EQ(differences_in_legend(first, again), 0);
}

}  // namespace
