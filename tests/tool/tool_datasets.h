// Small datasets for the tests of the tool.
#pragma once

#include <filesystem>
#include <string>

#include "testkit/description.h"
#include "testkit/temporary_directory.h"
#include "tests/testkit/emulator.h"

namespace tool_test {

// As the writer marks an undefined value.
inline constexpr double kUndefinedValue = 1.0e30;

// "外" and "圧力" as Shift_JIS.
inline constexpr char kOutsideBytes[] = "\x8a\x4f";
inline constexpr char kPressureBytes[] = "\x88\xb3\x97\xcd";
// As they are shown: where the C library converts no texts, byte by byte.
inline constexpr const char* kOutsideShown = kUnderEmulator ? R"(\x8aO)" : "外";
inline constexpr const char* kPressureShown = kUnderEmulator ? R"(\x88\xb3\x97\xcd)" : "圧力";

// Four elements, one of each shape. Surfaces: "@between" and one that is called 外; volumes "lower" and
// "upper"; scalar "p" with the label 圧力 whose values are the node numbers from 0, the first one undefined;
// vector "v" with the coordinates of the nodes.
testkit::File one_of_each_file();

// Takes the volume "lower" out of it.
void remove_lower(testkit::File& file);

// s_0.fld, that file, and s_1.fld, the same at time 1 without the volume "lower". Returns the path of the
// first.
std::string write_series_that_loses_a_part(const std::filesystem::path& directory);

// case_1.fld to case_3.fld, that file at times 1 to 3; the geometry of the second one cannot be read. Returns
// the path of the first.
std::string write_series_with_a_broken_step(const std::filesystem::path& directory);

// A directory with one file in it.
class OneFile {
 public:
  explicit OneFile(const testkit::File& file, const std::string& name = "case.fld");

  std::string path() const { return (directory_ / name_).string(); }
  const testkit::TemporaryDirectory& directory() const { return directory_; }

 private:
  testkit::TemporaryDirectory directory_;
  std::string name_;
};

}  // namespace tool_test
