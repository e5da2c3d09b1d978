// Clock, clipboard, error texts, sleep: adapters of one operation each.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <future>
#include <string_view>
#include <thread>

#include "platform/win32/system/clipboard.h"
#include "platform/win32/system/clock.h"
#include "platform/win32/system/sleep_inhibitor.h"
#include "platform/win32/system/system_messages.h"

namespace platform::win32 {
namespace {

TEST(Win32ClockTest, WholeSecondsAreThoseSinceTheSystemsStartWhateverTheTimeIsSetTo) {
  Win32Clock clock;
  const auto since_start = [] { return static_cast<std::int64_t>(::GetTickCount64() / 1000); };
  const std::int64_t before = since_start();
  const std::int64_t now = clock.WholeSeconds();
  EXPECT_GE(now, before);
  EXPECT_LE(now, since_start());
}

TEST(Win32ClockTest, TheTimesOfADayAgreeWithEachOther) {
  Win32Clock clock;
  DateTime local = clock.LocalTime();
  const double midnight = clock.SecondsSinceMidnight();
  if (clock.LocalTime().day != local.day) local = clock.LocalTime();
  const int whole = (local.hour * 60 + local.minute) * 60 + local.second;
  EXPECT_NEAR(midnight, whole, 60);
  EXPECT_GE(local.year, 2024);
}

void PutIntoClipboard(std::wstring_view units) {
  const std::size_t bytes = units.size() * sizeof(wchar_t);
  HGLOBAL const memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes);
  if (bytes > 0) std::memcpy(::GlobalLock(memory), units.data(), bytes);
  ::GlobalUnlock(memory);
  ASSERT_NE(::OpenClipboard(nullptr), 0);
  ::EmptyClipboard();
  ::SetClipboardData(CF_UNICODETEXT, memory);
  ::CloseClipboard();
}

TEST(Win32ClipboardTest, TheTextIsReadUpToItsEnd) {
  Win32Clipboard clipboard;
  PutIntoClipboard(std::wstring_view(L"http://Größe/\0Rest", 18));
  EXPECT_EQ(clipboard.GetText(), u"http://Größe/");
}

TEST(Win32ClipboardTest, MemoryWithoutAnyBytesHasNoText) {
  PutIntoClipboard({});
  EXPECT_EQ(Win32Clipboard().GetText(), u"");
}

TEST(Win32ClipboardTest, ATextReplacesTheContent) {
  Win32Clipboard clipboard;
  PutIntoClipboard(L"vorher");
  clipboard.SetText(u"http://Größe/");
  EXPECT_EQ(clipboard.GetText(), u"http://Größe/");
  clipboard.SetText(u"");
  EXPECT_EQ(clipboard.GetText(), u"");
}

TEST(Win32ClipboardTest, WhatIsPutThereHasAnOwnerAndOutlivesIt) {
  PutIntoClipboard(L"vorher");
  {
    Win32Clipboard clipboard;
    clipboard.SetText(u"http://Größe/");
    HWND const owner = ::GetClipboardOwner();
    ASSERT_NE(owner, nullptr);
    EXPECT_EQ(::GetWindowThreadProcessId(owner, nullptr), ::GetCurrentThreadId());
    clipboard.SetText(u"http://Länge/");
    EXPECT_EQ(::GetClipboardOwner(), owner);
  }
  EXPECT_EQ(::GetClipboardOwner(), nullptr);
  EXPECT_EQ(Win32Clipboard().GetText(), u"http://Länge/");
}

/// Another program's, as far as the clipboard knows: it has it open until it is told to close it.
class OtherUser {
 public:
  OtherUser() : thread_([this] { Keep(); }) { is_open_ = opened_.get_future().get(); }
  ~OtherUser() { Close(); }
  OtherUser(const OtherUser&) = delete;
  OtherUser& operator=(const OtherUser&) = delete;

  [[nodiscard]] bool HasItOpen() const { return is_open_; }
  void Close() {
    closes_ = true;
    if (thread_.joinable()) thread_.join();
  }

 private:
  void Keep() {
    HWND const window = ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                          ::GetModuleHandleW(nullptr), nullptr);
    opened_.set_value(::OpenClipboard(window) != 0);
    while (!closes_) ::Sleep(1);
    ::CloseClipboard();
    ::DestroyWindow(window);
  }

