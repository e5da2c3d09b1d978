#include "platform/win32/base/windows_api.h"

#include <array>

#include "platform/win32/ui/shown_text.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

class Win32ControlsTest : public Win32WindowTest {
 protected:
  controls::CommandButton button;
  controls::CheckBox box;
  controls::TextBox field;
  controls::ComboBox combo;
  controls::UpDownTextBox number;
  controls::ScrollBar slider;
};

TEST_F(Win32ControlsTest, ClickReachesTheButtonFromTheLoopOnly) {
  inventory = {{"button", &button}};
  Open();
  int clicks = 0;
  const auto count = button.Clicked.Subscribe([&] { ++clicks; });
  ::SendMessageW(Of(button), BM_CLICK, 0, 0);
  EXPECT_EQ(clicks, 0);
  EXPECT_TRUE(Until([&] { return clicks == 1; }));
}

TEST_F(Win32ControlsTest, CaptionIsShownWithItsAmpersands) {
  inventory = {{"button", &button}};
  Open();
  button.SetCaption(u"Größe & Köln");
  EXPECT_EQ(TextOf(Of(button)), u"Größe && Köln");
}

TEST_F(Win32ControlsTest, DisabledAndHiddenControlsFollow) {
  inventory = {{"button", &button}};
  Open();
  button.SetEnabled(false);
  EXPECT_FALSE(::IsWindowEnabled(Of(button)));
  button.SetVisible(false);
  EXPECT_FALSE(::IsWindowVisible(Of(button)));
}

TEST_F(Win32ControlsTest, CheckBoxFollowsBothWays) {
  inventory = {{"box", &box}};
  Open();
  box.SetValue(controls::CheckValue::kChecked);
  EXPECT_EQ(::SendMessageW(Of(box), BM_GETCHECK, 0, 0), BST_CHECKED);
  ::SendMessageW(Of(box), BM_CLICK, 0, 0);
  EXPECT_TRUE(Until([&] { return !box.Checked(); }));
}

TEST_F(Win32ControlsTest, TypingReachesTheFieldAndTheProgramsTextReplacesIt) {
  inventory = {{"field", &field}};
  Open();
  ::SendMessageW(Of(field), EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(L"Jäger"));
  EXPECT_EQ(field.GetText(), u"");
  EXPECT_TRUE(Until([&] { return field.GetText() == u"Jäger"; }));
  ::SendMessageW(Of(field), EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(L"x"));
  field.SetText(u"Köln");
  loop.ProcessPendingMessages();
  EXPECT_EQ(field.GetText(), u"Köln");
  EXPECT_EQ(TextOf(Of(field)), u"Köln");
}

TEST_F(Win32ControlsTest, ChoiceInTheComboBoxIsMadeOnce) {
  for (const char16_t* item : {u"Jazz", u"Österreich"}) combo.AddItem(item);
  inventory = {{"combo", &combo}};
  Open();
  int choices = 0;
  const auto count = combo.Clicked.Subscribe([&] { ++choices; });
  ::SendMessageW(Of(combo), CB_SETCURSEL, 1, 0);
  const auto report = [&](WORD code) {
    ::SendMessageW(window->Handle(), WM_COMMAND, MAKEWPARAM(0, code), reinterpret_cast<LPARAM>(Of(combo)));
  };
  report(CBN_SELENDOK);
  report(CBN_SELCHANGE);
  EXPECT_TRUE(Until([&] { return choices > 0; }));
  loop.ProcessPendingMessages();
  EXPECT_EQ(choices, 1);
  EXPECT_EQ(combo.GetText(), u"Österreich");
  combo.SetText(u"Eigenes");
  EXPECT_EQ(TextOf(Of(combo)), u"Eigenes");
}

TEST_F(Win32ControlsTest, ArrowsCountTheNumber) {
  number.SetText(u"7");
  inventory = {{"number", &number}};
  Open();
  ::SetFocus(Of(number));
  PressKey(Of(number), VK_UP);
  EXPECT_TRUE(Until([&] { return number.GetText() == u"8"; }));
}

