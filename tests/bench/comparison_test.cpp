#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "testkit/temporary_directory.h"

namespace {

using testing::AnyOf;
using testing::EndsWith;
using testing::StartsWith;

struct Outcome {
  int status = 0;
  std::string text{};
};

// The goals that the page shows are those for two threads.
Outcome compare(const std::string& options) {
  Outcome outcome;
  FILE* const pipe =
      popen(("FLD_THREADS=2 " + std::string(COMPARISON) + " " + options + " 2>&1").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("popen");
  for (int c = 0; (c = fgetc(pipe)) != EOF;) outcome.text += static_cast<char>(c);
  outcome.status = WEXITSTATUS(pclose(pipe));
  return outcome;
}

using Cells = std::vector<std::string>;

// The rows of the first Markdown table in a text, without its heading.
std::vector<Cells> rows_of(const std::string& text) {
  std::vector<Cells> rows;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line) && (line.starts_with("| ") || rows.empty());) {
    if (!line.starts_with("| ") || line.starts_with("| row |")) continue;
    Cells cells;
    std::istringstream rest(line.substr(2));
    for (std::string cell; std::getline(rest, cell, '|');) {
      const auto begin = cell.find_first_not_of(' ');
      const auto end = cell.find_last_not_of(' ');
      cells.push_back(begin == std::string::npos ? "" : cell.substr(begin, end - begin + 1));
    }
    rows.push_back(cells);
  }
  return rows;
}

std::string small(const std::filesystem::path& directory) {
  return "--millions 0.002 --runs 1 --markdown --directory " + directory.string();
}

TEST(Comparison, EveryRowHasRatioAndBothSidesOrSaysWhatItNeeds) {
  const testkit::TemporaryDirectory directory;
  const Outcome outcome = compare(small(directory.path()));
  ASSERT_EQ(0, outcome.status) << outcome.text;
  const auto rows = rows_of(outcome.text);
  EXPECT_FALSE(rows.empty());
  for (const Cells& row : rows) {
    SCOPED_TRACE(row.front());
    ASSERT_EQ(7U, row.size());
    const bool has_goal = row[2] != "-";
    EXPECT_TRUE(!has_goal || std::stod(row[2]) > 0.0) << row[2];
    if (row[6].starts_with("not built")) {
      EXPECT_THAT(row[6], StartsWith("not built: needs "));
      EXPECT_EQ((Cells{"-", "-", "-"}), (Cells{row[3], row[4], row[5]}));
      continue;
    }
    EXPECT_TRUE(std::isfinite(std::stod(row[3]))) << row[3];
    for (const std::size_t side : {4U, 5U}) {
      EXPECT_GE(std::stod(row[side]), 0.0) << row[side];
      if (row.front() != "series-openings") {
        EXPECT_THAT(row[side], AnyOf(EndsWith(" s"), EndsWith(" us"), EndsWith(" MiB"), EndsWith(" KiB")));
      }
    }
    EXPECT_THAT(row[6], has_goal ? AnyOf("yes", "no") : AnyOf("-", "-"));
  }
  EXPECT_TRUE(std::filesystem::is_empty(directory.path())) << "datasets are left";
}

TEST(Comparison, ThePageHasTheRowsThatThereAre) {
  const testkit::TemporaryDirectory directory;
  const auto rows = rows_of(compare(small(directory.path())).text);
  std::ifstream page(BENCHMARKS_PAGE);
  std::ostringstream text;
  text << page.rdbuf();
  const auto written = rows_of(text.str());
  ASSERT_EQ(rows.size(), written.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ((Cells{rows[i][0], rows[i][1], rows[i][2]}),
              (Cells{written[i][0], written[i][1], written[i][2]}));
  }
}

TEST(Comparison, OnlyTheRowsThatAreNamedAreMeasured) {
  const testkit::TemporaryDirectory directory;
  const auto rows = rows_of(compare("motion opening-memory " + small(directory.path())).text);
  ASSERT_EQ(2U, rows.size());
  EXPECT_EQ("opening-memory", rows[0][0]);
  EXPECT_EQ("motion", rows[1][0]);
}

TEST(Comparison, EachFileOfASeriesIsOpenedOnceWithTheSimplifyingOption) {
  const testkit::TemporaryDirectory directory;
  const auto rows = rows_of(compare("series-openings " + small(directory.path())).text);
  ASSERT_EQ(1U, rows.size());
  EXPECT_EQ("1.00", rows[0][3]);
}

TEST(Comparison, AnUnknownRowIsRefused) {
  const Outcome outcome = compare("no-such-row");
  EXPECT_NE(0, outcome.status);
  EXPECT_NE(std::string::npos, outcome.text.find("no-such-row")) << outcome.text;
}

TEST(Comparison, AReaderThatIsNotThereIsAnError) {
  const Outcome outcome = compare("opening --plugin /nowhere/at/all.so --millions 0.002 --runs 1");
  EXPECT_EQ(1, outcome.status);
  EXPECT_THAT(outcome.text, testing::HasSubstr("comparison: "));
}

}  // namespace
