// Loops that are split among threads.
#include "support/worker_threads.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>
#include <pthread.h>
#include <sched.h>
#include <signal.h>
#include <utility>
#include <vector>

#include "tests/testkit/emulator.h"

namespace {

// Threads that can still be created; negative for as many as are asked for.
std::atomic<int> threads_left = -1;

constexpr int64_t kLarge = int64_t{64} << 20;

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker asks for
extern "C" {
int __real_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                          void* argument);

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                          void* argument) {
  if (threads_left == 0) return EAGAIN;
  if (threads_left > 0) --threads_left;
  return __real_pthread_create(thread, attributes, start, argument);
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

using Borders = std::vector<std::pair<int64_t, int64_t>>;

Borders borders(const fld::Ranges& ranges) {
  Borders borders;
  for (int k = 0; k < ranges.count; ++k) borders.emplace_back(ranges.begin(k), ranges.end(k));
  return borders;
}

// How often each of four pieces of work was called, and in which threads.
struct Calls {
  std::array<std::atomic<int>, 4> of_each = {};
  std::atomic<int> in_this_thread = 0;
  std::atomic<int> in_others = 0;
  std::atomic<int> with_a_signal = 0;
};

// Runs four pieces; the first one waits until `others` threads have begun another one.
void run_four(Calls& calls, int others = 3) {
  const pthread_t caller = pthread_self();
  fld::run_in_threads(4, [&](int k) {
    ++calls.of_each[static_cast<size_t>(k)];
    if (pthread_equal(pthread_self(), caller) != 0) {
      ++calls.in_this_thread;
      while (calls.in_others < others) sched_yield();
      return;
    }
    ++calls.in_others;
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    calls.with_a_signal += sigismember(&blocked, SIGUSR1) == 0;
  });
}

void expect_one_call_each(const Calls& calls) {
  for (const auto& count : calls.of_each) EXPECT_EQ(count, 1);
}

// The cores that the process may use.
int usable_cores() {
  cpu_set_t cores;
  return sched_getaffinity(0, sizeof cores, &cores) == 0 ? CPU_COUNT(&cores) : 0;
}

TEST(Ranges, AreConsecutiveAndOfAboutTheSameLength) {
  EXPECT_EQ(borders({10, 3}), (Borders{{0, 4}, {4, 7}, {7, 10}}));
  EXPECT_EQ(borders({8, 4}), (Borders{{0, 2}, {2, 4}, {4, 6}, {6, 8}}));
  EXPECT_EQ(borders({7, 1}), (Borders{{0, 7}}));
  EXPECT_EQ(borders({0, 1}), (Borders{{0, 0}}));
  EXPECT_EQ((fld::Ranges{INT64_C(1) << 60, 8}.end(7)), INT64_C(1) << 60);
}

TEST(Ranges, AreNotMoreThanElements) {
  EXPECT_EQ(fld::ranges_of(0, 8).count, 1);
  EXPECT_EQ(fld::ranges_of(1, size_t{1} << 30).count, 1);
}

TEST(WorkerThreads, DoEachPieceOfWorkOnce) {
  Calls calls;
  run_four(calls);
  expect_one_call_each(calls);
  EXPECT_EQ(calls.in_this_thread, 1);
}

TEST(WorkerThreads, LeaveTheCoresOfTheCallerAsTheyWere) {
  cpu_set_t before;
  ASSERT_EQ(sched_getaffinity(0, sizeof before, &before), 0);
  Calls calls;
  run_four(calls);
  cpu_set_t after;
  ASSERT_EQ(sched_getaffinity(0, sizeof after, &after), 0);
  EXPECT_TRUE(CPU_EQUAL(&before, &after));
}

TEST(WorkerThreads, StartOnAnotherCoreIfThereIsOne) {
  if (usable_cores() < 2) GTEST_SKIP() << "the process may use one core";
  if (fld::threads_for(kLarge) > usable_cores()) GTEST_SKIP() << "FLD_THREADS asks for more than the cores";
  cpu_set_t of_thread;
  CPU_ZERO(&of_thread);
  std::atomic<bool> has_begun = false;
  fld::run_in_threads(2, [&](int k) {
    if (k == 1) {
      sched_getaffinity(0, sizeof of_thread, &of_thread);
      has_begun = true;
    }
    while (!has_begun) sched_yield();
  });
  EXPECT_EQ(CPU_COUNT(&of_thread), usable_cores() - 1);
}

TEST(WorkerThreads, LeaveSignalsToTheHost) {
  sigset_t before;
  pthread_sigmask(SIG_BLOCK, nullptr, &before);
  ASSERT_EQ(sigismember(&before, SIGUSR1), 0);
  Calls calls;
  run_four(calls);
  EXPECT_EQ(calls.with_a_signal, 0);
  sigset_t after;
  pthread_sigmask(SIG_BLOCK, nullptr, &after);
  EXPECT_EQ(sigismember(&after, SIGUSR1), 0);
}

TEST(WorkerThreads, AreDoneWithoutWhereTheyCannotBeCreated) {
  for (const int created : {0, 1, 2}) {
    threads_left = created;
    Calls calls;
    run_four(calls, created);
    expect_one_call_each(calls);
    EXPECT_EQ(calls.in_this_thread, 4 - created);
  }
  threads_left = -1;
}

TEST(WorkerThreads, AddUpWhatOneThreadWould) {
  std::vector<int> numbers(3'000'001);
  std::iota(numbers.begin(), numbers.end(), 0);
  const auto sum = fld::sum_of_ranges(std::ssize(numbers), sizeof(int), [&](int64_t begin, int64_t end) {
    return std::accumulate(numbers.begin() + begin, numbers.begin() + end, int64_t{0});
  });
  EXPECT_EQ(sum, 4'500'001'500'000);
}

TEST(WorkerThreads, KnowWhatIsBeforeTheirRange) {
  const auto length = [](int64_t begin, int64_t end) { return end - begin; };
  const auto before = fld::sums_before<int64_t>({10, 3}, length);
  EXPECT_EQ(before[0], 0);
  EXPECT_EQ(before[1], 4);
  EXPECT_EQ(before[2], 7);
  EXPECT_EQ(fld::sums_before<int64_t>({10, 1}, length)[0], 0);
}

// The environment is read once, so each case has a process of its own.
class ThreadsDeathTest : public testing::Test {
 protected:
  ThreadsDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  void SetUp() override {
    if (kUnderEmulator) GTEST_SKIP() << "a program under qemu-user cannot start itself again";
  }

  // Ends the process with the number of threads for `bytes` under these variables; null: not set.
  [[noreturn]] static void exit_with_threads(const char* threads, const char* from, int64_t bytes) {
    unsetenv("FLD_THREADS");
    unsetenv("FLD_THREADS_FROM");
    if (threads != nullptr) setenv("FLD_THREADS", threads, 1);
    if (from != nullptr) setenv("FLD_THREADS_FROM", from, 1);
    exit(fld::threads_for(bytes));
  }
};

TEST_F(ThreadsDeathTest, AreAsManyAsFldThreadsSays) {
  EXPECT_EXIT(exit_with_threads("1", nullptr, kLarge), testing::ExitedWithCode(1), "");
  EXPECT_EXIT(exit_with_threads("3", nullptr, kLarge), testing::ExitedWithCode(3), "");
  EXPECT_EXIT(exit_with_threads("8", nullptr, kLarge), testing::ExitedWithCode(8), "");
  EXPECT_EXIT(exit_with_threads("5000", nullptr, kLarge), testing::ExitedWithCode(8), "");
}

TEST_F(ThreadsDeathTest, AreForLargeArrays) {
  EXPECT_EXIT(exit_with_threads("3", nullptr, (1 << 20) - 1), testing::ExitedWithCode(1), "");
  EXPECT_EXIT(exit_with_threads("3", nullptr, 1 << 20), testing::ExitedWithCode(3), "");
  EXPECT_EXIT(exit_with_threads("3", "100", 99), testing::ExitedWithCode(1), "");
  EXPECT_EXIT(exit_with_threads("3", "100", 100), testing::ExitedWithCode(3), "");
}

TEST_F(ThreadsDeathTest, AreOnePerCoreUnlessANumberIsGiven) {
  const int cores = std::min(usable_cores(), 8);
  for (const char* no_number : {static_cast<const char*>(nullptr), "", "0", "-2", "two", "2x"})
    EXPECT_EXIT(exit_with_threads(no_number, nullptr, kLarge), testing::ExitedWithCode(cores), "");
}

TEST_F(ThreadsDeathTest, KeepToTheCoresThatTheProcessMayUse) {
  cpu_set_t cores;
  ASSERT_EQ(sched_getaffinity(0, sizeof cores, &cores), 0);
  cpu_set_t one;
  CPU_ZERO(&one);
  for (size_t core = 0; CPU_COUNT(&one) == 0; ++core) {
    if (CPU_ISSET(core, &cores)) CPU_SET(core, &one);
  }
  const auto exit_with_one_core = [&] {
    sched_setaffinity(0, sizeof one, &one);
    exit_with_threads(nullptr, nullptr, kLarge);
  };
  EXPECT_EXIT(exit_with_one_core(), testing::ExitedWithCode(1), "");
}

}  // namespace
