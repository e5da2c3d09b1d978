#include "platform/win32/media/stream_buffer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace platform::win32 {
namespace {

struct StreamBufferTest : testing::Test {
  /// Asks for `size` bytes; the answer is there once they are.
  struct Asked {
    explicit Asked(std::size_t size) : bytes(size, '?') {}
    std::string bytes;
    std::optional<std::size_t> count;
  };
  void Ask(Asked& asked, std::uint64_t position) {
    buffer.Read(position, std::as_writable_bytes(std::span(asked.bytes)), [&asked](std::size_t count) {
      asked.count = count;
      asked.bytes.resize(count);
    });
  }
  bool Append(const std::string& bytes) { return buffer.Append(std::as_bytes(std::span(bytes)), cancelled); }

  StreamBuffer buffer;
  std::atomic<bool> cancelled = false;
};

TEST_F(StreamBufferTest, AReadIsAnsweredOnceAllOfItIsThere) {
  Asked first(4);
  Ask(first, 0);
  EXPECT_TRUE(buffer.ReadsWait());
  EXPECT_TRUE(Append("abc"));
  EXPECT_FALSE(first.count);
  EXPECT_TRUE(Append("def"));
  EXPECT_EQ(first.bytes, "abcd");
  EXPECT_FALSE(buffer.ReadsWait());
  Asked second(2);
  Ask(second, 4);
  EXPECT_EQ(second.bytes, "ef");
}

TEST_F(StreamBufferTest, TheBeginningCanBeReadAgain) {
  Append("abcdef");
  for (int round = 0; round < 2; ++round) {
    Asked asked(3);
    Ask(asked, 1);
    EXPECT_EQ(asked.bytes, "bcd");
  }
}

TEST_F(StreamBufferTest, ReadsNearTheClaimedEndAreAnsweredWithNothingAtOnce) {
  Asked asked(128);
  Ask(asked, StreamBuffer::kLength - 128);
  EXPECT_EQ(asked.count, 0u);
}

TEST_F(StreamBufferTest, WhatHasPassedIsGone) {
  const std::string block(1 << 18, 'x');
  for (int at = 0; at < 16; ++at) {
    Append(block);
    Asked asked(block.size());
    Ask(asked, static_cast<std::uint64_t>(at) * block.size());
    EXPECT_EQ(asked.count, block.size());
  }
  Asked asked(1);
  Ask(asked, 0);
  EXPECT_EQ(asked.count, 0u);
}

TEST_F(StreamBufferTest, EndingAnswersEveryReadWithNothing) {
  Asked waiting(4);
  Ask(waiting, 0);
  Append("abc");
  buffer.EndReads();
  EXPECT_EQ(waiting.count, 0u);
  Asked later(1);
  Ask(later, 0);
  EXPECT_EQ(later.count, 0u);
  EXPECT_FALSE(Append("x"));
}

TEST_F(StreamBufferTest, ResumingBeginsAgain) {
  Append("abc");
  buffer.EndReads();
  buffer.Resume();
  Append("xyz");
  Asked asked(3);
  Ask(asked, 0);
  EXPECT_EQ(asked.bytes, "xyz");
}

TEST_F(StreamBufferTest, AfterAGapTheSoundContinuesWithAReserve) {
  Append("ab");
  Asked waiting(4);
  Ask(waiting, 0);
  buffer.Hold(3);
  Append("cdef");
  EXPECT_FALSE(waiting.count);
  Append("g");
  EXPECT_EQ(waiting.bytes, "abcd");
  Asked next(4);
  Ask(next, 4);
  Append("h");
  EXPECT_EQ(next.bytes, "efgh");
}

TEST_F(StreamBufferTest, OnlyAReadWithoutPromiseStarves) {
  EXPECT_FALSE(buffer.Starves());
  Asked waiting(4);
  Ask(waiting, 0);
  EXPECT_TRUE(buffer.Starves());
  Append("ab");
  EXPECT_FALSE(buffer.Starves());
  buffer.Hold(3);
  EXPECT_TRUE(buffer.Starves());
  Append("cdefg");
  EXPECT_FALSE(buffer.Starves());
}

TEST_F(StreamBufferTest, ALossThatTheBufferBridgesNeedsNoReserve) {
  Append("abcd");
  buffer.Hold(100);
  Asked bridging(4);
  Ask(bridging, 0);
  EXPECT_EQ(bridging.bytes, "abcd");
  Append("ef");
  Asked next(4);
  Ask(next, 4);
  Append("gh");
  EXPECT_EQ(next.bytes, "efgh");
}

TEST_F(StreamBufferTest, AFinishedStreamGivesItsRest) {
  Asked waiting(8);
  Ask(waiting, 0);
  Append("abc");
  buffer.Finish();
  EXPECT_EQ(waiting.bytes, "abc");
  Asked later(1);
  Ask(later, 3);
  EXPECT_EQ(later.count, 0u);
}

TEST_F(StreamBufferTest, AFullBufferHoldsTheServerUpUntilSomethingIsRead) {
  const std::string block(StreamBuffer::kMostAhead, 'x');
  Append(block);
  std::atomic<bool> appended = false;
  std::thread server([&] { appended = Append("end"); });
  EXPECT_FALSE(appended);
  Asked asked(1);
  Ask(asked, 0);
  server.join();
  EXPECT_TRUE(appended);
}

TEST_F(StreamBufferTest, CancellingEndsTheWaitForRoom) {
  Append(std::string(StreamBuffer::kMostAhead, 'x'));
  bool appended = true;
  std::thread server([&] { appended = Append("end"); });
  cancelled = true;
  server.join();
  EXPECT_FALSE(appended);
}

}  // namespace
}  // namespace platform::win32
