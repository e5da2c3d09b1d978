// The connections of a recording: silence, breaks, pauses between attempts, and a clock that is set back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "recorder/status_texts.h"
#include "tests/recorder/station_recording_fixture.h"

namespace recorder {
namespace {

using test_support::AudioBytes;
using testing::ElementsAre;

TEST_F(Recording, TakesUpASilentConnectionAfterTwentySeconds) {
  KeepPhases();
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  rig_.stop_after_reads = 30;
  Run();
  EXPECT_EQ(Connections(), 2);
  // One read that brings bytes, then twenty silent seconds; the second connection begins again.
  EXPECT_THAT(phases_, ElementsAre(Phase::kConnecting, Phase::kRecording, Phase::kWaiting, Phase::kConnecting,
                                   Phase::kRecording, Phase::kEnded));
}

TEST_F(Recording, DoesNotGiveUpAConnectionThatIsOnlySlow) {
  rig_.seconds_per_read = 19;
  rig_.internet.answer.reads.assign(10, {true, "1234"});
  rig_.internet.answer.raw_headers = RecorderRig::Headers(u"");
  const Status& status = Run();
  EXPECT_EQ(Connections(), 1);
  EXPECT_EQ(status.seconds, 190);
}

TEST_F(Recording, TakesUpABrokenConnectionAtOnce) {
  rig_.internet.answer.reads = {{true, "----" + TitleOf("Eins") + "1111"}, {false, ""}};
  rig_.stop_after_reads = 3;
  Run();
  EXPECT_EQ(Connections(), 2);
  EXPECT_EQ(rig_.loop.slept, 1000U);
}

TEST_F(Recording, TakesUpAConnectionThatTheServerHasClosedAtOnce) {
  rig_.internet.answer.reads = {{true, "----" + TitleOf("Eins") + "1111"}};
  rig_.internet.answer.closes = true;
  rig_.stop_after_reads = 3;
  EXPECT_EQ(Run().phase, Phase::kEnded);
  EXPECT_EQ(Connections(), 2);
  EXPECT_EQ(rig_.loop.slept, 1000U);
  EXPECT_EQ(rig_.File(u"Eins.mp3"), "1111");
  EXPECT_EQ(rig_.File(u"Eins (2).mp3"), "1111");
}

TEST_F(Recording, RecordsAFileOnAServerOnce) {
  rig_.internet.answer.raw_headers =
      u"HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\ncontent-length: 700\r\n\r\n";
  rig_.StationSends(AudioBytes(700));
  rig_.internet.answer.closes = true;
  rig_.stop_after_reads = 1000;
  const Status& status = Run();
  EXPECT_EQ(PhaseText(status), u"Aufnahme beendet");
  EXPECT_EQ(Connections(), 1);
  EXPECT_EQ(rig_.File(u"radio.example.mp3"), AudioBytes(700));
}

TEST_F(Recording, HasNoFaultWhenTheUserEndsItOrAFileIsComplete) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  EXPECT_EQ(Run().fault, Fault::kNone) << "the user ends it";
  rig_.internet.answer.raw_headers = RecorderRig::Headers(u"content-length: 4\r\n");
  rig_.StationSends("1234");
  rig_.internet.answer.closes = true;
  rig_.stop_after_reads = 1000;
  EXPECT_EQ(Run().fault, Fault::kNone) << "the file is complete";
}

TEST_F(Recording, FaultOfALostConnectionIsGoneOnceBytesArriveAgain) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  rig_.stop_after_reads = 30;
  std::vector<std::pair<Phase, Fault>> seen;
  const auto reported = rig_.recording.Changed.Subscribe([&] {
    const std::pair now(rig_.recording.GetStatus().phase, rig_.recording.GetStatus().fault);
    if (seen.empty() || seen.back() != now) seen.push_back(now);
  });
  Run();
  EXPECT_THAT(seen, testing::Contains(std::pair(Phase::kWaiting, Fault::kLost)));
  EXPECT_THAT(seen, testing::Contains(std::pair(Phase::kRecording, Fault::kNone)));
  EXPECT_THAT(seen, testing::Not(testing::Contains(std::pair(Phase::kRecording, Fault::kLost))));
}

