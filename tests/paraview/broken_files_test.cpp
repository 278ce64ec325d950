// A broken file gives an output or an error of one line, and the process continues.
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <vtkObject.h>

#include "samples/samples.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/damage.h"
#include "tests/faults/fault_datasets.h"
#include "tests/faults/sweep_stride.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

// VTK puts a line about the place in the source in front of some messages and empty lines behind them.
std::size_t lines_of(std::string message) {
  if (message.starts_with("ERROR: In ")) message.erase(0, message.find('\n') + 1);
  message.erase(message.find_last_not_of('\n') + 1);
  return static_cast<std::size_t>(std::count(message.begin(), message.end(), '\n')) + 1;
}

class BrokenFiles : public testing::Test {
 protected:
  BrokenFiles() { testkit::write_file(faults::good_file(), directory_ / "good.fld"); }

  // Updates all steps and parts. A failed update must report an error.
  void try_file(const std::filesystem::path& file) {
    Reader reader(file);
    ++files_;
    bool went_well = reader.open();
    if (went_well) {
      ++opened_;
      for (const std::string& name : reader.part_names()) reader->SetPartArrayStatus(name.c_str(), 1);
      for (const double time : reader.times()) went_well = reader.update(time) && went_well;
    }
    const std::vector<std::string> errors = reader.take_errors();
    EXPECT_TRUE(went_well || !errors.empty()) << file;
    reported_ += errors.empty() ? 0 : 1;
    const auto gave_up = [](const std::string& error) { return error.find("gave up") != std::string::npos; };
    aborted_ += std::any_of(errors.begin(), errors.end(), gave_up) ? 1 : 0;
    for (const std::string& error : errors) EXPECT_EQ(lines_of(error), 1U) << error;
  }

  void try_damages(const faults::Damages& damages, std::size_t partial, const std::string& name) {
    for (std::size_t i = 0; i < damages.count(); i += faults::sweep_stride(partial, faults::kAboutATenth)) {
      SCOPED_TRACE(damages.describe(i));
      std::ofstream(directory_ / name, std::ios::binary) << damages.damaged(i);
      try_file(directory_ / name);
    }
  }

  void TearDown() override {
    std::cout << files_ << " files, " << opened_ << " opened, " << reported_ << " with errors, " << aborted_
              << " with a failed assertion\n";
    Reader good(directory_ / "good.fld");
    EXPECT_TRUE(good.update());
    EXPECT_TRUE(good.take_errors().empty());
  }

  testkit::TemporaryDirectory directory_;
  int files_ = 0;
  int opened_ = 0;
  int reported_ = 0;  // files with errors
  int aborted_ = 0;   // files with a failed assertion
};

TEST_F(BrokenFiles, OfTheFuzzersCorpus) {
  for (const auto& entry : std::filesystem::directory_iterator(CORPUS)) {
    // The reader requires this extension.
    std::filesystem::copy_file(entry.path(), directory_ / "case.fld",
                               std::filesystem::copy_options::overwrite_existing);
    SCOPED_TRACE(entry.path().filename().string());
    try_file(directory_ / "case.fld");
  }
  EXPECT_GT(files_, 100);
  EXPECT_GT(opened_, 0);
  EXPECT_LT(opened_, files_);
}

TEST_F(BrokenFiles, DamagedInEveryWay) {
  testkit::Places places;
  const std::string bytes = testkit::to_bytes(faults::every_construct(), &places);
  try_damages(faults::Truncations(bytes), 331, "damaged.fld");
  try_damages(faults::BitFlips(bytes), 1987, "damaged.fld");
  try_damages(faults::WordChanges::extremes(bytes), 389, "damaged.fld");
  try_damages(faults::WordChanges::markers(bytes), 53, "damaged.fld");
  try_damages(faults::SectionMoves(bytes, places), 4, "damaged.fld");
  EXPECT_LT(0, opened_);
  EXPECT_LT(opened_, files_);
}

TEST_F(BrokenFiles, InASeriesOverWhichTheReaderGivesUp) {
  testkit::write_file(faults::base_of_series(), directory_ / "case_0.fld");
  testkit::Places places;
  const std::string bytes = testkit::to_bytes(faults::motion_of_series(), &places);
  try_damages(faults::Truncations(bytes), 331, "case_1.fld");
  try_damages(faults::BitFlips(bytes), 1987, "case_1.fld");
  try_damages(faults::WordChanges::extremes(bytes), 29, "case_1.fld");
  try_damages(faults::WordChanges::markers(bytes), 53, "case_1.fld");
  try_damages(faults::SectionMoves(bytes, places), 1, "case_1.fld");
  EXPECT_GT(aborted_, 0);
}

}  // namespace
}  // namespace paraview_test
