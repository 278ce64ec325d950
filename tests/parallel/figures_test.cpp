// What each of p ranks reads, sends and holds is what docs/paraview.md says.
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "layout/series.h"
#include "parallel/partition.h"
#include "parallel/step_reader.h"
#include "testkit/box_dataset.h"
#include "testkit/temporary_directory.h"
#include "tests/parallel/thread_group.h"
#include "tests/parallel/thread_memory.h"

namespace parallel_test {
namespace {

constexpr std::int64_t kCellsPerEdge = 48;
constexpr std::int64_t kNodesPerEdge = kCellsPerEdge + 1;
constexpr double kElements = 110592;      // E, the cube of 48
constexpr double kConnectivity = 884736;  // C, eight for each
constexpr double kNodes = 117649;         // N, the cube of 49
// The buffers of a rank's reads, which do not depend on the mesh, and small things.
constexpr double kBuffers = 1.2e6;
// Markers between records, lists of runs, rounding of stretches.
constexpr double kSmall = 3000;

// Keeps the arrays as they come.
class HeldShares : public parallel::ShareSink {
 public:
  void set_mesh(int part, parallel::ShareCells cells, const parallel::NodeSet& nodes) override {
    cells_[part] = std::move(cells);
    node_count += nodes.count;
  }
  void set_points(int part, parallel::Array<float> points) override { points_[part] = std::move(points); }
  void set_values(int part, int variable, int /*components*/, parallel::Array<float> values) override {
    values_[{part, variable}] = std::move(values);
  }
  void drop_values(int part, int variable) override { values_.erase({part, variable}); }
  void drop_part(int part) override { cells_.erase(part); }

  std::int64_t node_count = 0;

 private:
  std::map<int, parallel::ShareCells> cells_;
  std::map<int, parallel::Array<float>> points_;
  std::map<std::pair<int, int>, parallel::Array<float>> values_;
};

struct Figures {
  double read = 0;
  double small_reads = 0;
  double sent = 0;
  double peak = 0;
  double nodes = 0;  // s
};

struct Reading {
  Figures mesh;
  Figures step;
};

// Calls visit(node) for the nodes of the elements first to last - 1 of the box, each once.
template <typename Visit>
void for_each_node(parallel::Stretch elements, Visit visit) {
  std::vector<bool> is_known(static_cast<std::size_t>(kNodesPerEdge * kNodesPerEdge * kNodesPerEdge));
  for (std::int64_t e = elements.first; e < elements.last; ++e) {
    const std::int64_t x = e % kCellsPerEdge;
    const std::int64_t y = e / kCellsPerEdge % kCellsPerEdge;
    const std::int64_t z = e / (kCellsPerEdge * kCellsPerEdge);
    for (int corner = 0; corner < 8; ++corner) {
      const std::int64_t node =
          ((z + corner / 4) * kNodesPerEdge + y + corner / 2 % 2) * kNodesPerEdge + x + corner % 2;
      if (!is_known[static_cast<std::size_t>(node)]) visit(node);
      is_known[static_cast<std::size_t>(node)] = true;
    }
  }
}

class FiguresOfRanks : public testing::TestWithParam<int> {
 protected:
  // A box with as many volumes, one after the other; the parts of these numbers and a scalar.
  std::vector<Reading> read(int volumes, const std::vector<int>& parts) {
    testkit::BoxOptions options;
    options.nx = options.ny = options.nz = static_cast<std::int32_t>(kCellsPerEdge);
    options.volumes = volumes;
    options.scalars = 1;
    options.vectors = 0;
    testkit::write_box_dataset(directory_ / "box.fld", options);
    layout::Series series((directory_ / "box.fld").string(), false);
    std::vector<layout::Part> chosen;
    for (const layout::Part& part : series.parts(0)) {
      if (std::find(parts.begin(), parts.end(), part.number) != parts.end()) chosen.push_back(part);
    }
    const layout::StepLayout mesh = series.locate(0, chosen, {});
    const layout::StepLayout with_scalar = series.locate(0, chosen, {1});
    std::vector<Reading> readings(static_cast<std::size_t>(GetParam()));
    ThreadGroup(GetParam()).run([&](parallel::Communicator& ranks) {
      Reading& own = readings[static_cast<std::size_t>(ranks.rank())];
      HeldShares shares;
      parallel::FileArrays files(series.paths());
      parallel::StepReader reader(files);
      const auto bring = [&](const layout::StepLayout& step) {
        const parallel::ReadCounts before = files.counts();
        const std::int64_t sent_before = parallel::bytes_sent();
        forget_peak_of_thread();
        reader.read(ranks, step, {ranks.rank(), ranks.size()}, shares, [](double) { return true; });
        EXPECT_TRUE(reader.problems().empty());
        return Figures{static_cast<double>(files.counts().bytes - before.bytes),
                       static_cast<double>(files.counts().small_reads - before.small_reads),
                       static_cast<double>(parallel::bytes_sent() - sent_before),
                       static_cast<double>(peak_of_thread()), static_cast<double>(shares.node_count)};
      };
      own.mesh = bring(mesh);
      own.step = bring(with_scalar);
    });
    return readings;
  }

