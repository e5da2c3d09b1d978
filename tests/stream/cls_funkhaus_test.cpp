#include "stream/cls_funkhaus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "tests/stream/stream_rig.h"

namespace stream {
namespace {

class ClsFunkhaus : public testing::Test {
 protected:
  void AnswerWith(TextView headers) { rig_.internet.answer.raw_headers = Text(headers); }
  bool Playlist(TextView body) {
    rig_.requests.request = {{4}, Text(body)};
    return client_->IsUrlPlaylist(u"http://h/list");
  }
  // Runs `action` once, when messages are next processed.
  void InTheNextPump(const std::function<void()>& action) {
    rig_.loop.on_pump = [this, action] {
      rig_.loop.on_pump = nullptr;
      action();
    };
  }

  StreamRig rig_;
  std::unique_ptr<clsFunkhaus> client_ = std::make_unique<clsFunkhaus>(rig_.Through());
};

TEST_F(ClsFunkhaus, ANewObjectKnowsNothing) {
  EXPECT_EQ(client_->StreamUrl(), u"");
  EXPECT_EQ(client_->GetPlaylistNumberOfEntries(), 0);
  EXPECT_EQ(client_->GetPlaylistInfoRawCrLf(), u"");
  EXPECT_EQ(client_->GetStreamQueryInfoRawCrLf(), u"");
  EXPECT_EQ(client_->GetStreamQueryInfo(9), u"");
  Text address = u"x", title = u"y";
  client_->GetPlaylistEntry(0, address, title);
  EXPECT_EQ(address, u"");
  EXPECT_EQ(title, u"");
}

TEST_F(ClsFunkhaus, SettingTheAddressTrimsItAndAsksForTheHeaders) {
  AnswerWith(u"ICY 200 OK\r\nicy-metaint:8192\r\nicy-name:K\u00FCche\r\n\r\n");
  std::vector<bool> outcomes;
  client_->QueryStream = [&](bool bQueryOk) { outcomes.push_back(bQueryOk); };
  client_->StreamUrl(u"  http://radio.example/;  ");
  EXPECT_EQ(client_->StreamUrl(), u"http://radio.example/;");
  EXPECT_EQ(client_->GetStreamQueryInfo(9), u"8192");
  EXPECT_EQ(client_->GetStreamQueryInfo(0), u"K\u00FCche");
  EXPECT_EQ(client_->GetStreamQueryInfoRawCrLf(),
            u"ICY 200 OK\r\nicy-metaint:8192\r\nicy-name:K\u00FCche\r\n\r\n");
  EXPECT_EQ(outcomes, std::vector<bool>{true});
}

TEST_F(ClsFunkhaus, AnEmptyAddressChangesAndAsksNothing) {
  client_->StreamUrl(u"http://h/");
  rig_.internet.calls.clear();
  client_->StreamUrl(u"");
  EXPECT_EQ(client_->StreamUrl(), u"http://h/");
  EXPECT_TRUE(rig_.internet.calls.empty());
}

TEST_F(ClsFunkhaus, AnAddressOfBlanksIsStoredAsEmpty) {
  client_->StreamUrl(u"http://h/");
  rig_.internet.calls.clear();
  client_->StreamUrl(u"   ");
  EXPECT_EQ(client_->StreamUrl(), u"");
  EXPECT_TRUE(rig_.internet.calls.empty());
}

TEST_F(ClsFunkhaus, AFailedQueryKeepsTheEarlierHeaderLines) {
  AnswerWith(u"HTTP/1.1 200 OK\r\nicy-metaint:16000\r\n\r\n");
  client_->StreamUrl(u"http://h/");
  rig_.internet.answer.status = u"404";
  AnswerWith(u"HTTP/1.1 404 Not Found\r\n\r\n");
  bool outcome = true;
  client_->QueryStream = [&](bool bQueryOk) { outcome = bQueryOk; };
  client_->StreamUrl(u"http://other/");
  EXPECT_EQ(client_->GetStreamQueryInfo(9), u"16000");
  EXPECT_EQ(client_->StreamUrl(), u"http://other/");
  EXPECT_FALSE(outcome);
}

TEST_F(ClsFunkhaus, AnAddressWithNeitherPrefixKeepsTheEarlierOpenFlags) {
  rig_.ReadsTake(10);
  client_->StreamUrl(u"mms://h/");
  client_->ReadStreamMetaData2(8);
  EXPECT_THAT(rig_.internet.calls, testing::Contains(testing::HasSubstr("mms://h/, Icy-MetaData:1, 0)")));
  client_->StreamUrl(u"https://h/");
  client_->StreamUrl(u"mms://h/");
  client_->ReadStreamMetaData2(8);
  EXPECT_THAT(rig_.internet.calls,
              testing::Contains(testing::HasSubstr("mms://h/, Icy-MetaData:1, 2155872256)")));
}

TEST_F(ClsFunkhaus, AResolvedPlaylistIsAnsweredUntilTheNextSuccess) {
  EXPECT_TRUE(Playlist(u"[playlist]\r\nTitle1=T\r\nFile1=http://a/b\r\nNumberOfEntries=1"));
  EXPECT_FALSE(Playlist(u"<html>"));
  EXPECT_EQ(client_->GetPlaylistNumberOfEntries(), 1);
  Text address, title;
  client_->GetPlaylistEntry(0, address, title);
  EXPECT_EQ(address, u"http://a/b");
  EXPECT_EQ(title, u"T");
  EXPECT_EQ(client_->GetPlaylistInfoRawCrLf(),
            u"[playlist]\r\nTitle1=T\r\nFile1=http://a/b\r\nNumberOfEntries=1");
  EXPECT_EQ(client_->StreamUrl(), u"") << "the stream address is another matter";
}

TEST_F(ClsFunkhaus, EveryFailedResolutionKeepsTheEarlierPlaylist) {
  ASSERT_TRUE(Playlist(u"http://h/stream"));
  rig_.requests.request = {{3}, u"http://late/"};
  InTheNextPump([&] { ++rig_.clock.whole_seconds; });
  EXPECT_FALSE(client_->IsUrlPlaylist(u"http://h/endless"));
  rig_.requests.class_is_known = false;
  EXPECT_FALSE(client_->IsUrlPlaylist(u"http://h/list"));
  EXPECT_FALSE(client_->IsUrlPlaylist(u""));
  Text address, title;
  client_->GetPlaylistEntry(0, address, title);
  EXPECT_EQ(address, u"http://h/stream");
  EXPECT_EQ(client_->GetPlaylistNumberOfEntries(), 1);
}

TEST_F(ClsFunkhaus, StreamAddressAndPlaylistDoNotTouchEachOther) {
  AnswerWith(u"ICY 200 OK\r\nicy-metaint:8192\r\n\r\n");
  client_->StreamUrl(u"http://h/");
  rig_.internet.calls.clear();
  ASSERT_TRUE(Playlist(u"http://h/stream"));
  EXPECT_EQ(client_->StreamUrl(), u"http://h/");
  EXPECT_EQ(client_->GetStreamQueryInfo(9), u"8192");
  EXPECT_TRUE(rig_.internet.calls.empty()) << "a resolution asks for no headers";
  client_->StreamUrl(u"http://other/");
  EXPECT_EQ(client_->GetPlaylistNumberOfEntries(), 1);
}

TEST_F(ClsFunkhaus, OnlySettingTheAddressAsksForHeaders) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='A much longer song title here';"));
  client_->StreamUrl(u"http://h/");
  rig_.internet.calls.clear();
  client_->ReadStreamMetaData(8);
  client_->ReadStreamMetaData2(8);
  client_->GetActiveMeta(u"", 8);
  client_->StartGetInfoSong(u"", u"8");
  rig_.loop.on_pump = [this] { client_->StopRecStream(); };
  client_->StartRecStream(u"");
  client_->StartRecStream(u"", u"8");
  EXPECT_THAT(rig_.internet.calls, testing::Not(testing::Contains(testing::StartsWith("HttpSendRequestW"))));
}

TEST_F(ClsFunkhaus, AnEmptyPlaylistAddressMakesNoRequest) {
  EXPECT_FALSE(client_->IsUrlPlaylist(u""));
  EXPECT_FALSE(client_->IsUrlPlaylist(u"   "));
  EXPECT_TRUE(rig_.requests.calls.empty());
}

TEST_F(ClsFunkhaus, ThePlaylistAddressIsTrimmed) {
  client_->IsUrlPlaylist(u" http://h/x ");
  EXPECT_THAT(rig_.requests.calls, testing::Contains("Open(GET, http://h/x, True)"));
}

TEST_F(ClsFunkhaus, PlaylistFetchesNest) {
  rig_.requests.requests[u"http://outer/"] = {{1, 4}, u"http://outer/stream"};
  rig_.requests.requests[u"http://inner/"] = {{1, 4}, u"http://inner/stream"};
  bool inner = false;
  InTheNextPump([&] { inner = client_->IsUrlPlaylist(u"http://inner/"); });
  EXPECT_TRUE(client_->IsUrlPlaylist(u"http://outer/"));
  EXPECT_TRUE(inner);
  Text address, title;
  client_->GetPlaylistEntry(0, address, title);
  EXPECT_EQ(address, u"http://outer/stream") << "the outer one ended last";
}

TEST_F(ClsFunkhaus, NoOperationSetsTheAbortFlag) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='Song';"), 4);
  client_->StreamUrl(u"http://h/");
  InTheNextPump([&] {
    client_->StopRecStream();
    client_->FreeRecStream();
    client_->StopRecStream();
  });
  EXPECT_EQ(client_->ReadStreamMetaData2(8), u"Song");
}

