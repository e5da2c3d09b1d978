// What the front end paints itself: buttons, rows, texts in two columns.

#include "platform/win32/base/windows_api.h"

#include <uxtheme.h>

#include "platform/win32/ui/button_face.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/row_painter.h"
#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/text_drawing.h"
#include "platform/win32/ui/text_panel.h"
#include "tests/platform/win32/ui/canvas.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

class Win32ButtonFaceTest : public Win32WindowTest {
 protected:
  static constexpr int kWidth = 200;
  static constexpr int kHeight = 30;

  void Show() {
    button.Move({0, 0, kWidth * 15, kHeight * 15});
    inventory = {{"button", &button}};
    Open();
    RECT all{};
    ::GetClientRect(Of(button), &all);
    ASSERT_EQ(all.right, kWidth) << "the test counts pixels at 100 %";
    ::SetFocus(nullptr);
  }
  void Paint(Canvas& canvas) { PaintButton(button, Of(button), canvas.Context(), window->GetScale()); }
  /// Without its border.
  static constexpr RECT kInside{6, 4, kWidth - 6, kHeight - 4};

  controls::CommandButton button;
};

TEST_F(Win32ButtonFaceTest, GlyphStandsBeforeTheCaptionAndBothInTheMiddle) {
  button.SetCaption(u"Stop");
  Show();
  Canvas plain(kWidth, kHeight);
  Paint(plain);
  button.SetGlyph(controls::Glyph::kStop, controls::GlyphPlace::kBeforeCaption);
  Canvas with_glyph(kWidth, kHeight);
  Paint(with_glyph);
  const auto caption = plain.FirstColumn(kInside, IsDark);
  const auto glyph = with_glyph.FirstColumn(kInside, IsDark);
  ASSERT_TRUE(caption && glyph);
  EXPECT_LE(*glyph, *caption - 8);
  EXPECT_GE(with_glyph.Count(kInside, IsDark), plain.Count(kInside, IsDark) + 60) << "a square";
  const RECT right{kWidth - *glyph + 3, 4, kWidth - 6, kHeight - 4};
  EXPECT_EQ(with_glyph.Count(right, IsDark), 0) << "as far from the right edge as from the left";
}

TEST_F(Win32ButtonFaceTest, GlyphInPlaceOfTheCaptionIsAlone) {
  button.SetCaption(u"Ein langer Text");
  button.SetGlyph(controls::Glyph::kStop);
  Show();
  Canvas canvas(kWidth, kHeight);
  Paint(canvas);
  EXPECT_NEAR(canvas.FirstColumn(kInside, IsDark).value_or(0), kWidth / 2 - 5, 2);
  EXPECT_TRUE(ShowsWholeCaption(button, Of(button), window->GetScale()));
}

TEST_F(Win32ButtonFaceTest, CaptionThatIsTooWideEndsInDotsAndIsTheTooltip) {
  button.SetCaption(u"Eine Beschriftung, die für ihren Knopf um einiges zu lang geraten ist");
  Show();
  EXPECT_FALSE(ShowsWholeCaption(button, Of(button), window->GetScale()));
  EXPECT_EQ(window->HintOf(button), button.Caption());
  Canvas canvas(kWidth, kHeight);
  Paint(canvas);
  EXPECT_EQ(canvas.Count({1, 6, 4, kHeight - 6}, IsDark), 0) << "inside its margins";
  button.SetCaption(u"Kurz");
  EXPECT_EQ(window->HintOf(button), u"");
  button.SetToolTip(u"Ein Hinweis");
  button.SetCaption(u"Wieder eine Beschriftung, die für ihren Knopf um einiges zu lang ist");
  EXPECT_EQ(window->HintOf(button), u"Ein Hinweis");
}

