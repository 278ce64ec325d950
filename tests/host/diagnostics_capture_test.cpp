#include "host/diagnostics_capture.h"

#include "gtest/gtest.h"
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "host/session.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"

namespace {

void write_text(const char* text) {
  ASSERT_EQ(write(STDERR_FILENO, text, std::strlen(text)), static_cast<ssize_t>(std::strlen(text)));
}

TEST(DiagnosticsCapture, KeepsWhatAScopeWritesAndNothingElse) {
  host::DiagnosticsCapture capture;
  testing::internal::CaptureStderr();
  write_text("before ");
  {
    const host::DiagnosticsCapture::Scope scope(capture);
    std::fputs("from the stream, ", stderr);
    write_text("from the descriptor");
  }
  write_text("after");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "before after");
  EXPECT_EQ(capture.text(), "from the stream, from the descriptor");
}

TEST(DiagnosticsCapture, AddsUpScopesAndTellsTheLatest) {
  host::DiagnosticsCapture capture;
  for (const char* text : {"first and long\n", "second\n"}) {
    const host::DiagnosticsCapture::Scope scope(capture);
    write_text(text);
  }
  EXPECT_EQ(capture.text(), "first and long\nsecond\n");
  EXPECT_EQ(capture.latest(), "second\n");
  { const host::DiagnosticsCapture::Scope scope(capture); }
  EXPECT_EQ(capture.latest(), "");
  EXPECT_EQ(capture.text(), "first and long\nsecond\n");
}

TEST(DiagnosticsCapture, CutsTheTextOfEndlessCalls) {
  host::DiagnosticsCapture capture;
  const std::string line(100 << 10, 'x');
  for (int i = 0; i < 200; ++i) {
    const host::DiagnosticsCapture::Scope scope(capture);
    write_text(line.c_str());
  }
  EXPECT_LT(capture.text().size(), std::size_t{17} << 20);
  EXPECT_TRUE(capture.text().ends_with("(further diagnostics are not kept)\n"));
}

TEST(DiagnosticsCapture, KeepsTheBeginningAndTheEndOfALongText) {
  host::DiagnosticsCapture capture;
  {
    const host::DiagnosticsCapture::Scope scope(capture);
    write_text("IN ( FLD): /first.fld\n");
    for (int i = 0; i < 50; ++i) write_text(std::string(std::size_t{1} << 20, 'x').c_str());
    write_text("\nIN ( FLD): /middle.fld\n");
    for (int i = 0; i < 10'000; ++i) write_text("one of many lines\n");
    write_text("the end\n");
  }
  EXPECT_LE(capture.latest().size(), std::size_t{129} << 10);
  EXPECT_TRUE(capture.latest().starts_with("IN ( FLD): /first.fld\n"));
  EXPECT_TRUE(capture.latest().ends_with("one of many lines\nthe end\n"));
  EXPECT_NE(capture.latest().find(" bytes of diagnostics left out)\none of many lines\n"), std::string::npos);
  EXPECT_EQ(capture.text(), capture.latest());
  EXPECT_EQ(capture.latest_files(), (std::vector<std::string>{"/first.fld", "/middle.fld"}));
}

// Keeps a standard stream closed while it lives.
class ClosedStream {
 public:
  explicit ClosedStream(int stream) : stream_(stream), own_(fcntl(stream, F_DUPFD_CLOEXEC, 10)) {
    close(stream);
  }
  ClosedStream(const ClosedStream&) = delete;
  ClosedStream& operator=(const ClosedStream&) = delete;
  ~ClosedStream() {
    dup2(own_, stream_);
    close(own_);
  }

 private:
  int stream_;
  int own_;
};

TEST(DiagnosticsCapture, GoesWithoutAStreamOfTheProcess) {
  host::DiagnosticsCapture made_before;
  const ClosedStream closed(STDERR_FILENO);
  host::DiagnosticsCapture made_after;
  const ClosedStream closed_input(STDIN_FILENO);
  host::DiagnosticsCapture made_last;
  for (host::DiagnosticsCapture* capture : {&made_before, &made_after, &made_last}) {
    for (int i = 0; i < 2; ++i) {
      const host::DiagnosticsCapture::Scope scope(*capture);
      write_text("to nobody else\n");
    }
    EXPECT_EQ(capture->text(), "to nobody else\nto nobody else\n");
    errno = 0;
    EXPECT_EQ(fcntl(STDERR_FILENO, F_GETFD), -1);
    EXPECT_EQ(errno, EBADF);
  }
}

TEST(DiagnosticsCapture, PutsTheSignalsBack) {
  struct sigaction before = {};
  struct sigaction after = {};
  sigaction(SIGABRT, nullptr, &before);
  host::DiagnosticsCapture capture;
  { const host::DiagnosticsCapture::Scope scope(capture); }
  sigaction(SIGABRT, nullptr, &after);
  EXPECT_EQ(before.sa_handler, after.sa_handler);
}

// Opens a file of the fake reader in a session that captures.
void open_capturing(const char* name) {
  const fake::Reader reader;
  host::SessionOptions options;
  options.capture_diagnostics = true;
  host::Session session(reader.library, options);
  session.open(fake::file(name));
}

TEST(DiagnosticsCaptureDeathTest, BringsTheTextOutWhenTheReaderAborts) {
  EXPECT_EXIT(open_capturing(fake::kAborts), testing::KilledBySignal(SIGABRT), "about to abort");
}

TEST(DiagnosticsCaptureDeathTest, BringsASingleCharacterOut) {
  const auto abort_in_scope = [] {
    host::DiagnosticsCapture capture;
    const host::DiagnosticsCapture::Scope scope(capture);
    write_text("x");
    std::abort();
  };
  EXPECT_EXIT(abort_in_scope(), testing::KilledBySignal(SIGABRT), "^x($|qemu: )");
}

TEST(DiagnosticsCaptureDeathTest, BringsTheTextOutWhenTheReaderFaults) {
  EXPECT_DEATH(open_capturing(fake::kFaults), "about to fault");
}

TEST(DiagnosticsCapture, SessionsCaptureOnlyWhenAskedTo) {
  const fake::Reader reader;
  testing::internal::CaptureStderr();
  {
    host::Session session(reader.library);
    session.open(fake::file(fake::kTwoSets));
    EXPECT_EQ(session.diagnostics(), "");
    EXPECT_TRUE(session.traced_files().empty());
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "IN ( FLD): /made-up/two_sets.fld\nread done\n");

  testing::internal::CaptureStderr();
  host::SessionOptions options;
  options.capture_diagnostics = true;
  host::Session session(reader.library, options);
  session.open(fake::file(fake::kTwoSets));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(session.diagnostics(), "IN ( FLD): /made-up/two_sets.fld\nread done\n");
  EXPECT_EQ(session.traced_files(), std::vector<std::string>{"/made-up/two_sets.fld"});
}

}  // namespace