TEST_F(Win32ControlsTest, SliderScrollsWhileItIsDraggedAndSetsItsValueAtTheEnd) {
  slider.SetRange(0, 100);
  inventory = {{"slider", &slider}};
  Open();
  std::vector<int> scrolled;
  const auto note = slider.Scrolled.Subscribe([&] { scrolled.push_back(slider.Value()); });
  const auto move = [&](int value, WORD code) {
    ::SendMessageW(Of(slider), TBM_SETPOS, TRUE, value);
    ::SendMessageW(window->Handle(), WM_HSCROLL, MAKEWPARAM(code, value),
                   reinterpret_cast<LPARAM>(Of(slider)));
  };
  move(30, TB_THUMBTRACK);
  EXPECT_TRUE(Until([&] { return slider.Value() == 30; }));
  EXPECT_EQ(scrolled, std::vector<int>{30});
  slider.SetValue(50);
  EXPECT_EQ(::SendMessageW(Of(slider), TBM_GETPOS, 0, 0), 30) << "the handle stays under the pointer";
  move(60, TB_ENDTRACK);
  EXPECT_TRUE(Until([&] { return slider.Value() == 60; }));
  EXPECT_EQ(scrolled.size(), 1U);
}

TEST_F(Win32ControlsTest, KeyOfAButtonWorksFromAnyControl) {
  inventory = {{"field", &field}, {"button", &button, nullptr, {.key = controls::kEnterKey}}};
  Open();
  int clicks = 0;
  const auto count = button.Clicked.Subscribe([&] { ++clicks; });
  ::SetFocus(Of(field));
  PressKey(Of(field), VK_RETURN);
  EXPECT_TRUE(Until([&] { return clicks == 1; }));
}

TEST_F(Win32ControlsTest, EnterInAFieldClicksTheFieldsOwnButton) {
  controls::CommandButton main;
  inventory = {{"field", &field, nullptr, {.enter_clicks = &button}},
               {"combo", &combo, nullptr, {.enter_clicks = &button}},
               {"number", &number},
               {"button", &button},
               {"main", &main, nullptr, {.key = controls::kEnterKey}}};
  Open();
  int own = 0;
  int others = 0;
  const auto count = button.Clicked.Subscribe([&] { ++own; });
  const auto count_others = main.Clicked.Subscribe([&] { ++others; });
  PressKey(Of(field), VK_RETURN);
  EXPECT_TRUE(Until([&] { return own == 1; }));
  PressKey(::GetWindow(Of(combo), GW_CHILD), VK_RETURN);
  EXPECT_TRUE(Until([&] { return own == 2; }));
  EXPECT_EQ(others, 0);
  button.SetVisible(false);
  PressKey(Of(field), VK_RETURN);
  PressKey(Of(number), VK_RETURN);
  EXPECT_TRUE(Until([&] { return others == 1; }));
  EXPECT_EQ(own, 2);
}

TEST_F(Win32ControlsTest, EnterOnACheckBoxIsTheFormsButtonAndSpaceTurnsIt) {
  inventory = {{"box", &box}, {"button", &button, nullptr, {.key = controls::kEnterKey}}};
  Open();
  int clicks = 0;
  const auto count = button.Clicked.Subscribe([&] { ++clicks; });
  PressKey(Of(box), VK_RETURN);
  EXPECT_TRUE(Until([&] { return clicks == 1; }));
  EXPECT_FALSE(box.Checked());
  PressKey(Of(box), VK_SPACE);
  EXPECT_TRUE(Until([&] { return box.Checked(); }));
  EXPECT_EQ(clicks, 1);
}

/// A field that does not know Ctrl+A, as those of some versions.
LRESULT CALLBACK WithoutControlA(HWND edit, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                                 DWORD_PTR /*reference*/) {
  const bool is_it = (message == WM_KEYDOWN && w == 'A') || (message == WM_CHAR && w == 1);
  return is_it ? 0 : ::DefSubclassProc(edit, message, w, l);
}