TEST_F(Win32ButtonFaceTest, ButtonThatDeletesIsRedOnlyWhileItIsPointedAt) {
  button.SetCaption(u"Eintrag löschen");
  button.SetGlyph(controls::Glyph::kDelete, controls::GlyphPlace::kBeforeCaption);
  button.SetRole(controls::ButtonRole::kDeleting);
  Show();
  Canvas before(kWidth, kHeight);
  Paint(before);
  EXPECT_EQ(before.Count(kInside, IsRed), 0);
  POINT place{20, 10};
  ::ClientToScreen(Of(button), &place);
  ::SetCursorPos(place.x, place.y);
  ::SendMessageW(Of(button), WM_MOUSEMOVE, 0, MAKELPARAM(20, 10));
  ASSERT_TRUE(Until([this] { return (::SendMessageW(Of(button), BM_GETSTATE, 0, 0) & BST_HOT) != 0; }));
  Canvas pointed_at(kWidth, kHeight);
  Paint(pointed_at);
  EXPECT_GT(pointed_at.Count(kInside, IsRed), 40);
  button.SetGlyph(controls::Glyph::kNone);
  Canvas caption(kWidth, kHeight);
  Paint(caption);
  EXPECT_GT(caption.Count(kInside, IsRed), 10) << "its caption too";
  button.SetEnabled(false);
  Canvas disabled(kWidth, kHeight);
  Paint(disabled);
  EXPECT_EQ(disabled.Count(kInside, IsRed), 0);
  RestPointer();
}

TEST_F(Win32ButtonFaceTest, WithoutAThemeTheButtonIsTheSystemsOwnWithItsSymbol) {
  button.SetCaption(u"Stop");
  button.SetGlyph(controls::Glyph::kStop, controls::GlyphPlace::kBeforeCaption);
  Show();
  Canvas themed(kWidth, kHeight);
  Paint(themed);
  ASSERT_TRUE(SUCCEEDED(::SetWindowTheme(Of(button), L" ", L" ")));
  HTHEME const theme = ::OpenThemeData(Of(button), L"BUTTON");
  ASSERT_EQ(theme, nullptr);
  Canvas canvas(kWidth, kHeight);
  Paint(canvas);
  EXPECT_EQ(canvas.FirstColumn(kInside, IsDark), themed.FirstColumn(kInside, IsDark)) << "the symbol";
  EXPECT_GT(canvas.Count(kInside, IsDark), 60);
  EXPECT_EQ(canvas.At(20, kHeight / 2), ::GetSysColor(COLOR_BTNFACE));
  const auto is_shadow = [](COLORREF one) {
    return one == ::GetSysColor(COLOR_3DDKSHADOW) || one == ::GetSysColor(COLOR_BTNSHADOW);
  };
  EXPECT_EQ(canvas.Count({0, 0, kWidth - 1, 1}, is_shadow), 0);
  EXPECT_GT(canvas.Count({0, kHeight - 1, kWidth, kHeight}, is_shadow), kWidth / 2) << "stands out";
  ::SendMessageW(Of(button), BM_SETSTATE, TRUE, 0);
  Canvas pressed(kWidth, kHeight);
  Paint(pressed);
  EXPECT_GT(pressed.Count({0, 0, kWidth - 1, 1}, is_shadow), kWidth / 2) << "pressed in";
}

TEST_F(Win32ButtonFaceTest, WithoutAThemeTheButtonThatEnterPressesHasAFrame) {
  button.SetRole(controls::ButtonRole::kMain);
  Show();
  ::SetWindowTheme(Of(button), L" ", L" ");
  Canvas canvas(kWidth, kHeight);
  Paint(canvas);
  EXPECT_EQ(canvas.At(kWidth / 2, 0), ::GetSysColor(COLOR_WINDOWFRAME));
}

