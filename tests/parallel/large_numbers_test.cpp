// Numbers beyond 32 bits: shares, sums and offsets, with made-up sizes and with files that are mostly holes.
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "parallel/file_arrays.h"
#include "parallel/mesh_blocks.h"
#include "parallel/partition.h"
#include "parallel/requests.h"
#include "testkit/big_endian.h"
#include "testkit/temporary_directory.h"
#include "tests/parallel/thread_group.h"

namespace parallel_test {
namespace {

constexpr std::int64_t kGiB = std::int64_t{1} << 30;
constexpr std::int64_t kTwo31 = std::int64_t{1} << 31;

// A file of holes, in which big-endian numbers are put.
class SparseFile {
 public:
  SparseFile(std::string path, std::int64_t size) : path_(std::move(path)) {
    descriptor_ = open(path_.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
    EXPECT_EQ(ftruncate(descriptor_, size), 0);
  }
  SparseFile(const SparseFile&) = delete;
  SparseFile& operator=(const SparseFile&) = delete;
  ~SparseFile() { close(descriptor_); }

  void put(const layout::FileArray& array, std::int64_t element, std::int32_t number) {
    const std::uint32_t word = testkit::in_file_order(static_cast<std::uint32_t>(number));
    EXPECT_EQ(pwrite(descriptor_, &word, sizeof word, array.place.offset_of(element)), 4);
  }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
  int descriptor_ = -1;
};

layout::FileArray array_at(std::int64_t offset, std::int64_t count, std::int32_t per_record) {
  return {.file = 0,
          .filler = 0,
          .place = {.offset = offset, .width = 4, .per_record = per_record, .first = 0, .count = count}};
}

std::vector<std::int32_t> read(parallel::FileArrays& files, const layout::FileArray& array,
                               std::int64_t first, std::int64_t count) {
  std::vector<std::int32_t> numbers;
  files.read<std::int32_t>(array, first, count, [&](const std::int32_t* from, std::int64_t n) {
    numbers.insert(numbers.end(), from, from + n);
  });
  return numbers;
}

TEST(LargeNumbers, OfElementsAreSharedOutWithoutLoss) {
  for (const std::int64_t elements : {kTwo31 - 1, kTwo31 + 7, 40 * kGiB + 3, std::int64_t{1} << 52}) {
    for (const int owners : {1, 3, 1000, 65536}) {
      const parallel::Partition partition(elements, owners);
      EXPECT_EQ(partition.of(0).first, 0);
      EXPECT_EQ(partition.of(owners - 1).last, elements);
      for (const int owner : {0, owners / 2, owners - 1}) {
        const parallel::Stretch own = partition.of(owner);
        EXPECT_LE(own.size() - elements / owners, 1);
        EXPECT_EQ(partition.owner_of(own.first), owner);
        EXPECT_EQ(partition.owner_of(own.last - 1), owner);
      }
    }
  }
}

TEST(LargeNumbers, AreSummedOverTheRanks) {
  ThreadGroup(3).run([](parallel::Communicator& ranks) {
    // As several region sets of 2^31 - 1 elements each have together.
    const parallel::Sums sums = parallel::sum(ranks, kTwo31 - 1 + ranks.rank());
    EXPECT_EQ(sums.all, 3 * (kTwo31 - 1) + 3);
    EXPECT_EQ(sums.before, ranks.rank() * (kTwo31 - 1) + (ranks.rank() == 2 ? 1 : 0));
    EXPECT_EQ(parallel::largest(ranks, ranks.rank() * 9 * kGiB), 18 * kGiB);
  });
}

TEST(LargeNumbers, OfElementsAreReadBeyondFourGibibytes) {
  const testkit::TemporaryDirectory directory;
  constexpr std::int64_t kCount = 3 * kGiB;  // elements, 12 GiB
  for (const std::int32_t per_record : {1000, 0}) {
    const layout::FileArray array = array_at(5 * kGiB + 4, kCount, per_record);
    SparseFile file(directory / "holes", array.place.offset_of(kCount - 1) + 8);
    const std::int64_t markers = per_record > 0 ? (kCount - 1) / 1000 * 8 : 0;
    EXPECT_EQ(array.place.offset_of(kCount - 1), 5 * kGiB + 4 + 4 * (kCount - 1) + markers);
    // About the ends of a record.
    for (const std::int64_t element : {kTwo31 - 1, kTwo31, std::int64_t{2999999999}, 3 * kGiB - 1})
      file.put(array, element, static_cast<std::int32_t>(element % 1000003));
    parallel::FileArrays files({file.path()});
    EXPECT_EQ(read(files, array, kTwo31 - 2, 3),
              (std::vector<std::int32_t>{0, (kTwo31 - 1) % 1000003, kTwo31 % 1000003}));
    EXPECT_EQ(read(files, array, 2999999999, 2), (std::vector<std::int32_t>{2999999999 % 1000003, 0}));
    EXPECT_EQ(read(files, array, kCount - 1, 1), (std::vector<std::int32_t>{(3 * kGiB - 1) % 1000003}));
    EXPECT_THROW(read(files, array, kCount - 1, 2), parallel::FileError);
  }
}

// Rank 1 of 2, of which rank 0 says the same numbers whatever it is asked: what it has before this one, and
// then that nothing failed.
class AfterAnotherRank : public parallel::Communicator {
 public:
  explicit AfterAnotherRank(std::int64_t before) : before_(before) {}

