#include "platform/curl/transfer.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/platform/curl/curl_rig.h"

namespace platform::curl {
namespace {

using test_support::AudioBytes;

class TransferTest : public testing::Test {
 protected:
  TransferOptions To(const std::string& target) {
    TransferOptions options;
    options.address = server_.Url(target);
    return options;
  }
  template <typename Condition>
  static bool WorkUntil(Transfer& transfer, Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (!condition()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      transfer.Work(10ms);
    }
    return true;
  }

  test_support::ScriptedIcyServer server_;
};

TEST_F(TransferTest, HoldsNoMoreThanItsBufferHoweverLongItWorks) {
  server_.OnAny(Script().Send(kOk).Flood(AudioBytes(1024)));
  Transfer transfer(To("/"));
  EXPECT_TRUE(WorkUntil(transfer, [&] { return transfer.Buffered() > Transfer::kBufferLimit / 2; }));
  for (int i = 0; i < 100; ++i) transfer.Work(5ms);
  EXPECT_LE(transfer.Buffered(), Transfer::kBufferLimit);
  EXPECT_LT(server_.BytesSent(), 1'000'000U) << "the buffers of the two sockets and of the library";
  EXPECT_FALSE(transfer.HasEnded());
}

TEST_F(TransferTest, ContinuesWhenItsBytesAreTaken) {
  server_.OnAny(Script().Send(kOk).Flood("x"));
  Transfer transfer(To("/"));
  std::vector<std::byte> bytes(10'000);
  std::size_t taken = 0;
  EXPECT_TRUE(WorkUntil(transfer, [&] {
    taken += transfer.Take(bytes);
    return taken > 10 * Transfer::kBufferLimit;
  }));
}

TEST_F(TransferTest, OwesAnAnswerFromTheConnectionToTheHeader) {
  server_.OnAny(Script().AwaitSignal("answer").Send(kOk).Hold());
  Transfer transfer(To("/"));
  EXPECT_EQ(transfer.AnswerOwedFor(), std::nullopt);
  EXPECT_TRUE(WorkUntil(transfer, [&] { return transfer.AnswerOwedFor() > 1ms; }));
  EXPECT_FALSE(transfer.IsAnswered());
  server_.Signal("answer");
  EXPECT_TRUE(WorkUntil(transfer, [&] { return transfer.IsAnswered(); }));
  EXPECT_EQ(transfer.AnswerOwedFor(), std::nullopt);
}

TEST_F(TransferTest, AnUnusableAddressFails) {
  TransferOptions options;
  options.address = "gopher://127.0.0.1/";
  Transfer transfer(options);
  EXPECT_TRUE(WorkUntil(transfer, [&] { return transfer.HasEnded(); }));
  EXPECT_TRUE(transfer.HasFailed());
  EXPECT_FALSE(transfer.IsAnswered());
}

TEST_F(TransferTest, WhatIsBufferedOutlivesTheEnd) {
  server_.OnAny(Script().Send(kOk).Send("bytes"));
  Transfer transfer(To("/"));
  EXPECT_TRUE(WorkUntil(transfer, [&] { return transfer.HasEnded(); }));
  EXPECT_FALSE(transfer.HasFailed());
  std::vector<std::byte> bytes(3);
  EXPECT_EQ(transfer.Take(bytes), 3U);
  EXPECT_EQ(transfer.Take(bytes), 2U);
  EXPECT_EQ(transfer.Take(bytes), 0U);
}

}  // namespace
}  // namespace platform::curl
