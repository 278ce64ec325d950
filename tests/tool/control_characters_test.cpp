// Names of files may hold anything, but nothing that a terminal would take for a command comes out.
#include "gtest/gtest.h"
#include <algorithm>
#include <string>
#include <vector>

#include "nlohmann/json.hpp"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;
using Words = std::vector<std::string>;

// A tetrahedron whose surface, volume, scalar and label clear the screen.
testkit::File wild_file(double value) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.front().name = "&VFG_w\x1b[2Jall";
  mesh.volumes.front().name = "fl\nuid";
  testkit::File file = testkit::file_of(mesh);
  file.region_sets.front().add(
      testkit::scalar_section({.name = "p\x1b[2J", .label = "pressure\x07\x7f", .values = {value, 2, 3, 4}}));
  return file;
}

bool is_plain(const std::string& text) {
  return std::none_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && byte != '\n') || byte == 0x7f;
  });
}

class ControlCharacters : public testing::Test {
 protected:
  ControlCharacters() : file(wild_file(1)), other(wild_file(5)) {}

  static std::string text_of(const Words& words, int status) {
    const Result result = run_fldtool(words);
    EXPECT_EQ(result.status, status) << result.errors;
    EXPECT_TRUE(is_plain(result.output)) << testing::PrintToString(result.output);
    EXPECT_TRUE(is_plain(result.errors)) << testing::PrintToString(result.errors);
    return result.output + result.errors;
  }

  static void expect_in(const std::string& text, const std::string& words) {
    EXPECT_NE(text.find(words), std::string::npos) << text;
  }

  OneFile file;
  OneFile other;
};

TEST_F(ControlCharacters, OfInfo) {
  for (const std::string option : {"--no-groups", "--ranges"}) {
    const std::string text = text_of({"info", file.path(), option}, 0);
    expect_in(text, "  &VFG_w [2Jall ");
    expect_in(text, "  fl uid ");
    expect_in(text, "  p [2J ");
    expect_in(text, "  pressure  ");
  }
  expect_in(text_of({"info", file.path()}, 0), "  Grouping_Regions: &VFG_w [2Jall\n");
}

TEST_F(ControlCharacters, OfTheRemainsOfAFile) {
  testkit::File broken = wild_file(1);
  broken.region_sets.front().section("LS_Nodes").blocks[0] = testkit::Block::integer(-5);
  const OneFile damaged(broken);
  expect_in(text_of({"info", damaged.path()}, 3), "  LS_Scalar:p [2J\n");
}

TEST_F(ControlCharacters, OfStats) {
  const std::string text = text_of({"stats", file.path()}, 0);
  expect_in(text, "  p [2J, pressure  , per node\n");
  expect_in(text, "  &VFG_w [2Jall ");
}

TEST_F(ControlCharacters, OfDiff) {
  const std::string text = text_of({"diff", file.path(), other.path()}, 1);
  expect_in(text, " fl uid): variable p [2J: values: 1 of 4 differ");
}

TEST_F(ControlCharacters, OfValues) {
  expect_in(text_of({"values", file.path(), "-p", "1", "--variable", "1"}, 0), "node,x,y,z,p [2J\n");
}

TEST_F(ControlCharacters, OfLayoutAndCheck) {
  expect_in(text_of({"layout", file.path()}, 0), "  LS_Scalar:p\\x1b[2J\n");
  expect_in(text_of({"check", "--full", file.path()}, 1), "p\\x1b[2J");
}

TEST_F(ControlCharacters, OfErrors) {
  expect_in(text_of({"values", file.path(), "-p", "1", "--variable", "1", "-c", "1"}, 2),
            ": variable p [2J has no component y\n");
  expect_in(text_of({"info", "/no/such\x1b[2J.fld"}, 3), "fldtool: /no/such [2J.fld: FILE NOT FOUND : ");
}

TEST_F(ControlCharacters, StayInJson) {
  const auto json = nlohmann::json::parse(run_fldtool({"info", "--json", file.path()}).output);
  EXPECT_EQ(json["parts"][0]["name"], "&VFG_w\x1b[2Jall");
  EXPECT_EQ(json["variables"][0]["label"], "pressure\x07\x7f");
}

}  // namespace