TEST_F(Win32ButtonFaceTest, MainButtonLooksLikeTheOneThatEnterPresses) {
  controls::CommandButton usual;
  controls::CommandButton entered;
  button.SetRole(controls::ButtonRole::kMain);
  inventory = {
      {"button", &button}, {"usual", &usual}, {"entered", &entered, nullptr, {.key = controls::kEnterKey}}};
  Open();
  const auto is_default = [this](const controls::Control& one) {
    return (::GetWindowLongPtrW(Of(one), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
  };
  EXPECT_TRUE(is_default(button));
  EXPECT_TRUE(is_default(entered));
  EXPECT_FALSE(is_default(usual));
}

TEST_F(Win32WindowTest, PanelThatBeginsAboveTheWindowIsShownFromItsBeginning) {
  controls::Frame panel;
  panel.Move({1500, -450, 3000, 3000});
  inventory = {{"panel", &panel}};
  Open();
  RECT place{};
  const auto look = [&] {
    ::GetWindowRect(Of(panel), &place);
    ::MapWindowPoints(nullptr, window->Handle(), reinterpret_cast<POINT*>(&place), 2);
  };
  look();
  EXPECT_EQ(place.top, 0);
  EXPECT_EQ(place.bottom, window->GetScale().Pixels(3000 - 450)) << "no lower than its place";
  panel.Move({1500, 450, 3000, 3000});
  look();
  EXPECT_EQ(place.top, window->GetScale().Pixels(450));
  EXPECT_EQ(place.bottom, window->GetScale().Pixels(3450));
}

class Win32RowPainterTest : public testing::Test {
 protected:
  static constexpr int kWidth = 400;
  static constexpr int kHeight = RowPainter::kRowHeight;

  Win32RowPainterTest() {
    list_.AddColumn({u"Station", 150});
    list_.AddColumn({u"Link", 100, controls::SortKind::kNaturalOrder, controls::CellLook::kAddress});
    list_.AddColumn({u"Favorit", 150, controls::SortKind::kNaturalOrder, controls::CellLook::kMark});
    look_.area = {0, 0, kWidth, kHeight};
    look_.column_widths = {150, 100, 150};
  }
  void Paint(Canvas& canvas) { painter_.Paint(canvas.Context(), row_, look_); }
  static int Dark(const Canvas& canvas, int from, int to) {
    return canvas.Count({from, 0, to, kHeight}, IsDark);
  }

  Scale scale_{96};
  Win32Icons icons_;
  controls::ListView list_;
  RowPainter painter_{list_, icons_, scale_};
  controls::ListRow row_{.cells = {u"Köln"}};
  RowLook look_;
};

TEST_F(Win32RowPainterTest, FavouriteHasAStarAndAnyOtherTextIsAText) {
  Canvas none(kWidth, kHeight);
  Paint(none);
  EXPECT_EQ(Dark(none, 250, kWidth), 0);
  row_.cells.Set(2, u"1");
  Canvas star(kWidth, kHeight);
  Paint(star);
  EXPECT_GT(Dark(star, 250, kWidth), 40) << "a filled shape";
  row_.cells.Set(2, u"ja");
  Canvas text(kWidth, kHeight);
  Paint(text);
  EXPECT_NE(Dark(text, 250, kWidth), 0);
  EXPECT_NE(Dark(text, 250, kWidth), Dark(star, 250, kWidth));
}

TEST_F(Win32RowPainterTest, AddressesDifferByTheirEnds) {
  const auto painted = [this](const Text& address) {
    row_.cells.Set(1, address);
    const Canvas canvas(kWidth, kHeight);
    painter_.Paint(canvas.Context(), row_, look_);
    std::vector<bool> dark;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 150; x < 250; ++x) dark.push_back(IsDark(canvas.At(x, y)));
    }
    return dark;
  };
  const auto one = painted(u"http://radio.example/eine/lange/adresse/stream1");
  EXPECT_NE(one, painted(u"http://radio.example/eine/lange/adresse/stream2"));
  EXPECT_EQ(one, painted(u"http://radio.example/eine/andre/adresse/stream1")) << "the middle is cut out";
}

TEST_F(Win32RowPainterTest, TextsStayInTheirColumns) {
  row_.cells.Set(0, u"Ein Sender mit einem langen Namen, der in keine Spalte passt");
  row_.cells.Set(1, u"");
  Canvas canvas(kWidth, kHeight);
  Paint(canvas);
  EXPECT_GT(Dark(canvas, 40, 150), 0);
  EXPECT_EQ(Dark(canvas, 147, 250), 0);
}

