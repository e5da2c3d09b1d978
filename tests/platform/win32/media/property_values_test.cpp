#include "platform/win32/media/property_values.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <oleauto.h>
#include <propidl.h>

#include <cstring>
#include <string>
#include <vector>

#include "platform/values/portable_property_values.h"
#include "platform/win32/media/property_variant.h"
#include "ports/interface_call.h"

namespace platform::win32 {
namespace {

using List = std::vector<Text>;

PropertyValue Whole(PropertyType type, std::int64_t number) { return {type, number}; }

struct PropertyVariant : testing::TestWithParam<PropertyValue> {};

TEST_P(PropertyVariant, ComesBackAsItWent) {
  PROPVARIANT system;
  PropVariantInit(&system);
  ASSERT_TRUE(MakeVariant(GetParam(), system));
  EXPECT_EQ(system.vt, static_cast<VARTYPE>(GetParam().type));
  PropertyValue back{PropertyType::kInt32, std::int64_t{99}};
  EXPECT_TRUE(ReadVariant(system, back));
  EXPECT_EQ(back.type, GetParam().type);
  EXPECT_EQ(back.payload, GetParam().payload);
  EXPECT_EQ(PropVariantClear(&system), S_OK);
}

INSTANTIATE_TEST_SUITE_P(
    EachType, PropertyVariant,
    testing::Values(PropertyValue{}, Whole(PropertyType::kInt8, -128), Whole(PropertyType::kUInt8, 255),
                    Whole(PropertyType::kInt16, -32768), Whole(PropertyType::kUInt16, 65535),
                    Whole(PropertyType::kInt32, -2147483648LL), Whole(PropertyType::kUInt32, 4294967295LL),
                    Whole(PropertyType::kInt, -5), Whole(PropertyType::kUInt, 4294967295LL),
                    Whole(PropertyType::kInt64, -9'000'000'000'000LL), Whole(PropertyType::kBoolean, -1),
                    Whole(PropertyType::kBoolean, 0),
                    PropertyValue{PropertyType::kUInt64, std::uint64_t{0xFFFFFFFFFFFFFFFFu}},
                    PropertyValue{PropertyType::kFloat, 0.5}, PropertyValue{PropertyType::kDouble, 0.1},
                    PropertyValue{PropertyType::kString, Text(u"B\u00e4r")},
                    PropertyValue{PropertyType::kWideString, Text(u"\u20ac \U0001F600")},
                    PropertyValue{PropertyType::kWideString, Text()},
                    PropertyValue{PropertyType::kAnsiString, std::string("B\xE4r")},
                    PropertyValue{PropertyType::kBlob, std::string("\0\1\2", 3)},
                    PropertyValue{PropertyType::kGuid, Guid{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}}},
                    PropertyValue{PropertyType::kWideStringVector, List{u"eins", u"", u"drei"}},
                    PropertyValue{PropertyType::kStringArray, List{u"eins", u"zwei"}},
                    PropertyValue{PropertyType::kStringArray, List{}}));

TEST(PropertyVariants, APayloadOfAnotherTypeIsRefused) {
  PROPVARIANT system;
  PropVariantInit(&system);
  const std::vector<PropertyValue> refused = {
      {PropertyType::kInt32, {}},
      {PropertyType::kString, std::int64_t{1}},
      {PropertyType::kInt64, std::uint64_t{1}},
      {PropertyType::kInt32, 0.5},
      {PropertyType::kAnsiString, Text(u"1")},
      {PropertyType::kWideString, std::string("1")},
      {PropertyType::kString, List{u"1"}},
      {PropertyType::kBlob, Guid{1, 2, 3, {}}},
  };
  const PROPVARIANT empty = system;
  for (const PropertyValue& value : refused) {
    EXPECT_FALSE(MakeVariant(value, system)) << value.payload.index();
    EXPECT_EQ(std::memcmp(&system, &empty, sizeof empty), 0) << value.payload.index();
  }
}

TEST(PropertyVariants, ATypeThatIsNotKnownWritesNothing) {
  PROPVARIANT system;
  PropVariantInit(&system);
  system.vt = VT_FILETIME;
  PropertyValue value = Whole(PropertyType::kInt32, 5);
  EXPECT_FALSE(ReadVariant(system, value));
  EXPECT_EQ(value.type, PropertyType::kInt32);
}

TEST(PropertyVariants, AnArrayOfAnythingButTextsIsNotKnown) {
  PROPVARIANT system;
  PropVariantInit(&system);
  system.vt = VT_ARRAY | VT_I8;
  system.parray = SafeArrayCreateVector(VT_I8, 0, 2);
  PropertyValue value = Whole(PropertyType::kInt32, 5);
  EXPECT_FALSE(ReadVariant(system, value));
  EXPECT_EQ(value.type, PropertyType::kInt32);
  SafeArrayDestroy(system.parray);
}

TEST(PropertyVariants, ATextThatIsNullIsEmpty) {
  PROPVARIANT system;
  PropVariantInit(&system);
  system.vt = VT_BSTR;
  PropertyValue value;
  EXPECT_TRUE(ReadVariant(system, value));
  EXPECT_EQ(std::get<Text>(value.payload), u"");
}

struct Win32Values : testing::Test {
  values::PortablePropertyValues portable;
  Win32PropertyValues values{portable};
};

TEST_F(Win32Values, GuidTextComesBackAsWritten) {
  const Text text = u"{089EDF13-CF71-4338-8D13-9E569DBDC319}";
  Guid guid;
  ASSERT_EQ(values.CLSIDFromString(u"{089edf13-cf71-4338-8d13-9e569dbdc319}", guid), 0);
  Text back;
  ASSERT_EQ(values.StringFromIID(guid, back), 0);
  EXPECT_EQ(back, text);
}

TEST_F(Win32Values, ATextThatIsNoGuidLeavesTheTargetAsItWas) {
  for (const Text& text : {Text(), Text(u"{not a guid}"), Text(u"MSXML2.ServerXMLHTTP.6.0"),
                           Text(u"{089EDF13-CF71-4338-8D13-9E569DBDC3X9}")}) {
    Guid guid{7, 7, 7, {}};
    EXPECT_NE(values.CLSIDFromString(text, guid), 0);
    EXPECT_EQ(guid, (Guid{7, 7, 7, {}}));
  }
}

TEST_F(Win32Values, ValuesBecomeTexts) {
  const std::vector<std::pair<PropertyValue, Text>> cases = {
      {Whole(PropertyType::kInt32, -12), u"-12"},
      {Whole(PropertyType::kUInt32, 4000000000LL), u"4000000000"},
      {{PropertyType::kUInt64, std::uint64_t{18446744073709551615u}}, u"18446744073709551615"},
      {{PropertyType::kWideString, Text(u"T\u00fcr")}, u"T\u00fcr"},
      {{PropertyType::kAnsiString, std::string("T\xFCr")}, u"T\u00fcr"},
  };
  for (const auto& [source, text] : cases) {
    PropertyValue target;
    EXPECT_EQ(values.PropVariantChangeType(target, source, 0, PropertyType::kString), 0);
    EXPECT_EQ(target.type, PropertyType::kString);
    ASSERT_TRUE(std::holds_alternative<Text>(target.payload));
    EXPECT_EQ(std::get<Text>(target.payload), text);
  }
}

TEST_F(Win32Values, AVectorOfTextsBecomesAnArray) {
  PropertyValue target;
  const PropertyValue source{PropertyType::kWideStringVector, List{u"Titel", u"Autor"}};
  EXPECT_EQ(values.PropVariantChangeType(target, source, 0, PropertyType::kStringArray), 0);
  EXPECT_EQ(target.type, PropertyType::kStringArray);
  EXPECT_EQ(std::get<List>(target.payload), (List{u"Titel", u"Autor"}));
}

TEST_F(Win32Values, AConversionThatDoesNotExistLeavesTheTargetAsItWas) {
  PropertyValue target = Whole(PropertyType::kInt32, 5);
  const PropertyValue blob{PropertyType::kBlob, std::string("ab")};
  EXPECT_NE(values.PropVariantChangeType(target, blob, 0, PropertyType::kStringArray), 0);
  EXPECT_EQ(target.type, PropertyType::kInt32);
}

TEST_F(Win32Values, APayloadOfAnotherTypeIsNotConverted) {
  PropertyValue target = Whole(PropertyType::kInt32, 5);
  const PropertyValue wrong{PropertyType::kInt32, Text(u"1")};
  EXPECT_EQ(values.PropVariantChangeType(target, wrong, 0, PropertyType::kString), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(target.type, PropertyType::kInt32);
}

TEST_F(Win32Values, AValueIsNotConvertedIntoItself) {
  PropertyValue value = Whole(PropertyType::kInt32, 5);
  EXPECT_EQ(values.PropVariantChangeType(value, value, 0, PropertyType::kString), kEInvalidArg);
  EXPECT_EQ(value.type, PropertyType::kInt32);
}

TEST_F(Win32Values, AClearedValueIsEmpty) {
  PropertyValue value{PropertyType::kString, Text(u"a")};
  EXPECT_EQ(values.PropVariantClear(value), 0);
  EXPECT_EQ(value.type, PropertyType::kEmpty);
}

}  // namespace
}  // namespace platform::win32