  double ranks() const { return GetParam(); }

  // Nodes in a rank's stretch that the shares of other ranks use (b), where shares are stretches of the box.
  double nodes_for_others(int rank) const {
    const auto stretch = [&](std::int64_t count, int r) {
      return parallel::Partition(count, GetParam()).of(r);
    };
    const parallel::Stretch own = stretch(kNodesPerEdge * kNodesPerEdge * kNodesPerEdge, rank);
    double nodes = 0;
    for (int other = 0; other < GetParam(); ++other) {
      if (other == rank) continue;
      for_each_node(stretch(kCellsPerEdge * kCellsPerEdge * kCellsPerEdge, other), [&](std::int64_t node) {
        if (node >= own.first && node < own.last) ++nodes;
      });
    }
    return nodes;
  }

  testkit::TemporaryDirectory directory_;
};

// Bytes that this process has read from files.
std::int64_t bytes_from_files() {
  std::ifstream io("/proc/self/io");
  std::string word;
  std::int64_t bytes = 0;
  io >> word >> bytes;
  EXPECT_EQ(word, "rchar:");
  return bytes;
}

// What is shown is found before it is read: the arrays of this file have 15 MB.
TEST(Opening, ReadsTitlesAndSmallBlocksAlone) {
  const testkit::TemporaryDirectory directory;
  testkit::BoxOptions options;
  options.nx = options.ny = options.nz = 64;
  testkit::write_box_dataset(directory / "box.fld", options);
  const std::int64_t before = bytes_from_files();
  layout::Series series((directory / "box.fld").string(), false);
  const std::vector<layout::Part> parts = series.parts(0);
  const layout::StepLayout step = series.locate(0, parts, {1, 2, 3, 4});
  EXPECT_LT(bytes_from_files() - before, 400000);
  EXPECT_EQ(step.sets[0].element_count(), 262144);
}

constexpr int kWholeOfOneVolume = 8;
constexpr int kOneVolume = 7;

TEST_P(FiguresOfRanks, OfTheWholeMesh) {
  const std::vector<Reading> readings = read(1, {kWholeOfOneVolume});
  for (int rank = 0; rank < GetParam(); ++rank) {
    const auto& [mesh, step] = readings[static_cast<std::size_t>(rank)];
    EXPECT_NEAR(mesh.read, (4 * kElements + 4 * kConnectivity + 12 * kNodes) / ranks(), kSmall);
    EXPECT_NEAR(step.read, 4 * kNodes / ranks(), kSmall);
    EXPECT_EQ(mesh.small_reads, 0);
    EXPECT_NEAR(mesh.sent, 12 * nodes_for_others(rank), kSmall);
    EXPECT_NEAR(step.sent, 4 * nodes_for_others(rank), kSmall);
    const double cells = (kElements + 4 * kConnectivity) / ranks();
    const double s = mesh.nodes;
    EXPECT_LE(mesh.peak, cells + 12 * kNodes / ranks() + 24 * s + kBuffers);
    EXPECT_TRUE(!kCountsArrays || mesh.peak >= cells + 12 * s) << mesh.peak;
    EXPECT_LE(step.peak, 4 * kNodes / ranks() + 8 * s + kBuffers);
  }
}

TEST_P(FiguresOfRanks, OfAVolumeThatIsAll) {
  const std::vector<Reading> readings = read(1, {kOneVolume});
  for (int rank = 0; rank < GetParam(); ++rank) {
    const auto& [mesh, step] = readings[static_cast<std::size_t>(rank)];
    EXPECT_NEAR(mesh.read, (8 * kElements + 4 * kConnectivity + 12 * kNodes) / ranks(), kSmall);
    EXPECT_NEAR(mesh.sent, 12 * nodes_for_others(rank), kSmall);
    EXPECT_NEAR(step.sent, 4 * nodes_for_others(rank), kSmall);
  }
}

// Each rank's share of a volume is somewhere else than its own elements.
TEST_P(FiguresOfRanks, OfThreeVolumes) {
  const std::vector<Reading> readings = read(3, {7, 8, 9});
  double all_read = 0;
  double all_sent = 0;
  for (const auto& [mesh, step] : readings) {
    EXPECT_NEAR(mesh.read, (8 * kElements + 4 * kConnectivity + 12 * kNodes) / ranks(), 3 * kSmall);
    EXPECT_NEAR(step.read, 4 * kNodes / ranks(), kSmall);
    const double cells = (kElements + 4 * kConnectivity) / ranks();
    EXPECT_LE(mesh.peak, 3 * cells + 12 * kNodes / ranks() + 24 * mesh.nodes + kBuffers);
    all_read += mesh.read;
    all_sent += mesh.sent;
  }
  EXPECT_NEAR(all_read, 8 * kElements + 4 * kConnectivity + 12 * kNodes, ranks() * kSmall);
  EXPECT_LE(all_sent, kElements + 4 * kConnectivity + 12 * kNodes * 1.5 + ranks() * kSmall);
  if (GetParam() == 1) {
    EXPECT_EQ(all_sent, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(OnRanks, FiguresOfRanks, testing::Values(1, 2, 4, 8));

}  // namespace
}  // namespace parallel_test
