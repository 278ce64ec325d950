// The lists that choose steps, parts and variables: the same names and forms in every command.
#include "gtest/gtest.h"
#include <string>
#include <vector>

#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "tests/tool/npy_file.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"
#include "tool/number_range.h"
#include "tool/suggestions.h"

namespace {

using tool_test::Result;
using tool_test::run_fldtool;

using Names = std::vector<std::string>;

TEST(NumberRange, TakesEveryForm) {
  const auto expect = [](const std::string& text, int from, int to, int stride) {
    const auto range = tool::parse_range(text, 0, 120);
    ASSERT_TRUE(range) << text;
    EXPECT_EQ(range->from, from) << text;
    EXPECT_EQ(range->to, to) << text;
    EXPECT_EQ(range->stride, stride) << text;
  };
  expect("4", 4, 4, 1);
  expect("last", 120, 120, 1);
  expect("2-5", 2, 5, 1);
  expect("6-", 6, 120, 1);
  expect("6-last", 6, 120, 1);
  expect("0-100:10", 0, 100, 10);
  expect("0-:50", 0, 120, 50);
}

TEST(NumberRange, RejectsWhatIsNoneOrOutside) {
  for (const std::string text : {"", "-", "x", "-4", "5-2", "1-2-3", "4:2", "2-5:0", "2-5:", "2-5:-1", "1.5",
                                 "121", "0-121", "99999999999", "last-4", "2 -5"}) {
    EXPECT_FALSE(tool::parse_range(text, 0, 120)) << text;
  }
  EXPECT_FALSE(tool::parse_range("0", 1, 3));
  EXPECT_FALSE(tool::parse_range("1-", 1, 0));
}

TEST(Suggestions, NearestNamesFirst) {
  EXPECT_EQ(tool::nearest_names("sttas", {"info", "stats", "values"}), Names{"stats"});
  EXPECT_EQ(tool::nearest_names("velocity", {"Velocity_2", "Velocity", "Pressure"}),
            (Names{"Velocity", "Velocity_2"}));
  EXPECT_EQ(tool::nearest_names("Vel", {"Pressure", "Velocity"}), Names{"Velocity"});
  EXPECT_EQ(tool::nearest_names("blad_1", {"blade_1", "blade_2", "blade_3", "blade_4"}),
            (Names{"blade_1", "blade_2", "blade_3"}));
  EXPECT_EQ(tool::nearest_names("xyz", {"info", "stats", "p"}), Names{});
  EXPECT_EQ(tool::nearest_names("q", {"p", "Q"}), Names{"Q"});
  EXPECT_EQ(tool::nearest_names("", {"p"}), Names{});
  EXPECT_EQ(tool::suggestion("; ", "helo", {"help", "hello"}), "; did you mean 'help' or 'hello'?");
}

// Five steps with the same content.
class Choice : public testing::Test {
 protected:
  Choice() {
    testkit::File file = tool_test::one_of_each_file();
    for (int cycle = 0; cycle < 5; ++cycle) {
      file.header.set_cycle(cycle, cycle);
      testkit::write_file(file, directory / ("s_" + std::to_string(cycle) + ".fld"));
    }
  }

  std::string path() const { return (directory / "s_0.fld").string(); }

