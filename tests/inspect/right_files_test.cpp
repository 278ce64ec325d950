// No error is found in valid files with unknown items and sections.
#include "gtest/gtest.h"
#include <random>

#include "inspect/byte_source.h"
#include "inspect/report.h"
#include "inspect/titles.h"
#include "tests/inspect/checked.h"

namespace {

using testkit::Block;

class RandomFiles {
 public:
  explicit RandomFiles(unsigned seed) : random_(seed) {}

  testkit::File next() {
    testkit::File file = below(2) == 0 ? inspect_test::small_file() : inspect_test::rich_file();
    if (below(2) == 0) file.split = below(4);
    auto& items = file.header.items;
    for (int i = below(5); i > 0; --i) items.insert(place_in(items), header_item(name(), blocks()));
    for (testkit::RegionSet& set : file.region_sets) {
      for (int i = below(5); i > 0; --i) {
        const std::string title = (below(2) == 0 ? "LS_" : "") + name();
        set.sections.insert(place_in(set.sections), {.title = unknown(title), .blocks = blocks()});
      }
    }
    return file;
  }

 private:
  int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random_); }

  template <class List>
  typename List::iterator place_in(List& list) {
    return list.begin() + below(static_cast<int>(list.size()) + 1);
  }

  std::string name() {
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_019";
    std::string name;
    for (int length = 1 + below(7); length > 0; --length)
      name += kLetters[static_cast<std::size_t>(below(static_cast<int>(kLetters.size())))];
    return unknown(name);
  }

  // A known title would require its own blocks.
  static std::string unknown(std::string title) {
    if (inspect::find_title(title) != nullptr) title.insert(0, "x");
    return title;
  }

  std::vector<Block> blocks() {
    std::vector<Block> blocks;
    for (int i = below(4); i > 0; --i) blocks.push_back(block());
    return blocks;
  }

  Block block() {
    const auto count = static_cast<std::size_t>(below(7));
    switch (below(6)) {
      case 0:
        return Block::integers(testkit::Ints(std::vector<std::int32_t>(count, below(3))));
      case 1:
        return Block::reals(testkit::Reals(std::vector<double>(count, 0.5)));
      case 2:
        return Block::reals(testkit::Reals(std::vector<double>(count, 0.5)), testkit::Precision::kDouble);
      case 3:
        return Block::long_integers(testkit::Longs(std::vector<std::int64_t>(count, 5)));
      case 4:
        return Block::rule_alone({4, 3, 0});
      default:
        return Block::characters("some text", 1 + count);
    }
  }

  std::mt19937 random_;
};

TEST(RightFiles, HaveNoErrorWhateverElseIsInThem) {
  RandomFiles files(14);
  for (int i = 0; i < 1000; ++i) {
    inspect::StringSource source(testkit::to_bytes(files.next()));
    const inspect::FileReport report = inspect::check_bytes(source, {.full = true});
    ASSERT_EQ(report.findings.count(inspect::Severity::error), 0U)
        << "file " << i << "\n"
        << inspect::report_text(report, false, [](const std::string& text) { return text; });
    ASSERT_EQ(report.walk.end, inspect::WalkEnd::complete) << "file " << i;
  }
}

}  // namespace
