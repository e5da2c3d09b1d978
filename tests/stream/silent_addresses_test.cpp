#include "stream/silent_addresses.h"

#include <gtest/gtest.h>

#include "app/text/numbers.h"
#include "tests/support/fakes.h"

namespace stream {
namespace {

using Kind = QueryFailure::Kind;

constexpr QueryFailure kNoAnswer{Kind::kNoAnswer};
const Text kAddress = u"http://h/live";

class SilentAddressesTest : public testing::Test {
 protected:
  /// How long the question would be waited for; 0 when it is not asked. Its outcome is left open.
  std::uint32_t WaitOf(Question question, const Text& address = kAddress) {
    const auto attempt = addresses_.Begin(question, address);
    return attempt ? attempt->milliseconds : 0;
  }
  /// Asks, and nothing comes for `seconds`.
  void StaySilent(Question question, const Text& address = kAddress, double seconds = 3.0) {
    const auto attempt = addresses_.Begin(question, address);
    ASSERT_TRUE(attempt);
    clock_.seconds_since_midnight += seconds;
    addresses_.Failed(question, address, *attempt, kNoAnswer);
  }
  /// For how many whole seconds from now on the headers are not asked for.
  std::int64_t SecondsOfFailing() {
    const std::int64_t start = clock_.whole_seconds;
    while (addresses_.IsSilent(kAddress) && clock_.whole_seconds < start + 1000) ++clock_.whole_seconds;
    return clock_.whole_seconds - start;
  }

