// `fldtool render`: the pictures have the expected colours at known places, and are made without a display.
#include "gtest/gtest.h"
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/tool/pictures.h"
#include "tests/tool/render_fixture.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

namespace fs = std::filesystem;
using tool_test::expect_near;
using tool_test::kFirst;
using tool_test::kHighest;
using tool_test::kLowest;
using tool_test::kMiddle;
using tool_test::kSecond;
using tool_test::kThird;
using tool_test::kUndefined;
using tool_test::kWhite;
using tool_test::Picture;
using tool_test::Pixel;
using tool_test::Result;
using tool_test::run_fldtool;
using tool_test::three_plates;
using Words = std::vector<std::string>;

using Render = tool_test::RenderTest;

TEST_F(Render, ColoursTheValuesWithoutADisplay) {
  Picture picture = draw({});
  EXPECT_EQ(picture.width(), 600);
  EXPECT_EQ(picture.height(), 400);
  expect_near(picture.at(kFirst, kMiddle), kLowest);
  expect_near(picture.at(kSecond, kMiddle), kHighest);
  expect_near(picture.at(kThird, kMiddle), kUndefined);
  EXPECT_EQ(picture.at(0.99, 0.99), kWhite);
  EXPECT_EQ(picture.at(0.99, 0.5), kWhite);
}

TEST_F(Render, TakesOptionsInFrontOfTheFile) {
  for (const auto& [option, list] :
       {std::pair("--step", "0"), std::pair("--parts", "plates"), std::pair("--faint", "fluid")}) {
    fs::remove(output());
    const Result result = run_fldtool({"render", option, list, dataset.path(), "-o", output().string()});
    EXPECT_EQ(result.status, 0) << option;
    EXPECT_EQ(result.errors, "") << option;
    EXPECT_TRUE(fs::exists(output())) << option;
  }
}

TEST_F(Render, LooksFromTheOtherSide) {
  Picture picture = draw({"--view", "-z"});
  expect_near(picture.at(kFirst, kMiddle), kUndefined);
  expect_near(picture.at(kThird, kMiddle), kLowest);
  Picture by_angles = draw({"--view", "-90,90"});
  expect_near(by_angles.at(kFirst, kMiddle), kLowest);
}

// The azimuth turns the picture also where the eye is above the parts.
TEST_F(Render, LooksFromAboveAtEveryAzimuth) {
  for (const char* elevation : {"88", "89.9999", "90"}) {
    Picture along_y = draw({"--view", std::string("-90,") + elevation});
    expect_near(along_y.at(kFirst, kMiddle), kLowest);
    Picture against_y = draw({"--view", std::string("90,") + elevation});
    expect_near(against_y.at(kThird, kMiddle), kLowest);
    expect_near(against_y.at(kFirst, kMiddle), kUndefined);
    Picture against_x = draw({"--view", std::string("0,") + elevation});
    EXPECT_EQ(against_x.at(kFirst, kMiddle), kWhite);
  }
}

TEST_F(Render, TakesTheRangeThatIsGiven) {
  Picture picture = draw({"--range", "-10,0", "--colours", "grey"});
  expect_near(picture.at(kFirst, kMiddle), {0xf0, 0xf0, 0xf0});
  expect_near(picture.at(kSecond, kMiddle), {0xf0, 0xf0, 0xf0});
  Picture other = draw({"--range", "10,20", "--colours", "grey"});
  expect_near(other.at(kSecond, kMiddle), {0x20, 0x20, 0x20});
}

TEST_F(Render, ColoursByComponentAndMagnitude) {
  const tool_test::OneFile negative(three_plates(-3, 1));
  Picture component = draw_file(negative.path(), {"--variable", "v.y"});
  expect_near(component.at(kFirst, kMiddle), kLowest);
  expect_near(component.at(kSecond, kMiddle), kHighest);
  for (const char* name : {"v", "v.magnitude"}) {
    Picture magnitude = draw_file(negative.path(), {"--variable", name});
    expect_near(magnitude.at(kFirst, kMiddle), kHighest);
    expect_near(magnitude.at(kSecond, kMiddle), kLowest);
  }
}

