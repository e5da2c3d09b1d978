// A station whose sound device disappears: it needs with_sound.py. The device is really gone meanwhile; only
// the session's report of it is the test's, because Wine's session reports nothing.
#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfidl.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <utility>

#include "platform/win32/media/default_device.h"
#include "platform/win32/media/device_wait.h"
#include "platform/win32/media/media_results.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/made_sessions.h"
#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

struct LostDevice : StationRig {
  void SetUp() override {
    sessions.on_made = [this](::IMFMediaSession&) {
      if (fails_at_once) Report(MEError, kAudioDeviceInvalidated);
    };
    StationRig::SetUp();
  }
  void TearDown() override {
    EXPECT_EQ(Ask("/plug"), 0);
    EndPlayer();
    StationRig::TearDown();
  }
  /// Nothing of the platform may be held when it ends.
  void EndPlayer() {
    sessions.Forget();
    player.reset();
    media.reset();
  }
  void Report(MediaEventType type, HRESULT status) const {
    ASSERT_EQ(sessions.Latest().QueueEvent(type, GUID{}, status, nullptr), S_OK);
  }
  void Unplug() {
    ASSERT_EQ(Ask("/unplug"), 0);
    Report(MEAudioSessionDeviceRemoved, S_OK);
  }
  /// As the window's timers do meanwhile.
  bool WaitPolling(const std::function<bool()>& condition) {
    return WaitUntil([&] {
      static_cast<void>(media->Status());
      return condition();
    });
  }
  /// It is looked for once a second.
  void StaysWithoutDevice(int seconds) {
    const auto limit = clock.SecondsSinceMidnight() + seconds;
    while (clock.SecondsSinceMidnight() < limit) {
      ASSERT_EQ(media->Status().state, PlaybackState::kNoDevice);
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }
  bool IsLeft() {
    return WaitPolling([this] { return Ask("/open") == 0; });
  }
  bool HeardAgain() {
    return WaitPolling([this] { return Ask("/loudness") > 300; });
  }
  [[nodiscard]] bool ClockIs(ClockState state) {
    return player->PlayState() == static_cast<std::int32_t>(state);
  }
  MadeSessions sessions;
  bool fails_at_once = false;  ///< the next session
};

TEST_F(LostDevice, TakesNoSound) {
  EXPECT_TRUE(DefaultDeviceTakesSound());
  ASSERT_EQ(Ask("/unplug"), 0);
  EXPECT_FALSE(DefaultDeviceTakesSound());
  ASSERT_EQ(Ask("/plug"), 0);
  EXPECT_TRUE(DefaultDeviceTakesSound());
}

TEST_F(LostDevice, MayReturn) {
  Play("/stream");
  ASSERT_TRUE(player->CreateService());
  EXPECT_TRUE(player->SetAudioAudioVolume(0.5f));
  EXPECT_TRUE(Heard());
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  EXPECT_TRUE(ClockIs(ClockState::kRunning));
  EXPECT_TRUE(IsLeft());
  PlaybackStatus waiting;
  waiting.state = PlaybackState::kNoDevice;
  EXPECT_EQ(media->Status(), waiting);
  EXPECT_EQ(Ask("/plug"), 0);
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
  EXPECT_TRUE(WaitUntil([this] { return player->GetAudioSimpleAudioVolume() == 50; }));
  EXPECT_EQ(sessions.Count(), 2u);
  EXPECT_EQ(Ask("/open"), 1);
  player->StopMedia();
  EXPECT_TRUE(Silent());
  EXPECT_TRUE(Disconnected());
}

TEST_F(LostDevice, IsNotConnectedForWhileItIsAway) {
  Play("/stream");
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  StaysWithoutDevice(3);
  EXPECT_EQ(Ask("/count?/stream"), 1);
}

// Each of them leaves the session without a renderer.
TEST_F(LostDevice, IsReportedInManyWays) {
  Play("/stream");
  for (const auto& [type, status] : {std::pair{MESinkInvalidated, S_OK},
                                     {MEAudioSessionServerShutdown, S_OK},
                                     {MEAudioSessionFormatChanged, S_OK},
                                     {MEAudioSessionDisconnected, S_OK},
                                     {MEAudioSessionExclusiveModeOverride, S_OK},
                                     {MEError, kAudioDeviceInvalidated}}) {
    Report(type, status);
    EXPECT_TRUE(Becomes(PlaybackState::kNoDevice)) << type;
    player->MediaFileFromUrl(Address("/stream"));
    ASSERT_TRUE(player->PlayMedia());
  }
}

TEST_F(LostDevice, IsNothingThatIsReportedOfTheSoundOtherwise) {
  Play("/stream");
  Report(MEAudioSessionVolumeChanged, S_OK);
  Report(MEAudioSessionNameChanged, S_OK);
  Report(MESessionEnded, S_OK);
  EXPECT_TRUE(Becomes(PlaybackState::kEnded));
}

TEST_F(LostDevice, LeavesAPausedStationPaused) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  player->PauseMedia();
  Unplug();
  EXPECT_TRUE(IsLeft());
  EXPECT_EQ(media->Status().state, PlaybackState::kPaused);
  EXPECT_TRUE(ClockIs(ClockState::kPaused));
  EXPECT_EQ(Ask("/plug"), 0);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(HeardAgain());
}