TEST_F(ClsFunkhaus, AnotherAddressMayBeSetInsideAReader) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='Song';"), 4);
  client_->StreamUrl(u"http://h/");
  InTheNextPump([&] { client_->StreamUrl(u"http://other/"); });
  EXPECT_EQ(client_->ReadStreamMetaData2(8), u"Song");
  EXPECT_EQ(client_->StreamUrl(), u"http://other/");
}

TEST_F(ClsFunkhaus, StartGetInfoSongRunsTheActiveReaderAndThrowsItsResultAway) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='Song';"));
  client_->StreamUrl(u"http://h/");
  rig_.internet.calls.clear();
  client_->StopRecStream();
  client_->StartGetInfoSong(u"audio/mpeg", u"8");
  EXPECT_THAT(rig_.internet.calls, testing::Contains(testing::StartsWith("InternetOpenUrlW")));
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_F(ClsFunkhaus, StartGetInfoSongClearsTheStopFlagFirst) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='Song';"), 4);
  client_->StreamUrl(u"http://h/");
  client_->StopRecStream();
  client_->StartGetInfoSong(u"audio/mpeg", u"8");
  EXPECT_GT(rig_.internet.reads.size(), 2U) << "with the flag set it ends after its first read";
  rig_.internet.reads.clear();
  client_->StopRecStream();
  client_->StartGetInfoSong(u"audio/mpeg");
  EXPECT_EQ(client_->GetActiveMeta(u"audio/mpeg", 8), u"Song") << "without an interval too";
}

