// What a caller is answered while the station of its session is lost: nothing here is connected or played.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/win32/media/media_results.h"
#include "tests/platform/win32/media/player_rig.h"
#include "tests/platform/win32/media/renewal_rig.h"

namespace platform::win32 {
namespace {

using Calls = std::vector<std::string>;

constexpr std::int64_t kSecond = 10'000'000;

struct LostSession : testing::Test, RenewalRig {
  /// So many attempts bring nothing, for that reason.
  void Refuse(int times, HResult result) {
    for (int count = 0; count < times; ++count)
      renewal->StartFailed(std::make_shared<SessionWatch>(), result);
  }
};

TEST_F(LostSession, IsClosedAndShutDownWithItsSourceWhenThatIsDone) {
  Lose();
  EXPECT_EQ(old.session.calls, (Calls{"close"}));
  EXPECT_EQ(old.source.calls, Calls{});
  Close(*lost);
  EXPECT_EQ(old.session.calls, (Calls{"close", "shut down"}));
  EXPECT_EQ(old.source.calls, Calls{"shut down"});
}

TEST_F(LostSession, IsSaidInTheLog) {
  Lose();
  EXPECT_EQ(steps.size(), 1u);
}

TEST_F(LostSession, KeepsItsVolume) {
  old.volume.number = 0.25F;
  old.volume.mute = TRUE;
  EXPECT_EQ(Volume(), -1);
  EXPECT_EQ(Mute(), -1);
  Lose();
  EXPECT_EQ(Volume(), 0.25F);
  EXPECT_EQ(Mute(), 1);
}

TEST_F(LostSession, WhoseVolumeIsNotReportedKeepsTheOneThatWasSetLast) {
  EXPECT_EQ(Answer(IMFSimpleAudioVolume::SetMasterVolume, {0.5F}), std::nullopt);
  EXPECT_EQ(Answer(IMFSimpleAudioVolume::SetMute, {std::int32_t{1}}), std::nullopt);
  old.volume.result = old.volume.mute_result = E_FAIL;
  Lose();
  EXPECT_EQ(Volume(), 0.5F);
  EXPECT_EQ(Mute(), 1);
}

TEST_F(LostSession, WhoseVolumeWasNeverKnownHasTheUsualOne) {
  old.volume.result = old.volume.mute_result = E_FAIL;
  old.volume.mute = TRUE;
  Lose();
  EXPECT_EQ(Volume(), 1.0F);
  EXPECT_EQ(Mute(), 0);
}

TEST_F(LostSession, WithoutAVolumeOfItsOwnMayStillBeGivenOne) {
  table.Release(volume_handle);
  Lose();
  EXPECT_EQ(Answer(IMFSimpleAudioVolume::SetMasterVolume, {0.5F}), kSOk);
  EXPECT_EQ(Answer(IMFSimpleAudioVolume::SetMute, {std::int32_t{1}}), kSOk);
  EXPECT_EQ(Volume(), 0.5F);
  EXPECT_EQ(Mute(), 1);
}

TEST_F(LostSession, IsConnectedAgainAtOnceWhileItsClockRuns) {
  EXPECT_EQ(renewal->Position(5 * kSecond, Renewal::Session::kPlays), 5 * kSecond);
  EXPECT_EQ(State(), ClockState::kInvalid);
  Lose();
  EXPECT_TRUE(opener->IsLive());
  EXPECT_EQ(State(), ClockState::kRunning);
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
  EXPECT_TRUE(PlayerRig::WaitUntil([this] { return Position() > 5 * kSecond; }));
  EXPECT_FALSE(renewal->IsStarting());
}

TEST_F(LostSession, WhileItWasPausedIsLeftAloneUntilStart) {
  renewal->Position(5 * kSecond, Renewal::Session::kPlays);
  notes->Paused(notes->Latest());
  Lose(PlaybackState::kPaused);
  EXPECT_EQ(old.session.calls, (Calls{"close"}));
  EXPECT_EQ(renewal->Step(), nullptr);
  EXPECT_FALSE(opener->IsLive());
  EXPECT_EQ(State(), ClockState::kPaused);
  EXPECT_EQ(Status().state, PlaybackState::kPaused);
  EXPECT_EQ(Position(), 5 * kSecond);
  EXPECT_EQ(Start(), kSOk);
  EXPECT_TRUE(opener->IsLive());
  EXPECT_EQ(State(), ClockState::kRunning);
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
  EXPECT_GE(Position(), 5 * kSecond);
}

TEST_F(LostSession, WhileItWasStoppedIsLeftAloneUntilStart) {
  renewal->Position(5 * kSecond, Renewal::Session::kPlays);
  notes->Stopped(notes->Latest());
  Lose(PlaybackState::kStopped);
  EXPECT_EQ(renewal->Step(), nullptr);
  EXPECT_FALSE(opener->IsLive());
  EXPECT_EQ(State(), ClockState::kStopped);
  EXPECT_EQ(Status().state, PlaybackState::kStopped);
  EXPECT_EQ(Position(), 0);
  EXPECT_EQ(Start(), kSOk);
  EXPECT_TRUE(opener->IsLive());
  EXPECT_EQ(State(), ClockState::kRunning);
}

TEST_F(LostSession, ThatIsStartedOnceMoreContinuesConnecting) {
  Lose();
  ASSERT_TRUE(PlayerRig::WaitUntil([this] { return Status().failure == PlaybackFailure::kBadAddress; }));
  EXPECT_EQ(Start(), kSOk);
  EXPECT_EQ(Status().failure, PlaybackFailure::kBadAddress);
}

TEST_F(LostSession, ThatIsPausedKeepsItsTime) {
  renewal->Position(5 * kSecond, Renewal::Session::kPlays);
  Lose();
  ASSERT_TRUE(PlayerRig::WaitUntil([this] { return Position() > 5 * kSecond; }));
  EXPECT_EQ(Pause(), kSOk);
  const std::int64_t position = Position();
  EXPECT_GT(position, 5 * kSecond);
  EXPECT_EQ(State(), ClockState::kPaused);
  EXPECT_EQ(Status().state, PlaybackState::kPaused);
  // Time passes, but none for the session.
  std::this_thread::sleep_for(std::chrono::milliseconds(2));
  EXPECT_EQ(Position(), position);
  EXPECT_EQ(Start(), kSOk);
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
  EXPECT_GE(Position(), position);
}

TEST_F(LostSession, ThatWasStoppedIsNotPaused) {
  Lose();
  EXPECT_EQ(Stop(), kSOk);
  EXPECT_EQ(Status().state, PlaybackState::kStopped);
  EXPECT_EQ(Position(), 0);
  EXPECT_EQ(Pause(), kSOk);
  EXPECT_EQ(State(), ClockState::kStopped);
  EXPECT_EQ(Status().state, PlaybackState::kStopped);
}

TEST_F(LostSession, ThatIsClosedIsNotStartedOrPausedAgain) {
  Lose();
  EXPECT_EQ(Close(), kSOk);
  EXPECT_EQ(Status().state, PlaybackState::kStopped);
  EXPECT_EQ(State(), ClockState::kStopped);
  EXPECT_EQ(Start(), kEFail);
  EXPECT_EQ(Pause(), kEFail);
  EXPECT_EQ(Stop(), kSOk);
  EXPECT_EQ(Start(), kEFail);
  EXPECT_EQ(Status().state, PlaybackState::kStopped);
}

// The caller shuts its session down after the source; both are shut down already.
TEST_F(LostSession, ThatIsShutDownIsForgotten) {
  renewal->Position(5 * kSecond, Renewal::Session::kPlays);
  Lose();
  Close();
  EXPECT_EQ(Answer(IMFMediaSource::Shutdown), kSOk);
  EXPECT_EQ(Answer(IMFMediaSource::CreatePresentationDescriptor, {&volume_handle}), std::nullopt);
  EXPECT_EQ(ShutDown(), kSOk);
  EXPECT_EQ(Answer(IMFMediaSource::Shutdown), std::nullopt);
  EXPECT_EQ(ShutDown(), std::nullopt);
  EXPECT_EQ(State(), ClockState::kInvalid);
  EXPECT_EQ(Volume(), -1);
  EXPECT_EQ(renewal->Position(kSecond, Renewal::Session::kMayBeLost), kSecond);
}

TEST_F(LostSession, ThatIsForgottenAfterItsCloseLeavesNothingToTheNextOne) {
  old.volume.number = 0.25F;
  old.volume.mute = TRUE;
  renewal->Position(1000 * kSecond, Renewal::Session::kPlays);
  Lose();
  Refuse(2, kEFail);
  Close();
  renewal->Forget();
  EXPECT_EQ(Start(), std::nullopt);
  EXPECT_EQ(notes->Status().state, PlaybackState::kStopped);
  notes->Started(notes->Open());
  old.volume.result = old.volume.mute_result = E_FAIL;
  Lose();
  EXPECT_EQ(Volume(), 1.0F);
  EXPECT_EQ(Mute(), 0);
  EXPECT_LT(Position(), 1000 * kSecond);
  Refuse(2, kEFail);
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
}

TEST_F(LostSession, LeavesOtherCallsToTheSession) {
  Lose();
  EXPECT_EQ(Answer(IMFMediaSession::SetTopology, {std::int32_t{0}, InterfaceHandle::kNone}), std::nullopt);
  EXPECT_EQ(
      renewal->Answer(Interface::kMediaSession, IMFMediaSession::Stop.slot, std::vector<Argument>{1.0F}),
      std::nullopt);
  EXPECT_EQ(renewal->Answer(Interface::kMediaSession, 63, {}), std::nullopt);
  EXPECT_EQ(Answer(IMFTopologyNode::SetObject, {InterfaceHandle::kNone}), std::nullopt);
  EXPECT_EQ(State(), ClockState::kRunning);
}

TEST_F(LostSession, WhoseCallerWantsNoAnswerIsAskedAllTheSame) {
  Lose();
  EXPECT_EQ(Answer(IMFClock::GetState, {std::int32_t{0}, static_cast<std::int32_t*>(nullptr)}), kSOk);
  EXPECT_EQ(Answer(IMFSimpleAudioVolume::GetMasterVolume, {static_cast<float*>(nullptr)}), kSOk);
}

TEST_F(LostSession, WhoseNetworkFailsIsAskedAgainHoweverOftenThatHappens) {
  Lose();
  Refuse(2 * Renewal::kMostRefusals, kMfENetRead);
  const PlaybackStatus status = Status();
  EXPECT_EQ(status.state, PlaybackState::kReconnecting);
  EXPECT_EQ(status.failure, PlaybackFailure::kConnectionLost);
  EXPECT_GE(status.seconds_to_next_try, 0);
  EXPECT_LE(status.seconds_to_next_try, 1);
  EXPECT_EQ(Start(), kSOk);
  EXPECT_EQ(Status().failure, PlaybackFailure::kConnectionLost);
  EXPECT_TRUE(PlayerRig::WaitUntil([this] {
    EXPECT_EQ(renewal->Step(), nullptr);
    return Status().failure == PlaybackFailure::kBadAddress;
  }));
}

TEST_F(LostSession, WhoseDataIsRefusedIsGivenUp) {
  renewal->Position(5 * kSecond, Renewal::Session::kPlays);
  Lose();
  Refuse(Renewal::kMostRefusals - 1, kEFail);
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
  EXPECT_EQ(Status().failure, PlaybackFailure::kOther);
  Refuse(1, kMfETopologyCodecNotFound);
  EXPECT_EQ(Status().state, PlaybackState::kFailed);
  EXPECT_EQ(Status().failure, PlaybackFailure::kUnreadable);
  EXPECT_EQ(State(), ClockState::kStopped);
  EXPECT_EQ(Position(), 0);
  EXPECT_NE(steps.back().find("0xC00D5212"), std::string::npos);
  EXPECT_EQ(Start(), kEFail);
  EXPECT_EQ(renewal->Step(), nullptr);
  EXPECT_EQ(Status().state, PlaybackState::kFailed);
}

TEST_F(LostSession, StartCountsItsRefusalsAnew) {
  Lose();
  Refuse(Renewal::kMostRefusals - 1, kEFail);
  Stop();
  EXPECT_EQ(Start(), kSOk);
  Refuse(Renewal::kMostRefusals - 1, kEFail);
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
}

TEST_F(LostSession, ASecondLossCountsItsRefusalsAnew) {
  Lose();
  Refuse(Renewal::kMostRefusals - 1, kEFail);
  Lose();
  Refuse(Renewal::kMostRefusals - 1, kEFail);
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
}

TEST_F(LostSession, WithoutADeviceIsClosedAndNotConnectedWhileItsClockRuns) {
  Lose(PlaybackState::kPlaying, Renewal::Loss::kDevice);
  EXPECT_EQ(old.session.calls, (Calls{"close"}));
  EXPECT_FALSE(opener->IsLive());
  EXPECT_EQ(Status().state, PlaybackState::kNoDevice);
  EXPECT_EQ(Status().failure, PlaybackFailure::kNone);
  EXPECT_EQ(State(), ClockState::kRunning);
  EXPECT_TRUE(PlayerRig::WaitUntil([this] { return Position() > 0; }));
}

TEST_F(LostSession, WithoutADeviceMayBeStoppedAndStarted) {
  Lose(PlaybackState::kPlaying, Renewal::Loss::kDevice);
  EXPECT_EQ(Stop(), kSOk);
  EXPECT_EQ(Status().state, PlaybackState::kStopped);
  EXPECT_EQ(State(), ClockState::kStopped);
  EXPECT_EQ(renewal->Step(), nullptr);
  EXPECT_EQ(Status().state, PlaybackState::kStopped);
  EXPECT_EQ(Start(), kSOk);
  EXPECT_EQ(Status().state, PlaybackState::kNoDevice);
  EXPECT_FALSE(opener->IsLive());
}

TEST_F(LostSession, WithoutADeviceStaysPausedUntilStart) {
  notes->Paused(notes->Latest());
  Lose(PlaybackState::kPaused, Renewal::Loss::kDevice);
  EXPECT_EQ(renewal->Step(), nullptr);
  EXPECT_EQ(Status().state, PlaybackState::kPaused);
  EXPECT_EQ(State(), ClockState::kPaused);
  EXPECT_EQ(Start(), kSOk);
  EXPECT_EQ(Status().state, PlaybackState::kNoDevice);
}

TEST_F(LostSession, WhoseDeviceIsGoneWhenItStartsWaitsForIt) {
  Lose();
  Refuse(2 * Renewal::kMostRefusals, kAudioDeviceInvalidated);
  EXPECT_EQ(Status().state, PlaybackState::kNoDevice);
}

TEST_F(LostSession, ClosesASessionThatDidNotStart) {
  Lose();
  old.session.calls.clear();
  const auto started = std::make_shared<SessionWatch>();
  renewal->StartFailed(started, kMfENetRead);
  EXPECT_EQ(old.session.calls, (Calls{"close"}));
  Close(*started);
  EXPECT_EQ(old.session.calls, (Calls{"close", "shut down"}));
}

// Its clock may have begun anew when it is asked before the session has reported the loss.
TEST_F(LostSession, DoesNotTurnItsClockBackBeforeItsLossIsKnown) {
  EXPECT_EQ(renewal->Position(5 * kSecond, Renewal::Session::kMayBeLost), 5 * kSecond);
  EXPECT_EQ(renewal->Position(0, Renewal::Session::kMayBeLost), 5 * kSecond);
  EXPECT_EQ(renewal->Position(0, Renewal::Session::kPlays), 0);
}

}  // namespace
}  // namespace platform::win32
