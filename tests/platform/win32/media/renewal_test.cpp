// A station that the system's own reader opens and then loses: it needs with_sound.py.
#include "platform/win32/media/renewal.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfidl.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include "platform/live/reconnect_schedule.h"
#include "platform/win32/media/byte_stream.h"
#include "platform/win32/media/http_stream.h"
#include "platform/win32/media/media_results.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/made_sessions.h"
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

TEST_F(LostBySystem, IsHeardAgainAfterAPageInItsPlace) {
  Play("/portal");
  EXPECT_TRUE(WaitUntil([this] { return media->Status().failure == PlaybackFailure::kWebPage; }));
  EXPECT_EQ(media->Status().state, PlaybackState::kReconnecting);
  EXPECT_TRUE(WaitUntil([this] {
    static_cast<void>(media->Status());
    return Ask("/count?/portal") > 3;
  }));
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

// Only the system can follow a list of segments, so it stays lost.
TEST_F(LostBySystem, IsGivenUpWhenItsAddressIsAListNow) {
  Play("/listed");
  EXPECT_TRUE(Becomes(PlaybackState::kFailed));
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kConnectionLost);
  EXPECT_TRUE(ClockIs(ClockState::kStopped));
  EXPECT_FALSE(player->PlayMedia());
  player->PauseMedia();
  EXPECT_TRUE(ClockIs(ClockState::kStopped));
  EXPECT_FALSE(player->PlayMedia());
  // One attempt may have been on its way; no other follows it in more than the pause between two.
  EXPECT_TRUE(WaitUntil([this] {
    const int times = Ask("/count?/listed");
    std::this_thread::sleep_for(live::ReconnectSchedule::kOften * 3 / 2);
    return Ask("/count?/listed") == times;
  }));
}

/// The next report of a session that its device is gone, which it is not.
struct WithoutDevice : LostBySystem {
  void TearDown() override {
    sessions.Forget();
    LostBySystem::TearDown();
  }
  void Lose() const {
    ASSERT_EQ(sessions.Latest().QueueEvent(MEError, GUID{}, kAudioDeviceInvalidated, nullptr), S_OK);
  }
  MadeSessions sessions;
};

TEST_F(WithoutDevice, AStationOfTheSystemIsReadByTheProgramAfterwards) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  Lose();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
  EXPECT_EQ(Ask("/count?/stream"), 2);
}

// As a list of segments does, which the system alone can follow.
TEST_F(WithoutDevice, AStationOfTheSystemThatIsAListEnds) {
  Play("/listed");
  Lose();
  EXPECT_TRUE(Becomes(PlaybackState::kFailed));
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kNoSoundDevice);
}

TEST_F(LostBySystem, IsGivenUpWhenItSendsNoSoundAgainAndAgain) {
  Play("/noisy");
  EXPECT_TRUE(Becomes(PlaybackState::kFailed));
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kUnreadable);
  EXPECT_EQ(Ask("/count?/noisy"), 1 + Renewal::kMostRefusals);
}

TEST_F(LostBySystem, ClockRunsThroughItsLoss) {
  Play("/returns");
  EXPECT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 10'000'000; }));
  std::int64_t latest = 0;
  EXPECT_TRUE(WaitUntil([&] {
    EXPECT_TRUE(ClockIs(ClockState::kRunning));
    const auto position = player->CurrentPlayPosition();
    EXPECT_GE(position, latest);
    latest = position;
    return media->Status().state == PlaybackState::kReconnecting;
  }));
  EXPECT_TRUE(WaitUntil([&] { return player->CurrentPlayPosition() > latest + 5'000'000; }));
}

