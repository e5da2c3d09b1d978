#include "platform/win32/ui/dialogs.h"

#include "platform/win32/base/windows_api.h"

#include <dlgs.h>

#include <array>
#include <filesystem>
#include <string>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/shown_text.h"
#include "tests/platform/win32/ui/rig.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

class Win32FileDialogsTest : public Win32WindowTest {
 protected:
  void SetUp() override {
    Open();
    dialogs.SetMainWindow(window->Handle());
    wanted.filter = Text(u"M3U-Dateien (*.m3u)\0*.m3u\0\0", 26);
    wanted.file = Text(512, u'\0');
    wanted.title = u"Playlist öffnen";
    wanted.default_extension = u"m3u";
    wanted.initial_folder = folder.TextPath();
  }
  /// Where the file's name is typed: in a field, or in a box with a list.
  static HWND NameField(HWND dialog) {
    HWND const box = ::GetDlgItem(dialog, cmb13);
    return box != nullptr ? box : ::GetDlgItem(dialog, edt1);
  }
  bool IsReady() const { return OpenDialog() != nullptr && NameField(OpenDialog()) != nullptr; }
  void Type(const Text& name) {
    title = TextOf(OpenDialog());
    suggested = TextOf(NameField(OpenDialog()));
    blocks = IsBlockedByDialog(window->Handle());
    ::SetWindowTextW(NameField(OpenDialog()), Wide(name));
    ::PostMessageW(OpenDialog(), WM_COMMAND, IDOK, 0);
  }
  Text Chosen() const { return wanted.file.substr(0, wanted.file.find(u'\0')); }

  test_support::TempFolder folder;
  Win32Dialogs dialogs{loop};
  OpenFileName wanted;
  Text title;
  Text suggested;
  bool blocks = false;
};

TEST_F(Win32FileDialogsTest, FileThatIsChosenIsGivenWithItsPathUnderTheDialogsTitle) {
  folder.Write("liste.m3u", "#EXTM3U");
  const auto working_folder = std::filesystem::current_path();
  const Once type(
      *this, [this] { return IsReady(); }, [this] { Type(u"liste.m3u"); });
  EXPECT_TRUE(dialogs.GetOpenFileNameW(wanted));
  EXPECT_EQ(std::filesystem::current_path(), working_folder);
  EXPECT_EQ(Chosen(), folder.TextPath("liste.m3u"));
  EXPECT_EQ(title, u"Playlist öffnen");
  EXPECT_TRUE(blocks);
  EXPECT_FALSE(IsBlockedByDialog(window->Handle()));
}

TEST_F(Win32FileDialogsTest, WorkingFolderStaysThoughTheDialogChangesIt) {
  folder.Write("liste.m3u", "#EXTM3U");
  const auto working_folder = [] {
    std::array<wchar_t, 1000> path{};
    ::GetCurrentDirectoryW(1000, path.data());
    return std::wstring(path.data());
  };
  const std::wstring before = working_folder();
  const Once type(
      *this, [this] { return IsReady(); },
      [this] {
        // As the system's own dialog for opening may do.
        ::SetCurrentDirectoryW(Wide(folder.TextPath()));
        Type(u"liste.m3u");
      });
  EXPECT_TRUE(dialogs.GetOpenFileNameW(wanted));
  EXPECT_EQ(working_folder(), before);
}

TEST_F(Win32FileDialogsTest, NameForSavingIsSuggestedAndGetsTheExtension) {
  const Text suggestion = u"Meine Liste";
  wanted.file.replace(0, suggestion.size(), suggestion);
  wanted.flags = kOfnOverwritePrompt;
  const Once type(
      *this, [this] { return IsReady(); }, [this] { Type(u"Köln"); });
  EXPECT_TRUE(dialogs.GetSaveFileNameW(wanted));
  EXPECT_EQ(Chosen(), folder.TextPath() + u"\\Köln.m3u");
  EXPECT_TRUE(suggested.starts_with(suggestion));
}

TEST_F(Win32FileDialogsTest, CancellingChoosesNothingAndLeavesTheFileAsItWas) {
  const Text before = wanted.file;
  const Once cancel(
      *this, [this] { return IsReady(); }, [this] { ::PostMessageW(OpenDialog(), WM_COMMAND, IDCANCEL, 0); });
  EXPECT_FALSE(dialogs.GetOpenFileNameW(wanted));
  EXPECT_EQ(wanted.file, before);
}

/// Whether Escape was pressed since this was last asked.
bool EscapeWasPressed(Win32MessageLoop& loop) { return (loop.GetAsyncKeyState(kVkEscape) & 1) != 0; }

