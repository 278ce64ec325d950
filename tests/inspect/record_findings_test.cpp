// The findings about records and the file as a whole: FLD-101 to FLD-109.
#include "gtest/gtest.h"

#include "tests/inspect/checked.h"

namespace {

using inspect_test::line;
using inspect_test::Lines;
using inspect_test::small_file;
using inspect_test::told;
using inspect_test::with_integer;
using inspect_test::Written;

TEST(RecordFindings, NotAnFldFile) {
  EXPECT_EQ(told(std::string("This is some other file.")), Lines{line(101, 0, "VTRL-FLD", "\" is some\"")});
  EXPECT_EQ(told(std::string()), Lines{line(101, 0, "VTRL-FLD", "\"\"")});
}

TEST(RecordFindings, AnotherVersion) {
  testkit::File file = small_file();
  file.version = 3;
  EXPECT_EQ(told(file), Lines{line(102, 20, "4", "3")});
}

TEST(RecordFindings, TheFileEndsWhereARecordIsExpected) {
  const Written file(small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 0);
  EXPECT_EQ(told(file.bytes.substr(0, place)), Lines{line(103, place, "a record", "the end")});
  EXPECT_EQ(told(file.bytes.substr(0, place + 2)), Lines{line(103, place, "a record", "2 bytes")});
}

TEST(RecordFindings, ARecordReachesBeyondTheEnd) {
  const Written file(small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 1) + 20;
  EXPECT_EQ(told(file.bytes.substr(0, place + 10)), Lines{line(104, place, "24 bytes", "10 bytes")});
  EXPECT_EQ(told(file.bytes.substr(0, place + 23)), Lines{line(104, place, "24 bytes", "23 bytes")});
}

// Nor does a record of no bytes fit into the 4 bytes of its first marker.
TEST(RecordFindings, AnEmptyRecordReachesBeyondTheEnd) {
  const Written file(small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 1) + 20;
  EXPECT_EQ(told(with_integer(file.bytes, place, 0).substr(0, place + 4)),
            Lines{line(104, place, "8 bytes", "4 bytes")});
}

TEST(RecordFindings, TheLeadingMarkerIsWrong) {
  const Written file(small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 1) + 20;
  EXPECT_EQ(told(with_integer(file.bytes, place, 20)), Lines{line(105, place, "16", "20")});
  EXPECT_EQ(told(with_integer(file.bytes, place, -16)), Lines{line(105, place, "16", "-16")});
}

TEST(RecordFindings, TheMarkersDiffer) {
  const Written file(small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 1) + 40;
  EXPECT_EQ(told(with_integer(file.bytes, place, 20)), Lines{line(106, place, "16", "20")});
}

TEST(RecordFindings, ARecordOfTheWrongLength) {
  testkit::File file = small_file();
  file.region_sets.front().add(
      testkit::Section{.title = testkit::Title::exactly("a title of forty characters, not of 32..")});
  const Written written(file);
  const std::uint64_t place = written.places.of("a title of forty characters, not of 32..").offset;
  EXPECT_EQ(told(written.bytes), Lines{line(107, place, "32", "40")});
}

TEST(RecordFindings, AnEmptyRecordOfTheWrongLength) {
  const Written file(small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 1) + 20;
  std::string bytes = file.bytes;
  bytes.replace(place, 24, std::string(8, '\0'));
  EXPECT_EQ(told(bytes).at(0), line(107, place, "16", "0"));
}

TEST(RecordFindings, NoRecordBeginsHere) {
  const Written file(small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 1) + 20;
  const std::string bytes = with_integer(with_integer(file.bytes, place, 20), place + 20, 24);
  EXPECT_EQ(told(bytes), Lines{line(108, place, "a record of 16 bytes", "the marker 20")});
}

// The file ends with 12 bytes and two markers that do not fit them.
TEST(RecordFindings, NoRecordBeginsAtTheEndOfTheFile) {
  const Written file(small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 1) + 20;
  EXPECT_EQ(told(with_integer(file.bytes, place, 12).substr(0, place + 20)),
            Lines{line(108, place, "a record of 16 bytes", "the marker 12")});
}

TEST(RecordFindings, BytesAfterTheEnd) {
  testkit::File file = small_file();
  file.trailing_bytes = "xyz";
  const Written written(file);
  EXPECT_EQ(told(written.bytes),
            Lines{line(109, written.places.of("OverlapEnd").end, "the end of the file", "3 bytes")});
}

}  // namespace