  test_support::FakeClock clock_;
  SilentAddresses addresses_{clock_};
};

TEST_F(SilentAddressesTest, AnAddressThatHasAnsweredIsAskedWithTheFullWait) {
  EXPECT_EQ(WaitOf(Question::kHeaders), 3000U);
  addresses_.Answered(Question::kHeaders, kAddress);
  EXPECT_EQ(WaitOf(Question::kHeaders), 3000U);
  EXPECT_FALSE(addresses_.IsSilent(kAddress));
}

TEST_F(SilentAddressesTest, AfterEachSilenceItFailsForLonger) {
  // The whole-second clock may be about to tick, so that a second more is needed to make so many full ones.
  for (const std::int64_t seconds : {11, 21, 41, 61, 61, 61}) {
    StaySilent(Question::kHeaders);
    EXPECT_EQ(WaitOf(Question::kHeaders), 0U);
    EXPECT_EQ(SecondsOfFailing(), seconds);
  }
}

TEST_F(SilentAddressesTest, WhatWasSilentLastIsWaitedForBriefly) {
  StaySilent(Question::kHeaders);
  SecondsOfFailing();
  EXPECT_EQ(WaitOf(Question::kHeaders), 1250U);
}

TEST_F(SilentAddressesTest, AMinuteOfPollingWaitsSixSecondsAtMost) {
  double waited = 0;
  for (int second = 0; second < 60; second += 5) {
    clock_.whole_seconds = 1000 + second;
    const auto attempt = addresses_.Begin(Question::kHeaders, kAddress);
    if (!attempt) continue;
    waited += attempt->milliseconds / 1000.0;
    clock_.seconds_since_midnight += attempt->milliseconds / 1000.0;
    addresses_.Failed(Question::kHeaders, kAddress, *attempt, kNoAnswer);
    EXPECT_EQ(WaitOf(Question::kTitle), 0U) << "the title of an address whose headers are silent";
  }
  EXPECT_GT(waited, 3.0);
  EXPECT_LE(waited, 6.0);
}

TEST_F(SilentAddressesTest, AnAnswerForgetsAllSilences) {
  StaySilent(Question::kHeaders);
  SecondsOfFailing();
  StaySilent(Question::kHeaders);
  SecondsOfFailing();
  addresses_.Answered(Question::kHeaders, kAddress);
  StaySilent(Question::kHeaders);
  EXPECT_EQ(SecondsOfFailing(), 11);
}

TEST_F(SilentAddressesTest, TheUserGetsOneMoreTryAndTheSilencesContinueToGrow) {
  StaySilent(Question::kHeaders);
  addresses_.TryAgain(kAddress, Wait::kFull);
  EXPECT_FALSE(addresses_.IsSilent(kAddress));
  EXPECT_FALSE(addresses_.IsSilent(kAddress)) << "being asked for it does not use it up";
  EXPECT_EQ(WaitOf(Question::kHeaders), 3000U);
  EXPECT_EQ(WaitOf(Question::kHeaders), 0U) << "it is one";
  addresses_.TryAgain(kAddress, Wait::kBrief);
  EXPECT_EQ(WaitOf(Question::kHeaders), 1250U);
  addresses_.TryAgain(kAddress, Wait::kFull);
  StaySilent(Question::kHeaders);
  EXPECT_EQ(SecondsOfFailing(), 21);
  addresses_.TryAgain(kAddress, Wait::kFull);
  EXPECT_EQ(WaitOf(Question::kHeaders), 3000U) << "the full wait also once the silence is over";
}

TEST_F(SilentAddressesTest, HeadersAndTitleAreRememberedApart) {
  addresses_.Answered(Question::kHeaders, kAddress);
  StaySilent(Question::kTitle);
  EXPECT_EQ(WaitOf(Question::kTitle), 0U);
  EXPECT_EQ(WaitOf(Question::kHeaders), 3000U);
  addresses_.Answered(Question::kHeaders, kAddress);
  EXPECT_EQ(WaitOf(Question::kTitle), 0U) << "answered headers are no answered title";
  addresses_.TryAgain(kAddress, Wait::kFull);
  EXPECT_EQ(WaitOf(Question::kTitle), 3000U);
  addresses_.Answered(Question::kTitle, kAddress);
  EXPECT_EQ(WaitOf(Question::kTitle), 3000U);
}

TEST_F(SilentAddressesTest, OneMoreTryOfTheHeadersIsNoneOfTheTitleWhenTheyStaySilent) {
  StaySilent(Question::kHeaders);
  addresses_.TryAgain(kAddress, Wait::kFull);
  StaySilent(Question::kHeaders);
  EXPECT_EQ(WaitOf(Question::kTitle), 0U);
}

TEST_F(SilentAddressesTest, AFailureThatComesSoonIsNoSilence) {
  StaySilent(Question::kHeaders, kAddress, 0.2);
  EXPECT_FALSE(addresses_.IsSilent(kAddress));
  StaySilent(Question::kHeaders, kAddress, 0.3);
  EXPECT_TRUE(addresses_.IsSilent(kAddress));
  addresses_.TryAgain(kAddress, Wait::kFull);
  StaySilent(Question::kHeaders, kAddress, 0.2);
  EXPECT_TRUE(addresses_.IsSilent(kAddress)) << "nor does it end one";
}

TEST_F(SilentAddressesTest, AWaitThatWasGivenUpIsNoSilence) {
  const auto attempt = addresses_.Begin(Question::kHeaders, kAddress);
  clock_.seconds_since_midnight += 2;
  addresses_.Failed(Question::kHeaders, kAddress, *attempt, {Kind::kGivenUp});
  EXPECT_EQ(WaitOf(Question::kHeaders), 3000U);
}

TEST_F(SilentAddressesTest, ASilenceAcrossMidnightIsOne) {
  clock_.seconds_since_midnight = 86399.0;
  const auto attempt = addresses_.Begin(Question::kHeaders, kAddress);
  clock_.seconds_since_midnight = 2.0;
  addresses_.Failed(Question::kHeaders, kAddress, *attempt, kNoAnswer);
  EXPECT_TRUE(addresses_.IsSilent(kAddress));
}

TEST_F(SilentAddressesTest, AClockThatWasSetBackEndsASilence) {
  StaySilent(Question::kHeaders);
  clock_.whole_seconds -= 3600;
  EXPECT_FALSE(addresses_.IsSilent(kAddress));
}

TEST_F(SilentAddressesTest, RemembersWhyTheHeadersFailed) {
  EXPECT_EQ(addresses_.FailureOf(kAddress), QueryFailure());
  const auto attempt = addresses_.Begin(Question::kHeaders, kAddress);
  clock_.seconds_since_midnight += 2;
  addresses_.Failed(Question::kHeaders, kAddress, *attempt, {Kind::kUnknownHost});
  EXPECT_EQ(addresses_.FailureOf(kAddress), QueryFailure{Kind::kUnknownHost});
}

TEST_F(SilentAddressesTest, OtherAddressesOfTheSameHostAreAsked) {
  StaySilent(Question::kHeaders, u"http://h/live");
  EXPECT_EQ(WaitOf(Question::kHeaders, u"http://h/live2"), 3000U);
  EXPECT_EQ(WaitOf(Question::kHeaders, u"http://h/Live"), 3000U);
}

TEST_F(SilentAddressesTest, OfTooManyAddressesTheOneThatWasSilentLongestAgoIsForgotten) {
  const auto numbered = [](std::size_t number) {
    return u"http://h/" + app::FormatNumber(static_cast<std::int64_t>(number));
  };
  for (std::size_t i = 0; i < SilentAddresses::kMost; ++i) StaySilent(Question::kHeaders, numbered(i));
  // Silent again, so that it is no longer the oldest.
  addresses_.TryAgain(numbered(0), Wait::kFull);
  StaySilent(Question::kHeaders, numbered(0));
  EXPECT_TRUE(addresses_.IsSilent(numbered(1)));
  StaySilent(Question::kHeaders, u"http://one/more");
  EXPECT_FALSE(addresses_.IsSilent(numbered(1)));
  EXPECT_TRUE(addresses_.IsSilent(numbered(0)));
  EXPECT_TRUE(addresses_.IsSilent(numbered(2)));
  EXPECT_TRUE(addresses_.IsSilent(u"http://one/more"));
}

TEST_F(SilentAddressesTest, AnAddressThatIsSilentAgainTakesNoFurtherPlace) {
  StaySilent(Question::kHeaders, u"http://other/");
  for (std::size_t i = 0; i < SilentAddresses::kMost + 1; ++i) {
    addresses_.TryAgain(kAddress, Wait::kFull);
    StaySilent(Question::kHeaders);
  }
  EXPECT_TRUE(addresses_.IsSilent(u"http://other/"));
}

TEST_F(SilentAddressesTest, AnAddressThatAnsweredMakesRoom) {
  StaySilent(Question::kHeaders, u"http://oldest/");
  for (std::size_t i = 1; i < SilentAddresses::kMost; ++i) {
    StaySilent(Question::kHeaders, u"http://h/" + app::FormatNumber(static_cast<std::int64_t>(i)));
  }
  addresses_.Answered(Question::kHeaders, u"http://h/1");
  StaySilent(Question::kHeaders, u"http://one/more");
  EXPECT_TRUE(addresses_.IsSilent(u"http://oldest/"));
}

TEST_F(SilentAddressesTest, ARecordingWaitsAsLongAsTheLibraryAndRemembersNothing) {
  SilentAddresses addresses(clock_, Patience::kOfARecording);
  for (int i = 0; i < 2; ++i) {
    const auto attempt = addresses.Begin(Question::kHeaders, kAddress);
    ASSERT_TRUE(attempt);
    EXPECT_EQ(attempt->milliseconds, 0U) << "no limit of its own";
    clock_.seconds_since_midnight += 10;
    addresses.Failed(Question::kHeaders, kAddress, *attempt, kNoAnswer);
    EXPECT_FALSE(addresses.IsSilent(kAddress));
  }
}

}  // namespace
}  // namespace stream