TEST_F(ClsFunkhaus, StartGetInfoSongWithoutAnIntervalOnlyClearsTheStopFlag) {
  client_->StreamUrl(u"http://h/");
  rig_.internet.calls.clear();
  client_->StartGetInfoSong(u"audio/mpeg");
  client_->StartGetInfoSong(u"audio/mpeg", u"x");
  EXPECT_TRUE(rig_.internet.calls.empty());
}

TEST_F(ClsFunkhaus, GetActiveMetaEndsAtOnceWhenTheStopFlagIsStillSet) {
  client_->StreamUrl(u"http://h/");
  client_->StopRecStream();
  EXPECT_EQ(client_->GetActiveMeta(u"audio/mpeg", 8), u"");
  EXPECT_EQ(rig_.internet.reads.size(), 1U);
  client_->FreeRecStream();
  rig_.StationSends(kEightBytes + Block("StreamTitle='Song';"), 4);
  EXPECT_EQ(client_->GetActiveMeta(u"audio/mpeg", 8), u"Song");
}

TEST_F(ClsFunkhaus, RecordsIntoTheProgramFolder) {
  client_->StreamUrl(u"http://h/");
  InTheNextPump([&] { client_->StopRecStream(); });
  client_->StartRecStream(u"Audio/MPEG");
  EXPECT_THAT(rig_.files.opened, testing::ElementsAre(u"C:\\Programme\\Funkhaus\\record.mp3"));
}

TEST_F(ClsFunkhaus, RecordsIntoAnotherFolderWhenOneIsChosen) {
  clsFunkhaus client(rig_.Through(), {u"D:\\Musik"});
  client.StreamUrl(u"http://h/");
  InTheNextPump([&] { client.StopRecStream(); });
  client.StartRecStream(u"audio/x-scpls");
  EXPECT_THAT(rig_.files.opened, testing::ElementsAre(u"D:\\Musik\\record"));
}

TEST_F(ClsFunkhaus, RecordsAsItsHolderAsksFromTheNextRecordingOn) {
  client_->StreamUrl(u"http://h/");
  RecordOptions options;
  options.untitled_name = u"Eins";
  client_->SetRecordOptions(options);
  InTheNextPump([&] {
    client_->SetRecordOptions({});
    client_->StopRecStream();
  });
  client_->StartRecStream(u"");
  InTheNextPump([&] { client_->StopRecStream(); });
  client_->StartRecStream(u"");
  EXPECT_THAT(rig_.files.opened,
              testing::ElementsAre(u"C:\\Programme\\Funkhaus\\Eins", u"C:\\Programme\\Funkhaus\\record"));
}

