#include "platform/win32/internet/reading.h"

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <thread>
#include <vector>

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t kError = 12002;

std::string TakeAll(Reading& reading, std::size_t most = 100'000) {
  std::vector<std::byte> bytes(most);
  bytes.resize(reading.Take(bytes));
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Waits until the clock shows that much more.
void LetPass(std::chrono::milliseconds time) {
  const auto until = std::chrono::steady_clock::now() + time;
  while (std::chrono::steady_clock::now() < until) std::this_thread::sleep_for(1ms);
}

TEST(Reading, AFullBufferKeepsTheReaderWaitingUntilThereIsRoom) {
  Reading reading;
  const std::string most(http::Exchange::kBufferLimit, 'x');
  EXPECT_TRUE(reading.Append(most));
  auto appended = std::async(std::launch::async, [&] { return reading.Append("yz"); });
  EXPECT_EQ(appended.wait_for(50ms), std::future_status::timeout);
  EXPECT_EQ(reading.Buffered(), most.size());
  EXPECT_EQ(TakeAll(reading, 1), "x");
  EXPECT_EQ(appended.wait_for(50ms), std::future_status::timeout) << "there is room for one byte only";
  EXPECT_EQ(TakeAll(reading, most.size()), most.substr(1) + "y");
  ASSERT_EQ(appended.wait_for(10s), std::future_status::ready);
  EXPECT_TRUE(appended.get());
  EXPECT_EQ(TakeAll(reading), "z");
  EXPECT_EQ(reading.Buffered(), 0U);
}

TEST(Reading, ACancelEndsEveryWaitOfTheReaderAndKeepsNothing) {
  Reading reading;
  EXPECT_TRUE(reading.Append(std::string(http::Exchange::kBufferLimit, 'x')));
  auto appended = std::async(std::launch::async, [&] { return reading.Append("y"); });
  auto waited = std::async(std::launch::async, [&] { return reading.WaitUntil([] { return false; }); });
  EXPECT_EQ(waited.wait_for(50ms), std::future_status::timeout);
  reading.Cancel();
  ASSERT_EQ(appended.wait_for(10s), std::future_status::ready);
  ASSERT_EQ(waited.wait_for(10s), std::future_status::ready);
  EXPECT_FALSE(appended.get());
  EXPECT_FALSE(waited.get());
  EXPECT_TRUE(reading.IsCancelled());
  TakeAll(reading);
  EXPECT_FALSE(reading.Append("z"));
  EXPECT_FALSE(reading.Append(""));
  EXPECT_EQ(reading.Buffered(), 0U);
  reading.Answer({});
  EXPECT_FALSE(reading.IsAnswered());
  EXPECT_FALSE(reading.WaitUntil([] { return true; }));
}

TEST(Reading, AChangeIsWaitedFor) {
  Reading reading;
  bool changed = false;
  auto waited = std::async(std::launch::async, [&] { return reading.WaitUntil([&] { return changed; }); });
  EXPECT_EQ(waited.wait_for(50ms), std::future_status::timeout);
  reading.Change([&] { changed = true; });
  ASSERT_EQ(waited.wait_for(10s), std::future_status::ready);
  EXPECT_TRUE(waited.get());
}

TEST(Reading, ConnectingIsLimitedUntilTheRequestIsSent) {
  Reading reading;
  reading.LimitConnecting(0ms, kError);
  EXPECT_FALSE(reading.HasEnded()) << "it has not begun";
  reading.Begin();
  reading.LimitConnecting(1h, kError);
  EXPECT_FALSE(reading.HasEnded());
  reading.Sent();
  reading.LimitConnecting(0ms, kError);
  EXPECT_FALSE(reading.HasEnded()) << "it is connected";
  reading.Begin();
  reading.LimitConnecting(0ms, kError);
  EXPECT_TRUE(reading.HasEnded()) << "another hop connects anew";
  EXPECT_EQ(reading.Failure(), InternetFailure::kNoAnswer);
  EXPECT_EQ(reading.Error(), kError);
  EXPECT_TRUE(reading.IsCancelled());
}

TEST(Reading, TheLimitOfConnectingEndsTheReadersWaitButNothingThatHasEnded) {
  Reading reading;
  reading.Begin();
  auto waited = std::async(std::launch::async, [&] { return reading.WaitUntil([] { return false; }); });
  EXPECT_EQ(waited.wait_for(50ms), std::future_status::timeout);
  reading.LimitConnecting(0ms, kError);
  ASSERT_EQ(waited.wait_for(10s), std::future_status::ready);
  EXPECT_FALSE(waited.get());
  Reading refused;
  refused.Begin();
  refused.End(InternetFailure::kRefused, kError);
  refused.LimitConnecting(0ms, kError);
  EXPECT_FALSE(refused.IsCancelled());
}

TEST(Reading, AnAnswerEndsConnectingAndWhatIsOwed) {
  Reading reading;
  reading.Begin();
  reading.Answer({});
  reading.LimitConnecting(0ms, kError);
  EXPECT_FALSE(reading.HasEnded());
  EXPECT_TRUE(reading.IsAnswered());
  reading.Sent();
  EXPECT_EQ(reading.AnswerOwedFor(), std::nullopt);
  Reading sent;
  sent.Begin();
  sent.Sent();
  sent.Answer({});
  EXPECT_EQ(sent.AnswerOwedFor(), std::nullopt);
}

TEST(Reading, AnAnswerIsOwedFromTheFirstRequestOfAHop) {
  Reading reading;
  reading.Begin();
  EXPECT_EQ(reading.AnswerOwedFor(), std::nullopt);
  reading.Sent();
  LetPass(30ms);
  reading.Sent();
  EXPECT_GE(reading.AnswerOwedFor(), 30ms) << "though it was sent again";
  reading.Begin();
  EXPECT_EQ(reading.AnswerOwedFor(), std::nullopt);
  reading.Sent();
  reading.End(InternetFailure::kOther, kError);
  EXPECT_EQ(reading.AnswerOwedFor(), std::nullopt);
}

TEST(Reading, TheFirstEndCounts) {
  Reading reading;
  reading.End(InternetFailure::kRefused, kError);
  reading.End(InternetFailure::kNone, 0);
  EXPECT_TRUE(reading.HasEnded());
  EXPECT_EQ(reading.Failure(), InternetFailure::kRefused);
  EXPECT_EQ(reading.Error(), kError);
}

TEST(Reading, EveryEventEndsOneWaitOfTheAskingThread) {
  Reading reading;
  const auto waits_for = [&reading](std::chrono::milliseconds slice) {
    const auto start = std::chrono::steady_clock::now();
    reading.Await(slice);
    return std::chrono::steady_clock::now() - start >= slice;
  };
  const auto waits = [&] { return waits_for(100ms); };
  const auto misses_the_event = [&] { return waits_for(30s); };
  EXPECT_TRUE(waits());
  reading.Answer({});
  EXPECT_FALSE(misses_the_event());
  EXPECT_TRUE(waits());
  reading.Append("x");
  EXPECT_FALSE(misses_the_event());
  reading.End(InternetFailure::kNone);
  EXPECT_FALSE(misses_the_event());
  EXPECT_TRUE(waits()) << "after the end too, so that nobody spins";
}

TEST(Reading, AnEventWakesTheAskingThread) {
  Reading reading;
  auto awaited = std::async(std::launch::async, [&] { reading.Await(1h); });
  EXPECT_EQ(awaited.wait_for(50ms), std::future_status::timeout);
  reading.Append("x");
  EXPECT_EQ(awaited.wait_for(10s), std::future_status::ready);
  // One that was not woken would wait for its hour.
  reading.Cancel();
}

TEST(Reading, QuietIsSinceTheLatestArrival) {
  Reading reading;
  for (const bool is_answer : {true, false}) {
    LetPass(100ms);
    EXPECT_GE(reading.QuietFor(), 100ms);
    const auto before = std::chrono::steady_clock::now();
    if (is_answer) reading.Answer({});
    if (!is_answer) reading.Append("x");
    const auto quiet = reading.QuietFor();
    EXPECT_LE(quiet, std::chrono::steady_clock::now() - before + 1ms);
  }
}

}  // namespace
}  // namespace platform::win32
