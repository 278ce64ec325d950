// fldtool diff: what it finds between two datasets and two steps, on good, broken and empty input.
#include "gtest/gtest.h"
#include <cmath>
#include <csignal>
#include <limits>
#include <string>
#include <variant>
#include <vector>

#include "nlohmann/json.hpp"
#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"
#include "tool/difference.h"

namespace {

using nlohmann::json;
using tool_test::kUndefinedValue;
using tool_test::one_of_each_file;
using tool_test::Result;
using tool_test::run_fldtool;

class Diff : public testing::Test {
 protected:
  std::string write(const testkit::File& file, const std::string& name) const {
    testkit::write_file(file, directory / name);
    return (directory / name).string();
  }

  // Expects these lines for the two files, and the exit status 1.
  void expect(const testkit::File& other, const std::vector<std::string>& lines,
              const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"diff", write(one_of_each_file(), "a.fld"), write(other, "b.fld")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Result result = run_fldtool(arguments);
    std::string wanted;
    for (const std::string& line : lines) wanted += line + "\n";
    wanted += lines.empty()       ? "no differences\n"
              : lines.size() == 1 ? "1 difference\n"
                                  : std::to_string(lines.size()) + " differences\n";
    EXPECT_EQ(result.output, wanted);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, lines.empty() ? 0 : 1);
  }

  static std::vector<double>& reals(testkit::File& file, const char* section, std::size_t block) {
    return std::get<testkit::Reals>(file.region_sets.front().section(section).blocks[block].data).values();
  }

  testkit::TemporaryDirectory directory;
};

TEST_F(Diff, NothingBetweenEqualDatasets) {
  expect(one_of_each_file(), {});
}

TEST_F(Diff, ValuesWhereTheyDifferFirstAndMost) {
  testkit::File other = one_of_each_file();
  std::vector<double>& p = reals(other, "LS_Scalar:p", 2);
  p[2] = 2.5;
  p[7] = 0;
  expect(other,
         {"step 0: part 5 (whole ALL_ELEMENTS): variable p: values: 2 of 11 differ; first node 3: 2 -> 2.5; "
          "most node 8: "
          "7 -> 0"},
         {"-p", "whole"});
}

TEST_F(Diff, WithinTolerance) {
  testkit::File other = one_of_each_file();
  std::vector<double>& p = reals(other, "LS_Scalar:p", 2);
  p[10] = 10.5;
  p[1] = 1.25;
  expect(other, {}, {"--abs", "0.5"});
  expect(other, {}, {"--rel", "0.2"});
  expect(
      other,
      {"step 0: part 5 (whole ALL_ELEMENTS): variable p: values: 1 of 11 differ; first node 11: 10 -> 10.5"},
      {"-p", "whole", "--abs", "0.25"});
  expect(other,
         {"step 0: part 5 (whole ALL_ELEMENTS): variable p: values: 1 of 11 differ; first node 2: 1 -> 1.25"},
         {"-p", "whole", "--rel", "0.1"});
}

TEST_F(Diff, UndefinedAndNotANumberEqualThemselvesOnly) {
  testkit::File other = one_of_each_file();
  reals(other, "LS_Scalar:p", 2)[1] = kUndefinedValue;
  reals(other, "LS_Scalar:p", 2)[2] = 100;
  expect(other,
         {"step 0: part 5 (whole ALL_ELEMENTS): variable p: values: 2 of 11 differ; first node 2: 1 -> "
          "undefined; most "
          "node 2: 1 -> undefined"},
         {"-p", "whole"});
  reals(other, "LS_Scalar:p", 2)[1] = std::nan("");
  reals(other, "LS_Scalar:p", 2)[2] = 2;
  expect(other,
         {"step 0: part 5 (whole ALL_ELEMENTS): variable p: values: 1 of 11 differ; first node 2: 1 -> NaN"},
         {"-p", "whole"});
  const std::string path = write(other, "nan.fld");
  EXPECT_EQ(run_fldtool({"diff", path, path}).status, 0);
}

TEST_F(Diff, InfiniteValuesEqualThemselvesOnly) {
  testkit::File other = one_of_each_file();
  reals(other, "LS_Scalar:p", 2)[3] = -std::numeric_limits<double>::infinity();
  for (const std::vector<std::string>& tolerance :
       {std::vector<std::string>{}, {"--rel", "0.5"}, {"--abs", "1000"}, {"--rel", "2", "--abs", "5"}}) {
    std::vector<std::string> options = {"-p", "whole"};
    options.insert(options.end(), tolerance.begin(), tolerance.end());
    expect(
        other,
        {"step 0: part 5 (whole ALL_ELEMENTS): variable p: values: 1 of 11 differ; first node 4: 3 -> -inf"},
        options);
  }
  const std::string path = write(other, "infinite.fld");
  EXPECT_EQ(run_fldtool({"diff", path, path, "--rel", "0.5"}).status, 0);
}

