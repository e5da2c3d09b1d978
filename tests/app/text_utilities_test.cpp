#include "app/text/text_utilities.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <limits>
#include <thread>
#include <vector>

#include "tests/support/plain_text_conversion.h"

namespace app {
namespace {

using namespace std::string_literals;

constexpr std::int32_t kMany = 2048;

class TextUtilitiesTest : public testing::Test {
 protected:
  test_support::PlainTextConversion conversion_;
};

TEST_F(TextUtilitiesTest, IsUTF8IsTrueForTheBytesOfGruesseInUtf8AndFalseInASingleByteCodePage) {
  EXPECT_TRUE(
      IsUTF8("Gr\xC3\xBC\xC3\x9F"
             "e",
             kMany));
  EXPECT_FALSE(
      IsUTF8("Gr\xFC\xDF"
             "e",
             kMany));
}

TEST_F(TextUtilitiesTest, IsUTF8IsFalseForPlainAsciiAndForNothing) {
  EXPECT_FALSE(IsUTF8("Radio Eins", kMany));
  EXPECT_FALSE(IsUTF8("", kMany));
  EXPECT_FALSE(IsUTF8("\xC3\xBC", 0));
}

TEST_F(TextUtilitiesTest, IsUTF8DecidesACutSequenceAtTheEndByTheSequencesBeforeIt) {
  EXPECT_FALSE(IsUTF8("abc\xC3", kMany));
  EXPECT_TRUE(IsUTF8("\xC3\xBC\xC3", kMany));
  EXPECT_FALSE(IsUTF8("a\xC3\xBC", 2)) << "the count cuts the sequence";
  EXPECT_TRUE(IsUTF8("\xC3\xBC\xE2\x82\xAC", 4));
  EXPECT_TRUE(
      IsUTF8("\xC3\xBC\xE2"
             "ab\x80",
             4))
      << "what a cut sequence holds is not looked at";
}

TEST_F(TextUtilitiesTest, IsUTF8WithANegativeCountIsFalseAndWithACountBeyondTheEndExaminesAll) {
  EXPECT_FALSE(IsUTF8("\xC3\xBC", -1));
  EXPECT_FALSE(IsUTF8("\xC3\xBC", std::numeric_limits<std::int32_t>::min()));
  EXPECT_TRUE(IsUTF8("\xC3\xBC", std::numeric_limits<std::int32_t>::max()));
  EXPECT_FALSE(
      IsUTF8("\xC3\xBC"
             "a\x80",
             std::numeric_limits<std::int32_t>::max()));
}

TEST_F(TextUtilitiesTest, IsUTF8PassesOverTheBytes254And255) {
  EXPECT_FALSE(
      IsUTF8("\xFE"
             "A",
             kMany));
  EXPECT_TRUE(IsUTF8("\xFE\xFF\xC3\xBC\xFF", kMany));
}

TEST_F(TextUtilitiesTest, IsUTF8FailsAtAContinuationByteWithoutALead) {
  EXPECT_FALSE(IsUTF8("\x80", kMany));
  EXPECT_FALSE(IsUTF8("\xC3\xBC\xBF", kMany));
  EXPECT_FALSE(IsUTF8("\xFE\x80", kMany));
}

TEST_F(TextUtilitiesTest, IsUTF8FailsWhenAContinuationByteIsMissing) {
  EXPECT_FALSE(
      IsUTF8("\xC3"
             "ab",
             kMany));
  EXPECT_FALSE(
      IsUTF8("\xC3\xBC\xE2\x82"
             "abc",
             kMany));
  EXPECT_FALSE(IsUTF8("\xC3\xC3\xBC", kMany));
}

TEST_F(TextUtilitiesTest, IsUTF8AcceptsFormsOfTwoToSixBytes) {
  EXPECT_TRUE(IsUTF8("\xC3\xBC", kMany));
  EXPECT_TRUE(IsUTF8("\xE2\x82\xAC", kMany));
  EXPECT_TRUE(IsUTF8("\xF0\x9F\x98\x80", kMany));
  EXPECT_TRUE(IsUTF8("\xF8\x88\x80\x80\x80", kMany));
  EXPECT_TRUE(IsUTF8("\xFC\x84\x80\x80\x80\x80", kMany));
  EXPECT_FALSE(IsUTF8("\xFC\x84\x80\x80\x80", kMany));
}

TEST_F(TextUtilitiesTest, IsUTF8DrawsTheLinesBetweenTheKindsOfBytes) {
  EXPECT_TRUE(IsUTF8("\x7F\xC3\xBC", kMany)) << "127 is plain";
  EXPECT_FALSE(IsUTF8("\xC3\x7F", kMany)) << "and continues nothing";
  EXPECT_TRUE(IsUTF8("\xC0\x80", kMany)) << "192 leads, 128 continues";
  EXPECT_TRUE(IsUTF8("\xC0\xBF", kMany)) << "191 continues";
  EXPECT_FALSE(IsUTF8("\xC0\xC0", kMany)) << "192 does not";
  EXPECT_TRUE(IsUTF8("\xFD\x84\x80\x80\x80\x80", kMany)) << "253 leads";
}

TEST_F(TextUtilitiesTest, IsUTF8TakesByteSpansToo) {
  const std::vector<std::byte> bytes = {std::byte{0xC3}, std::byte{0xBC}};
  EXPECT_TRUE(IsUTF8(bytes, 2));
  EXPECT_FALSE(IsUTF8(bytes, 1));
}

TEST_F(TextUtilitiesTest, BytesOfAnUnknownKindAreDecodedAsUtf8WhereTheyAreUtf8) {
  EXPECT_EQ(Decoded(conversion_, "K\xC3\xBC"), u"K\u00FC");
  EXPECT_EQ(Decoded(conversion_, "K\xFC\x80"), u"K\u00FC\u20AC");
  EXPECT_EQ(Decoded(conversion_, "K"), u"K");
  EXPECT_EQ(Decoded(conversion_, std::string(3000, 'K') + "\xC3\xBC"), Text(3000, u'K') + u"\u00FC")
      << "all bytes count";
}

TEST_F(TextUtilitiesTest, ByteStringsCarryUtf8ThroughTheAnsiCodePage) {
  EXPECT_EQ(TextToUtf8ByteString(conversion_, u"Grüße €"), u"GrÃ¼ÃŸe â‚¬");
  EXPECT_EQ(Utf8ByteStringToText(conversion_, u"GrÃ¼ÃŸe â‚¬"), u"Grüße €");
  EXPECT_EQ(Utf8ByteStringToText(conversion_, u""), u"");
  EXPECT_EQ(TextToUtf8ByteString(conversion_, u""), u"");
}

TEST_F(TextUtilitiesTest, ByteStringsWithTheFiveUnassignedBytesComeBack) {
  const Text text = u"\u0401\u040D\u040F\u0410\u041D \U0001F600";
  EXPECT_EQ(Utf8ByteStringToText(conversion_, TextToUtf8ByteString(conversion_, text)), text);
}

TEST_F(TextUtilitiesTest, MalformedByteStringsDecodeToReplacementCharacters) {
  EXPECT_EQ(Utf8ByteStringToText(conversion_, u"Grüße"), u"Gr\uFFFD\uFFFDe");
}

TEST_F(TextUtilitiesTest, Utf8BytesGoBothWays) {
  EXPECT_EQ(TextToUtf8Bytes(conversion_, u"Köln"), "K\xC3\xB6ln");
  EXPECT_EQ(Utf8BytesToText(conversion_, "K\xC3\xB6ln"), u"Köln");
  EXPECT_EQ(TextToUtf8Bytes(conversion_, u""), "");
  EXPECT_EQ(Utf8BytesToText(conversion_, ""), u"");
}

Text Replaced(Text text, std::vector<Text> pairs) { return ReplaceM(std::move(text), pairs); }

TEST_F(TextUtilitiesTest, ReplaceMReplacesEveryOccurrence) {
  EXPECT_EQ(Replaced(u"a-b-c", {u"-", u"+"}), u"a+b+c");
  EXPECT_EQ(Replaced(u"a-b", {}), u"a-b");
  EXPECT_EQ(Replaced(u"", {u"a", u"b"}), u"");
}

TEST_F(TextUtilitiesTest, ReplaceMWorksOffThePairsInOrder) {
  EXPECT_EQ(Replaced(u"abc", {u"a", u"b", u"b", u"c", u"c", u"x"}), u"xxx");
}

TEST_F(TextUtilitiesTest, ReplaceMDistinguishesLetterCase) {
  EXPECT_EQ(Replaced(u"Aa", {u"a", u"b"}), u"Ab");
}

TEST_F(TextUtilitiesTest, ReplaceMFindsWhatAReplacementHasBroughtTogether) {
  EXPECT_EQ(Replaced(u"aaabbb", {u"ab", u""}), u"");
  EXPECT_EQ(Replaced(u"aabb-ab", {u"ab", u"b"}), u"bb-b");
  EXPECT_EQ(Replaced(u"aaaa", {u"aa", u"a"}), u"a");
  EXPECT_EQ(Replaced(u"xxyyxy", {u"xy", u"yx"}), u"yyyxxx");
}

TEST_F(TextUtilitiesTest, ReplaceMWithAnOddNumberOfTextsUsesTheLastReplacementAgain) {
  EXPECT_EQ(Replaced(u"a-b_c", {u"-", u"+", u"_"}), u"a+b+c");
  EXPECT_EQ(Replaced(u"a-b", {u"-"}), u"ab");
}

TEST_F(TextUtilitiesTest, ReplaceMPassesOverAnEmptySearchText) {
  EXPECT_EQ(Replaced(u"ab", {u"", u"x", u"a", u"c"}), u"cb");
}

TEST_F(TextUtilitiesTest, ReplaceMDoesNotReturnWhenAReplacementContainsItsSearchText) {
  constexpr int kStillAtIt = 42;
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(
      {
        std::thread([] {
          std::this_thread::sleep_for(std::chrono::seconds(1));
          std::_Exit(kStillAtIt);
        }).detach();
        Replaced(u"a-b-c", {u"a", u"aa"});
      },
      testing::ExitedWithCode(kStillAtIt), "");
}

TEST_F(TextUtilitiesTest, GetFileExtGivesWhatFollowsTheLastDotInUpperCase) {
  EXPECT_EQ(GetFileExt(conversion_, u"C:\\Radio\\logo.Ico"), u"ICO");
  EXPECT_EQ(GetFileExt(conversion_, u"lied.mp3"), u"MP3");
  EXPECT_EQ(GetFileExt(conversion_, u"a.tar.gz"), u"GZ");
  EXPECT_EQ(GetFileExt(conversion_, u"a.ä"), u"Ä");
  EXPECT_EQ(GetFileExt(conversion_, u"logo"), u"");
  EXPECT_EQ(GetFileExt(conversion_, u"logo."), u"");
  EXPECT_EQ(GetFileExt(conversion_, u""), u"");
}

TEST_F(TextUtilitiesTest, GetFileExtTakesADotInAFolderNameAsItIs) {
  EXPECT_EQ(GetFileExt(conversion_, u"C:\\Radio.d\\logo"), u"D\\LOGO");
}

TEST_F(TextUtilitiesTest, GetFileFromPathGivesWhatFollowsTheLastBackslash) {
  EXPECT_EQ(GetFileFromPath(u"logo.ico"), u"logo.ico");
  EXPECT_EQ(GetFileFromPath(u"C:\\Radio\\logo.ico"), u"logo.ico");
  EXPECT_EQ(GetFileFromPath(u"C:\\Radio\\"), u"");
  EXPECT_EQ(GetFileFromPath(u""), u"");
}

TEST_F(TextUtilitiesTest, PathsOfMoreThan32767CharactersAreAFailedStep) {
  const Text longest = u"C:\\" + Text(32767 - 5, u'a') + u".b";
  ASSERT_EQ(longest.size(), 32767U);
  EXPECT_EQ(GetFileExt(conversion_, longest), u"B");
  EXPECT_EQ(GetFileFromPath(longest), longest.substr(3));
  EXPECT_EQ(GetFileExt(conversion_, longest + u"c"), std::nullopt);
  EXPECT_EQ(GetFileFromPath(longest + u"c"), std::nullopt);
}

TEST_F(TextUtilitiesTest, ReadablePathHasOneKindOfSeparator) {
  EXPECT_EQ(ReadablePath(u"/home/u/.config\\Radio\\a.ini"), u"/home/u/.config/Radio/a.ini");
  EXPECT_EQ(ReadablePath(u"C:\\Radio/a.ini"), u"C:\\Radio\\a.ini");
  EXPECT_EQ(ReadablePath(u"a.ini"), u"a.ini");
  EXPECT_EQ(ReadablePath(u""), u"");
}

TEST_F(TextUtilitiesTest, AddBackslashAppendsOneUnlessItIsThere) {
  EXPECT_EQ(AddBackslash(u"C:\\Radio"), u"C:\\Radio\\");
  EXPECT_EQ(AddBackslash(u"C:\\Radio\\"), u"C:\\Radio\\");
  EXPECT_EQ(AddBackslash(u"/home/x"), u"/home/x\\");
  EXPECT_EQ(AddBackslash(u""), u"\\");
}

}  // namespace
}  // namespace app
