#include "platform/win32/system/shell.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

namespace platform::win32 {
namespace {

class Win32ShellTest : public testing::Test {
 protected:
  static std::optional<std::wstring> TextOrNone(const wchar_t* text) {
    return text == nullptr ? std::nullopt : std::optional<std::wstring>(text);
  }

  int calls = 0;
  HWND owner = nullptr;
  std::optional<std::wstring> verb, file, parameters, folder;
  int show = 0;
  bool starts = true;
  Win32Shell shell{[this](const ShellCall& call) {
    ++calls;
    owner = call.owner;
    verb = TextOrNone(call.verb);
    file = TextOrNone(call.file);
    parameters = TextOrNone(call.parameters);
    folder = TextOrNone(call.folder);
    show = call.show;
    return starts;
  }};
};

TEST_F(Win32ShellTest, TheSystemShowsWhatItAsksOverTheActiveWindow) {
  HWND const window = ::CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                                        nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  ::SetActiveWindow(window);
  ASSERT_EQ(::GetActiveWindow(), window);
  shell.ShellExecuteW(0, u"open", u"https://example.org/", u"", u"", kSwShowNormal);
  EXPECT_EQ(owner, window);
  owner = nullptr;
  shell.ShellExecuteW(1, u"", u"a.exe", u"", u"", kSwShowNormal);
  EXPECT_EQ(owner, window);
  ::DestroyWindow(window);
}

TEST_F(Win32ShellTest, AnEmptyTextIsNone) {
  EXPECT_TRUE(shell.ShellExecuteW(0, u"", u"a.exe", u"", u"", SW_SHOWMINIMIZED));
  EXPECT_EQ(verb, std::nullopt);
  EXPECT_EQ(file, L"a.exe");
  EXPECT_EQ(parameters, std::nullopt);
  EXPECT_EQ(folder, std::nullopt);
  EXPECT_EQ(show, SW_SHOWMINIMIZED);
  starts = false;
  EXPECT_FALSE(shell.ShellExecuteW(0, u"open", u"a.exe", u"\"a  b", u"C:\\", kSwShowNormal));
  EXPECT_EQ(verb, L"open");
  EXPECT_EQ(parameters, L"\"a  b");
  EXPECT_EQ(folder, L"C:\\");
}

TEST_F(Win32ShellTest, WithoutAFileNothingIsAsked) {
  EXPECT_FALSE(shell.ShellExecuteW(0, u"open", u"", u"", u"", kSwShowNormal));
  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace platform::win32
