// Controls that show or set a number or a picture, buttons and check boxes: what they show and what reaches
// them.

#include "platform/win32/ui/value_bindings.h"

#include "platform/win32/base/windows_api.h"

#include <vector>

#include "platform/win32/ui/button_face.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/shown_text.h"
#include "tests/platform/win32/ui/canvas.h"
#include "tests/platform/win32/ui/picture_bytes.h"
#include "tests/platform/win32/ui/rig.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

class Win32ValueBindingsTest : public Win32WindowTest {
 protected:
  void HandleAll() {
    bool done = false;
    const Lifetime lifetime;
    loop.HandOver(lifetime, [&done] { done = true; });
    ASSERT_TRUE(Until([&done] { return done; }));
  }
  void PaintAll() {
    loop.ProcessPendingMessages();
    ::RedrawWindow(window->Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  }
  static bool IsDirty(HWND one) { return ::GetUpdateRect(one, nullptr, FALSE) != 0; }
};

class Win32ProgressBarTest : public Win32ValueBindingsTest {
 protected:
  void SetUp() override {
    bar.Move({300, 300, 300, 1530});
    inventory = {{"bar", &bar}};
    Open();
    ::GetClientRect(Of(bar), &all);
    ASSERT_EQ(all.bottom, 102) << "the test counts lines at 100 %";
  }
  /// The colours of the bar's lines, from its lower edge up.
  std::vector<COLORREF> Lines() {
    PaintAll();
    std::vector<COLORREF> colors;
    HDC const context = ::GetDC(Of(bar));
    for (int line = static_cast<int>(all.bottom) - 1; line >= 0; --line)
      colors.push_back(::GetPixel(context, static_cast<int>(all.right) / 2, line));
    edge = ::GetPixel(context, 0, static_cast<int>(all.bottom) / 2);
    ::ReleaseDC(Of(bar), context);
    return colors;
  }
  static std::vector<COLORREF> Expected(int quiet, int loud, int very_loud) {
    std::vector<COLORREF> lines{::GetSysColor(COLOR_BTNSHADOW)};
    const auto add = [&lines](int count, COLORREF color) {
      lines.insert(lines.end(), static_cast<std::size_t>(count), color);
    };
    add(quiet, ColorOf(Loudness::kQuiet, Contrast::kUsual));
    add(loud, ColorOf(Loudness::kLoud, Contrast::kUsual));
    add(very_loud, ColorOf(Loudness::kVeryLoud, Contrast::kUsual));
    add(100 - quiet - loud - very_loud, ::GetSysColor(COLOR_WINDOW));
    lines.push_back(::GetSysColor(COLOR_BTNSHADOW));
    return lines;
  }

