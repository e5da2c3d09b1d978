// What a live stream does when it is lost, runs dry, is paused or ended: it needs with_sound.py.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <list>
#include <optional>
#include <span>
#include <string>
#include <thread>

#include "platform/live/reconnect_schedule.h"
#include "platform/win32/media/live_stream.h"
#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

struct LiveStreamStates : StationRig {
  void Open(const std::string& path, LiveStreamOptions::First first = LiveStreamOptions::First::kDecides) {
    stream.emplace(Address(path), LiveStreamOptions{15s, u"test", first});
  }
  void TearDown() override {
    stream.reset();
    StationRig::TearDown();
  }
  /// Six tenths of a second of sound, and the rest once /go was asked for.
  void OpenShort() {
    static_cast<void>(Ask("/trickles"));
    Open("/trickles");
    ASSERT_TRUE(WaitUntil([this] { return stream->Decided(); }));
  }
  /// As whoever plays the stream: reads on as long as there is something.
  void ReadOn() {
    stream->Buffer()->Read(read, std::as_writable_bytes(std::span(piece)), [this](std::size_t count) {
      read += count;
      if (count > 0) ReadOn();
    });
  }
  bool Is(PlaybackState state) {
    return WaitUntil([&] { return stream->Status().state == state; });
  }
  bool WasAskedFor(const std::string& path, int times) {
    return WaitUntil([&] { return Ask("/count?" + path) >= times; });
  }

  std::string piece = std::string(1000, '?');
  std::atomic<std::uint64_t> read = 0;
  std::optional<LiveStream> stream;
};

TEST_F(LiveStreamStates, RunsDryUntilThereIsEnough) {
  OpenShort();
  ReadOn();
  stream->Playing();
  ASSERT_TRUE(Is(PlaybackState::kBuffering));
  EXPECT_EQ(stream->Status().buffered_percent, 0);
  EXPECT_EQ(stream->Status().bit_rate, 0);
  // What comes meanwhile is kept for later.
  const std::atomic<bool> cancelled = false;
  const auto before = read.load();
  EXPECT_TRUE(stream->Buffer()->Append(std::as_bytes(std::span(piece)), cancelled));
  EXPECT_EQ(read, before);
  EXPECT_EQ(Ask("/go"), 0);
  EXPECT_TRUE(WaitUntil([this] { return stream->Status().buffered_percent > 0; }));
  EXPECT_TRUE(Is(PlaybackState::kPlaying));
  EXPECT_EQ(stream->Status().buffered_percent, 0);
}

TEST_F(LiveStreamStates, StartedOnceMoreGoesOnBuffering) {
  OpenShort();
  ReadOn();
  stream->Playing();
  ASSERT_TRUE(Is(PlaybackState::kBuffering));
  stream->ResumeReads();
  EXPECT_EQ(stream->Status().state, PlaybackState::kBuffering);
}

TEST_F(LiveStreamStates, DoesNotRunDryWhilePaused) {
  OpenShort();
  ReadOn();
  stream->Playing();
  stream->Paused();
  // Longer than its sound.
  const auto end = std::chrono::steady_clock::now() + 700ms;
  while (std::chrono::steady_clock::now() < end) {
    ASSERT_EQ(stream->Status().state, PlaybackState::kPlaying);
    std::this_thread::sleep_for(10ms);
  }
  stream->Playing();
  EXPECT_TRUE(Is(PlaybackState::kBuffering));
}

