// Detecting that a file has changed.
#include "format/file_stamp.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "testkit/byte_sink.h"
#include "testkit/temporary_directory.h"

namespace {

using fld::FileStamp;
using fld::stamp_of;

class FileStamps : public testing::Test {
 protected:
  FileStamps() { testkit::write_bytes(path_, "abc"); }

  testkit::TemporaryDirectory folder_;
  std::filesystem::path path_ = folder_ / "file";
};

TEST_F(FileStamps, StayWhileTheFileDoes) {
  EXPECT_EQ(stamp_of(path_), stamp_of(path_));
  EXPECT_EQ(stamp_of(path_).size, 3);
}

TEST_F(FileStamps, DifferAfterAChangeOfTheSize) {
  const FileStamp before = stamp_of(path_);
  std::filesystem::resize_file(path_, 2);
  EXPECT_NE(before, stamp_of(path_));
}

TEST_F(FileStamps, DifferAfterAChangeOfTheTime) {
  const FileStamp before = stamp_of(path_);
  const auto time = std::filesystem::last_write_time(path_);
  std::filesystem::last_write_time(path_, time - std::chrono::seconds(1));
  EXPECT_NE(before, stamp_of(path_));
}

TEST_F(FileStamps, DifferForAnotherFileInThePlaceOfTheFirst) {
  const FileStamp before = stamp_of(path_);
  testkit::write_bytes(folder_ / "other", "abc");
  std::filesystem::last_write_time(folder_ / "other", std::filesystem::last_write_time(path_));
  std::filesystem::rename(folder_ / "other", path_);
  EXPECT_NE(before, stamp_of(path_));
}

TEST_F(FileStamps, OfNoFileAreThoseOfNoFile) {
  EXPECT_EQ(stamp_of(folder_ / "missing"), FileStamp());
  EXPECT_NE(stamp_of(path_), FileStamp());
}

}  // namespace
