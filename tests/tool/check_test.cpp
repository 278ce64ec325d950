// fldtool check: what it prints and its exit status, on good, broken and empty input.
#include "gtest/gtest.h"
#include <algorithm>
#include <filesystem>
#include <span>
#include <string>
#include <sys/resource.h>
#include <vector>

#include "nlohmann/json.hpp"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;

// A file whose elements have 23 nodes that are not there.
testkit::File with_wrong_nodes() {
  testkit::File file = one_of_each_file();
  testkit::Block& conn = file.region_sets.front().section("LS_Elements").blocks[3];
  conn.data = testkit::Ints(std::vector<std::int32_t>(23, 99));
  return file;
}

TEST(CheckCommand, AGoodFile) {
  const OneFile file(one_of_each_file());
  for (const auto& options : {std::vector<std::string>{}, {"--full"}, {"--full", "--alone"}}) {
    std::vector<std::string> arguments = {"check", file.path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Result result = run_fldtool(arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, file.path() + ": no findings\n");
    EXPECT_EQ(result.errors, "");
  }
}

TEST(CheckCommand, NotesAreShownWhenAskedForAndAreNothingBad) {
  testkit::Places places;
  testkit::to_bytes(one_of_each_file(), &places);
  const OneFile file(one_of_each_file());
  const Result result = run_fldtool({"check", "--full", "--notes", file.path()});
  EXPECT_EQ(result.status, 0);
  const std::string offset = std::to_string(places.of("LS_Scalar:p").blocks[2] + 24);
  EXPECT_EQ(result.output,
            file.path() + ": note FLD-704 at " + offset +
                ": undefined values (region set 0, LS_Scalar:p, values): wanted defined values, "
                "found 1 of 11\n" +
                file.path() + ": 1 note\n");
}

TEST(CheckCommand, ABrokenFile) {
  testkit::Places places;
  const std::string bytes = testkit::to_bytes(one_of_each_file(), &places);
  const testkit::TemporaryDirectory directory;
  const std::string path = (directory / "cut.fld").string();
  const std::uint64_t place = places.of("LS_Nodes").blocks[1] + 20;
  testkit::write_bytes(path, bytes.substr(0, place + 10));
  const Result result = run_fldtool({"check", path});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, path + ": error FLD-104 at " + std::to_string(place) +
                               ": a record reaches beyond the end of the file (region set 0, LS_Nodes, x): "
                               "wanted 52 bytes, found 10 bytes\n" +
                               path + ": 1 error; nothing behind offset " + std::to_string(place) + " of " +
                               std::to_string(place + 10) + " was looked at\n");
  EXPECT_EQ(result.errors, "");
}

TEST(CheckCommand, TheContentOnlyWithFull) {
  const OneFile file(with_wrong_nodes());
  EXPECT_EQ(run_fldtool({"check", file.path()}).status, 0);
  EXPECT_EQ(run_fldtool({"check", "--full", file.path()}).status, 1);
}

TEST(CheckCommand, LimitsWhatIsShownOfOneKind) {
  const OneFile file(with_wrong_nodes());
  const std::string usual = run_fldtool({"check", "--full", file.path()}).output;
  EXPECT_NE(usual.find(file.path() + ": FLD-503: 3 more of 23\n" + file.path() + ": 23 errors\n"),
            std::string::npos)
      << usual;
  const std::string few = run_fldtool({"check", "--full", "--limit", "1", file.path()}).output;
  EXPECT_NE(few.find(": FLD-503: 22 more of 23\n"), std::string::npos) << few;
  EXPECT_EQ(run_fldtool({"check", "--limit", "0", file.path()}).status, 2);
}

TEST(CheckCommand, NotAnFldFile) {
  const testkit::TemporaryDirectory directory;
  const std::string empty = (directory / "empty.fld").string();
  testkit::write_bytes(empty, "");
  const Result result = run_fldtool({"check", empty});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, empty + ": error FLD-101 at 0: not an FLD file: wanted VTRL-FLD, found \"\"\n" +
                               empty + ": 1 error\n");
}

TEST(CheckCommand, AFileThatCannotBeReadAmongOthers) {
  const OneFile good(one_of_each_file());
  const std::string folder = good.directory().path().string();
  const Result result = run_fldtool({"check", folder, good.path(), folder + "/none.fld"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, folder + ": cannot be read: is a directory\n" + good.path() + ": no findings\n" +
                               folder + "/none.fld: cannot be read: No such file or directory\n");
}

TEST(CheckCommand, TheWholeSeries) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = one_of_each_file();
  for (const int cycle : {10, 20}) {
    file.header.set_cycle(cycle, 0.1 * cycle);
    testkit::write_file(file, directory / ("case_" + std::to_string(cycle) + ".fld"));
  }
  const std::string first = (directory / "case_10.fld").string();
  const std::string second = (directory / "case_20.fld").string();
  EXPECT_EQ(run_fldtool({"check", "--full", second}).output,
            first + ": no findings\n" + second + ": no findings\n");
  EXPECT_EQ(run_fldtool({"check", "--full", "--alone", second}).output, second + ": no findings\n");
  EXPECT_EQ(run_fldtool({"check", second}).output, second + ": no findings\n");
}

