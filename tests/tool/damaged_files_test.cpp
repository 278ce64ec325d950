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

class DamagedFileTool : public testing::Test {
 protected:
  DamagedFileTool(const testkit::File& file, const std::string& name)
      : bytes_(testkit::to_bytes(file, &places_)), name_(name) {}

  // Tries each `partial`-th damage, or about a tenth of all.
  void expect_good_ends(const faults::Damages& damages, std::size_t partial) {
    const std::string path = (directory_ / name_).string();
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
  std::string bytes_;

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

  std::string name_;
  int tried_ = 0;
};

class HostileFileTool : public DamagedFileTool {
 protected:
  HostileFileTool() : DamagedFileTool(faults::every_construct(), "case.fld") {}
};

// The second file of a series.
class HostileSeriesTool : public DamagedFileTool {
 protected:
  HostileSeriesTool() : DamagedFileTool(faults::motion_of_series(), "case_1.fld") {
    testkit::write_file(faults::base_of_series(), directory_ / "case_0.fld");
  }
};

TEST_F(HostileFileTool, CutOffAnywhere) {
  expect_good_ends(faults::Truncations(bytes_), 3001);
}

TEST_F(HostileFileTool, AnyBitFlipped) {
  expect_good_ends(faults::BitFlips(bytes_), 19937);
}

TEST_F(HostileFileTool, AnyWordExtreme) {
  expect_good_ends(faults::WordChanges::extremes(bytes_), 4001);
}

TEST_F(HostileFileTool, AnyMarkerWrong) {
  expect_good_ends(faults::WordChanges::markers(bytes_), 607);
}

TEST_F(HostileFileTool, AnySectionMissingDoubledOrMoved) {
  expect_good_ends(faults::SectionMoves(bytes_, places_), 23);
}

TEST_F(HostileSeriesTool, CutOffAnywhere) {
  expect_good_ends(faults::Truncations(bytes_), 1201);
}

TEST_F(HostileSeriesTool, AnyBitFlipped) {
  expect_good_ends(faults::BitFlips(bytes_), 9973);
}

TEST_F(HostileSeriesTool, AnyWordExtreme) {
  expect_good_ends(faults::WordChanges::extremes(bytes_), 1009);
}

TEST_F(HostileSeriesTool, AnyMarkerWrong) {
  expect_good_ends(faults::WordChanges::markers(bytes_), 607);
}

TEST_F(HostileSeriesTool, AnySectionMissingDoubledOrMoved) {
  expect_good_ends(faults::SectionMoves(bytes_, places_), 13);
}

}  // namespace
