#include <gtest/gtest.h>

#include <set>

#include "platform/front/colors.h"
#include "platform/front/following.h"
#include "platform/front/glyph_shapes.h"
#include "platform/front/named_lines.h"
#include "platform/front/typed_text.h"

namespace platform::front {
namespace {

constexpr auto kNamed = controls::LabelLook::kNamedValues;

TEST(NamedLinesTest, NameEndsAtTheFirstColonBeforeABlank) {
  const auto lines =
      LinesOf(u"Genre: Jazz: Bebop\r\nhttp://radio.example/\r: ohne\nBitrate: 128\r\n\r\n", kNamed);
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[0].name, u"Genre:");
  EXPECT_EQ(lines[0].value, u"Jazz: Bebop");
  EXPECT_EQ(lines[1].name, u"");
  EXPECT_EQ(lines[1].value, u"http://radio.example/");
  EXPECT_EQ(lines[2].name, u"");
  EXPECT_EQ(lines[2].value, u": ohne");
  EXPECT_EQ(Joined(lines[3]), u"Bitrate: 128");
}

TEST(NamedLinesTest, TextsOfAnotherLookHaveNoNames) {
  const auto lines = LinesOf(u"Titel: Lied", controls::LabelLook::kTitle);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].name, u"");
  EXPECT_EQ(lines[0].value, u"Titel: Lied");
  EXPECT_EQ(LinesOf(u"", kNamed).size(), 1U);
}

TEST(TypedTextTest, WhatTheProgramWroteSinceReplacesWhatWasTyped) {
  controls::TextBox box;
  TypedText typed(box);
  int writes = 0;
  const auto write = [&] { ++writes; };
  const int basis = typed.Basis();
  typed.Take(basis, u"Jäger", write);
  EXPECT_EQ(writes, 1);
  box.SetText(u"Köln");
  EXPECT_TRUE(typed.ProgramWrote());
  EXPECT_FALSE(typed.ProgramWrote());
  typed.Take(basis, u"Jägerin", write);
  EXPECT_EQ(writes, 1);
}

TEST(FollowingTest, FlagIsSetInsideAlone) {
  bool following = false;
  {
    const Following outer(following);
    { const Following inner(following); }
    EXPECT_TRUE(following);
  }
  EXPECT_FALSE(following);
}

TEST(ColorsTest, ContrastIsThatOfBlackAndWhite) {
  EXPECT_NEAR(ContrastOf({0, 0, 0}, {255, 255, 255}), 21.0, 1e-9);
  EXPECT_NEAR(ContrastOf({12, 34, 56}, {12, 34, 56}), 1.0, 1e-9);
}

TEST(ColorsTest, UnreadableColourMovesTowardsTheText) {
  const Rgb black{0, 0, 0};
  const Rgb white{255, 255, 255};
  const Rgb red{0xd0, 0x20, 0x20};
  EXPECT_EQ(Readable(red, white, black, kContrastOfTexts), red);
  const Rgb yellow = Readable({255, 255, 0}, white, black, kContrastOfTexts);
  EXPECT_GE(ContrastOf(yellow, white), kContrastOfTexts);
  EXPECT_GT(yellow.red, yellow.blue) << "no further than it takes";
}

TEST(ColorsTest, ColourOfANameIsTheSameInEveryRunAndReadableUnderWhite) {
  EXPECT_EQ(ColorOfName(u"radio lichtung"), (Rgb{0xa7, 0x46, 0xd1}));
  EXPECT_EQ(ColorOfName(u""), (Rgb{0x76, 0x77, 0x1e}));
  for (char16_t letter = u'a'; letter < u'ä'; ++letter) {
    EXPECT_GE(ContrastOf(ColorOfName(controls::Text(1, letter)), {255, 255, 255}), kContrastOfTexts);
  }
}

TEST(GlyphShapesTest, EveryGlyphHasPartsInsideTheSquareAndNoneIsLikeAnother) {
  std::set<std::vector<double>> seen;
  EXPECT_TRUE(PartsOf(controls::Glyph::kNone).empty());
  for (int number = 1; number <= static_cast<int>(controls::Glyph::kFolder); ++number) {
    std::vector<double> numbers;
    for (const GlyphPart& part : PartsOf(controls::Glyph{number})) {
      ASSERT_FALSE(part.points.empty());
      for (const auto& [x, y] : part.points) {
        numbers.insert(numbers.end(), {x, y});
        EXPECT_GE(std::min(x - part.radius.x, y - part.radius.y), 0.0) << number;
        EXPECT_LE(std::max(x + part.radius.x, y + part.radius.y), kGlyphUnits) << number;
      }
    }
    EXPECT_FALSE(numbers.empty()) << number;
    EXPECT_TRUE(seen.insert(numbers).second) << number;
  }
}

}  // namespace
}  // namespace platform::front
