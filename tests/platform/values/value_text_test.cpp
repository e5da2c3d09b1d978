#include "platform/values/value_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <locale>
#include <string>
#include <utility>
#include <vector>

namespace platform::values {
namespace {

Text Of(PropertyType type, decltype(PropertyValue::payload) payload) {
  return ValueText({type, std::move(payload)}).value_or(u"<none>");
}

TEST(ValueText, TextsStayAsTheyAre) {
  EXPECT_EQ(Of(PropertyType::kString, Text(u"Grüße")), u"Grüße");
  EXPECT_EQ(Of(PropertyType::kWideString, Text(u"a;b\0c", 5)), Text(u"a;b\0c", 5));
}

TEST(ValueText, AnsiBytesAreCodePage1252) {
  EXPECT_EQ(Of(PropertyType::kAnsiString, std::string("\x80\x9F\xFC\x41")), u"\u20AC\u0178\u00FCA");
}

TEST(ValueText, UnassignedBytesOfTheCodePageKeepTheirNumber) {
  EXPECT_EQ(Of(PropertyType::kAnsiString, std::string("\x81\x8D\x8F\x90\x9D")),
            u"\u0081\u008D\u008F\u0090\u009D");
}

TEST(ValueText, BooleansAreMinusOneAndZero) {
  EXPECT_EQ(Of(PropertyType::kBoolean, std::int64_t{-1}), u"-1");
  EXPECT_EQ(Of(PropertyType::kBoolean, std::int64_t{0}), u"0");
}

TEST(ValueText, WholeNumbersOfEveryWidthAreDecimal) {
  for (const auto type : {PropertyType::kInt8, PropertyType::kInt16, PropertyType::kInt32,
                          PropertyType::kInt64, PropertyType::kInt}) {
    EXPECT_EQ(Of(type, std::int64_t{-128}), u"-128");
  }
  for (const auto type :
       {PropertyType::kUInt8, PropertyType::kUInt16, PropertyType::kUInt32, PropertyType::kUInt}) {
    EXPECT_EQ(Of(type, std::int64_t{255}), u"255");
  }
  EXPECT_EQ(Of(PropertyType::kInt64, std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
  EXPECT_EQ(Of(PropertyType::kUInt64, std::numeric_limits<std::uint64_t>::max()), u"18446744073709551615");
}

TEST(ValueText, FloatsHaveSevenAndDoublesFifteenDigits) {
  EXPECT_EQ(Of(PropertyType::kFloat, static_cast<double>(0.1f)), u"0.1");
  EXPECT_EQ(Of(PropertyType::kDouble, 0.1), u"0.1");
  EXPECT_EQ(Of(PropertyType::kDouble, 1.0 / 3.0), u"0.333333333333333");
  EXPECT_EQ(Of(PropertyType::kDouble, -44100.0), u"-44100");
  EXPECT_EQ(Of(PropertyType::kDouble, 1e20), u"1E+20");
  EXPECT_EQ(Of(PropertyType::kDouble, 1e-20), u"1E-20");
}

struct GermanNumbers : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(ValueText, NumbersIgnoreTheLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new GermanNumbers));
  EXPECT_EQ(Of(PropertyType::kDouble, 1234.5), u"1234.5");
  EXPECT_EQ(Of(PropertyType::kInt32, std::int64_t{1234567}), u"1234567");
  std::locale::global(before);
}

TEST(ValueText, GuidsHaveBraces) {
  EXPECT_EQ(Of(PropertyType::kGuid, Guid{}), u"{00000000-0000-0000-0000-000000000000}");
}

TEST(ValueText, EmptyIsTheEmptyText) { EXPECT_EQ(Of(PropertyType::kEmpty, std::monostate{}), u""); }

TEST(ValueText, BlobsAndListsHaveNoText) {
  EXPECT_FALSE(ValueText({PropertyType::kBlob, std::string("abc")}));
  EXPECT_FALSE(ValueText({PropertyType::kWideStringVector, std::vector<Text>{u"a"}}));
  EXPECT_FALSE(ValueText({PropertyType::kStringArray, std::vector<Text>{u"a"}}));
  EXPECT_FALSE(ValueText({static_cast<PropertyType>(64), std::int64_t{1}}));
}

TEST(ValueText, PayloadOfAnotherTypeHasNoText) {
  EXPECT_FALSE(ValueText({PropertyType::kString, std::int64_t{1}}));
  EXPECT_FALSE(ValueText({PropertyType::kInt32, Text(u"1")}));
  EXPECT_FALSE(ValueText({PropertyType::kUInt64, std::int64_t{1}}));
  EXPECT_FALSE(ValueText({PropertyType::kGuid, std::monostate{}}));
}

}  // namespace
}  // namespace platform::values
