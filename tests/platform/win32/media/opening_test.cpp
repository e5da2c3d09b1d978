#include "platform/win32/media/opening.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfidl.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <string>

#include "platform/win32/media/media_results.h"
#include "tests/platform/win32/media/slot_object.h"
#include "tests/support/fakes.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

HRESULT STDMETHODCALLTYPE BeginOpening(SlotObject* self, const wchar_t*, DWORD, void*, ::IUnknown** cookie,
                                       ::IMFAsyncCallback* callback, ::IUnknown*) {
  if (cookie != nullptr) *cookie = nullptr;
  callback->AddRef();
  self->pointer = callback;
  return self->result;
}
HRESULT STDMETHODCALLTYPE EndOpening(SlotObject* self, ::IMFAsyncResult*, MF_OBJECT_TYPE* type,
                                     ::IUnknown** made);
HRESULT STDMETHODCALLTYPE ShutDown(SlotObject* self);

struct OpeningTest : testing::Test {
  OpeningTest() {
    test = this;
    resolver.Answer(5, &BeginOpening);
    resolver.Answer(6, &EndOpening);
    source.offered = __uuidof(::IMFMediaSource);
    source.Answer(12, &ShutDown);
  }
  OpenedObject Open() {
    const OpeningWait wait{loop, std::chrono::steady_clock::now() + 10s};
    return OpenAddress(*reinterpret_cast<::IMFSourceResolver*>(resolver.AsUnknown()), u"http://x/", 1, wait);
  }
  /// The framework has opened it.
  void Opened() {
    static_cast<::IMFAsyncCallback*>(resolver.pointer)
        ->Invoke(reinterpret_cast<::IMFAsyncResult*>(asked.AsUnknown()));
  }
  void ReleaseCallback() { static_cast<::IMFAsyncCallback*>(resolver.pointer)->Release(); }

  static inline OpeningTest* test = nullptr;
  test_support::FakeMessageLoop loop;
  SlotObject resolver;
  SlotObject source;
  SlotObject asked;
  int shut_down = 0;
  std::function<void()> on_shut_down;
};

HRESULT STDMETHODCALLTYPE EndOpening(SlotObject* self, ::IMFAsyncResult*, MF_OBJECT_TYPE* type,
                                     ::IUnknown** made) {
  *type = MF_OBJECT_MEDIASOURCE;
  *made = OpeningTest::test->source.Reference();
  return self->result;
}
HRESULT STDMETHODCALLTYPE ShutDown(SlotObject*) {
  ++OpeningTest::test->shut_down;
  if (OpeningTest::test->on_shut_down) OpeningTest::test->on_shut_down();
  return S_OK;
}

TEST_F(OpeningTest, GivesWhatWasMade) {
  loop.on_paint = [this] { Opened(); };
  const OpenedObject opened = Open();
  EXPECT_EQ(opened.result, kSOk);
  EXPECT_EQ(opened.type, kMfObjectMediaSource);
  EXPECT_EQ(opened.object.Get(), source.AsUnknown());
  EXPECT_EQ(shut_down, 0);
  ReleaseCallback();
  EXPECT_EQ(resolver.references, 0);
  EXPECT_EQ(source.references, 1);
}

TEST_F(OpeningTest, WhatIsMadeAfterItWasGivenUpIsShutDown) {
  loop.input_ends_wait = true;
  EXPECT_EQ(Open().result, kErrorCancelled);
  EXPECT_EQ(shut_down, 0);
  Opened();
  EXPECT_EQ(shut_down, 1);
  ReleaseCallback();
  EXPECT_EQ(source.references, 0);
  EXPECT_EQ(resolver.references, 0);
}

TEST_F(OpeningTest, WhatNobodyTakesIsShutDown) {
  {
    auto opening = BegunOpening::OfAddress(*reinterpret_cast<::IMFSourceResolver*>(resolver.AsUnknown()),
                                           u"http://x/", 1);
    EXPECT_FALSE(opening.IsOver());
    Opened();
    EXPECT_TRUE(opening.IsOver());
    EXPECT_EQ(shut_down, 0);
  }
  EXPECT_EQ(shut_down, 1);
  ReleaseCallback();
  EXPECT_EQ(source.references, 0);
}

TEST_F(OpeningTest, ThatTakesTooLongIsGivenUp) {
  const OpeningWait wait{loop, std::chrono::steady_clock::now()};
  const auto late =
      OpenAddress(*reinterpret_cast<::IMFSourceResolver*>(resolver.AsUnknown()), u"http://x/", 1, wait);
  EXPECT_EQ(late.result, kMfENetTimeout);
  EXPECT_EQ(loop.paints, 1);
  ReleaseCallback();
}

TEST_F(OpeningTest, OfAByteStreamIsCancelledAfterItsReadsWereEnded) {
  static std::string order;
  order.clear();
  SlotObject cookie;
  static SlotObject* cookie_given;
  cookie_given = &cookie;
  resolver.Answer(
      7,
      +[](SlotObject* self, ::IUnknown*, const wchar_t*, DWORD, void*, ::IUnknown** given,
          ::IMFAsyncCallback* callback, ::IUnknown*) -> HRESULT {
        *given = cookie_given->Reference();
        callback->AddRef();
        self->pointer = callback;
        return S_OK;
      });
  resolver.Answer(
      9, +[](SlotObject*, ::IUnknown* given) -> HRESULT {
        order += given == cookie_given->AsUnknown() ? "cancelled" : "?";
        return S_OK;
      });
  loop.input_ends_wait = true;
  SlotObject stream;
  const OpeningWait wait{loop, std::chrono::steady_clock::now() + 10s};
  const auto given_up = OpenByteStream(*reinterpret_cast<::IMFSourceResolver*>(resolver.AsUnknown()),
                                       *reinterpret_cast<::IMFByteStream*>(stream.AsUnknown()), u"http://x/",
                                       1, wait, [] { order += "ended "; });
  EXPECT_EQ(given_up.result, kErrorCancelled);
  EXPECT_EQ(order, "ended cancelled");
  EXPECT_EQ(cookie.references, 0);
  ReleaseCallback();
}

TEST_F(OpeningTest, IsNotLockedWhileASourceShutsDown) {
  loop.input_ends_wait = true;
  EXPECT_EQ(Open().result, kErrorCancelled);
  std::future<void> other;
  std::atomic<bool> other_runs = false;
  bool waited = false;
  on_shut_down = [&] {
    if (other_runs.exchange(true)) return;
    other = std::async(std::launch::async, [this] { Opened(); });
    waited = other.wait_for(5s) == std::future_status::ready;
  };
  Opened();
  EXPECT_TRUE(waited);
  other.get();
  ReleaseCallback();
}

}  // namespace
}  // namespace platform::win32
