#include "stream/metadata_readers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/stream/stream_rig.h"

namespace stream {
namespace {

using test_support::AudioBytes;
using testing::ElementsAre;
using Reader = Text (*)(StreamState&, std::int32_t);

constexpr std::int32_t kInterval = 8;
const std::string kLongTitle = "A much longer song title here";

class Readers : public testing::Test {
 protected:
  Readers() {
    state_.address = u"http://radio.example/live";
    state_.open_flags = 0x80000000u;
    rig_.ReadsTake(0.05);
  }

  StreamRig rig_;
  StreamState state_{rig_.Through()};
};

using ReadLong = Readers;
using ReadFirstBlock = Readers;
using ReadActive = Readers;

// What all three have in common.
class EveryReader : public Readers, public testing::WithParamInterface<Reader> {
 protected:
  Text Read(std::int32_t lMetaInt = kInterval) { return GetParam()(state_, lMetaInt); }
};

TEST_P(EveryReader, OpensWithAgentHeaderAndFlagsAndClosesInOrder) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='" + kLongTitle + "';"));
  EXPECT_EQ(Read(), u"A much longer song title here");
  EXPECT_THAT(rig_.internet.calls,
              ElementsAre("InternetOpenW(WinampMPEG/5.09, 1) = 1", "SetWaitLimit(1, 3000)",
                          "InternetOpenUrlW(1, http://radio.example/live, Icy-MetaData:1, 2147483648) = 2",
                          "InternetCloseHandle(2)", "InternetCloseHandle(1)"));
}

TEST_P(EveryReader, ReadsInChunksOf1024Bytes) {
  rig_.StationSends(AudioBytes(3000) + Block("StreamTitle='" + kLongTitle + "';"));
  EXPECT_EQ(Read(3000), u"A much longer song title here");
  EXPECT_THAT(rig_.internet.reads, ElementsAre(1024, 1024, 1024));
}

TEST_P(EveryReader, ReturnsNothingWithoutASession) {
  rig_.internet.failing = {"InternetOpenW"};
  EXPECT_EQ(Read(), u"");
  EXPECT_EQ(rig_.internet.calls.size(), 1U);
}

TEST_P(EveryReader, ClosesTheSessionWithoutAConnection) {
  rig_.internet.failing = {"InternetOpenUrlW"};
  EXPECT_EQ(Read(), u"");
  EXPECT_EQ(rig_.internet.calls.back(), "InternetCloseHandle(1)");
  EXPECT_TRUE(rig_.internet.reads.empty());
}

TEST_P(EveryReader, AnAddressThatStayedSilentIsNotOpenedAgainForAWhile) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='" + kLongTitle + "';"));
  rig_.internet.answer.reachable = false;
  rig_.internet.before_answer = [this](bool) { rig_.clock.seconds_since_midnight += 3; };
  EXPECT_EQ(Read(), u"");
  rig_.internet.answer.reachable = true;
  rig_.internet.calls.clear();
  EXPECT_EQ(Read(), u"") << "as if it could not be opened";
  EXPECT_TRUE(rig_.internet.calls.empty());
  rig_.clock.whole_seconds += 11;
  EXPECT_EQ(Read(), u"A much longer song title here");
  EXPECT_THAT(rig_.internet.calls, testing::Contains("SetWaitLimit(2, 1250)"));
  state_.stop_flag = false;
  Read();
  EXPECT_THAT(rig_.internet.calls, testing::Contains("SetWaitLimit(4, 3000)")) << "it has answered";
}

TEST_P(EveryReader, AnAddressWhoseHeadersAreSilentIsNotOpened) {
  const auto attempt = state_.silent_addresses.Begin(Question::kHeaders, state_.address);
  rig_.clock.seconds_since_midnight += 3;
  state_.silent_addresses.Failed(Question::kHeaders, state_.address, *attempt,
                                 {QueryFailure::Kind::kNoAnswer});
  EXPECT_EQ(Read(), u"");
  EXPECT_TRUE(rig_.internet.calls.empty());
}

TEST_P(EveryReader, AnOpenedAddressIsNotSilentHoweverLittleItSends) {
  rig_.StationSends("");
  rig_.ReadsTake(10);
  rig_.loop.on_pump = [this] { state_.stop_flag = true; };
  Read();
  rig_.internet.calls.clear();
  state_.stop_flag = false;
  Read();
  EXPECT_THAT(rig_.internet.calls, testing::Contains("SetWaitLimit(3, 3000)"));
}