TEST_F(Render, WithoutAVariableGivesAColourPerPart) {
  Picture picture = draw({"--variable", "none", "--background", "#102030"});
  EXPECT_EQ(picture.at(kFirst, 0.55), picture.at(kThird, 0.55));
  EXPECT_NE(picture.at(kFirst, 0.55), kWhite);
  EXPECT_EQ(picture.at(0.99, 0.99), (Pixel{0x10, 0x20, 0x30}));
}

TEST_F(Render, ShowsFaintPartsThroughGrey) {
  Picture picture = draw({"--faint", "plates"});
  const Pixel colour = picture.at(kSecond, kMiddle);
  EXPECT_GT(colour[0], 180);
  EXPECT_LT(colour[0], 255);
  EXPECT_NEAR(colour[0], colour[2], 25);
}

TEST_F(Render, DrawsTheEdgesOfElements) {
  // The rims between the plates are drawn anyway; the diagonal of nothing is. So look at a mesh of volumes.
  const tool_test::OneFile cube(tool_test::one_of_each_file());
  Picture plain = draw_file(cube.path(), {"--parts", "whole", "--variable", "none"});
  Picture edged = draw_file(cube.path(), {"--parts", "whole", "--variable", "none", "--edges"});
  int different = 0;
  for (int i = 0; i < 200; ++i) {
    if (plain.at(0.3 + 0.002 * i, 0.4) != edged.at(0.3 + 0.002 * i, 0.4)) ++different;
  }
  EXPECT_GT(different, 0);
}

TEST_F(Render, DrawsPartsWithoutValuesOrElements) {
  testkit::File file = three_plates();
  file.region_sets.front().remove("LS_Scalar:p");
  file.region_sets.front().remove("LS_Vector:v");
  const tool_test::OneFile bare(file);
  Picture picture = draw_file(bare.path(), {});
  EXPECT_NE(picture.at(kFirst, kMiddle), kWhite);

  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.push_back({.name = "empty"});
  const tool_test::OneFile empty(testkit::file_of(mesh));
  draw_file(empty.path(), {"--parts", "empty"});
  draw_file(empty.path(), {"--parts", "volumes", "--variable", "MatOfElements"});
}

TEST_F(Render, NumbersThePicturesOfASeries) {
  for (int step = 0; step < 11; ++step) {
    testkit::File file = three_plates(step, 10 + step);
    file.header.set_cycle(step, step);
    testkit::write_file(file, dataset.directory() / ("s_" + std::to_string(step) + ".fld"));
  }
  const std::string file = (dataset.directory() / "s_0.fld").string();
  const Result result = run_fldtool({"render", file, "-o", output().string(), "--steps", "0,10", "--view",
                                     "+z", "--size", "600x400", "--colours", "grey"});
  EXPECT_EQ(result.status, 0) << result.errors;
  // Both have the range of both: 0 to 20.
  Picture first(dataset.directory() / "picture_00.png");
  Picture last(dataset.directory() / "picture_10.png");
  expect_near(first.at(kFirst, kMiddle), {0x20, 0x20, 0x20});
  expect_near(first.at(kSecond, kMiddle), last.at(kFirst, kMiddle));
  expect_near(last.at(kSecond, kMiddle), {0xf0, 0xf0, 0xf0});
  EXPECT_EQ(run_fldtool({"render", file, "-o", output().string(), "--step", "all", "--size", "64x64"}).status,
            0);
  EXPECT_TRUE(fs::exists(dataset.directory() / "picture_05.png"));
  EXPECT_FALSE(fs::exists(output()));
}

TEST_F(Render, LeavesAPartOutWhereAStepLacksIt) {
  const std::string file = tool_test::write_series_that_loses_a_part(dataset.directory().path());
  for (const Words& range : {Words{}, Words{"--range", "0,10"}}) {
    Words arguments = {"render", file,     "-o", output().string(), "--steps", "all", "--parts",
                       "lower",  "--view", "+z", "--variable",      "v"};
    arguments.insert(arguments.end(), range.begin(), range.end());
    const Result result = run_fldtool(arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "fldtool: " + file + ": step 1 does not have: volume lower\n");
    EXPECT_NE(Picture(dataset.directory() / "picture_0.png").at(kSecond, kMiddle), kWhite);
    EXPECT_EQ(Picture(dataset.directory() / "picture_1.png").at(kSecond, kMiddle), kWhite);
  }
}

