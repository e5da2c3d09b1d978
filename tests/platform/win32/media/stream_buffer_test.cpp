#include "platform/win32/media/stream_buffer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
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
  EXPECT_TRUE(buffer.Look().read_waits);
  EXPECT_TRUE(Append("abc"));
  EXPECT_FALSE(first.count);
  EXPECT_TRUE(Append("def"));
  EXPECT_EQ(first.bytes, "abcd");
  EXPECT_FALSE(buffer.Look().read_waits);
  Asked second(2);
  Ask(second, 4);
  EXPECT_EQ(second.bytes, "ef");
}

TEST_F(StreamBufferTest, ALargeBlockIsNotWaitedFor) {
  Asked asked(StreamBuffer::kEnough + 1);
  Ask(asked, 0);
  Append(std::string(StreamBuffer::kEnough - 1, 'x'));
  EXPECT_FALSE(asked.count);
  Append("x");
  EXPECT_EQ(asked.count, StreamBuffer::kEnough);
  EXPECT_EQ(asked.bytes, std::string(StreamBuffer::kEnough, 'x'));
  Append(std::string(2 * StreamBuffer::kEnough, 'y'));
  Asked further(2 * StreamBuffer::kEnough);
  Ask(further, StreamBuffer::kEnough);
  EXPECT_EQ(further.count, 2 * StreamBuffer::kEnough);
}

TEST_F(StreamBufferTest, WhoeverIsAnsweredMayReadOnAtOnce) {
  std::string read;
  std::string piece(2, '?');
  std::function<void(std::size_t)> read_on = [&](std::size_t count) {
    read += piece.substr(0, count);
    if (read.size() < 8) buffer.Read(read.size(), std::as_writable_bytes(std::span(piece)), read_on);
  };
  buffer.Read(0, std::as_writable_bytes(std::span(piece)), read_on);
  Append("abcd");
  EXPECT_EQ(read, "abcd");
  buffer.Set(StreamBuffer::Gate::kShut);
  Append("ef");
  buffer.Set(StreamBuffer::Gate::kOpen);
  EXPECT_EQ(read, "abcdef");
  Append("gh");
  EXPECT_EQ(read, "abcdefgh");
}

TEST_F(StreamBufferTest, WhoeverIsAnsweredWithNothingMayLookAtOnce) {
  std::byte target{};
  int answers = 0;
  const auto look = [&](std::size_t count) { answers += count == 0 && !buffer.Look().read_waits ? 1 : 0; };
  buffer.Read(StreamBuffer::kLength - 1, {&target, 1}, look);
  EXPECT_EQ(answers, 1);
  buffer.Read(0, {&target, 1}, look);
  buffer.Finish();
  EXPECT_EQ(answers, 2);
}

TEST_F(StreamBufferTest, WhoeverIsEndedMayLookAtOnce) {
  std::byte target{};
  int answers = 0;
  buffer.Read(0, {&target, 1}, [&](std::size_t) { answers += buffer.Look().read_waits ? 0 : 1; });
  buffer.EndReads();
  EXPECT_EQ(answers, 1);
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

TEST_F(StreamBufferTest, NothingOfWhatHasPassedMattersAfterResuming) {
  const std::string block(1 << 18, 'x');
  for (int at = 0; at < 16; ++at) {
    Append(block);
    Asked asked(block.size());
    Ask(asked, static_cast<std::uint64_t>(at) * block.size());
  }
  buffer.EndReads();
  buffer.Resume();
  Append("first" + std::string(3 << 20, 'y'));
  Asked asked(5);
  Ask(asked, 0);
  EXPECT_EQ(asked.bytes, "first");
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

TEST_F(StreamBufferTest, WhileItIsShutReadsWaitThoughTheirBytesAreThere) {
  Append("abcd");
  buffer.Set(StreamBuffer::Gate::kShut);
  Asked asked(4);
  Ask(asked, 0);
  EXPECT_FALSE(asked.count);
  EXPECT_TRUE(buffer.Look().read_waits);
  buffer.Set(StreamBuffer::Gate::kOpen);
  EXPECT_EQ(asked.bytes, "abcd");
}

TEST_F(StreamBufferTest, EndingAndFinishingDoNotWaitForTheGate) {
  Append("abcd");
  buffer.Set(StreamBuffer::Gate::kShut);
  Asked asked(4);
  Ask(asked, 0);
  buffer.Finish();
  EXPECT_EQ(asked.bytes, "abcd");
  Asked later(2);
  buffer.EndReads();
  Ask(later, 0);
  EXPECT_EQ(later.count, 0u);
}

TEST_F(StreamBufferTest, ResumingOpensTheGate) {
  buffer.Set(StreamBuffer::Gate::kShut);
  buffer.EndReads();
  buffer.Resume();
  Append("ab");
  Asked asked(2);
  Ask(asked, 0);
  EXPECT_EQ(asked.bytes, "ab");
}

TEST_F(StreamBufferTest, KnowsHowMuchSoundWasReadAndHowMuchIsLeft) {
  using std::chrono::milliseconds;
  std::string frame("\xFF\xFB\x94", 3);  // 24 ms
  frame.resize(384);
  const auto before = StreamBuffer::Clock::now();
  for (int at = 0; at < 10; ++at) Append(frame);
  auto level = buffer.Look();
  EXPECT_GE(level.appended_at, before);
  EXPECT_EQ(level.format, live::SoundFormat::kMp3);
  EXPECT_EQ(level.bit_rate, 128000);
  EXPECT_EQ(level.given, milliseconds(0));
  EXPECT_EQ(level.ahead, milliseconds(240));
  EXPECT_EQ(level.bytes_ahead, 3840u);
  Asked asked(4 * frame.size());
  Ask(asked, 0);
  level = buffer.Look();
  EXPECT_EQ(level.given, milliseconds(96));
  EXPECT_EQ(level.ahead, milliseconds(144));
  EXPECT_EQ(level.bytes_ahead, 6 * frame.size());
  // What is read again counts once.
  Asked again(frame.size());
  Ask(again, 0);
  EXPECT_EQ(buffer.Look().given, milliseconds(96));
  Asked further(2 * frame.size());
  Ask(further, 4 * frame.size());
  Append(frame);
  EXPECT_EQ(buffer.Look().given, milliseconds(144));
  EXPECT_EQ(buffer.Look().ahead, milliseconds(120));
  buffer.EndReads();
  buffer.Resume();
  EXPECT_EQ(buffer.Look().given + buffer.Look().ahead, milliseconds(0));
  EXPECT_EQ(buffer.Look().bytes_ahead, 0u);
  Append(frame + frame);
  EXPECT_EQ(buffer.Look().given, milliseconds(0));
  Asked half(frame.size());
  Ask(half, 0);
  EXPECT_EQ(buffer.Look().given, milliseconds(0)) << "known for whole pieces only";
  Append(frame);
  Asked more(2 * frame.size());
  Ask(more, frame.size());
  EXPECT_EQ(buffer.Look().given, milliseconds(72));
  EXPECT_EQ(buffer.Look().ahead, milliseconds(0));
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
