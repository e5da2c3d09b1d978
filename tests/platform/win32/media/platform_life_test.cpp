// The media platform's start, and the end of what it has made.
#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <mfapi.h>
#include <mfidl.h>
#include <objbase.h>

#include <bit>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/win32/media/media_library.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/made_sessions.h"
#include "tests/platform/win32/media/player_rig.h"
#include "tests/platform/win32/media/replaced_function.h"

namespace platform::win32 {
namespace {

struct PlatformLife : testing::Test, PlayerRig {
  PlatformLife() { media = std::make_unique<Win32Media>(loop, options); }
  template <typename... Arguments>
  std::optional<HResult> Call(InterfaceHandle handle, const Operation<Arguments...>& operation,
                              std::vector<Argument> list = {}) {
    return media->DispCallFunc(handle, operation.interface_id, operation.slot, list);
  }
};

HRESULT WINAPI RefuseStart(ULONG, DWORD) { return E_NOTIMPL; }

// As on an "N" edition that has the library all the same.
TEST_F(PlatformLife, WithoutTheMediaComponentsItIsSaidLikeAMissingLibrary) {
  const ReplacedFunction<decltype(::MFStartup)> start(L"mfplat.dll", "MFStartup", &RefuseStart);
  EXPECT_EQ(media->MFStartup(1, 0), E_NOTIMPL);
  EXPECT_EQ(log, std::vector<std::string>{"The system has no media platform, so nothing can be played."});
}

struct MadeSession : PlatformLife {
  void SetUp() override {
    ASSERT_EQ(media->MFStartup(1, 0), kSOk);
    ASSERT_EQ(media->MFCreateMediaSession(session), kSOk);
    const Guid iid = std::bit_cast<Guid>(__uuidof(::IUnknown));
    ASSERT_EQ(Call(session, platform::IUnknown::QueryInterface, {&iid, &object}), kSOk);
  }
  void TearDown() override {
    if (object != InterfaceHandle::kNone) Call(object, platform::IUnknown::Release);
    EXPECT_EQ(media->MFShutdown(), kSOk);
  }
  /// Whether the session, of which `object` is left, gives its clock.
  std::optional<HResult> GetClock() {
    const Guid iid = std::bit_cast<Guid>(__uuidof(::IMFMediaSession));
    InterfaceHandle again = InterfaceHandle::kNone;
    InterfaceHandle its_clock = InterfaceHandle::kNone;
    EXPECT_EQ(Call(object, platform::IUnknown::QueryInterface, {&iid, &again}), kSOk);
    const auto result = Call(again, platform::IMFMediaSession::GetClock, {&its_clock});
    if (its_clock != InterfaceHandle::kNone) Call(its_clock, platform::IUnknown::Release);
    Call(again, platform::IUnknown::Release);
    return result;
  }
  InterfaceHandle session = InterfaceHandle::kNone;
  InterfaceHandle object = InterfaceHandle::kNone;
};

constexpr HResult kShutDown = static_cast<HResult>(0xC00D3E85u);  // MF_E_SHUTDOWN

// A session that was never shut down would report to whoever waits for its reports for ever.
TEST_F(MadeSession, IsShutDownWhenItsHandleIsDroppedBefore) {
  EXPECT_EQ(GetClock(), kSOk);
  EXPECT_EQ(Call(session, platform::IUnknown::Release), kSOk);
  EXPECT_EQ(GetClock(), kShutDown);
}

HRESULT STDMETHODCALLTYPE DoNotClose(::IMFMediaSession*) { return S_OK; }

/// One that says that it closes, and does not.
struct StuckSession : MadeSession {
  void SetUp() override {
    options.close_limit = std::chrono::milliseconds(10);
    media = std::make_unique<Win32Media>(loop, options);
    MadeSession::SetUp();
    close.emplace(sessions.At(0), 12, &DoNotClose);
  }
  MadeSessions sessions;
  std::optional<ReplacedFunction<decltype(DoNotClose)>> close;
};

TEST_F(StuckSession, IsInUseUntilItHasClosed) {
  EXPECT_EQ(Call(session, platform::IMFMediaSession::Close), kSOk);
  EXPECT_EQ(log.back(), "The media session does not close.");
  EXPECT_EQ(media->MFShutdown(), kSOk);
  EXPECT_EQ(log.back(), "The media platform stays open, because a session does not close.");
  EXPECT_EQ(Call(session, platform::IMFMediaSession::Shutdown), kSOk);
  EXPECT_EQ(GetClock(), kSOk);
  close.reset();
  EXPECT_EQ(sessions.At(0).Close(), S_OK);
}

TEST(ApartmentOfTheThread, IsLeftWithTheAdapter) {
  HRESULT other_kind = E_FAIL;
  std::thread([&other_kind] {
    test_support::FakeMessageLoop loop;
    std::make_unique<Win32Media>(loop).reset();
    other_kind = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    if (SUCCEEDED(other_kind)) CoUninitialize();
  }).join();
  EXPECT_EQ(other_kind, S_OK);
}

}  // namespace
}  // namespace platform::win32