  int rank() const override { return 1; }
  int size() const override { return 2; }
  void broadcast(std::string& /*bytes*/) override { ADD_FAILURE() << "nothing is broadcast here"; }
  void exchange(const std::vector<std::span<const std::byte>>& /*out*/,
                const std::vector<std::span<std::byte>>& in) override {
    // The types are read (no problem), the lengths are summed, the corners are read (no problem).
    const std::int64_t said = ++exchanges_ == 2 ? before_ : 0;
    EXPECT_LE(in[0].size(), sizeof said);
    std::memcpy(in[0].data(), &said, in[0].size());
  }

 private:
  std::int64_t before_;
  int exchanges_ = 0;
};

// A region set whose connectivity has more than 2^31 entries: 2 elements here, of which the first stands for
// those of the rank before.
TEST(LargeNumbers, OfConnectivityEntriesComeBeforeARanksOwn) {
  const testkit::TemporaryDirectory directory;
  constexpr std::int64_t kBefore = kTwo31 + 8;
  layout::SetMesh mesh;
  mesh.node_count = 1000;
  mesh.types = array_at(4, 2, 2);
  mesh.conn = array_at(6 * kGiB, kBefore + 8, 4096);
  SparseFile file(directory / "holes", mesh.conn.place.offset_of(kBefore + 7) + 8);
  constexpr std::int32_t kHexahedron = 38;
  file.put(mesh.types, 1, kHexahedron);
  for (std::int32_t corner = 0; corner < 8; ++corner) file.put(mesh.conn, kBefore + corner, 100 + corner);

  parallel::FileArrays files({file.path()});
  AfterAnotherRank ranks(kBefore);
  const parallel::ElementBlock block(ranks, files, mesh);
  EXPECT_EQ(block.partition().of(1), (parallel::Stretch{1, 2}));
  ASSERT_EQ(block.corners().size(), 8);
  for (std::int32_t corner = 0; corner < 8; ++corner) EXPECT_EQ(block.corners()[corner], 100 + corner);
}

TEST(LargeNumbers, OfListEntriesAreCounted) {
  parallel::ListRuns list(kTwo31 - 1);
  for (int i = 0; i < 3; ++i) list.add(parallel::Run{0, std::numeric_limits<std::int32_t>::max()});
  EXPECT_EQ(list.count(), 3 * (kTwo31 - 1));
  const parallel::Parcels<float> parcels{{}, {kTwo31, 5 * kGiB, 1}};
  EXPECT_EQ(parcels.begin_of(2), kTwo31 + 5 * kGiB);
}

}  // namespace
}  // namespace parallel_test