TEST_F(Render, TellsProgressOnATerminal) {
  const Result result = tool_test::run_fldtool_on_terminal(
      {"render", dataset.path(), "-o", output().string(), "--size", "64x64"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "\r\x1b[Kpictures: 0 of 1, 0 %\r\x1b[K");
}

TEST_F(Render, StopsWhileAPictureIsMade) {
  // Large enough for the signal to come before the picture.
  const tool_test::OneFile box(testkit::box_file({.nx = 60, .ny = 60, .nz = 60}));
  for (const int signal_number : {SIGINT, SIGTERM}) {
    const Result result = tool_test::run_fldtool_on_terminal_and_interrupt(
        {"render", box.path(), "-o", output().string(), "--parts", "whole", "--edges", "--size", "2000x2000"},
        signal_number);
    EXPECT_EQ(result.status, 130);
    EXPECT_TRUE(result.errors.ends_with("\r\x1b[Kfldtool: interrupted\r\n")) << result.errors;
    EXPECT_EQ(std::distance(fs::directory_iterator(dataset.directory().path()), {}), 1);
  }
}

TEST_F(Render, WritesToTheStandardOutput) {
  draw({});
  std::ifstream file(output(), std::ios::binary);
  const std::string wanted((std::istreambuf_iterator<char>(file)), {});
  const Result result =
      run_fldtool({"render", dataset.path(), "-o", "-", "--size", "600x400", "--view", "+z"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_TRUE(result.output.starts_with("\x89PNG\r\n"));
  EXPECT_EQ(result.output, wanted);
  EXPECT_FALSE(fs::exists("-"));
}

TEST_F(Render, RejectsOutputsOfAnotherFormat) {
  const Result jpeg = run_fldtool({"render", dataset.path(), "-o", "x.jpg"});
  EXPECT_EQ(jpeg.status, 2);
  EXPECT_EQ(
      jpeg.errors,
      "fldtool: x.jpg: cannot write '.jpg' files: the name has to end in .png or .webm or .mp4 or .gif\n");
  const Result empty = run_fldtool({"render", dataset.path(), "-o", ""});
  EXPECT_EQ(empty.status, 2);
  EXPECT_EQ(empty.errors, "fldtool: --output: the file name is empty (see fldtool render --help)\n");
}

TEST_F(Render, DrawsEachVariableIntoAFileOfItsOwn) {
  const Result result = run_fldtool({"render", dataset.path(), "-o", output().string(), "--size", "600x400",
                                     "--view", "+z", "--variables", "v.y, 1", "--variable", "v"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_FALSE(fs::exists(output()));
  for (const auto& [name, variable] : {std::pair{"picture_2_v_y.png", "v.y"},
                                       {"picture_1_p.png", "p"},
                                       {"picture_2_v_magnitude.png", "v.magnitude"}}) {
    SCOPED_TRACE(name);
    Picture alone = draw({"--variable", variable});
    Picture one_of_three(dataset.directory() / name);
    for (const double x : {kFirst, kSecond, kThird})
      EXPECT_EQ(one_of_three.at(x, kMiddle), alone.at(x, kMiddle));
  }
}

TEST_F(Render, WritesSeveralPicturesToFilesOnly) {
  for (int step = 0; step < 2; ++step) {
    testkit::File file = three_plates();
    file.header.set_cycle(step, step);
    testkit::write_file(file, dataset.directory() / ("s_" + std::to_string(step) + ".fld"));
  }
  const Result result =
      run_fldtool({"render", (dataset.directory() / "s_0.fld").string(), "-o", "-", "--steps", "all"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "fldtool: several pictures need a file name for --output\n");
  EXPECT_EQ(result.output, "");
  const Result variables = run_fldtool({"render", dataset.path(), "-o", "-", "--variables", "p,v"});
  EXPECT_EQ(variables.status, 2);
  EXPECT_EQ(variables.errors, "fldtool: several pictures need a file name for --output\n");
}

TEST_F(Render, RejectsWrongOptions) {
  expect_error({"--size", "10x10"}, 2,
               "--size: '10x10' is not WIDTHxHEIGHT in pixels, 64 to 4096 each (see fldtool render --help)");
  expect_error({"--size", "big"}, 2,
               "--size: 'big' is not WIDTHxHEIGHT in pixels, 64 to 4096 each (see fldtool render --help)");
  expect_error({"--view", "up"}, 2,
               "--view: 'up' is not iso, +x, -x, +y, -y, +z, -z or AZIMUTH,ELEVATION with an elevation from "
               "-90 to 90 (see fldtool render --help)");
  expect_error({"--view", "1,nan"}, 2,
               "--view: '1,nan' is not iso, +x, -x, +y, -y, +z, -z or AZIMUTH,ELEVATION with an elevation "
               "from -90 to 90 (see fldtool render --help)");
  expect_error(
      {"--view", "30,91"}, 2,
      "--view: '30,91' is not iso, +x, -x, +y, -y, +z, -z or AZIMUTH,ELEVATION with an elevation from "
      "-90 to 90 (see fldtool render --help)");
  expect_error({"--background", "red"}, 2,
               "--background: 'red' is not white, grey, black or #rrggbb (see fldtool render --help)");
  for (const std::string range : {"2,1", "1,1", "1", "1,1e400", "-1e308,1e308", "1e-320,2e-320"}) {
    expect_error({"--range", range}, 2,
                 "--range: '" + range + "' is not LOW,HIGH (see fldtool render --help)");
  }
  expect_error({"--colours", "jet"}, 2,
               "--colours: jet not in {viridis,inferno,cool-warm,turbo,grey} (see fldtool render --help)");
  expect_error({"--font", dataset.path()}, 2, dataset.path() + ": not a font file");
  expect_error({"--variable", "q"}, 2,
               dataset.path() + ": there is no variable 'q': the variables are 1 to 3");
  expect_error({"--variable", "p.x"}, 2,
               dataset.path() + ": there is no variable 'p.x': the variables are 1 to 3");
  expect_error({"--parts", "q"}, 2, dataset.path() + ": there is no part 'q': the parts are 1 to 3");
  expect_error({"--step", "1"}, 2, dataset.path() + ": there is no step 1: the steps are 0 to 0");
}

TEST_F(Render, SaysWhenThereIsNothingToDraw) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.volumes.clear();
  const tool_test::OneFile surfaces(testkit::file_of(mesh));
  const Result result =
      run_fldtool({"render", surfaces.path(), "-o", output().string(), "--parts", "volumes"});
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: " + surfaces.path() + ": there is no part to draw\n");
}

TEST_F(Render, SaysWhenOpenGlIsTooOld) {
  setenv("MESA_GL_VERSION_OVERRIDE", "2.1", 1);
  const Result result = run_fldtool({"render", dataset.path(), "-o", output().string()});
  unsetenv("MESA_GL_VERSION_OVERRIDE");
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors,
            "fldtool: cannot render: EGL has no context of OpenGL 3.2, and DISPLAY is not set\n");
}

TEST_F(Render, SaysWhenItCannotWrite) {
  const Result result = run_fldtool({"render", dataset.path(), "-o", dataset.path() + "/p.png"});
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: " + dataset.path() + "/p.png: cannot write: Not a directory\n");
}

TEST_F(Render, RefusesWhatIsNoDataset) {
  const std::string empty = (dataset.directory() / "empty.fld").string();
  std::ofstream(empty).flush();
  const Result result = run_fldtool({"render", empty, "-o", output().string()});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors, "fldtool: " + empty + ": This is not FLD file.\n");
}

TEST_F(Render, SaysWhenAQuantityCannotBeRead) {
  testkit::File file = three_plates();
  file.region_sets.front().section("LS_Scalar:p").blocks[1] = testkit::Block::integer(-5);
  const tool_test::OneFile broken(file);
  const Result result = run_fldtool({"render", broken.path(), "-o", output().string()});
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(result.errors.starts_with("fldtool: " + broken.path() + ": ")) << result.errors;
  EXPECT_FALSE(fs::exists(output()));
}

}  // namespace
