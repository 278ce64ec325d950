// The list of the records of a file.
#include "inspect/layout.h"

#include "gtest/gtest.h"
#include <string>
#include <vector>

#include "inspect/byte_source.h"
#include "inspect/walker.h"
#include "tests/inspect/checked.h"

namespace {

using inspect::EntryType;
using inspect::LayoutEntry;
using inspect_test::Written;

std::vector<LayoutEntry> entries_of(const std::string& bytes, const std::vector<std::string>& titles = {}) {
  std::vector<LayoutEntry> entries;
  inspect::StringSource source(bytes);
  const auto undecoded = [](const std::string& bytes) { return bytes; };
  inspect::Layout layout(titles, undecoded, [&](const LayoutEntry& entry) { entries.push_back(entry); });
  inspect::walk(source, layout);
  layout.finish();
  return entries;
}

std::string text_of(const std::string& bytes, const std::vector<std::string>& titles) {
  std::string text;
  for (const LayoutEntry& entry : entries_of(bytes, titles)) text += inspect::layout_line(entry);
  return text;
}

TEST(Layout, TheRecordsFollowEachOtherWithoutAGap) {
  const std::string bytes = testkit::to_bytes(inspect_test::rich_file());
  std::uint64_t offset = 0;
  for (const LayoutEntry& entry : entries_of(bytes)) {
    EXPECT_EQ(entry.offset, offset);
    offset = entry.offset + entry.length;
  }
  EXPECT_EQ(offset, bytes.size());
}

TEST(Layout, LinesOfAHeaderItem) {
  testkit::File file;
  file.header.items.clear();
  file.header.set_cycle(12, 0.5);
  EXPECT_EQ(
      text_of(testkit::to_bytes(file), {}),
      "           0          16  identification\n"
      "          16          12  version                                                         = 4\n"
      "          28          40  Cycle\n"
      "          68          20    cycle number                                   4           1  1 record\n"
      "          88          12      record                                       4           1  = 12\n"
      "         100          20    solution time                                  8           1  1 record\n"
      "         120          16      record                                       8           1\n"
      "         136          20    end rule\n"
      "         156          40  HeaderDataEnd\n"
      "         196          40  OverlapEnd\n");
}

TEST(Layout, TextsAndRegionsAndSplitBlocks) {
  testkit::File file = inspect_test::small_file();
  file.split = 3;
  const Written written(file);
  const std::string text = text_of(written.bytes, {"LS_SurfaceGeometry"});
  EXPECT_NE(text.find("    name of region 0"), std::string::npos) << text;
  EXPECT_NE(text.find("= \"wall\"\n"), std::string::npos) << text;
  EXPECT_NE(text.find("2 records of 3\n"), std::string::npos) << text;
}

TEST(Layout, PicksByTitle) {
  const std::string bytes = testkit::to_bytes(inspect_test::small_file());
  std::vector<std::string> titles;
  for (const LayoutEntry& entry : entries_of(bytes, {"LS_Nodes", "LS_S*:?"})) {
    if (entry.type == EntryType::title) titles.push_back(entry.what);
  }
  EXPECT_EQ(titles, (std::vector<std::string>{"LS_Nodes", "LS_Scalar:p"}));
}

TEST(Layout, PicksByDecodedTitleAndTellsWhatNothingMatches) {
  testkit::File file = inspect_test::small_file();
  file.region_sets.front().section("LS_Scalar:p").title = "LS_Scalar:\x88\xb3";
  inspect::StringSource source(testkit::to_bytes(file));
  const auto decode = [](const std::string& bytes) {
    const std::size_t place = bytes.find("\x88\xb3");
    return place == std::string::npos ? bytes : bytes.substr(0, place) + "pressure";
  };
  std::vector<std::string> titles;
  inspect::Layout layout({"*:pres*", "LS_Scalar:\x88\xb3", "LS_Nodes", "LS_Node", "pressure"}, decode,
                         [&](const LayoutEntry& entry) {
                           if (entry.type == EntryType::title) titles.push_back(entry.what);
                         });
  inspect::walk(source, layout);
  layout.finish();
  EXPECT_EQ(titles, (std::vector<std::string>{"LS_Nodes", "LS_Scalar:\x88\xb3"}));
  EXPECT_EQ(layout.unmatched(), (std::vector<std::string>{"LS_Node", "pressure"}));
}

TEST(Layout, TellsWhereItStopsAndWhy) {
  const Written file(inspect_test::small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 1) + 20;
  const auto entries = entries_of(file.bytes.substr(0, place + 10));
  const LayoutEntry& last = entries.back();
  EXPECT_EQ(last.type, EntryType::problem);
  EXPECT_EQ(last.offset, place);
  EXPECT_EQ(entries[entries.size() - 2].type, EntryType::rule);
  EXPECT_EQ(inspect::layout_line(last),
            "        " + std::to_string(place) +
                "          !!  FLD-104 a record reaches beyond the end of the file: "
                "wanted 24 bytes, found 10 bytes\n");
}

TEST(Layout, ShowsWhatIsSteppedOver) {
  const Written file(inspect_test::small_file());
  const std::string bytes = inspect_test::with_integer(file.bytes, file.value("LS_Nodes", 0), 5);
  std::vector<std::uint64_t> skipped;
  for (const LayoutEntry& entry : entries_of(bytes)) {
    if (entry.type == EntryType::skipped) skipped.push_back(entry.offset);
  }
  // The data record of x, rule and data of y and z, the end rule.
  const std::uint64_t x = file.rule("LS_Nodes", 1);
  EXPECT_EQ(skipped, (std::vector<std::uint64_t>{x + 20, x + 44, x + 64, x + 88, x + 108, x + 132}));
}

}  // namespace
