#include "platform/win32/ui/drawing.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <vector>

#include "platform/win32/ui/initial_icon.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/text_drawing.h"
#include "tests/platform/win32/ui/canvas.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {
namespace {

TEST(Win32DrawingTest, EveryGlyphIsDrawnInsideItsSquareAndNoneIsLikeAnother) {
  std::set<std::vector<bool>> seen;
  for (int number = 1; number <= static_cast<int>(controls::Glyph::kFolder); ++number) {
    const Canvas canvas(40, 32);
    DrawGlyph(canvas.Context(), controls::Glyph{number}, {4, 0, 32, 32}, RGB(0, 0, 0));
    std::vector<bool> shape;
    for (int y = 0; y < 32; ++y) {
      for (int x = 4; x < 36; ++x) shape.push_back(IsDark(canvas.At(x, y)));
    }
    EXPECT_TRUE(seen.insert(shape).second) << number;
    EXPECT_GT(canvas.Count(IsDark), 30) << number;
    EXPECT_EQ(canvas.Count({0, 0, 4, 32}, IsDark) + canvas.Count({36, 0, 40, 32}, IsDark), 0) << number;
  }
  const Canvas empty(8, 8);
  DrawGlyph(empty.Context(), controls::Glyph::kNone, {0, 0, 8, 8}, RGB(0, 0, 0));
  EXPECT_EQ(empty.Count(IsDark), 0);
}

class Win32TextDrawingTest : public testing::Test {
 protected:
  Scale scale_{96};
  Canvas canvas_{300, 30};
  SelectedFont font_{canvas_.Context(), scale_.Get(Scale::Font::kPlain)};
};

TEST_F(Win32TextDrawingTest, CutAddressKeepsItsBeginningAndItsEnd) {
  const Text address = u"http://radio.example/eine/lange/adresse/stream.mp3";
  const Text cut = CutInTheMiddle(canvas_.Context(), address, 150);
  EXPECT_LE(WidthOf(canvas_.Context(), cut), 150);
  EXPECT_GT(WidthOf(canvas_.Context(), cut), 130);
  EXPECT_TRUE(cut.starts_with(u"http")) << "beginning";
  EXPECT_TRUE(cut.ends_with(u".mp3")) << "end";
  EXPECT_NE(cut.find(u'\u2026'), Text::npos);
  EXPECT_EQ(CutInTheMiddle(canvas_.Context(), u"kurz", 150), u"kurz");
}

TEST_F(Win32TextDrawingTest, NoHalfOfACharacterIsLeft) {
  const Text text = u"\U0001F3B5\U0001F3B5\U0001F3B5\U0001F3B5\U0001F3B5";
  const int dots = WidthOf(canvas_.Context(), u"\u2026");
  for (int room = 0; room < WidthOf(canvas_.Context(), text); room += 3) {
    const Text cut = CutInTheMiddle(canvas_.Context(), text, std::max(room, dots));
    EXPECT_EQ((cut.size() - 1) % 2, 0U) << room;
    EXPECT_FALSE(cut.front() >= 0xdc00 && cut.front() <= 0xdfff) << room;
  }
}

TEST_F(Win32TextDrawingTest, WordThatJustFitsIsNotBroken) {
  HDC context = canvas_.Context();
  const Text word = u"Kurzwellenempfang";
  const int width = WidthOf(context, word);
  for (const char16_t separator : {u' ', u'\n'}) {
    const Text text = word + separator + word;
    EXPECT_EQ(WithLongWordsBroken(context, text, width), text);
    EXPECT_EQ(WithLongWordsBroken(context, text + separator, width), text + separator) << "at the end";
    EXPECT_NE(WithLongWordsBroken(context, text, width - 1), text);
  }
}

TEST_F(Win32TextDrawingTest, LongWordsAreBrokenAndShortOnesAreNot) {
  HDC context = canvas_.Context();
  EXPECT_EQ(WithLongWordsBroken(context, u"kurze Wörter auf\neiner Zeile", 150),
            u"kurze Wörter auf\neiner Zeile");
  const Text word(60, u'm');
  const Text broken = WithLongWordsBroken(context, u"vorn " + word + u" hinten", 150);
  EXPECT_TRUE(broken.starts_with(u"vorn mm"));
  EXPECT_TRUE(broken.ends_with(u"m hinten"));
  Text without;
  std::ranges::copy_if(broken, std::back_inserter(without), [](char16_t unit) { return unit != u'\n'; });
  EXPECT_EQ(without, u"vorn " + word + u" hinten");
  EXPECT_GT(broken.size(), without.size());
  const Text narrow = WithLongWordsBroken(context, u"\U0001F3B5\U0001F3B5", 1);
  EXPECT_EQ(narrow, u"\U0001F3B5\n\U0001F3B5") << "no half of a character, and an end";
}

constexpr Color kBlack = RGB(0, 0, 0);
constexpr Color kWhite = RGB(255, 255, 255);
constexpr Color kYellow = RGB(255, 255, 0);

TEST(Win32PaletteTest, HighContrastHasOnlyTheUsersOwnColours) {
  EXPECT_EQ(StripeColor(kBlack, kYellow, Contrast::kHigh), kBlack);
  EXPECT_EQ(FadedColor(kBlack, kYellow, Contrast::kHigh), kYellow);
  EXPECT_EQ(WarningColor(kBlack, kYellow, Contrast::kHigh), kYellow);
  for (const Loudness one : {Loudness::kQuiet, Loudness::kLoud, Loudness::kVeryLoud})
    EXPECT_EQ(ColorOf(one, Contrast::kHigh), ::GetSysColor(COLOR_HIGHLIGHT));
  const Ink ink = SelectionInk(SelectionOf::kListWithoutKeyboard, Contrast::kHigh);
  EXPECT_EQ(ink.ground, ::GetSysColor(COLOR_HIGHLIGHT));
  EXPECT_EQ(ink.text, ::GetSysColor(COLOR_HIGHLIGHTTEXT));
}

TEST(Win32PaletteTest, UsualColoursAreMixedAndStayReadable) {
  const auto contrast = [](Color one, Color other) {
    return front::ContrastOf(FromSystem(one), FromSystem(other));
  };
  for (const auto& [ground, text] : {std::pair(kWhite, kBlack), std::pair(kBlack, kWhite)}) {
    const Color stripe = StripeColor(ground, text, Contrast::kUsual);
    EXPECT_NE(stripe, ground);
    EXPECT_LT(contrast(stripe, ground), 1.2);
    const Color faded = FadedColor(ground, text, Contrast::kUsual);
    EXPECT_NE(faded, text);
    EXPECT_GE(contrast(faded, ground), front::kContrastOfTexts);
    const Color warning = WarningColor(ground, text, Contrast::kUsual);
    EXPECT_GT(GetRValue(warning), GetGValue(warning) + 100);
    EXPECT_GE(contrast(warning, ground), front::kContrastOfTexts);
  }
  EXPECT_EQ((std::set{ColorOf(Loudness::kQuiet, Contrast::kUsual), ColorOf(Loudness::kLoud, Contrast::kUsual),
                      ColorOf(Loudness::kVeryLoud, Contrast::kUsual)})
                .size(),
            3U);
}

TEST(Win32PaletteTest, SelectionIsSeenWithoutTheKeyboardToo) {
  const auto contrast = [](Color one, Color other) {
    return front::ContrastOf(FromSystem(one), FromSystem(other));
  };
  const Ink pale = SelectionInk(SelectionOf::kListWithoutKeyboard, Contrast::kUsual);
  const Color ground = ::GetSysColor(COLOR_WINDOW);
  EXPECT_GT(contrast(pale.ground, StripeColor(ground, ::GetSysColor(COLOR_WINDOWTEXT), Contrast::kUsual)),
            1.25);
  EXPECT_GE(contrast(pale.ground, pale.text), front::kContrastOfTexts);
  EXPECT_NE(pale.ground, SelectionInk(SelectionOf::kListWithKeyboard, Contrast::kUsual).ground);
}

TEST(Win32ScaleTest, TitleIsBoldAndLargerThanOtherText) {
  const Scale scale(96);
  const auto height = [&scale](Scale::Font font) {
    LOGFONTW face{};
    ::GetObjectW(scale.Get(font), sizeof face, &face);
    EXPECT_EQ(face.lfWeight, FW_BOLD);
    return std::abs(face.lfHeight);
  };
  EXPECT_GT(height(Scale::Font::kTitle), height(Scale::Font::kBold));
}

TEST(Win32InitialIconTest, InitialIsTheFirstLetterOrDigitAsACapital) {
  const std::pair<const char16_t*, const char16_t*> expected[] = {{u"Radio Lichtung", u"R"},
                                                                  {u"radio", u"R"},
                                                                  {u"  \t mit Blanks", u"M"},
                                                                  {u"100,5 Hit", u"1"},
                                                                  {u"ärzteradio", u"Ä"},
                                                                  {u"a\u0308rzteradio", u"A\u0308"},
                                                                  {u"»Nachtflug«", u"N"},
                                                                  {u"ßonderbar", u"ß"},
                                                                  {u"\U0001F3B5 Klang", u"K"},
                                                                  {u"", u""},
                                                                  {u"..-", u""},
                                                                  {u"\U0001F3B5", u""}};
  for (const auto& [name, initial] : expected) EXPECT_EQ(InitialOf(name), initial);
}

/// Pixels of a colour in an icon.
int CountIn(const Pixels& icon, int red, int green, int blue) {
  int count = 0;
  for (std::size_t at = 0; at < icon.bytes.size(); at += 4) {
    const bool same = icon.bytes[at] == blue && icon.bytes[at + 1] == green && icon.bytes[at + 2] == red &&
                      icon.bytes[at + 3] == 255;
    count += same ? 1 : 0;
  }
  return count;
}

TEST(Win32InitialIconTest, IconHasItsColourAndALetterOrAnAerialInWhite) {
  const Scale scale(96);
  HFONT const font = scale.Get(Scale::Font::kBold);
  std::set<std::vector<std::uint8_t>> pictures;
  // No font has the last one, which no character has been given.
  for (const Text& initial : {Text(u"R"), Text(u"Ä"), Text(u"1"), Text(u"\u0378")}) {
    const Pixels icon = DrawInitialIcon(initial, {0xa7, 0x46, 0xd1}, 64, font);
    EXPECT_GT(CountIn(icon, 0xa7, 0x46, 0xd1), 64 * 64 / 2);
    EXPECT_GT(CountIn(icon, 255, 255, 255), 100);
    EXPECT_EQ(icon.bytes[3], 0) << "the corners are round";
    pictures.insert(icon.bytes);
  }
  EXPECT_EQ(pictures.size(), 4U);
  EXPECT_TRUE(pictures.contains(DrawInitialIcon({}, {0xa7, 0x46, 0xd1}, 64, font).bytes)) << "the aerial";
}

TEST(Win32InitialIconTest, LetterStandsInTheMiddle) {
  const Scale scale(96);
  const Pixels icon = DrawInitialIcon(u"H", {0, 0, 0}, 64, scale.Get(Scale::Font::kBold));
  int left = 64;
  int right = -1;
  for (int at = 0; at < 64 * 64; ++at) {
    if (icon.bytes[static_cast<std::size_t>(at) * 4] < 200) continue;
    left = std::min(left, at % 64);
    right = std::max(right, at % 64);
  }
  EXPECT_NEAR(left, 63 - right, 2);
}

TEST(Win32InitialIconTest, IconsAreKeptButNotWithoutEnd) {
  const Scale scale(96);
  HFONT const font = scale.Get(Scale::Font::kBold);
  InitialIcons icons;
  const Pixels* const first = &icons.Of(u"Radio Köln", 16, font);
  EXPECT_EQ(&icons.Of(u"RADIO KÖLN", 16, font), first) << "whatever the letter case";
  EXPECT_EQ(icons.Kept(), 1U);
  for (char16_t letter = 0x4e00; letter < 0x4e00 + 1000; ++letter) {
    static_cast<void>(icons.Of(Text(1, letter), 4, font));
  }
  EXPECT_GT(icons.Kept(), 1U);
  EXPECT_LE(icons.Kept(), InitialIcons::kMostKept);
}

TEST(Win32ScaleTest, WaitingStationsFontIsBoldAndItalic) {
  const Scale scale(96);
  LOGFONTW face{};
  ::GetObjectW(scale.Get(Scale::Font::kBoldItalic), sizeof face, &face);
  EXPECT_EQ(face.lfWeight, FW_BOLD);
  EXPECT_NE(face.lfItalic, 0);
  ::GetObjectW(scale.Get(Scale::Font::kBold), sizeof face, &face);
  EXPECT_EQ(face.lfItalic, 0);
}

}  // namespace
}  // namespace platform::win32
