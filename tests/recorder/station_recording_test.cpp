#include "recorder/station_recording.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "tests/recorder/station_recording_fixture.h"

namespace recorder {
namespace {

using test_support::AudioBytes;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(Recording, GivesEachTitleItsFileWhenTheServerOffersTitles) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111" + TitleOf("Zwei") + "2222");
  const Status& status = Run();
  EXPECT_EQ(rig_.File(u"Eins.mp3"), "1111");
  EXPECT_EQ(rig_.File(u"Zwei.mp3"), "2222");
  EXPECT_EQ(status.station, u"Radio Eins");
  EXPECT_EQ(status.title, u"Zwei");
  EXPECT_EQ(status.bytes, 8U);
  EXPECT_EQ(status.files, 2U);
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
  EXPECT_EQ(rig_.record_files.OpenFiles(), 0U);
}

TEST_F(Recording, WritesExactlyTheStreamWhenTheServerOffersNoTitles) {
  rig_.internet.answer.raw_headers = RecorderRig::Headers(u"");
  rig_.StationSends(AudioBytes(700));
  Run();
  EXPECT_EQ(rig_.File(u"Radio Eins.mp3"), AudioBytes(700));
}

TEST_F(Recording, IsPlainWhenTheIntervalIsNoCount) {
  rig_.internet.answer.raw_headers = RecorderRig::Headers(u"icy-metaint: 0\r\n");
  rig_.StationSends(AudioBytes(30));
  Run();
  EXPECT_EQ(rig_.File(u"Radio Eins.mp3"), AudioBytes(30));
}

TEST_F(Recording, NamesTheFileAfterTheStationWhenItHasNoTitles) {
  rig_.internet.answer.raw_headers =
      u"HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\nicy-name: .M\u00C3\u00BCnchen/1?\r\n\r\n";
  rig_.StationSends(AudioBytes(30));
  Run();
  EXPECT_EQ(rig_.File(u"_M\u00FCnchen_1_.mp3"), AudioBytes(30));
}

TEST_F(Recording, NamesTheFileAfterTheHostWhenTheStationHasNoNameEither) {
  rig_.internet.answer.raw_headers = u"HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\nicy-name: \r\n\r\n";
  rig_.StationSends(AudioBytes(30));
  rig_.requests.requests[u"http://lists.example/live.pls"] = {
      {4}, u"[playlist]\r\nNumberOfEntries=1\r\nFile1=http://radio.example:8000/real\r\n"};
  Run(u"http://lists.example/live.pls");
  EXPECT_EQ(rig_.File(u"radio.example.mp3"), AudioBytes(30));
}

TEST_F(Recording, NamesTheFileAfterTheStationWhenItsTitlesStayAway) {
  const std::string no_block(1, '\0');
  rig_.StationSends("----" + no_block + "----" + no_block + "1111");
  EXPECT_EQ(Run().title, u"");
  EXPECT_EQ(rig_.File(u"Radio Eins.mp3"), "1111");
}

TEST_F(Recording, ATitleMayBeTheWordUnknown) {
  rig_.StationSends("----" + TitleOf("unknown") + "1111");
  EXPECT_EQ(Run().title, u"unknown");
  EXPECT_EQ(rig_.File(u"unknown.mp3"), "1111");
}

TEST_F(Recording, ReportsWhatItDoes) {
  KeepPhases();
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  Run();
  EXPECT_THAT(phases_, ElementsAre(Phase::kConnecting, Phase::kRecording, Phase::kEnded));
  EXPECT_FALSE(rig_.recording.Running());
}

TEST_F(Recording, MakesTheFolderWithAllItsLevels) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  Run();
  EXPECT_THAT(rig_.files.created_folders, ElementsAre(u"C:", u"C:\\Musik", u"C:\\Musik\\Aufnahmen"));
}

