#include "catalogue/sort_dates.h"

#include <gtest/gtest.h>

#include <string>

namespace catalogue {
namespace {

using platform::Text;

Text Number(int number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}
Text German(int year, int month, int day) { return Number(day) + u"." + Number(month) + u"." + Number(year); }
Text Iso(int year, int month, int day) { return Number(year) + u"-" + Number(month) + u"-" + Number(day); }

TEST(DateOfTest, EveryMonthsLastDayIsTheDayBeforeTheNextMonthsFirst) {
  for (const int year : {1900, 2000, 2023, 2024}) {
    const bool leaps = year == 2000 || year == 2024;
    const int days[] = {31, leaps ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month) {
      const int last = days[month - 1];
      const int next_month = month % 12 + 1;
      const int next_year = month == 12 ? year + 1 : year;
      EXPECT_EQ(DateOf(German(next_year, next_month, 1)) - DateOf(German(year, month, last)), 1)
          << year << " " << month;
      EXPECT_EQ(DateOf(Iso(next_year, next_month, 1)) - DateOf(Iso(year, month, last)), 1)
          << year << " " << month;
      EXPECT_EQ(DateOf(German(year, month, last)) - DateOf(German(year, month, 1)), last - 1);
    }
  }
}

TEST(DateOfTest, TimeOfDayIsAFractionOfTheDay) {
  EXPECT_DOUBLE_EQ(DateOf(u"31.01.2024 18:00") - DateOf(u"31.01.2024"), 0.75);
  EXPECT_LT(DateOf(u"31.01.2024 23:59:59"), DateOf(u"01.02.2024"));
  EXPECT_LT(DateOf(u"31.01.2024 23:59"), DateOf(u"31.01.2024 23:59:59"));
}

TEST(DateOfTest, WhatIsNoDateCountsAsZero) {
  for (const char16_t* text : {u"", u" ", u"abc", u"32.01.2024", u"00.01.2024", u"01.13.2024", u"01.00.2024",
                               u"01.01.10000", u"01.01", u"01.01.2024 x", u"01-01.2024", u"01.01.2024x",
                               u"01.01.2024 12:x", u"01.01.2024 12:-5", u"01.01.2024 12:30x"}) {
    EXPECT_EQ(DateOf(text), 0);
  }
}

}  // namespace
}  // namespace catalogue