TEST_P(EveryReader, FindsTheTitleHoweverTheBytesAreSplit) {
  const std::string bytes = kEightBytes + std::string(1, '\0') + kEightBytes +
                            Block("StreamTitle='" + kLongTitle + "';") + kEightBytes;
  for (std::size_t split = 1; split < bytes.size(); ++split) {
    rig_.internet.answer.reads = {{true, bytes.substr(0, split)}, {true, ""}, {true, bytes.substr(split)}};
    state_.stop_flag = false;
    EXPECT_EQ(Read(), u"A much longer song title here") << "split at " << split;
  }
  rig_.StationSends(bytes, 1);
  state_.stop_flag = false;
  EXPECT_EQ(Read(), u"A much longer song title here") << "byte by byte";
}

TEST_P(EveryReader, IgnoresTheBytesOfAFailedRead) {
  rig_.internet.answer.reads = {{false, "12345678"},
                                {true, kEightBytes + Block("StreamTitle='" + kLongTitle + "';")}};
  EXPECT_EQ(Read(), u"A much longer song title here");
}

TEST_P(EveryReader, TakesTheLongestBlock) {
  const std::string title(4000, 't');
  rig_.StationSends(kEightBytes + Block("StreamTitle='" + title + "';" + std::string(60, ' ')));
  EXPECT_EQ(Read(), Text(4000, u't'));
}

TEST_P(EveryReader, PassesOverABlockOfLineFeeds) {
  rig_.StationSends(kEightBytes + Block(std::string(16, '\n')) + kEightBytes +
                    Block("StreamTitle='" + kLongTitle + "';"));
  EXPECT_EQ(Read(), u"A much longer song title here");
}

TEST_P(EveryReader, AnAddressSetInsideTheWaitDoesNotTouchTheRunningCall) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='" + kLongTitle + "';"), 5);
  rig_.loop.on_pump = [this] {
    state_.address = u"http://other.example/";
    state_.open_flags = 0;
  };
  EXPECT_EQ(Read(), u"A much longer song title here");
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_P(EveryReader, CallsNestWithoutDisturbingEachOther) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='" + kLongTitle + "';"), 5);
  Text inner;
  rig_.loop.on_pump = [&] {
    rig_.loop.on_pump = nullptr;
    inner = Read();
    state_.stop_flag = false;
  };
  EXPECT_EQ(Read(), u"A much longer song title here");
  EXPECT_EQ(inner, u"A much longer song title here");
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_P(EveryReader, AbsurdIntervalsEnd) {
  for (const std::int32_t interval : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    rig_.StationSends(std::string("\xFF", 1) + std::string(4080, 'x') + std::string(100, '\0'));
    state_.stop_flag = false;
    const Text result = Read(interval);
    EXPECT_TRUE(result.empty() || result == u"TimeOut") << interval;
  }
}

std::string ReaderName(const testing::TestParamInfo<Reader>& reader) {
  const std::vector<std::string> names = {"Long", "FirstBlock", "Active"};
  return names.at(reader.index);
}

INSTANTIATE_TEST_SUITE_P(All, EveryReader,
                         testing::Values(&ReadLongTitle, &ReadFirstBlockTitle, &ReadActiveTitle), ReaderName);

TEST_F(ReadLong, WaitsForALaterBlockWhenTheTitleIsShort) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='Artist - Song';") + kEightBytes +
                    Block("StreamTitle='" + kLongTitle + "';"));
  EXPECT_EQ(ReadLongTitle(state_, kInterval), u"A much longer song title here");
}

TEST_F(ReadLong, TimesOutAfterJustOverSixSeconds) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='Artist - Song';"));
  rig_.ReadsTake(0.5);
  EXPECT_EQ(ReadLongTitle(state_, kInterval), u"TimeOut");
  EXPECT_EQ(rig_.internet.reads.size(), 13U) << "6.0 seconds are not over the limit, 6.5 are";
  EXPECT_EQ(rig_.loop.pumps, 12) << "the time is tested before the window works";
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_F(ReadLong, BytesAreCharactersOfTheSameCode) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='K\xFCnstler \x80 - a long title';"));
  EXPECT_EQ(ReadLongTitle(state_, kInterval), u"K\u00FCnstler \u0080 - a long title");
}

TEST_F(ReadFirstBlock, GivesAShortTitle) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='Artist - Song';"));
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), u"Artist - Song");
}

TEST_F(ReadFirstBlock, TimesOutAfterJustOverEightSeconds) {
  rig_.ReadsTake(0.5);
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), u"TimeOut");
  EXPECT_EQ(rig_.internet.reads.size(), 17U);
  EXPECT_EQ(rig_.loop.pumps, 17) << "the window works before the time is tested";
}