TEST(CheckCommand, Json) {
  testkit::Places places;
  testkit::File wrong = one_of_each_file();
  wrong.region_sets.front().section("LS_VolumeGeometry").blocks[4] = testkit::Block::integers({0, 4});
  testkit::to_bytes(wrong, &places);
  const OneFile file(wrong);
  const Result result = run_fldtool({"check", "--full", "--json", file.path(), "/no/such/file"});
  EXPECT_EQ(result.status, 3);
  const json answer = json::parse(result.output);
  EXPECT_EQ(answer["full"], true);
  ASSERT_EQ(answer["files"].size(), 2U);
  const json& report = answer["files"][0];
  EXPECT_EQ(report["file"], file.path());
  EXPECT_EQ(report["readable"], true);
  EXPECT_EQ(report["reason"], json());
  EXPECT_EQ(report["size"], places.size);
  EXPECT_EQ(report["complete"], true);
  EXPECT_EQ(report["ended_at"], places.size);
  EXPECT_EQ(report["errors"], 1);
  EXPECT_EQ(report["warnings"], 0);
  EXPECT_EQ(report["notes"], 1);
  EXPECT_EQ(report["left_out"], json::object());
  EXPECT_EQ(report["findings"][0], (json{{"number", "FLD-508"},
                                         {"severity", "error"},
                                         {"offset", places.of("LS_VolumeGeometry").blocks[4] + 28},
                                         {"text", "a region's element out of range"},
                                         {"place", "region set 0, LS_VolumeGeometry, elements of region 0"},
                                         {"wanted", "0 to 3"},
                                         {"found", "4"}}));
  EXPECT_EQ(answer["files"][1]["readable"], false);
  EXPECT_EQ(answer["files"][1]["reason"], "No such file or directory");
}

TEST(CheckCommand, JsonOfLimits) {
  const OneFile file(with_wrong_nodes());
  const json answer =
      json::parse(run_fldtool({"check", "--full", "--json", "--limit", "2", file.path()}).output);
  EXPECT_EQ(answer["files"][0]["left_out"], (json{{"FLD-503", 21}}));
}

TEST(CheckCommand, TextsOfTheFileAreShownAsUtf8) {
  testkit::File wrong = one_of_each_file();
  wrong.region_sets.front().add(
      testkit::scalar_section({.name = tool_test::kPressureBytes, .values = {1.0, 2.0}}));
  const OneFile file(wrong);
  const Result result = run_fldtool({"check", "--full", file.path()});
  EXPECT_NE(result.output.find(std::string("LS_Scalar:") + tool_test::kPressureShown +
                               ", number of values): wanted 11, found 2\n"),
            std::string::npos)
      << result.output;
}

TEST(CheckCommand, PathsInFindingsStayAsTheyAre) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = one_of_each_file();
  file.header.set_cycle(10, 1.0);
  for (const char* name : {"ポンプ室_010.fld", "ポンプ室_10.fld"})
    testkit::write_file(file, directory / name);
  const std::string first = (directory / "ポンプ室_010.fld").string();
  const Result text = run_fldtool({"check", "--full", first});
  EXPECT_NE(text.output.find("found 10 as in " + first + "\n"), std::string::npos) << text.output;
  const json answer = json::parse(run_fldtool({"check", "--full", "--json", first}).output);
  EXPECT_EQ(answer["files"][1]["findings"][0]["found"], "10 as in " + first);
}

// Ten million tetrahedra; nearly all of the file is holes.
testkit::File large_file() {
  constexpr std::int64_t kElements = 10000000;
  constexpr std::int64_t kNodes = 2000000;
  testkit::Mesh mesh;
  for (testkit::Reals* axis : {&mesh.nodes.x, &mesh.nodes.y, &mesh.nodes.z})
    *axis = testkit::Reals::hole(kNodes);
  mesh.elements.type = testkit::Ints(kElements, [](std::int64_t, std::span<std::int32_t> out) {
    std::fill(out.begin(), out.end(), testkit::kTetrahedron);
  });
  mesh.elements.conn = testkit::Ints::hole(4 * kElements);
  mesh.materials = testkit::Ints::hole(kElements);
  mesh.volumes = {{.name = "fluid", .elements = testkit::Ints::hole(kElements)}};
  testkit::File file = testkit::file_of(mesh);
  file.region_sets.front().add(
      testkit::scalar_section({.name = "p", .values = testkit::Reals::hole(kNodes)}));
  return file;
}

// Of fldtool with its libraries, in KiB: the most of all runs so far.
long peak_memory() {
  rusage usage = {};
  EXPECT_EQ(getrusage(RUSAGE_CHILDREN, &usage), 0);
  return usage.ru_maxrss;
}

TEST(CheckCommand, MemoryDoesNotFollowTheSize) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer has memory of its own";
#endif
  const OneFile small(one_of_each_file());
  EXPECT_EQ(run_fldtool({"check", "--full", small.path()}).status, 0);
  const long before = peak_memory();
  const OneFile file(large_file());
  EXPECT_GT(std::filesystem::file_size(file.path()), 300000000U);
  const Result result = run_fldtool({"check", "--full", file.path()});
  EXPECT_EQ(result.status, 0) << result.output;
  EXPECT_LT(peak_memory() - before, 24 * 1024);
}

TEST(CheckCommand, PathsOfAnyBytes) {
  for (const std::string name : {"\xe5\xa4\x96.fld", "\x8a\x4f\xff.fld"}) {
    const OneFile file(one_of_each_file(), name);
    EXPECT_EQ(run_fldtool({"check", file.path()}).output, file.path() + ": no findings\n");
    const json answer = json::parse(run_fldtool({"check", "--json", file.path()}).output);
    EXPECT_EQ(answer["files"][0]["readable"], true);
    EXPECT_EQ(json::parse(run_fldtool({"layout", "--json", file.path()}).output)["complete"], true);
  }
}

}  // namespace
