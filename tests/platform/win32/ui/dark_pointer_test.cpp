// What changes in dark controls while the pointer is on them, and while what is open becomes dark.

#include "platform/win32/base/windows_api.h"

#include "tests/platform/win32/ui/dark_looks.h"

namespace platform::win32 {
namespace {

class Win32DarkPointerTest : public Win32DarkLooksTest {
 protected:
  static LPARAM At(const POINT& place) {
    return MAKELPARAM(static_cast<WORD>(place.x), static_cast<WORD>(place.y));
  }
  static void PointAt(HWND control, const POINT& place) {
    ::SendMessageW(control, WM_MOUSEMOVE, 0, At(place));
  }
  static void Leave(HWND control) { ::SendMessageW(control, WM_MOUSELEAVE, 0, 0); }
  /// Painted by itself or not at all.
  static Color Shown(HWND control, const POINT& place) {
    ::UpdateWindow(control);
    return Picture(control, Picture::AsItIs::kYes).At(static_cast<int>(place.x), static_cast<int>(place.y));
  }
  COMBOBOXINFO PartsIn(const controls::ComboBox& combo) const {
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof parts;
    ::GetComboBoxInfo(Of(combo), &parts);
    return parts;
  }
  [[nodiscard]] POINT MiddleOfHandle() const {
    RECT handle{};
    ::SendMessageW(Of(slider), TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&handle));
    return {(handle.left + handle.right) / 2, (handle.top + handle.bottom) / 2};
  }

  controls::ScrollBar slider;
};

TEST_F(Win32DarkPointerTest, SlidersHandleShowsThatItIsPointedAt) {
  Show({{"slider", &slider}});
  const POINT middle = MiddleOfHandle();
  EXPECT_EQ(Shown(Of(slider), middle), HandleColor(PartState::kUsual));
  PointAt(Of(slider), {middle.x + 60, middle.y});
  EXPECT_EQ(Shown(Of(slider), middle), HandleColor(PartState::kUsual)) << "beside it";
  PointAt(Of(slider), middle);
  EXPECT_EQ(Shown(Of(slider), middle), HandleColor(PartState::kPointedAt));
  Leave(Of(slider));
  EXPECT_EQ(Shown(Of(slider), middle), HandleColor(PartState::kUsual));
}

TEST_F(Win32DarkPointerTest, DraggedHandleIsPressedWhereverThePointerIs) {
  Show({{"slider", &slider}});
  const POINT middle = MiddleOfHandle();
  PointAt(Of(slider), middle);
  ::SendMessageW(Of(slider), WM_LBUTTONDOWN, MK_LBUTTON, At(middle));
  EXPECT_EQ(Shown(Of(slider), middle), HandleColor(PartState::kPressed));
  const POINT below{middle.x, middle.y + 200};
  ::SendMessageW(Of(slider), WM_MOUSEMOVE, MK_LBUTTON, At(below));
  ASSERT_EQ(::GetCapture(), Of(slider));
  EXPECT_EQ(Picture(Of(slider)).At(static_cast<int>(middle.x), static_cast<int>(middle.y)),
            HandleColor(PartState::kPressed));
  ::SendMessageW(Of(slider), WM_LBUTTONUP, 0, At(below));
  EXPECT_EQ(Shown(Of(slider), middle), HandleColor(PartState::kUsual));
}

TEST_F(Win32DarkPointerTest, StatesOfAHandleCanBeToldApartAndFromTheirGround) {
  const auto between = [](Color one, Color other) {
    return front::ContrastOf(FromSystem(one), FromSystem(other));
  };
  EXPECT_GT(between(HandleColor(PartState::kPointedAt), HandleColor(PartState::kUsual)), 1.15);
  EXPECT_GT(between(HandleColor(PartState::kPressed), HandleColor(PartState::kPointedAt)), 1.15);
  for (const PartState state :
       {PartState::kUsual, PartState::kPointedAt, PartState::kPressed, PartState::kDisabled})
    EXPECT_GE(between(HandleColor(state), ShownColor(COLOR_BTNFACE)), front::kContrastOfParts);
}

TEST_F(Win32DarkPointerTest, SliderIsPaintedInTheStepsThatTheSystemDocuments) {
  Show({{"slider", &slider}});
  const auto answer = [this](DWORD stage, DWORD_PTR item, HDC context) {
    NMCUSTOMDRAW step{};
    step.hdr = {Of(slider), 0, static_cast<UINT>(NM_CUSTOMDRAW)};
    step.dwDrawStage = stage;
    step.dwItemSpec = item;
    step.hdc = context;
    return ::SendMessageW(window->Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&step));
  };
  Canvas canvas(200, 30);
  const auto is_untouched = [&] { return canvas.Count(Is(COLOR_BTNFACE)) == 0; };
  EXPECT_EQ(answer(CDDS_PREPAINT, 0, canvas.Context()), CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT);
  for (const DWORD_PTR part : {TBCD_TICS, TBCD_CHANNEL, TBCD_THUMB})
    EXPECT_EQ(answer(CDDS_ITEMPREPAINT, part, canvas.Context()), CDRF_SKIPDEFAULT) << part;
  EXPECT_TRUE(is_untouched());
  answer(CDDS_POSTPAINT, 0, canvas.Context());
  EXPECT_FALSE(is_untouched());
  mode.Choose(Brightness::kLight, window->Handle());
  EXPECT_EQ(answer(CDDS_PREPAINT, 0, canvas.Context()), CDRF_DODEFAULT);
}

