// Files that cannot be read: exit status 3 and one line that tells the file and the reader's reason, whatever
// the bytes.
#include "gtest/gtest.h"
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "testkit/file_writer.h"
#include "testkit/small_meshes.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::Result;
using tool_test::run_fldtool;

class UnreadableFiles : public testing::Test {
 protected:
  // A file of these bytes.
  std::string file(const std::string& name, const std::string& bytes) const {
    const auto path = directory / name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path.string();
  }

  // Every command that opens a dataset fails alike.
  static void expect_reason(const std::string& path, const std::string& reason) {
    const std::string line = "fldtool: " + path + ": " + reason;
    for (const Result& result :
         {run_fldtool({"stats", path}), run_fldtool({"values", path, "-p", "1", "--variable", "1"}),
          run_fldtool({"diff", path, path}), run_fldtool({"integrate", path})}) {
      EXPECT_EQ(result.status, 3);
      EXPECT_EQ(result.errors, line + "\n");
      EXPECT_EQ(result.output, "");
    }
    // The summary tells what is still there, if it is an FLD file at all.
    const Result info = run_fldtool({"info", path});
    EXPECT_EQ(info.status, 3);
    EXPECT_EQ(info.errors, line + "\n");
    EXPECT_TRUE(info.output.empty() || info.output.starts_with("file         " + path + "\n")) << info.output;
  }

  testkit::TemporaryDirectory directory;
};

TEST_F(UnreadableFiles, AFileThatIsNotThere) {
  const std::string path = (directory / "none.fld").string();
  expect_reason(path, "FILE NOT FOUND : " + path);
}

// The bytes of this path are other characters in Shift_JIS, in which the names in files are.
TEST_F(UnreadableFiles, AFileWhosePathIsUtf8) {
  const std::string path = (directory / "none_ポンプ室.fld").string();
  expect_reason(path, "FILE NOT FOUND : " + path);
}

TEST_F(UnreadableFiles, AnEmptyFile) {
  expect_reason(file("empty.fld", ""), "This is not FLD file.");
}

TEST_F(UnreadableFiles, AnotherKindOfFile) {
  expect_reason(file("text.fld", "These are not the bytes of a result file, but there are enough of them."),
                "This is not FLD file.");
}

TEST_F(UnreadableFiles, AnotherExtension) {
  expect_reason(file("case.dat", testkit::to_bytes(tool_test::one_of_each_file())),
                "error : invalid file extension.");
}

TEST_F(UnreadableFiles, ADirectory) {
  std::filesystem::create_directory(directory / "folder.fld");
  const std::string path = (directory / "folder.fld").string();
  expect_reason(path, "FAILED TO OPEN " + path);
}

TEST_F(UnreadableFiles, AnotherVersionOfTheFormat) {
  testkit::File other = tool_test::one_of_each_file();
  other.version = 3;
  expect_reason(file("other.fld", testkit::to_bytes(other)), "FLD FILE VERSION HAS TO BE 4.");
}

TEST_F(UnreadableFiles, AFileWithoutGeometry) {
  testkit::File without = tool_test::one_of_each_file();
  without.region_sets.front().remove("LS_Nodes");
  expect_reason(file("without.fld", testkit::to_bytes(without)),
                "NOT FOUND GEOMETRY DATA IN THE FIRST FLD FILE");
}

TEST_F(UnreadableFiles, AFileWithoutElements) {
  testkit::File without = tool_test::one_of_each_file();
  without.region_sets.front().section("LS_Elements") = testkit::elements_section({});
  const Result result = run_fldtool({"info", file("without.fld", testkit::to_bytes(without))});
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.errors.find("error : failed to allocate memory for geometry."), std::string::npos)
      << result.errors;
}

TEST_F(UnreadableFiles, AFileThatMakesTheReaderGiveUp) {
  testkit::File without;  // no region set at all
  const std::string path = file("without.fld", testkit::to_bytes(without));
  for (const std::string command : {"info", "stats"}) {
    const Result result = run_fldtool({command, path});
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(result.errors.starts_with("fldtool: " + path + ": the reader gave up: ")) << result.errors;
    EXPECT_TRUE(result.errors.ends_with("Assertion `!m_overlap.empty()' failed.\n")) << result.errors;
    EXPECT_EQ(result.errors.find("fldtool: ", 1), std::string::npos) << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
  }
  const Result verbose = run_fldtool({"stats", path, "--verbose"});
  EXPECT_EQ(verbose.status, 3);
  EXPECT_NE(verbose.errors.find("Assertion `!m_overlap.empty()' failed.\nfldtool: " + path + ": "),
            std::string::npos)
      << verbose.errors;
}

