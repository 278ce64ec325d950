// What signals do to long work.
#include "tool/interrupt.h"

#include "gtest/gtest.h"
#include <csignal>
#include <cstdlib>

namespace {

// The signal is sent in a process of its own, which leaves with status 7 when it gets past what follows.
constexpr int kGotPast = 7;

class Interrupt : public testing::Test {
 protected:
  // Programs that a script starts in its background, as this may be, ignore it.
  Interrupt() { std::signal(SIGINT, SIG_DFL); }
};

void expect_noted(int signal_number) {
  EXPECT_EXIT(
      {
        tool::catch_interrupts();
        if (tool::interrupted()) std::exit(1);
        tool::stop_if_interrupted();
        std::raise(signal_number);
        if (!tool::interrupted()) std::exit(2);
        try {
          tool::stop_if_interrupted();
        } catch (const tool::Interrupted&) {
          std::exit(kGotPast);
        }
        std::exit(3);
      },
      testing::ExitedWithCode(kGotPast), "");
}

TEST_F(Interrupt, IsNotedOnce) {
  expect_noted(SIGINT);
  expect_noted(SIGTERM);
}

TEST_F(Interrupt, TheSecondSignalEndsTheProgram) {
  EXPECT_EXIT(
      {
        tool::catch_interrupts();
        std::raise(SIGINT);
        std::raise(SIGINT);
        std::exit(kGotPast);
      },
      testing::KilledBySignal(SIGINT), "");
  EXPECT_EXIT(
      {
        tool::catch_interrupts();
        std::raise(SIGINT);
        std::raise(SIGTERM);
        std::exit(kGotPast);
      },
      testing::KilledBySignal(SIGTERM), "");
}

TEST_F(Interrupt, EndsTheProgramWhereItCannotBeStopped) {
  EXPECT_EXIT(
      {
        tool::catch_interrupts();
        const tool::ExitAtOnce guard;
        std::raise(SIGTERM);
        std::exit(kGotPast);
      },
      testing::ExitedWithCode(130), "^fldtool: interrupted\n$");
  EXPECT_EXIT(
      {
        tool::catch_interrupts();
        { const tool::ExitAtOnce guard; }
        std::raise(SIGINT);
        std::exit(tool::interrupted() ? kGotPast : 1);
      },
      testing::ExitedWithCode(kGotPast), "");
}

TEST_F(Interrupt, DoesNotBeginWhatCannotBeStopped) {
  EXPECT_EXIT(
      {
        tool::catch_interrupts();
        std::raise(SIGINT);
        try {
          const tool::ExitAtOnce guard;
        } catch (const tool::Interrupted&) {
          std::exit(kGotPast);
        }
        std::exit(1);
      },
      testing::ExitedWithCode(kGotPast), "");
}

TEST_F(Interrupt, ASignalThatIsIgnoredStaysSo) {
  EXPECT_EXIT(
      {
        std::signal(SIGINT, SIG_IGN);
        tool::catch_interrupts();
        std::raise(SIGINT);
        std::exit(tool::interrupted() ? 1 : kGotPast);
      },
      testing::ExitedWithCode(kGotPast), "");
}

}  // namespace