TEST_F(Win32FileDialogsTest, WaitingForTheUserForgetsAnEscapeOfBefore) {
  const auto press = [this] {
    PressKey(window->Handle(), VK_ESCAPE);
    loop.ProcessPendingMessages();
  };
  press();
  ASSERT_TRUE(EscapeWasPressed(loop));
  press();
  {
    const Once cancel(
        *this, [this] { return IsReady(); },
        [this] { ::PostMessageW(OpenDialog(), WM_COMMAND, IDCANCEL, 0); });
    EXPECT_FALSE(dialogs.GetOpenFileNameW(wanted));
  }
  EXPECT_FALSE(EscapeWasPressed(loop));
  press();
  {
    const Once answer(
        *this, [this] { return OpenDialog() != nullptr; },
        [this] { ::PostMessageW(OpenDialog(), WM_COMMAND, IDOK, 0); });
    dialogs.MessageBoxW(u"Hinweis", u"", kMbOk);
  }
  EXPECT_FALSE(EscapeWasPressed(loop));
}

TEST_F(Win32FileDialogsTest, PathThatDoesNotFitIsAFailure) {
  folder.Write("liste.m3u", "#EXTM3U");
  wanted.file = Text(4, u'\0');
  const Once type(
      *this, [this] { return IsReady(); }, [this] { Type(u"liste.m3u"); });
  EXPECT_FALSE(dialogs.GetOpenFileNameW(wanted));
  EXPECT_EQ(wanted.file, Text(4, u'\0'));
  wanted.file.clear();
  EXPECT_FALSE(dialogs.GetOpenFileNameW(wanted)) << "without any room no dialog is opened";
}

class Win32ResolutionTest : public Win32WindowTest {
 protected:
  void SetUp() override {
    list.AddColumn({u"Station", 100});
    list.AddRow({.cells = {u"Köln"}});
    list.Move({300, 300, 4500, 3000});
    button.Move({300, 3600, 1500, 450});
    inventory = {{"list", &list}, {"button", &button}};
    Open();
    // Three times as large it still has room on the screen.
    form.Resize(kWidth, 3000);
  }
  static constexpr int kWidth = 4500;
  RECT In(HWND control) const {
    RECT place{};
    ::GetWindowRect(control, &place);
    ::MapWindowPoints(nullptr, window->Handle(), reinterpret_cast<POINT*>(&place), 2);
    return place;
  }
  /// The window came to a screen of so many dots, as the system reports it.
  RECT ComeTo(UINT dots) {
    RECT place{};
    ::GetWindowRect(window->Handle(), &place);
    place.right = place.left + ::MulDiv(place.right - place.left, static_cast<int>(dots), 96);
    place.bottom = place.top + ::MulDiv(place.bottom - place.top, static_cast<int>(dots), 96);
    ::SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(dots, dots), reinterpret_cast<LPARAM>(&place));
    return place;
  }
  int RowHeight() const {
    RECT row{};
    ::SendMessageW(Of(list), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    return static_cast<int>(row.bottom - row.top);
  }

  controls::ListView list;
  controls::CommandButton button;
};

TEST_F(Win32ResolutionTest, WindowAndAllThatIsInItFollowTheResolutionOfTheScreen) {
  const RECT before = In(Of(button));
  const int row = RowHeight();
  const int font = window->GetScale().FontHeight();
  for (const UINT dots : {144U, 192U, 288U}) {
    ASSERT_EQ(window->GetScale().DotsPerInch(), 96U);
    auto resized = form.Resized.Subscribe(
        [this] { EXPECT_NEAR(form.GetPlace().width, kWidth, 300) << "not for a moment another size"; });
    const RECT wanted = ComeTo(dots);
    const double factor = dots / 96.0;
    RECT outer{};
    ::GetWindowRect(window->Handle(), &outer);
    EXPECT_TRUE(::EqualRect(&outer, &wanted) != 0) << dots;
    const RECT after = In(Of(button));
    EXPECT_NEAR(after.left, before.left * factor, 2) << dots;
    EXPECT_NEAR(after.right - after.left, (before.right - before.left) * factor, 2) << dots;
    EXPECT_NEAR(RowHeight(), row * factor, 4) << dots;
    EXPECT_NEAR(window->GetScale().FontHeight(), font * factor, 3) << dots;
    EXPECT_GT(static_cast<int>(::SendMessageW(Of(list), LVM_GETCOLUMNWIDTH, 0, 0)), 100 * factor - 2) << dots;
    EXPECT_NEAR(form.GetPlace().width, kWidth, 300) << "in the program's units the window is as large";
    // Back to the first screen.
    resized.End();
    RECT first{0, 0, 310, 240};
    ::SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(96, 96), reinterpret_cast<LPARAM>(&first));
    form.Resize(kWidth, 3000);
  }
  EXPECT_EQ(RowHeight(), row);
}