  controls::ProgressBar bar;
  RECT all{};
  COLORREF edge = 0;
};

TEST_F(Win32ProgressBarTest, FillsUpwardsInTheZonesOfLoudness) {
  EXPECT_EQ(Lines(), Expected(0, 0, 0));
  EXPECT_EQ(edge, ::GetSysColor(COLOR_BTNSHADOW));
  bar.SetValue(50);
  EXPECT_EQ(Lines(), Expected(50, 0, 0));
  bar.SetValue(80);
  EXPECT_EQ(Lines(), Expected(70, 10, 0));
  bar.SetValue(100);
  EXPECT_EQ(Lines(), Expected(70, 20, 10));
  bar.SetRange(-200, 200);
  EXPECT_EQ(Lines(), Expected(70, 5, 0));
  bar.SetRange(0, 0);
  EXPECT_EQ(Lines(), Expected(0, 0, 0)) << "a range without an extent";
}

TEST_F(Win32ProgressBarTest, IsPaintedAnewOnlyWhenItsHeightChanges) {
  bar.SetRange(0, 10'000);
  PaintAll();
  bar.SetValue(20);
  EXPECT_FALSE(IsDirty(Of(bar))) << "less than a line";
  bar.SetValue(5'000);
  EXPECT_TRUE(IsDirty(Of(bar)));
  PaintAll();
  EXPECT_FALSE(IsDirty(Of(bar)));
}

class Win32ScrollBarTest : public Win32ValueBindingsTest {
 protected:
  void SetUp() override {
    slider.SetRange(20, 220);
    slider.SetValue(70);
    inventory = {{"slider", &slider}};
    Open();
  }
  LRESULT Ask(UINT message, WPARAM w = 0, LPARAM l = 0) const {
    return ::SendMessageW(Of(slider), message, w, l);
  }
  int Shown() const { return static_cast<int>(Ask(TBM_GETPOS)); }
  void Move(int value, WORD code) const {
    Ask(TBM_SETPOS, TRUE, value);
    ::SendMessageW(window->Handle(), WM_HSCROLL, MAKEWPARAM(code, value),
                   reinterpret_cast<LPARAM>(Of(slider)));
  }
  controls::ScrollBar slider;
};

TEST_F(Win32ScrollBarTest, ShowsRangeAndValueOfTheProgram) {
  EXPECT_EQ(Ask(TBM_GETRANGEMIN), 20);
  EXPECT_EQ(Ask(TBM_GETRANGEMAX), 220);
  EXPECT_EQ(Ask(TBM_GETPAGESIZE), 20) << "a tenth";
  EXPECT_EQ(Shown(), 70);
  slider.SetValue(120);
  EXPECT_EQ(Shown(), 120);
  slider.SetRange(0, 50);
  EXPECT_EQ(Ask(TBM_GETRANGEMIN), 0);
  EXPECT_EQ(Ask(TBM_GETRANGEMAX), 50);
  EXPECT_EQ(Ask(TBM_GETPAGESIZE), 5);
  EXPECT_EQ(Shown(), 50);
}

TEST_F(Win32ScrollBarTest, KeyMovesItByOneAndTheProgramLearnsOfItFromTheLoop) {
  int changes = 0;
  int scrolls = 0;
  controls::Subscriptions notes;
  notes += slider.ValueChanged.Subscribe([&] { ++changes; });
  notes += slider.Scrolled.Subscribe([&] { ++scrolls; });
  PressKey(Of(slider), VK_RIGHT);
  EXPECT_TRUE(Until([this] { return slider.Value() == 71; }));
  HandleAll();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(scrolls, 0);
  EXPECT_EQ(Shown(), 71);
}

TEST_F(Win32ScrollBarTest, HandleStaysWhereTheUserPutsItUntilTheProgramHasLearnedOfIt) {
  Move(150, TB_ENDTRACK);
  slider.SetToolTip(u"Lautstärke");
  EXPECT_EQ(Shown(), 150);
  HandleAll();
  EXPECT_EQ(slider.Value(), 150);
  slider.SetValue(30);
  EXPECT_EQ(Shown(), 30) << "from now on the program's value";
}

TEST_F(Win32ScrollBarTest, ProgramThatAnswersWithAnotherValueIsShown) {
  const auto answer = slider.ValueChanged.Subscribe([this] { slider.SetValue(100); });
  Move(150, TB_ENDTRACK);
  HandleAll();
  EXPECT_EQ(Shown(), 100);
}

class Win32ImageTest : public Win32ValueBindingsTest {
 protected:
  PictureHandle Load(std::uint32_t color) {
    folder.Write("a.bmp", BitmapFile(20, 20, color));
    return icons.LoadPicture(folder.TextPath("a.bmp")).handle;
  }
  COLORREF Seen() {
    PaintAll();
    HDC const context = ::GetDC(Of(image));
    const COLORREF color = ::GetPixel(context, 20, 20);
    ::ReleaseDC(Of(image), context);
    return color;
  }
  test_support::TempFolder folder;
  controls::Image image;
};

TEST_F(Win32ImageTest, PictureFillsItsPlaceAndFollowsTheProgram) {
  image.SetPicture(static_cast<std::uint32_t>(Load(0x00ff00)));
  image.Move({0, 0, 1500, 1500});
  inventory = {{"image", &image}};
  Open();
  EXPECT_EQ(Seen(), RGB(0, 255, 0));
  image.SetPicture(static_cast<std::uint32_t>(Load(0x0000ff)));
  EXPECT_TRUE(IsDirty(Of(image)));
  EXPECT_EQ(Seen(), RGB(0, 0, 255));
  image.SetToolTip(u"Sender");
  EXPECT_FALSE(IsDirty(Of(image))) << "the same picture";
  image.SetPicture(0);
  EXPECT_EQ(Seen(), ::GetSysColor(COLOR_WINDOW));
}

TEST_F(Win32ImageTest, TextFlowsAroundThePictureOnlyWhileThereIsOneOverIt) {
  controls::Label label;
  label.SetLook(controls::LabelLook::kText);
  Text text;
  for (int word = 0; word < 40; ++word) text += u"Wort ";
  label.SetCaption(text);
  label.Move({3150, 3150, 3000, 1800});
  image.Move({4500, 3150, 1650, 1800});
  inventory = {{"label", &label}, {"image", &image}};
  Open();
  EXPECT_EQ(window->HintOf(label), u"") << "all of it has room";
  PaintAll();
  image.SetPicture(static_cast<std::uint32_t>(Load(0x00ff00)));
  EXPECT_TRUE(IsDirty(Of(label)));
  EXPECT_NE(window->HintOf(label), u"");
  image.SetVisible(false);
  EXPECT_EQ(window->HintOf(label), u"");
  image.SetVisible(true);
  EXPECT_NE(window->HintOf(label), u"");
  image.Move({6900, 3150, 1650, 1800});
  EXPECT_EQ(window->HintOf(label), u"") << "beside the text";
  image.Move({4500, 5400, 1650, 1800});
  EXPECT_EQ(window->HintOf(label), u"") << "below it";
}

class Win32ButtonBindingsTest : public Win32ValueBindingsTest {
 protected:
  controls::CommandButton button;
  controls::CheckBox box;
  controls::TextBox field;
};

TEST_F(Win32ButtonBindingsTest, HintOfTheFormNamesTheKeyUnlessTheControlHasAnotherTooltip) {
  inventory = {{"button", &button, nullptr, {.hint = u"Liste speichern", .key = controls::WithControl(u'S')}},
               {"field", &field, nullptr, {.hint = u"Name"}}};
  Open();
  EXPECT_EQ(window->HintOf(button), u"Liste speichern (" + KeyName(controls::WithControl(u'S')) + u")");
  EXPECT_EQ(window->HintOf(field), u"Name");
  field.SetToolTip(u"Name des Senders");
  EXPECT_EQ(window->HintOf(field), u"Name des Senders");
  field.SetToolTip({});
  EXPECT_EQ(window->HintOf(field), u"Name");
}

TEST_F(Win32ButtonBindingsTest, RightClickAndMenuKeyAreTheButtonsSecondAction) {
  inventory = {{"button", &button}};
  Open();
  int clicks = 0;
  const auto count = button.ContextClicked.Subscribe([&] { ++clicks; });
  const auto want = [this] {
    ::SendMessageW(window->Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Of(button)),
                   MAKELPARAM(-1, -1));
  };
  want();
  EXPECT_EQ(clicks, 0) << "from the loop only";
  HandleAll();
  EXPECT_EQ(clicks, 1);
  want();
  ::EnableWindow(window->Handle(), FALSE);
  HandleAll();
  ::EnableWindow(window->Handle(), TRUE);
  EXPECT_EQ(clicks, 1) << "a dialog came before its turn";
}

TEST_F(Win32ButtonBindingsTest, ClickThatADialogOvertakesIsDropped) {
  inventory = {{"button", &button}, {"box", &box}};
  Open();
  int clicks = 0;
  const auto count = button.Clicked.Subscribe([&] { ++clicks; });
  ::SendMessageW(Of(button), BM_CLICK, 0, 0);
  ::SendMessageW(Of(box), BM_CLICK, 0, 0);
  ASSERT_EQ(::SendMessageW(Of(box), BM_GETCHECK, 0, 0), BST_CHECKED);
  ::EnableWindow(window->Handle(), FALSE);
  HandleAll();
  ::EnableWindow(window->Handle(), TRUE);
  EXPECT_EQ(clicks, 0);
  EXPECT_FALSE(box.Checked());
  EXPECT_EQ(::SendMessageW(Of(box), BM_GETCHECK, 0, 0), BST_UNCHECKED) << "the mark does not lie";
}

TEST_F(Win32ButtonBindingsTest, MarkOfTheUsersStaysUntilItsTurn) {
  inventory = {{"box", &box}};
  Open();
  ::SendMessageW(Of(box), BM_CLICK, 0, 0);
  box.SetCaption(u"Melden");
  EXPECT_EQ(::SendMessageW(Of(box), BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_EQ(TextOf(Of(box)), u"Melden");
  HandleAll();
  EXPECT_TRUE(box.Checked());
  box.SetValue(controls::CheckValue::kUnchecked);
  EXPECT_EQ(::SendMessageW(Of(box), BM_GETCHECK, 0, 0), BST_UNCHECKED);
}

TEST_F(Win32ButtonBindingsTest, CheckBoxThatTheProgramSetsMeanwhileIsNotTurnedBack) {
  inventory = {{"box", &box}};
  Open();
  ::SendMessageW(Of(box), BM_CLICK, 0, 0);
  box.SetValue(controls::CheckValue::kChecked);
  HandleAll();
  EXPECT_TRUE(box.Checked());
}

TEST_F(Win32ButtonBindingsTest, EnterPressesTheButtonThatHasTheKeyboard) {
  controls::CommandButton main;
  inventory = {{"button", &button}, {"main", &main, nullptr, {.key = controls::kEnterKey}}};
  Open();
  int own = 0;
  int others = 0;
  controls::Subscriptions notes;
  notes += button.Clicked.Subscribe([&] { ++own; });
  notes += main.Clicked.Subscribe([&] { ++others; });
  PressKey(Of(button), VK_RETURN);
  EXPECT_TRUE(Until([&] { return own == 1; }));
  HandleAll();
  EXPECT_EQ(others, 0);
}

TEST_F(Win32ButtonBindingsTest, FlatButtonHasTheListsGroundItsSymbolAndNoBorder) {
  button.SetLook(controls::ButtonLook::kFlat);
  button.SetGlyph(controls::Glyph::kClose);
  button.Move({0, 0, 600, 600});
  inventory = {{"button", &button}, {"field", &field}};
  Open();
  ::SetFocus(Of(field));
  const auto painted = [this](Canvas& canvas) {
    DRAWITEMSTRUCT place{};
    place.hwndItem = Of(button);
    place.hDC = canvas.Context();
    ::SendMessageW(window->Handle(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&place));
  };
  const auto is_gray = [](COLORREF one) { return one == ::GetSysColor(COLOR_GRAYTEXT); };
  Canvas usual(40, 40);
  painted(usual);
  EXPECT_EQ(usual.At(0, 0), ::GetSysColor(COLOR_WINDOW));
  EXPECT_GT(usual.Count(IsDark), 15);
  ::SendMessageW(Of(button), BM_SETSTATE, TRUE, 0);
  Canvas pressed(40, 40);
  painted(pressed);
  EXPECT_EQ(pressed.At(2, 2), ::GetSysColor(COLOR_BTNFACE));
  ::SendMessageW(Of(button), BM_SETSTATE, FALSE, 0);
  ::SendMessageW(Of(button), WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
  ::SetFocus(Of(button));
  Canvas focused(40, 40);
  painted(focused);
  EXPECT_GT(focused.Count({0, 0, 40, 1}, IsDark), 10) << "the frame";
  ::SetFocus(Of(field));
  button.SetEnabled(false);
  Canvas disabled(40, 40);
  painted(disabled);
  EXPECT_GT(disabled.Count(is_gray), 5);
  EXPECT_EQ(disabled.Count(IsDark), 0);
}

TEST_F(Win32ButtonBindingsTest, FlatButtonIsPaintedByTheProgramOnTheScreenToo) {
  button.SetLook(controls::ButtonLook::kFlat);
  button.Move({0, 0, 600, 600});
  inventory = {{"button", &button}};
  Open();
  PaintAll();
  HDC const context = ::GetDC(Of(button));
  EXPECT_EQ(::GetPixel(context, 0, 20), ::GetSysColor(COLOR_WINDOW));
  ::ReleaseDC(Of(button), context);
}

TEST_F(Win32ButtonBindingsTest, ButtonsPictureIsTheProgramsInPlaceOfTheSystems) {
  button.SetGlyph(controls::Glyph::kStop);
  button.Move({0, 0, 600, 600});
  inventory = {{"button", &button}};
  Open();
  Canvas canvas(40, 40);
  NMCUSTOMDRAW step{};
  step.hdr.hwndFrom = Of(button);
  step.hdr.code = static_cast<UINT>(NM_CUSTOMDRAW);
  step.hdc = canvas.Context();
  const auto ask = [&](DWORD stage) {
    step.dwDrawStage = stage;
    return ::SendMessageW(window->Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&step));
  };
  EXPECT_EQ(ask(CDDS_PREERASE), CDRF_DODEFAULT);
  EXPECT_EQ(canvas.Count(IsDark), 0);
  EXPECT_EQ(ask(CDDS_PREPAINT), CDRF_SKIPDEFAULT);
  EXPECT_GT(canvas.Count({10, 10, 30, 30}, IsDark), 60) << "a square";
  PaintAll();
  button.SetGlyph(controls::Glyph::kStart);
  EXPECT_TRUE(IsDirty(Of(button)));
}

TEST_F(Win32ButtonBindingsTest, CaptionsAreThereFromTheBeginningAndFollow) {
  controls::Label label;
  controls::Label right;
  label.SetCaption(u"Name\n& Adresse");
  right.SetLook(controls::LabelLook::kRightCaption);
  box.SetCaption(u"Ein & aus");
  box.SetValue(controls::CheckValue::kChecked);
  inventory = {{"label", &label}, {"right", &right}, {"box", &box}};
  Open();
  EXPECT_EQ(TextOf(Of(label)), u"Name & Adresse");
  EXPECT_TRUE(::IsWindowVisible(Of(label)) != 0);
  EXPECT_EQ(TextOf(Of(box)), u"Ein && aus");
  EXPECT_EQ(::SendMessageW(Of(box), BM_GETCHECK, 0, 0), BST_CHECKED);
  label.SetCaption(u"Genre");
  EXPECT_EQ(TextOf(Of(label)), u"Genre");
  const auto style = [this](const controls::Control& one) {
    return ::GetWindowLongPtrW(Of(one), GWL_STYLE) & SS_TYPEMASK;
  };
  EXPECT_EQ(style(label), SS_LEFT);
  EXPECT_EQ(style(right), SS_RIGHT);
}

}  // namespace
}  // namespace platform::win32
