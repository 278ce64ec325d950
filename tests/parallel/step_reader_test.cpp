// What is read when, and what happens when it cannot be.
#include "parallel/step_reader.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "layout/series.h"
#include "samples/tank.h"
#include "testkit/box_dataset.h"
#include "testkit/box_values.h"
#include "testkit/temporary_directory.h"
#include "tests/parallel/collected_shares.h"
#include "tests/parallel/thread_group.h"

namespace parallel_test {
namespace {

// Files of which one read fails, on one rank.
class FailingFiles : public parallel::FileArrays {
 public:
  FailingFiles(std::vector<std::string> paths, int failing_read)
      : FileArrays(std::move(paths)), left_(failing_read) {}

  bool has_failed() const { return has_failed_; }

 protected:
  void read_bytes(int descriptor, std::byte* to, std::size_t size, std::int64_t offset,
                  const std::string& path) override {
    if (left_-- == 0) {
      has_failed_ = true;
      throw parallel::FileError(path + ": Input/output error");
    }
    FileArrays::read_bytes(descriptor, to, size, offset, path);
  }

 private:
  int left_;
  bool has_failed_ = false;
};

constexpr int kNoFailure = -1;

class ReadingSteps : public testing::Test {
 protected:
  static constexpr int kRanks = 3;

  // Three steps of a box, its mesh in the first file alone: surfaces 1 to 6, a volume, the whole mesh; two
  // scalars, a vector, the materials.
  ReadingSteps() {
    for (int step = 0; step < 3; ++step) {
      testkit::BoxOptions options;
      options.nx = options.ny = options.nz = 6;
      options.cycle = step;
      options.time = 0.5 * step;
      testkit::write_file(step == 0 ? testkit::box_file(options) : testkit::box_values_file(options),
                          directory_ / ("box_" + std::to_string(step) + ".fld"));
    }
    series_.emplace((directory_ / "box_0.fld").string(), false);
  }

  layout::StepLayout layout_of(int step, const std::vector<int>& parts, const std::vector<int>& variables) {
    std::vector<layout::Part> chosen;
    for (const layout::Part& part : series_->parts(step)) {
      if (std::find(parts.begin(), parts.end(), part.number) != parts.end()) chosen.push_back(part);
    }
    return series_->locate(step, chosen, variables);
  }

  // One process.
  bool read(const layout::StepLayout& step) {
    if (!files_) files_.emplace(series_->paths());
    if (!reader_) reader_.emplace(*files_);
    bytes_ = files_->counts().bytes;
    const bool complete = reader_->read(alone_, step, {0, 1}, shares_, [this](double done) {
      EXPECT_LE(0.0, done);
      EXPECT_LE(done, 1.0);
      return items_ < 0 || items_-- > 0;
    });
    bytes_ = files_->counts().bytes - bytes_;
    return complete;
  }

  static std::int64_t bytes_of(const layout::FileArray& array) { return array.count() * array.place.width; }

