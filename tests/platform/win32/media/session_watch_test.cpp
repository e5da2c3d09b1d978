#include "platform/win32/media/session_watch.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mfidl.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>

#include "platform/win32/media/media_library.h"
#include "platform/win32/media/media_results.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/slot_object.h"

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

TEST(SessionWatch, WhatWaitsForTheCloseRunsThenInItsOrder) {
  SessionWatch watch;
  std::string order;
  watch.WhenClosed([&] { order += "source "; });
  watch.WhenClosed([&] { order += "session"; });
  EXPECT_EQ(order, "");
  EXPECT_FALSE(watch.WaitClosed(0ms));
  watch.Closed();
  EXPECT_EQ(order, "source session");
  EXPECT_TRUE(watch.WaitClosed(0ms));
}

TEST(SessionWatch, IsClosedWhenAllThatWaitedHasRun) {
  SessionWatch watch;
  std::promise<void> runs;
  std::promise<void> may_end;
  std::string order;
  watch.WhenClosed([&] {
    runs.set_value();
    may_end.get_future().wait();
    order += "source ";
  });
  auto closing = std::async(std::launch::async, [&watch] { watch.Closed(); });
  runs.get_future().wait();
  EXPECT_FALSE(watch.WaitClosed(0ms));
  watch.WhenClosed([&order] { order += "session"; });
  EXPECT_FALSE(watch.WaitClosed(0ms));
  may_end.set_value();
  EXPECT_TRUE(watch.WaitClosed(10s));
  EXPECT_EQ(order, "source session");
  closing.get();
}

TEST(SessionWatch, AfterTheCloseNothingWaits) {
  SessionWatch watch;
  watch.Closed();
  bool ran = false;
  watch.WhenClosed([&] { ran = true; });
  EXPECT_TRUE(ran);
}

// With a lock held this would wait for itself.
TEST(SessionWatch, WhatRunsMayAskIt) {
  SessionWatch watch;
  watch.Ended();
  bool ended = false;
  watch.WhenClosed([&] { ended = watch.Take().ended; });
  watch.Closed();
  EXPECT_TRUE(ended);
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

HRESULT STDMETHODCALLTYPE NoteShutdown(SlotObject* self) {
  static_cast<std::string*>(self->pointer)->append(self->text.begin(), self->text.end());
  return S_OK;
}

TEST(SessionWatch, NothingIsShutDownWhileTheSessionIsClosing) {
  std::string order;
  SlotObject source;
  SlotObject session;
  source.pointer = session.pointer = &order;
  source.text = L"source ";
  session.text = L"session";
  source.Answer(static_cast<std::size_t>(IMFMediaSource::Shutdown.slot), &NoteShutdown);
  session.Answer(static_cast<std::size_t>(IMFMediaSession::Shutdown.slot), &NoteShutdown);
  SessionWatch watch;
  const auto later = [&watch](SlotObject& object, Interface seen_as) {
    return ShutDownLater(watch, {ComPointer<::IUnknown>(object.Reference()), seen_as});
  };
  EXPECT_TRUE(later(source, Interface::kMediaSource));
  EXPECT_TRUE(later(session, Interface::kMediaSession));
  EXPECT_EQ(order, "");
  EXPECT_EQ(source.references, 1);
  watch.Closed();
  EXPECT_EQ(order, "source session");
  EXPECT_EQ(source.references + session.references, 0);
  EXPECT_FALSE(later(source, Interface::kMediaSource));
}

}  // namespace
}  // namespace platform::win32
