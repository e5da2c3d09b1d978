// What a session that plays reports of its source, its decoder or its renderer, and what becomes of the item:
// the reports are queued by the test, all else is the system's. Needs with_sound.py.
#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mferror.h>
#include <mfidl.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/media/byte_stream.h"
#include "platform/win32/media/http_stream.h"
#include "platform/win32/media/media_library.h"
#include "platform/win32/media/media_opener.h"
#include "platform/win32/media/media_results.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/made_sessions.h"
#include "tests/platform/win32/media/renewal_rig.h"
#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

/// Reads stations as the system does, and keeps their sources.
class KeepingReader : public AddressReader {
 public:
  ~KeepingReader() override {
    for (const auto& station : stations_) End(station);
  }
  OpenedObject Open(::IMFSourceResolver& resolver, const Text& address, std::int32_t,
                    const OpeningWait& wait) override {
    Station station{std::make_shared<StreamBuffer>(), nullptr};
    station.connection = HttpStream::Open(address, u"test", station.buffer);
    stations_.push_back(station);
    const auto stream = MakeByteStream(station.buffer, "audio/mpeg");
    OpenedObject opened = OpenByteStream(resolver, *stream.Get(), address,
                                         kMfResolutionMediaSource | kMfResolutionContentNeedNotMatch, wait,
                                         [&] { End(station); });
    opened.endless = true;
    ComPointer<::IMFMediaSource> source;
    if (opened.result == kSOk) opened.object->QueryInterface(__uuidof(::IMFMediaSource), source.ReceiveAny());
    sources.push_back(std::move(source));
    return opened;
  }
  /// As the system's reader does when the session has lost its station.
  void EndAll() {
    for (const auto& station : stations_) End(station);
  }

  std::vector<ComPointer<::IMFMediaSource>> sources;

 private:
  struct Station {
    std::shared_ptr<StreamBuffer> buffer;
    std::shared_ptr<HttpStream> connection;
  };
  static void End(const Station& station) {
    station.connection->Cancel();
    station.buffer->EndReads();
  }
  std::vector<Station> stations_;
};

struct SessionReport : StationRig {
  void SetUp() override {
    reader = std::make_shared<KeepingReader>();
    options.reader = reader;
    StationRig::SetUp();
  }
  void TearDown() override {
    reader->EndAll();
    sessions.Forget();
    player.reset();
    media.reset();
    StationRig::TearDown();
  }
  void PlayUntilItIsHeard() {
    Play("/stream");
    ASSERT_TRUE(WaitUntil([this] { return player->CurrentPlayPosition() > 1'000'000; }));
  }
  /// Queued to the session, and taken by the adapter: nothing refers to the report's value any more.
  static bool Report(::IMFMediaSession& session, MediaEventType type, HRESULT status) {
    ComPointer<::IMFAttributes> seal;
    EXPECT_EQ(CallMedia<decltype(::MFCreateAttributes)>("MFCreateAttributes", seal.Receive(), 1), S_OK);
    PROPVARIANT value;
    PropVariantInit(&value);
    value.vt = VT_UNKNOWN;
    value.punkVal = seal.Get();
    EXPECT_EQ(session.QueueEvent(type, GUID{}, status, &value), S_OK);
    return WaitUntil([&seal] {
      seal->AddRef();
      return seal->Release() == 1;
    });
  }
  [[nodiscard]] bool ClockIs(ClockState state) {
    return player->PlayState() == static_cast<std::int32_t>(state);
  }
  [[nodiscard]] bool WasLost() const {
    return std::any_of(log.begin(), log.end(), [](const std::string& line) { return line == kLost; });
  }

  static constexpr const char* kLost =
      "The system has lost a station, which is read by the program from now on.";
  std::shared_ptr<KeepingReader> reader;
  MadeSessions sessions;
};

constexpr HResult kSoundBufferFails = static_cast<HResult>(0x88890018u);

// The station is there, but would not be heard any better from another session.
TEST_F(SessionReport, OfADecoderThatFailsEndsTheItem) {
  PlayUntilItIsHeard();
  EXPECT_TRUE(Report(sessions.At(0), MEError, kMfETopologyCodecNotFound));
  EXPECT_EQ(media->Status().state, PlaybackState::kFailed);
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kUnreadable);
  EXPECT_FALSE(WasLost());
  player->StopMedia();
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kUnreadable);
  EXPECT_EQ(Ask("/count?/stream"), 1);
}

TEST_F(SessionReport, OfARendererThatFailsWaitsForADevice) {
  PlayUntilItIsHeard();
  EXPECT_TRUE(Report(sessions.At(0), MEError, kSoundBufferFails));
  EXPECT_EQ(media->Status().state, PlaybackState::kNoDevice);
  EXPECT_FALSE(WasLost());
}

