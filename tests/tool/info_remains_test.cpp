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
      json::array({{{"number", 1}, {"name", "p"}, {"label", "圧力"}, {"type", "scalar"}, {"per", "node"}},
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
  EXPECT_NE(text.output.find("     1  scalar  node     p                 圧力\n"), std::string::npos)
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
  EXPECT_EQ(
      result.output.find("file         " + path() + "\nsize         " + std::to_string(size) + " bytes\n"),
      0U);
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
  EXPECT_EQ(found["size"], size);
  EXPECT_EQ(found["complete"], false);
  EXPECT_EQ(found["ended_at"], end);
  EXPECT_EQ(found["entries"].back(),
            json({{"offset", nodes}, {"region_set", 0}, {"title", "LS_Nodes"}, {"whole", false}}));
  EXPECT_EQ(found["entries"][0]["region_set"], nullptr);
  EXPECT_EQ(found["entries"][0]["whole"], true);
  EXPECT_EQ(found["problems"].size(), 1U);
}

}  // namespace
