// What windows are made of and painted with, below and between their controls: grounds, frames, pointer,
// order.

#include "platform/win32/base/windows_api.h"

#include <uxtheme.h>

#include <optional>
#include <tuple>

#include "platform/win32/ui/busy_pointer.h"
#include "platform/win32/ui/shown_text.h"
#include "tests/platform/win32/ui/canvas.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

class Win32WindowGroundTest : public Win32WindowTest {
 protected:
  /// A window as it is painted on the screen now.
  const Canvas& Seen(HWND one) {
    loop.ProcessPendingMessages();
    ::RedrawWindow(window->Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT all{};
    ::GetClientRect(one, &all);
    seen.emplace(static_cast<int>(all.right), static_cast<int>(all.bottom));
    HDC const context = ::GetDC(one);
    ::BitBlt(seen->Context(), 0, 0, static_cast<int>(all.right), static_cast<int>(all.bottom), context, 0, 0,
             SRCCOPY);
    ::ReleaseDC(one, context);
    return *seen;
  }
  static bool IsDirty(HWND one) { return ::GetUpdateRect(one, nullptr, FALSE) != 0; }

  std::optional<Canvas> seen;
  controls::Frame frame;
  controls::Label label;
  controls::CommandButton button;
  controls::CommandButton other;
};

TEST_F(Win32WindowGroundTest, WindowHasAPointerAnIconAndTheSystemsGround) {
  Open();
  EXPECT_EQ(::GetClassLongPtrW(window->Handle(), GCLP_HCURSOR),
            reinterpret_cast<ULONG_PTR>(::LoadCursorW(nullptr, IDC_ARROW)));
  EXPECT_NE(::GetClassLongPtrW(window->Handle(), GCLP_HICON), 0U);
  EXPECT_NE(::GetClassLongPtrW(window->Handle(), GCL_STYLE) & CS_DBLCLKS, 0U);
  EXPECT_EQ(Seen(window->Handle()).At(100, 100), ::GetSysColor(COLOR_BTNFACE));
}

TEST_F(Win32WindowGroundTest, TitledFrameHasItsTitleInAGapOfItsBorder) {
  frame.SetCaption(u"MMMM");
  frame.Move({150, 150, 3000, 1500});
  inventory = {{"frame", &frame}};
  Open();
  const Canvas& painted = Seen(Of(frame));
  const COLORREF ground = ::GetSysColor(COLOR_BTNFACE);
  const auto is_line = [ground](COLORREF one) { return one != ground; };
  EXPECT_GT(painted.Count({8, 0, 50, 18}, IsDark), 40) << "the title";
  EXPECT_EQ(painted.Count({5, 0, 8, 14}, is_line), 0) << "the gap before it";
  EXPECT_EQ(painted.Count({100, 14, 190, 90}, is_line), 0) << "nothing inside";
  EXPECT_EQ(painted.Count({100, 0, 190, 3}, is_line), 0) << "nothing above the border";
  for (const RECT& side :
       {RECT{100, 3, 101, 14}, RECT{0, 50, 3, 51}, RECT{197, 50, 200, 51}, RECT{100, 97, 101, 100}})
    EXPECT_GE(painted.Count(side, is_line), 1) << side.left << ", " << side.top;
  EXPECT_EQ(TextOf(Of(frame)), u"MMMM");
  ::SetWindowTheme(Of(frame), L" ", L" ");
  ::InvalidateRect(Of(frame), nullptr, TRUE);
  EXPECT_GE(Seen(Of(frame)).Count({100, 3, 101, 14}, is_line), 1) << "without a theme";
  frame.SetCaption(u"Genre");
  EXPECT_EQ(TextOf(Of(frame)), u"Genre");
  EXPECT_TRUE(IsDirty(Of(frame)));
  Seen(Of(frame));
  frame.Move({150, 150, 3600, 1500});
  RECT dirty{};
  ::GetUpdateRect(Of(frame), &dirty, FALSE);
  EXPECT_EQ(dirty.left, 0) << "its border is elsewhere";
}

TEST_F(Win32WindowGroundTest, PlainFrameIsNotSeenAndAPanelIsLikeAList) {
  controls::Frame panel;
  frame.SetLook(controls::FrameLook::kPlain);
  frame.Move({150, 150, 1500, 1500});
  panel.SetLook(controls::FrameLook::kPanel);
  panel.Move({3000, 150, 1500, 1500});
  inventory = {{"frame", &frame}, {"panel", &panel}, {"label", &label, &panel}, {"button", &button, &panel}};
  Open();
  const Canvas& plain = Seen(Of(frame));
  EXPECT_EQ(plain.Count([](COLORREF one) { return one != ::GetSysColor(COLOR_BTNFACE); }), 0);
  label.SetVisible(false);
  button.SetVisible(false);
  const Canvas& painted = Seen(Of(panel));
  EXPECT_EQ(painted.At(0, 50), ::GetSysColor(COLOR_BTNSHADOW));
  EXPECT_EQ(painted.At(50, 99), ::GetSysColor(COLOR_BTNSHADOW));
  EXPECT_EQ(painted.At(50, 50), ::GetSysColor(COLOR_WINDOW));
}

TEST_F(Win32WindowGroundTest, LabelsStandOnTheGroundOfWhatTheyAreIn) {
  controls::Frame panel;
  panel.SetLook(controls::FrameLook::kPanel);
  panel.Move({3000, 150, 1500, 1500});
  inventory = {{"label", &label}, {"panel", &panel}};
  Open();
  const auto ask = [this](HWND container) {
    const Canvas canvas(4, 4);
    ::SetTextColor(canvas.Context(), RGB(1, 2, 3));
    ::SetBkColor(canvas.Context(), RGB(1, 2, 3));
    const LRESULT brush =
        ::SendMessageW(container, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(canvas.Context()),
                       reinterpret_cast<LPARAM>(Of(label)));
    return std::tuple(reinterpret_cast<HBRUSH>(brush), ::GetTextColor(canvas.Context()),
                      ::GetBkColor(canvas.Context()));
  };
  const auto expected = [](int ground, int text) {
    return std::tuple(::GetSysColorBrush(ground), ::GetSysColor(text), ::GetSysColor(ground));
  };
  EXPECT_EQ(ask(window->Handle()), expected(COLOR_BTNFACE, COLOR_BTNTEXT));
  EXPECT_EQ(ask(Of(panel)), expected(COLOR_WINDOW, COLOR_WINDOWTEXT));
}

TEST_F(Win32WindowGroundTest, LaterControlsLieAboveEarlierOnesAndHaveTheirNumbers) {
  button.Move({0, 0, 3000, 1500});
  other.Move({1500, 0, 3000, 1500});
  controls::CheckBox unseen;
  unseen.SetLook(controls::CheckLook::kNone);
  inventory = {{"button", &button}, {"unseen", &unseen}, {"other", &other}};
  Open();
  EXPECT_EQ(::ChildWindowFromPoint(window->Handle(), {150, 50}), Of(other));
  EXPECT_EQ(::ChildWindowFromPoint(window->Handle(), {50, 50}), Of(button));
  EXPECT_EQ(::GetDlgCtrlID(Of(other)), ::GetDlgCtrlID(Of(button)) + 2);
  EXPECT_EQ(window->Controls().Of(unseen), nullptr);
}

TEST_F(Win32WindowGroundTest, ControlThatTheProgramWantsToHaveTheKeyboardGetsIt) {
  inventory = {{"button", &button}, {"other", &other}};
  Open();
  other.SetFocus();
  EXPECT_EQ(::GetFocus(), Of(other));
}

TEST_F(Win32WindowGroundTest, TitleKeepsItsFontAtAnotherResolution) {
  label.SetLook(controls::LabelLook::kTitle);
  inventory = {{"label", &label}};
  Open();
  const auto font = [this] { return reinterpret_cast<HFONT>(::SendMessageW(Of(label), WM_GETFONT, 0, 0)); };
  EXPECT_EQ(font(), window->GetScale().Get(Scale::Font::kTitle));
  RECT place{0, 0, 900, 700};
  ::SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&place));
  EXPECT_EQ(font(), window->GetScale().Get(Scale::Font::kTitle));
}

TEST_F(Win32WindowGroundTest, PointerOfAWaitIsKeptOverTheWindowUntilItsEnd) {
  Open();
  BusyPointer pointer;
  HCURSOR const wait = ::LoadCursorW(nullptr, IDC_WAIT);
  const auto ask = [this] {
    ::SetCursor(nullptr);
    return ::SendMessageW(window->Handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(window->Handle()),
                          MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  };
  ::SetCursor(nullptr);
  pointer.Show();
  EXPECT_EQ(::GetCursor(), wait);
  EXPECT_EQ(ask(), TRUE);
  EXPECT_EQ(::GetCursor(), wait);
  pointer.Hide();
  EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
  ask();
  EXPECT_NE(::GetCursor(), wait);
}

}  // namespace
}  // namespace platform::win32
