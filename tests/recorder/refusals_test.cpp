// Invalid addresses, servers that refuse, and what a recording does about them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/recorder/recorder_rig.h"

namespace recorder {
namespace {

using testing::IsEmpty;

class Refusals : public testing::Test {
 protected:
  const Status& Run(const Text& link = kLink) {
    rig_.recording.Run(link);
    return rig_.recording.GetStatus();
  }
  [[nodiscard]] std::ptrdiff_t Queries() const {
    return std::count_if(rig_.internet.calls.begin(), rig_.internet.calls.end(),
                         [](const std::string& call) { return call.starts_with("HttpSendRequestW("); });
  }
  // Runs at the beginning of every attempt with its number, from 1.
  void AtEachAttempt(const std::function<void(int)>& act) {
    attempts_ = rig_.recording.Changed.Subscribe([this, act, number = 0]() mutable {
      if (rig_.recording.GetStatus().phase == Phase::kConnecting) act(++number);
    });
  }
  // Of two attempts the first one brings bytes and breaks off, the others are answered with `status`.
  void RefuseAfterTheFirstAttempt(const Text& status) {
    rig_.stop_after_reads = 1000;
    rig_.internet.answer.reads = {{true, "----" + TitleOf("Eins") + "1111"}, {false, ""}};
    AtEachAttempt(
        [this, status](int attempt) { rig_.internet.answer.status = attempt == 1 ? u"200" : status; });
  }