TEST(Tolerance, HoldsNothingInfinite) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  const tool::Tolerance tolerance{.absolute = 1000, .relative = 0.5};
  EXPECT_TRUE(tolerance.allows(2, 3));
  EXPECT_TRUE(tolerance.allows(kInfinite, kInfinite));
  EXPECT_FALSE(tolerance.allows(kInfinite, -kInfinite));
  EXPECT_FALSE(tolerance.allows(kInfinite, 3));
  EXPECT_FALSE(tolerance.allows(3, -kInfinite));
  const std::vector<float> a = {1, std::numeric_limits<float>::infinity(), 3};
  const std::vector<float> b = {1, 2, std::numeric_limits<float>::infinity()};
  EXPECT_EQ(tool::compare_values(a, b, tolerance).differing, 2U);
  EXPECT_EQ(tool::compare_values(a, a, tolerance).differing, 0U);
}

TEST_F(Diff, CoordinatesAndConnectivity) {
  testkit::File other = one_of_each_file();
  reals(other, "LS_Nodes", 1)[4] += 0.5;
  testkit::Block& nodes = other.region_sets.front().section("LS_Elements").blocks[3];
  std::vector<std::int32_t>& conn = std::get<testkit::Ints>(nodes.data).values();
  std::swap(conn[0], conn[1]);
  const Result result = run_fldtool({"diff", write(one_of_each_file(), "a.fld"), write(other, "b.fld"), "-p",
                                     "whole", "--variables", "p", "--json"});
  EXPECT_EQ(result.status, 1);
  const json found = json::parse(result.output);
  ASSERT_EQ(found["differences"].size(), 2U);
  const json& coordinates = found["differences"][0];
  EXPECT_EQ(coordinates["kind"], "coordinates");
  EXPECT_EQ(coordinates["component"], "x");
  EXPECT_EQ(coordinates["part"], "ALL_ELEMENTS");
  EXPECT_EQ(coordinates["list"]["differing"], 1);
  EXPECT_EQ(coordinates["list"]["first"]["row"], 5);
  EXPECT_EQ(coordinates["list"]["most"], coordinates["list"]["first"]);
  const json& connectivity = found["differences"][1];
  EXPECT_EQ(connectivity["kind"], "connectivity");
  EXPECT_EQ(connectivity["list"]["differing"], 2);
  EXPECT_EQ(connectivity["list"]["row"], "element");
  EXPECT_EQ(connectivity["list"]["first"]["entry"], 1);
  EXPECT_EQ(found["problems"], json::array());
  expect(other,
         {"step 0: part 5 (whole ALL_ELEMENTS): coordinates x: 1 of 11 differ; first node 5: 0 -> 0.5",
          "step 0: part 5 (whole ALL_ELEMENTS): connectivity hex: 2 of 8 differ; first element 4 entry 1: 1 "
          "-> 2"},
         {"-p", "whole", "--variables", "p"});
}

TEST_F(Diff, PartsAndVariablesThatOneLacks) {
  testkit::File other = one_of_each_file();
  testkit::RegionSet& set = other.region_sets.front();
  set.remove("LS_Scalar:p");
  set.add(testkit::scalar_section({.name = "q", .label = "", .values = std::vector<double>(11, 1.0)}));
  set.remove("LS_VolumeGeometry");
  const Result result = run_fldtool({"diff", write(one_of_each_file(), "a.fld"), write(other, "b.fld")});
  EXPECT_EQ(result.status, 1);
  for (const char* line :
       {"part 3 (volume lower): volume -> missing\n", "variable p: scalar per node -> missing\n",
        "variable q: missing -> scalar per node\n"}) {
    EXPECT_NE(result.output.find(line), std::string::npos) << line << result.output;
  }
}

TEST_F(Diff, CountsOfNodesAndElements) {
  const std::string one = write(testkit::file_of(testkit::one_tetrahedron()), "one.fld");
  const Result result = run_fldtool({"diff", write(one_of_each_file(), "a.fld"), one, "-p", "whole"});
  EXPECT_EQ(result.status, 1);
  for (const char* line : {"step 0: parts 5 and 3 (whole ALL_ELEMENTS): nodes: 11 -> 4\n",
                           "step 0: parts 5 and 3 (whole ALL_ELEMENTS): elements hex: 1 -> 0\n"}) {
    EXPECT_NE(result.output.find(line), std::string::npos) << line << result.output;
  }
}

