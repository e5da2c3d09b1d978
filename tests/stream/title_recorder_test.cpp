// The recorder that gives each title its file.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/stream/recorders_fixture.h"

namespace stream {
namespace {

using test_support::AudioBytes;
using testing::ElementsAre;
using TitleRecorder = Recorders;

TEST_F(TitleRecorder, AsksForTitlesAndClosesInOrder) {
  stop_after_reads_ = 1;
  ByTitle();
  EXPECT_THAT(rig_.internet.calls,
              ElementsAre("InternetOpenW(WinampMPEG/5.09, 1) = 1",
                          "InternetOpenUrlW(1, http://radio.example/live, Icy-MetaData:1, 2147483648) = 2",
                          "InternetCloseHandle(2)", "InternetCloseHandle(1)"));
  EXPECT_THAT(rig_.internet.reads, ElementsAre(512));
}

TEST_F(TitleRecorder, SplitsTheAudioAtTheTitlesAndDropsWhatComesBeforeTheFirst) {
  rig_.StationSends("drop" + Block("StreamTitle='One';") + "1111" + std::string(1, '\0') + "2222" +
                    Block("StreamTitle='Two';") + "3333");
  ByTitle();
  EXPECT_EQ(File(u"One.mp3"), "11112222");
  EXPECT_EQ(File(u"Two.mp3"), "3333");
  EXPECT_EQ(rig_.files.OpenFiles(), 0U);
}

TEST_F(TitleRecorder, WritesTheSameFilesHoweverTheBytesAreSplit) {
  const std::string bytes =
      "drop" + Block("StreamTitle='One';") + "1111" + Block("StreamTitle='Two';") + "3333";
  for (std::size_t split = 1; split < bytes.size(); ++split) {
    rig_.files.files.clear();
    rig_.internet.reads.clear();
    state_.stop_flag = false;
    rig_.internet.answer.reads = {{true, bytes.substr(0, split)}, {true, bytes.substr(split)}};
    ByTitle();
    EXPECT_EQ(File(u"One.mp3"), "1111") << split;
    EXPECT_EQ(File(u"Two.mp3"), "3333") << split;
  }
}

TEST_F(TitleRecorder, TheSameTitleReopensItsFileFromTheStart) {
  rig_.StationSends("drop" + Block("StreamTitle='One';") + "1234" + Block("StreamTitle='One';") + "ab");
  ByTitle();
  EXPECT_EQ(File(u"One.mp3"), "ab34");
  EXPECT_THAT(rig_.files.opened, ElementsAre(u"C:\\Rec\\One.mp3", u"C:\\Rec\\One.mp3"));
  EXPECT_EQ(played_.size(), 2U);
}

TEST_F(TitleRecorder, EveryBlockRaisesTheEventWithItsRawText) {
  const std::string text = "StreamTitle='O\nne';StreamUrl='http://x';";
  rig_.StationSends("drop" + Block(text));
  ByTitle();
  const Text raw =
      u"StreamTitle='One';StreamUrl='http://x';" + Text(Block(text).size() - 1 - text.size(), u'\0');
  EXPECT_THAT(played_, ElementsAre(Playing{u"One", u"http://x", raw}));
}

TEST_F(TitleRecorder, TitleAndWebAddressAreKeptUntilNewOnesCome) {
  rig_.StationSends("drop" + Block("StreamUrl='http://x';StreamTitle='One';") + "1111" +
                    Block("StreamTitle='';StreamUrl='';") + "2222");
  ByTitle();
  ASSERT_EQ(played_.size(), 2U);
  EXPECT_EQ(played_[1].title, u"One");
  EXPECT_EQ(played_[1].web_address, u"http://x");
  EXPECT_EQ(File(u"One.mp3"), "11112222") << "an empty title opens no file";
}

TEST_F(TitleRecorder, AColonInATitleBecomesAnUnderscoreInNameAndEvent) {
  rig_.StationSends("drop" + Block("StreamTitle='AC: DC - Song';") + "1111");
  ByTitle();
  EXPECT_EQ(File(u"AC_ DC - Song.mp3"), "1111");
  EXPECT_EQ(played_.at(0).title, u"AC_ DC - Song");
}

TEST_F(TitleRecorder, OtherForbiddenCharactersChangeTheNameOnly) {
  rig_.StationSends("drop" + Block("StreamTitle='../a\\b?';") + "1111");
  ByTitle();
  EXPECT_EQ(File(u".._a_b_.mp3"), "1111");
  EXPECT_EQ(played_.at(0).title, u"../a\\b?");
}

TEST_F(TitleRecorder, ALongTitleIsCutToWhatTheFolderTakes) {
  rig_.files.longest_file_name = 14;
  rig_.StationSends("drop" + Block("StreamTitle='1234567890 and more';") + "1111");
  ByTitle();
  EXPECT_EQ(File(u"1234567890.mp3"), "1111");
}

TEST_F(TitleRecorder, EveryTitleOfABlockOpensItsFileAndTheLastOneIsReported) {
  rig_.StationSends("drop" + Block("StreamTitle='One';StreamTitle='Two';") + "1111");
  ByTitle();
  EXPECT_THAT(rig_.files.opened, ElementsAre(u"C:\\Rec\\One.mp3", u"C:\\Rec\\Two.mp3"));
  EXPECT_EQ(File(u"Two.mp3"), "1111");
  ASSERT_EQ(played_.size(), 1U);
  EXPECT_EQ(played_[0].title, u"Two");
}

TEST_F(TitleRecorder, TitlesLoseApostrophesAndEndAtASecondEqualsSign) {
  rig_.StationSends("drop" + Block("STREAMTITLE='Don't = Stop';") + "1111");
  ByTitle();
  EXPECT_EQ(played_.at(0).title, u"Dont ");
  EXPECT_EQ(File(u"Dont .mp3"), "1111");
}

TEST_F(TitleRecorder, ABlockOfLineFeedsIsReportedWithoutATitle) {
  rig_.StationSends("drop" + Block(std::string(16, '\n')) + "1111");
  ByTitle();
  EXPECT_THAT(played_, ElementsAre(Playing{u"", u"", u""}));
  EXPECT_TRUE(rig_.files.opened.empty());
}

TEST_F(TitleRecorder, AnIntervalOfZeroMakesEveryByteALengthByte) {
  rig_.StationSends(std::string(2, '\0') + "\x02" + "StreamTitle='One';              " +
                    std::string(1, '\0'));
  ByTitle(0);
  EXPECT_EQ(File(u"unknown.mp3"), "");
  EXPECT_EQ(File(u"One.mp3"), "");
  EXPECT_EQ(played_.size(), 2U);
}

TEST_F(TitleRecorder, TheSecondEmptyBlockOpensTheUnknownFile) {
  const std::string empty(1, '\0');
  rig_.StationSends("drop" + empty + "drop" + empty + "1111" + empty + "2222" + Block("StreamTitle='One';") +
                    "3333");
  ByTitle();
  EXPECT_EQ(File(u"unknown.mp3"), "11112222");
  EXPECT_EQ(File(u"One.mp3"), "3333");
  ASSERT_EQ(played_.size(), 2U);
  EXPECT_EQ(played_[0], (Playing{u"unknown", u"", u""}));
}

TEST_F(TitleRecorder, EmptyBlocksAreNotCountedWhileAFileIsOpen) {
  const std::string empty(1, '\0');
  rig_.StationSends("drop" + empty + "drop" + Block("StreamTitle='One';") + "1111" + empty + "2222" + empty);
  ByTitle();
  EXPECT_EQ(File(u"unknown.mp3"), "<missing>");
  EXPECT_EQ(File(u"One.mp3"), "11112222");
}

TEST_F(TitleRecorder, WritesAudioByteByByte) {
  rig_.StationSends("drop" + Block("StreamTitle='One';") + "1111");
  ByTitle();
  EXPECT_THAT(rig_.files.write_sizes, ElementsAre(1, 1, 1, 1));
}

TEST_F(TitleRecorder, ATitleWhoseFileIsRefusedEndsTheRecordingAndKeepsTheRest) {
  rig_.files.refused = {u"Two.mp3"};
  rig_.StationSends("drop" + Block("StreamTitle='One';") + "1111" + Block("StreamTitle='Two';") + "2222");
  stop_after_reads_ = 1000;
  ByTitle();
  EXPECT_EQ(File(u"One.mp3"), "1111");
  EXPECT_EQ(played_.size(), 1U);
  EXPECT_EQ(rig_.internet.reads.size(), 1U);
  EXPECT_EQ(rig_.files.OpenFiles(), 0U);
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_F(TitleRecorder, AFullDiskEndsTheRecordingAndKeepsWhatWasWritten) {
  rig_.files.free_bytes = 2;
  rig_.StationSends("drop" + Block("StreamTitle='One';") + "1111");
  stop_after_reads_ = 1000;
  ByTitle();
  EXPECT_EQ(File(u"One.mp3"), "11");
  EXPECT_EQ(rig_.internet.reads.size(), 1U);
}

TEST_F(TitleRecorder, AFlushThatFailsEndsTheRecording) {
  rig_.files.flush_fails = true;
  rig_.StationSends("drop" + Block("StreamTitle='One';") + "1111");
  stop_after_reads_ = 1000;
  ByTitle();
  EXPECT_EQ(rig_.internet.reads.size(), 1U);
}

TEST_F(TitleRecorder, ADeadStreamIsKeptUntilTheStopFlagIsSet) {
  rig_.internet.answer.reads = {{false, ""}};
  stop_after_reads_ = 100;
  ByTitle();
  EXPECT_EQ(rig_.internet.reads.size(), 100U);
}

TEST_F(TitleRecorder, AStopInsideTheEventEndsAfterTheRunningRead) {
  rig_.StationSends("drop" + Block("StreamTitle='One';") + "1111");
  RecordByTitle(state_, u"C:\\Rec", u"", 4,
                [this](const Text&, const Text&, const Text&) { state_.stop_flag = true; });
  EXPECT_EQ(File(u"One"), "1111");
  EXPECT_EQ(rig_.internet.reads.size(), 1U);
}

TEST_F(TitleRecorder, WritesPiecesAsTheyComeWhenItsHolderAsksForThat) {
  rig_.StationSends("drop" + Block("StreamTitle='One';") + "1111" + std::string(1, '\0') + "22");
  RecordOptions options;
  options.writes = RecordOptions::Writes::kReceived;
  RecordByTitle(
      state_, u"C:\\Rec", u".mp3", 4, [](const Text&, const Text&, const Text&) {}, options);
  EXPECT_THAT(rig_.files.write_sizes, ElementsAre(4, 2));
  EXPECT_EQ(File(u"One.mp3"), "111122");
}

TEST_F(TitleRecorder, WritesTheSameFilesInPiecesHoweverTheBytesAreSplit) {
  const std::string bytes =
      "drop" + Block("StreamTitle='One';") + "1111" + Block("StreamTitle='Two';") + "3333";
  RecordOptions options;
  options.writes = RecordOptions::Writes::kReceived;
  for (std::size_t split = 1; split < bytes.size(); ++split) {
    rig_.files.files.clear();
    rig_.internet.reads.clear();
    state_.stop_flag = false;
    rig_.internet.answer.reads = {{true, bytes.substr(0, split)}, {true, bytes.substr(split)}};
    RecordByTitle(
        state_, u"C:\\Rec", u".mp3", 4, [](const Text&, const Text&, const Text&) {}, options);
    EXPECT_EQ(File(u"One.mp3"), "1111") << split;
    EXPECT_EQ(File(u"Two.mp3"), "3333") << split;
  }
}

TEST_F(TitleRecorder, TakesTheBytesOfATitleForCharactersOfTheSameCode) {
  rig_.StationSends("1234" + Block("StreamTitle='K\xC3\xBC';") + "abcd");
  ByTitle();
  EXPECT_EQ(File(u"K\u00C3\u00BC.mp3"), "abcd");
  ASSERT_EQ(played_.size(), 1U);
  EXPECT_EQ(played_.front().title, u"K\u00C3\u00BC");
}

TEST_F(TitleRecorder, DecodesTitlesWhenItsHolderAsksForThat) {
  rig_.StationSends("1234" +
                    Block("StreamTitle='Stra\xC3\x9F"
                          "e \xE2\x80\x93 \xF0\x9F\x8E\xB5';") +
                    "abcd" +
                    Block("StreamTitle='K\xFC"
                          "che \x96 Bad';") +
                    "efgh" + Block("StreamTitle='Plain';") + "ijkl");
  RecordOptions options;
  options.title_characters = RecordOptions::TitleCharacters::kDecoded;
  RecordByTitle(
      state_, u"C:\\Rec", u".mp3", 4, [](const Text&, const Text&, const Text&) {}, options);
  EXPECT_EQ(File(u"Stra\u00DFe \u2013 \U0001F3B5.mp3"), "abcd");
  EXPECT_EQ(File(u"K\u00FCche \u2013 Bad.mp3"), "efgh");
  EXPECT_EQ(File(u"Plain.mp3"), "ijkl");
}

TEST_F(TitleRecorder, EveryColonOfATitleIsReplaced) {
  rig_.StationSends("drop" + Block("StreamTitle='A: B: C';") + "1111");
  ByTitle();
  EXPECT_EQ(played_.at(0).title, u"A_ B_ C");
}

TEST_F(TitleRecorder, ABlockWithoutATitleLeavesTheCountOfEmptyBlocks) {
  const std::string empty(1, '\0');
  rig_.StationSends("drop" + empty + "drop" + Block("StreamUrl='http://x';") + "drop" + empty + "1111");
  ByTitle();
  EXPECT_EQ(File(u"unknown.mp3"), "1111");
}

TEST_F(TitleRecorder, TheUnknownTitleHasNoWebAddressAndIsNotKeptForLater) {
  const std::string empty(1, '\0');
  rig_.StationSends("drop" + Block("StreamUrl='http://x';") + "drop" + empty + "drop" + empty + "1111" +
                    Block("StreamTitle='';") + "2222");
  ByTitle();
  ASSERT_EQ(played_.size(), 3U);
  EXPECT_EQ(played_[1], (Playing{u"unknown", u"", u""}));
  EXPECT_EQ(played_[2].title, u"");
  EXPECT_EQ(played_[2].web_address, u"http://x");
}
}  // namespace
}  // namespace stream
