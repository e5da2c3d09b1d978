#include "platform/values/guid_text.h"

#include <gtest/gtest.h>

namespace platform::values {
namespace {

constexpr Guid kMetering{0xc02216f6, 0x8c67, 0x4b5b, {0x9d, 0x00, 0xd0, 0x08, 0xe7, 0x3e, 0x00, 0x64}};

TEST(GuidText, ParsesEitherLetterCase) {
  EXPECT_EQ(ParseGuid(u"{c02216f6-8c67-4b5b-9d00-d008e73e0064}"), kMetering);
  EXPECT_EQ(ParseGuid(u"{C02216F6-8C67-4B5B-9D00-D008E73E0064}"), kMetering);
}

TEST(GuidText, WritesBracesAndUpperCaseDigits) {
  EXPECT_EQ(GuidText(kMetering), u"{C02216F6-8C67-4B5B-9D00-D008E73E0064}");
  EXPECT_EQ(GuidText(Guid{}), u"{00000000-0000-0000-0000-000000000000}");
}

TEST(GuidText, EveryDigitReachesItsOwnPlace) {
  const Text text = u"{01234567-89AB-CDEF-0123-456789ABCDEF}";
  const auto guid = ParseGuid(text);
  ASSERT_TRUE(guid);
  EXPECT_EQ(guid->data1, 0x01234567u);
  EXPECT_EQ(guid->data2, 0x89ABu);
  EXPECT_EQ(guid->data3, 0xCDEFu);
  EXPECT_EQ(guid->data4[1], 0x23u);
  EXPECT_EQ(guid->data4[2], 0x45u);
  EXPECT_EQ(guid->data4[7], 0xEFu);
  EXPECT_EQ(GuidText(*guid), text);
}

TEST(GuidText, RefusesEveryOtherShape) {
  for (const TextView text : {
           TextView(u""),
           TextView(u"{}"),
           TextView(u"c02216f6-8c67-4b5b-9d00-d008e73e0064"),
           TextView(u"(c02216f6-8c67-4b5b-9d00-d008e73e0064)"),
           TextView(u"{c02216f6-8c67-4b5b-9d00-d008e73e0064} "),
           TextView(u"{c02216f6-8c67-4b5b-9d00+d008e73e0064}"),
           TextView(u"{c02216f6-8c67-4b5b-9d00-d008e73e006g}"),
           TextView(u"{c02216f68c67-4b5b-9d00-d008e73e00-064}"),
           TextView(u"{\uFF11"
                    u"02216f6-8c67-4b5b-9d00-d008e73e0064}"),
       }) {
    EXPECT_FALSE(ParseGuid(text)) << text.size();
  }
}

}  // namespace
}  // namespace platform::values
