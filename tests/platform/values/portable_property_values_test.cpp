#include "platform/values/portable_property_values.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ports/interface_call.h"

namespace platform::values {
namespace {

using List = std::vector<Text>;

TEST(PortablePropertyValues, GuidTextComesBackAsWritten) {
  PortablePropertyValues values;
  const Text text = u"{089EDF13-CF71-4338-8D13-9E569DBDC319}";
  Guid guid;
  ASSERT_EQ(values.CLSIDFromString(text, guid), kSOk);
  Text back;
  ASSERT_EQ(values.StringFromIID(guid, back), kSOk);
  EXPECT_EQ(back, text);
}

TEST(PortablePropertyValues, TextThatIsNoGuidLeavesTheTargetUntouched) {
  PortablePropertyValues values;
  Guid guid{7, 7, 7, {}};
  EXPECT_EQ(values.CLSIDFromString(u"{not a guid}", guid), kCoEClassString);
  EXPECT_EQ(guid, (Guid{7, 7, 7, {}}));
}

TEST(PortablePropertyValues, ChangesANumberToAString) {
  PortablePropertyValues values;
  PropertyValue target;
  const PropertyValue source{PropertyType::kUInt32, std::int64_t{128000}};
  ASSERT_EQ(values.PropVariantChangeType(target, source, 0, PropertyType::kString), kSOk);
  EXPECT_EQ(target.type, PropertyType::kString);
  EXPECT_EQ(std::get<Text>(target.payload), u"128000");
}

TEST(PortablePropertyValues, ChangesAVectorOfWideStringsToAnArray) {
  PortablePropertyValues values;
  PropertyValue target;
  const PropertyValue source{PropertyType::kWideStringVector, List{u"Title", u"Author"}};
  ASSERT_EQ(values.PropVariantChangeType(target, source, 0, PropertyType::kStringArray), kSOk);
  EXPECT_EQ(target.type, PropertyType::kStringArray);
  EXPECT_EQ(std::get<List>(target.payload), (List{u"Title", u"Author"}));
}

TEST(PortablePropertyValues, ImpossibleChangeLeavesTheTargetUntouched) {
  PortablePropertyValues values;
  PropertyValue target{PropertyType::kInt32, std::int64_t{5}};
  const PropertyValue blob{PropertyType::kBlob, std::string("abc")};
  EXPECT_EQ(values.PropVariantChangeType(target, blob, 0, PropertyType::kString), kDispETypeMismatch);
  EXPECT_EQ(values.PropVariantChangeType(target, blob, 0, PropertyType::kStringArray), kDispETypeMismatch);
  EXPECT_EQ(values.PropVariantChangeType(target, blob, 0, PropertyType::kInt32), kDispETypeMismatch);
  const PropertyValue text{PropertyType::kString, Text(u"x")};
  EXPECT_EQ(values.PropVariantChangeType(target, text, 0, PropertyType::kStringArray), kDispETypeMismatch);
  EXPECT_EQ(std::get<std::int64_t>(target.payload), 5);
}

TEST(PortablePropertyValues, FlagsAndASharedTargetAreInvalid) {
  PortablePropertyValues values;
  PropertyValue value{PropertyType::kInt32, std::int64_t{5}};
  PropertyValue target;
  EXPECT_EQ(values.PropVariantChangeType(target, value, 2, PropertyType::kString), kEInvalidArg);
  EXPECT_EQ(values.PropVariantChangeType(value, value, 0, PropertyType::kString), kEInvalidArg);
  EXPECT_EQ(value.type, PropertyType::kInt32);
}

TEST(PortablePropertyValues, ClearMakesTheValueEmpty) {
  PortablePropertyValues values;
  PropertyValue value{PropertyType::kWideStringVector, List{u"a"}};
  EXPECT_EQ(values.PropVariantClear(value), kSOk);
  EXPECT_EQ(value.type, PropertyType::kEmpty);
  EXPECT_TRUE(std::holds_alternative<std::monostate>(value.payload));
}

}  // namespace
}  // namespace platform::values
