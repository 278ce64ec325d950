// `fldtool render` on machines without EGL: on a display, or with the reason why it cannot draw.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "tests/tool/pictures.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

namespace fs = std::filesystem;
using tool_test::expect_near;
using tool_test::kFirst;
using tool_test::kLowest;
using tool_test::kMiddle;
using tool_test::kThird;
using tool_test::kUndefined;
using tool_test::Picture;
using tool_test::Result;
using tool_test::run_fldtool;
using tool_test::three_plates;

// The way to EGL is barred by naming a driver list that does not exist.
class RenderWithoutEgl : public testing::Test {
 protected:
  RenderWithoutEgl() : dataset(three_plates()) {
    setenv("__EGL_VENDOR_LIBRARY_FILENAMES", "/nonexistent", 1);
  }
  ~RenderWithoutEgl() override {
    unsetenv("__EGL_VENDOR_LIBRARY_FILENAMES");
    unsetenv("DISPLAY");
  }

  Result render() const {
    return run_fldtool({"render", dataset.path(), "-o", (dataset.directory() / "p.png").string()});
  }

  tool_test::OneFile dataset;
};

TEST_F(RenderWithoutEgl, SaysThatThereIsNoDisplay) {
  unsetenv("DISPLAY");
  const Result result = render();
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors,
            "fldtool: cannot render: EGL has no surfaceless platform, and DISPLAY is not set\n");
}

TEST_F(RenderWithoutEgl, SaysThatTheDisplayCannotBeOpened) {
  setenv("DISPLAY", ":54321", 1);
  const Result result = render();
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(
      result.errors,
      "fldtool: cannot render: EGL has no surfaceless platform, and the display :54321 cannot be opened\n");
}

bool has_xvfb() {
  return std::system("command -v xvfb-run >/dev/null") == 0;
}

TEST_F(RenderWithoutEgl, SaysThatTheDisplayHasNoOpenGl) {
  if (!has_xvfb()) GTEST_SKIP() << "there is no xvfb-run";
  const fs::path said = dataset.directory() / "said";
  const std::string command =
      "timeout 60 xvfb-run -a -e /dev/null -s '-noreset -screen 0 1280x1024x24 -extension GLX' sh -c "
      "'" FLDTOOL " render " +
      dataset.path() + " 2>" + said.string() + "'";
  EXPECT_NE(std::system(command.c_str()), 0);
  std::ifstream file(said);
  std::string line;
  std::getline(file, line);
  EXPECT_TRUE(line.starts_with("fldtool: cannot render: EGL has no surfaceless platform, and the display :"))
      << line;
  EXPECT_TRUE(line.ends_with(" has no OpenGL")) << line;
}

TEST_F(RenderWithoutEgl, DrawsOnADisplay) {
  if (!has_xvfb()) GTEST_SKIP() << "there is no xvfb-run";
  const fs::path output = dataset.directory() / "p.png";
  const std::string command = "timeout 60 xvfb-run -a -s '-noreset -screen 0 1280x1024x24' " FLDTOOL
                              " render --view +z --size 600x400 " +
                              dataset.path() + " -o " + output.string();
  ASSERT_EQ(std::system(command.c_str()), 0);
  Picture picture(output);
  expect_near(picture.at(kFirst, kMiddle), kLowest);
  expect_near(picture.at(kThird, kMiddle), kUndefined);
}

}  // namespace