TEST_F(Win32ControlsTest, ControlASelectsAllInEachField) {
  field.SetText(u"Köln");
  combo.SetText(u"Jazz");
  inventory = {{"field", &field}, {"combo", &combo}};
  Open();
  for (HWND const one : {Of(field), ::GetWindow(Of(combo), GW_CHILD)}) {
    ::SetWindowSubclass(one, WithoutControlA, 7, 0);
    ::SetFocus(one);
    ::SendMessageW(one, EM_SETSEL, 1, 1);
    std::array<BYTE, 256> keys{};
    ::GetKeyboardState(keys.data());
    keys[VK_CONTROL] = 0x80;
    ::SetKeyboardState(keys.data());
    PressKey(one, 'A');
    EXPECT_TRUE(Until([&] { return ::SendMessageW(one, EM_GETSEL, 0, 0) == MAKELPARAM(0, 4); }));
    keys[VK_CONTROL] = 0;
    ::SetKeyboardState(keys.data());
  }
}

TEST_F(Win32ControlsTest, KeyForHelpClicksAButtonThatIsNotSeen) {
  button.SetLook(controls::ButtonLook::kNone);
  inventory = {{"field", &field}, {"button", &button, nullptr, {.key = controls::kHelpKey}}};
  Open();
  int clicks = 0;
  const auto count = button.Clicked.Subscribe([&] { ++clicks; });
  PressKey(Of(field), VK_F1);
  EXPECT_TRUE(Until([&] { return clicks == 1; }));
}

TEST_F(Win32ControlsTest, CaptionBehindAGlyphIsTheButtonsText) {
  button.SetCaption(u"Aufnahme");
  button.SetToolTip(u"Startet die Aufnahme");
  button.SetGlyph(controls::Glyph::kRecord, controls::GlyphPlace::kBeforeCaption);
  inventory = {{"button", &button}};
  Open();
  EXPECT_EQ(TextOf(Of(button)), u"Aufnahme");
  button.SetGlyph(controls::Glyph::kPaste);
  EXPECT_EQ(TextOf(Of(button)), u"Startet die Aufnahme") << "a symbol is spoken by its tooltip";
}

TEST_F(Win32ControlsTest, TabFollowsTheInventoryPastHiddenControls) {
  inventory = {{"field", &field}, {"box", &box}, {"button", &button}};
  box.SetVisible(false);
  Open();
  ::SetFocus(Of(field));
  PressKey(Of(field), VK_TAB);
  EXPECT_TRUE(Until([&] { return ::GetFocus() == Of(button); }));
}

TEST_F(Win32ControlsTest, TextsOfFieldsAndTheSlidersHandleStandInTheMiddleOfTheirRow) {
  inventory = {{"field", &field}, {"number", &number}, {"combo", &combo}, {"slider", &slider}};
  for (controls::Control* one :
       {static_cast<controls::Control*>(&field), static_cast<controls::Control*>(&number),
        static_cast<controls::Control*>(&combo), static_cast<controls::Control*>(&slider)})
    one->Move({0, 1500, 3000, 450});
  Open();
  const auto middle_of = [this](HWND control, RECT part) {
    ::MapWindowPoints(control, window->Handle(), reinterpret_cast<POINT*>(&part), 2);
    return static_cast<double>(part.top + part.bottom) / 2;
  };
  const auto inside = [](HWND control) {
    RECT all{};
    ::GetClientRect(control, &all);
    return all;
  };
  const auto expect_middle = [&] {
    const double row = window->GetScale().Pixels(1500) + window->GetScale().Pixels(450) / 2.0;
    HWND const in_combo = ::GetWindow(Of(combo), GW_CHILD);
    for (HWND const one : {Of(field), Of(number), in_combo}) {
      EXPECT_NEAR(middle_of(one, inside(one)), row, 2);
      EXPECT_NEAR(inside(one).bottom, window->GetScale().FontHeight() + 2, 1) << "as high as its text";
    }
    RECT handle{};
    ::SendMessageW(Of(slider), TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&handle));
    EXPECT_NEAR(middle_of(Of(slider), handle), row, 2);
  };
  expect_middle();
  RECT larger{0, 0, 900, 700};
  ::SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&larger));
  expect_middle();
}

}  // namespace
}  // namespace platform::win32
