// Runs of equal type codes.
#include "format/code_runs.h"

#include <gtest/gtest.h>
#include <tuple>
#include <vector>

namespace {

using Runs = std::vector<std::tuple<int, std::int64_t, std::int64_t>>;

Runs runs_of(const std::vector<int>& codes, std::int64_t begin, std::int64_t end) {
  Runs runs;
  fld::for_each_run(codes.data(), begin, end, [&](int code, std::int64_t first, std::int64_t last) {
    runs.emplace_back(code, first, last);
  });
  return runs;
}

TEST(CodeRuns, AreFoundInOrder) {
  EXPECT_EQ(runs_of({38, 38, 38, 34, 38, 38}, 0, 6), (Runs{{38, 0, 3}, {34, 3, 4}, {38, 4, 6}}));
  EXPECT_EQ(runs_of({-1}, 0, 1), (Runs{{-1, 0, 1}}));
}

TEST(CodeRuns, EndAtTheEndOfTheRange) {
  EXPECT_EQ(runs_of({38, 38, 38, 34, 34, 34}, 1, 4), (Runs{{38, 1, 3}, {34, 3, 4}}));
  EXPECT_EQ(runs_of({38, 38}, 1, 1), Runs{});
}

}  // namespace