TEST_F(SessionReport, OfAFailureIsForgottenWithTheItem) {
  PlayUntilItIsHeard();
  EXPECT_TRUE(Report(sessions.At(0), MEError, kMfETopologyNoDecryptor));
  EXPECT_EQ(media->Status().state, PlaybackState::kFailed);
  results.clear();
  Play("/stream");
  EXPECT_TRUE(Heard());
  EXPECT_EQ(media->Status().state, PlaybackState::kPlaying);
  EXPECT_TRUE(Report(sessions.At(1), MEError, kMfETopologyCodecNotFound));
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kUnreadable);
}

TEST_F(SessionReport, OfALostStationRenewsIt) {
  PlayUntilItIsHeard();
  EXPECT_TRUE(Report(sessions.At(0), MEError, kMfENetRead));
  EXPECT_EQ(media->Status().state, PlaybackState::kReconnecting);
  EXPECT_TRUE(WasLost());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

TEST_F(SessionReport, OfAStationThatIsLostWhilePausedWaitsForStart) {
  PlayUntilItIsHeard();
  player->PauseMedia();
  EXPECT_TRUE(WaitUntil([this] { return ClockIs(ClockState::kPaused); }));
  const auto position = player->CurrentPlayPosition();
  EXPECT_TRUE(Report(sessions.At(0), MEError, kMfENetRead));
  EXPECT_EQ(media->Status().state, PlaybackState::kPaused);
  EXPECT_TRUE(WasLost());
  EXPECT_TRUE(ClockIs(ClockState::kPaused));
  EXPECT_EQ(player->CurrentPlayPosition(), position);
  EXPECT_EQ(Ask("/count?/stream"), 1);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_EQ(media->Status().state, PlaybackState::kReconnecting);
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
  EXPECT_GT(player->CurrentPlayPosition(), position);
  EXPECT_EQ(Ask("/count?/stream"), 2);
}

TEST_F(SessionReport, OfAStationThatIsLostWhileStoppedWaitsForStart) {
  PlayUntilItIsHeard();
  player->StopMedia();
  EXPECT_TRUE(Report(sessions.At(0), MEError, kMfENetRead));
  EXPECT_EQ(media->Status().state, PlaybackState::kStopped);
  EXPECT_TRUE(WasLost());
  EXPECT_EQ(player->CurrentPlayPosition(), 0);
  EXPECT_EQ(Ask("/count?/stream"), 1);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
}

// Another item is being opened, and the session of the one before reports last things.
TEST_F(SessionReport, OfAnOlderItemIsNoNewsOfALaterOne) {
  PlayUntilItIsHeard();
  InterfaceHandle resolver = InterfaceHandle::kNone;
  InterfaceHandle object = InterfaceHandle::kNone;
  std::int32_t type = 0;
  const Text address = Address("/stream");
  ASSERT_EQ(media->MFCreateSourceResolver(resolver), kSOk);
  const std::vector<Argument> list = {&address, kMfResolutionMediaSource, InterfaceHandle::kNone, &type,
                                      &object};
  const auto& open = IMFSourceResolver::CreateObjectFromURL;
  ASSERT_EQ(media->DispCallFunc(resolver, open.interface_id, open.slot, list), kSOk);
  for (const HResult result : {kMfETopologyCodecNotFound, kMfENetRead}) {
    EXPECT_TRUE(Report(sessions.At(0), MEError, result));
    EXPECT_EQ(media->Status().state, PlaybackState::kConnecting);
    EXPECT_FALSE(WasLost());
  }
  reader->sources[1]->Shutdown();
}

HRESULT WINAPI MakeNoResolver(::IMFSourceResolver**) { return E_OUTOFMEMORY; }

struct ForgottenStation : SessionReport {
  /// Only the adapter's reader has a connection then.
  void Lose() {
    PlayUntilItIsHeard();
    EXPECT_TRUE(Report(sessions.At(0), MEError, kMfENetRead));
    EXPECT_EQ(media->Status().state, PlaybackState::kReconnecting);
    EXPECT_TRUE(ClockIs(ClockState::kRunning));
    reader->EndAll();
  }
  void ExpectNothingOfIt() {
    EXPECT_FALSE(ClockIs(ClockState::kRunning));
    EXPECT_TRUE(Disconnected());
  }
};

TEST_F(ForgottenStation, IsNotReadWhenNothingCanBeOpenedNext) {
  Lose();
  {
    const ReplacedFunction<decltype(::MFCreateSourceResolver)> make(L"mfplat.dll", "MFCreateSourceResolver",
                                                                    &MakeNoResolver);
    InterfaceHandle resolver = InterfaceHandle::kNone;
    EXPECT_EQ(media->MFCreateSourceResolver(resolver), E_OUTOFMEMORY);
  }
  EXPECT_EQ(media->Status().state, PlaybackState::kFailed);
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kOther);
  ExpectNothingOfIt();
}