  RecorderRig rig_;
  controls::Subscription attempts_;
};

TEST_F(Refusals, AnAddressThatTheServerRefusesEndsTheRecordingAtOnce) {
  for (const Text code : {u"400", u"401", u"403", u"404", u"410", u"451"}) {
    rig_.internet.calls.clear();
    rig_.internet.answer.status = code;
    const Status& status = Run();
    EXPECT_EQ(status.phase, Phase::kEnded);
    EXPECT_EQ(status.fault, Fault::kRefused);
    EXPECT_EQ(status.answer_code, (code[0] - u'0') * 100 + (code[1] - u'0') * 10 + (code[2] - u'0'));
    EXPECT_EQ(Queries(), 1);
  }
  EXPECT_EQ(rig_.loop.slept, 0U);
  EXPECT_TRUE(rig_.record_files.opened.empty());
}

TEST_F(Refusals, AServerThatCannotAnswerNowIsAskedAgain) {
  for (const Text code : {u"408", u"425", u"429", u"500", u"502", u"503", u"302"}) {
    rig_.internet.calls.clear();
    rig_.internet.answer.status = code;
    AtEachAttempt([this](int attempt) {
      if (attempt == 1) return;
      EXPECT_EQ(rig_.recording.GetStatus().fault, Fault::kServerError);
      rig_.recording.Stop();
    });
    EXPECT_EQ(Run().fault, Fault::kNone) << "the user has ended it";
  }
  EXPECT_EQ(rig_.loop.slept, 7 * 1000U);
}

TEST_F(Refusals, AServerThatDoesNotAnswerIsNoRefusal) {
  rig_.internet.answer.status = u"404";
  rig_.internet.answer.reachable = false;
  AtEachAttempt([this](int attempt) {
    if (attempt == 1) return;
    EXPECT_EQ(rig_.recording.GetStatus().fault, Fault::kUnreachable);
    rig_.recording.Stop();
  });
  Run();
  EXPECT_EQ(rig_.loop.slept, 1000U);
}

TEST_F(Refusals, AnOldAnswerSaysNothingOfAServerThatIsGone) {
  RefuseAfterTheFirstAttempt(u"503");
  attempts_ = {};
  AtEachAttempt([this](int attempt) {
    rig_.internet.answer.status = attempt == 2 ? u"503" : u"200";
    rig_.internet.failing.clear();
    if (attempt == 3) rig_.internet.failing = {"InternetConnectW"};
    if (attempt < 4) return;
    EXPECT_EQ(rig_.recording.GetStatus().fault, Fault::kUnreachable);
    rig_.recording.Stop();
  });
  Run();
}

TEST_F(Refusals, AnAddressThatIsNeitherHttpNorHttpsEndsTheRecordingAtOnce) {
  for (const Text link : {u"mms://radio.example/live", u"rtsp://radio.example/", u"radio.example/live", u"x",
                          u"/home/u/missing.m3u", u"file:///etc/passwd", u"http:/radio.example"}) {
    EXPECT_EQ(Run(link).fault, Fault::kNotHttp);
    EXPECT_EQ(rig_.recording.GetStatus().phase, Phase::kEnded);
  }
  EXPECT_THAT(rig_.internet.calls, IsEmpty());
  EXPECT_EQ(rig_.loop.slept, 0U);
}

TEST_F(Refusals, SoDoesAPlaylistWithoutSuchAnAddress) {
  rig_.files.files[u"/home/u/leer.m3u"] = "#EXTM3U\r\n";
  EXPECT_EQ(Run(u"/home/u/leer.m3u").fault, Fault::kNotHttp);
  rig_.requests.requests[u"http://radio.example/live.pls"] = {
      {4}, u"[playlist]\r\nNumberOfEntries=1\r\nFile1=mms://radio.example/real\r\n"};
  EXPECT_EQ(Run(u"http://radio.example/live.pls").fault, Fault::kNotHttp);
}

TEST_F(Refusals, AStationThatWasRecordedMayRefuseForAWhile) {
  rig_.stop_after_reads = 1000;
  rig_.internet.answer.reads = {{true, "----" + TitleOf("Eins") + "1111"}, {false, ""}};
  // Eleven refusals, a recording, eleven more: neither row is twelve long.
  AtEachAttempt([this](int attempt) {
    const bool answers = attempt == 1 || attempt == 13 || attempt == 25;
    rig_.internet.answer.status = answers ? u"200" : u"404";
    if (attempt == 26) rig_.recording.Stop();
  });
  Run();
  EXPECT_EQ(rig_.File(u"Eins (3).mp3"), "1111");
}

TEST_F(Refusals, AStationThatKeepsRefusingEndsTheRecording) {
  RefuseAfterTheFirstAttempt(u"404");
  EXPECT_EQ(Run().fault, Fault::kRefused);
  EXPECT_EQ(Queries(), 1 + 12);
  EXPECT_EQ(rig_.File(u"Eins.mp3"), "1111");
}

TEST_F(Refusals, AnAddressThatKeepsBringingPagesEndsTheRecording) {
  rig_.internet.answer.raw_headers = u"HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n";
  EXPECT_EQ(Run().fault, Fault::kNoSound);
  EXPECT_EQ(Queries(), 12);
}

TEST_F(Refusals, AnErrorPageInPlaceOfTheStreamIsNotRecorded) {
  rig_.StationSends("----" + TitleOf("Eins") + "1111");
  test_support::ScriptedAnswer busy = rig_.internet.answer;
  busy.status = u"503";
  rig_.internet.answers[kLink] = busy;
  AtEachAttempt([this](int attempt) {
    if (attempt == 1) return;
    EXPECT_EQ(rig_.recording.GetStatus().fault, Fault::kServerError);
    EXPECT_EQ(rig_.recording.GetStatus().answer_code, 503);
    rig_.recording.Stop();
  });
  Run();
  EXPECT_TRUE(rig_.record_files.opened.empty());
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
}

TEST_F(Refusals, WhoStopsWhileItWaitsHasEndedItHimself) {
  RefuseAfterTheFirstAttempt(u"404");
  rig_.loop.on_sleep = [this](std::uint32_t) {
    if (rig_.recording.GetStatus().fault == Fault::kRefused) rig_.recording.Stop();
  };
  EXPECT_EQ(Run().fault, Fault::kNone);
}

}  // namespace
}  // namespace recorder