TEST_F(LiveStreamStates, BeginsAnewAfterItWasEnded) {
  OpenShort();
  ReadOn();
  stream->Playing();
  ASSERT_TRUE(Is(PlaybackState::kBuffering));
  stream->EndReads();
  EXPECT_EQ(Ask("/go"), 0);
  EXPECT_TRUE(Disconnected());
  EXPECT_EQ(Ask("/return"), 0);
  stream->ResumeReads();
  EXPECT_EQ(stream->Status().state, PlaybackState::kPlaying);
  EXPECT_TRUE(WasAskedFor("/trickles", 3));
  EXPECT_TRUE(WaitUntil([this] { return stream->Buffer()->Look().bytes_ahead > 24'000; }));
}

TEST_F(LiveStreamStates, WhilePausedItIsNotConnectedAgain) {
  Open("/cut");
  stream->Paused();
  ASSERT_TRUE(WaitUntil([this] { return stream->Failure() == PlaybackFailure::kConnectionLost; }));
  EXPECT_TRUE(Disconnected());
  const int times = Ask("/count?/cut");
  // Longer than the pause before an attempt.
  const auto end = std::chrono::steady_clock::now() + live::ReconnectSchedule::kOften * 3 / 2;
  while (std::chrono::steady_clock::now() < end) ASSERT_EQ(Ask("/count?/cut"), times);
  stream->Playing();
  EXPECT_TRUE(WasAskedFor("/cut", times + 1));
}

TEST_F(LiveStreamStates, ThatWasLostIsConnectedWhenItIsWantedAgain) {
  Open("/cut");
  stream->Paused();
  ASSERT_TRUE(WaitUntil([this] { return stream->Failure() == PlaybackFailure::kConnectionLost; }));
  const int times = Ask("/count?/cut");
  stream->EndReads();
  stream->ResumeReads();
  EXPECT_TRUE(WasAskedFor("/cut", times + 1));
}

TEST_F(LiveStreamStates, ALossIsForgottenOnceThereIsSoundAgain) {
  Open("/cut");
  ASSERT_TRUE(WaitUntil([this] { return stream->Decided(); }));
  stream->Playing();
  EXPECT_TRUE(WasAskedFor("/cut", 2));
  ASSERT_TRUE(WaitUntil([this] { return stream->Failure() == PlaybackFailure::kConnectionLost; }));
  const PlaybackStatus status = stream->Status();
  EXPECT_EQ(status.state, PlaybackState::kPlaying);
  EXPECT_EQ(status.failure, PlaybackFailure::kNone);
}

// It did so before, and brought sound.
TEST_F(LiveStreamStates, ThatCallsItsSoundATextIsNoPageWhenItReturns) {
  Open("/mistaken");
  EXPECT_TRUE(WasAskedFor("/mistaken", 3));
  EXPECT_EQ(stream->Failure(), PlaybackFailure::kConnectionLost);
}

TEST_F(LiveStreamStates, AttemptsHaveAPauseBetweenThem) {
  const auto begun = std::chrono::steady_clock::now();
  Open("/fehlt", LiveStreamOptions::First::kIsOneOfMany);
  // The second one comes at once.
  EXPECT_TRUE(WasAskedFor("/fehlt", 4));
  EXPECT_GE(std::chrono::steady_clock::now() - begun, 2 * live::ReconnectSchedule::kSoon);
  EXPECT_EQ(stream->Status().state, PlaybackState::kReconnecting);
  EXPECT_TRUE(WaitUntil([this] { return stream->Status().http_status == 404; }));
  EXPECT_EQ(stream->Status().failure, PlaybackFailure::kHttpStatus);
  EXPECT_FALSE(stream->Decided());
}

TEST_F(LiveStreamStates, SaysWhenItAsksAgain) {
  Open("/page", LiveStreamOptions::First::kIsOneOfMany);
  EXPECT_TRUE(WaitUntil([this] {
    const PlaybackStatus status = stream->Status();
    return status.failure == PlaybackFailure::kWebPage && status.seconds_to_next_try == 1;
  }));
}

TEST_F(LiveStreamStates, DuringAnAttemptTheNextIsNotWaitedFor) {
  Open("/fades", LiveStreamOptions::First::kIsOneOfMany);
  ASSERT_TRUE(WasAskedFor("/fades", 2));
  EXPECT_EQ(stream->Status().http_status, 404);
  EXPECT_EQ(stream->Status().seconds_to_next_try, 0);
}

// Nobody asks it for anything then.
TEST_F(LiveStreamStates, EndsItsReadsByItself) {
  Open("/stream");
  ASSERT_TRUE(WaitUntil([this] { return stream->Decided(); }));
  std::promise<std::size_t> answered;
  stream->Buffer()->Read(10'000'000, std::as_writable_bytes(std::span(piece)),
                         [&answered](std::size_t count) { answered.set_value(count); });
  stream->EndReadsIn(1ms);
  auto answer = answered.get_future();
  ASSERT_EQ(answer.wait_for(30s), std::future_status::ready);
  EXPECT_EQ(answer.get(), 0u);
  EXPECT_TRUE(Disconnected());
}

TEST_F(LiveStreamStates, EndsItsReadsByItselfWhilePaused) {
  Open("/cut");
  stream->Paused();
  ASSERT_TRUE(WaitUntil([this] { return stream->Failure() == PlaybackFailure::kConnectionLost; }));
  std::promise<std::size_t> answered;
  stream->Buffer()->Read(10'000'000, std::as_writable_bytes(std::span(piece)),
                         [&answered](std::size_t count) { answered.set_value(count); });
  stream->EndReadsIn(1ms);
  auto answer = answered.get_future();
  ASSERT_EQ(answer.wait_for(30s), std::future_status::ready);
  EXPECT_EQ(answer.get(), 0u);
}

TEST_F(LiveStreamStates, AnswersItsReadsInTheEnd) {
  OpenShort();
  std::promise<std::size_t> answered;
  const auto buffer = stream->Buffer();
  buffer->Read(24'000, std::as_writable_bytes(std::span(piece)),
               [&answered](std::size_t count) { answered.set_value(count); });
  stream.reset();
  auto answer = answered.get_future();
  ASSERT_EQ(answer.wait_for(0s), std::future_status::ready);
  EXPECT_EQ(answer.get(), 0u);
}

}  // namespace
}  // namespace platform::win32