TEST_F(Recording, WaitsForItsServersAsLongAsTheInternetLibraryAndAsksThemAfterEveryPause) {
  rig_.internet.answer.reachable = false;
  rig_.internet.before_answer = [this](bool) { rig_.clock.seconds_since_midnight += 10; };
  std::size_t queries = 0;
  rig_.loop.on_pump = [&] {
    queries = static_cast<std::size_t>(std::ranges::count_if(
        rig_.internet.calls, [](const std::string& call) { return call.starts_with("HttpSendRequestW"); }));
    if (queries >= 3) rig_.recording.Stop();
  };
  Run();
  EXPECT_EQ(queries, 3U);
  EXPECT_EQ(rig_.loop.slept, 1000U + 2000U + 50U) << "no more than the pauses";
  EXPECT_THAT(rig_.internet.calls, testing::Not(Contains(testing::StartsWith("SetWaitLimit"))));
}

TEST_F(Recording, PutsItsFilesIntoItsFolder) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  Run();
  EXPECT_THAT(rig_.record_files.opened, ElementsAre(u"C:\\Musik\\Aufnahmen\\Eins.mp3"));
}

TEST_F(Recording, EndsWhenTheFolderCannotBeMade) {
  rig_.files.can_create_folders = false;
  EXPECT_EQ(Run().fault, Fault::kCannotWrite);
  EXPECT_EQ(Connections(), 0);
}

TEST_F(Recording, EndsWhenTheDiskIsFullAndKeepsWhatWasWritten) {
  rig_.record_files.free_bytes = 6;
  rig_.StationSends("----" + TitleOf("Eins") + "1111" + TitleOf("Zwei") + "2222");
  EXPECT_EQ(Run().fault, Fault::kDiskFull);
  EXPECT_EQ(rig_.File(u"Eins.mp3"), "1111");
  EXPECT_EQ(rig_.File(u"Zwei.mp3"), "22") << "what still fitted";
  EXPECT_EQ(Connections(), 1);
}

TEST_F(Recording, EndsWhenAFileCannotBeMade) {
  rig_.record_files.refused = {u"Zwei.mp3"};
  rig_.StationSends("----" + TitleOf("Eins") + "1111" + TitleOf("Zwei") + "2222");
  EXPECT_EQ(Run().fault, Fault::kCannotWrite);
  EXPECT_EQ(rig_.File(u"Eins.mp3"), "1111");
  EXPECT_EQ(Connections(), 1);
}

TEST_F(Recording, NeverWritesOverAnEarlierRun) {
  rig_.record_files.files[u"Eins.mp3"] = "from last year";
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  Run();
  EXPECT_EQ(rig_.File(u"Eins.mp3"), "from last year");
  EXPECT_EQ(rig_.File(u"Eins (2).mp3"), "1111");
}

TEST_F(Recording, StopWhileAPlaylistIsFetchedRecordsNothing) {
  rig_.requests.request = {{1}, u""};
  rig_.loop.on_pump = [this] {
    ++rig_.clock.whole_seconds;
    rig_.recording.Stop();
  };
  Run();
  EXPECT_THAT(rig_.internet.calls, IsEmpty());
}

TEST_F(Recording, FollowsAPlaylistToItsFirstEntry) {
  rig_.requests.requests[u"http://radio.example/live.pls"] = {
      {4}, u"[playlist]\r\nNumberOfEntries=1\r\nFile1=http://radio.example/real\r\n"};
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  Run(u"http://radio.example/live.pls");
  EXPECT_EQ(rig_.File(u"Eins.mp3"), "1111");
  EXPECT_THAT(rig_.internet.calls, Contains(testing::HasSubstr("http://radio.example/real")));
}

TEST_F(Recording, FollowsAPlaylistOnTheDisk) {
  rig_.files.files[u"/home/u/mein.m3u"] = "#EXTM3U\r\n#EXTINF:-1,X\r\nhttp://radio.example/disk\r\n";
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  Run(u"/home/u/mein.m3u");
  EXPECT_THAT(rig_.internet.calls, Contains(testing::HasSubstr("http://radio.example/disk")));
}

TEST_F(Recording, RecordsNoPagesAndNoPlaylists) {
  for (const Text type : {u"text/html; charset=utf-8", u"audio/x-mpegurl", u"application/vnd.apple.mpegurl",
                          u"audio/x-scpls"}) {
    rig_.internet.answer.raw_headers = u"HTTP/1.1 200 OK\r\nContent-Type: " + type + u"\r\n\r\n";
    rig_.loop.on_sleep = [this](std::uint32_t) {
      EXPECT_EQ(rig_.recording.GetStatus().fault, Fault::kNoSound);
      rig_.recording.Stop();
    };
    Run();
    EXPECT_EQ(Connections(), 0) << test_support::Ascii(type);
  }
}