TEST_F(LostDevice, LeavesAStoppedStationStopped) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  player->StopMedia();
  Unplug();
  EXPECT_TRUE(WaitUntil([this] { return ClockIs(ClockState::kStopped); }));
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  EXPECT_EQ(Ask("/plug"), 0);
  EXPECT_TRUE(HeardAgain());
}

TEST_F(LostDevice, MayBeStoppedMeanwhileAndStarted) {
  Play("/stream");
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  player->StopMedia();
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  EXPECT_EQ(Ask("/plug"), 0);
  EXPECT_TRUE(HeardAgain());
}

// Its session is still closing.
TEST_F(LostDevice, MayBeStoppedAtOnceAndStarted) {
  Play("/stream");
  EXPECT_TRUE(Heard());
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  EXPECT_EQ(Ask("/plug"), 0);
  player->StopMedia();
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(HeardAgain());
}

TEST_F(LostDevice, MayBePausedMeanwhileAndStarted) {
  Play("/stream");
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  player->PauseMedia();
  EXPECT_EQ(media->Status().state, PlaybackState::kPaused);
  EXPECT_TRUE(ClockIs(ClockState::kPaused));
  EXPECT_EQ(Ask("/plug"), 0);
  EXPECT_TRUE(WaitPolling([] { return DefaultDeviceTakesSound(); }));
  EXPECT_EQ(media->Status().state, PlaybackState::kPaused);
  EXPECT_EQ(Ask("/count?/stream"), 1);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(HeardAgain());
}

TEST_F(LostDevice, TakesTheVolumeThatIsSetMeanwhile) {
  Play("/stream");
  ASSERT_TRUE(player->CreateService());
  EXPECT_TRUE(Heard());
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  EXPECT_TRUE(player->SetAudioAudioVolume(0.3f));
  EXPECT_EQ(player->GetAudioSimpleAudioVolume(), 30);
  EXPECT_EQ(Ask("/plug"), 0);
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(HeardAgain());
  EXPECT_EQ(player->GetAudioSimpleAudioVolume(), 30);
}

// Most likely the driver fails: the device is there all the while.
TEST_F(LostDevice, IsTriedRarelyWhenItIsLostAtOnceAgain) {
  Play("/stream");
  fails_at_once = true;
  Report(MEError, kAudioDeviceInvalidated);
  EXPECT_TRUE(WaitPolling([this] { return sessions.Count() == 2; }));
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  fails_at_once = false;
  StaysWithoutDevice(3);
  EXPECT_EQ(sessions.Count(), 2u);
}

TEST_F(LostDevice, IsTriedAtOnceByAStart) {
  Play("/stream");
  fails_at_once = true;
  Report(MEError, kAudioDeviceInvalidated);
  EXPECT_TRUE(WaitPolling([this] { return sessions.Count() == 2; }));
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  fails_at_once = false;
  player->StopMedia();
  ASSERT_TRUE(player->PlayMedia());
  const auto started = DeviceWait::Clock::now();
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  // It would come by itself later.
  EXPECT_LT(DeviceWait::Clock::now() - started, DeviceWait::kRareTry / 2);
  EXPECT_TRUE(HeardAgain());
}

/// The system does not answer whether there is a device, until the test has ended.
struct DeviceThatIsAskedFor : LostDevice {
  void SetUp() override {
    options.look_for_device = [this] {
      ++looks;
      answer.wait();
      ++answered;
      return true;
    };
    LostDevice::SetUp();
    Play("/stream");
    Report(MEError, kAudioDeviceInvalidated);
    ASSERT_TRUE(WaitPolling([this] { return looks == 1; }));
  }
  void TearDown() override {
    if (answered == 0) give.set_value();
    EXPECT_TRUE(WaitUntil([this] { return answered == looks; }));
    LostDevice::TearDown();
  }
  std::promise<void> give;
  const std::shared_future<void> answer = give.get_future().share();
  std::atomic<int> looks = 0;
  std::atomic<int> answered = 0;
};

