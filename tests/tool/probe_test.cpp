// fldtool probe: values at points, along lines and of tables, on good, broken and empty input.
#include "gtest/gtest.h"
#include <array>
#include <cmath>
#include <csignal>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "nlohmann/json.hpp"
#include "samples/channel.h"
#include "samples/overset.h"
#include "samples/sector.h"
#include "samples/tank.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/json_schema.h"
#include "tests/tool/npy_file.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;

json probe(const std::string& path, std::vector<std::string> options) {
  return tool_test::checked_json("probe", path, std::move(options));
}

// In one_of_each_file() p is the number of the node, undefined at node 0, and v the position.
TEST(Probe, CommaSeparated) {
  const OneFile file(one_of_each_file());
  const Result result = run_fldtool({"probe", file.path(), "--at", "1.5,0.5,0.5", "--at", "5,0,0", "--at",
                                     "0.25,0.5,0.75", "--variables", "p,v,v.magnitude,MatOfElements"});
  EXPECT_EQ(result.status, 0) << result.errors;
  // In the prism halfway up, between the nodes 1, 2, 8 and 5, 6, 9: the mean of a side's middle and an edge.
  EXPECT_EQ(result.output,
            "step,time,point,x,y,z,found,region_set,element,p,v_x,v_y,v_z,v_magnitude,MatOfElements\n"
            "0,0,1,1.5,0.5,0.5,inside,0,3,6,1.5,0.5,0.5,1.6583124,1\n"
            "0,0,2,5,0,0,outside,,,,,,,,\n"
            "0,0,3,0.25,0.5,0.75,inside,0,4,,0.25,0.5,0.75,0.9354144,1\n");
}

TEST(Probe, AlongALine) {
  const OneFile file(one_of_each_file());
  const json found =
      probe(file.path(), {"--line", "0,0.5,0.5:2,0.5,0.5", "--points", "5", "--variable", "v.x"});
  ASSERT_EQ(found["points"].size(), 5U);
  const json& answers = found["steps"][0]["answers"];
  for (std::size_t i = 0; i < 5; ++i) {
    const double x = 0.5 * static_cast<double>(i);
    EXPECT_EQ(found["points"][i]["at"], json({x, 0.5, 0.5}));
    EXPECT_EQ(found["points"][i]["distance"], x);
    EXPECT_EQ(answers[i]["found"], "inside");
    EXPECT_NEAR(answers[i]["values"][0].get<double>(), x, 1e-6);
  }
  EXPECT_EQ(found["columns"], json::array({{{"name", "v_x"}, {"label", "Position"}}}));
}

TEST(Probe, ThePointsOfATable) {
  const OneFile file(one_of_each_file());
  const auto table = [&](const std::string& text) {
    const auto path = file.directory() / "points.csv";
    std::ofstream(path) << text;
    return run_fldtool({"probe", file.path(), "--at-file", path.string(), "--variable", "v.z"});
  };
  const std::string rows = "0,0,1,0.5,0.5,0.25,inside,0,4,0.25\n0,0,2,1.5,0.5,0.9,inside,0,3,0.9\n";
  const std::string header = "step,time,point,x,y,z,found,region_set,element,v_z\n";
  EXPECT_EQ(table("0.5,0.5,0.25\n1.5,0.5,0.9\n").output, header + rows);
  EXPECT_EQ(table("name; Z; X;Y\r\na;0.25;0.5;0.5\r\n\r\nb; 0.9; 1.5;0.5\r\n").output, header + rows);
  EXPECT_EQ(table("0.5 0.5  0.25 7\n 1.5 .5 9e-1").output, header + rows);
  EXPECT_EQ(table("\xef\xbb\xbfx,y,z\r\n0.5,0.5,0.25\r\n1.5,0.5,0.9\r\n").output, header + rows);
  EXPECT_EQ(table("\xef\xbb\xbf\n\n0.5,0.5,0.25\n \t\r\n\"1.5\",\"0.5\",\"0.9\"").output, header + rows);
  const std::string path = (file.directory() / "points.csv").string();
  EXPECT_EQ(table("x,y,z\r\n\r\n").errors, "fldtool: " + path + ": there is no point in it\n");
  EXPECT_EQ(table("x;y;z\n1;2\n").errors, "fldtool: " + path + ": line 2: '' is not a number\n");
  EXPECT_EQ(table("1,1e400,2\n").errors, "fldtool: " + path + ": line 1: '1e400' is not a number\n");
  EXPECT_EQ(table("").errors, "fldtool: " + path + ": there is no point in it\n");
  EXPECT_EQ(table("x,y\n1,2\n").errors,
            "fldtool: " + path + ": its first line names no columns x, y and z\n");
  EXPECT_EQ(table("1,2,3\n4,5\n").errors, "fldtool: " + path + ": line 2: '' is not a number\n");
  const Result wrong = table("x,y,z\n1,2,inf\n");
  EXPECT_EQ(wrong.errors, "fldtool: " + path + ": line 2: 'inf' is not a number\n");
  EXPECT_EQ(wrong.status, 4);
  const Result missing = run_fldtool({"probe", file.path(), "--at-file", path + ".not"});
  EXPECT_EQ(missing.errors, "fldtool: " + path + ".not: cannot read: No such file or directory\n");
}