TEST_F(ReadFirstBlock, AStationWithoutTitlesTimesOut) {
  rig_.StationSends(std::string(100'000, 'A'));
  rig_.ReadsTake(0.01);
  EXPECT_EQ(ReadFirstBlockTitle(state_, 1 << 30), u"TimeOut");
}

TEST_F(ReadFirstBlock, TheStartIsRoundedToAWholeSecond) {
  rig_.clock.seconds_since_midnight = 1000.4;
  rig_.ReadsTake(0.5);
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), u"TimeOut");
  EXPECT_EQ(rig_.internet.reads.size(), 16U) << "measured from 1000: 8.4 after sixteen reads";
}

TEST_F(ReadFirstBlock, AStartInTheMiddleOfASecondIsRoundedToTheEvenOne) {
  rig_.ReadsTake(0.5);
  rig_.clock.seconds_since_midnight = 1000.5;
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), u"TimeOut");
  EXPECT_EQ(rig_.internet.reads.size(), 16U) << "measured from 1000";
  rig_.internet.reads.clear();
  rig_.clock.seconds_since_midnight = 1001.5;
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), u"TimeOut");
  EXPECT_EQ(rig_.internet.reads.size(), 18U) << "measured from 1002";
}

TEST_F(ReadFirstBlock, AcrossMidnightItWaitsUntilTheClockHasPassedTheLimitAgain) {
  rig_.clock.seconds_since_midnight = 86399.0;
  rig_.internet.before_read = [this] {
    rig_.clock.seconds_since_midnight += 1.0;
    if (rig_.clock.seconds_since_midnight >= 86400.0) rig_.clock.seconds_since_midnight = 0.0;
    if (rig_.internet.reads.size() == 50) rig_.internet.answer.reads.clear();
  };
  int pumps_until_given_up = 100;
  rig_.loop.on_pump = [&] {
    if (--pumps_until_given_up == 0) state_.abort_flag = true;
  };
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), u"") << "no time-out in a hundred seconds";
  EXPECT_EQ(rig_.internet.reads.size(), 100U);
}

TEST_F(ReadFirstBlock, BytesAreCharactersOfTheAnsiCodePage) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='\x80 K\xFCnstler \xC3\xBC \x81';"));
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), u"\u20AC K\u00FCnstler \u00C3\u00BC \u0081");
}

TEST_F(ReadFirstBlock, OtherEncodingsComeThroughAsTheirBytes) {
  rig_.StationSends(kEightBytes + Block("\xEF\xBB\xBFStreamTitle='\xCF\xF0\xE8\xE2\xE5\xF2';"));
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), u"\u00CF\u00F0\u00E8\u00E2\u00E5\u00F2");
  rig_.StationSends(kEightBytes + Block(std::string("StreamTitle='\xFE\xFF\0A\0B';", 21)));
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), Text(u"\u00FE\u00FF\0A\0B", 6));
}

TEST_F(ReadFirstBlock, EndsWithNothingAtABlockWithoutATitle) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='';StreamUrl='';") + kEightBytes +
                    Block("StreamTitle='Later';"));
  EXPECT_EQ(ReadFirstBlockTitle(state_, kInterval), u"");
}

TEST_F(Readers, TheAbortFlagEndsTheTimedReadersOnly) {
  for (const Reader reader : {&ReadLongTitle, &ReadFirstBlockTitle}) {
    rig_.internet.reads.clear();
    rig_.loop.on_pump = [this] { state_.abort_flag = true; };
    EXPECT_EQ(reader(state_, kInterval), u"");
    EXPECT_EQ(rig_.internet.reads.size(), 1U);
    state_.abort_flag = false;
  }
}

TEST_F(Readers, TheStopFlagDoesNotEndTheTimedReaders) {
  for (const Reader reader : {&ReadLongTitle, &ReadFirstBlockTitle}) {
    rig_.loop.on_pump = [this] { state_.stop_flag = true; };
    EXPECT_EQ(reader(state_, kInterval), u"TimeOut");
  }
}

TEST_F(Readers, TheTimedReadersUseTheStoredFlags) {
  state_.address = u"https://radio.example/live";
  state_.open_flags = 7;
  ReadFirstBlockTitle(state_, kInterval);
  EXPECT_THAT(rig_.internet.calls, testing::Contains(testing::HasSubstr("Icy-MetaData:1, 7)")));
}

TEST_F(ReadActive, ReturnsAtOnceWithoutAnAddress) {
  state_.address.clear();
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"");
  EXPECT_TRUE(rig_.internet.calls.empty());
  EXPECT_FALSE(state_.stop_flag);
}

