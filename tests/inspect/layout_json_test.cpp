// Entries of a layout as JSON.
#include "gtest/gtest.h"
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "inspect/byte_source.h"
#include "inspect/layout.h"
#include "inspect/walker.h"
#include "tests/inspect/checked.h"

namespace {

using inspect_test::in_brackets;
using Json = nlohmann::ordered_json;

std::vector<Json> json_entries_of(const std::string& bytes, const std::vector<std::string>& titles) {
  std::vector<Json> entries;
  inspect::StringSource source(bytes);
  inspect::Layout layout(titles, in_brackets, [&](const inspect::LayoutEntry& entry) {
    entries.push_back(inspect::layout_json(entry, in_brackets));
  });
  inspect::walk(source, layout);
  layout.finish();
  return entries;
}

TEST(LayoutJson, OfAHeaderItem) {
  testkit::File file;
  file.header.items.clear();
  file.header.set_cycle(12, 0.5);
  const std::vector<Json> entries = json_entries_of(testkit::to_bytes(file), {});
  ASSERT_EQ(entries.size(), 10U);
  EXPECT_EQ(entries[0], (Json{{"type", "identification"}, {"offset", 0}, {"length", 16}}));
  EXPECT_EQ(entries[1], (Json{{"type", "version"}, {"offset", 16}, {"length", 12}, {"value", 4}}));
  EXPECT_EQ(entries[2], (Json{{"type", "title"}, {"offset", 28}, {"length", 40}, {"title", "[Cycle]"}}));
  EXPECT_EQ(entries[3], (Json{{"type", "rule"},
                              {"offset", 68},
                              {"length", 20},
                              {"what", "cycle number"},
                              {"width", 4},
                              {"per_record", 1},
                              {"records", 1},
                              {"count", 1}}));
  EXPECT_EQ(
      entries[4],
      (Json{{"type", "record"}, {"offset", 88}, {"length", 12}, {"width", 4}, {"count", 1}, {"value", 12}}));
  EXPECT_EQ(entries[7], (Json{{"type", "end_rule"}, {"offset", 136}, {"length", 20}}));
  EXPECT_EQ(entries[9],
            (Json{{"type", "title"}, {"offset", 196}, {"length", 40}, {"title", "[OverlapEnd]"}}));
}

TEST(LayoutJson, OfASectionWithRegions) {
  const inspect_test::Written file(inspect_test::small_file());
  const std::vector<Json> entries = json_entries_of(file.bytes, {"LS_SurfaceGeometry"});
  ASSERT_GT(entries.size(), 8U);
  EXPECT_EQ(entries[0]["region_set"], 0);
  const std::uint64_t name = file.rule("LS_SurfaceGeometry", 2);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i]["offset"] != name) continue;
    EXPECT_EQ(entries[i]["what"], "name");
    EXPECT_EQ(entries[i]["region"], 0);
    EXPECT_EQ(entries.at(i + 1)["value"], "[wall]");
    EXPECT_FALSE(entries.at(i + 1).contains("region"));
    return;
  }
  FAIL() << "no name";
}

TEST(LayoutJson, OfAProblem) {
  const inspect_test::Written file(inspect_test::small_file());
  const std::uint64_t place = file.rule("LS_Nodes", 1) + 20;
  const Json last = json_entries_of(file.bytes.substr(0, place + 10), {}).back();
  EXPECT_EQ(last["type"], "problem");
  EXPECT_EQ(last["number"], "FLD-104");
  EXPECT_EQ(last["offset"], place);
  EXPECT_FALSE(last.contains("length"));
}

TEST(LayoutJson, OfWhatIsSteppedOver) {
  const inspect_test::Written file(inspect_test::small_file());
  const std::string bytes = inspect_test::with_integer(file.bytes, file.value("LS_Nodes", 0), 5);
  std::vector<Json> skipped;
  for (const Json& entry : json_entries_of(bytes, {})) {
    if (entry["type"] == "skipped") skipped.push_back(entry);
  }
  ASSERT_EQ(skipped.size(), 6U);
  EXPECT_EQ(skipped[0],
            (Json{{"type", "skipped"}, {"offset", file.rule("LS_Nodes", 1) + 20}, {"length", 24}}));
}

}  // namespace
