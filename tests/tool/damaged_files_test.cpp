// info, check and convert on damaged files: they end by themselves, with a documented status and one line of
// error.
#include "gtest/gtest.h"
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "testkit/byte_sink.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/damage.h"
#include "tests/faults/fault_datasets.h"
#include "tests/faults/sweep_stride.h"
#include "tests/tool/run_fldtool.h"

namespace {

using tool_test::Result;
using tool_test::run_fldtool;

class HostileFileTool : public testing::Test {
 protected:
  void expect_good_ends(const faults::Damages& damages, std::size_t partial,
                        const std::string& name = "case.fld") {
    const std::string path = (directory_ / name).string();
    for (std::size_t number = 0; number < damages.count();
         number += faults::sweep_stride(partial, faults::kAboutATenth)) {
      SCOPED_TRACE(damages.describe(number));
      testkit::write_bytes(path, damages.damaged(number));
      ++tried_;
      expect_good_end({"info", path}, {0, 3});
      // What it says of the file goes to the standard output.
      const Result check = run_fldtool({"check", "--full", path});
      EXPECT_TRUE(check.status == 0 || check.status == 1 || check.status == 3) << check.status;
      EXPECT_EQ(check.errors, "");
#ifdef FLDTOOL_HAS_VTK
      const std::filesystem::path out = directory_ / "out";
      expect_good_end({"convert", path, (out / "case.pvd").string()}, {0, 3});
      std::filesystem::remove_all(out);
#endif
    }
  }

  void TearDown() override {
    std::cout << tried_ << " cases\n";
  }

  testkit::TemporaryDirectory directory_;
  testkit::Places places_;

 private:
  static void expect_good_end(const std::vector<std::string>& arguments, const std::set<int>& statuses) {
    const Result result = run_fldtool(arguments);
    EXPECT_TRUE(statuses.contains(result.status)) << arguments[0] << ": " << result.status << "\n"
                                                  << result.errors;
    const auto lines = std::count(result.errors.begin(), result.errors.end(), '\n');
    EXPECT_EQ(lines, result.status == 3 ? 1 : 0) << arguments[0] << ": " << result.errors;
    if (result.status == 3) {
      EXPECT_TRUE(result.errors.starts_with("fldtool: ")) << result.errors;
    }
  }

  int tried_ = 0;
};

TEST_F(HostileFileTool, DamagedInEveryWay) {
  const std::string bytes = testkit::to_bytes(faults::every_construct(), &places_);
  expect_good_ends(faults::Truncations(bytes), 3001);
  expect_good_ends(faults::BitFlips(bytes), 19937);
  expect_good_ends(faults::WordChanges::extremes(bytes), 4001);
  expect_good_ends(faults::WordChanges::markers(bytes), 607);
  expect_good_ends(faults::SectionMoves(bytes, places_), 23);
}

TEST_F(HostileFileTool, TheSecondOfASeriesDamaged) {
  testkit::write_file(faults::base_of_series(), directory_ / "case_0.fld");
  const std::string bytes = testkit::to_bytes(faults::motion_of_series(), &places_);
  expect_good_ends(faults::Truncations(bytes), 1201, "case_1.fld");
  expect_good_ends(faults::BitFlips(bytes), 9973, "case_1.fld");
  expect_good_ends(faults::WordChanges::extremes(bytes), 1009, "case_1.fld");
  expect_good_ends(faults::WordChanges::markers(bytes), 607, "case_1.fld");
  expect_good_ends(faults::SectionMoves(bytes, places_), 13, "case_1.fld");
}

}  // namespace
