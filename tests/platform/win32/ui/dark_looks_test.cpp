// What the controls look like while the program is dark: pictures of them are taken from the screen.

#include "tests/platform/win32/ui/dark_looks.h"

#include "platform/win32/base/windows_api.h"

#include <uxtheme.h>

namespace platform::win32 {
namespace {

TEST_F(Win32DarkLooksTest, CaptionsAreLightOnTheWindowsGround) {
  controls::Label label;
  label.SetCaption(u"Lautstärke");
  controls::Label title;
  title.SetLook(controls::LabelLook::kTitle);
  title.SetCaption(u"Ein Titel");
  controls::Label status;
  status.SetLook(controls::LabelLook::kStatusLine);
  status.SetCaption(u"Wird abgespielt");
  controls::Frame frame;
  frame.SetCaption(u"Gespeicherte Radiostationen");
  Show({{"label", &label}, {"title", &title}, {"status", &status}, {"frame", &frame}});
  for (const controls::Control* one :
       {static_cast<controls::Control*>(&label), static_cast<controls::Control*>(&title),
        static_cast<controls::Control*>(&status), static_cast<controls::Control*>(&frame)}) {
    const Picture picture(Of(*one));
    ExpectLightOnDark(picture, std::to_string(one->GetPlace().top));
    EXPECT_EQ(picture.At(picture.Width() - 4, picture.Height() / 2), ShownColor(COLOR_BTNFACE));
  }
}

TEST_F(Win32DarkLooksTest, FrameOfAPanelHasTheFieldsGround) {
  controls::Frame panel;
  panel.SetLook(controls::FrameLook::kPanel);
  controls::Image image;
  Show({{"panel", &panel}, {"image", &image}});
  const Picture picture(Of(panel));
  EXPECT_EQ(picture.At(0, 5), ShownColor(COLOR_BTNSHADOW));
  EXPECT_EQ(picture.At(5, 5), ShownColor(COLOR_WINDOW));
  EXPECT_EQ(Picture(Of(image)).At(5, 5), ShownColor(COLOR_WINDOW));
}

TEST_F(Win32DarkLooksTest, ButtonHasAFaceForEachState) {
  controls::CommandButton button;
  button.SetCaption(u"Stop");
  button.SetGlyph(controls::Glyph::kStop, controls::GlyphPlace::kBeforeCaption);
  controls::CommandButton main;
  main.SetCaption(u"Start");
  main.SetRole(controls::ButtonRole::kMain);
  Show({{"button", &button}, {"main", &main}});
  const auto face = [&] { return Picture(Of(button)).At(4, 4); };
  ExpectLightOnDark(Picture(Of(button)), "usual");
  EXPECT_EQ(face(), FaceOf(PartState::kUsual).ground);
  EXPECT_EQ(Picture(Of(button)).At(0, 9), FaceOf(PartState::kUsual).frame);
  EXPECT_EQ(Picture(Of(main)).At(0, 9), ShownColor(COLOR_HOTLIGHT));
  ::SendMessageW(Of(button), BM_SETSTATE, TRUE, 0);
  EXPECT_EQ(face(), FaceOf(PartState::kPressed).ground);
  ::SendMessageW(Of(button), BM_SETSTATE, FALSE, 0);
  button.SetEnabled(false);
  EXPECT_EQ(face(), FaceOf(PartState::kDisabled).ground);
  EXPECT_EQ(Brightest(Picture(Of(button))), ShownColor(COLOR_GRAYTEXT));
}

TEST_F(Win32DarkLooksTest, ButtonThatDeletesIsReadableWhileItIsPointedAt) {
  controls::CommandButton button;
  button.SetCaption(u"Eintrag löschen");
  button.SetRole(controls::ButtonRole::kDeleting);
  Show({{"button", &button}});
  POINT place{20, 10};
  ::ClientToScreen(Of(button), &place);
  ::SetCursorPos(place.x, place.y);
  ::SendMessageW(Of(button), WM_MOUSEMOVE, 0, MAKELPARAM(20, 10));
  ASSERT_TRUE(Until([&] { return (::SendMessageW(Of(button), BM_GETSTATE, 0, 0) & BST_HOT) != 0; }));
  const Picture picture(Of(button));
  const Face face = FaceOf(PartState::kPointedAt);
  EXPECT_EQ(picture.At(4, 4), face.ground);
  const Color warning = WarningColor(face.ground, face.text, Contrast::kUsual);
  EXPECT_GT(picture.Count([warning](COLORREF one) { return one == warning; }), 10);
  RestPointer();
}

TEST_F(Win32DarkLooksTest, FlatButtonIsOnThePanelsGround) {
  controls::CommandButton button;
  button.SetLook(controls::ButtonLook::kFlat);
  button.SetGlyph(controls::Glyph::kStop);
  Show({{"button", &button}});
  const Picture picture(Of(button));
  EXPECT_EQ(picture.At(3, 3), ShownColor(COLOR_WINDOW));
  EXPECT_GT(picture.Count(Is(COLOR_WINDOWTEXT)), 40);
}

TEST_F(Win32DarkLooksTest, CheckBoxShowsItsTickItsFocusAndThatItIsDisabled) {
  controls::CheckBox box;
  box.SetCaption(u"Mute & mehr");
  Show({{"box", &box}});
  const Picture empty(Of(box));
  const int height = empty.Height();
  const RECT square{1, (height - 11) / 2, 12, (height + 11) / 2};
  ExpectLightOnDark(empty, "empty");
  EXPECT_EQ(empty.Count(square, IsLight), 0);
  EXPECT_EQ(empty.At(0, height / 2), ShownColor(COLOR_WINDOWFRAME));
  EXPECT_EQ(empty.At(empty.Width() - 3, 3), ShownColor(COLOR_BTNFACE));
  box.SetValue(controls::CheckValue::kChecked);
  EXPECT_GT(Picture(Of(box)).Count(square, IsLight), 12);
  ::SendMessageW(window->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
  ::SetFocus(Of(box));
  const auto differs = [&](const Picture& one, const Picture& other) {
    int count = 0;
    for (int y = 0; y < height; ++y) {
      for (int x = 14; x < one.Width(); ++x) count += one.At(x, y) == other.At(x, y) ? 0 : 1;
    }
    return count;
  };
  EXPECT_GT(differs(Picture(Of(box)), empty), 30) << "a frame of dots";
  ::SetFocus(nullptr);
  EXPECT_EQ(differs(Picture(Of(box)), empty), 0);
  box.SetEnabled(false);
  EXPECT_EQ(Brightest(Picture(Of(box))), ShownColor(COLOR_GRAYTEXT));
}

TEST_F(Win32DarkLooksTest, FieldIsLightOnDarkAlsoWhenItIsDisabled) {
  controls::TextBox field;
  controls::UpDownTextBox number;
  field.SetText(u"http://radio.example/");
  number.SetText(u"12");
  Show({{"field", &field}, {"number", &number}});
  for (controls::Control* one :
       {static_cast<controls::Control*>(&field), static_cast<controls::Control*>(&number)}) {
    const Picture usual(Of(*one));
    ExpectLightOnDark(usual, "usual");
    EXPECT_EQ(usual.At(0, 9), ShownColor(COLOR_WINDOWFRAME));
    for (const int y : {1, 3, usual.Height() / 2, usual.Height() - 4, usual.Height() - 2})
      EXPECT_EQ(usual.At(usual.Width() - 4, y), ShownColor(COLOR_WINDOW)) << y;
    EXPECT_EQ(usual.At(1, 9), ShownColor(COLOR_WINDOW));
    ::SetFocus(Of(*one));
    EXPECT_EQ(Picture(Of(*one), Picture::AsItIs::kYes).At(0, 9), ShownColor(COLOR_HOTLIGHT));
    ::SetFocus(nullptr);
    EXPECT_EQ(Picture(Of(*one), Picture::AsItIs::kYes).At(0, 9), ShownColor(COLOR_WINDOWFRAME));
    one->SetEnabled(false);
    const Picture disabled(Of(*one));
    EXPECT_EQ(Brightest(disabled), ShownColor(COLOR_GRAYTEXT));
    EXPECT_EQ(disabled.At(disabled.Width() - 4, 9), ShownColor(COLOR_BTNFACE));
    EXPECT_GT(disabled.Count(Is(COLOR_GRAYTEXT)), 8) << "the text";
  }
}

TEST_F(Win32DarkLooksTest, ArrowsBehindAFieldShowWhichIsPressed) {
  controls::UpDownTextBox number;
  Show({{"number", &number}});
  HWND const arrows = ::FindWindowExW(window->Handle(), nullptr, UPDOWN_CLASSW, nullptr);
  const auto upper = [&] { return Picture(arrows).At(2, 2); };
  ExpectLightOnDark(Picture(arrows), "arrows");
  EXPECT_EQ(upper(), FaceOf(PartState::kUsual).ground);
  POINT place{5, 3};
  ::ClientToScreen(arrows, &place);
  ::SetCursorPos(place.x, place.y);
  ::SendMessageW(arrows, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 3));
  EXPECT_EQ(upper(), FaceOf(PartState::kPressed).ground);
  EXPECT_EQ(Picture(arrows).At(2, Picture(arrows).Height() - 3), FaceOf(PartState::kUsual).ground);
  ::SendMessageW(arrows, WM_LBUTTONUP, 0, MAKELPARAM(5, 3));
  number.SetEnabled(false);
  EXPECT_EQ(upper(), FaceOf(PartState::kDisabled).ground);
  RestPointer();
}

TEST_F(Win32DarkLooksTest, ComboBoxAndItsListAreDark) {
  controls::ComboBox combo;
  for (const char16_t* genre : {u"Jazz", u"Rock", u"Schlager"}) combo.AddItem(genre);
  combo.SetListIndex(1);
  Show({{"combo", &combo}});
  ::SendMessageW(Of(combo), CB_SETEDITSEL, 0, 0);
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  ::GetComboBoxInfo(Of(combo), &parts);
  const Picture closed(Of(combo));
  ExpectLightOnDark(closed, "closed");
  EXPECT_EQ(closed.At(0, 9), FaceOf(PartState::kUsual).frame);
  const RECT button = parts.rcButton;
  EXPECT_EQ(closed.At(button.left + 3, 4), FaceOf(PartState::kUsual).ground);
  EXPECT_GT(closed.Count(button, IsLight), 8) << "an arrow";
  ::SetFocus(Of(combo));
  ::SendMessageW(Of(combo), CB_SHOWDROPDOWN, TRUE, 0);
  ::UpdateWindow(Of(combo));
  const Picture opened(Of(combo), Picture::AsItIs::kYes);
  EXPECT_EQ(opened.At(button.left + 3, 4), FaceOf(PartState::kPressed).ground);
  EXPECT_EQ(opened.At(0, 9), ShownColor(COLOR_HOTLIGHT));
  const Picture list(parts.hwndList);
  EXPECT_GT(list.Count(Is(COLOR_WINDOW)), list.Width() * list.Height() / 3);
  EXPECT_GT(list.Count(Is(COLOR_WINDOWTEXT)), 20) << "the entries that are not selected";
  EXPECT_LT(list.Count([](COLORREF one) { return one == RGB(0, 0, 0); }), list.Width() * 5);
  ::SendMessageW(Of(combo), CB_SHOWDROPDOWN, FALSE, 0);
  ::SetFocus(nullptr);
  ::UpdateWindow(Of(combo));
  const Picture left(Of(combo), Picture::AsItIs::kYes);
  EXPECT_EQ(left.At(button.left + 3, 4), FaceOf(PartState::kUsual).ground);
  EXPECT_EQ(left.At(0, 9), FaceOf(PartState::kUsual).frame);
  EXPECT_GT(left.Count(parts.rcItem, IsLight), 8) << "the field's text is not covered";
  combo.SetEnabled(false);
  EXPECT_EQ(Brightest(Picture(Of(combo))), ShownColor(COLOR_GRAYTEXT));
}

TEST_F(Win32DarkLooksTest, SliderHasItsHandleInAColourOfItsOwn) {
  controls::ScrollBar slider;
  Show({{"slider", &slider}});
  const auto picture = [&] { return Picture(Of(slider)); };
  EXPECT_EQ(picture().At(2, 2), ShownColor(COLOR_BTNFACE));
  RECT handle{};
  ::SendMessageW(Of(slider), TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&handle));
  EXPECT_EQ(picture().Count(handle, Is(COLOR_HOTLIGHT)),
            (handle.right - handle.left) * (handle.bottom - handle.top));
  EXPECT_GT(picture().Count(Is(COLOR_WINDOWFRAME)), 100) << "the channel";
  slider.SetEnabled(false);
  EXPECT_EQ(picture().Count(handle, Is(COLOR_HOTLIGHT)), 0);
  EXPECT_GT(picture().Count(handle, Is(COLOR_GRAYTEXT)), 20);
  slider.SetEnabled(true);
  mode.Choose(Brightness::kLight, window->Handle());
  EXPECT_EQ(picture().At(2, 2), ::GetSysColor(COLOR_BTNFACE));
}

TEST_F(Win32DarkLooksTest, PeakBarIsDarkAboveThePeak) {
  controls::ProgressBar bar;
  bar.Move({0, 0, 300, 3000});
  Show({{"bar", &bar}});
  bar.SetValue(bar.Maximum() / 2);
  const Picture picture(Of(bar));
  EXPECT_EQ(picture.At(5, 20), ShownColor(COLOR_WINDOW));
  EXPECT_EQ(picture.At(5, picture.Height() - 5), ColorOf(Loudness::kQuiet, Contrast::kUsual));
}

HWND OwnTips(HWND owner) {
  HWND tips = nullptr;
  while ((tips = ::FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
    if (::GetWindow(tips, GW_OWNER) == owner) return tips;
  }
  return nullptr;
}

TEST_F(Win32DarkLooksTest, PictureIsTheSameHoweverTheBrightnessWasReached) {
  controls::TextBox field;
  controls::UpDownTextBox number;
  controls::ComboBox combo;
  controls::CheckBox box;
  controls::ScrollBar slider;
  controls::CommandButton button;
  controls::TextBox disabled;
  controls::Frame frame;
  controls::ListView list;
  field.SetText(u"http://radio.example/");
  combo.AddItem(u"Jazz");
  combo.SetListIndex(0);
  box.SetCaption(u"Mute");
  button.SetCaption(u"Stop");
  disabled.SetText(u"gesperrt");
  disabled.SetEnabled(false);
  frame.SetCaption(u"Sender");
  list.AddColumn({u"Station", 100});
  for (int row = 0; row < 20; ++row) list.AddRow({.cells = {u"Köln"}});
  list.Move({4000, 0, 4500, 4500});
  Show({{"field", &field},
        {"number", &number},
        {"combo", &combo},
        {"box", &box},
        {"slider", &slider},
        {"button", &button},
        {"disabled", &disabled},
        {"frame", &frame},
        {"list", &list}});
  HWND const top = window->Handle();
  const auto different = [](const Picture& one, const Picture& other) {
    int count = 0;
    for (int y = 0; y < one.Height(); ++y) {
      for (int x = 0; x < one.Width(); ++x) count += one.At(x, y) == other.At(x, y) ? 0 : 1;
    }
    return count;
  };
  const Picture dark(top);
  mode.Choose(Brightness::kLight, top);
  const Picture light(top);
  EXPECT_GT(different(dark, light), dark.Width() * dark.Height() / 2);
  mode.Choose(Brightness::kDark, top);
  EXPECT_EQ(different(Picture(top), dark), 0);
  mode.Choose(Brightness::kLight, top);
  EXPECT_EQ(different(Picture(top), light), 0);
  window.reset();
  Open();
  ::SetFocus(nullptr);
  EXPECT_EQ(different(Picture(window->Handle()), light), 0) << "as if it had never been dark";
}

TEST_F(Win32DarkLooksTest, TooltipsHaveColoursThatNoThemeReplaces) {
  Show({});
  HWND const tips = OwnTips(window->Handle());
  const auto ground = [tips] { return static_cast<Color>(::SendMessageW(tips, TTM_GETTIPBKCOLOR, 0, 0)); };
  const auto text = [tips] { return static_cast<Color>(::SendMessageW(tips, TTM_GETTIPTEXTCOLOR, 0, 0)); };
  EXPECT_EQ(ground(), ShownColor(COLOR_INFOBK));
  EXPECT_EQ(text(), ShownColor(COLOR_INFOTEXT));
  EXPECT_EQ(::OpenThemeData(tips, L"TOOLTIP"), nullptr);
  mode.Choose(Brightness::kLight, window->Handle());
  EXPECT_EQ(ground(), ::GetSysColor(COLOR_INFOBK));
  EXPECT_EQ(text(), ::GetSysColor(COLOR_INFOTEXT));
}

TEST_F(Win32DarkLooksTest, TooltipThatWasThereBeforeHasTheColoursThatAreShownNow) {
  controls::CommandButton button;
  button.SetToolTip(u"Ein Hinweis");
  mode.wanted = Brightness::kLight;
  FollowWantedBrightness();
  Show({{"button", &button}});
  HWND const tips = OwnTips(window->Handle());
  const auto expect_shown = [tips] {
    EXPECT_EQ(static_cast<Color>(::SendMessageW(tips, TTM_GETTIPBKCOLOR, 0, 0)), ShownColor(COLOR_INFOBK));
    EXPECT_EQ(static_cast<Color>(::SendMessageW(tips, TTM_GETTIPTEXTCOLOR, 0, 0)),
              ShownColor(COLOR_INFOTEXT));
  };
  for (const Brightness brightness : {Brightness::kDark, Brightness::kLight}) {
    mode.Choose(brightness, window->Handle());
    expect_shown();
    // Other colours of the same brightness, as from one contrast theme to another.
    ::SendMessageW(tips, TTM_SETTIPBKCOLOR, RGB(1, 2, 3), 0);
    ::SendMessageW(tips, TTM_SETTIPTEXTCOLOR, RGB(4, 5, 6), 0);
    ::SendMessageW(window->Handle(), WM_SYSCOLORCHANGE, 0, 0);
    expect_shown();
  }
}

TEST_F(Win32DarkLooksTest, ControlsHaveTheSystemsThemeAgainWhenItIsLight) {
  controls::TextBox field;
  Show({{"field", &field}});
  EXPECT_EQ(::OpenThemeData(Of(field), L"EDIT"), nullptr) << "the theme's texts and grounds are light";
  mode.Choose(Brightness::kLight, window->Handle());
  HTHEME const theme = ::OpenThemeData(Of(field), L"EDIT");
  EXPECT_NE(theme, nullptr);
  if (theme != nullptr) ::CloseThemeData(theme);
}

}  // namespace
}  // namespace platform::win32
