// Both kinds of recorders, and the plain one.

#include "stream/recorders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/stream/recorders_fixture.h"

namespace stream {
namespace {

using test_support::AudioBytes;
using testing::ElementsAre;
using PlainRecorder = Recorders;

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

TEST_F(PlainRecorder, WritesJustTheBytesThatCameWhenItsHolderAsksForThat) {
  rig_.StationSends(AudioBytes(700), 100);
  RecordOptions options;
  options.writes = RecordOptions::Writes::kReceived;
  RecordPlain(state_, u"C:\\Rec", u".mp3", options);
  EXPECT_EQ(File(u"record.mp3"), AudioBytes(700));
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
}  // namespace
}  // namespace stream