TEST_F(ForgottenStation, IsNotReadForAnotherSession) {
  Lose();
  InterfaceHandle session = InterfaceHandle::kNone;
  ASSERT_EQ(media->MFCreateMediaSession(session), kSOk);
  ExpectNothingOfIt();
  const auto& release = platform::IUnknown::Release;
  EXPECT_EQ(media->DispCallFunc(session, release.interface_id, release.slot, {}), kSOk);
}

TEST_F(ForgottenStation, IsNotReadForAnotherItem) {
  InterfaceHandle resolver = InterfaceHandle::kNone;
  ASSERT_EQ(media->MFCreateSourceResolver(resolver), kSOk);
  Lose();
  const Text address = u" ";
  std::int32_t type = 0;
  InterfaceHandle object = InterfaceHandle::kNone;
  const std::vector<Argument> list = {&address, kMfResolutionMediaSource, InterfaceHandle::kNone, &type,
                                      &object};
  const auto& open = IMFSourceResolver::CreateObjectFromURL;
  EXPECT_EQ(media->DispCallFunc(resolver, open.interface_id, open.slot, list), kEInvalidArg);
  ExpectNothingOfIt();
}

/// The session of a lost station that was opened again has not started yet.
struct RenewedSession : SessionReport {
  void SetUp() override {
    test = this;
    stands.result = E_FAIL;
    options.open_deadline = std::chrono::seconds(4);
    SessionReport::SetUp();
  }
  static HRESULT STDMETHODCALLTYPE GiveClock(::IMFMediaSession* session, ::IMFClock** out) {
    if (test->may_start) return test->give_clock->CallOriginal(session, out);
    *out = reinterpret_cast<::IMFClock*>(test->stands.Reference());
    return S_OK;
  }
  void LoseAndOpen() {
    PlayUntilItIsHeard();
    give_clock.emplace(sessions.At(0), kGetClock, &GiveClock);
    EXPECT_TRUE(Report(sessions.At(0), MEError, kMfENetRead));
    ASSERT_TRUE(WaitUntil([this] {
      static_cast<void>(media->Status());
      return log.back() == "The lost station is opened and starts.";
    }));
  }

  static constexpr std::size_t kGetClock = 14;
  static inline RenewedSession* test = nullptr;
  std::optional<ReplacedFunction<decltype(GiveClock)>> give_clock;
  ClockObject stands;
  bool may_start = false;
};

TEST_F(RenewedSession, ThatLosesTheStationBeforeItStartsIsReplaced) {
  LoseAndOpen();
  may_start = true;
  EXPECT_TRUE(Report(sessions.At(1), MEError, kMfENetRead));
  const PlaybackStatus status = media->Status();
  EXPECT_EQ(status.state, PlaybackState::kReconnecting);
  EXPECT_EQ(status.failure, PlaybackFailure::kConnectionLost);
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
  EXPECT_EQ(Ask("/count?/stream"), 3);
}

TEST_F(RenewedSession, ThatNeverStartsIsReplaced) {
  LoseAndOpen();
  may_start = true;
  EXPECT_TRUE(Becomes(PlaybackState::kPlaying));
  EXPECT_TRUE(Heard());
  EXPECT_EQ(Ask("/count?/stream"), 3);
}

TEST_F(RenewedSession, WhoseDecoderAlwaysFailsBeforeItStartsIsGivenUp) {
  LoseAndOpen();
  for (std::size_t times = 1; times < Renewal::kMostRefusals; ++times) {
    EXPECT_TRUE(Report(sessions.Latest(), MEError, kMfETopologyCodecNotFound));
    EXPECT_EQ(media->Status().failure, PlaybackFailure::kUnreadable);
    ASSERT_TRUE(WaitUntil([&] {
      static_cast<void>(media->Status());
      return sessions.Count() == times + 2;
    }));
  }
  EXPECT_TRUE(Report(sessions.Latest(), MEError, kMfETopologyCodecNotFound));
  EXPECT_EQ(media->Status().state, PlaybackState::kFailed);
  EXPECT_EQ(media->Status().failure, PlaybackFailure::kUnreadable);
  EXPECT_FALSE(player->PlayMedia());
}

}  // namespace
}  // namespace platform::win32