  static std::string output(const Names& arguments) {
    const Result result = run_fldtool(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    return result.output;
  }

  // The steps that stats prints for this list.
  std::string steps(const std::string& option, const std::string& list) const {
    const std::string text = output({"stats", path(), "-p", "1", "--variable", "p", option, list});
    std::string found;
    for (std::size_t at = text.find("step "); at != std::string::npos; at = text.find("\nstep ", at + 1))
      found += text[text.find("step ", at) + 5];
    return found;
  }

  testkit::TemporaryDirectory directory;
};

TEST_F(Choice, Steps) {
  EXPECT_EQ(steps("--steps", "0,2-3"), "023");
  EXPECT_EQ(steps("--step", "0, 4"), "04");
  EXPECT_EQ(steps("--steps", "3-"), "34");
  EXPECT_EQ(steps("--steps", "0-4:2"), "024");
  EXPECT_EQ(steps("--step", "last"), "4");
  EXPECT_EQ(steps("--step", "all"), "01234");
}

TEST_F(Choice, BlanksAfterCommasOfUnquotedLists) {
  EXPECT_EQ(output({"stats", path(), "--steps", "0,", "2-3,", "last", "-p", "1,", "2", "--variable", "p"}),
            output({"stats", path(), "--steps", "0,2,3,4", "-p", "1,2", "--variable", "p"}));
  EXPECT_EQ(output({"stats", "--steps=0,", "1", path(), "-p", "1"}),
            output({"stats", path(), "--steps", "0,1", "-p", "1"}));
}

TEST_F(Choice, EveryNameInEveryCommand) {
  for (const std::string part : {"-p", "--part", "--parts"}) {
    for (const std::string variable : {"--variable", "--variables"}) {
      for (const std::string step : {"--step", "--steps"}) {
        for (const std::string command : {"info", "stats", "values"}) {
          EXPECT_EQ(run_fldtool({command, path(), part, "2", variable, "p", step, "1"}).status, 0)
              << command << part << variable << step;
        }
        EXPECT_EQ(run_fldtool({"diff", path(), path(), part, "2", variable, "p", step, "1"}).status, 0);
      }
    }
  }
}

TEST_F(Choice, PartsByRangesNamesAndPatterns) {
  const auto parts = [&](const std::string& list) {
    const std::string text = output({"values", path(), "--parts", list, "--variable", "p", "--rows", "1"});
    std::string found;
    for (std::size_t at = text.find('\n'); at + 1 < text.size(); at = text.find('\n', at + 1))
      found += text[at + 1];
    return found;
  };
  EXPECT_EQ(parts("1-3"), "123");
  EXPECT_EQ(parts("4-"), "45");
  EXPECT_EQ(parts("1-:2"), "135");
  EXPECT_EQ(parts("volumes"), "34");
  EXPECT_EQ(parts("*er,@between"), "234");
  EXPECT_EQ(parts("upper, lower"), "34");
  EXPECT_EQ(parts("1,last"), "15");
}

TEST_F(Choice, ANameWithACommaIsOneItem) {
  testkit::File file = tool_test::one_of_each_file();
  file.region_sets.front().add(
      testkit::scalar_section({.name = "a, b", .label = "", .values = std::vector<double>(11, 7.0)}));
  const tool_test::OneFile other(file);
  EXPECT_EQ(output({"values", other.path(), "-p", "2", "--variable", "a, b", "--rows", "1"}),
            "node,x,y,z,\"a, b\"\n1,1,0,0,7\n");
}

TEST_F(Choice, ValuesOfSeveralVariablesSideBySide) {
  EXPECT_EQ(output({"values", path(), "-p", "2", "--variables", "p,v.y", "--rows", "2-3"}),
            "node,x,y,z,p,v_y\n2,1,1,0,2,1\n3,1,0,1,5,0\n");
  EXPECT_EQ(output({"values", path(), "-p", "2", "--variable", "v.magnitude", "--rows", "1"}),
            "node,x,y,z,v_magnitude\n1,1,0,0,1\n");
  EXPECT_EQ(output({"values", path(), "-p", "2", "--variable", "2.z", "--rows", "4"}),
            "node,x,y,z,v_z\n4,1,1,1,1\n");
  EXPECT_EQ(output({"values", path(), "-p", "2", "--variable", "p,v", "-c", "z", "--rows", "4"}),
            "node,x,y,z,p,v_z\n4,1,1,1,6,1\n");
}

TEST_F(Choice, ValuesOfSeveralStepsAndParts) {
  EXPECT_EQ(output({"values", path(), "-p", "2", "--variable", "p", "--steps", "0,last", "--rows", "2"}),
            "step,node,x,y,z,p\n0,2,1,1,0,2\n4,2,1,1,0,2\n");
  const std::string csv =
      output({"values", path(), "-p", "2,upper", "--variable", "p", "--steps", "0-1", "--rows", "1"});
  EXPECT_EQ(csv,
            "step,part,name,node,x,y,z,p\n0,2,@between,1,1,0,0,1\n0,4,upper,1,0,0,1,4\n"
            "1,2,@between,1,1,0,0,1\n1,4,upper,1,0,0,1,4\n");
  const tool_test::NpyArray array =
      tool_test::read_npy(output({"values", path(), "-p", "2,upper", "--variable", "p", "--steps", "0-1",
                                  "--rows", "1", "--format", "npy", "-o", "-"}));
  ASSERT_EQ(array.rows, 4U);
  ASSERT_EQ(array.columns, 6U);
  EXPECT_EQ(array.at(3, 0), 1.0F);
  EXPECT_EQ(array.at(3, 1), 4.0F);
  EXPECT_EQ(array.at(3, 5), 4.0F);
}

TEST_F(Choice, AStepWithoutTheVariableHasNoValues) {
  testkit::File file = tool_test::one_of_each_file();
  file.header.set_cycle(3, 3.0);
  file.region_sets.front().remove("LS_Scalar:p");
  testkit::write_file(file, directory / "s_3.fld");
  EXPECT_EQ(output({"values", path(), "-p", "2", "--variable", "p", "--steps", "2-3", "--rows", "2"}),
            "step,node,x,y,z,p\n2,2,1,1,0,2\n3,2,1,1,0,\n");
}

TEST_F(Choice, VariablesPerNodeAndPerElementDoNotMix) {
  const Result result = run_fldtool({"values", path(), "-p", "3", "--variables", "p,MatOfElements"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "fldtool: " + path() +
                               ": variables p and MatOfElements do not fit into one table: one has values "
                               "per node, the other per element\n");
}

TEST_F(Choice, DiffPairsSteps) {
  EXPECT_EQ(run_fldtool({"diff", path(), "--step", "0-1", "--step-b", "2-3"}).output, "no differences\n");
  EXPECT_EQ(run_fldtool({"diff", path(), "--step", "0", "--step-b", "1-"}).output, "no differences\n");
  const Result result = run_fldtool({"diff", path(), "--steps", "0-2", "--steps-b", "3-4"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "fldtool: --step chooses 3 steps and --step-b 2: choose as many, or one\n");
}

TEST_F(Choice, UnknownNamesGetTheNearestOnes) {
  const Result part = run_fldtool({"stats", path(), "--parts", "uper"});
  EXPECT_EQ(part.status, 2);
  EXPECT_EQ(part.errors, "fldtool: " + path() +
                             ": there is no part 'uper': the parts are 1 to 5; did you mean 'upper'?\n");
  const Result variable = run_fldtool({"stats", path(), "--variables", "matofelements"});
  EXPECT_EQ(variable.status, 2);
  EXPECT_EQ(variable.errors,
            "fldtool: " + path() +
                ": there is no variable 'matofelements': the variables are 1 to 3; did you mean "
                "'MatOfElements'?\n");
}

}  // namespace
