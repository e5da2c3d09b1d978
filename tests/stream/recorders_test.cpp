#include "stream/recorders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/stream/stream_rig.h"

namespace stream {
namespace {

using test_support::AudioBytes;
using testing::ElementsAre;

struct Playing {
  Text title, web_address, raw;
  friend bool operator==(const Playing&, const Playing&) = default;
};

class Recorders : public testing::Test {
 protected:
  Recorders() {
    state_.address = u"http://radio.example/live";
    rig_.loop.on_pump = [this] {
      if (rig_.internet.reads.size() >= stop_after_reads_) state_.stop_flag = true;
    };
  }

  void Plain(TextView extension = u".mp3") { RecordPlain(state_, u"C:\\Rec", Text(extension)); }
  void ByTitle(std::int32_t interval = 4, TextView extension = u".mp3") {
    RecordByTitle(state_, u"C:\\Rec", Text(extension), interval,
                  [this](const Text& title, const Text& address, const Text& raw) {
                    played_.push_back({title, address, raw});
                  });
  }
  std::string File(const Text& name) {
    return rig_.files.files.contains(name) ? rig_.files.files[name] : "<missing>";
  }

  StreamRig rig_;
  StreamState state_{rig_.Through()};
  std::size_t stop_after_reads_ = 20;
  std::vector<Playing> played_;
};

using PlainRecorder = Recorders;
using TitleRecorder = Recorders;

TEST_F(PlainRecorder, WritesTheStreamIntoOneFileOfAFixedName) {
  const std::string audio = AudioBytes(1024);
  rig_.StationSends(audio, 512);
  Plain();
  EXPECT_EQ(File(u"record.mp3"), audio);
  EXPECT_THAT(rig_.files.opened, ElementsAre(u"C:\\Rec\\record.mp3"));
}

TEST_F(PlainRecorder, HasNoExtensionForAnUnknownContentType) {
  Plain(u"");
  EXPECT_EQ(File(u"record"), "");
}

TEST_F(PlainRecorder, OpensWithoutAnExtraHeaderAndClosesTheFileFirst) {
  stop_after_reads_ = 1;
  Plain();
  EXPECT_THAT(rig_.internet.calls,
              ElementsAre("InternetOpenW(WinampMPEG/5.09, 1) = 1",
                          "InternetOpenUrlW(1, http://radio.example/live, , 2147483648) = 2",
                          "InternetCloseHandle(2)", "InternetCloseHandle(1)"));
  EXPECT_EQ(rig_.files.OpenFiles(), 0U);
}

TEST_F(Recorders, AnAddressThatStayedSilentIsOpenedAllTheSame) {
  const auto attempt = state_.silent_addresses.Begin(Question::kHeaders, state_.address);
  rig_.clock.seconds_since_midnight += 3;
  state_.silent_addresses.Failed(Question::kHeaders, state_.address, *attempt,
                                 {QueryFailure::Kind::kNoAnswer});
  stop_after_reads_ = 1;
  Plain();
  state_.stop_flag = false;
  ByTitle();
  EXPECT_THAT(rig_.internet.calls, testing::Contains(testing::StartsWith("InternetOpenUrlW")).Times(2));
  EXPECT_THAT(rig_.internet.calls, testing::Not(testing::Contains(testing::StartsWith("SetWaitLimit"))));
}

TEST_F(Recorders, TheFileIsClosedBeforeTheConnection) {
  stop_after_reads_ = 1;
  rig_.files.on_close = [this] { rig_.internet.calls.emplace_back("file"); };
  rig_.StationSends("drop" + Block("StreamTitle='One';"));
  Plain();
  const std::vector<std::string> end = {"file", "InternetCloseHandle(2)", "InternetCloseHandle(1)"};
  EXPECT_EQ(std::vector<std::string>(rig_.internet.calls.end() - 3, rig_.internet.calls.end()), end);
  rig_.internet.reads.clear();
  state_.stop_flag = false;
  ByTitle();
  EXPECT_EQ(rig_.internet.calls.at(rig_.internet.calls.size() - 3), "file");
}

TEST_F(Recorders, WorkTheirFlagsOutFromTheAddress) {
  state_.open_flags = 7;
  stop_after_reads_ = 0;
  for (const auto& [address, flags] : {std::pair(u"HTTPS://radio.example/live", "2155872256)"),
                                       std::pair(u"mms://radio.example/live", " 0)")}) {
    state_.address = address;
    for (const bool by_title : {false, true}) {
      rig_.internet.calls.clear();
      if (by_title) {
        ByTitle();
      } else {
        Plain();
      }
      EXPECT_THAT(rig_.internet.calls.at(1), testing::HasSubstr(flags));
    }
  }
}

TEST_F(Recorders, TheWindowWorksAfterEveryRead) {
  stop_after_reads_ = 5;
  Plain();
  EXPECT_EQ(rig_.loop.pumps, 5);
  rig_.internet.reads.clear();
  state_.stop_flag = false;
  ByTitle();
  EXPECT_EQ(rig_.loop.pumps, 10);
}

TEST_F(PlainRecorder, ReadsInChunksOf512Bytes) {
  stop_after_reads_ = 2;
  Plain();
  EXPECT_THAT(rig_.internet.reads, ElementsAre(512, 512));
}

TEST_F(PlainRecorder, AShortReadWritesTheWholeBufferWithItsStaleTail) {
  rig_.internet.answer.reads = {{true, std::string(512, 'a')}, {true, "bbb"}};
  Plain();
  EXPECT_EQ(File(u"record.mp3"), std::string(512, 'a') + "bbb" + std::string(509, 'a'));
}

TEST_F(PlainRecorder, TheTailOfAFirstShortReadIsZero) {
  rig_.internet.answer.reads = {{true, "b"}};
  Plain();
  EXPECT_EQ(File(u"record.mp3"), "b" + std::string(511, '\0'));
}

TEST_F(PlainRecorder, FailedAndEmptyReadsWriteNothing) {
  rig_.internet.answer.reads = {{true, ""}, {false, "xxx"}, {true, std::string(512, 'a')}};
  Plain();
  // What a failed read left in the buffer is overwritten by the next full one.
  EXPECT_EQ(File(u"record.mp3"), std::string(512, 'a'));
}

TEST_F(PlainRecorder, AnExistingFileIsOverwrittenFromItsStartAndNotTruncated) {
  rig_.files.files[u"record.mp3"] = std::string(600, 'o');
  rig_.StationSends(std::string(512, 'n'));
  Plain();
  EXPECT_EQ(File(u"record.mp3"), std::string(512, 'n') + std::string(88, 'o'));
}

TEST_F(PlainRecorder, AFullDiskEndsTheRecordingAndKeepsWhatWasWritten) {
  rig_.files.free_bytes = 700;
  rig_.StationSends(AudioBytes(4096), 512);
  stop_after_reads_ = 1000;
  Plain();
  EXPECT_EQ(File(u"record.mp3"), AudioBytes(700));
  EXPECT_EQ(rig_.internet.reads.size(), 2U);
  EXPECT_EQ(rig_.files.OpenFiles(), 0U);
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_F(PlainRecorder, AFileThatCannotBeOpenedEndsTheRecording) {
  rig_.files.refused = {u"record.mp3"};
  stop_after_reads_ = 1000;
  Plain();
  EXPECT_TRUE(rig_.internet.reads.empty());
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_F(PlainRecorder, ReadersOfTheFileSeeEveryBlock) {
  rig_.StationSends(AudioBytes(1024), 512);
  stop_after_reads_ = 2;
  Plain();
  EXPECT_EQ(rig_.files.flushes, 2);
}

TEST_F(Recorders, NeitherStartsWithoutAnAddressOrAConnection) {
  state_.address.clear();
  Plain();
  ByTitle();
  EXPECT_TRUE(rig_.internet.calls.empty());
  state_.address = u"http://radio.example/live";
  rig_.internet.answer.reachable = false;
  Plain();
  ByTitle();
  EXPECT_TRUE(rig_.files.opened.empty());
  EXPECT_TRUE(played_.empty());
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

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

TEST_F(PlainRecorder, WritesJustTheBytesThatCameWhenItsHolderAsksForThat) {
  rig_.StationSends(AudioBytes(700), 100);
  RecordOptions options;
  options.writes = RecordOptions::Writes::kReceived;
  RecordPlain(state_, u"C:\\Rec", u".mp3", options);
  EXPECT_EQ(File(u"record.mp3"), AudioBytes(700));
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

TEST_F(Recorders, ReadMoreAtATimeFromAFastStreamWhenTheirHolderAsksForThat) {
  RecordOptions options;
  options.writes = RecordOptions::Writes::kReceived;
  const std::string audio = AudioBytes(512 + 1024 + 700);
  stop_after_reads_ = 5;
  for (const bool by_title : {false, true}) {
    rig_.StationSends(audio);
    rig_.internet.reads.clear();
    state_.stop_flag = false;
    if (by_title) {
      RecordByTitle(
          state_, u"C:\\Rec", u".mp3", 4, [](const Text&, const Text&, const Text&) {}, options);
    } else {
      RecordPlain(state_, u"C:\\Rec", u".mp3", options);
      EXPECT_EQ(File(u"record.mp3"), audio);
    }
    EXPECT_THAT(rig_.internet.reads, ElementsAre(512, 1024, 2048, 512, 512));
  }
}

TEST_F(Recorders, NameAFileWithoutATitleAsTheirHolderAsks) {
  RecordOptions options;
  options.untitled_name = u"Radio: Eins";
  rig_.StationSends(std::string(512, 'a'));
  RecordPlain(state_, u"C:\\Rec", u".mp3", options);
  EXPECT_EQ(File(u"Radio_ Eins.mp3"), std::string(512, 'a'));
  rig_.files.files.clear();
  rig_.internet.reads.clear();
  state_.stop_flag = false;
  const std::string empty(1, '\0');
  rig_.StationSends("drop" + empty + "drop" + empty + "1111");
  RecordByTitle(
      state_, u"C:\\Rec", u".mp3", 4,
      [this](const Text& title, const Text& address, const Text& raw) {
        played_.push_back({title, address, raw});
      },
      options);
  EXPECT_EQ(File(u"Radio_ Eins.mp3"), "1111");
  EXPECT_THAT(played_, ElementsAre(Playing{u"unknown", u"", u""}));
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
