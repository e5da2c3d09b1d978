// A station that the system's own reader opens and then loses: it needs with_sound.py.
#include "platform/win32/media/renewal.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfidl.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "platform/win32/media/byte_stream.h"
#include "platform/win32/media/http_stream.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

/// Reads a station as the system does: it ends with its connection.
class LosingReader : public AddressReader {
 public:
  ~LosingReader() override { End(); }
  OpenedObject Open(::IMFSourceResolver& resolver, const Text& address, std::int32_t,
                    const OpeningWait& wait) override {
    End();
    over_ = false;
    buffer_ = std::make_shared<StreamBuffer>();
    watcher_ = std::thread([this, address, buffer = buffer_] {
      const auto connection = HttpStream::Open(address, u"test", buffer);
      while (!over_ && !connection->Over()) std::this_thread::sleep_for(std::chrono::milliseconds(10));
      connection->Cancel();
      buffer->Finish();
    });
    const auto stream = MakeByteStream(buffer_, "audio/mpeg");
    OpenedObject opened =
        OpenByteStream(resolver, *stream.Get(), address,
                       kMfResolutionMediaSource | kMfResolutionContentNeedNotMatch, wait, nullptr);
    opened.endless = true;
    return opened;
  }

 private:
  void End() {
    over_ = true;
    if (buffer_) buffer_->EndReads();
    if (watcher_.joinable()) watcher_.join();
  }
  std::shared_ptr<StreamBuffer> buffer_;
  std::atomic<bool> over_ = false;
  std::thread watcher_;
};

struct LostBySystem : StationRig {
  void SetUp() override {
    options.reader = std::make_shared<LosingReader>();
    StationRig::SetUp();
  }
  void TearDown() override {
    player.reset();
    media.reset();
    StationRig::TearDown();
  }
  [[nodiscard]] bool ClockIs(ClockState state) {
    return player->PlayState() == static_cast<std::int32_t>(state);
  }
};

TEST_F(LostBySystem, IsHeardAgain) {
  Play("/returns");
  ASSERT_TRUE(player->CreateService());
  EXPECT_TRUE(player->SetAudioAudioVolume(0.5f));
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 10'000'000; }));
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  EXPECT_TRUE(Silent());
  EXPECT_TRUE(ClockIs(ClockState::kRunning));
  EXPECT_EQ(player->GetAudioSimpleAudioVolume(), 50);
  const auto lost_at = player->CurrentPlayPosition();
  EXPECT_GE(lost_at, 10'000'000);
  EXPECT_TRUE(WaitUntil([this] { return media->Status().http_status == 404; }));
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(WaitUntil([&] { return player->CurrentPlayPosition() > lost_at + 5'000'000; }));
  EXPECT_TRUE(ClockIs(ClockState::kRunning));
  EXPECT_EQ(player->GetAudioSimpleAudioVolume(), 50);
  player->StopMedia();
  EXPECT_TRUE(Silent());
  EXPECT_TRUE(Disconnected());
}

TEST_F(LostBySystem, IsConnectedAgainAndAgain) {
  Play("/cut");
  EXPECT_TRUE(WaitUntil([this] {
    static_cast<void>(media->Status());
    return Ask("/count?/cut") > 3;
  }));
  EXPECT_TRUE(Heard());
}

TEST_F(LostBySystem, IsLeftAloneAfterStopAndContinuesWithStart) {
  Play("/returns");
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  player->StopMedia();
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  EXPECT_TRUE(ClockIs(ClockState::kStopped));
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(Disconnected());
  EXPECT_TRUE(Silent());
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

TEST_F(LostBySystem, MayBeReplacedMeanwhile) {
  Play("/returns");
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  results.clear();
  Play("/stream");
  EXPECT_TRUE(Heard());
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
}

TEST_F(LostBySystem, MayLastUntilTheProgramEnds) {
  Play("/returns");
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  player.reset();
  media.reset();
  EXPECT_TRUE(Disconnected());
  EXPECT_TRUE(Silent());
}

// Only the system can follow a list of segments, so it stays lost.
TEST_F(LostBySystem, IsGivenUpWhenItsAddressIsATextNow) {
  Play("/portal");
  EXPECT_TRUE(Becomes(PlaybackState::kFailed));
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kConnectionLost);
  EXPECT_FALSE(player->PlayMedia());
}

}  // namespace
}  // namespace platform::win32
