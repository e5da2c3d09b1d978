#include "app/text/numbers.h"

#include <gtest/gtest.h>

#include <limits>

namespace app {
namespace {

TEST(ToInt32, ReadsWholeNumbersWithBlanksAndSigns) {
  EXPECT_EQ(ToInt32(u"16000"), 16000);
  EXPECT_EQ(ToInt32(u"  42 "), 42);
  EXPECT_EQ(ToInt32(u"-7"), -7);
  EXPECT_EQ(ToInt32(u"+7"), 7);
  EXPECT_EQ(ToInt32(u"007"), 7);
  EXPECT_EQ(ToInt32(u"1e3"), 1000);
}

TEST(ToInt32, RoundsHalvesToTheEvenNeighbour) {
  EXPECT_EQ(ToInt32(u"0.5"), 0);
  EXPECT_EQ(ToInt32(u"1.5"), 2);
  EXPECT_EQ(ToInt32(u"2.5"), 2);
  EXPECT_EQ(ToInt32(u"3,5"), 4);
  EXPECT_EQ(ToInt32(u"-2,5"), -2);
  EXPECT_EQ(ToInt32(u"-3.5"), -4);
  EXPECT_EQ(ToInt32(u"2.51"), 3);
  EXPECT_EQ(ToInt32(u".6"), 1);
  EXPECT_EQ(ToInt32(u"5."), 5);
}

TEST(ToInt32, TextsThatAreNoNumberFail) {
  for (const TextView text :
       {u"",  u"  ", u"abc", u"1a",  u"a1",   u"1 2",  u"1.2.3", u"1,2.3", u"--1", u"+-1", u"-",
        u".", u",",  u"inf", u"nan", u"-inf", u"0x10", u"1\r",   u"\t1",   u"１",  u"1e",  u"e3"}) {
    EXPECT_EQ(ToInt32(text), std::nullopt) << testing::PrintToString(Text(text));
  }
}

TEST(ToInt32, NumbersBeyondThirtyTwoBitsFail) {
  EXPECT_EQ(ToInt32(u"2147483647"), 2147483647);
  EXPECT_EQ(ToInt32(u"2147483647.4"), 2147483647);
  EXPECT_EQ(ToInt32(u"2147483647.5"), std::nullopt);
  EXPECT_EQ(ToInt32(u"2147483648"), std::nullopt);
  EXPECT_EQ(ToInt32(u"-2147483648.5"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ToInt32(u"-2147483649"), std::nullopt);
  EXPECT_EQ(ToInt32(Text(100000, u'9')), std::nullopt);
  EXPECT_EQ(ToInt32(u"1e999999"), std::nullopt);
}

TEST(ToNumber, ReadsFractionsWithPointOrComma) {
  EXPECT_EQ(ToNumber(u"1,25"), 1.25);
  EXPECT_EQ(ToNumber(u" -0.125 "), -0.125);
  EXPECT_EQ(ToNumber(u"1.234,5"), std::nullopt);
  EXPECT_EQ(ToNumber(u"1\u0132"), std::nullopt) << "its lower half would be a digit";
}

TEST(RoundTiesToEven, TiesGoToTheEvenNumber) {
  EXPECT_EQ(RoundTiesToEven(0.5), 0.0);
  EXPECT_EQ(RoundTiesToEven(1.5), 2.0);
  EXPECT_EQ(RoundTiesToEven(2.5), 2.0);
  EXPECT_EQ(RoundTiesToEven(-0.5), 0.0);
  EXPECT_EQ(RoundTiesToEven(-1.5), -2.0);
}

TEST(RoundTiesToEven, EverythingElseGoesToTheNearest) {
  EXPECT_EQ(RoundTiesToEven(0.49999999999999994), 0.0);
  EXPECT_EQ(RoundTiesToEven(12.51), 13.0);
  EXPECT_EQ(RoundTiesToEven(-12.51), -13.0);
  EXPECT_EQ(RoundTiesToEven(7.0), 7.0);
}

TEST(RoundToInt32, FailsForWhatDoesNotFit) {
  EXPECT_EQ(RoundToInt32(0.5), 0);
  EXPECT_EQ(RoundToInt32(-1.5), -2);
  EXPECT_EQ(RoundToInt32(1e300), std::nullopt);
  EXPECT_EQ(RoundToInt32(std::numeric_limits<double>::infinity()), std::nullopt);
  EXPECT_EQ(RoundToInt32(-std::numeric_limits<double>::infinity()), std::nullopt);
  EXPECT_EQ(RoundToInt32(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

TEST(FormatNumber, WritesDigitsAndFillsUpWithZeros) {
  EXPECT_EQ(FormatNumber(0), u"0");
  EXPECT_EQ(FormatNumber(-12), u"-12");
  EXPECT_EQ(FormatNumber(7, 2), u"07");
  EXPECT_EQ(FormatNumber(123, 2), u"123");
  EXPECT_EQ(FormatNumber(-7, 3), u"-007");
  EXPECT_EQ(FormatNumber(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

}  // namespace
}  // namespace app
