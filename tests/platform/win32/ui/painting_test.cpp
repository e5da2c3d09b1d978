// Details of what is painted: frames of the keyboard, grounds behind texts, marks, each part of a symbol.

#include "platform/win32/base/windows_api.h"

#include <algorithm>

#include "platform/front/glyph_shapes.h"
#include "platform/win32/ui/button_face.h"
#include "platform/win32/ui/initial_icon.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/row_painter.h"
#include "tests/platform/win32/ui/canvas.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

constexpr Color kInk = RGB(0, 0, 0);
constexpr Color kPaper = RGB(255, 255, 255);

bool IsPaper(COLORREF color) { return color == kPaper; }

int Differing(const Canvas& one, const Canvas& other, const RECT& area) {
  int count = 0;
  for (int y = static_cast<int>(area.top); y < area.bottom; ++y) {
    for (int x = static_cast<int>(area.left); x < area.right; ++x)
      count += one.At(x, y) != other.At(x, y) ? 1 : 0;
  }
  return count;
}

class Win32RowDetailsTest : public testing::Test {
 protected:
  static constexpr int kWidth = 300;
  static constexpr int kHeight = RowPainter::kRowHeight;

  Win32RowDetailsTest() {
    list_.AddColumn({u"Station", 150});
    list_.AddColumn({u"Genre", 150});
    look_.area = {0, 0, kWidth, kHeight};
    look_.column_widths = {150, 150};
  }
  void Paint(Canvas& canvas) { painter_.Paint(canvas.Context(), row_, look_); }

  Scale scale_{96};
  Win32Icons icons_;
  controls::ListView list_;
  RowPainter painter_{list_, icons_, scale_};
  controls::ListRow row_{.cells = {u"Köln", u"Jazz"}};
  RowLook look_;
};

TEST_F(Win32RowDetailsTest, TextStandsOnTheGroundOfItsRowInTheColourOfTheSelection) {
  look_.striped = true;
  Canvas striped(kWidth, kHeight);
  Paint(striped);
  EXPECT_EQ(striped.Count({150, 0, kWidth, kHeight}, IsPaper), 0);
  look_.selected = true;
  look_.list_has_keyboard = true;
  Canvas selected(kWidth, kHeight);
  Paint(selected);
  const auto is_selected_text = [](COLORREF one) { return one == ::GetSysColor(COLOR_HIGHLIGHTTEXT); };
  EXPECT_GT(selected.Count({150, 0, kWidth, kHeight}, is_selected_text), 10);
}

TEST_F(Win32RowDetailsTest, RowWithTheKeyboardHasAFrame) {
  Canvas plain(kWidth, kHeight);
  Paint(plain);
  look_.framed = true;
  Canvas framed(kWidth, kHeight);
  Paint(framed);
  EXPECT_GT(Differing(plain, framed, {0, 0, kWidth, 1}), kWidth / 3);
  EXPECT_EQ(Differing(plain, framed, {1, 1, kWidth - 1, kHeight - 1}), 0);
}

TEST_F(Win32RowDetailsTest, IconEndsWithItsColumn) {
  look_.column_widths = {20, 150};
  row_.cells.Set(1, u"");
  Canvas canvas(kWidth, kHeight);
  Paint(canvas);
  const COLORREF ground = canvas.At(kWidth - 5, 5);
  const auto is_other = [ground](COLORREF one) { return one != ground; };
  EXPECT_GT(canvas.Count({0, 0, 20, kHeight}, is_other), 100);
  EXPECT_EQ(canvas.Count({20, 0, kWidth, kHeight}, is_other), 0);
}

TEST(Win32MarkTest, DiscHasARingAndAShapeInTheColourOfTheGround) {
  const auto paint = [](const Canvas& canvas, controls::RowMark mark) {
    const RECT all{0, 0, 32, 32};
    HBRUSH const red = ::CreateSolidBrush(RGB(255, 0, 0));
    ::FillRect(canvas.Context(), &all, red);
    ::DeleteObject(red);
    DrawMark(canvas.Context(), mark, {0, 0, 32, 32}, kPaper, kInk);
  };
  const auto is_pale = [](COLORREF one) { return GetGValue(one) > 150; };
  const Canvas playing(32, 32);
  paint(playing, controls::RowMark::kPlaying);
  EXPECT_TRUE(is_pale(playing.At(13, 22))) << "the ring";
  EXPECT_TRUE(IsDark(playing.At(22, 15))) << "the disc";
  EXPECT_TRUE(is_pale(playing.At(22, 22))) << "the triangle";
  EXPECT_TRUE(IsDark(playing.At(28, 19))) << "beside it";
  const Canvas waiting(32, 32);
  paint(waiting, controls::RowMark::kWaiting);
  for (const int dot : {18, 22, 26}) EXPECT_TRUE(is_pale(waiting.At(dot, 22))) << dot;
  EXPECT_TRUE(IsDark(waiting.At(22, 26)));
}