TEST_F(Recording, TakesUpAStationThatAnnouncesALength) {
  rig_.internet.answer.raw_headers = RecorderRig::Headers(u"Content-Length: 700\r\n");
  rig_.StationSends(AudioBytes(700));
  rig_.internet.answer.closes = true;
  rig_.stop_after_reads = 5;
  Run();
  EXPECT_EQ(Connections(), 2);
  EXPECT_EQ(rig_.File(u"Radio Eins (2).mp3"), AudioBytes(700));
}

TEST_F(Recording, TakesUpAFileThatBrokeOff) {
  rig_.internet.answer.raw_headers =
      u"HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\nContent-Length: 700\r\n\r\n";
  rig_.internet.answer.reads = {{true, AudioBytes(100)}, {false, ""}};
  rig_.stop_after_reads = 3;
  Run();
  EXPECT_EQ(Connections(), 2);
  EXPECT_EQ(rig_.File(u"radio.example.mp3"), AudioBytes(100));
}

TEST_F(Recording, NeverWritesOverWhatWasRecordedBeforeAReconnection) {
  rig_.internet.answer.reads = {{true, "----" + TitleOf("Eins") + "1111"}, {false, ""}};
  rig_.stop_after_reads = 5;
  Run();
  EXPECT_EQ(rig_.File(u"Eins.mp3"), "1111");
  EXPECT_EQ(rig_.File(u"Eins (2).mp3"), "1111");
  EXPECT_EQ(rig_.File(u"Eins (3).mp3"), "1111");
}

TEST_F(Recording, ContinuesInTheFileWhenTheServerRepeatsTheTitle) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111" + TitleOf("Eins") + "2222" + TitleOf("Zwei") + "3333" +
                    TitleOf("Eins") + "4444");
  Run();
  EXPECT_EQ(rig_.File(u"Eins.mp3"), "11112222");
  EXPECT_EQ(rig_.File(u"Zwei.mp3"), "3333");
  EXPECT_EQ(rig_.File(u"Eins (2).mp3"), "4444") << "it came back after another title";
}

TEST_F(Recording, PausesLongerAfterEveryVainAttempt) {
  rig_.internet.answer.reachable = false;
  std::vector<int> pauses;
  auto reported = rig_.recording.Changed.Subscribe([&] {
    const Status& status = rig_.recording.GetStatus();
    const int slept = static_cast<int>(rig_.loop.slept);
    if (status.phase == Phase::kConnecting) pauses.push_back(slept / 1000);
    if (pauses.size() == 8) rig_.recording.Stop();
  });
  EXPECT_EQ(Run().fault, Fault::kNone) << "the user has ended it";
  EXPECT_THAT(pauses, ElementsAre(0, 1, 3, 7, 15, 31, 61, 91));
}

TEST_F(Recording, PausesShortlyAgainAfterASteadyConnection) {
  rig_.stop_after_reads = 1000;
  int connection = 0;
  std::vector<std::uint64_t> slept;
  auto reported = rig_.recording.Changed.Subscribe([&] {
    const bool connecting = rig_.recording.GetStatus().phase == Phase::kConnecting;
    if (!connecting) return;
    slept.push_back(rig_.loop.slept);
    ++connection;
    rig_.internet.answer.reachable = connection == 3;
    rig_.internet.answer.reads.assign(10, {true, "1234"});
    rig_.internet.answer.reads.push_back({false, ""});
    if (connection == 5) rig_.recording.Stop();
  });
  Run();
  EXPECT_THAT(slept, ElementsAre(0, 1000, 3000, 4000, 6000));
}

