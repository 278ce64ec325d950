// What `fldtool info` says by default, and of files that the reader refuses.
#include "gtest/gtest.h"
#include <string>

#include "nlohmann/json.hpp"
#include "testkit/file_writer.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;

TEST(InfoStructure, HasNoBoxesAndRanges) {
  const OneFile file(one_of_each_file());
  const json found = json::parse(run_fldtool({"info", "--json", file.path()}).output);
  EXPECT_EQ(found["parts"].size(), 5U);
  EXPECT_EQ(
      found["variables"],
      json::array({{{"number", 1},
                    {"name", "p"},
                    {"label", tool_test::kPressureShown},
                    {"type", "scalar"},
                    {"per", "node"}},
                   {{"number", 2}, {"name", "v"}, {"label", "Position"}, {"type", "vector"}, {"per", "node"}},
                   {{"number", 3},
                    {"name", "MatOfElements"},
                    {"label", ""},
                    {"type", "scalar"},
                    {"per", "element"}}}));
  for (const json& part : found["parts"]) EXPECT_FALSE(part.contains("bounds"));
  const Result text = run_fldtool({"info", file.path()});
  EXPECT_NE(text.output.find("     4  volume   upper                 6  1 tet, 1 pyramid\n"),
            std::string::npos)
      << text.output;
  EXPECT_NE(text.output.find(std::string("     1  scalar  node     p                 ") +
                             tool_test::kPressureShown + "\n"),
            std::string::npos)
      << text.output;
}

// A file that breaks off inside the coordinates.
class InfoRemains : public testing::Test {
 protected:
  InfoRemains() {
    testkit::Places places;
    const std::string bytes = testkit::to_bytes(one_of_each_file(), &places);
    nodes = places.of("LS_Nodes").offset;
    end = places.of("LS_Nodes").blocks[2] + 20;
    size = end + 10;
    testkit::write_bytes(directory / "cut.fld", bytes.substr(0, size));
  }

  std::string path() const { return (directory / "cut.fld").string(); }

  testkit::TemporaryDirectory directory;
  std::uint64_t nodes = 0;
  std::uint64_t end = 0;
  std::uint64_t size = 0;
};

TEST_F(InfoRemains, TellWhatIsThereAndWhereItEnded) {
  const Result result = run_fldtool({"info", path()});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors.find("fldtool: " + path() + ": "), 0U);
  const json found = json::parse(run_fldtool({"info", "--json", path()}).output);
  EXPECT_EQ(
      result.output.find("file         " + path() + "\nunreadable   " + found["reason"].get<std::string>() +
                         "\n\nwhat is there of " + path() + ", " + std::to_string(size) + " bytes\n"),
      0U)
      << result.output;
  for (const std::string& text :
       {std::string("    0  LS_Elements\n"), std::to_string(nodes) + "    0  LS_Nodes  (not whole)\n",
        std::to_string(end) + "       stopped here, 10 bytes before the end of the file\n",
        "error FLD-104 at " + std::to_string(end) + ": a record reaches beyond the end of the file"}) {
    EXPECT_NE(result.output.find(text), std::string::npos) << text << result.output;
  }
}

TEST(InfoRemainsOfAssertions, AreThereTheSame) {
  const OneFile file{testkit::File{}};  // no region set at all: the reader gives up
  const Result text = run_fldtool({"info", file.path()});
  EXPECT_EQ(text.status, 3);
  EXPECT_NE(text.output.find("OverlapEnd\n"), std::string::npos) << text.output;
  EXPECT_NE(text.output.find("problems\n  error FLD-207 at "), std::string::npos) << text.output;
  const Result result = run_fldtool({"info", "--json", file.path()});
  EXPECT_EQ(result.status, 3);
  const json found = json::parse(result.output);
  EXPECT_TRUE(found["reason"].get<std::string>().starts_with("the reader gave up: ")) << found["reason"];
}

