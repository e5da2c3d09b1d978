#include "ui/title_parts.h"

#include <gtest/gtest.h>

#include <utility>

namespace ui {
namespace {

using app::Text;
using Parts = std::pair<Text, Text>;

Parts Split(const Text& sent) {
  const TitleParts parts = SplitTitle(sent);
  return {parts.artist, parts.title};
}

TEST(TitlePartsTest, ArtistEndsAtTheFirstHyphenBetweenBlanks) {
  EXPECT_EQ(Split(u"Künstler - Lied"), Parts(u"Künstler", u"Lied"));
  EXPECT_EQ(Split(u"A-ha - Lied - Fassung 2"), Parts(u"A-ha", u"Lied - Fassung 2"));
}

TEST(TitlePartsTest, TitleWithoutBothSidesStaysWhole) {
  EXPECT_EQ(Split(u"Nachrichten"), Parts(u"", u"Nachrichten"));
  EXPECT_EQ(Split(u" - Lied"), Parts(u"", u"- Lied"));
  EXPECT_EQ(Split(u"Künstler - "), Parts(u"", u"Künstler -"));
  EXPECT_EQ(Split(u""), Parts(u"", u""));
  EXPECT_EQ(Split(u" - "), Parts(u"", u"-"));
}

TEST(TitlePartsTest, BlanksRoundThePartsAreLeftOut) {
  EXPECT_EQ(Split(u"  Künstler  -  Lied "), Parts(u"Künstler", u"Lied"));
}

}  // namespace
}  // namespace ui
