// The checker finds every damage that the reader tests use, except those that leave a plausible file:
//   - another value in a data record of a block that is not a count: coordinates, values, indices in range,
//     texts, dates, markers of undefined values, other codes;
//   - another end of a title: the name of a quantity, the number of a region set, an unknown title;
//   - an optional item or section removed, or one with an unknown title duplicated.
#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/byte_source.h"
#include "inspect/check.h"
#include "inspect/layout.h"
#include "testkit/file_writer.h"
#include "tests/faults/damage.h"
#include "tests/faults/fault_datasets.h"
#include "tests/faults/sweep.h"

namespace faults {
namespace {

// The errors and warnings without their offsets, which depend on what precedes them.
std::set<std::string> findings(const std::string& bytes) {
  inspect::StringSource source(bytes);
  const inspect::FileReport report = inspect::check_bytes(source, {.full = true});
  std::set<std::string> found;
  if (report.walk.end == inspect::WalkEnd::not_fld) found.insert("not an FLD file");
  for (const inspect::Finding& finding : report.findings.kept()) {
    if (inspect::info(finding.kind).severity == inspect::Severity::note) continue;
    found.insert(inspect::number_text(finding.kind) + finding.place + ": " + finding.wanted + ", " +
                 finding.found);
  }
  return found;
}

// How much of a title is fixed. The rest is a name or a number; readers ignore what follows a blank behind a
// known title; and a short title that is damaged is another word, an unknown title.
std::size_t fixed_length(std::string_view title) {
  for (const std::string_view prefix : {"OverlapStart_", "LS_Scalar:", "LS_Vector:"}) {
    if (title.starts_with(prefix)) return prefix.size();
  }
  return title == "LS_Other" || title.size() < 8 ? 0 : title.size() + 1;
}

// For every byte of a file, whether another value would be plausible.
std::vector<bool> free_bytes(const std::string& bytes) {
  std::vector<bool> is_free(bytes.size(), false);
  const auto mark = [&](std::uint64_t from, std::uint64_t to) {
    std::fill(is_free.begin() + static_cast<std::ptrdiff_t>(from),
              is_free.begin() + static_cast<std::ptrdiff_t>(to), true);
  };
  std::string block;
  const auto as_it_stands = [](std::string_view text) { return std::string(text); };
  inspect::Layout layout({}, as_it_stands, [&](const inspect::LayoutEntry& entry) {
    const std::uint64_t payload = entry.offset + 4;
    const std::uint64_t end = entry.offset + entry.length - 4;
    if (entry.type == inspect::EntryType::rule) block = entry.what;
    if (entry.type == inspect::EntryType::title) mark(payload + fixed_length(entry.what), end);
    const bool is_count = block.starts_with("number of") || block.starts_with("length of");
    if (entry.type == inspect::EntryType::record && !is_count) mark(payload, end);
  });
  inspect::StringSource source(bytes);
  inspect::walk(source, layout);
  layout.finish();
  return is_free;
}

// Whether all bytes that differ are plausible.
bool differs_in_free_bytes(const std::string& damaged, const std::string& whole,
                           const std::vector<bool>& is_free) {
  if (damaged.size() != whole.size()) return false;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    if (damaged[i] != whole[i] && !is_free[i]) return false;
  }
  return true;
}

class HostileFileCheck : public testing::TestWithParam<testkit::File (*)()> {
 protected:
  HostileFileCheck()
      : bytes_(testkit::to_bytes(GetParam()(), &places_)),
        known_(findings(bytes_)),
        is_free_(free_bytes(bytes_)) {}

  // Each `stride`-th damage must give a finding that the undamaged file does not have, unless it is excepted.
  template <typename Excepted>
  void expect_found(const Damages& damages, std::size_t partial, Excepted excepted) const {
    std::size_t tried = 0;
    for (std::size_t number = 0; number < damages.count(); number += sweep_stride(partial)) {
      const std::string damaged = damages.damaged(number);
      if (excepted(damaged, damages.describe(number))) continue;
      ++tried;
      const std::set<std::string> found = findings(damaged);
      EXPECT_FALSE(std::includes(known_.begin(), known_.end(), found.begin(), found.end()))
          << damages.describe(number);
    }
    EXPECT_GT(tried, 0U);
  }

  void expect_found(const Damages& damages, std::size_t partial) const {
    expect_found(damages, partial, [&](const std::string& damaged, const std::string&) {
      return differs_in_free_bytes(damaged, bytes_, is_free_);
    });
  }

  testkit::Places places_;
  std::string bytes_;
  std::set<std::string> known_;
  std::vector<bool> is_free_;
};

TEST_P(HostileFileCheck, CutOffAnywhere) {
  expect_found(Truncations(bytes_), 7);
}

TEST_P(HostileFileCheck, AnyBitFlipped) {
  expect_found(BitFlips(bytes_), 29);
}

TEST_P(HostileFileCheck, AnyWordExtreme) {
  expect_found(WordChanges::extremes(bytes_), 13);
}

TEST_P(HostileFileCheck, AnyMarkerWrong) {
  expect_found(WordChanges::markers(bytes_), 5);
}

TEST_P(HostileFileCheck, AnySectionMissingDoubledOrMoved) {
  const std::set<std::string> needed = {"HeaderDataEnd", "OverlapStart_1", "OverlapStart_2",
                                        "OverlapEnd",    "LS_Nodes",       "LS_Elements"};
  expect_found(SectionMoves(bytes_, places_), 1, [&](const std::string& damaged, const std::string& what) {
    const std::string title = what.substr(1, what.find('"', 1) - 1);
    if (damaged == bytes_ || (what.ends_with(" doubled") && title == "LS_Other")) return true;
    return what.ends_with(" left out") && !needed.contains(title);
  });
}

INSTANTIATE_TEST_SUITE_P(Files, HostileFileCheck, testing::Values(every_construct, motion_of_series),
                         [](const auto& info) { return info.index == 0 ? "EveryConstruct" : "Motion"; });

}  // namespace
}  // namespace faults