/// As the system does when a window has come to a screen of another resolution.
LRESULT CALLBACK ScaleOnce(HWND dialog, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/, DWORD_PTR dots) {
  const LRESULT handled = ::DefSubclassProc(dialog, message, w, l);
  if (message != WM_WINDOWPOSCHANGED) return handled;
  ::RemoveWindowSubclass(dialog, ScaleOnce, 1);
  RECT place{};
  ::GetWindowRect(dialog, &place);
  place.right = place.left + ::MulDiv(place.right - place.left, static_cast<int>(dots), 96);
  place.bottom = place.top + ::MulDiv(place.bottom - place.top, static_cast<int>(dots), 96);
  ::SendMessageW(dialog, WM_DPICHANGED, MAKEWPARAM(dots, dots), reinterpret_cast<LPARAM>(&place));
  return handled;
}

TEST_F(Win32ResolutionTest, DialogOnAScreenOfAnotherResolutionStandsInTheMiddleOfItsOwner) {
  ::SetWindowPos(window->Handle(), nullptr, 500, 250, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  controls::Form small;
  small.Move({0, 0, 3000, 1500});
  const app::Inventory nothing;
  FormWindow dialog(small, nothing, window->Handle(), icons, loop);
  ::SetWindowSubclass(dialog.Handle(), ScaleOnce, 1, 192);
  dialog.Show();
  EXPECT_EQ(dialog.GetScale().DotsPerInch(), 192U);
  RECT owner{};
  RECT place{};
  ::GetWindowRect(window->Handle(), &owner);
  ::GetWindowRect(dialog.Handle(), &place);
  EXPECT_NEAR(place.left + place.right, owner.left + owner.right, 3);
  EXPECT_NEAR(place.top + place.bottom, owner.top + owner.bottom, 3);
}

/// What a control saw of its fonts.
struct FontsSeen {
  int given = 0;
  bool former_was_there = true;
};

LRESULT CALLBACK WatchFonts(HWND control, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/, DWORD_PTR seen) {
  if (message == WM_SETFONT) {
    auto& fonts = *reinterpret_cast<FontsSeen*>(seen);
    auto* const former = reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0));
    LOGFONTW description{};
    fonts.former_was_there =
        fonts.former_was_there && ::GetObjectW(former, sizeof description, &description) != 0;
    ++fonts.given;
  }
  return ::DefSubclassProc(control, message, w, l);
}

TEST_F(Win32ResolutionTest, ControlHasItsFormerFontUntilItHasTheNewOne) {
  FontsSeen seen;
  ::SetWindowSubclass(Of(button), WatchFonts, 1, reinterpret_cast<DWORD_PTR>(&seen));
  const auto font = [this] { return reinterpret_cast<HFONT>(::SendMessageW(Of(button), WM_GETFONT, 0, 0)); };
  HFONT const first = font();
  ComeTo(144);
  EXPECT_GT(seen.given, 0);
  EXPECT_TRUE(seen.former_was_there);
  LOGFONTW description{};
  EXPECT_NE(::GetObjectW(font(), sizeof description, &description), 0);
  EXPECT_EQ(::GetObjectW(first, sizeof description, &description), 0) << "nobody needs it any more";
  ::RemoveWindowSubclass(Of(button), WatchFonts, 1);
}

TEST_F(Win32ResolutionTest, SettingThatIsNotShownHereChangesNothing) {
  FontsSeen seen;
  ::SetWindowSubclass(Of(button), WatchFonts, 1, reinterpret_cast<DWORD_PTR>(&seen));
  ::ValidateRect(Of(list), nullptr);
  ::SendMessageW(window->Handle(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"Environment"));
  EXPECT_EQ(seen.given, 0);
  EXPECT_FALSE(::GetUpdateRect(Of(list), nullptr, FALSE));
  ::RemoveWindowSubclass(Of(button), WatchFonts, 1);
}

TEST_F(Win32ResolutionTest, ResolutionMayChangeInsideAMessageBox) {
  Win32Dialogs dialogs(loop);
  dialogs.SetMainWindow(window->Handle());
  const Once change(
      *this, [this] { return OpenDialog() != nullptr; },
      [this] {
        ComeTo(192);
        ::PostMessageW(OpenDialog(), WM_COMMAND, IDOK, 0);
      });
  dialogs.MessageBoxW(u"Hinweis", u"", kMbOk);
  EXPECT_EQ(window->GetScale().DotsPerInch(), 192U);
}

}  // namespace
}  // namespace platform::win32