TEST_F(UnreadableFiles, AFileThatBreaksOffAnywhere) {
  const std::string whole = testkit::to_bytes(tool_test::one_of_each_file());
  for (std::size_t size = 0; size < whole.size(); size += 97) {
    const std::string path = file("cut.fld", whole.substr(0, size));
    const Result result = run_fldtool({"info", path});
    EXPECT_EQ(result.status, 3) << "after " << size << " bytes";
    EXPECT_TRUE(result.errors.starts_with("fldtool: " + path + ": ")) << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
  }
}

TEST_F(UnreadableFiles, AQuantityThatCannotBeReadLeavesTheRest) {
  // The option takes the places of the first file's sections for the second, which is laid out in another
  // way.
  testkit::File first = tool_test::one_of_each_file();
  first.header.set_cycle(1, 1.0);
  testkit::File second = tool_test::one_of_each_file();
  second.header.set_cycle(2, 2.0);
  second.region_sets.front().remove("LS_MatOfElements");
  testkit::write_file(first, directory / "case_1.fld");
  testkit::write_file(second, directory / "case_2.fld");
  const std::string path = (directory / "case_1.fld").string();
  EXPECT_EQ(run_fldtool({"info", path, "--step", "1"}).status, 0);
  const Result result = run_fldtool({"info", path, "--step", "1", "--simplify", "--ranges"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors, "fldtool: " + (directory / "case_2.fld").string() +
                               ": step 1: variable p: error : failed to seek fld file.\n");
  EXPECT_NE(result.output.find("failed: error : failed to seek fld file."), std::string::npos)
      << result.output;
  EXPECT_NE(result.output.find("MatOfElements"), std::string::npos) << result.output;
  const Result values =
      run_fldtool({"values", path, "--step", "1", "--simplify", "-p", "1", "--variable", "p"});
  EXPECT_EQ(values.status, 3);
  EXPECT_EQ(values.errors, result.errors);
}

TEST_F(UnreadableFiles, AStepWhoseGeometryCannotBeRead) {
  testkit::File first = tool_test::one_of_each_file();
  first.header.set_cycle(1, 1.0);
  testkit::File second = first;
  second.header.set_cycle(2, 2.0);
  second.region_sets.front().section("LS_Elements").blocks[0] = testkit::Block::integer(-5);
  testkit::write_file(first, directory / "case_1.fld");
  testkit::write_file(second, directory / "case_2.fld");
  const std::string path = (directory / "case_1.fld").string();
  const Result at_step = run_fldtool({"values", path, "--step", "1", "-p", "1", "--variable", "p"});
  EXPECT_EQ(at_step.status, 3);
  EXPECT_NE(
      at_step.errors.find("FAILED TO READ GEOMETRY DATA IN " + (directory / "case_2.fld").string() + "."),
      std::string::npos)
      << at_step.errors;
  // The summary of the first step is still there.
  const Result summary = run_fldtool({"info", path, "--ranges"});
  EXPECT_EQ(summary.status, 3);
  EXPECT_NE(summary.errors.find("step 1: "), std::string::npos) << summary.errors;
  EXPECT_NE(summary.output.find("variables at step 0"), std::string::npos) << summary.output;
}

// A damaged or missing file of a series is named, whichever file the command was given.
TEST_F(UnreadableFiles, TheFileOfASeriesIsNamed) {
  testkit::File file = tool_test::one_of_each_file();
  for (int cycle = 0; cycle < 3; ++cycle) {
    file.header.set_cycle(cycle, cycle);
    testkit::write_file(file, directory / ("case_" + std::to_string(cycle) + ".fld"));
  }
  const std::string given = (directory / "case_0.fld").string();
  const std::string cut = (directory / "case_1.fld").string();
  std::filesystem::resize_file(cut, std::filesystem::file_size(cut) / 2);
  for (const std::string command : {"stats", "info"}) {
    const Result result = run_fldtool({command, given});
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(result.errors.starts_with("fldtool: " + cut + ": ")) << result.errors;
  }
}

TEST_F(UnreadableFiles, AMissingFirstFileIsNotTheOneGiven) {
  testkit::File file = tool_test::one_of_each_file();
  file.region_sets.front().remove("LS_Nodes");
  file.region_sets.front().remove("LS_Elements");
  for (int cycle = 1; cycle < 3; ++cycle) {
    file.header.set_cycle(cycle, cycle);
    testkit::write_file(file, directory / ("case_" + std::to_string(cycle) + ".fld"));
  }
  const Result result = run_fldtool({"stats", (directory / "case_2.fld").string()});
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(result.errors.starts_with("fldtool: " + (directory / "case_1.fld").string() + ": "))
      << result.errors;
}

}  // namespace