TEST_F(DeviceThatIsAskedFor, IsAskedForOnceAtATime) {
  StaysWithoutDevice(2);
  EXPECT_EQ(looks, 1);
}

TEST_F(DeviceThatIsAskedFor, KeepsNoStopWaiting) {
  player->StopMedia();
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  give.set_value();
  EXPECT_TRUE(WaitUntil([this] { return answered == 1; }));
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  EXPECT_EQ(sessions.Count(), 1u);
  EXPECT_TRUE(Disconnected());
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_EQ(looks, 2);
}

TEST_F(DeviceThatIsAskedFor, KeepsNoEndWaiting) {
  EndPlayer();
  EXPECT_EQ(answered, 0);
}

TEST_F(LostDevice, MayBeReplacedByAnotherItemMeanwhile) {
  Play("/stream");
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  EXPECT_EQ(Ask("/plug"), 0);
  results.clear();
  Play("/titles");
  EXPECT_TRUE(Heard());
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
}

TEST_F(LostDevice, MayLastUntilTheProgramEnds) {
  Play("/stream");
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  EndPlayer();
  EXPECT_TRUE(Disconnected());
}

struct LostDeviceWhileItsStationIsOpened : LostDevice {
  void SetUp() override {
    LostDevice::SetUp();
    Play("/trickles");
    Unplug();
    ASSERT_TRUE(Becomes(PlaybackState::kNoDevice));
    ASSERT_EQ(Ask("/plug"), 0);
    ASSERT_TRUE(WaitPolling([this] { return log.back() == "The lost station is being opened."; }));
    ASSERT_EQ(media->Status().state, PlaybackState::kReconnecting);
  }
  /// Also what the station holds back.
  bool IsDisconnected() { return Ask("/go") == 0 && IsLeft(); }
};

TEST_F(LostDeviceWhileItsStationIsOpened, TheProgramMayEnd) {
  EndPlayer();
  EXPECT_EQ(Ask("/go"), 0);
  EXPECT_TRUE(Disconnected());
}

TEST_F(LostDeviceWhileItsStationIsOpened, ItMayBeStoppedAndStarted) {
  player->StopMedia();
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  EXPECT_TRUE(IsDisconnected());
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  EXPECT_EQ(Ask("/return"), 0);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(HeardAgain());
}

TEST_F(LostDeviceWhileItsStationIsOpened, ItMayBeReplaced) {
  results.clear();
  Play("/stream");
  EXPECT_TRUE(HeardAgain());
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
}

TEST_F(LostDeviceWhileItsStationIsOpened, ItsDeviceMayBeLostAgain) {
  ASSERT_EQ(Ask("/unplug"), 0);
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_EQ(Ask("/go"), 0);
  EXPECT_TRUE(WaitPolling([this] { return sessions.Count() == 2; }));
  Report(MEAudioSessionDeviceRemoved, S_OK);
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  // One that is there all the while would be tried rarely.
  StaysWithoutDevice(2);
  EXPECT_EQ(Ask("/plug"), 0);
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(HeardAgain());
}

// A page is no reason to give up a station that the adapter has read.
TEST_F(LostDevice, AStationThatIsAwayThenIsConnectedAgainAndAgain) {
  Play("/portal");
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kNoDevice));
  EXPECT_EQ(Ask("/plug"), 0);
  EXPECT_TRUE(Becomes(PlaybackState::kReconnecting));
  const int tried = Ask("/count?/portal");
  EXPECT_TRUE(WaitPolling([&] { return Ask("/count?/portal") > tried + 1; }));
  EXPECT_EQ(media->Status().state, PlaybackState::kReconnecting);
  EXPECT_EQ(Ask("/return"), 0);
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

TEST_F(LostDevice, EndsAFile) {
  player->MediaFileFromUrl(AsText(Named("FUNKHAUS_LOOP")));
  ASSERT_TRUE(player->PlayMedia());
  Unplug();
  EXPECT_TRUE(Becomes(PlaybackState::kFailed));
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kNoSoundDevice);
}

}  // namespace
}  // namespace platform::win32