  testkit::TemporaryDirectory directory_;
  std::optional<layout::Series> series_;
  parallel::SingleProcess alone_;
  std::optional<parallel::FileArrays> files_;
  std::optional<parallel::StepReader> reader_;
  CollectedShares shares_;
  std::int64_t bytes_ = 0;  // read by the last call
  int items_ = -1;          // until reading is stopped; never if negative
};

TEST_F(ReadingSteps, ReadsTheArraysOfWhatIsChosenAndNoOther) {
  const layout::StepLayout volume = layout_of(0, {7}, {1});
  ASSERT_TRUE(read(volume));
  const layout::SetMesh& mesh = volume.sets[0];
  std::int64_t needed = bytes_of(mesh.types) + bytes_of(mesh.conn) + bytes_of(volume.parts[0].elements) +
                        bytes_of(volume.variables[0].sets[0].components[0]);
  for (const layout::FileArray& axis : mesh.axes) needed += bytes_of(axis);
  EXPECT_EQ(bytes_, needed);
}

TEST_F(ReadingSteps, ReadsASurfaceWithoutTheElements) {
  const layout::StepLayout surface = layout_of(0, {1}, {});
  ASSERT_TRUE(read(surface));
  std::int64_t needed = bytes_of(surface.parts[0].face_types) + bytes_of(surface.parts[0].face_nodes);
  for (const layout::FileArray& axis : surface.sets[0].axes) needed += bytes_of(axis);
  EXPECT_EQ(bytes_, needed);
}

TEST_F(ReadingSteps, ReadsWhatIsSwitchedOnLaterAlone) {
  ASSERT_TRUE(read(layout_of(0, {7}, {1})));
  const layout::StepLayout more = layout_of(0, {7}, {1, 2});
  ASSERT_TRUE(read(more));
  EXPECT_EQ(bytes_, bytes_of(more.variables[1].sets[0].components[0]));
  ASSERT_TRUE(read(layout_of(0, {7}, {2})));
  EXPECT_EQ(bytes_, 0);
  EXPECT_EQ(shares_.shares.at(7).values.count(1), 0U);
  EXPECT_EQ(shares_.shares.at(7).values.count(2), 1U);
}

TEST_F(ReadingSteps, ReadsTheValuesAloneOfAStepWhoseMeshRests) {
  ASSERT_TRUE(read(layout_of(0, {1, 7, 8}, {1, 4})));
  const layout::StepLayout next = layout_of(1, {1, 7, 8}, {1, 4});
  shares_.meshes_made = shares_.points_made = shares_.values_made = 0;
  ASSERT_TRUE(read(next));
  EXPECT_EQ(bytes_, bytes_of(next.variables[0].sets[0].components[0]));
  EXPECT_EQ(shares_.meshes_made, 0);
  EXPECT_EQ(shares_.points_made, 0);
  EXPECT_EQ(shares_.values_made, 3);
}

TEST_F(ReadingSteps, LetsGoOfPartsThatAreSwitchedOff) {
  ASSERT_TRUE(read(layout_of(0, {1, 7}, {1})));
  ASSERT_TRUE(read(layout_of(0, {7}, {1})));
  EXPECT_EQ(shares_.shares.count(1), 0U);
  EXPECT_EQ(shares_.shares.count(7), 1U);
}

TEST_F(ReadingSteps, StopsWhereItIsToldAndGoesOnLater) {
  items_ = 2;
  EXPECT_FALSE(read(layout_of(0, {1, 2, 7}, {1})));
  EXPECT_EQ(shares_.shares.size(), 2U);
  EXPECT_FALSE(shares_.shares.at(2).points.empty());
  EXPECT_TRUE(shares_.shares.at(1).values.empty());
  items_ = -1;
  EXPECT_TRUE(read(layout_of(0, {1, 2, 7}, {1})));
  EXPECT_EQ(shares_.meshes_made, 3);
  EXPECT_EQ(shares_.shares.at(7).values.size(), 1U);
}

// The impeller turns from the coordinates of the first file.
TEST_F(ReadingSteps, ReadsTheCoordinatesOfAMovingMeshOnceWhereTheyAreKept) {
  const samples::SampleInfo tank = samples::tank::write(directory_.path());
  series_.emplace(tank.file.string(), false);
  std::vector<int> parts;
  for (const layout::Part& part : series_->parts(0)) parts.push_back(part.number);
  std::map<bool, std::map<int, Share>> last;
  for (const bool keep : {false, true}) {
    files_.emplace(series_->paths());
    reader_.emplace(*files_);
    reader_->keep_coordinates(keep);
    shares_.shares.clear();
    for (int step = 1; step < 4; ++step) {
      const layout::StepLayout moved = layout_of(step, parts, {});
      ASSERT_TRUE(read(moved));
      if (step == 1) continue;
      std::int64_t coordinates = 0;
      for (const layout::FileArray& axis : moved.sets[0].axes) coordinates += bytes_of(axis);
      EXPECT_EQ(bytes_, keep ? 0 : coordinates) << "step " << step;
    }
    last[keep] = shares_.shares;
  }
  ASSERT_EQ(last[true].size(), parts.size());
  for (const auto& [part, share] : last[true]) EXPECT_EQ(share.points, last[false].at(part).points);
}

// Whichever read fails, on whichever rank: one reason, which names rank and file, on all ranks alike; and the
// next try gives what there is.
TEST_F(ReadingSteps, ComesToAnEndWhicheverReadFails) {
  const layout::StepLayout step = layout_of(0, {1, 7, 8}, {1, 3, 4});
  int failures = 0;
  for (int failing = 0; failing < kRanks; ++failing) {
    for (int number = 0;; ++number) {
      std::vector<std::vector<parallel::Problem>> problems(kRanks);
      std::vector<CollectedShares> again(kRanks);
      bool has_failed = false;
      ThreadGroup(kRanks).run([&](parallel::Communicator& ranks) {
        const auto r = static_cast<std::size_t>(ranks.rank());
        FailingFiles files(series_->paths(), ranks.rank() == failing ? number : kNoFailure);
        parallel::StepReader reader(files);
        const parallel::ShareNumber share{ranks.rank(), ranks.size(), 1};
        const auto goes_on = [](double) { return true; };
        reader.read(ranks, step, share, again[r], goes_on);
        problems[r] = reader.problems();
        if (files.has_failed()) has_failed = true;
        reader.read(ranks, step, share, again[r], goes_on);
        EXPECT_TRUE(reader.problems().empty());
      });
      if (!has_failed) break;
      ++failures;
      const std::string text =
          "rank " + std::to_string(failing) + ": " + series_->paths()[0] + ": Input/output error";
      for (const auto& of_rank : problems) {
        ASSERT_FALSE(of_rank.empty());
        for (const parallel::Problem& problem : of_rank) EXPECT_EQ(problem.reason, text);
      }
      for (const CollectedShares& shares : again) {
        ASSERT_EQ(shares.shares.size(), 3U);
        for (const auto& [part, share] : shares.shares) EXPECT_EQ(share.values.size(), 3U);
      }
    }
  }
  EXPECT_GT(failures, 30);
}

// The file is cut off after it was opened.
TEST_F(ReadingSteps, ComesToAnEndWhenTheFileHasBecomeShorter) {
  const layout::StepLayout step = layout_of(0, {1, 7, 8}, {1, 3, 4});
  const std::filesystem::path file = series_->paths()[0];
  const auto size = std::filesystem::file_size(file);
  int with_problems = 0;
  for (int part = 15; part >= 0; --part) {
    std::filesystem::resize_file(file, size * static_cast<std::uintmax_t>(part) / 16);
    std::vector<std::vector<parallel::Problem>> problems(kRanks);
    ThreadGroup(kRanks).run([&](parallel::Communicator& ranks) {
      CollectedShares shares;
      parallel::FileArrays files(series_->paths());
      parallel::StepReader reader(files);
      reader.read(ranks, step, {ranks.rank(), ranks.size()}, shares, [](double) { return true; });
      problems[static_cast<std::size_t>(ranks.rank())] = reader.problems();
    });
    for (const auto& of_rank : problems) {
      EXPECT_EQ(of_rank.size(), problems[0].size());
      for (std::size_t i = 0; i < of_rank.size(); ++i) EXPECT_EQ(of_rank[i].reason, problems[0][i].reason);
    }
    if (problems[0].empty()) continue;
    ++with_problems;
    EXPECT_NE(problems[0][0].reason.find("box_0.fld: the file ends at byte"), std::string::npos)
        << problems[0][0].reason;
  }
  EXPECT_GT(with_problems, 10);
}

// Together the ranks read the bytes of the arrays that are needed, each once.
TEST_F(ReadingSteps, ReadsEveryByteOnceWhateverTheNumberOfRanks) {
  const layout::StepLayout step = layout_of(0, {7}, {1, 3});
  std::vector<std::int64_t> totals;
  for (const int count : {1, 2, 4}) {
    std::vector<std::int64_t> bytes(static_cast<std::size_t>(count));
    ThreadGroup(count).run([&](parallel::Communicator& ranks) {
      CollectedShares shares;
      parallel::FileArrays files(series_->paths());
      parallel::StepReader reader(files);
      reader.read(ranks, step, {ranks.rank(), ranks.size()}, shares, [](double) { return true; });
      bytes[static_cast<std::size_t>(ranks.rank())] = files.counts().bytes;
    });
    std::int64_t total = 0;
    for (const std::int64_t each : bytes) total += each;
    totals.push_back(total);
  }
  EXPECT_EQ(totals[1], totals[0]);
  EXPECT_EQ(totals[2], totals[0]);
}

}  // namespace
}  // namespace parallel_test
