// Damage to any byte outside the values is found.
#include "gtest/gtest.h"
#include <algorithm>
#include <vector>

#include "inspect/byte_source.h"
#include "inspect/check.h"
#include "inspect/layout.h"
#include "inspect/walker.h"
#include "tests/inspect/checked.h"

namespace {

using inspect_test::finds;
using inspect_test::rich_file;
using inspect_test::with_integer;

// An entry of the whole file's layout.
using Entry = inspect::LayoutEntry;
using inspect::EntryType;

std::vector<Entry> places_of_entries(const std::string& bytes) {
  std::vector<Entry> entries;
  inspect::StringSource source(bytes);
  const auto undecoded = [](const std::string& text) { return text; };
  inspect::Layout layout({}, undecoded, [&](const Entry& entry) { entries.push_back(entry); });
  inspect::walk(source, layout);
  layout.finish();
  return entries;
}

class Damage : public testing::Test {
 protected:
  const std::string whole = testkit::to_bytes(rich_file());
  const std::vector<Entry> entries = places_of_entries(whole);

  // Flips every bit of these bytes, one at a time.
  void expect_found(std::uint64_t first, std::uint64_t count, const std::string& what) const {
    for (std::uint64_t place = first; place < first + count; ++place) {
      for (int bit = 0; bit < 8; ++bit) {
        std::string bytes = whole;
        bytes[place] = static_cast<char>(bytes[place] ^ (1 << bit));
        EXPECT_TRUE(finds(bytes, false)) << what << ": bit " << bit << " of byte " << place;
      }
    }
  }
};

TEST_F(Damage, TheFileCutOffAnywhere) {
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_TRUE(finds(whole.substr(0, size), false)) << "after " << size << " bytes";
  }
}

TEST_F(Damage, EveryBitOfEveryMarker) {
  for (const Entry& entry : entries) {
    expect_found(entry.offset, 4, "leading marker");
    expect_found(entry.offset + entry.length - 4, 4, "trailing marker");
  }
}

TEST_F(Damage, EveryMarkerSetToOddValues) {
  for (const Entry& entry : entries) {
    for (const std::uint64_t place : {entry.offset, entry.offset + entry.length - 4}) {
      const auto rest = static_cast<std::int32_t>(whole.size() - place);
      const auto true_length = static_cast<std::int32_t>(entry.length - 8);
      for (const std::int32_t value : {0, 1, -1, INT32_MIN, INT32_MAX, rest - 1, rest, rest + 1}) {
        if (value == true_length) continue;
        EXPECT_TRUE(finds(with_integer(whole, place, value), false))
            << "marker at " << place << " set to " << value;
      }
    }
  }
}

TEST_F(Damage, EveryBitOfEveryRule) {
  for (const Entry& entry : entries) {
    if (entry.type == EntryType::rule || entry.type == EntryType::end_rule) {
      expect_found(entry.offset + 4, 12, "rule " + entry.what);
    }
  }
}

TEST_F(Damage, EveryBitOfIdentificationVersionAndTitles) {
  for (const Entry& entry : entries) {
    if (entry.type == EntryType::identification) expect_found(4, 8, "identification");
    if (entry.type == EntryType::version) expect_found(entry.offset + 4, 4, "version");
    if (entry.type != EntryType::title || entry.what == "LS_Unheard") continue;
    // Readers ignore what follows the first blank behind a known title, and the end of some titles is a name.
    const std::size_t fixed = entry.what.starts_with("OverlapStart_")     ? 13
                              : entry.what.find(':') != std::string::npos ? 10
                                                                          : entry.what.size() + 1;
    // A short title becomes an unknown one, which is a note.
    if (fixed > 8) expect_found(entry.offset + 4, fixed, "title " + entry.what);
  }
}

TEST_F(Damage, EveryBitOfEveryCount) {
  // The counts of what follows.
  const auto is_count = [](const std::string& what) {
    return what.starts_with("number of") || what.starts_with("length of");
  };
  int counts = 0;
  std::string what;
  for (const Entry& entry : entries) {
    if (entry.type == EntryType::rule) what = entry.what;
    if (entry.type != EntryType::record || !is_count(what)) continue;
    ++counts;
    expect_found(entry.offset + 4, entry.length - 8, what);
  }
  EXPECT_GT(counts, 30);
}

TEST_F(Damage, SectionsLeftOutThatReadersNeed) {
  for (const char* title : {"LS_Nodes", "LS_Elements"}) {
    testkit::File file = rich_file();
    file.region_sets.front().remove(title);
    EXPECT_TRUE(finds(testkit::to_bytes(file), false)) << title;
  }
}

TEST_F(Damage, SectionsDoubled) {
  const testkit::File good = rich_file();
  for (std::size_t set = 0; set < good.region_sets.size(); ++set) {
    for (const testkit::Section& section : good.region_sets[set].sections) {
      if (section.title.text == "LS_Unheard") continue;
      testkit::File file = good;
      file.region_sets[set].add(testkit::Section(section));
      EXPECT_TRUE(finds(testkit::to_bytes(file), false)) << section.title.text;
    }
  }
}

TEST_F(Damage, SectionsMovedBeforeTheFirstRegionSet) {
  const testkit::File good = rich_file();
  for (const testkit::Section& section : good.region_sets.front().sections) {
    testkit::File file = good;
    file.region_sets.front().remove(section.title.text);
    file.region_sets.push_front({.opener = std::nullopt, .sections = {section}});
    EXPECT_TRUE(finds(testkit::to_bytes(file), false)) << section.title.text;
  }
}

TEST_F(Damage, TitlesWithoutABodyLeftOutOrDoubled) {
  testkit::Places places;
  testkit::to_bytes(rich_file(), &places);
  for (const char* title : {"HeaderDataEnd", "OverlapStart_1", "OverlapEnd"}) {
    const std::uint64_t place = places.of(title).offset;
    std::string without = whole;
    without.erase(place, 40);
    EXPECT_TRUE(finds(without, false)) << "without " << title;
    std::string doubled = whole;
    doubled.insert(place, whole.substr(place, 40));
    EXPECT_TRUE(finds(doubled, false)) << "twice " << title;
  }
}

TEST_F(Damage, BytesLostOrPutInAnywhere) {
  for (std::size_t place = 0; place + 4 <= whole.size(); ++place) {
    for (const std::size_t count : {std::size_t{1}, std::size_t{4}}) {
      std::string without = whole;
      without.erase(place, count);
      EXPECT_TRUE(finds(without, false)) << count << " bytes lost at " << place;
      std::string with = whole;
      with.insert(place, count, '\0');
      EXPECT_TRUE(finds(with, false)) << count << " bytes put in at " << place;
    }
  }
}

// Every word of the file set to extreme values: the check ends, and offsets are inside the file.
TEST_F(Damage, AnyWordMayBeAnything) {
  for (std::size_t place = 0; place + 4 <= whole.size(); place += 4) {
    const auto rest = static_cast<std::int32_t>(whole.size() - place);
    for (const std::int32_t value : {0, 1, -1, INT32_MIN, INT32_MAX, rest - 1, rest, rest + 1}) {
      const std::string bytes = with_integer(whole, place, value);
      inspect::StringSource source(bytes);
      const auto report = inspect::check_bytes(source, {.full = true, .limit = 5});
      EXPECT_LE(report.walk.offset, bytes.size());
      for (const auto& finding : report.findings.kept()) EXPECT_LE(finding.offset, bytes.size());
    }
  }
}

}  // namespace