// Two datasets of one series each: both readers keep their own files, steps and values.
class DiffOfSeries : public Diff {
 protected:
  DiffOfSeries() {
    for (int cycle = 0; cycle < 3; ++cycle) {
      testkit::File file = one_of_each_file();
      file.header.set_cycle(cycle, 0.5 * cycle);
      for (double& value : reals(file, "LS_Scalar:p", 2)) value += value < 1.0e29 ? 100.0 * cycle : 0.0;
      write(file, "s_" + std::to_string(cycle) + ".fld");
      if (cycle == 2) break;
      file.header.set_cycle(cycle, 0.25 * cycle);
      write(file, "t_" + std::to_string(cycle) + ".fld");
    }
  }

  std::string s() const { return (directory / "s_0.fld").string(); }
  std::string t() const { return (directory / "t_0.fld").string(); }
};

TEST_F(DiffOfSeries, AllStepsWithoutOptions) {
  const Result result = run_fldtool({"diff", s(), t()});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "steps: 3 -> 2\nstep 1: time: 0.5 -> 0.25\n2 differences\n");
}

TEST_F(DiffOfSeries, TwoStepsOfOneDataset) {
  const Result result = run_fldtool({"diff", s(), "--step", "1", "--step-b", "2", "-p", "whole"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            "steps 1 and 2: part 5 (whole ALL_ELEMENTS): variable p: values: 10 of 11 differ; first node 2: "
            "101 -> 201; "
            "most node 2: 101 -> 201\n1 difference\n");
  EXPECT_EQ(run_fldtool({"diff", s(), "--step", "2", "--step-b", "2"}).status, 0);
}

TEST_F(DiffOfSeries, OneStepOfBoth) {
  EXPECT_EQ(run_fldtool({"diff", s(), t(), "--step", "1"}).output, "no differences\n");
  EXPECT_EQ(run_fldtool({"diff", s(), t(), "--step-b", "1", "-p", "whole"}).status, 1);
}

TEST_F(DiffOfSeries, WrongUsage) {
  const auto expect_line = [](const std::vector<std::string>& arguments, const std::string& line) {
    const Result result = run_fldtool(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "fldtool: " + line + "\n");
    EXPECT_EQ(result.output, "");
  };
  expect_line({"diff"}, "FILE is required (see fldtool diff --help)");
  expect_line({"diff", s()},
              "a second file or --step-b is missing: what to compare with? (see fldtool diff --help)");
  expect_line({"diff", s(), t(), "--step", "2"}, t() + ": there is no step 2: the steps are 0 to 1");
  expect_line({"diff", s(), "--step", "3", "--step-b", "0"},
              s() + ": there is no step 3: the steps are 0 to 2");
  expect_line({"diff", s(), t(), "--abs", "-1"},
              "--abs: has to be a number of 0 or more (see fldtool diff --help)");
}

TEST_F(DiffOfSeries, AFileThatCannotBeRead) {
  testkit::write_bytes(directory / "empty.fld", "");
  const std::string empty = (directory / "empty.fld").string();
  for (const Result& result : {run_fldtool({"diff", s(), empty}), run_fldtool({"diff", empty, s()})}) {
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.errors, "fldtool: " + empty + ": This is not FLD file.\n");
    EXPECT_EQ(result.output, "");
  }
}

TEST_F(DiffOfSeries, AnAssertionNamesItsFile) {
  testkit::write_file(testkit::File{}, directory / "bare.fld");  // no region set at all
  const std::string bare = (directory / "bare.fld").string();
  for (const Result& result : {run_fldtool({"diff", s(), bare}), run_fldtool({"diff", bare, s()})}) {
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.errors.find("fldtool: " + bare + ": the reader gave up: "), 0U) << result.errors;
  }
}

TEST_F(DiffOfSeries, AStepThatCannotBeReadIsNotCompared) {
  testkit::File broken = one_of_each_file();
  broken.header.set_cycle(1, 0.25);
  broken.region_sets.front().section("LS_Elements").blocks[0] = testkit::Block::integer(-5);
  write(broken, "t_1.fld");
  const Result result = run_fldtool({"diff", s(), t(), "--step", "1"});
  EXPECT_EQ(result.status, 3);
  const std::string file = (directory / "t_1.fld").string();
  EXPECT_EQ(result.errors.find("fldtool: " + file + ": step 1: "), 0U) << result.errors;
  EXPECT_EQ(result.output, "no differences in what could be read\n");
  const json found = json::parse(run_fldtool({"diff", s(), t(), "--step", "1", "--json"}).output);
  EXPECT_EQ(found["problems"][0]["file"], file);
}

TEST_F(DiffOfSeries, AFullDiskAndATerminal) {
  EXPECT_EQ(run_fldtool({"diff", s(), t()}, "/dev/full").status, 4);
  const Result result = tool_test::run_fldtool_on_terminal({"diff", s(), t()});
  EXPECT_NE(result.errors.find("comparing: 0 of 40, 0 %"), std::string::npos) << result.errors;
}

}  // namespace
