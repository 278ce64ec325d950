#include "tests/tool/render_fixture.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "tests/tool/run_fldtool.h"

namespace tool_test {
namespace {

bool can_render() {
  static const bool kCan = [] {
    const OneFile dataset(three_plates());
    return run_fldtool({"render", dataset.path(), "-o", (dataset.directory() / "p.png").string()})
               .errors.find("cannot render") == std::string::npos;
  }();
  return kCan;
}

}  // namespace

RenderTest::RenderTest() : dataset(three_plates()) {
  unsetenv("DISPLAY");
}

void RenderTest::SetUp() {
  if (!can_render()) GTEST_SKIP() << "this machine cannot render: it has neither EGL nor a display";
}

Picture RenderTest::draw_file(const std::string& file, const Words& options) const {
  Words arguments = {"render", file, "-o", output().string()};
  arguments.insert(arguments.end(), options.begin(), options.end());
  for (const auto& [option, value] : {std::pair("--size", "600x400"), std::pair("--view", "+z")}) {
    if (std::find(options.begin(), options.end(), option) == options.end())
      arguments.insert(arguments.end(), {option, value});
  }
  const Result result = run_fldtool(arguments);
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, "");
  return Picture(output());
}

void RenderTest::expect_error(const Words& options, int status, const std::string& line) const {
  expect_error_of_file(dataset.path(), options, status, line);
}

void RenderTest::expect_error_of_file(const std::string& file, const Words& options, int status,
                                      const std::string& line) const {
  Words arguments = {"render", file, "-o", output().string()};
  arguments.insert(arguments.end(), options.begin(), options.end());
  std::filesystem::remove(output());
  const Result result = run_fldtool(arguments);
  EXPECT_EQ(result.status, status) << line;
  EXPECT_EQ(result.errors, "fldtool: " + line + "\n");
  EXPECT_FALSE(std::filesystem::exists(output()));
}

}  // namespace tool_test
