#include "platform/posix/terminal_loop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

namespace platform::posix {
namespace {

TEST(TerminalLoopTest, ReportsARequestToEndInTheNextPumpAndOnce) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    TerminalLoop loop;
    int asked = 0;
    loop.EndAsked = [&asked] { ++asked; };
    loop.ProcessPendingMessages();
    EXPECT_EQ(asked, 0);
    ::raise(signal);
    EXPECT_EQ(asked, 0) << "not inside the signal handler";
    loop.ProcessPendingMessages();
    loop.ProcessPendingMessages();
    EXPECT_EQ(asked, 1);
  }
}

TEST(TerminalLoopTest, ARequestToEndEndsAWaitUntilItIsPassedOn) {
  TerminalLoop loop;
  EXPECT_FALSE(loop.InputEndsWait());
  ::raise(SIGTERM);
  EXPECT_TRUE(loop.InputEndsWait());
  EXPECT_TRUE(loop.InputEndsWait()) << "asking passes nothing on";
  loop.ProcessPendingMessages();
  EXPECT_FALSE(loop.InputEndsWait());
}

TEST(TerminalLoopTest, TheSecondSignalEndsTheProcess) {
  EXPECT_EXIT(
      {
        const TerminalLoop loop;
        ::raise(SIGINT);
        ::raise(SIGINT);
      },
      testing::KilledBySignal(SIGINT), "");
}

TEST(TerminalLoopTest, GivesTheSignalsTheirFormerHandlingBack) {
  struct sigaction before {};
  struct sigaction after {};
  ::sigaction(SIGTERM, nullptr, &before);
  { const TerminalLoop loop; }
  ::sigaction(SIGTERM, nullptr, &after);
  EXPECT_EQ(before.sa_handler, after.sa_handler);
}

TEST(TerminalLoopTest, SleepsAtLeastAsLongAsAsked) {
  TerminalLoop loop;
  const auto start = std::chrono::steady_clock::now();
  loop.Sleep(20);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
}

}  // namespace
}  // namespace platform::posix