TEST_F(Recording, PausesLongerWhenTheServerClosesSoonEveryTime) {
  rig_.stop_after_reads = 1000;
  rig_.internet.answer.reads.assign(9, {true, "1234"});
  rig_.internet.answer.closes = true;
  std::vector<std::uint64_t> slept;
  auto reported = rig_.recording.Changed.Subscribe([&] {
    if (rig_.recording.GetStatus().phase == Phase::kConnecting) slept.push_back(rig_.loop.slept);
    if (slept.size() == 4) rig_.recording.Stop();
  });
  Run();
  EXPECT_THAT(slept, ElementsAre(0, 1000, 3000, 7000));
}

TEST_F(Recording, StopInsideAPauseEndsItThere) {
  rig_.internet.answer.reachable = false;
  rig_.loop.on_sleep = [this](std::uint32_t) {
    if (rig_.loop.slept >= 200) rig_.recording.Stop();
  };
  EXPECT_EQ(Run().phase, Phase::kEnded);
  EXPECT_EQ(rig_.loop.slept, 200U);
}

TEST_F(Recording, ATitleIsForgottenWithItsConnection) {
  rig_.internet.answer.reads = {{true, "----" + TitleOf("Eins") + "1111"}, {false, ""}};
  AtEachAttempt([this](int attempt) {
    EXPECT_EQ(rig_.recording.GetStatus().title, u"");
    if (attempt == 2) rig_.recording.Stop();
  });
  Run();
}

TEST_F(Recording, TheWindowWorksInAPause) {
  rig_.internet.answer.reachable = false;
  int pumps_before = 0;
  rig_.loop.on_sleep = [&](std::uint32_t) {
    EXPECT_EQ(rig_.loop.pumps, pumps_before) << "one pump after each sleep";
    ++pumps_before;
    if (rig_.loop.slept >= 1000) rig_.recording.Stop();
  };
  Run();
  EXPECT_EQ(rig_.loop.slept, 1000U);
  EXPECT_EQ(rig_.loop.pumps, 20);
}

TEST_F(Recording, SilenceThatEndsAtItsLimitStillCountsAsTimeAndALongerOneDoesNot) {
  rig_.internet.answer.raw_headers = RecorderRig::Headers(u"");
  rig_.internet.answer.reads.assign(10, {true, "1234"});
  rig_.seconds_per_read = 20;
  EXPECT_EQ(Run().seconds, 200);
  EXPECT_EQ(Connections(), 1);
  rig_.internet.reads.clear();
  rig_.seconds_per_read = 21;
  EXPECT_EQ(Run().seconds, 0);
}

TEST_F(Recording, AConnectionIsGivenUpInTheTwentiethSilentSecondAndNotBefore) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  rig_.stop_after_reads = 1000;
  std::size_t reads = 0;
  AtEachAttempt([&](int attempt) {
    if (attempt == 1) return;
    reads = rig_.internet.reads.size();
    rig_.recording.Stop();
  });
  Run();
  EXPECT_EQ(reads, 21U) << "one that brought bytes and twenty that did not";
}

TEST_F(Recording, AfterTheClockWasSetBackSilenceCountsFromThere) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  rig_.stop_after_reads = 1000;
  rig_.internet.before_read = [this] {
    rig_.clock.whole_seconds += rig_.internet.reads.size() == 5 ? -3600 : 1;
  };
  std::size_t reads = 0;
  AtEachAttempt([&](int attempt) {
    if (attempt == 1) return;
    reads = rig_.internet.reads.size();
    rig_.recording.Stop();
  });
  EXPECT_EQ(Run().seconds, 1);
  EXPECT_EQ(reads, 26U) << "six up to the clock's change and twenty more";
}

TEST_F(Recording, AClockThatIsSetBackEndsNothing) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  rig_.internet.before_read = [this] { rig_.clock.whole_seconds -= 3600; };
  EXPECT_EQ(Run().seconds, 0);
  EXPECT_EQ(Connections(), 1);
}
}  // namespace
}  // namespace recorder
