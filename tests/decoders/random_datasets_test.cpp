// Both decoders give the same of random datasets: the plug-in, through its entry points, and inspect/.
#include <filesystem>
#include <gtest/gtest.h>

#include "testkit/file_writer.h"
#include "testkit/random_dataset.h"
#include "testkit/temporary_directory.h"
#include "tests/decoders/disagreement.h"
#include "tests/faults/stderr_file.h"
#include "tests/faults/sweep_stride.h"
#include "tests/reader/linked_entry_points.h"

namespace decoders {
namespace {

constexpr int kShards = 8;

// 100,000 datasets in all with FLD_SWEEP=complete.
constexpr int kDatasets = 100000;
constexpr int kPart = 250;

class RandomDatasets : public testing::TestWithParam<int> {};

TEST_P(RandomDatasets, AreTheSameForBoth) {
  const testkit::TemporaryDirectory directory;
  int compared = 0;
  const auto stride = static_cast<int>(faults::sweep_stride(kPart)) * kShards;
  int tried = 0;
  for (int seed = GetParam(); seed < kDatasets; seed += stride) {
    ++tried;
    const std::vector<testkit::File> files = testkit::random_series(static_cast<std::uint64_t>(seed));
    const std::filesystem::path folder = directory / std::to_string(seed);
    std::filesystem::create_directory(folder);
    for (std::size_t f = 0; f < files.size(); ++f)
      testkit::write_file(files[f], folder / testkit::random_file_name("case", f));
    std::string found;
    bool was_compared = false;
    {
      const faults::StderrFile silence;
      found = disagreement(reader_test::linked_entry_points(), folder / testkit::random_file_name("case", 0),
                           &was_compared);
    }
    compared += was_compared ? 1 : 0;
    EXPECT_EQ(found, "") << "seed " << seed;
    std::filesystem::remove_all(folder);
  }
  EXPECT_EQ(compared, tried);
}

INSTANTIATE_TEST_SUITE_P(Shards, RandomDatasets, testing::Range(0, kShards));

}  // namespace
}  // namespace decoders