TEST_F(ReadActive, WorksItsFlagsOutFromTheAddress) {
  state_.open_flags = 7;
  state_.stop_flag = true;
  state_.address = u"HTTPS://radio.example/live";
  ReadActiveTitle(state_, kInterval);
  EXPECT_THAT(rig_.internet.calls, testing::Contains(testing::HasSubstr("Icy-MetaData:1, 2155872256)")));
  state_.address = u"mms://radio.example/live";
  ReadActiveTitle(state_, kInterval);
  EXPECT_THAT(rig_.internet.calls, testing::Contains(testing::HasSubstr("Icy-MetaData:1, 0)")));
}

TEST_F(ReadActive, LeavesTheStopFlagSetWithItsTitle) {
  rig_.StationSends(kEightBytes + Block("StreamUrl='http://x';StreamTitle='Song';"));
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"Song");
  EXPECT_TRUE(state_.stop_flag);
}

TEST_F(ReadActive, GivesUpAtTheSecondEmptyBlock) {
  rig_.StationSends(kEightBytes + std::string(1, '\0') + kEightBytes + std::string(1, '\0') + kEightBytes +
                    Block("StreamTitle='Late';"));
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"");
  EXPECT_TRUE(state_.stop_flag);
}

TEST_F(ReadActive, TakesATitleAfterOneEmptyBlock) {
  rig_.StationSends(kEightBytes + std::string(1, '\0') + kEightBytes + Block("StreamTitle='Song';"));
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"Song");
}

TEST_F(ReadActive, HasNoTimeLimitAndEndsWithTheStopFlag) {
  rig_.ReadsTake(1000);
  rig_.loop.on_pump = [this] {
    if (rig_.internet.reads.size() == 50) state_.stop_flag = true;
  };
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"");
  EXPECT_EQ(rig_.internet.reads.size(), 50U);
}

TEST_F(ReadActive, LetsTheWindowWorkAfterEveryByteOfStreamData) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='Song';"));
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"Song");
  EXPECT_EQ(rig_.loop.pumps, kInterval + 1) << "the audio bytes and the length byte";
}

TEST_F(ReadActive, AStopInTheMiddleOfAReadLetsTheReadBeWalkedThrough) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='Song';"));
  rig_.loop.on_pump = [this] { state_.stop_flag = true; };
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"Song");
}

TEST_F(ReadLong, TakesTheFirstTitleOfABlock) {
  rig_.StationSends(kEightBytes +
                    Block("StreamTitle='" + kLongTitle + "';StreamTitle='Another " + kLongTitle + "';"));
  EXPECT_EQ(ReadLongTitle(state_, kInterval), u"A much longer song title here");
}

TEST_F(Readers, ATitleInTheReadThatCrossesTheLimitIsTaken) {
  rig_.ReadsTake(20);
  for (const Reader reader : {&ReadLongTitle, &ReadFirstBlockTitle}) {
    rig_.StationSends(kEightBytes + Block("StreamTitle='" + kLongTitle + "';"));
    EXPECT_EQ(reader(state_, kInterval), u"A much longer song title here");
  }
}

TEST_F(Readers, TheTimedReadersCountTheOpening) {
  rig_.internet.before_open = [this] { rig_.clock.seconds_since_midnight += 20; };
  for (const Reader reader : {&ReadLongTitle, &ReadFirstBlockTitle}) {
    rig_.internet.reads.clear();
    EXPECT_EQ(reader(state_, kInterval), u"TimeOut");
    EXPECT_EQ(rig_.internet.reads.size(), 1U);
  }
}

TEST_F(ReadActive, ABlockOfLineFeedsIsNeitherATitleNorAnEmptyBlock) {
  const std::string empty(1, '\0');
  rig_.StationSends(kEightBytes + empty + kEightBytes + Block(std::string(16, '\n')) + kEightBytes +
                    Block("StreamTitle='Song';"));
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"Song");
}

TEST_F(ReadActive, ABlockOfLineFeedsLeavesTheCountOfEmptyBlocks) {
  const std::string empty(1, '\0');
  rig_.StationSends(kEightBytes + empty + kEightBytes + Block(std::string(16, '\n')) + kEightBytes + empty +
                    kEightBytes + Block("StreamTitle='Late';"));
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"");
}

TEST_F(ReadActive, BytesAreCharactersOfTheSameNumber) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='\x80\xFC';"));
  EXPECT_EQ(ReadActiveTitle(state_, kInterval), u"\u0080\u00FC");
}

}  // namespace
}  // namespace stream