  std::atomic<bool> closes_ = false;
  std::promise<bool> opened_;
  bool is_open_ = false;
  std::thread thread_;
};

TEST(Win32ClipboardTest, AnotherProgramThatHasItOpenForAMomentIsWaitedFor) {
  Win32Clipboard clipboard;
  clipboard.SetText(u"vorher");
  for (const bool reads : {true, false}) {
    OtherUser other;
    ASSERT_TRUE(other.HasItOpen());
    std::thread closing([&other] {
      ::Sleep(30);
      other.Close();
    });
    const Text seen = reads ? clipboard.GetText() : Text(u"vorher");
    if (!reads) clipboard.SetText(u"nachher");
    closing.join();
    EXPECT_EQ(seen, u"vorher");
  }
  EXPECT_EQ(clipboard.GetText(), u"nachher");
}

TEST(Win32ClipboardTest, OneThatStaysOpenIsEmptyAndKeepsItsContent) {
  Win32Clipboard clipboard;
  clipboard.SetText(u"vorher");
  {
    const OtherUser other;
    ASSERT_TRUE(other.HasItOpen());
    EXPECT_EQ(clipboard.GetText(), u"");
    clipboard.SetText(u"nachher");
  }
  EXPECT_EQ(clipboard.GetText(), u"vorher");
}

/// How often the clipboard's memory is locked now.
UINT LocksOfTheContent() {
  if (::OpenClipboard(nullptr) == 0) return GMEM_INVALID_HANDLE;
  const UINT flags = ::GlobalFlags(::GetClipboardData(CF_UNICODETEXT));
  ::CloseClipboard();
  return flags & GMEM_LOCKCOUNT;
}

TEST(Win32ClipboardTest, ItsMemoryIsLeftUnlocked) {
  Win32Clipboard clipboard;
  clipboard.SetText(u"Text");
  EXPECT_EQ(LocksOfTheContent(), 0U);
  EXPECT_EQ(clipboard.GetText(), u"Text");
  EXPECT_EQ(LocksOfTheContent(), 0U);
}

TEST(Win32ClipboardTest, WithoutATextItIsEmpty) {
  ASSERT_NE(::OpenClipboard(nullptr), 0);
  ::EmptyClipboard();
  ::CloseClipboard();
  EXPECT_EQ(Win32Clipboard().GetText(), u"");
}

TEST(Win32SystemMessagesTest, TheSystemHasATextForAMissingFile) {
  const Text text = Win32SystemMessages().FormatMessageA(static_cast<std::int32_t>(0x80070002U));
  EXPECT_TRUE(text.ends_with(u"\r\n"));
  EXPECT_LE(text.size(), 255U);
  EXPECT_EQ(Win32SystemMessages().FormatMessageA(static_cast<std::int32_t>(0x8ABCDEF0U)), u"");
}

TEST(Win32SystemMessagesTest, AnUnsupportedStreamHasATextInEveryCase) {
  Win32SystemMessages messages;
  const auto code = static_cast<std::int32_t>(0xC00D36C4U);
  EXPECT_TRUE(messages.FormatMessageA(code).ends_with(u"\r\n"));
  if (messages.FormatMessageA(code).find(u"Bytestreamtyp der") == Text::npos) return;
  messages.SetLookUp([](const Text& german) { return u"<" + german + u">"; });
  EXPECT_EQ(messages.FormatMessageA(code),
            u"<Der Bytestreamtyp der angegebenen URL wird nicht unterstützt.>\r\n");
}

TEST(Win32SleepInhibitorTest, TheRequestHoldsUntilItIsReleased) {
  Win32SleepInhibitor inhibitor;
  inhibitor.Hold();
  inhibitor.Hold();
  const EXECUTION_STATE held = ::SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
  EXPECT_NE(held & ES_SYSTEM_REQUIRED, 0U);
  inhibitor.Release();
  EXPECT_EQ(::SetThreadExecutionState(ES_CONTINUOUS) & ES_SYSTEM_REQUIRED, 0U);
}

}  // namespace
}  // namespace platform::win32
