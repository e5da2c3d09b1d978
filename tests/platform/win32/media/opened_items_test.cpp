// What the opener knows of an item that the system has opened, and what is left of one that was not.
#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mferror.h>
#include <mfidl.h>

#include <chrono>
#include <memory>

#include "platform/live/reconnect_schedule.h"
#include "platform/win32/media/media_opener.h"
#include "platform/win32/media/media_results.h"
#include "tests/platform/win32/media/slot_object.h"
#include "tests/platform/win32/media/station_rig.h"
#include "tests/support/fakes.h"

namespace platform::win32 {
namespace {

/// A resolver of the system that opens everything at once, as a source with that length or none.
struct ReadyResolver : SlotObject {
  ReadyResolver() {
    Answer(5, &Begin);
    Answer(6, &End);
    source.offered = __uuidof(::IMFMediaSource);
    source.pointer = &descriptor;
    source.Answer(8, &Describe);
    descriptor.Answer(8, &GiveItsLength);
  }
  static HRESULT STDMETHODCALLTYPE Begin(SlotObject* self, const wchar_t*, DWORD, void*, ::IUnknown** cookie,
                                         ::IMFAsyncCallback* callback, ::IUnknown*) {
    *cookie = nullptr;
    return self->result == S_OK ? callback->Invoke(reinterpret_cast<::IMFAsyncResult*>(self)) : self->result;
  }
  static HRESULT STDMETHODCALLTYPE End(SlotObject* self, ::IMFAsyncResult*, MF_OBJECT_TYPE* type,
                                       ::IUnknown** made) {
    *type = MF_OBJECT_MEDIASOURCE;
    *made = static_cast<ReadyResolver*>(self)->source.Reference();
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE Describe(SlotObject* self, ::IUnknown** out) {
    *out = static_cast<SlotObject*>(self->pointer)->Reference();
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE GiveItsLength(SlotObject* self, const GUID*, UINT64* length) {
    *length = static_cast<UINT64>(self->number);
    return *length == 0 ? MF_E_ATTRIBUTENOTFOUND : S_OK;
  }
  SlotObject source;
  SlotObject descriptor;
};

struct OpenedItems : testing::Test {
  HResult Open(const Text& address) {
    return opener
        .Open(*reinterpret_cast<::IMFSourceResolver*>(resolver.AsUnknown()), address,
              kMfResolutionMediaSource)
        .result;
  }
  ReadyResolver resolver;
  test_support::FakeMessageLoop loop;
  const std::shared_ptr<PlaybackNotes> notes = std::make_shared<PlaybackNotes>();
  MediaOpener opener{loop, {std::chrono::seconds(10), {std::chrono::seconds(15), u"test"}, nullptr}, notes};
};

TEST_F(OpenedItems, OfTheWebWithoutALengthAreStationsOfTheSystem) {
  EXPECT_EQ(Open(u"http://x/"), kSOk);
  EXPECT_TRUE(opener.IsLiveOfTheSystem());
  EXPECT_FALSE(opener.IsLive());
  resolver.descriptor.number = 1;
  EXPECT_EQ(Open(u"http://x/"), kSOk);
  EXPECT_FALSE(opener.IsLiveOfTheSystem());
}

TEST_F(OpenedItems, OfOtherKindsAreNoStations) {
  EXPECT_EQ(Open(u"mms://x/"), kSOk);
  EXPECT_FALSE(opener.IsLiveOfTheSystem());
  EXPECT_EQ(Open(u"C:\\ton.wav"), kSOk);
  EXPECT_FALSE(opener.IsLiveOfTheSystem());
}

TEST_F(OpenedItems, ThatFailAreNoStations) {
  EXPECT_EQ(Open(u"http://x/"), kSOk);
  resolver.result = E_ACCESSDENIED;
  EXPECT_EQ(Open(u"mms://x/"), kEAccessDenied);
  EXPECT_FALSE(opener.IsLiveOfTheSystem());
  EXPECT_EQ(notes->Status().failure, PlaybackFailure::kNoAccess);
}

TEST_F(OpenedItems, LeaveNothingOfTheStationBefore) {
  EXPECT_EQ(Open(u"http://x/"), kSOk);
  opener.ReadByItself();
  EXPECT_TRUE(opener.IsLive());
  EXPECT_FALSE(opener.IsLiveOfTheSystem());
  resolver.descriptor.number = 1;
  EXPECT_EQ(Open(u"C:\\ton.wav"), kSOk);
  EXPECT_FALSE(opener.IsLive());
}

using CutOpening = StationRig;
using PausedStation = StationRig;

TEST_F(CutOpening, IsDisconnectedAtOnce) {
  loop.on_paint = [this] { loop.input_ends_wait = Ask("/open") > 0; };
  player->MediaFileFromUrl(Address("/unburst"));
  EXPECT_TRUE(player->OpeningCancelled());
  EXPECT_TRUE(Disconnected());
}

TEST_F(PausedStation, IsNotConnectedAgainBeforeItContinues) {
  Play("/cut");
  player->PauseMedia();
  EXPECT_TRUE(Disconnected());
  const int times = Ask("/count?/cut");
  // Longer than the pause before an attempt.
  const auto end = std::chrono::steady_clock::now() + live::ReconnectSchedule::kOften * 3 / 2;
  while (std::chrono::steady_clock::now() < end) ASSERT_EQ(Ask("/count?/cut"), times);
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(WaitUntil([&] { return Ask("/count?/cut") > times; }));
}

}  // namespace
}  // namespace platform::win32