TEST_F(InfoRemains, AreThereInJson) {
  const Result result = run_fldtool({"info", "--json", path()});
  EXPECT_EQ(result.status, 3);
  const json found = json::parse(result.output);
  EXPECT_EQ(found["file"], path());
  EXPECT_EQ(result.errors, "fldtool: " + path() + ": " + found["reason"].get<std::string>() + "\n");
  ASSERT_EQ(found["files"].size(), 1U);
  const json& there = found["files"][0];
  EXPECT_EQ(there["file"], path());
  EXPECT_EQ(there["size"], size);
  EXPECT_EQ(there["complete"], false);
  EXPECT_EQ(there["ended_at"], end);
  EXPECT_EQ(there["entries"].back(),
            json({{"offset", nodes}, {"region_set", 0}, {"title", "LS_Nodes"}, {"whole", false}}));
  EXPECT_EQ(there["entries"][0]["region_set"], nullptr);
  EXPECT_EQ(there["entries"][0]["whole"], true);
  EXPECT_EQ(there["problems"].size(), 1U);
}

// Another file of the series than the one that is given is the broken one.
class InfoRemainsOfSeries : public testing::Test {
 protected:
  InfoRemainsOfSeries() {
    testkit::File file = one_of_each_file();
    for (int cycle = 0; cycle < 3; ++cycle) {
      file.header.set_cycle(cycle, cycle);
      const std::string bytes = testkit::to_bytes(file);
      testkit::write_bytes(directory / ("s_" + std::to_string(cycle) + ".fld"),
                           cycle == 1 ? bytes.substr(0, bytes.size() / 2) : bytes);
      half = bytes.size() / 2;
    }
  }

  std::string path(int cycle) const { return (directory / ("s_" + std::to_string(cycle) + ".fld")).string(); }

  testkit::TemporaryDirectory directory;
  std::uint64_t half = 0;
};

TEST_F(InfoRemainsOfSeries, AreThoseOfTheBrokenFile) {
  const Result result = run_fldtool({"info", path(0)});
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(result.errors.starts_with("fldtool: " + path(1) + ": ")) << result.errors;
  EXPECT_NE(result.output.find("\nwhat is there of " + path(1) + ", " + std::to_string(half) + " bytes\n"),
            std::string::npos)
      << result.output;
  EXPECT_EQ(result.output.find("what is there of " + path(0)), std::string::npos) << result.output;
  EXPECT_EQ(result.output.find("end of the file\n\n"), std::string::npos) << result.output;
  const json found = json::parse(run_fldtool({"info", "--json", path(0)}).output);
  EXPECT_EQ(found["file"], path(0));
  ASSERT_EQ(found["files"].size(), 1U);
  EXPECT_EQ(found["files"][0]["file"], path(1));
  EXPECT_EQ(found["files"][0]["size"], half);
  EXPECT_EQ(found["files"][0]["complete"], false);
}

TEST_F(InfoRemainsOfSeries, TellTheGivenFileWhenThatIsTheBrokenOne) {
  const Result result = run_fldtool({"info", path(1)});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors.find("with errors"), std::string::npos) << result.errors;
  EXPECT_NE(result.output.find("\nwhat is there of " + path(1) + ", "), std::string::npos) << result.output;
}

TEST_F(InfoRemainsOfSeries, HoldAFileThatIsNoneOfOurs) {
  testkit::write_bytes(directory / "s_2.fld", "");
  const json found = json::parse(run_fldtool({"info", "--json", path(0)}).output);
  ASSERT_EQ(found["files"].size(), 2U);
  EXPECT_EQ(found["files"][1]["file"], path(2));
  EXPECT_EQ(found["files"][1]["size"], 0);
  EXPECT_EQ(found["files"][1]["entries"], json::array());
  EXPECT_EQ(found["files"][1]["complete"], false);
  ASSERT_EQ(found["files"][1]["problems"].size(), 1U);
  EXPECT_EQ(found["files"][1]["problems"][0].get<std::string>().find("error FLD-101 at 0: not an FLD file"),
            0U)
      << found["files"][1]["problems"];
  const Result text = run_fldtool({"info", path(0)});
  EXPECT_NE(text.output.find("\nwhat is there of " + path(2) + ", 0 bytes\nproblems\n  error FLD-101 at 0: "),
            std::string::npos)
      << text.output;
}

}  // namespace