TEST(Win32GlyphTest, EachPartOfASymbolIsDrawn) {
  using Kind = front::GlyphPart::Kind;
  for (int number = 1; number <= static_cast<int>(controls::Glyph::kFolder); ++number) {
    const Canvas canvas(72, 72);
    DrawGlyph(canvas.Context(), controls::Glyph{number}, {4, 4, 64, 64}, kInk);
    for (const front::GlyphPart& part : front::PartsOf(controls::Glyph{number})) {
      const bool round = part.kind == Kind::kCircle || part.kind == Kind::kDisc || part.kind == Kind::kArc;
      const front::GlyphPoint end = {part.points[0].x + (round ? part.radius.x : 0.0), part.points[0].y};
      const int x = std::clamp(static_cast<int>(4 + end.x * 4), 2, 69);
      const int y = std::clamp(static_cast<int>(4 + end.y * 4), 2, 69);
      EXPECT_GT(canvas.Count({x - 2, y - 2, x + 3, y + 3}, IsDark), 0)
          << number << " at " << end.x << ", " << end.y;
      if (part.kind != Kind::kOutline) continue;
      const front::GlyphPoint& last = part.points.back();
      const int middle_x = static_cast<int>(4 + (part.points[0].x + last.x) * 2);
      const int middle_y = static_cast<int>(4 + (part.points[0].y + last.y) * 2);
      EXPECT_GT(canvas.Count({middle_x - 2, middle_y - 2, middle_x + 3, middle_y + 3}, IsDark), 0)
          << number << " returns to its first point";
    }
  }
}

TEST(Win32InitialDetailsTest, WideLettersAreMadeToFitAndTheAerialHasItsMast) {
  const Scale scale(96);
  const auto is_white = [](const Pixels& icon, int x, int y) {
    return icon.bytes[static_cast<std::size_t>(y * 64 + x) * 4] > 200;
  };
  const Pixels wide = DrawInitialIcon(u"WWW", {0, 0, 0}, 64, scale.Get(Scale::Font::kBold));
  int left = 64;
  int right = -1;
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      if (!is_white(wide, x, y)) continue;
      left = std::min(left, x);
      right = std::max(right, x);
    }
  }
  EXPECT_NEAR(right - left + 1, 64 * 0.8, 3);
  const Pixels aerial = DrawInitialIcon({}, {0, 0, 0}, 64, scale.Get(Scale::Font::kBold));
  EXPECT_TRUE(is_white(aerial, 32, 45));
}

class Win32ButtonDetailsTest : public Win32WindowTest {
 protected:
  static constexpr int kWidth = 200;
  static constexpr int kHeight = 30;

  void Show() {
    button.Move({0, 0, kWidth * 15, kHeight * 15});
    inventory = {{"button", &button}};
    Open();
    ::SetFocus(nullptr);
  }
  void Paint(Canvas& canvas) { PaintButton(button, Of(button), canvas.Context(), window->GetScale()); }

  controls::CommandButton button;
};

TEST_F(Win32ButtonDetailsTest, ButtonWithTheKeyboardHasAFrameInsideItsBorder) {
  Show();
  Canvas plain(kWidth, kHeight);
  Paint(plain);
  ::SetFocus(Of(button));
  Canvas focused(kWidth, kHeight);
  Paint(focused);
  EXPECT_EQ(Differing(plain, focused, {0, 0, kWidth, 3}), 0);
  EXPECT_GT(Differing(plain, focused, {0, 3, kWidth, 4}), kWidth / 3);
  EXPECT_EQ(Differing(plain, focused, {4, 4, kWidth - 4, kHeight - 4}), 0);
}

TEST_F(Win32ButtonDetailsTest, ThemesButtonHasABorderOnTheWindowsGroundAndAGrayTextWhenDisabled) {
  button.SetCaption(u"MMMM");
  Show();
  Canvas canvas(kWidth, kHeight);
  Paint(canvas);
  EXPECT_NE(canvas.At(0, 0), kPaper) << "the corner";
  const COLORREF inside = canvas.At(20, kHeight / 2);
  EXPECT_GT(canvas.Count({20, 0, 180, 3}, [inside](COLORREF one) { return one != inside; }), 100);
  EXPECT_GT(canvas.Count(IsDark), 40);
  button.SetEnabled(false);
  Canvas disabled(kWidth, kHeight);
  Paint(disabled);
  EXPECT_EQ(disabled.Count({6, 4, kWidth - 6, kHeight - 4}, IsDark), 0);
}

}  // namespace
}  // namespace platform::win32
