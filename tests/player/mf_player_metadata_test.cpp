// Position, duration and named properties.
#include <map>

#include "tests/player/player_fixture.h"

namespace player {
namespace {

using platform::PropertyType;
using platform::PropertyValue;

using PlayerMetadataTest = PlayerTest;
using Names = std::vector<Text>;

TEST(CurrencyTime2HMS, GivesHoursMinutesAndSecondsWithTwoDigits) {
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(0), u"00:00:00");
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(36'610'000'000), u"01:01:01");
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(863'990'000'000), u"23:59:59");
}

TEST(CurrencyTime2HMS, RoundsToWholeSecondsWithTiesToTheEvenOne) {
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(595'000'000), u"00:01:00");
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(585'000'000), u"00:00:58");
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(4'999'999), u"00:00:00");
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(5'000'001), u"00:00:01");
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(35'999'000'000), u"01:00:00");
}

TEST(CurrencyTime2HMS, PrintsAllDigitsOfManyHours) {
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(3'600'000'000'000), u"100:00:00");
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(9'223'372'036'854'775'807), u"256204778:48:05");
}

TEST(CurrencyTime2HMS, NegativeTimesKeepTheirSignInEachPart) {
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(-10'000'000), u"00:00:-01");
  EXPECT_EQ(clsMFPlayer::CurrencyTime2HMS(-36'610'000'000), u"-01:-01:-01");
}

TEST_F(PlayerMetadataTest, PositionIsTheClocksTime) {
  const auto player = MakeOpenPlayer();
  media_.position = 36'610'000'000;
  EXPECT_EQ(player->CurrentPlayPosition(), 36'610'000'000);
  EXPECT_EQ(player->CurrentPlayPositionHMS(), u"01:01:01");
  EXPECT_EQ(media_.TakeCalls()[0], "clock.GetCorrelatedTime(0, out, out)");
}

TEST_F(PlayerMetadataTest, PositionIsZeroWithoutAClockOrItsAnswer) {
  const auto player = MakePlayer();
  media_.position = 36'610'000'000;
  EXPECT_EQ(player->CurrentPlayPosition(), 0);
  player->MediaFileFromUrl(u"http://radio/");
  media_.faults["IMFClock::GetCorrelatedTime"] = platform::kEFail;
  EXPECT_EQ(player->CurrentPlayPosition(), 0);
}

TEST_F(PlayerMetadataTest, LiveStreamHasNoDuration) {
  const auto player = MakeOpenPlayer();
  EXPECT_EQ(player->Duration(), 0);
  EXPECT_EQ(player->DurationHMS(), u"00:00:00");
}

TEST_F(PlayerMetadataTest, WithoutMetadataTheCountIsZeroAndNothingIsTouched) {
  const auto player = MakeOpenPlayer();
  Names names{u"kept"};
  Text value = u"kept";
  EXPECT_EQ(player->GetAllMetadataNames(names), 0);
  EXPECT_EQ(player->GetMetadata(u"Title", value), 0);
  EXPECT_EQ(names, Names{u"kept"});
  EXPECT_EQ(value, u"kept");
  EXPECT_EQ(media_.TakeCalls(), Strings{});
}

TEST_F(PlayerMetadataTest, NamesAreSplitAtTheSemicolon) {
  const auto player = MakeServedPlayer();
  media_.SetMetadata({{u"Title", u"Morgenmagazin"}, {u"Author", u"Funkhaus"}});
  Names names;
  EXPECT_EQ(player->GetAllMetadataNames(names), 2);
  EXPECT_EQ(names, (Names{u"Title", u"Author"}));
}

TEST_F(PlayerMetadataTest, SingleTextOfNamesIsSplitTooAndEmptyPartsCount) {
  const auto player = MakeServedPlayer();
  media_.property_names = {PropertyType::kWideString, Text(u"Title;;Author;")};
  Names names;
  EXPECT_EQ(player->GetAllMetadataNames(names), 4);
  EXPECT_EQ(names, (Names{u"Title", u"", u"Author", u""}));
}

TEST_F(PlayerMetadataTest, EmptyListOfNamesGivesCountZero) {
  const auto player = MakeServedPlayer();
  Names names{u"old"};
  EXPECT_EQ(player->GetAllMetadataNames(names), 0);
  EXPECT_EQ(names, Names{});
}

TEST_F(PlayerMetadataTest, RefusedListOfNamesGivesCountOneAndLeavesTheNamesUntouched) {
  const auto player = MakeServedPlayer();
  media_.SetMetadata({{u"Title", u"x"}});
  media_.faults["IMFMetadata::GetAllPropertyNames"] = platform::kEFail;
  Names names;
  EXPECT_EQ(player->GetAllMetadataNames(names), 1);
  EXPECT_EQ(names, Names{});
}

TEST_F(PlayerMetadataTest, PropertyIsReadByName) {
  const auto player = MakeServedPlayer();
  media_.SetMetadata({{u"Title", u"Morgenmagazin"}});
  Text value;
  EXPECT_EQ(player->GetMetadata(u"Title", value), 1);
  EXPECT_EQ(value, u"Morgenmagazin");
  EXPECT_EQ(media_.TakeCalls().back(), "metadata.GetProperty(\"Title\", out)");
}

TEST_F(PlayerMetadataTest, UnknownPropertyLeavesTheValueUnchanged) {
  const auto player = MakeServedPlayer();
  Text value = u"kept";
  EXPECT_EQ(player->GetMetadata(u"Author", value), 0);
  EXPECT_EQ(value, u"kept");
}

TEST_F(PlayerMetadataTest, PropertyOfATypeWithoutATextGivesTheEmptyTextAndOne) {
  const auto player = MakeServedPlayer();
  media_.properties[u"Picture"] = {PropertyType::kBlob, std::string("\xFF\xD8")};
  Text value = u"old";
  EXPECT_EQ(player->GetMetadata(u"Picture", value), 1);
  EXPECT_EQ(value, u"");
}

class PropVariantToTextTest : public PlayerTest {
 protected:
  Text Of(PropertyType type, decltype(PropertyValue::payload) payload) {
    PropertyValue value{type, std::move(payload)};
    Text text = u"old";
    player_->PropVariantToText(value, text);
    EXPECT_EQ(value.type, PropertyType::kEmpty) << "the value is cleared in every case";
    return text;
  }
  std::shared_ptr<clsMFPlayer> player_ = MakePlayer();
};

TEST_F(PropVariantToTextTest, TurnsEverySingleTypeIntoItsText) {
  EXPECT_EQ(Of(PropertyType::kBoolean, std::int64_t{-1}), u"-1");
  EXPECT_EQ(Of(PropertyType::kString, Text(u"a")), u"a");
  EXPECT_EQ(Of(PropertyType::kAnsiString, std::string("\xFC")), u"\u00FC");
  EXPECT_EQ(Of(PropertyType::kWideString, Text(u"a")), u"a");
  for (const auto type : {PropertyType::kInt, PropertyType::kUInt, PropertyType::kInt8, PropertyType::kUInt8,
                          PropertyType::kInt16, PropertyType::kUInt16, PropertyType::kInt32,
                          PropertyType::kUInt32, PropertyType::kInt64}) {
    EXPECT_EQ(Of(type, std::int64_t{42}), u"42");
  }
  EXPECT_EQ(Of(PropertyType::kUInt64, std::uint64_t{42}), u"42");
  EXPECT_EQ(Of(PropertyType::kFloat, 0.5), u"0.5");
  EXPECT_EQ(Of(PropertyType::kDouble, 0.5), u"0.5");
  EXPECT_EQ(Of(PropertyType::kGuid, Guid{}), u"{00000000-0000-0000-0000-000000000000}");
}

TEST_F(PropVariantToTextTest, JoinsAVectorOfTextsBySemicolons) {
  EXPECT_EQ(Of(PropertyType::kWideStringVector, Names{u"Title", u"Author"}), u"Title;Author");
  EXPECT_EQ(Of(PropertyType::kWideStringVector, Names{u"Title"}), u"Title");
  EXPECT_EQ(Of(PropertyType::kWideStringVector, Names{u"", u""}), u";");
  EXPECT_EQ(Of(PropertyType::kWideStringVector, Names{}), u"");
}

TEST_F(PropVariantToTextTest, EveryOtherTypeIsEmpty) {
  EXPECT_EQ(Of(PropertyType::kEmpty, std::monostate{}), u"");
  EXPECT_EQ(Of(PropertyType::kBlob, std::string("abc")), u"");
  EXPECT_EQ(Of(PropertyType::kStringArray, Names{u"a"}), u"");
  EXPECT_EQ(Of(static_cast<PropertyType>(64), std::int64_t{1}), u"");
}

/// Keeps which types it was asked to change into which, and how often something was cleared.
class WatchedValues final : public platform::values::PortablePropertyValues {
 public:
  std::int32_t PropVariantChangeType(PropertyValue& changed, const PropertyValue& value, std::uint16_t flags,
                                     PropertyType type) override {
    asked[static_cast<int>(value.type)] = type;
    return PortablePropertyValues::PropVariantChangeType(changed, value, flags, type);
  }
  std::int32_t PropVariantClear(PropertyValue& value) override {
    ++clears;
    return PortablePropertyValues::PropVariantClear(value);
  }
  std::map<int, PropertyType> asked;
  int clears = 0;
};

TEST_F(PropVariantToTextTest, ExactlyTheseTypesAreChangedAndEveryValueIsCleared) {
  WatchedValues values;
  clsMFPlayer player({media_, media_, values, environment_, clock_, loop_}, duration_);
  std::map<int, PropertyType> expected;
  for (const int single : {2, 3, 4, 5, 8, 11, 16, 17, 18, 19, 20, 21, 22, 23, 30, 31, 72}) {
    expected[single] = PropertyType::kString;
  }
  expected[4096 + 31] = PropertyType::kStringArray;
  constexpr int kTypes = 0x4000;
  for (int type = 0; type < kTypes; ++type) {
    PropertyValue value{static_cast<PropertyType>(type), std::monostate{}};
    Text text;
    player.PropVariantToText(value, text);
    EXPECT_EQ(value.type, PropertyType::kEmpty) << type;
  }
  EXPECT_EQ(values.asked, expected);
  EXPECT_EQ(values.clears, 2 * kTypes) << "what it was changed into as well";
}

TEST_F(PropVariantToTextTest, RefusedConversionIsEmpty) {
  EXPECT_EQ(Of(PropertyType::kInt32, Text(u"no number")), u"");
  EXPECT_EQ(Of(PropertyType::kWideStringVector, Text(u"no vector")), u"");
}

}  // namespace
}  // namespace player
