// A lost station that is opened again, and what becomes of the session that is made for it: it needs
// with_sound.py for the station. The session is the test's own object.
#include <gtest/gtest.h>
#include <mfapi.h>
#include <mferror.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/win32/media/media_results.h"
#include "tests/platform/win32/media/renewal_rig.h"
#include "tests/platform/win32/media/replaced_function.h"
#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

using Started = std::vector<std::string>;

constexpr std::int64_t kOneSecond = 10'000'000;

/// Opens any address as an endless source that does nothing.
class SilentReader : public AddressReader {
 public:
  OpenedObject Open(::IMFSourceResolver&, const Text&, std::int32_t, const OpeningWait&) override {
    return {kSOk, kMfObjectMediaSource, ComPointer<::IUnknown>(source_.Reference()), true};
  }

 private:
  SourceObject source_;
};

struct RebuiltStation : StationRig, RenewalRig {
  void SetUp() override {
    StationRig::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    opener_options.reader = std::make_shared<SilentReader>();
    opener.emplace(message_loop, opener_options, notes);
    test = this;
    built.session.Answer(7, &TakeTopology);
    built.session.Answer(14, &GiveClock);
    renewal.emplace(table, *opener, *notes, shutdowns, renewal_options);
    SlotObject resolver;
    ASSERT_EQ(
        opener->Open(*reinterpret_cast<::IMFSourceResolver*>(resolver.AsUnknown()), Address("/stream"), 1)
            .result,
        kSOk);
    notes->Started(notes->Latest());
    old.volume.number = 0.25F;
    old.volume.mute = TRUE;
    renewal->Position(5 * kOneSecond, Renewal::Session::kPlays);
  }
  void TearDown() override {
    if (renewal) renewal->Forget();
    if (made) made->Shutdown();
    StationRig::TearDown();
  }
  static HRESULT WINAPI MakeSession(::IMFAttributes*, ::IMFMediaSession** out) {
    *out = reinterpret_cast<::IMFMediaSession*>(test->built.session.Reference());
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE TakeTopology(SlotObject*, DWORD, ::IMFTopology* topology) {
    ComPointer<::IMFTopologyNode> node;
    EXPECT_EQ(topology->GetNode(0, node.Receive()), S_OK);
    const HRESULT got =
        node->GetUnknown(MF_TOPONODE_SOURCE, __uuidof(::IMFMediaSource), test->made.ReceiveAny());
    EXPECT_EQ(got, S_OK);
    return test->rebuilt_as;
  }
  static HRESULT STDMETHODCALLTYPE GiveClock(SlotObject*, ::IUnknown** out) {
    *out = test->built.clock.Reference();
    return S_OK;
  }
  /// Takes the steps that are due until then.
  bool StepsUntil(const std::function<bool()>& condition) {
    return WaitUntil([&] {
      if (auto started = renewal->Step()) watch = std::move(started);
      return condition();
    });
  }
  bool Starts() {
    return StepsUntil([this] { return renewal->IsStarting(); });
  }
  bool AsksAgain(std::size_t times) {
    return StepsUntil([&] {
      return static_cast<std::size_t>(std::count(steps.begin(), steps.end(), kAsksAgain)) == times;
    });
  }
  [[nodiscard]] bool IsShutDown() const {
    ComPointer<::IMFPresentationDescriptor> descriptor;
    return made->CreatePresentationDescriptor(descriptor.Receive()) == MF_E_SHUTDOWN;
  }
  [[nodiscard]] bool Holds(Interface seen_as, const SlotObject& object) const {
    return static_cast<const void*>(table.Seen(seen_as).Get()) == &object;
  }

  static constexpr const char* kAsksAgain = "The lost station was not opened; it is asked again.";
  static inline RebuiltStation* test = nullptr;
  ReplacedFunction<decltype(::MFCreateMediaSession)> make{L"mf.dll", "MFCreateMediaSession", &MakeSession};
  SessionObjects built;
  HResult rebuilt_as = kSOk;
  ComPointer<::IMFMediaSource> made;
  std::shared_ptr<SessionWatch> watch;
};

TEST_F(RebuiltStation, TakesThePlaceOfTheLostOne) {
  Lose();
  ASSERT_TRUE(Starts());
  EXPECT_TRUE(watch);
  EXPECT_EQ(built.session.calls, Started{"start"});
  EXPECT_TRUE(Holds(Interface::kMediaSession, built.session));
  EXPECT_TRUE(Holds(Interface::kClock, built.clock));
  EXPECT_EQ(static_cast<::IUnknown*>(made.Get()), table.Seen(Interface::kMediaSource).Get());
  EXPECT_EQ(old.session.references + old.clock.references, 1);
  EXPECT_EQ(old.source.references, 1);
  Close(*lost);
  EXPECT_EQ(old.session.references + old.clock.references + old.source.references, 0);
  EXPECT_FALSE(IsShutDown());
}

TEST_F(RebuiltStation, ContinuesTheTimeOnceItsClockRuns) {
  built.clock.result = E_FAIL;
  built.clock.played = 3 * kOneSecond;
  Lose();
  ASSERT_TRUE(Starts());
  renewal->Step();
  EXPECT_TRUE(renewal->IsStarting());
  built.clock.result = S_OK;
  built.clock.state = MFCLOCK_STATE_STOPPED;
  renewal->Step();
  EXPECT_TRUE(renewal->IsStarting());
  built.clock.state = MFCLOCK_STATE_RUNNING;
  built.clock.time_result = E_FAIL;
  renewal->Step();
  EXPECT_TRUE(renewal->IsStarting());
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
  EXPECT_EQ(State(), ClockState::kRunning);
  built.clock.time_result = S_OK;
  const std::int64_t before = Position();
  EXPECT_GT(before, 5 * kOneSecond);
  renewal->Step();
  EXPECT_FALSE(renewal->IsStarting());
  EXPECT_NE(Status().state, PlaybackState::kReconnecting);
  EXPECT_EQ(State(), ClockState::kInvalid);
  const std::int64_t after = renewal->Position(built.clock.played, Renewal::Session::kPlays);
  EXPECT_GE(after, before);
  EXPECT_EQ(renewal->Position(4 * kOneSecond, Renewal::Session::kPlays), after + kOneSecond);
  renewal->Forget();
  EXPECT_EQ(renewal->Position(kOneSecond, Renewal::Session::kMayBeLost), kOneSecond);
}

TEST_F(RebuiltStation, GetsTheVolumeOnceItHasOne) {
  built.session.offered = __uuidof(::IMFGetService);
  Lose();
  ASSERT_TRUE(Starts());
  renewal->Step();
  EXPECT_TRUE(Holds(Interface::kSimpleAudioVolume, old.volume));
  EXPECT_EQ(Volume(), 0.25F);
  EXPECT_EQ(Mute(), 1);
  EXPECT_EQ(Answer(IMFSimpleAudioVolume::SetMasterVolume, {0.5F}), kSOk);
  EXPECT_EQ(old.volume.number, 0.25F);
  built.session.pointer = &built.volume;
  built.session.Answer(
      3, +[](SlotObject* self, const GUID* service, const IID* iid, void** out) -> HRESULT {
        const bool right = IsEqualGUID(*service, MR_POLICY_VOLUME_SERVICE) &&
                           IsEqualGUID(*iid, __uuidof(::IMFSimpleAudioVolume));
        *out = right ? static_cast<SlotObject*>(self->pointer)->Reference() : nullptr;
        return right ? S_OK : E_INVALIDARG;
      });
  renewal->Step();
  EXPECT_EQ(built.volume.number, 0.5F);
  EXPECT_EQ(built.volume.mute, TRUE);
  EXPECT_TRUE(Holds(Interface::kSimpleAudioVolume, built.volume));
  EXPECT_EQ(Volume(), -1);
  renewal->Step();
  EXPECT_EQ(built.volume.calls, (Started{"volume", "mute"}));
}

TEST_F(RebuiltStation, GetsNoVolumeThatWasNeverKnown) {
  old.volume.result = old.volume.mute_result = E_FAIL;
  built.session.offered = __uuidof(::IMFGetService);
  built.session.pointer = &built.volume;
  built.session.Answer(
      3, +[](SlotObject* self, const GUID*, const IID*, void** out) -> HRESULT {
        *out = static_cast<SlotObject*>(self->pointer)->Reference();
        return S_OK;
      });
  Lose();
  ASSERT_TRUE(Starts());
  renewal->Step();
  EXPECT_TRUE(Holds(Interface::kSimpleAudioVolume, built.volume));
  EXPECT_EQ(built.volume.calls, Started{});
}

// What the table still holds is the volume of the session before.
TEST_F(RebuiltStation, ThatIsLostBeforeItHasItsVolumeKeepsWhatWasSetLast) {
  Lose();
  ASSERT_TRUE(Starts());
  Answer(IMFSimpleAudioVolume::SetMasterVolume, {0.5F});
  Answer(IMFSimpleAudioVolume::SetMute, {std::int32_t{0}});
  renewal->Begin(watch, PlaybackState::kPlaying, Renewal::Loss::kStation);
  EXPECT_EQ(Volume(), 0.5F);
  EXPECT_EQ(Mute(), 0);
}

// A session that is still closing may not come to the end of its sound.
TEST_F(RebuiltStation, WithoutADeviceIsReadUntilItsSessionHasClosed) {
  Lose();
  ASSERT_TRUE(Starts());
  EXPECT_TRUE(opener->IsLive());
  EXPECT_TRUE(WaitUntil([this] { return Ask("/open") == 1; }));
  renewal->Begin(watch, PlaybackState::kPlaying, Renewal::Loss::kDevice);
  EXPECT_FALSE(opener->IsLive()) << "what is read now is no longer the item's";
  EXPECT_EQ(Ask("/open"), 1);
  Close(*watch);
  EXPECT_TRUE(Disconnected());
}

TEST_F(RebuiltStation, ThatDoesNotStartIsAskedAgain) {
  built.session.result = MF_E_INVALIDREQUEST;
  Lose();
  ASSERT_TRUE(AsksAgain(1));
  EXPECT_EQ(built.session.calls, (Started{"start", "shut down"}));
  EXPECT_TRUE(IsShutDown());
  EXPECT_FALSE(watch);
  EXPECT_TRUE(Holds(Interface::kMediaSession, old.session));
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
  EXPECT_EQ(Start(), kSOk);
  built.session.result = S_OK;
  EXPECT_TRUE(Starts());
  EXPECT_EQ(Status().state, PlaybackState::kReconnecting);
}

TEST_F(RebuiltStation, ThatNeverStartsIsGivenUpAndNotStartedByItsCaller) {
  built.session.result = MF_E_INVALIDREQUEST;
  Lose();
  EXPECT_TRUE(StepsUntil([this] { return notes->Status().state == PlaybackState::kFailed; }));
  EXPECT_EQ(built.session.calls.size(), 2u * Renewal::kMostRefusals);
  EXPECT_EQ(notes->Status().failure, PlaybackFailure::kOther);
  EXPECT_EQ(Start(), kEFail);
  EXPECT_EQ(Ask("/count?/stream"), Renewal::kMostRefusals);
}

HRESULT WINAPI MakeNoneForOpening(::IMFSourceResolver**) { return E_OUTOFMEMORY; }

TEST_F(RebuiltStation, ThatCannotBeOpenedIsGivenUpAndDisconnected) {
  const ReplacedFunction<decltype(::MFCreateSourceResolver)> resolvers(
      L"mfplat.dll", "MFCreateSourceResolver", &MakeNoneForOpening);
  Lose();
  EXPECT_TRUE(StepsUntil([this] { return notes->Status().state == PlaybackState::kFailed; }));
  EXPECT_EQ(Ask("/count?/stream"), Renewal::kMostRefusals);
  EXPECT_TRUE(Disconnected());
}

TEST_F(RebuiltStation, WhoseStartFailsWithTheNetworkIsNotGivenUp) {
  built.session.result = kMfENetRead;
  Lose();
  EXPECT_TRUE(AsksAgain(Renewal::kMostRefusals + 1));
  EXPECT_EQ(notes->Status().state, PlaybackState::kPlaying);
}

TEST_F(RebuiltStation, ThatHasNoSessionIsAskedAgainAndGivenUp) {
  rebuilt_as = kMfETopologyCodecNotFound;
  Lose();
  ASSERT_TRUE(AsksAgain(1));
  EXPECT_TRUE(IsShutDown());
  EXPECT_EQ(Status().failure, PlaybackFailure::kUnreadable);
  EXPECT_TRUE(StepsUntil([this] { return notes->Status().state == PlaybackState::kFailed; }));
  EXPECT_EQ(built.session.calls, Started(Renewal::kMostRefusals, "shut down"));
  EXPECT_EQ(Start(), kEFail);
}

TEST_F(RebuiltStation, ThatIsClosedWhileItOpensDoesNotStart) {
  Lose();
  ASSERT_TRUE(StepsUntil([this] { return steps.back() == "The lost station is being opened."; }));
  EXPECT_EQ(Close(), kSOk);
  EXPECT_EQ(Answer(IMFMediaSession::Shutdown), kSOk);
  EXPECT_TRUE(Disconnected());
  EXPECT_EQ(renewal->Step(), nullptr);
  EXPECT_EQ(built.session.calls, Started{});
}

TEST_F(RebuiltStation, ThatIsStoppedWhileItOpensIsDisconnected) {
  Lose();
  ASSERT_TRUE(StepsUntil([this] { return steps.back() == "The lost station is being opened."; }));
  EXPECT_EQ(Stop(), kSOk);
  EXPECT_TRUE(Disconnected());
  EXPECT_EQ(renewal->Step(), nullptr);
  EXPECT_EQ(built.session.calls, Started{});
}

struct StartingStation : RebuiltStation {
  void SetUp() override {
    RebuiltStation::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    built.clock.result = E_FAIL;
    Lose();
    ASSERT_TRUE(Starts());
    ASSERT_TRUE(WaitUntil([this] { return Position() > 5 * kOneSecond; }));
  }
};

TEST_F(StartingStation, ThatIsPausedKeepsItsTime) {
  const std::int64_t before = Position();
  EXPECT_EQ(Pause(), std::nullopt);
  EXPECT_FALSE(renewal->IsStarting());
  EXPECT_GE(renewal->Position(0, Renewal::Session::kPlays), before);
}

TEST_F(StartingStation, ThatIsStoppedBeginsAnewWithItsVolumeToCome) {
  EXPECT_EQ(Stop(), std::nullopt);
  EXPECT_FALSE(renewal->IsStarting());
  EXPECT_EQ(renewal->Position(0, Renewal::Session::kMayBeLost), 0);
  EXPECT_EQ(Volume(), 0.25F);
}

TEST_F(StartingStation, ThatIsClosedGetsNoVolume) {
  EXPECT_EQ(Close(), std::nullopt);
  EXPECT_FALSE(renewal->IsStarting());
  EXPECT_EQ(Volume(), -1);
}

TEST_F(StartingStation, IsStartedOnceMoreByItself) {
  EXPECT_EQ(Start(), std::nullopt);
  EXPECT_TRUE(renewal->IsStarting());
  EXPECT_EQ(Answer(IMFMediaSource::Shutdown), std::nullopt);
}

TEST_F(StartingStation, ThatIsForgottenGetsNoVolume) {
  renewal->Forget();
  EXPECT_EQ(Volume(), -1);
  EXPECT_EQ(renewal->Position(kOneSecond, Renewal::Session::kMayBeLost), kOneSecond);
}

TEST_F(StartingStation, ThatWasReleasedGetsNoVolume) {
  table.Release(session_handle);
  EXPECT_EQ(renewal->Step(), nullptr);
  EXPECT_EQ(built.volume.calls, Started{});
}

TEST_F(StartingStation, ThatFailsIsAskedAgain) {
  renewal->StartFailed(watch, kMfENetRead);
  EXPECT_FALSE(renewal->IsStarting());
  EXPECT_EQ(built.session.calls, (Started{"start", "close"}));
  Close(*watch);
  EXPECT_EQ(built.session.calls, (Started{"start", "close", "shut down"}));
  EXPECT_TRUE(IsShutDown());
  EXPECT_TRUE(Disconnected());
  built.session.queried.clear();
  renewal->Step();
  EXPECT_TRUE(built.session.queried.empty()) << "it is not asked for its volume any more";
  EXPECT_EQ(Volume(), 0.25F);
  EXPECT_TRUE(Starts());
}

}  // namespace
}  // namespace platform::win32