TEST_F(Win32DarkPointerTest, ArrowShowsThatItIsPointedAt) {
  controls::UpDownTextBox number;
  Show({{"number", &number}});
  HWND const arrows = ::FindWindowExW(window->Handle(), nullptr, UPDOWN_CLASSW, nullptr);
  const LONG height = Picture(arrows).Height();
  const auto shows = [&](PartState upper, PartState lower) {
    return Shown(arrows, {2, 2}) == FaceOf(upper).ground &&
           Shown(arrows, {2, height - 3}) == FaceOf(lower).ground;
  };
  PointAt(arrows, {5, 3});
  EXPECT_TRUE(shows(PartState::kPointedAt, PartState::kUsual));
  PointAt(arrows, {5, height - 3});
  EXPECT_TRUE(shows(PartState::kUsual, PartState::kPointedAt));
  Leave(arrows);
  EXPECT_TRUE(shows(PartState::kUsual, PartState::kUsual));
}

TEST_F(Win32DarkPointerTest, ButtonOfAComboBoxShowsThatItIsPointedAt) {
  controls::ComboBox combo;
  Show({{"combo", &combo}});
  const RECT button = PartsIn(combo).rcButton;
  const POINT place{button.left + 3, 4};
  EXPECT_EQ(Shown(Of(combo), place), FaceOf(PartState::kUsual).ground);
  PointAt(Of(combo), {button.left + 6, 8});
  EXPECT_EQ(Shown(Of(combo), place), FaceOf(PartState::kPointedAt).ground);
  Leave(Of(combo));
  EXPECT_EQ(Shown(Of(combo), place), FaceOf(PartState::kUsual).ground);
}

TEST_F(Win32DarkPointerTest, ListThatWasOpenBeforeIsDarkAndLightAgain) {
  controls::ComboBox combo;
  for (const char16_t* genre : {u"Jazz", u"Rock", u"Schlager"}) combo.AddItem(genre);
  mode.wanted = Brightness::kLight;
  FollowWantedBrightness();
  Show({{"combo", &combo}});
  ::SetFocus(Of(combo));
  // It may close when the colours change.
  const auto ground_shown = [&] {
    ::SendMessageW(Of(combo), CB_SHOWDROPDOWN, TRUE, 0);
    HWND const list = PartsIn(combo).hwndList;
    ::UpdateWindow(list);
    return Picture(list, Picture::AsItIs::kYes).Count(Is(COLOR_WINDOW));
  };
  const int in_the_light = ground_shown();
  EXPECT_GT(in_the_light, 400);
  for (const Brightness brightness : {Brightness::kDark, Brightness::kLight}) {
    mode.Choose(brightness, window->Handle());
    EXPECT_NEAR(ground_shown(), in_the_light, in_the_light / 10) << static_cast<int>(brightness);
  }
  ::SendMessageW(Of(combo), CB_SHOWDROPDOWN, FALSE, 0);
}

}  // namespace
}  // namespace platform::win32
