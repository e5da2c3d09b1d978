#include "stream/block_rules.h"

#include <gtest/gtest.h>

#include <ostream>

namespace stream {
namespace {

const Text kPadding(16, u'\0');

struct Judged {
  bool ends;
  Text title;
  friend bool operator==(const Judged&, const Judged&) = default;
  friend void PrintTo(const Judged& judged, std::ostream* out) {
    *out << (judged.ends ? "ends with " : "continues, ") << testing::PrintToString(judged.title);
  }
};

const Judged kContinues{false, u""};

Judged ByLength(TextView block) {
  const BlockVerdict verdict = JudgeByLength(block);
  return {verdict.ends_reading, verdict.title};
}
Judged First(TextView block) {
  const BlockVerdict verdict = JudgeFirstBlock(block);
  return {verdict.ends_reading, verdict.title};
}
Judged All(TextView block) {
  const BlockVerdict verdict = JudgeAllFields(block);
  return {verdict.ends_reading, verdict.title};
}

TEST(BlockRules, BytesBecomeCharactersOfTheSameCode) {
  EXPECT_EQ(CharactersOfSameCode(std::string("A\x80\xFF\0", 4)), Text(u"A\u0080\u00FF\0", 4));
}

TEST(JudgeByLength, PassesOverATitleNotLongerThanItsPosition) {
  EXPECT_EQ(ByLength(u"StreamTitle='Artist - Song';"), kContinues);
  EXPECT_EQ(ByLength(u"StreamTitle='12345678901234';"), kContinues);
  EXPECT_EQ(ByLength(u"StreamTitle='123456789012345';"), (Judged{true, u"123456789012345"}));
}

TEST(JudgeByLength, TakesALongTitle) {
  EXPECT_EQ(ByLength(u"StreamTitle='A much longer song title here';" + kPadding),
            (Judged{true, u"A much longer song title here"}));
}

TEST(JudgeByLength, ATitleEndsAtItsApostrophe) {
  EXPECT_EQ(ByLength(u"StreamTitle='Don't Stop';"), kContinues);
  EXPECT_EQ(ByLength(u"StreamTitle='A long title that isn't whole';"),
            (Judged{true, u"A long title that isn"}));
}

TEST(JudgeByLength, ALaterFieldNeedsALongerTitle) {
  const Text before = u"StreamUrl='http://x';";
  EXPECT_EQ(ByLength(before + u"StreamTitle='A much longer song title here';"), kContinues);
  const Text title(36, u't');
  EXPECT_EQ(ByLength(before + u"StreamTitle='" + title + u"';"), (Judged{true, title}));
}

TEST(JudgeByLength, RemovesLineFeedsFirst) {
  EXPECT_EQ(ByLength(u"Stream\nTitle='A much longer\r\n song title here';"),
            (Judged{true, u"A much longer\r song title here"}));
}

TEST(JudgeByLength, TheFieldNameIsCaseSensitive) {
  EXPECT_EQ(ByLength(u"streamtitle='A much longer song title here';"), kContinues);
}

TEST(JudgeByLength, WithoutAnEndOrAFieldThereIsNoTitle) {
  EXPECT_EQ(ByLength(u"StreamTitle='A much longer song title here"), kContinues);
  EXPECT_EQ(ByLength(u"StreamUrl='http://radio.example/a/very/long/address';"), kContinues);
  EXPECT_EQ(ByLength(u""), kContinues);
}

TEST(JudgeFirstBlock, TakesTheTitleWithoutItsPadding) {
  EXPECT_EQ(First(u"StreamTitle='Artist - Song';" + kPadding), (Judged{true, u"Artist - Song"}));
}

TEST(JudgeFirstBlock, EndsWithNothingAtAnEmptyTitle) {
  EXPECT_EQ(First(u"StreamTitle='';StreamUrl='';"), (Judged{true, u""}));
}

TEST(JudgeFirstBlock, LosesApostrophesInTheTitle) {
  EXPECT_EQ(First(u"StreamTitle='Don't Stop';"), (Judged{true, u"Dont Stop"}));
}

TEST(JudgeFirstBlock, KeepsOnlyTheTextBeforeASecondEqualsSign) {
  EXPECT_EQ(First(u"StreamTitle='E=mc2';"), (Judged{true, u"E"}));
}

TEST(JudgeFirstBlock, CutsATitleAtItsSemicolonAndIgnoresTheStaleTail) {
  EXPECT_EQ(First(u"StreamTitle='New';xtra';StreamTitle='Old';"), (Judged{true, u"New"}));
  EXPECT_EQ(First(u"StreamTitle='One; Two';"), (Judged{true, u"One"}));
  EXPECT_EQ(First(u"StreamTitle='Rock &amp; Roll';"), (Judged{true, u"Rock &amp"}));
}

TEST(JudgeFirstBlock, TheFieldMayStandAnywhereAndInAnyCase) {
  EXPECT_EQ(First(u"StreamUrl='http://x';STREAMTITLE='Song';"), (Judged{true, u"Song"}));
  EXPECT_EQ(First(u"\uFEFFStreamTitle='Song';"), (Judged{true, u"Song"}));
}

TEST(JudgeFirstBlock, AFieldWithoutAValueIsPassedOver) {
  EXPECT_EQ(First(u"StreamTitle;StreamTitle=;StreamTitle='Song';"), (Judged{true, u"Song"}));
  EXPECT_EQ(First(u"StreamTitle='';StreamTitle='Song';"), (Judged{true, u""}));
}

TEST(JudgeFirstBlock, ATitleWithoutItsSemicolonKeepsThePadding) {
  EXPECT_EQ(First(u"StreamTitle='Song'" + kPadding), (Judged{true, u"Song" + kPadding}));
}

TEST(JudgeFirstBlock, EndsAtAnyBlockThatIsNotEmpty) {
  EXPECT_EQ(First(u"nothing here"), (Judged{true, u""}));
  EXPECT_EQ(First(kPadding), (Judged{true, u""}));
}

TEST(JudgeFirstBlock, ABlockOfLineFeedsIsEmpty) { EXPECT_EQ(First(Text(16, u'\n')), kContinues); }

TEST(JudgeFirstBlock, RemovesLineFeedsButNotCarriageReturns) {
  EXPECT_EQ(First(u"StreamTitle='One\r\nTwo';"), (Judged{true, u"One\rTwo"}));
}

TEST(JudgeAllFields, TheLastTitleThatIsNotEmptyWins) {
  EXPECT_EQ(All(u"StreamTitle='One';StreamTitle='Two';StreamTitle='';"), (Judged{true, u"Two"}));
}

TEST(JudgeAllFields, TitleAndWebAddressInEitherOrder) {
  EXPECT_EQ(All(u"StreamTitle='Song';StreamUrl='http://x';"), (Judged{true, u"Song"}));
  EXPECT_EQ(All(u"StreamUrl='http://x';StreamTitle='Song';"), (Judged{true, u"Song"}));
}

TEST(JudgeAllFields, EndsWithNothingAtAnEmptyTitle) {
  EXPECT_EQ(All(u"StreamTitle='';StreamUrl='';"), (Judged{true, u""}));
}

TEST(JudgeAllFields, ABlockOfLineFeedsIsEmpty) { EXPECT_EQ(All(Text(16, u'\n')), kContinues); }

TEST(FieldsOf, APieceThatNamesBothIsATitle) {
  const auto fields = FieldsOf(u"StreamTitle StreamUrl='x';streamurl='y'");
  ASSERT_EQ(fields.size(), 2U);
  EXPECT_EQ(fields[0].kind, BlockField::Kind::kTitle);
  EXPECT_EQ(fields[0].raw, u"'x'");
  EXPECT_EQ(fields[1].kind, BlockField::Kind::kWebAddress);
  EXPECT_EQ(fields[1].value, u"y");
}

}  // namespace
}  // namespace stream
