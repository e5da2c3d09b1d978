#include "app/text/text_helpers.h"

#include <gtest/gtest.h>

#include <vector>

namespace app {
namespace {

using Pieces = std::vector<Text>;

TEST(Trim, DropsBlanksAtBothEndsAndNothingElse) {
  EXPECT_EQ(Trim(u"  a b  "), u"a b");
  EXPECT_EQ(Trim(u"\t a\r\n"), u"\t a\r\n");
  EXPECT_EQ(Trim(u" \u00A0 "), u"\u00A0");
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(Trim(u""), u"");
}

TEST(TrimControls, DropsBlanksAndControlsAtBothEnds) {
  const Text dropped(u"\0\t\r\n\x1F \x7F", 7);
  EXPECT_EQ(TrimControls(dropped + u"a\tb" + dropped), u"a\tb");
  EXPECT_EQ(TrimControls(u"\u0080a\u00A0"), u"\u0080a\u00A0");
  EXPECT_EQ(TrimControls(u"!~"), u"!~") << "the neighbours of what is dropped";
  EXPECT_EQ(TrimControls(dropped), u"");
  EXPECT_EQ(TrimControls(u""), u"");
}

TEST(FirstLine, EndsBeforeTheFirstLineFeed) {
  EXPECT_EQ(FirstLine(u"a\r\nb\nc"), u"a\r");
  EXPECT_EQ(FirstLine(u"\na"), u"");
  EXPECT_EQ(FirstLine(u"a"), u"a");
  EXPECT_EQ(FirstLine(u""), u"");
}

TEST(Split, KeepsEmptyPieces) {
  EXPECT_EQ(Split(u";a;;b;", u";"), (Pieces{u"", u"a", u"", u"b", u""}));
  EXPECT_EQ(Split(u";", u";"), (Pieces{u"", u""}));
}

TEST(Split, SeparatesAtTheWholeSeparatorOnly) {
  EXPECT_EQ(Split(u"a\r\nb\nc\r\r\nd", u"\r\n"), (Pieces{u"a", u"b\nc\r", u"d"}));
  EXPECT_EQ(Split(u"aaa", u"aa"), (Pieces{u"", u"a"}));
}

TEST(Split, AnEmptyTextHasNoPieces) { EXPECT_EQ(Split(u"", u";"), Pieces{}); }

TEST(Split, AnEmptySeparatorGivesTheWholeText) { EXPECT_EQ(Split(u"ab", u""), Pieces{u"ab"}); }

TEST(Join, IsTheCounterpartOfSplit) {
  const Pieces pieces = {u"", u"a", u"", u"b"};
  EXPECT_EQ(Join(pieces, u"; "), u"; a; ; b");
  EXPECT_EQ(Split(Join(pieces, u"; "), u"; "), pieces);
  EXPECT_EQ(Join(Pieces{}, u";"), u"");
  EXPECT_EQ(Join(Pieces{u"a"}, u";"), u"a");
}

TEST(StartsWith, DistinguishesLetterCase) {
  EXPECT_TRUE(StartsWith(u"http://a", u"http"));
  EXPECT_FALSE(StartsWith(u"HTTP://a", u"http"));
  EXPECT_FALSE(StartsWith(u"htt", u"http"));
  EXPECT_TRUE(StartsWith(u"a", u""));
}

}  // namespace
}  // namespace app
