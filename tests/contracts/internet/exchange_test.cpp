// One exchange with a server, as the operations over it rely on it.

#include <gtest/gtest.h>

#include <vector>

#include "tests/contracts/internet/internet_rig.h"

namespace platform {
namespace {

using http::Exchange;
using http::ExchangeOptions;
using test_support::AudioBytes;

class ExchangeTest : public testing::Test {
 protected:
  ExchangeOptions To(const std::string& target) {
    ExchangeOptions options;
    options.address = server_.Url(target);
    return options;
  }
  /// On a busy machine it may take long; the limit only says how long a failure takes.
  template <typename Condition>
  static bool WorkUntil(Exchange& exchange, Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + 60s;
    while (!condition()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      exchange.Work(10ms);
    }
    return true;
  }

  under_test::IcyServer server_;
};

TEST_F(ExchangeTest, HoldsNoMoreThanItsBufferHoweverLongItWorks) {
  server_.OnAny(Script().Send(kOk).Flood(AudioBytes(1024)));
  const auto exchange = under_test::MakeExchange(To("/"));
  EXPECT_TRUE(WorkUntil(*exchange, [&] { return exchange->Buffered() > Exchange::kBufferLimit / 2; }));
  for (int i = 0; i < 100; ++i) exchange->Work(5ms);
  EXPECT_LE(exchange->Buffered(), Exchange::kBufferLimit);
  EXPECT_LT(server_.BytesSent(), 1'000'000U) << "the buffers of the two sockets and of the library";
  EXPECT_FALSE(exchange->HasEnded());
}

TEST_F(ExchangeTest, ContinuesWhenItsBytesAreTaken) {
  // Byte by byte most of the time would be the server's: a call for each, 650,000 of them.
  server_.OnAny(Script().Send(kOk).Flood(AudioBytes(1024)));
  const auto exchange = under_test::MakeExchange(To("/"));
  std::vector<std::byte> bytes(10'000);
  std::size_t taken = 0;
  EXPECT_TRUE(WorkUntil(*exchange, [&] {
    taken += exchange->Take(bytes);
    return taken > 10 * Exchange::kBufferLimit;
  }));
}

TEST_F(ExchangeTest, OwesAnAnswerFromTheConnectionToTheHeader) {
  server_.OnAny(Script().AwaitSignal("answer").Send(kOk).Hold());
  const auto exchange = under_test::MakeExchange(To("/"));
  EXPECT_TRUE(WorkUntil(*exchange, [&] { return exchange->AnswerOwedFor() > 1ms; }));
  EXPECT_FALSE(exchange->IsAnswered());
  server_.Signal("answer");
  EXPECT_TRUE(WorkUntil(*exchange, [&] { return exchange->IsAnswered(); }));
  EXPECT_EQ(exchange->AnswerOwedFor(), std::nullopt);
}

TEST_F(ExchangeTest, AnUnusableAddressFails) {
  ExchangeOptions options;
  options.address = "gopher://127.0.0.1/";
  const auto exchange = under_test::MakeExchange(options);
  EXPECT_TRUE(WorkUntil(*exchange, [&] { return exchange->HasEnded(); }));
  EXPECT_TRUE(exchange->HasFailed());
  EXPECT_FALSE(exchange->IsAnswered());
}

TEST_F(ExchangeTest, WhatIsBufferedOutlivesTheEnd) {
  server_.OnAny(Script().Send(kOk).Send("bytes"));
  const auto exchange = under_test::MakeExchange(To("/"));
  EXPECT_TRUE(WorkUntil(*exchange, [&] { return exchange->HasEnded(); }));
  EXPECT_FALSE(exchange->HasFailed());
  std::vector<std::byte> bytes(3);
  EXPECT_EQ(exchange->Take(bytes), 3U);
  EXPECT_EQ(exchange->Take(bytes), 2U);
  EXPECT_EQ(exchange->Take(bytes), 0U);
}

}  // namespace
}  // namespace platform