TEST_F(ClsFunkhaus, WhatItsHolderAsksForInTheMiddleOfARecordingChangesNothingInIt) {
  rig_.internet.answer.reads = {{true, kEightBytes + Block("StreamTitle='One';")}, {true, "1234"}};
  client_->StreamUrl(u"http://h/");
  RecordOptions options;
  options.writes = RecordOptions::Writes::kReceived;
  client_->SetRecordOptions(options);
  InTheNextPump([&] {
    client_->SetRecordOptions({});
    InTheNextPump([&] { client_->StopRecStream(); });
  });
  client_->StartRecStream(u"", u"8");
  EXPECT_THAT(rig_.files.write_sizes, testing::ElementsAre(4));
}

TEST_F(ClsFunkhaus, AnIntervalMakesTheRecordingSplitByTitle) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='One';StreamUrl='http://x';") + "1234");
  client_->StreamUrl(u"http://h/");
  Text playing;
  client_->RecStreamCurrentPlaying = [&](const Text& sStreamTitle, const Text& sStreamUrl, const Text&) {
    playing = sStreamTitle + u" " + sStreamUrl;
    client_->StopRecStream();
  };
  client_->StartRecStream(u"audio/mpeg", u"8");
  EXPECT_EQ(playing, u"One http://x");
  EXPECT_EQ(rig_.files.files[u"One.mp3"], "1234");
}

TEST_F(ClsFunkhaus, AnIntervalThatIsNoNumberRecordsNothing) {
  client_->StreamUrl(u"http://h/");
  client_->StartRecStream(u"audio/mpeg", u"none");
  EXPECT_TRUE(rig_.files.opened.empty());
}

TEST_F(ClsFunkhaus, AStopBeforeTheStartDoesNotKeepTheRecordingFromRunning) {
  rig_.StationSends(std::string(1024, 'a'), 512);
  client_->StreamUrl(u"http://h/");
  client_->StopRecStream();
  rig_.loop.on_pump = [this] {
    if (rig_.internet.reads.size() == 2) client_->StopRecStream();
  };
  client_->StartRecStream(u"audio/mpeg");
  EXPECT_EQ(rig_.files.files[u"record.mp3"].size(), 1024U);
}

// The owner releases the object in the middle of one of its calls.

TEST_F(ClsFunkhaus, ReleaseInsideATimedReaderEndsItWithinOneSlice) {
  client_->StreamUrl(u"http://h/");
  for (const bool first_block : {false, true}) {
    client_ = std::make_unique<clsFunkhaus>(rig_.Through());
    client_->StreamUrl(u"http://h/");
    rig_.internet.reads.clear();
    InTheNextPump([&] { client_.reset(); });
    EXPECT_EQ(first_block ? client_->ReadStreamMetaData2(8) : client_->ReadStreamMetaData(8), u"");
    EXPECT_EQ(rig_.internet.reads.size(), 1U);
    EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
  }
}

TEST_F(ClsFunkhaus, ReleaseInsideGetActiveMetaSetsTheStopFlag) {
  client_->StreamUrl(u"http://h/");
  InTheNextPump([&] { client_.reset(); });
  EXPECT_EQ(client_->GetActiveMeta(u"", 8), u"");
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_F(ClsFunkhaus, ReleaseInsideAPlaylistFetchEndsIt) {
  rig_.requests.request = {{3}, u""};
  InTheNextPump([&] { client_.reset(); });
  EXPECT_FALSE(client_->IsUrlPlaylist(u"http://h/"));
  EXPECT_EQ(rig_.requests.live_objects, 0);
}

TEST_F(ClsFunkhaus, ReleaseInsideARecordingClosesItsFile) {
  rig_.StationSends(std::string(512, 'a'));
  client_->StreamUrl(u"http://h/");
  InTheNextPump([&] { client_.reset(); });
  client_->StartRecStream(u"audio/mpeg");
  EXPECT_EQ(rig_.files.files[u"record.mp3"], std::string(512, 'a'));
  EXPECT_EQ(rig_.files.OpenFiles(), 0U);
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_F(ClsFunkhaus, ReleaseInsideAnEventRaisesNoFurtherOne) {
  rig_.StationSends(kEightBytes + Block("StreamTitle='One';") + kEightBytes + Block("StreamTitle='Two';"));
  client_->StreamUrl(u"http://h/");
  int events = 0;
  client_->RecStreamCurrentPlaying = [&, kept = std::string("captured")](const Text&, const Text&,
                                                                         const Text&) {
    client_.reset();
    events += kept == "captured" ? 1 : 100;
  };
  client_->StartRecStream(u"audio/mpeg", u"8");
  EXPECT_EQ(events, 1);
  EXPECT_EQ(rig_.files.OpenFiles(), 0U);
}

TEST_F(ClsFunkhaus, ReleaseInsideTheQueryEventIsSafe) {
  client_->QueryStream = [&](bool) { client_.reset(); };
  client_->StreamUrl(u"http://h/");
  EXPECT_EQ(client_, nullptr);
}

}  // namespace
}  // namespace stream
