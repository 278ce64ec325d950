// The dataset that the tests of `fldtool render` draw, and how they draw it.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/tool/pictures.h"
#include "tests/tool/tool_datasets.h"

namespace tool_test {

// Draws three_plates(), in 600 x 400 pixels and from +z unless the options say otherwise. Skipped on machines
// that cannot render.
class RenderTest : public testing::Test {
 protected:
  using Words = std::vector<std::string>;

  RenderTest();
  void SetUp() override;

  std::filesystem::path output() const { return dataset.directory() / "picture.png"; }

  Picture draw(const Words& options) const { return draw_file(dataset.path(), options); }
  // Expects that nothing is written but the picture.
  Picture draw_file(const std::string& file, const Words& options) const;

  // `line` is what follows "fldtool: ".
  void expect_error(const Words& options, int status, const std::string& line) const;
  void expect_error_of_file(const std::string& file, const Words& options, int status,
                            const std::string& line) const;

  OneFile dataset;
};

}  // namespace tool_test
