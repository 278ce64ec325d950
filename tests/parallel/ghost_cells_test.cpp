// The cells of other shares around one, their values, and which nodes count where.
#include "parallel/ghost_cells.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <set>

#include "layout/series.h"
#include "samples/samples.h"
#include "testkit/file_writer.h"
#include "testkit/random_dataset.h"
#include "testkit/temporary_directory.h"
#include "tests/parallel/collected_shares.h"
#include "tests/parallel/thread_group.h"

namespace parallel_test {
namespace {

using Shares = std::vector<std::unique_ptr<CollectedShares>>;

// What each rank reads of a step.
Shares read_shares(const layout::Series& series, const layout::StepLayout& step, int ranks, int layers) {
  Shares shares(static_cast<std::size_t>(ranks));
  ThreadGroup(ranks).run([&](parallel::Communicator& group) {
    auto& own = shares[static_cast<std::size_t>(group.rank())];
    own = std::make_unique<CollectedShares>();
    parallel::FileArrays files(series.paths());
    parallel::StepReader reader(files);
    reader.read(group, step, {group.rank(), group.size(), layers}, *own, [](double) { return true; });
  });
  return shares;
}

// The numbers, in the part, of the cells that a share has to have behind its own ones.
std::vector<std::size_t> cells_around(const MergedPart& part, std::size_t own_begin, std::size_t own_end,
                                      int layers) {
  std::vector<bool> is_there(part.cells.size());
  std::vector<bool> is_node(part.nodes.empty() ? 0 : static_cast<std::size_t>(part.nodes.back()) + 1);
  const auto take = [&](std::size_t cell) {
    is_there[cell] = true;
    for (const std::int32_t node : part.cells[cell].nodes) is_node[static_cast<std::size_t>(node)] = true;
  };
  for (std::size_t cell = own_begin; cell < own_end; ++cell) take(cell);
  std::vector<std::size_t> around;
  for (int layer = 0; layer < layers; ++layer) {
    std::vector<std::size_t> found;
    for (std::size_t cell = 0; cell < part.cells.size(); ++cell) {
      const auto is_reached = [&](std::int32_t node) { return is_node[static_cast<std::size_t>(node)]; };
      const auto& corners = part.cells[cell].nodes;
      if (!is_there[cell] && std::any_of(corners.begin(), corners.end(), is_reached)) found.push_back(cell);
    }
    for (const std::size_t cell : found) take(cell);
    around.insert(around.end(), found.begin(), found.end());
  }
  return around;
}

// The share's cells from `begin` on, by their nodes in the region set.
std::vector<MergedCell> cells_of(const Share& share, std::size_t begin, int material) {
  bool agrees = true;
  Share all = share;
  all.ghosts = 0;
  std::vector<MergedCell> cells = merge({&all}, material, agrees).cells;
  cells.erase(cells.begin(), cells.begin() + static_cast<std::ptrdiff_t>(begin));
  return cells;
}

bool same_cell(const MergedCell& a, const MergedCell& b) {
  return a.code == b.code && a.nodes == b.nodes &&
         (a.material == b.material || (a.material != a.material && b.material != b.material));
}

// Checks every part of the first step; returns how many ghost cells there were.
std::size_t check(const std::filesystem::path& file, int ranks, int layers) {
  layout::Series series(file.string(), false);
  std::vector<int> variables;
  for (const layout::Variable& variable : series.variables()) variables.push_back(variable.number);
  const int material = variables.back();
  const layout::StepLayout step = series.locate(0, series.parts(0), variables);
  const Shares shares = read_shares(series, step, ranks, layers);
  std::size_t ghosts = 0;
  for (const layout::PartLists& part : step.parts) {
    std::vector<const Share*> of_part;
    for (const auto& each : shares) {
      const auto found = each->shares.find(part.number);
      if (found != each->shares.end()) of_part.push_back(&found->second);
    }
    if (of_part.empty()) continue;
    EXPECT_EQ(of_part.size(), shares.size());
    bool agrees = true;
    const MergedPart merged = merge(of_part, material, agrees);
    EXPECT_TRUE(agrees) << "part " << part.number;
    std::size_t begin = 0;
    std::set<std::int32_t> counted;
    for (const Share* share : of_part) {
      const std::size_t own = share->codes.size() - static_cast<std::size_t>(share->ghosts);
      const std::vector<std::size_t> around = cells_around(merged, begin, begin + own, layers);
      const std::vector<MergedCell> got = cells_of(*share, own, material);
      EXPECT_EQ(got.size(), around.size()) << "part " << part.number;
      for (std::size_t i = 0; i < std::min(got.size(), around.size()); ++i) {
        EXPECT_TRUE(same_cell(got[i], merged.cells[around[i]]))
            << "ghost cell " << i << " of part " << part.number;
      }
      EXPECT_EQ(share->ghost_nodes.size(), share->nodes.size());
      std::set<std::int32_t> own_nodes;
      for (std::size_t cell = begin; cell < begin + own; ++cell)
        own_nodes.insert(merged.cells[cell].nodes.begin(), merged.cells[cell].nodes.end());
      for (std::size_t i = 0; i < share->ghost_nodes.size(); ++i) {
        const std::int32_t node = share->nodes[i];
        const bool counts = own_nodes.count(node) > 0 && counted.insert(node).second;
        EXPECT_EQ(share->ghost_nodes[i] == 0, counts) << "node " << node << " of part " << part.number;
      }
      begin += own;
      ghosts += around.size();
    }
  }
  return ghosts;
}

TEST(GhostCells, AreTheCellsAroundAShareWithTheirValues) {
  const testkit::TemporaryDirectory directory;
  for (const samples::SampleInfo& sample : samples::write_samples(directory.path())) {
    SCOPED_TRACE(sample.name);
    EXPECT_GT(check(sample.file, 3, 1), 100U);
  }
}

TEST(GhostCells, AreThereForEveryRandomDataset) {
  const testkit::TemporaryDirectory directory;
  std::size_t ghosts = 0;
  for (int seed = 0; seed < 10; ++seed) {
    const std::vector<testkit::File> files = testkit::random_series(static_cast<std::uint64_t>(seed));
    const std::string base = "random" + std::to_string(seed);
    for (std::size_t f = 0; f < files.size(); ++f)
      testkit::write_file(files[f], directory / testkit::random_file_name(base, f));
    const std::filesystem::path first = directory / testkit::random_file_name(base, 0);
    for (const int ranks : {2, 3, 5}) {
      for (const int layers : {1, 2, 3}) {
        SCOPED_TRACE("seed " + std::to_string(seed) + " on " + std::to_string(ranks) +
                     " ranks, layers: " + std::to_string(layers));
        ghosts += check(first, ranks, layers);
      }
    }
  }
  EXPECT_GT(ghosts, 1000U);
}

TEST(GhostCells, AreNotThereUnlessAskedFor) {
  const testkit::TemporaryDirectory directory;
  const samples::SampleInfo sample = samples::write_samples(directory.path()).front();
  layout::Series series(sample.file.string(), false);
  const layout::StepLayout step = series.locate(0, series.parts(0), {});
  for (const auto& shares : read_shares(series, step, 3, 0)) {
    for (const auto& [part, share] : shares->shares) {
      EXPECT_EQ(share.ghosts, 0);
      EXPECT_TRUE(share.ghost_nodes.empty());
    }
  }
}

}  // namespace
}  // namespace parallel_test