TEST_F(Win32RowPainterTest, RowWithoutAnIconHasAnInitial) {
  Canvas canvas(kWidth, kHeight);
  Paint(canvas);
  const COLORREF ground = canvas.At(10, 10);
  EXPECT_NE(ground, RGB(255, 255, 255));
  EXPECT_GT(canvas.Count({3, 3, 35, 35}, [ground](COLORREF one) { return one == ground; }), 400);
  row_.cells.Set(0, u"Bonn");
  Canvas other(kWidth, kHeight);
  Paint(other);
  EXPECT_NE(other.At(10, 10), ground);
}

TEST_F(Win32RowPainterTest, PlayingStationIsBoldAndHasADiscOnItsIcon) {
  Canvas plain(kWidth, kHeight);
  Paint(plain);
  row_.mark = controls::RowMark::kPlaying;
  Canvas playing(kWidth, kHeight);
  Paint(playing);
  EXPECT_GT(Dark(playing, 40, 150), Dark(plain, 40, 150));
  EXPECT_GT(playing.Count({15, 15, 35, 35}, IsDark), plain.Count({15, 15, 35, 35}, IsDark) + 50);
}

TEST_F(Win32RowPainterTest, SelectionHasTheSystemsColoursAndIsPalerWithoutTheKeyboard) {
  look_.selected = true;
  look_.list_has_keyboard = true;
  Canvas active(kWidth, kHeight);
  Paint(active);
  EXPECT_EQ(active.At(kWidth - 5, 5), ::GetSysColor(COLOR_HIGHLIGHT));
  look_.list_has_keyboard = false;
  Canvas inactive(kWidth, kHeight);
  Paint(inactive);
  EXPECT_EQ(inactive.At(kWidth - 5, 5),
            SelectionInk(SelectionOf::kListWithoutKeyboard, UsersContrast()).ground);
}

TEST_F(Win32RowPainterTest, EverySecondRowIsAStripe) {
  Canvas plain(kWidth, kHeight);
  Paint(plain);
  look_.striped = true;
  Canvas striped(kWidth, kHeight);
  Paint(striped);
  EXPECT_NE(striped.At(kWidth - 5, 5), plain.At(kWidth - 5, 5));
}

class Win32NamedValuesTest : public Win32WindowTest {
 protected:
  static constexpr int kWidth = 300;
  static constexpr int kHeight = 200;

  void Show(const Text& text) {
    label.SetLook(controls::LabelLook::kNamedValues);
    label.SetCaption(text);
    label.Move({0, 0, kWidth * 15, kHeight * 15});
    inventory = {{"label", &label}};
    Open();
    const SelectedFont font(canvas.Context(), window->GetScale().Get(Scale::Font::kPlain));
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(canvas.Context(), &metrics);
    line = static_cast<int>(metrics.tmHeight);
    names = WidthOf(canvas.Context(), u"StationName:");
    DRAWITEMSTRUCT place{};
    place.hDC = canvas.Context();
    place.rcItem = {0, 0, kWidth, kHeight};
    Panel().Draw(place);
  }
  TextPanelBinding& Panel() { return dynamic_cast<TextPanelBinding&>(*window->Controls().Of(label)); }
  /// Where the value in a line begins, behind all names.
  std::optional<int> ValueIn(int row) const {
    return canvas.FirstColumn({names + 2, row * line, kWidth, (row + 1) * line}, IsInk);
  }
  static bool IsInk(COLORREF color) { return GetRValue(color) < 160; }

  controls::Label label;
  Canvas canvas{kWidth, kHeight};
  int line = 0;
  int names = 0;
};

TEST_F(Win32NamedValuesTest, ValuesStandInAColumnBehindTheLongestName) {
  Show(u"Ton: Hall\r\nStationName: Hall\r\nNur Text");
  ASSERT_TRUE(ValueIn(0));
  EXPECT_EQ(ValueIn(0), ValueIn(1));
  EXPECT_EQ(canvas.FirstColumn({0, 2 * line, kWidth, 3 * line}, IsInk).value_or(99) < 10, true);
  EXPECT_TRUE(Panel().ShowsAll());
}

