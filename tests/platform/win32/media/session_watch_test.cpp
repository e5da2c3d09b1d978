#include "platform/win32/media/session_watch.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mfidl.h>

#include <chrono>
#include <future>
#include <memory>

#include "platform/win32/base/com_pointer.h"
#include "platform/win32/media/media_library.h"
#include "platform/win32/media/media_results.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

TEST(SessionWatch, GivesEachReportOnce) {
  SessionWatch watch;
  EXPECT_FALSE(watch.Take().broken);
  watch.Ended();
  EXPECT_TRUE(watch.Take().ended);
  EXPECT_FALSE(watch.Take().ended);
}

TEST(SessionWatch, TheFirstFailureIsTheCause) {
  SessionWatch watch;
  watch.Broken(kEFail);
  watch.Broken(kEInvalidArg);
  EXPECT_EQ(watch.Take().broken, kEFail);
}

// A renderer that ends may report something general first, or last.
TEST(SessionWatch, ALostDeviceIsTheCauseInAnyOrder) {
  SessionWatch watch;
  watch.Broken(kEFail);
  watch.Broken(kAudioDeviceInvalidated);
  watch.Broken(kMfEAudioPlaybackDeviceInvalidated);
  EXPECT_EQ(watch.Take().broken, kAudioDeviceInvalidated);
  watch.Broken(kAudioDeviceInvalidated);
  watch.Broken(kEFail);
  EXPECT_EQ(watch.Take().broken, kAudioDeviceInvalidated);
}

TEST(SessionWatch, KnowsWhenItClosed) {
  SessionWatch watch;
  EXPECT_FALSE(watch.ClosedAt());
  EXPECT_FALSE(watch.WaitClosed(0ms));
  const auto before = SessionWatch::Clock::now();
  watch.Closed();
  const auto closed = watch.ClosedAt();
  ASSERT_TRUE(closed);
  EXPECT_GE(*closed, before);
  EXPECT_LE(*closed, SessionWatch::Clock::now());
  EXPECT_TRUE(watch.WaitClosed(0ms));
  watch.Closed();
  EXPECT_EQ(watch.ClosedAt(), closed);
}

TEST(SessionWatch, AClosedSessionEndsTheWaitForIt) {
  SessionWatch watch;
  auto closing = std::async(std::launch::async, [&watch] { watch.Closed(); });
  EXPECT_TRUE(watch.WaitClosed(30s));
  closing.get();
}

/// What a real session's watch takes from a report that is queued to it.
struct QueuedReport : testing::Test {
  void SetUp() override {
    ASSERT_EQ(CallMedia<decltype(::MFStartup)>("MFStartup", MF_VERSION, 0), S_OK);
    ASSERT_EQ(CallMedia<decltype(::MFCreateMediaSession)>("MFCreateMediaSession", nullptr, session.Receive()),
              S_OK);
    watch = WatchSession(*session.Get());
  }
  void TearDown() override {
    if (session) session->Shutdown();
    session = {};
    EXPECT_EQ(CallMedia<decltype(::MFShutdown)>("MFShutdown"), S_OK);
  }
  /// Reports come in their order, so nothing is waited for but the end.
  SessionWatch::News After(MediaEventType type, HRESULT status) {
    EXPECT_EQ(session->QueueEvent(type, GUID{}, status, nullptr), S_OK);
    EXPECT_EQ(session->QueueEvent(MESessionClosed, GUID{}, S_OK, nullptr), S_OK);
    EXPECT_TRUE(watch->WaitClosed(10s));
    return watch->Take();
  }
  ComPointer<::IMFMediaSession> session;
  std::shared_ptr<SessionWatch> watch;
};

struct LostRenderer : QueuedReport, testing::WithParamInterface<MediaEventType> {};

// Reported without a failure, but nothing is heard from then on.
TEST_P(LostRenderer, IsAMissingDevice) {
  EXPECT_EQ(After(GetParam(), S_OK).broken, kMfEAudioPlaybackDeviceInvalidated);
}

INSTANTIATE_TEST_SUITE_P(Reports, LostRenderer,
                         testing::Values(MESinkInvalidated, MEAudioSessionDeviceRemoved,
                                         MEAudioSessionServerShutdown, MEAudioSessionFormatChanged,
                                         MEAudioSessionDisconnected, MEAudioSessionExclusiveModeOverride));

TEST_F(QueuedReport, OfTheSoundsNameOrVolumeIsNoLoss) {
  EXPECT_EQ(session->QueueEvent(MEAudioSessionNameChanged, GUID{}, S_OK, nullptr), S_OK);
  const auto news = After(MEAudioSessionVolumeChanged, S_OK);
  EXPECT_FALSE(news.broken);
  EXPECT_FALSE(news.ended);
}

TEST_F(QueuedReport, OfAFailureKeepsItsResult) { EXPECT_EQ(After(MEError, kMfENetRead).broken, kMfENetRead); }

TEST_F(QueuedReport, OfTheEndIsTheEnd) { EXPECT_TRUE(After(MESessionEnded, S_OK).ended); }

struct FailedReport : QueuedReport, testing::WithParamInterface<MediaEventType> {};

TEST_P(FailedReport, EndsPlaying) { EXPECT_EQ(After(GetParam(), kMfENetRead).broken, kMfENetRead); }

INSTANTIATE_TEST_SUITE_P(Reports, FailedReport,
                         testing::Values(MEError, MESessionTopologySet, MESessionTopologyStatus,
                                         MESessionStarted, MEPolicyError));

struct HarmlessFailure : QueuedReport, testing::WithParamInterface<MediaEventType> {};

// The session plays on, or was asked to end.
TEST_P(HarmlessFailure, DoesNotEndPlaying) { EXPECT_FALSE(After(GetParam(), kMfENetRead).broken); }

INSTANTIATE_TEST_SUITE_P(Reports, HarmlessFailure,
                         testing::Values(MENonFatalError, MESessionPaused, MESessionStopped,
                                         MESessionNotifyPresentationTime, MESessionCapabilitiesChanged,
                                         MEExtendedType, MESinkUnknown, MESourceMetadataChanged));

// A part of it may fail with a result of its own.
TEST_F(QueuedReport, OfALostRendererIsAMissingDeviceWhateverItsResult) {
  EXPECT_EQ(After(MESinkInvalidated, kEFail).broken, kMfEAudioPlaybackDeviceInvalidated);
}

TEST_F(QueuedReport, OfBufferingHoldsUntilItStops) {
  EXPECT_FALSE(watch->IsBuffering());
  EXPECT_EQ(session->QueueEvent(MEBufferingStarted, GUID{}, S_OK, nullptr), S_OK);
  const auto news = After(MEAudioSessionVolumeChanged, S_OK);
  EXPECT_TRUE(watch->IsBuffering());
  EXPECT_FALSE(news.broken || news.ended);
}

struct EndOfBuffering : QueuedReport, testing::WithParamInterface<MediaEventType> {};

TEST_P(EndOfBuffering, IsTheDataOrWhatTheCallerDid) {
  EXPECT_EQ(session->QueueEvent(MEBufferingStarted, GUID{}, S_OK, nullptr), S_OK);
  After(GetParam(), S_OK);
  EXPECT_FALSE(watch->IsBuffering());
}

INSTANTIATE_TEST_SUITE_P(Reports, EndOfBuffering,
                         testing::Values(MEBufferingStopped, MESessionStarted, MESessionPaused,
                                         MESessionStopped));

}  // namespace
}  // namespace platform::win32
