// Every part, step and variable on any number of ranks is what a host gets from the plug-in.
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <vector>

#include "samples/samples.h"
#include "testkit/file_writer.h"
#include "testkit/random_dataset.h"
#include "testkit/temporary_directory.h"
#include "tests/parallel/comparison.h"

namespace parallel_test {
namespace {

constexpr int kDatasetsPerTest = 15;

class RandomDatasets : public testing::TestWithParam<int> {};

TEST_P(RandomDatasets, AreWhatThePluginGives) {
  const testkit::TemporaryDirectory directory;
  for (int i = 0; i < kDatasetsPerTest; ++i) {
    const int seed = GetParam() * kDatasetsPerTest + i;
    const std::vector<testkit::File> files = testkit::random_series(static_cast<std::uint64_t>(seed));
    const std::string base = "random" + std::to_string(seed);
    for (std::size_t f = 0; f < files.size(); ++f)
      testkit::write_file(files[f], directory / testkit::random_file_name(base, f));
    const std::filesystem::path first = directory / testkit::random_file_name(base, 0);
    std::vector<Way> ways = kOnSomeRanks;
    ways.push_back({3, true});
    EXPECT_EQ(difference_from_plugin(first, ways), "") << "seed " << seed;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomDatasets, testing::Range(0, 1));
INSTANTIATE_TEST_SUITE_P(MoreSeeds, RandomDatasets, testing::Range(1, 20));

TEST(Samples, AreWhatThePluginGives) {
  const testkit::TemporaryDirectory directory;
  for (const samples::SampleInfo& sample : samples::write_samples(directory.path()))
    EXPECT_EQ(difference_from_plugin(sample.file, kOnSomeRanks), "") << sample.name;
}

TEST(RealResults, AreWhatThePluginGives) {
  const char* const folder = std::getenv("FLD_REAL_DATA");
  if (folder == nullptr) GTEST_SKIP() << "FLD_REAL_DATA is not set";
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.is_directory()) continue;
    for (const auto& file : std::filesystem::directory_iterator(entry.path())) {
      if (file.path().extension() != ".fld") continue;
      EXPECT_EQ(difference_from_plugin(file.path(), kOnSomeRanks), "") << file.path();
      break;
    }
  }
}

}  // namespace
}  // namespace parallel_test
