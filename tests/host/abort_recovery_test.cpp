#include "host/abort_recovery.h"

#include "gtest/gtest.h"
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "host/error.h"
#include "host/session.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

TEST(AbortRecovery, TellsACallThatAbortsFromOneThatDoesNot) {
  bool was_called = false;
  EXPECT_TRUE(host::runs_without_abort([&] { was_called = true; }));
  EXPECT_TRUE(was_called);
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(host::runs_without_abort([] { std::abort(); }));
}

TEST(AbortRecovery, LetsExceptionsPass) {
  EXPECT_THROW(host::runs_without_abort([] { throw std::runtime_error("out"); }), std::runtime_error);
}

TEST(AbortRecovery, PutsTheSignalBack) {
  struct sigaction before = {};
  struct sigaction after = {};
  sigaction(SIGABRT, nullptr, &before);
  EXPECT_FALSE(host::runs_without_abort([] { std::abort(); }));
  sigaction(SIGABRT, nullptr, &after);
  EXPECT_EQ(before.sa_handler, after.sa_handler);
}

TEST(AbortRecoveryDeathTest, LeavesOtherThreadsAlone) {
  const auto abort_in_thread = [] { std::thread([] { std::abort(); }).join(); };
  EXPECT_EXIT(host::runs_without_abort(abort_in_thread), testing::KilledBySignal(SIGABRT), "");
}

// While it lives, nothing that is allocated counts as leaked: what an aborted call held stays for good.
struct HeldForGood {
#ifdef __SANITIZE_ADDRESS__
  HeldForGood() {
    __lsan_disable();
  }
  ~HeldForGood() {
    __lsan_enable();
  }
#else
  HeldForGood() {}
#endif
  HeldForGood(const HeldForGood&) = delete;
  HeldForGood& operator=(const HeldForGood&) = delete;
};

// Opens the file that makes the reader abort, and returns the message.
std::string message_of_abort(host::Session& session) {
  const HeldForGood aborted_call;
  try {
    session.open(fake::file(fake::kAborts));
  } catch (const host::Error& error) {
    return error.what();
  }
  return "opens";
}

TEST(AbortRecovery, MakesAnErrorWithWhatTheReaderWroteLast) {
  const fake::Reader reader;
  host::Session session(reader.library, {.capture_diagnostics = true, .recover_from_aborts = true});
  EXPECT_EQ(message_of_abort(session), "USERD_set_filenames: the reader gave up: about to abort");
  EXPECT_TRUE(session.is_lost());
  EXPECT_EQ(session.diagnostics(), "about to abort\n");
}

TEST(AbortRecovery, AsksNothingMoreOfTheReader) {
  const fake::Reader reader;
  {
    host::Session session(reader.library, {.recover_from_aborts = true});
    EXPECT_FALSE(session.is_lost());
    testing::internal::CaptureStderr();
    EXPECT_EQ(message_of_abort(session), "USERD_set_filenames: the reader gave up");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "about to abort\n");
    EXPECT_THROW(session.open(fake::file(fake::kTwoSets)), host::Error);
  }
  EXPECT_TRUE(reader.calls("USERD_exit_routine").empty());
}

}  // namespace
