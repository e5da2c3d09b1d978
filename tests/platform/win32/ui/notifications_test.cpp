#include "platform/win32/ui/notifications.h"

#include "platform/win32/base/windows_api.h"

#include <shellapi.h>

#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

/// The system's side: one icon, which is gone when the desktop's program starts anew.
class Win32NotificationsTest : public Win32WindowTest {
 protected:
  void SetUp() override {
    Open();
    notifications.SetMainWindow(window->Handle());
  }
  bool Ask(std::uint32_t wish, const NOTIFYICONDATAW& icon) {
    if (wish == NIM_SETVERSION) version = icon.uVersion;
    if (wish == NIM_DELETE) there = false;
    if (is_slow && wish == NIM_ADD) return there = true, false;
    if (wish == NIM_ADD && (there || !has_shell)) return false;
    if (wish == NIM_MODIFY && !there) return false;
    if (wish != NIM_ADD && wish != NIM_MODIFY) return true;
    there = true;
    shown = icon;
    texts.emplace_back(icon.szInfo);
    return true;
  }
  /// As the system reports it in version 4.
  void Report(UINT event) const {
    ::SendMessageW(window->Handle(), shown.uCallbackMessage, 0, MAKELPARAM(event, 1));
  }

  Win32Notifications notifications{
      [this](std::uint32_t wish, NOTIFYICONDATAW& icon) { return Ask(wish, icon); }};
  bool has_shell = true;
  bool is_slow = false;  ///< the icon appears, but the call fails
  bool there = false;
  UINT version = 0;
  NOTIFYICONDATAW shown{};
  std::vector<std::wstring> texts;
};

TEST_F(Win32NotificationsTest, OneReplacesTheOther) {
  notifications.Show(u"Lied", u"Köln");
  notifications.Show(u"Lied", u"Bonn");
  EXPECT_EQ(texts, (std::vector<std::wstring>{L"Köln", L"Bonn"}));
  notifications.Withdraw();
  EXPECT_FALSE(there);
}

TEST_F(Win32NotificationsTest, WhatFailedIsTriedAgain) {
  has_shell = false;
  notifications.Show(u"Lied", u"Köln");
  has_shell = true;
  notifications.Show(u"Lied", u"Bonn");
  EXPECT_EQ(texts, std::vector<std::wstring>{L"Bonn"});
}

TEST_F(Win32NotificationsTest, IconOfASlowDesktopIsShownAndRemoved) {
  is_slow = true;
  notifications.Show(u"Lied", u"Köln");
  notifications.Show(u"Lied", u"Bonn");
  EXPECT_EQ(texts, std::vector<std::wstring>{L"Bonn"});
  there = true;
  notifications.Withdraw();
  EXPECT_FALSE(there);
}

TEST_F(Win32NotificationsTest, IconComesBackWhenTheDesktopHasForgottenIt) {
  notifications.Show(u"Lied", u"Köln");
  there = false;
  version = 0;
  notifications.Show(u"Lied", u"Bonn");
  EXPECT_TRUE(there);
  EXPECT_EQ(texts.back(), L"Bonn");
  EXPECT_EQ(version, UINT{NOTIFYICON_VERSION_4});
}

TEST_F(Win32NotificationsTest, HasTheProgramsLargeIcon) {
  notifications.Show(u"Lied", u"Köln");
  EXPECT_EQ(shown.dwInfoFlags & NIIF_ICON_MASK, DWORD{NIIF_USER});
  EXPECT_NE(shown.dwInfoFlags & NIIF_LARGE_ICON, 0U);
  ASSERT_NE(shown.hBalloonIcon, nullptr);
  ICONINFO info{};
  ASSERT_TRUE(::GetIconInfo(shown.hBalloonIcon, &info));
  BITMAP picture{};
  ::GetObjectW(info.hbmColor, sizeof picture, &picture);
  EXPECT_EQ(picture.bmWidth, ::GetSystemMetrics(SM_CXICON)) << "a large icon has to have this size";
  ::DeleteObject(info.hbmColor);
  ::DeleteObject(info.hbmMask);
}

TEST_F(Win32NotificationsTest, ClickBringsTheMinimisedWindowToTheFront) {
  notifications.Show(u"Lied", u"Köln");
  EXPECT_EQ(version, UINT{NOTIFYICON_VERSION_4});
  for (const UINT click : {NIN_BALLOONUSERCLICK, NIN_SELECT}) {
    ::ShowWindow(window->Handle(), SW_MINIMIZE);
    Report(NIN_BALLOONSHOW);
    Report(WM_MOUSEMOVE);
    EXPECT_TRUE(::IsIconic(window->Handle()));
    Report(click);
    EXPECT_FALSE(::IsIconic(window->Handle()));
    EXPECT_EQ(::GetForegroundWindow(), window->Handle());
  }
}

}  // namespace
}  // namespace platform::win32
