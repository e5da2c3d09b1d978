// The natural order of names, as every system's adapter must give it.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "text_under_test.h"

namespace platform {
namespace {

std::string Shown(const Text& text) {
  return under_test::TextConversion().WideCharToMultiByte(CodePage::kUtf8, text);
}

int Sign(int value) { return (value > 0) - (value < 0); }

struct Pair {
  std::string name;
  Text first;
  Text second;
  int order;
};

void PrintTo(const Pair& pair, std::ostream* stream) {
  *stream << '"' << Shown(pair.first) << "\" and \"" << Shown(pair.second) << '"';
}

class NaturalOrder : public testing::TestWithParam<Pair> {};

TEST_P(NaturalOrder, ComparesAsExpectedInBothDirections) {
  under_test::StringOrder order;
  const Pair& pair = GetParam();
  if (under_test::DecidesItself(pair.name)) GTEST_SKIP() << "where these stand is the system's own choice";
  EXPECT_EQ(Sign(order.StrCmpLogicalW(pair.first, pair.second)), pair.order)
      << Shown(pair.first) << " / " << Shown(pair.second);
  EXPECT_EQ(Sign(order.StrCmpLogicalW(pair.second, pair.first)), -pair.order)
      << Shown(pair.second) << " / " << Shown(pair.first);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NaturalOrder,
    testing::Values(
        Pair{"ANumberCountsAsANumber", u"Radio 2", u"Radio 10", -1},
        Pair{"LetterCaseMakesNoDifference", u"radio 2", u"RADIO 2", 0},
        Pair{"DigitsBehindAPointAreANumberToo", u"1.5", u"1.10", -1},
        Pair{"NothingStandsFirst", u"", u"a", -1},
        Pair{"ElevenAndTwelveDigits", u"a99999999999", u"a100000000000", -1},
        Pair{"NumbersBeyond32Bits", u"a1", u"a4294967297", -1},
        Pair{"UmlautsStandInTheirGermanPlaces", u"Äpfel", u"Zebra", -1},
        Pair{"UmlautsOfAnyCaseAreEqual", u"ä", u"Ä", 0}, Pair{"AccentsStandWithTheirLetter", u"é", u"f", -1},
        Pair{"PunctuationComesBeforeDigits", u"#a", u"1", -1},
        Pair{"BlankComesBeforeLetters", u"1LIVE", u"1 LIVE", 1},
        Pair{"SecondNumberDecidesAfterTheFirst", u"x10y2", u"x10y10", -1},
        Pair{"BeginningOfALongerTextComesFirst", u"BBC Radio 4", u"BBC Radio 4 Extra", -1},
        Pair{"NothingEqualsNothing", u"", u"", 0},
        Pair{"SharpSStandsBehindItsTwoLetters", u"Strasse", u"Straße", -1},
        Pair{"SharpSStandsBeforeTheNextLetter", u"Straße", u"Strate", -1},
        Pair{"CapitalsEqualSmallLetters", u"Strasse", u"STRASSE", 0},
        Pair{"LetterComesBeforeItsUmlaut", u"a", u"ä", -1}, Pair{"UmlautDecidesLast", u"äb", u"ac", -1},
        Pair{"LetterComesBeforeItsAccent", u"e", u"é", -1}, Pair{"HyphenComesBeforeDigits", u"-", u"0", -1},
        Pair{"BlankComesBeforeDigits", u" ", u"0", -1}, Pair{"DigitsComeBeforeLetters", u"9", u"a", -1},
        Pair{"NothingComesBeforeABlank", u"", u" ", -1},
        Pair{"LeadingZerosMakeNoDifference", u"007", u"7", 0},
        Pair{"LastLetterStandsBehindAnUmlaut", u"Zebra", u"Äpfel", 1}),
    [](const testing::TestParamInfo<Pair>& pair) { return pair.param.name; });

TEST(StringOrder, NumbersOfAnyLengthCompareByTheirNumber) {
  if (under_test::DecidesItself("NumbersOfAnyLength")) GTEST_SKIP() << "the system's own choice";
  under_test::StringOrder order;
  std::vector<Text> ascending;
  for (const std::size_t digits : {1U, 2U, 200U, 252U, 253U, 254U, 255U, 256U, 400U, 508U, 509U, 1000U}) {
    ascending.push_back(u"Kanal 1" + Text(digits - 1, u'0'));
    if (digits > 1) ascending.push_back(u"Kanal 1" + Text(digits - 2, u'0') + u"7");
    ascending.push_back(u"Kanal " + Text(digits, u'9'));
  }
  for (std::size_t index = 1; index < ascending.size(); ++index) {
    EXPECT_LT(order.StrCmpLogicalW(ascending[index - 1], ascending[index]), 0) << index;
    EXPECT_GT(order.StrCmpLogicalW(ascending[index], ascending[index - 1]), 0) << index;
  }
  const Text padded = u"Kanal " + Text(3000, u'0') + u"12";
  EXPECT_EQ(order.StrCmpLogicalW(padded, u"Kanal 12"), 0);
}

std::vector<Text> MixedNames() {
  const std::vector<Text> pieces = {u"",   u" ",  u"a",       u"A",  u"ä",    u"z", u"ß", u"ss", u"é",
                                    u"1",  u"01", u"10",      u"9",  u"#",    u"-", u".", u"'",  u"Ω",
                                    u"日", u"😀",  u"e\u0301", u"\t", u"\x01", u"٣", u"ı"};
  std::vector<Text> names;
  for (const Text& first : pieces) {
    for (const Text& second : pieces) names.push_back(first + second);
  }
  names.push_back(Text(300, u'9') + u"x");
  names.push_back(Text(300, u'9') + u" x");
  names.push_back(Text(1, char16_t{0xD83D}));
  return names;
}

TEST(StringOrder, IsSymmetricAndTransitiveOverAMixedList) {
  if (under_test::DecidesItself("MixedList")) GTEST_SKIP() << "the system's own choice";
  under_test::StringOrder order;
  std::vector<Text> names = MixedNames();
  std::stable_sort(names.begin(), names.end(), [&](const Text& first, const Text& second) {
    return order.StrCmpLogicalW(first, second) < 0;
  });
  // Numbers the sorted names so that equal neighbours share a number; a transitive order then agrees with
  // the numbers for every pair, a cycle anywhere does not.
  std::vector<int> ranks(names.size(), 0);
  for (std::size_t index = 1; index < names.size(); ++index) {
    const bool equal = order.StrCmpLogicalW(names[index - 1], names[index]) == 0;
    ranks[index] = ranks[index - 1] + (equal ? 0 : 1);
  }
  for (std::size_t first = 0; first < names.size(); ++first) {
    for (std::size_t second = 0; second < names.size(); ++second) {
      ASSERT_EQ(Sign(order.StrCmpLogicalW(names[first], names[second])), Sign(ranks[first] - ranks[second]))
          << Shown(names[first]) << " / " << Shown(names[second]);
    }
  }
}

TEST(StringOrder, SortKeysCompareAsTheTextsDo) {
  under_test::StringOrder order;
  std::vector<Text> names = MixedNames();
  names.push_back(Text(2000, u'x'));  // a key of more than the usual length
  names.push_back(Text(2000, u'x') + u"y");
  names.push_back(u"");
  std::stable_sort(names.begin(), names.end(), [&](const Text& first, const Text& second) {
    return order.StrCmpLogicalW(first, second) < 0;
  });
  for (std::size_t index = 1; index < names.size(); ++index) {
    const Text& first = names[index - 1];
    const Text& second = names[index];
    const int expected = Sign(order.StrCmpLogicalW(first, second));
    ASSERT_EQ(Sign(order.SortKey(first).compare(order.SortKey(second))), expected)
        << Shown(first) << " / " << Shown(second);
  }
}

}  // namespace
}  // namespace platform