TEST_F(Recording, KnowsTheContentTypeInSpiteOfItsParameters) {
  rig_.internet.answer.raw_headers =
      u"HTTP/1.1 200 OK\r\nContent-Type: audio/aacp; charset=UTF-8\r\nicy-metaint: 4\r\n\r\n";
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  EXPECT_EQ(Run().station, kLink) << "a station without a name";
  EXPECT_EQ(rig_.File(u"Eins.m4a"), "1111");
}

TEST_F(Recording, DecodesTitlesAndStationNames) {
  // Each byte of a header comes through the code page: 0xC3 0xBC is u with two dots in UTF-8.
  rig_.internet.answer.raw_headers =
      u"HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\nicy-name: M\u00C3\u00BCnchen\r\nicy-metaint: "
      u"4\r\n\r\n";
  rig_.StationSends("----" +
                    TitleOf("K\xC3\xBC"
                            "che") +
                    "1111");
  const Status& status = Run();
  EXPECT_EQ(status.station, u"M\u00FCnchen");
  EXPECT_EQ(status.title, u"K\u00FCche");
  EXPECT_EQ(rig_.File(u"K\u00FCche.mp3"), "1111");
}

TEST_F(Recording, DoesNothingWithoutALinkAndWhileItRuns) {
  Run(u"  ");
  EXPECT_EQ(rig_.recording.GetStatus().phase, Phase::kIdle);
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  rig_.loop.on_pump = [this] {
    rig_.recording.Run(u"http://radio.example/other");
    rig_.recording.Stop();
  };
  Run();
  EXPECT_EQ(Connections(), 1);
}

TEST_F(Recording, CountsAnewInANewRun) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  Run();
  rig_.stop_after_reads = 20;
  const Status& status = Run();
  EXPECT_EQ(status.bytes, 4U);
  EXPECT_EQ(status.files, 1U);
  EXPECT_EQ(rig_.File(u"Eins (2).mp3"), "1111");
}

TEST_F(Recording, ASecondRunBeginsAnew) {
  rig_.internet.answer.raw_headers =
      u"HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\nContent-Length: 4\r\n\r\n";
  rig_.StationSends("1111");
  rig_.internet.answer.closes = true;
  EXPECT_EQ(Run().seconds, 1) << "a file, recorded to its end";

  rig_.internet.answer.reachable = false;
  AtEachAttempt([this](int attempt) {
    const Status& status = rig_.recording.GetStatus();
    EXPECT_EQ(status.station, u"http://radio.example/other");
    EXPECT_EQ(status.title, u"");
    EXPECT_EQ(status.seconds, 0);
    EXPECT_EQ(status.bytes, 0U);
    EXPECT_EQ(status.fault, attempt == 1 ? Fault::kNone : Fault::kUnreachable);
    if (attempt == 2) rig_.recording.Stop();
  });
  Run(u"http://radio.example/other");
  EXPECT_EQ(rig_.loop.slept, 1000U) << "the file of the first run does not end the second one";
}

TEST_F(Recording, TimeAndBytesAreReportedAfterEveryRead) {
  rig_.internet.answer.raw_headers = RecorderRig::Headers(u"");
  rig_.internet.answer.reads.assign(3, {true, "1234"});
  rig_.stop_after_reads = 5;
  std::vector<std::pair<std::int64_t, std::uint64_t>> reported;
  auto subscription = rig_.recording.Changed.Subscribe([&] {
    const Status& status = rig_.recording.GetStatus();
    if (status.phase == Phase::kRecording) reported.emplace_back(status.seconds, status.bytes);
  });
  Run();
  // A read is reported before its bytes are written.
  EXPECT_THAT(reported, ElementsAre(std::pair(1, 0U), std::pair(2, 4U), std::pair(3, 8U), std::pair(3, 12U),
                                    std::pair(3, 12U)));
}
}  // namespace
}  // namespace recorder
