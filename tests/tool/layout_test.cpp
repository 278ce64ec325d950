// fldtool layout: what it prints and its exit status, on good, broken and empty input.
#include "gtest/gtest.h"
#include <string>

#include "nlohmann/json.hpp"
#include "testkit/file_writer.h"
#include "tests/testkit/emulator.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;

TEST(LayoutCommand, ASmallFile) {
  testkit::File file;
  file.header.items.clear();
  file.header.set_bias(1);
  const OneFile written(file);
  const Result result = run_fldtool({"layout", written.path()});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(
      result.output,
      "      offset      length  what                                         width       count\n"
      "           0          16  identification\n"
      "          16          12  version                                                         = 4\n"
      "          28          40  Bias\n"
      "          68          20    index base                                     4           1  1 record\n"
      "          88          12      record                                       4           1  = 1\n"
      "         100          20    end rule\n"
      "         120          40  HeaderDataEnd\n"
      "         160          40  OverlapEnd\n"
      "         200              end\n");
}

TEST(LayoutCommand, PicksByTitle) {
  const OneFile file(one_of_each_file());
  const std::string output =
      run_fldtool({"layout", file.path(), "--title", "LS_Scalar:*", "--title", "Cycle"}).output;
  EXPECT_NE(output.find("  Cycle\n"), std::string::npos) << output;
  EXPECT_NE(output.find("  LS_Scalar:p\n"), std::string::npos) << output;
  EXPECT_NE(output.find(std::string("= \"") + tool_test::kPressureShown + "\"\n"), std::string::npos)
      << output;
  EXPECT_EQ(output.find("LS_Nodes"), std::string::npos) << output;
}

TEST(LayoutCommand, PicksByTitleInUtf8) {
  testkit::File file = one_of_each_file();
  file.region_sets.front().section("LS_Scalar:p").title =
      std::string("LS_Scalar:") + tool_test::kPressureBytes;
  const OneFile written(file);
  std::vector<std::string> titles = {"LS_Scalar:\x88\xb3\x97\xcd"};
  if (!kUnderEmulator) titles.insert(titles.end(), {"LS_Scalar:圧力", "LS_Scalar:*力"});
  for (const std::string& title : titles) {
    const Result result = run_fldtool({"layout", written.path(), "--title", title});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_NE(result.output.find(std::string("  LS_Scalar:") + tool_test::kPressureShown + "\n"),
              std::string::npos)
        << result.output;
    EXPECT_EQ(result.output.find("LS_Vector"), std::string::npos) << result.output;
  }
}

TEST(LayoutCommand, ATitleThatIsNotThere) {
  const OneFile file(one_of_each_file());
  for (const std::string option : {"--title=LS_Nodes", "--json"}) {
    const Result result = run_fldtool(
        {"layout", file.path(), option, "--title", "LS_Node", "--title", "Cycle", "--title", "圧力"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "fldtool: " + file.path() + ": there is no title 'LS_Node', '圧力'\n");
    EXPECT_NE(result.output.find("Cycle"), std::string::npos) << result.output;
  }
}

TEST(LayoutCommand, ABrokenFile) {
  testkit::Places places;
  const std::string bytes = testkit::to_bytes(one_of_each_file(), &places);
  const testkit::TemporaryDirectory directory;
  const std::string path = (directory / "cut.fld").string();
  const std::uint64_t place = places.of("LS_Nodes").offset;
  testkit::write_bytes(path, bytes.substr(0, place + 10));
  const Result result = run_fldtool({"layout", path});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "");
  const std::string number = std::to_string(place);
  const std::string blanks(12 - number.size(), ' ');
  const std::string end =
      blanks + number +
      "          !!  FLD-104 a record reaches beyond the end of the file: wanted 40 bytes, "
      "found 10 bytes\n" +
      blanks + number + "              stopped here, 10 bytes before the end of the file\n";
  ASSERT_GT(result.output.size(), end.size());
  EXPECT_EQ(result.output.substr(result.output.size() - end.size()), end);
  EXPECT_NE(result.output.find("LS_MatOfElements"), std::string::npos);
}

TEST(LayoutCommand, Json) {
  const std::string bytes = testkit::to_bytes(one_of_each_file());
  const OneFile file(one_of_each_file());
  const Result result = run_fldtool({"layout", file.path(), "--json"});
  EXPECT_EQ(result.status, 0);
  const json layout = json::parse(result.output);
  EXPECT_EQ(layout["file"], file.path());
  EXPECT_EQ(layout["size"], bytes.size());
  EXPECT_EQ(layout["complete"], true);
  EXPECT_EQ(layout["ended_at"], bytes.size());
  std::uint64_t end = 0;
  for (const json& entry : layout["entries"]) {
    EXPECT_EQ(entry["offset"], end);
    end += entry["length"].get<std::uint64_t>();
  }
  EXPECT_EQ(end, bytes.size());
  const json& entries = layout["entries"];
  EXPECT_EQ(entries[0], (json{{"type", "identification"}, {"offset", 0}, {"length", 16}}));
  EXPECT_EQ(entries[1], (json{{"type", "version"}, {"offset", 16}, {"length", 12}, {"value", 4}}));
}

TEST(LayoutCommand, JsonOfASection) {
  testkit::Places places;
  testkit::to_bytes(one_of_each_file(), &places);
  const std::uint64_t place = places.of("LS_VolumeGeometry").offset;
  const OneFile file(one_of_each_file());
  const json entries =
      json::parse(run_fldtool({"layout", file.path(), "--json", "--title", "LS_Vol*"}).output)["entries"];
  EXPECT_EQ(entries[0], (json{{"type", "title"},
                              {"offset", place},
                              {"length", 40},
                              {"title", "LS_VolumeGeometry"},
                              {"region_set", 0}}));
  // Behind title, leading integer, number of regions and length of names: the first name.
  EXPECT_EQ(entries[7], (json{{"type", "rule"},
                              {"offset", place + 136},
                              {"length", 20},
                              {"what", "name"},
                              {"region", 0},
                              {"width", 1},
                              {"per_record", 5},
                              {"records", 1},
                              {"count", 5}}));
  EXPECT_EQ(entries[8], (json{{"type", "record"},
                              {"offset", place + 156},
                              {"length", 13},
                              {"width", 1},
                              {"count", 5},
                              {"value", "lower"}}));
}

TEST(LayoutCommand, JsonOfDamage) {
  testkit::File broken = one_of_each_file();
  broken.closer.reset();
  const OneFile file(broken);
  const Result result = run_fldtool({"layout", file.path(), "--json"});
  EXPECT_EQ(result.status, 1);
  const json layout = json::parse(result.output);
  EXPECT_EQ(layout["entries"].back()["number"], "FLD-210");
  EXPECT_EQ(layout["entries"].back()["type"], "problem");
}

TEST(LayoutCommand, FilesThatCannotBeRead) {
  const testkit::TemporaryDirectory directory;
  const std::string empty = (directory / "empty.fld").string();
  testkit::write_bytes(empty, "");
  const Result result = run_fldtool({"layout", empty});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors, "fldtool: " + empty + ": is not an FLD file\n");
  EXPECT_EQ(result.output, "");
  const std::string none = (directory / "none.fld").string();
  EXPECT_EQ(run_fldtool({"layout", none}).errors, "fldtool: " + none + ": No such file or directory\n");
  EXPECT_EQ(run_fldtool({"layout", none}).status, 3);
}

}  // namespace
