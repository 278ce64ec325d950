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

// Where the last entry ends, if each begins where the one before it ends.
std::uint64_t end_of_gapless(const std::vector<LayoutEntry>& entries) {
  std::uint64_t offset = 0;
  for (const LayoutEntry& entry : entries) {
    if (entry.type == EntryType::problem) continue;
    EXPECT_EQ(entry.offset, offset);
    offset = entry.offset + entry.length;
  }
  return offset;
}

TEST(Layout, TheRecordsFollowEachOtherWithoutAGap) {
  const std::string bytes = testkit::to_bytes(inspect_test::rich_file());
  EXPECT_EQ(end_of_gapless(entries_of(bytes)), bytes.size());
}

TEST(Layout, ARecordWithoutElementsIsOne) {
  testkit::File file = inspect_test::small_file();
  testkit::Block& x = file.region_sets.front().section("LS_Nodes").blocks[1];
  x = x.with_rule({4, 4, 2});
  const Written written(file);
  std::string bytes = written.bytes;
  const std::uint64_t place = written.value("LS_Nodes", 1) + 20;
  bytes.insert(place, 8, '\0');
  std::vector<LayoutEntry> found;
  for (const LayoutEntry& entry : entries_of(bytes)) {
    if (entry.offset == place) found.push_back(entry);
  }
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].type, EntryType::record);
  EXPECT_EQ(found[0].length, 8U);
  EXPECT_EQ(found[0].count, 0);
  EXPECT_TRUE(inspect::layout_line(found[0]).ends_with(" 4           0\n")) << inspect::layout_line(found[0]);
}

TEST(Layout, ASectionThatEndsEarlyHasItsEndRule) {
  testkit::File file = inspect_test::small_file();
  file.region_sets.front().section("LS_Nodes").blocks.pop_back();
  const std::string bytes = testkit::to_bytes(file);
  EXPECT_EQ(end_of_gapless(entries_of(bytes)), bytes.size());
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

// They may be a million.
TEST(Layout, TheNamesOfAllRegionsAreNotShown) {
  const Written file(inspect_test::rich_file());
  const std::uint64_t names = file.rule("LS_SurfaceGeometryArray", 2) + 20;
  int found = 0;
  for (const LayoutEntry& entry : entries_of(file.bytes)) {
    if (entry.offset != names) continue;
    ++found;
    EXPECT_EQ(entry.type, EntryType::record);
    EXPECT_EQ(entry.text, std::nullopt);
  }
  EXPECT_EQ(found, 1);
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
    if (entry.type == EntryType::end_rule) {
      EXPECT_EQ(entry.length, 20U) << entry.offset;
    }
  }
  // The data record of x, rule and data of y and z, the end rule.
  const std::uint64_t x = file.rule("LS_Nodes", 1);
  EXPECT_EQ(skipped, (std::vector<std::uint64_t>{x + 20, x + 44, x + 64, x + 88, x + 108, x + 132}));
}

// Calls of the walk over blocks.
class BlockPairs : public inspect::Visitor {
 public:
  void begin_block(const inspect::Block&) override { ++open_; }
  void end_block(const inspect::Block&) override {
    --open_;
    ++ended;
  }
  void end_section(const inspect::Title& title, const inspect::Record&) override {
    EXPECT_EQ(open_, 0) << title.text;
  }
  int ended = 0;

 private:
  int open_ = 0;
};

TEST(Walk, EveryBlockThatBeginsEnds) {
  testkit::File file = inspect_test::small_file();
  file.region_sets.front().sections.clear();
  file.header.items.clear();
  file.region_sets.front().add({.title = "LS_Unheard", .blocks = {testkit::Block::integers({1, 2, 3})}});
  inspect::StringSource source(testkit::to_bytes(file));
  BlockPairs pairs;
  inspect::walk(source, pairs);
  EXPECT_EQ(pairs.ended, 2);  // the leading integer and the data
}

TEST(Walk, TellsFldFilesByTheirFirstRecord) {
  inspect::StringSource fld(testkit::to_bytes(inspect_test::small_file()));
  EXPECT_TRUE(inspect::is_fld(fld));
  inspect::StringSource other("VTRL-FLD is not at the beginning");
  EXPECT_FALSE(inspect::is_fld(other));
  inspect::StringSource empty("");
  EXPECT_FALSE(inspect::is_fld(empty));
}

}  // namespace
