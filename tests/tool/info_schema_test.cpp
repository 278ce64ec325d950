// `fldtool info --json` follows docs/info.schema.json, whatever it is about.
#include "gtest/gtest.h"
#include <string>
#include <vector>

#include "nlohmann/json.hpp"
#include "samples/samples.h"
#include "testkit/file_writer.h"
#include "tests/tool/json_schema.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::run_fldtool;
using tool_test::schema_complaints;

constexpr char kSchema[] = "info.schema.json";

class InfoSchema : public testing::Test {
 protected:
  void expect_valid(const std::string& path) {
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{}, {"--ranges"}, {"--all-steps"}, {"--no-groups"}}) {
      std::vector<std::string> arguments = {"info", "--json", path};
      arguments.insert(arguments.end(), options.begin(), options.end());
      EXPECT_EQ(schema_complaints(kSchema, json::parse(run_fldtool(arguments).output)), "") << path;
    }
  }
};

TEST_F(InfoSchema, TheSamples) {
  const testkit::TemporaryDirectory directory;
  for (const samples::SampleInfo& sample : samples::write_samples(directory.path())) {
    expect_valid(sample.file.string());
  }
}

TEST_F(InfoSchema, SmallAndBrokenFiles) {
  expect_valid(OneFile(one_of_each_file()).path());
  testkit::File without = one_of_each_file();
  without.region_sets.front().remove("LS_Nodes");
  expect_valid(OneFile(without).path());
  expect_valid(OneFile(testkit::File{}).path());  // the reader gives up
}

TEST_F(InfoSchema, SeriesOfDifferentAndBrokenFiles) {
  const testkit::TemporaryDirectory directory;
  const std::string path = tool_test::write_series_that_loses_a_part(directory.path());
  expect_valid(path);
  testkit::write_bytes(directory / "s_2.fld", "");
  testkit::write_bytes(directory / "s_3.fld", testkit::to_bytes(one_of_each_file()).substr(0, 1000));
  EXPECT_EQ(json::parse(run_fldtool({"info", "--json", path}).output)["files"].size(), 2U);
  expect_valid(path);
}

TEST_F(InfoSchema, RefusesOtherDocuments) {
  const OneFile file(one_of_each_file());
  const json good = json::parse(run_fldtool({"info", "--json", "--ranges", file.path()}).output);
  ASSERT_EQ(schema_complaints(kSchema, good), "");
  json without = good;
  without.erase("steps");
  EXPECT_NE(schema_complaints(kSchema, without), "");
  json more = good;
  more["parts"][0]["colour"] = "red";
  EXPECT_NE(schema_complaints(kSchema, more), "");
  json negative = good;
  negative["parts"][0]["nodes"] = -1;
  EXPECT_NE(schema_complaints(kSchema, negative), "");
  json flat = good;
  flat["parts"][0]["bounds"][0].erase(0);
  EXPECT_NE(schema_complaints(kSchema, flat), "");
}

}  // namespace
