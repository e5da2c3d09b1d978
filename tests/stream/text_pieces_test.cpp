#include "stream/text_pieces.h"

#include <gtest/gtest.h>

namespace stream {
namespace {

TEST(TextPieces, PieceOfCountsFromZeroAndKnowsItsEnd) {
  EXPECT_EQ(PieceOf(u"a=b=c", u'=', 0), TextView(u"a"));
  EXPECT_EQ(PieceOf(u"a=b=c", u'=', 1), TextView(u"b"));
  EXPECT_EQ(PieceOf(u"a=b=c", u'=', 2), TextView(u"c"));
  EXPECT_EQ(PieceOf(u"a=b=c", u'=', 3), std::nullopt);
  EXPECT_EQ(PieceOf(u"a=", u'=', 1), TextView(u""));
}

TEST(TextPieces, AnEmptyTextHasNoPieces) { EXPECT_EQ(PieceOf(u"", u'=', 0), std::nullopt); }

TEST(TextPieces, RemoveAllTakesEveryOccurrence) {
  EXPECT_EQ(RemoveAll(u"'it''s'", u"'"), u"its");
  EXPECT_EQ(RemoveAll(u"http://a/http://b", u"http://"), u"a/b");
  EXPECT_EQ(RemoveAll(u"", u"x"), u"");
}

TEST(TextPieces, ComparesWithoutCaseInAsciiOnly) {
  EXPECT_TRUE(EqualsIgnoringCase(u"Icy-Name", u"icy-NAME"));
  EXPECT_FALSE(EqualsIgnoringCase(u"icy-name", u"icy-names"));
  EXPECT_FALSE(EqualsIgnoringCase(u"\u00DC", u"\u00FC"));
  EXPECT_TRUE(StartsWithIgnoringCase(u"HTTP://x", u"http://"));
  EXPECT_FALSE(StartsWithIgnoringCase(u"HTT", u"http://"));
  EXPECT_TRUE(ContainsIgnoringCase(u"xSTREAMTITLEx", u"StreamTitle"));
  EXPECT_FALSE(ContainsIgnoringCase(u"StreamTitl", u"StreamTitle"));
}

}  // namespace
}  // namespace stream
