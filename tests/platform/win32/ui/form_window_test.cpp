// The program's window itself: its caption and place, where the keyboard is, and what it reports to its form.
#include "platform/win32/base/windows_api.h"

#include <array>

#include "platform/win32/ui/shown_text.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

class Win32FormWindowTest : public Win32WindowTest {
 protected:
  static RECT PlaceOf(HWND one) {
    RECT place{};
    ::GetWindowRect(one, &place);
    return place;
  }
  void Put(int left, int top) const {
    ::SetWindowPos(window->Handle(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  }
  POINT SmallestSize() const {
    MINMAXINFO info{};
    ::SendMessageW(window->Handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    return info.ptMinTrackSize;
  }

  controls::TextBox field;
  controls::CommandButton button;
};

TEST_F(Win32FormWindowTest, CaptionFollowsTheForm) {
  Open();
  form.SetCaption(u"Radio\nKöln");
  EXPECT_EQ(TextOf(window->Handle()), u"Radio Köln");
}

TEST_F(Win32FormWindowTest, FirstControlHasTheKeyboardWhenItAppears) {
  inventory = {{"field", &field}, {"button", &button}};
  Open();
  EXPECT_EQ(::GetFocus(), Of(field));
}

TEST_F(Win32FormWindowTest, KeyboardReturnsToTheControlThatHadItWhenTheWindowWasLeft) {
  inventory = {{"field", &field}, {"button", &button}};
  Open();
  ::SetFocus(Of(button));
  ::SendMessageW(window->Handle(), WM_ACTIVATE, WA_INACTIVE, 0);
  ::SetFocus(Of(field));
  ::SetFocus(window->Handle());
  EXPECT_EQ(::GetFocus(), Of(button));
}

TEST_F(Win32FormWindowTest, FormThatWantsTheKeyboardComesToTheFront) {
  Open();
  ::ShowWindow(window->Handle(), SW_MINIMIZE);
  form.SetFocus();
  EXPECT_FALSE(::IsIconic(window->Handle()) != 0);
  ::ShowWindow(window->Handle(), SW_HIDE);
  EXPECT_FALSE(window->BringToFront()) << "a hidden one does not";
}

TEST_F(Win32FormWindowTest, FormKnowsWhetherItIsInSight) {
  Open();
  EXPECT_TRUE(form.InSight());
  const std::array<std::pair<int, bool>, 4> steps = {
      {{SW_MINIMIZE, false}, {SW_RESTORE, true}, {SW_HIDE, false}, {SW_SHOW, true}}};
  for (const auto& [step, in_sight] : steps) {
    ::ShowWindow(window->Handle(), step);
    EXPECT_EQ(form.InSight(), in_sight) << step;
  }
}

TEST_F(Win32FormWindowTest, AppearsWhereItIsUnlessThatIsOffTheScreen) {
  Open();
  ::ShowWindow(window->Handle(), SW_HIDE);
  Put(70, 50);
  window->Show();
  EXPECT_EQ(PlaceOf(window->Handle()).left, 70);
  EXPECT_EQ(PlaceOf(window->Handle()).top, 50);
  Put(5000, 5000);
  window->Show();
  EXPECT_LE(PlaceOf(window->Handle()).right, ::GetSystemMetrics(SM_CXSCREEN));
  EXPECT_LE(PlaceOf(window->Handle()).bottom, ::GetSystemMetrics(SM_CYSCREEN));
}

TEST_F(Win32FormWindowTest, DialogAppearsInTheMiddleOfItsOwner) {
  Open();
  Put(420, 210);
  controls::Form inner;
  inner.Move({0, 0, 3000, 1500});
  FormWindow dialog(inner, {}, window->Handle(), icons, loop);
  dialog.Show();
  const RECT around = PlaceOf(window->Handle());
  const RECT place = PlaceOf(dialog.Handle());
  EXPECT_NEAR(place.left + place.right, around.left + around.right, 2);
  EXPECT_NEAR(place.top + place.bottom, around.top + around.bottom, 2);
}

TEST_F(Win32FormWindowTest, UserCannotMakeItSmallerThanTheFormAllows) {
  Open();
  form.SetSmallestSize(6000, 4500);
  EXPECT_GE(SmallestSize().x, window->GetScale().Pixels(6000));
  EXPECT_GE(SmallestSize().y, window->GetScale().Pixels(4500));
  form.SetSmallestSize(6000, 90'000);
  form.SetSmallestWidthIfLower(7500);
  EXPECT_GE(SmallestSize().x, window->GetScale().Pixels(7500)) << "the screen is lower";
  EXPECT_LE(SmallestSize().y, ::GetSystemMetrics(SM_CYSCREEN));
}

/// The font of the system's messages, which the user chooses.
class UsersFont {
 public:
  UsersFont() {
    usual_.cbSize = sizeof usual_;
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof usual_, &usual_, 0);
  }
  ~UsersFont() { Set(usual_); }
  UsersFont(const UsersFont&) = delete;
  UsersFont& operator=(const UsersFont&) = delete;
  void Enlarge() const {
    NONCLIENTMETRICSW larger = usual_;
    larger.lfMessageFont.lfHeight *= 2;
    Set(larger);
  }

 private:
  static void Set(NONCLIENTMETRICSW metrics) {
    ::SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  }
  NONCLIENTMETRICSW usual_{};
};

TEST_F(Win32FormWindowTest, UsersFontIsFollowedButNotTheSizeOfAMinimisedWindow) {
  Open();
  const UsersFont font;
  const int height = window->GetScale().FontHeight();
  const int width = form.GetPlace().width;
  ::ShowWindow(window->Handle(), SW_MINIMIZE);
  font.Enlarge();
  ::SendMessageW(window->Handle(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
  EXPECT_GT(window->GetScale().FontHeight(), height * 3 / 2);
  EXPECT_EQ(form.GetPlace().width, width);
}

TEST_F(Win32FormWindowTest, WithALargerFontTheSameWindowHasLessRoom) {
  Open();
  const UsersFont font;
  const int width = form.GetPlace().width;
  font.Enlarge();
  ::SendMessageW(window->Handle(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
  EXPECT_LT(form.GetPlace().width, width * 3 / 4);
}

int color_changes = 0;
LRESULT CALLBACK CountColorChanges(HWND control, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                                   DWORD_PTR /*unused*/) {
  if (message == WM_SYSCOLORCHANGE) ++color_changes;
  return ::DefSubclassProc(control, message, w, l);
}

TEST_F(Win32FormWindowTest, ControlsLearnOfOtherColoursAndAllIsPaintedAnew) {
  inventory = {{"button", &button}};
  Open();
  ::SetWindowSubclass(Of(button), CountColorChanges, 77, 0);
  color_changes = 0;
  ::ValidateRect(window->Handle(), nullptr);
  ::SendMessageW(window->Handle(), WM_SYSCOLORCHANGE, 0, 0);
  EXPECT_EQ(color_changes, 1);
  RECT all{};
  ::GetClientRect(window->Handle(), &all);
  RECT dirty{};
  ::GetUpdateRect(window->Handle(), &dirty, FALSE);
  EXPECT_TRUE(::EqualRect(&dirty, &all) != 0);
  ::RemoveWindowSubclass(Of(button), CountColorChanges, 77);
}

}  // namespace
}  // namespace platform::win32