TEST_F(Win32NamedValuesTest, LongValueContinuesInItsColumn) {
  Show(u"StationName: Ein Name, der so lang ist, dass er auf einer Zeile keinen Platz hat");
  ASSERT_TRUE(ValueIn(0) && ValueIn(1));
  EXPECT_EQ(canvas.Count({0, line, names, 2 * line}, IsInk), 0) << "below the name";
}

TEST_F(Win32NamedValuesTest, AddressContinuesBehindOneOfItsPartsButNotBehindItsBeginning) {
  const auto is_empty_from = [this](int x) { return canvas.Count({x, 0, kWidth, line}, IsInk) == 0; };
  Show(u"http://mmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmm");
  EXPECT_FALSE(is_empty_from(kWidth - 20));
  Canvas second(kWidth, kHeight);
  label.SetCaption(u"http://m/mmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmm");
  DRAWITEMSTRUCT place{};
  place.hDC = second.Context();
  place.rcItem = {0, 0, kWidth, kHeight};
  Panel().Draw(place);
  EXPECT_EQ(second.Count({kWidth / 2, 0, kWidth, line}, IsInk), 0);
  EXPECT_GT(second.Count({kWidth / 2, line, kWidth, 2 * line}, IsInk), 0);
}

TEST_F(Win32NamedValuesTest, NamesArePalerThanTheirValues) {
  Show(u"MMMM: MMMM\r\nStationName: x");
  const auto darkest = [this](int from, int to) {
    int least = 255;
    for (int x = from; x < to; ++x) {
      for (int y = 0; y < line; ++y) least = std::min<int>(least, GetRValue(canvas.At(x, y)));
    }
    return least;
  };
  EXPECT_GT(darkest(0, names), darkest(names, kWidth) + 20);
  EXPECT_LT(darkest(0, names), 200) << "but legible";
}

/// Where the ground is asked for, which comes before anything is painted.
LRESULT CALLBACK WatchGround(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                             DWORD_PTR context) {
  if (message == WM_CTLCOLORSTATIC) *reinterpret_cast<HDC*>(context) = reinterpret_cast<HDC>(w);
  return ::DefSubclassProc(window, message, w, l);
}

TEST_F(Win32NamedValuesTest, IsPaintedInMemoryAndShownAtOnce) {
  Show(u"Ton: Hall");
  HDC context = nullptr;
  ::SetWindowSubclass(window->Handle(), WatchGround, 9, reinterpret_cast<DWORD_PTR>(&context));
  DRAWITEMSTRUCT place{};
  place.hDC = canvas.Context();
  place.rcItem = {0, 0, kWidth, kHeight};
  Panel().Draw(place);
  ::RemoveWindowSubclass(window->Handle(), WatchGround, 9);
  EXPECT_NE(context, nullptr);
  EXPECT_NE(context, canvas.Context());
}

TEST(Win32PaintBufferTest, ShowsItsAreaAtItsEndAndNothingBefore) {
  Canvas canvas(40, 40);
  const RECT all{0, 0, 40, 40};
  {
    const PaintBuffer buffer(canvas.Context(), {10, 10, 20, 20});
    ::FillRect(buffer.Get(), &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(canvas.Count(IsDark), 0);
  }
  EXPECT_EQ(canvas.Count({10, 10, 30, 30}, IsDark), 400);
  EXPECT_EQ(canvas.Count(IsDark), 400) << "the coordinates are those of the target";
}

TEST_F(Win32NamedValuesTest, WhatHasNoRoomIsTheTooltip) {
  Text text;
  for (int number = 0; number < 40; ++number) text += u"Name: Wert\r\n";
  Show(text);
  EXPECT_FALSE(Panel().ShowsAll());
  EXPECT_EQ(window->HintOf(label).substr(0, 10), u"Name: Wert");
  Panel().SetObstacle({100, 0, 200, 200});
  EXPECT_FALSE(Panel().ShowsAll());
  label.SetCaption(u"Name: Wert");
  EXPECT_TRUE(Panel().ShowsAll()) << "beside the picture";
  EXPECT_EQ(window->HintOf(label), u"");
}

}  // namespace
}  // namespace platform::win32
