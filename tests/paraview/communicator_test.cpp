// Messages through a controller of VTK: who sends to whom, and how long they are.
#include <gtest/gtest.h>
#include <span>
#include <vector>
#include <vtkMultiProcessController.h>

#include "paraview/controller_communicator.h"
#include "tests/paraview/controller_ranks.h"

namespace paraview_test {
namespace {

// Runs `work` on every rank with messages of at most `longest` bytes.
template <typename Work>
std::size_t longest_message(int size, std::int64_t longest, Work work) {
  return run_on_ranks(size, [&](vtkMultiProcessController* controller) {
    paraview::ControllerCommunicator ranks(controller, longest);
    work(ranks);
  });
}

// What rank `from` has for rank `to`.
std::vector<std::byte> parcel(int from, int to) {
  std::vector<std::byte> bytes(static_cast<std::size_t>(7 * from + 3 * to));
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::byte>(i + static_cast<std::size_t>(from));
  return bytes;
}

TEST(ControllerCommunicators, BringEveryRankWhatTheOthersHaveForIt) {
  for (const int size : {2, 3, 5}) {
    longest_message(size, 8, [size](parallel::Communicator& ranks) {
      ASSERT_EQ(ranks.size(), size);
      std::vector<std::vector<std::byte>> sent;
      std::vector<std::vector<std::byte>> received;
      for (int r = 0; r < size; ++r) {
        sent.push_back(parcel(ranks.rank(), r));
        received.emplace_back(parcel(r, ranks.rank()).size());
      }
      const std::vector<std::span<const std::byte>> out(sent.begin(), sent.end());
      const std::vector<std::span<std::byte>> in(received.begin(), received.end());
      ranks.exchange(out, in);
      for (int r = 0; r < size; ++r) {
        if (r == ranks.rank()) continue;
        EXPECT_EQ(received[static_cast<std::size_t>(r)], parcel(r, ranks.rank()));
      }
    });
  }
}

TEST(ControllerCommunicators, GatherWhatEveryRankGives) {
  for (const int size : {2, 3, 5}) {
    longest_message(size, 8, [size](parallel::Communicator& ranks) {
      constexpr std::int64_t kBillions = 5000000000;
      const std::vector<std::int64_t> all = ranks.gather(kBillions + ranks.rank());
      ASSERT_EQ(all.size(), static_cast<std::size_t>(size));
      for (int r = 0; r < size; ++r) EXPECT_EQ(all[static_cast<std::size_t>(r)], kBillions + r);
    });
  }
}

TEST(ControllerCommunicators, SendLongMessagesInPieces) {
  const auto exchange = [](parallel::Communicator& ranks) {
    std::vector<std::byte> sent(1000, std::byte{7});
    std::vector<std::byte> received(1000);
    const std::span<const std::byte> out(sent);
    const std::span<std::byte> in(received);
    ranks.exchange({out, out}, {in, in});
    EXPECT_EQ(received, sent);
  };
  EXPECT_EQ(longest_message(2, 64, exchange), 64U);
  EXPECT_EQ(longest_message(2, 4096, exchange), 1000U);
}

}  // namespace
}  // namespace paraview_test