TEST(Probe, IntoANumpyFile) {
  const OneFile file(one_of_each_file());
  const std::string path = (file.directory() / "out.npy").string();
  const Result result =
      run_fldtool({"probe", file.path(), "--at", "5,5,5", "--line", "0.5,0.5,0.5:1.5,0.5,0.5", "--points",
                   "2", "--variable", "v", "-o", path});
  EXPECT_EQ(result.status, 0) << result.errors;
  std::ifstream stream(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  EXPECT_NE(bytes.find("'descr': '<f8', 'fortran_order': False, 'shape': (3, 11)"), std::string::npos);
  const std::size_t header = 10 + static_cast<std::size_t>(static_cast<unsigned char>(bytes[8]));
  ASSERT_EQ(bytes.size(), header + 3 * 11 * 8);
  EXPECT_EQ(header % 64, 0U);
}

TEST(Probe, LinearFieldsAreExact) {
  const testkit::TemporaryDirectory directory;
  const testkit::Mesh mesh = samples::channel::mesh();
  testkit::File described = testkit::file_of(mesh);
  const auto linear = [](double x, double y, double z) { return 3 + 2 * x - 5 * y + 7 * z; };
  described.region_sets.front().add(
      testkit::scalar_section({.name = "p", .values = testkit::at_nodes(mesh.nodes, linear)}));
  const OneFile file(described);
  const json found =
      probe(file.path(), {"--line", "-0.6,-0.37,0.01:1.8,0.39,0.3", "--points", "301", "--variable", "p"});
  for (std::size_t i = 0; i < 301; ++i) {
    const json& answer = found["steps"][0]["answers"][i];
    ASSERT_EQ(answer["found"], "inside") << i;
    const auto at = found["points"][i]["at"].get<std::array<double, 3>>();
    const double expected = linear(at[0], at[1], at[2]);
    EXPECT_NEAR(answer["values"][0].get<double>(), expected, 1e-6 * std::abs(expected) + 1e-6) << i;
  }
  const json obstacle = probe(file.path(), {"--at", "0,0,0.16", "--variable", "p"});
  EXPECT_EQ(obstacle["steps"][0]["answers"][0]["found"], "outside");
}

TEST(Probe, CylindricalMeshesAreProbedAtCartesianPlaces) {
  const testkit::TemporaryDirectory directory;
  const std::string file = samples::sector::write(directory.path()).file.string();
  const json found = probe(file, {"--at", "0.35,0.25,0.2", "--at", "0.45,0.5,0.2", "--at", "-0.4,0.1,0.2",
                                  "--variable", "Pressure"})["steps"][0]["answers"];
  EXPECT_NEAR(found[0]["values"][0].get<double>(), samples::sector::pressure(0.35, 0.25, 0.2), 0.3);
  EXPECT_EQ(found[1]["found"], "outside");  // beyond the casing
  EXPECT_EQ(found[2]["found"], "outside");
}

TEST(Probe, OversetMeshesNameTheRegionSet) {
  const testkit::TemporaryDirectory directory;
  const std::string file = samples::overset::write(directory.path()).file.string();
  const json answers =
      probe(file, {"--at", "0.3,0.1,0.07", "--at", "1.5,0.5,0.07", "--at", "0.1,0,0.07", "--at", "9,9,9",
                   "--variables", "Pressure,@BNODE"})["steps"][0]["answers"];
  EXPECT_EQ(answers[0]["region_set"], 1);
  EXPECT_NEAR(answers[0]["values"][0].get<double>(), samples::overset::pressure(0.3, 0.1, 0.07), 1);
  EXPECT_EQ(answers[1]["region_set"], 0);
  // Inside the cylinder there is the background alone, and it is blanked there.
  EXPECT_EQ(answers[2]["found"], "blanked");
  EXPECT_EQ(answers[2]["region_set"], nullptr);
  EXPECT_EQ(answers[2]["values"], json({nullptr, nullptr}));
  EXPECT_EQ(answers[3]["found"], "outside");
}

TEST(Probe, FollowsAMovingMesh) {
  const testkit::TemporaryDirectory directory;
  const std::string file = samples::tank::write(directory.path()).file.string();
  const std::vector<std::string> options = {"--at", "0.1,0.02,0.2", "--variable", "Pressure"};
  const json found = probe(file, options);
  ASSERT_EQ(found["steps"].size(), 8U);
  for (int step = 0; step < 8; ++step) {
    const json& at = found["steps"][static_cast<std::size_t>(step)];
    const double expected = samples::tank::pressure(0.1, 0.02, 0.2, samples::tank::time_of_step(step));
    EXPECT_NEAR(at["answers"][0]["values"][0].get<double>(), expected, 0.01 * expected) << step;
  }
  std::vector<std::string> one = options;
  one.insert(one.end(), {"--jobs", "1"});
  EXPECT_EQ(probe(file, one), found);
}

TEST(Probe, DerivedVariables) {
  const OneFile file(one_of_each_file());
  const json answers =
      probe(file.path(), {"--at", "1.4,0.5,0.25", "--variables", "grad(v.x),mag(v)"})["steps"][0]["answers"];
  EXPECT_NEAR(answers[0]["values"][0].get<double>(), 1, 1e-5);
  EXPECT_NEAR(answers[0]["values"][1].get<double>(), 0, 1e-5);
  EXPECT_EQ(answers[0]["values"].size(), 4U);
}

// While it reads a table of points, whose last line would be an error.
TEST(Probe, StopsWhenItIsInterrupted) {
  const OneFile file(one_of_each_file());
  const std::string table = (file.directory() / "long.csv").string();
  std::ofstream lines(table);
  lines << "x,y,z\n";
  for (int i = 0; i < 400'000; ++i) lines << i << ",0.5,0.5\n";
  lines << "x\n";
  lines.close();
  const auto reads_it = [&](pid_t process) { return tool_test::has_open(process, table); };
  const Result result =
      tool_test::run_fldtool_and_interrupt_when({"probe", file.path(), "--at-file", table}, reads_it, SIGINT);
  EXPECT_EQ(result.status, 130);
  EXPECT_EQ(result.errors, "fldtool: interrupted\n");
  EXPECT_EQ(result.output, "");
}

TEST(Probe, WrongArgumentsAreExplained) {
  const OneFile file(one_of_each_file());
  const auto expect_error = [&](std::vector<std::string> options, const std::string& message) {
    options.insert(options.begin(), {"probe", file.path()});
    tool_test::expect_error(options, 2, message);
  };
  expect_error({}, "there is no point: give --at, --line or --at-file");
  expect_error({"--at", "1,2"}, "--at: '1,2' is not a point: write X,Y,Z");
  expect_error({"--at", "1,2,x"}, "--at: '1,2,x' is not a point: write X,Y,Z");
  expect_error({"--line", "1,2,3"}, "--line: '1,2,3' is not two points: write X,Y,Z:X,Y,Z");
  expect_error({"--at", "0,0,0", "--variable", "u"},
               file.path() + ": there is no variable 'u': the variables are 1 to 3");
  expect_error({"--at", "0,0,0", "--step", "4"}, file.path() + ": there is no step 4: the steps are 0 to 0");
  expect_error({"--at", "0,0,0", "-o", "x.txt"},
               "x.txt: cannot write '.txt' files: the name has to end in .csv or .json or .npy");
}

TEST(Probe, AStepThatCannotBeReadIsLeftOut) {
  const testkit::TemporaryDirectory directory;
  const std::string path = tool_test::write_series_with_a_broken_step(directory.path());
  const Result result = run_fldtool({"probe", "--json", path, "--at", "0.5,0.5,0.5", "--variable", "v"});
  EXPECT_EQ(result.status, 3);
  const json found = json::parse(result.output);
  EXPECT_EQ(tool_test::schema_complaints("probe.schema.json", found), "");
  ASSERT_EQ(found["steps"].size(), 2U);
  EXPECT_EQ(found["steps"][1]["answers"], found["steps"][0]["answers"]);
  ASSERT_EQ(found["problems"].size(), 1U);
  EXPECT_EQ(result.errors, "fldtool: " + found["problems"][0].get<std::string>() + "\n");
}

}  // namespace