TEST_F(LostBySystem, IsAskedAgainWhenOpeningItTakesTooLong) {
  options.open_deadline = std::chrono::seconds(4);
  MakePlayer();
  Play("/trickles");
  EXPECT_TRUE(WaitUntil([this] { return media->Status().failure == PlaybackFailure::kNoAnswer; }));
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

/// When the station can be heard again: before what happens, or after it.
enum class Returns : std::uint8_t { kBefore, kAfter };

/// A time at which something may happen to a station that was lost.
struct Moment {
  const char* path;
  const char* log;
  PlaybackFailure failure;
  Returns returns;
};

struct LostStation : LostBySystem, testing::WithParamInterface<Moment> {
  void PlayUntilThen() {
    Play(GetParam().path);
    ASSERT_TRUE(Becomes(PlaybackState::kReconnecting));
    const bool returns = GetParam().returns == Returns::kBefore;
    ASSERT_TRUE(!returns || Ask("/return") == 0);
    ASSERT_TRUE(WaitUntil([this] {
      const PlaybackStatus status = media->Status();
      return log.back() == GetParam().log && status.failure == GetParam().failure;
    }));
  }
  /// Also what the station holds back.
  bool IsDisconnected() { return Ask("/go") == 0 && Disconnected(); }
};

TEST_P(LostStation, IsLeftAloneAfterStopAndContinuesWithStart) {
  PlayUntilThen();
  EXPECT_TRUE(ClockIs(ClockState::kRunning));
  player->StopMedia();
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(IsDisconnected());
  EXPECT_TRUE(Silent());
  EXPECT_TRUE(WaitUntil([this] { return ClockIs(ClockState::kStopped); }));
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

TEST_P(LostStation, MayBePaused) {
  PlayUntilThen();
  player->PauseMedia();
  EXPECT_EQ(media->Status().state, PlaybackState::kPaused);
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(WaitUntil([this] { return ClockIs(ClockState::kPaused); }));
  EXPECT_TRUE(Silent());
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

TEST_P(LostStation, MayBeReplaced) {
  PlayUntilThen();
  results.clear();
  Play("/stream");
  EXPECT_TRUE(Heard());
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
  EXPECT_EQ(Ask("/go"), 0);
  EXPECT_TRUE(WaitUntil([this] { return Ask("/open") == 1; }));
  player->StopMedia();
  EXPECT_TRUE(Silent());
}

TEST_P(LostStation, MayLastUntilTheProgramEnds) {
  PlayUntilThen();
  player.reset();
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  media.reset();
  EXPECT_TRUE(IsDisconnected());
  EXPECT_TRUE(Silent());
}

constexpr char kLost[] = "The system has lost a station, which is read by the program from now on.";
constexpr char kAgain[] = "The lost station was not opened; it is asked again.";
constexpr char kOpens[] = "The lost station is being opened.";
constexpr char kStarts[] = "The lost station is opened and starts.";

std::string NameOf(const testing::TestParamInfo<Moment>& moment) {
  constexpr const char* kNames[] = {"Away", "Replaced", "Opened", "Started"};
  return kNames[moment.index];
}

INSTANTIATE_TEST_SUITE_P(
    WhileItIs, LostStation,
    testing::Values(Moment{"/returns", kLost, PlaybackFailure::kHttpStatus, Returns::kAfter},
                    Moment{"/portal", kAgain, PlaybackFailure::kWebPage, Returns::kAfter},
                    Moment{"/trickles", kOpens, PlaybackFailure::kNone, Returns::kAfter},
                    Moment{"/returns", kStarts, PlaybackFailure::kNone, Returns::kBefore}),
    NameOf);

// Each call that waits would take ten milliseconds.
TEST_F(LostBySystem, AskingForItsStateDoesNotWaitForItsOpening) {
  Play("/trickles");
  EXPECT_TRUE(WaitUntil([this] {
    static_cast<void>(media->Status());
    return log.size() > 1 && log.back() == kOpens;
  }));
  const auto before = std::chrono::steady_clock::now();
  for (int count = 0; count < 600; ++count) EXPECT_EQ(media->Status().state, PlaybackState::kReconnecting);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(5));
  EXPECT_EQ(log.back(), kOpens);
}

}  // namespace
}  // namespace platform::win32
