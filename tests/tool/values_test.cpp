// `fldtool values`: what is written, as comma-separated lines and as a NumPy file.
#include "gtest/gtest.h"
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/testkit/emulator.h"
#include "tests/tool/npy_file.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::Result;
using tool_test::run_fldtool;

class Values : public testing::Test {
 protected:
  Values() : dataset(tool_test::one_of_each_file()) {}

  // The lines that values prints for a part and variable with these options.
  std::vector<std::string> lines(const std::string& part, const std::string& variable,
                                 const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"values", dataset.path(), "--part", part, "--variable", variable};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Result result = run_fldtool(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    std::istringstream text(result.output);
    std::vector<std::string> found;
    for (std::string line; std::getline(text, line);) found.push_back(line);
    return found;
  }

  std::string read_file(const std::string& name) const {
    std::ifstream file(dataset.directory() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  using Lines = std::vector<std::string>;
  tool_test::OneFile dataset;
};

TEST_F(Values, ScalarPerNode) {
  EXPECT_EQ(lines("@between", "p"),
            (Lines{"node,x,y,z,p", "1,1,0,0,1", "2,1,1,0,2", "3,1,0,1,5", "4,1,1,1,6"}));
}

TEST_F(Values, UndefinedValuesAreEmpty) {
  EXPECT_EQ(lines("5", "1")[1], "1,0,0,0,");
}

TEST_F(Values, VectorWithAllComponents) {
  EXPECT_EQ(lines("@between", "v"), (Lines{"node,x,y,z,v_x,v_y,v_z", "1,1,0,0,1,0,0", "2,1,1,0,1,1,0",
                                           "3,1,0,1,1,0,1", "4,1,1,1,1,1,1"}));
}

TEST_F(Values, OneComponentOfAVector) {
  const Lines found = lines("@between", "v", {"--component", "2"});
  EXPECT_EQ(found[0], "node,x,y,z,v_z");
  EXPECT_EQ(found[3], "3,1,0,1,1");
}

TEST_F(Values, PerElementAtTheElementsCentres) {
  // Tetrahedron, pyramid, prism, hexahedron: the order of the shapes, not that of the file.
  const Lines found = lines("ALL_ELEMENTS", "MatOfElements");
  ASSERT_EQ(found.size(), 5U);
  EXPECT_EQ(found[0], "element,x,y,z,MatOfElements");
  EXPECT_EQ(found[1], "1,1.125,0.5,1.25,2");
  EXPECT_EQ(found[2], "2,0.5,0.5,1.2,2");
  EXPECT_EQ(found[3], "3,1.3333334,0.5,0.5,1");
  EXPECT_EQ(found[4], "4,0.5,0.5,0.5,1");
}

TEST_F(Values, AFaceThatBelongsToNoElementHasNoMaterial) {
  EXPECT_EQ(lines("@between", "MatOfElements"), (Lines{"element,x,y,z,MatOfElements", "1,1,0.5,0.5,"}));
}

TEST_F(Values, PartsAreFoundByNamesInUtf8AndInTheFilesBytes) {
  const Lines by_number = lines("1", "p");
  EXPECT_EQ(by_number.size(), 12U);
  if (!kUnderEmulator) {
    EXPECT_EQ(lines("外", "p"), by_number);
  }
  EXPECT_EQ(lines(tool_test::kOutsideBytes, "p"), by_number);
}

TEST_F(Values, SomeRowsKeepTheirNumbers) {
  EXPECT_EQ(lines("@between", "p", {"--rows", "2-3"}), (Lines{"node,x,y,z,p", "2,1,1,0,2", "3,1,0,1,5"}));
  EXPECT_EQ(lines("@between", "p", {"--rows", "4"}), (Lines{"node,x,y,z,p", "4,1,1,1,6"}));
  EXPECT_EQ(lines("@between", "p", {"--rows", "1-4"}), lines("@between", "p"));
  EXPECT_EQ(lines("ALL_ELEMENTS", "MatOfElements", {"--rows", "3-4"}),
            (Lines{"element,x,y,z,MatOfElements", "3,1.3333334,0.5,0.5,1", "4,0.5,0.5,0.5,1"}));
}

TEST_F(Values, SomeRowsOfANumPyFile) {
  const std::string path = (dataset.directory() / "values.npy").string();
  lines("@between", "p", {"-o", path, "--rows", "2-3"});
  const tool_test::NpyArray array = tool_test::read_npy(read_file("values.npy"));
  ASSERT_EQ(array.rows, 2U);
  ASSERT_EQ(array.columns, 4U);
  EXPECT_EQ(array.at(0, 1), 1.0F);
  EXPECT_EQ(array.at(0, 3), 2.0F);
  EXPECT_EQ(array.at(1, 2), 1.0F);
  EXPECT_EQ(array.at(1, 3), 5.0F);
}

TEST_F(Values, RowsAcrossTheBlocksOfWriting) {
  const tool_test::OneFile box(testkit::box_file({.nx = 20, .ny = 20, .nz = 20}));
  const Result all = run_fldtool({"values", box.path(), "-p", "ALL_ELEMENTS", "--variable", "1"});
  const Result some =
      run_fldtool({"values", box.path(), "-p", "ALL_ELEMENTS", "--variable", "1", "--rows", "4000-9000"});
  const std::size_t from = all.output.find("\n4000,") + 1;
  const std::size_t to = all.output.find("\n9001,") + 1;
  EXPECT_EQ(some.output, "node,x,y,z,scalar_1\n" + all.output.substr(from, to - from));
}

TEST_F(Values, RejectsRowsThatAreNone) {
  for (const std::string rows :
       {"0", "5", "0-2", "3-5", "3-2", "5-", "1-4:2", "-2", "-", "x", "1-2-3", " 1", "1,2"}) {
    const Result result =
        run_fldtool({"values", dataset.path(), "-p", "@between", "--variable", "p", "--rows=" + rows});
    EXPECT_EQ(result.status, 2) << rows;
    EXPECT_EQ(result.errors,
              "fldtool: " + dataset.path() + ": there are no rows '" + rows + "': the rows are 1 to 4\n");
    EXPECT_EQ(result.output, "");
  }
}

TEST_F(Values, TellsProgressOnATerminal) {
  const Result result = tool_test::run_fldtool_on_terminal(
      {"values", dataset.path(), "-p", "@between", "--variable", "p", "--rows", "1-3"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "node,x,y,z,p\n1,1,0,0,1\n2,1,1,0,2\n3,1,0,1,5\n");
  EXPECT_EQ(result.errors.find("\r\x1b[Krows: 0 of 3, 0 %\r\x1b[K"), 0U) << result.errors;
}

TEST_F(Values, ToAFile) {
  const std::string path = (dataset.directory() / "values.csv").string();
  EXPECT_TRUE(lines("@between", "p", {"--output", path}).empty());
  EXPECT_EQ(read_file("values.csv"), "node,x,y,z,p\n1,1,0,0,1\n2,1,1,0,2\n3,1,0,1,5\n4,1,1,1,6\n");
}

TEST_F(Values, AFileThatCannotBeWrittenLeavesTheOldOne) {
  const std::string path = (dataset.directory() / "values.csv").string();
  std::ofstream(path) << "old";
  // The program's files may not grow, and no signal tells it.
  const std::string command = "trap '' XFSZ; ulimit -f 0; " FLDTOOL " values " + dataset.path() +
                              " -p 5 --variable p -o " + path + " 2>&1 | grep -q 'File too large'";
  EXPECT_EQ(std::system(command.c_str()), 0);
  EXPECT_EQ(read_file("values.csv"), "old");
  // The dataset and the old file.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dataset.directory().path()), {}), 2);
}

TEST_F(Values, ADeviceStaysOne) {
  EXPECT_TRUE(lines("@between", "p", {"-o", "/dev/null"}).empty());
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
  const Result full =
      run_fldtool({"values", dataset.path(), "-p", "5", "--variable", "p", "-o", "/dev/full"});
  EXPECT_EQ(full.status, 4);
  EXPECT_EQ(full.errors, "fldtool: /dev/full: cannot write: No space left on device\n");
}

TEST_F(Values, ANumPyFileHoldsTheSameColumns) {
  const std::string path = (dataset.directory() / "values.npy").string();
  EXPECT_TRUE(lines("5", "p", {"-o", path}).empty());
  const tool_test::NpyArray array = tool_test::read_npy(read_file("values.npy"));
  ASSERT_EQ(array.rows, 11U);
  ASSERT_EQ(array.columns, 4U);
  EXPECT_TRUE(std::isnan(array.at(0, 3)));
  EXPECT_EQ(array.at(8, 0), 2.0F);
  EXPECT_EQ(array.at(8, 1), 0.5F);
  EXPECT_EQ(array.at(8, 2), 0.0F);
  EXPECT_EQ(array.at(8, 3), 8.0F);
}

TEST_F(Values, ANumPyFileOfAVectorToTheStandardOutput) {
  const Result result =
      run_fldtool({"values", dataset.path(), "-p", "2", "--variable", "v", "--format", "npy", "-o", "-"});
  EXPECT_EQ(result.status, 0) << result.errors;
  const tool_test::NpyArray array = tool_test::read_npy(result.output);
  EXPECT_EQ(array.rows, 4U);
  EXPECT_EQ(array.columns, 6U);
  for (std::size_t row = 0; row < array.rows; ++row) {
    for (std::size_t axis = 0; axis < 3; ++axis) EXPECT_EQ(array.at(row, axis), array.at(row, 3 + axis));
  }
}

TEST_F(Values, TheFormatCanBeToldAgainstTheName) {
  const std::string path = (dataset.directory() / "odd.npy").string();
  lines("2", "p", {"-o", path, "--format", "csv"});
  EXPECT_TRUE(read_file("odd.npy").starts_with("node,x,y,z,p\n"));
}

TEST_F(Values, APartWithoutNodesGivesTheHeaderAlone) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.push_back({.name = "empty"});
  testkit::File file = testkit::file_of(mesh);
  file.region_sets.front().add(
      testkit::scalar_section({.name = "a,\"b\"", .label = "odd", .values = {1, 2, 3, 4}}));
  const tool_test::OneFile other(file);
  const Result csv = run_fldtool({"values", other.path(), "-p", "empty", "--variable", "1"});
  EXPECT_EQ(csv.status, 0) << csv.errors;
  EXPECT_EQ(csv.output, "node,x,y,z,\"a,\"\"b\"\"\"\n");
  const Result npy =
      run_fldtool({"values", other.path(), "-p", "empty", "--variable", "1", "--format", "npy", "-o", "-"});
  EXPECT_EQ(tool_test::read_npy(npy.output).rows, 0U);
  const Result none = run_fldtool({"values", other.path(), "-p", "empty", "--variable", "1", "--rows", "1"});
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.errors, "fldtool: " + other.path() + ": there are no rows '1': the part has none\n");
}

TEST_F(Values, StopsWhenItIsInterrupted) {
  const tool_test::OneFile box(testkit::box_file({.nx = 30, .ny = 30, .nz = 30}));
  for (const std::string format : {"csv", "npy"}) {
    const Result result = tool_test::run_fldtool_and_interrupt(
        {"values", box.path(), "-p", "ALL_ELEMENTS", "--variable", "1", "--format", format, "-o", "-"},
        SIGINT);
    EXPECT_EQ(result.status, 130) << format;
    EXPECT_EQ(result.errors, "fldtool: interrupted\n");
    EXPECT_NE(result.output, "");
  }
}

TEST_F(Values, AQuantityThatTheStepLacks) {
  testkit::File file = tool_test::one_of_each_file();
  file.header.set_cycle(1, 1.0);
  testkit::write_file(file, dataset.directory() / "s_1.fld");
  file.header.set_cycle(2, 2.0);
  file.region_sets.front().remove("LS_Scalar:p");
  testkit::write_file(file, dataset.directory() / "s_2.fld");
  const std::string path = (dataset.directory() / "s_1.fld").string();
  const Result result = run_fldtool({"values", path, "-p", "2", "--variable", "p", "--step", "1"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "fldtool: " + path + ": variable p is not there for part 2 at step 1\n");
}

TEST_F(Values, AReaderThatOffersNone) {
  const Result result =
      run_fldtool({"values", "no_values.fld", "-p", "1", "--variable", "P", "--plugin", FAKE_READER});
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: no_values.fld: the reader offers no values of variable P\n");
  EXPECT_EQ(result.output, "");
}

TEST_F(Values, TwoRegionSetsEachGiveTheirOwn) {
  testkit::File file;
  for (int set = 0; set < 2; ++set) {
    testkit::RegionSet& region_set = file.add_region_set();
    region_set.add(testkit::mesh_sections(testkit::one_tetrahedron()));
    const double base = 10.0 * set;
    region_set.add(testkit::scalar_section(
        {.name = "p", .label = "pressure", .values = {base, base + 1, base + 2, base + 3}}));
  }
  const tool_test::OneFile overset(file);
  const Result both = run_fldtool({"values", overset.path(), "-p", "ALL_ELEMENTS", "--variable", "p"});
  EXPECT_EQ(both.output,
            "part,name,node,x,y,z,p\n5,ALL_ELEMENTS,1,0,0,0,0\n5,ALL_ELEMENTS,2,1,0,0,1\n"
            "5,ALL_ELEMENTS,3,0,1,0,2\n5,ALL_ELEMENTS,4,0,0,1,3\n6,ALL_ELEMENTS,1,0,0,0,10\n"
            "6,ALL_ELEMENTS,2,1,0,0,11\n6,ALL_ELEMENTS,3,0,1,0,12\n6,ALL_ELEMENTS,4,0,0,1,13\n");
  const Result second = run_fldtool({"values", overset.path(), "-p", "6", "--variable", "p"});
  EXPECT_EQ(second.output, "node,x,y,z,p\n1,0,0,0,10\n2,1,0,0,11\n3,0,1,0,12\n4,0,0,1,13\n");
  // The ranges of info go over both.
  const Result info = run_fldtool({"info", overset.path(), "--ranges"});
  EXPECT_NE(info.output.find("0 to 13\n"), std::string::npos) << info.output;
}

}  // namespace
