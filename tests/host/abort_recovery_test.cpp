#include "host/abort_recovery.h"

#include "gtest/gtest.h"
#undef NDEBUG  // the C library declares its report only where assertions are on
#include <cassert>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <functional>
#include <stdexcept>
#include <thread>

#include "host/diagnostics_capture.h"
#include "host/error.h"
#include "host/session.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

// Whether a call returns without a failed assertion, with its text captured.
bool comes_back(const std::function<void()>& call) {
  host::DiagnosticsCapture capture;
  const host::DiagnosticsCapture::Scope scope(capture);
  return host::runs_without_assertion(call);
}

[[noreturn]] void fail_assertion() {
  __assert_fail("false", "test", 1, "void fail_assertion()");
}

void write_line(const char* line) {
  std::fputs(line, stderr);
}

TEST(AbortRecovery, TellsACallThatFailsAnAssertionFromOneThatDoesNot) {
  bool was_called = false;
  EXPECT_TRUE(comes_back([&] { was_called = true; }));
  EXPECT_TRUE(was_called);
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(comes_back(fail_assertion));
  EXPECT_FALSE(comes_back([] {
    write_line("no line end");
    fail_assertion();
  }));
}

TEST(AbortRecovery, LetsExceptionsPass) {
  EXPECT_THROW(comes_back([] { throw std::runtime_error("out"); }), std::runtime_error);
}

TEST(AbortRecovery, PutsTheSignalBack) {
  struct sigaction before = {};
  struct sigaction after = {};
  sigaction(SIGABRT, nullptr, &before);
  EXPECT_FALSE(comes_back(fail_assertion));
  sigaction(SIGABRT, nullptr, &after);
  EXPECT_EQ(before.sa_handler, after.sa_handler);
}

TEST(AbortRecoveryDeathTest, LeavesOtherThreadsAlone) {
  const auto fail_in_thread = [] { std::thread(fail_assertion).join(); };
  EXPECT_EXIT(comes_back(fail_in_thread), testing::KilledBySignal(SIGABRT), "Assertion `false' failed");
}

TEST(AbortRecoveryDeathTest, LeavesOtherAbortsAlone) {
  EXPECT_EXIT(comes_back([] { std::abort(); }), testing::KilledBySignal(SIGABRT), "");
  // An assertion that was reported before is not the reason.
  EXPECT_EXIT(comes_back([] {
                write_line("a: b:1: void c(): Assertion `d' failed.\nand then\n");
                std::abort();
              }),
              testing::KilledBySignal(SIGABRT), "and then");
}

// Opens a file of the fake reader in a session that recovers.
void open_recovering(const char* name) {
  const fake::Reader reader;
  host::Session session(reader.library, {.capture_diagnostics = true, .recover_from_assertions = true});
  session.open(fake::file(name));
}

TEST(AbortRecoveryDeathTest, LeavesWhatIsNoAssertionOfTheReaderAlone) {
  EXPECT_EXIT(open_recovering(fake::kAborts), testing::KilledBySignal(SIGABRT), "about to abort");
  EXPECT_EXIT(open_recovering(fake::kTerminates), testing::KilledBySignal(SIGABRT), "terminate called");
  // The report is that of the C library or of AddressSanitizer.
  EXPECT_DEATH(open_recovering(fake::kBreaksTheHeap), "double.free");
}

// Disables leak detection: the memory of a failed call is never released.
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

// Opens a file at which an assertion of the reader fails, and returns the message.
std::string message_of_assertion(host::Session& session) {
  const HeldForGood failed_call;
  try {
    session.open(fake::file(fake::kAsserts));
  } catch (const host::Error& error) {
    return error.what();
  }
  return "opens";
}

constexpr char kReport[] = "fake:1: void fail_assertion(): Assertion `is_made_up' failed.";

TEST(AbortRecovery, MakesAnErrorWithTheReport) {
  const fake::Reader reader;
  host::Session session(reader.library, {.capture_diagnostics = true, .recover_from_assertions = true});
  EXPECT_EQ(message_of_assertion(session),
            std::string("USERD_set_filenames: the reader gave up: ") + kReport);
  EXPECT_TRUE(session.is_lost());
  EXPECT_TRUE(session.diagnostics().ends_with(std::string(kReport) + "\n")) << session.diagnostics();
}

TEST(AbortRecovery, AsksNothingMoreOfTheReader) {
  const fake::Reader reader;
  {
    host::Session session(reader.library, {.capture_diagnostics = true, .recover_from_assertions = true});
    EXPECT_FALSE(session.is_lost());
    message_of_assertion(session);
    EXPECT_THROW(session.open(fake::file(fake::kTwoSets)), host::Error);
  }
  EXPECT_TRUE(reader.calls("USERD_exit_routine").empty());
}

// Whether the library that contained a function is still loaded.
bool is_loaded(const void* function) {
  Dl_info holder = {};
  return dladdr(function, &holder) != 0;
}

// Opens a file in a private copy of the library and closes both; returns an address in the library.
const void* open_and_close(const char* name) {
  const HeldForGood failed_call;
  const host::Library library(FAKE_READER, host::Library::Globals::own);
  host::Session session(library, {.capture_diagnostics = true, .recover_from_assertions = true});
  session.open(fake::file(name));
  return reinterpret_cast<const void*>(library.entry_points().exit_routine.function);
}

TEST(AbortRecovery, LeavesTheLibraryLoadedWhenTheExitRoutineFailsAnAssertion) {
  EXPECT_FALSE(is_loaded(open_and_close(fake::kTwoSets)));
  EXPECT_TRUE(is_loaded(open_and_close(fake::kExitAsserts)));
}

}  // namespace
