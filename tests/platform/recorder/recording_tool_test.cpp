// A station's recording on real sockets, with real files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "platform/curl/curl_internet.h"
#include "platform/curl/curl_xml_http_request.h"
#include "platform/icu/text_conversion.h"
#include "platform/posix/clock.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/record_files.h"
#include "recorder/station_recording.h"
#include "tests/platform/recorder/tool_fixture.h"
#include "tests/support/fakes.h"
#include "tests/support/icy_script.h"
#include "tests/support/scripted_icy_server.h"

namespace recorder {
namespace {

using platform::Text;

// The recording inside the test's own process.
class RecordingItself : public Tool {
 protected:
  // Records until `done`, which is called whenever messages are processed, returns true.
  void Record(const std::string& link, const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    message_loop_.on_sleep = [](std::uint32_t time) {
      std::this_thread::sleep_for(std::chrono::milliseconds(time));
    };
    message_loop_.on_pump = [this, done, deadline] {
      if (done() || std::chrono::steady_clock::now() > deadline) recording_.Stop();
    };
    recording_.Run(Text(link.begin(), link.end()));
    EXPECT_LT(std::chrono::steady_clock::now(), deadline);
  }

  test_support::FakeMessageLoop message_loop_;
  platform::icu::IcuTextConversion conversion_;
  platform::posix::PosixNativePaths paths_;
  platform::posix::PosixFiles files_{paths_};
  platform::posix::PosixRecordFiles record_files_{paths_};
  platform::posix::PosixClock clock_;
  test_support::FakeEnvironment environment_;
  platform::curl::CurlInternet internet_{message_loop_, conversion_};
  platform::curl::CurlXmlHttpRequests requests_{conversion_};
  StationRecording recording_{
      {{internet_, requests_, record_files_, environment_, clock_, message_loop_, conversion_}, files_},
      paths_.FromNative(Folder())};
};

TEST_F(RecordingItself, FilesOfTitlesPlayFromTheirFirstSecond) {
  Record(station_.Url(), [this] { return TwoTitlesAreRecorded(); });
  ExpectTwoTitles();
  EXPECT_EQ(recording_.GetStatus().station, u"Testfunk");
}

TEST_F(RecordingItself, ALostConnectionIsTakenUpAgainAndWhatWasRecordedStays) {
  std::string before;
  Record(station_.Url("/stream"), [this, &before] {
    if (before.empty() && SizeOf("Eins_ Zwei.mp3") > 2 * kInterval) {
      station_.Stop();
      before = test_support::ReadBytes(Folder() / "Eins_ Zwei.mp3");
      station_.Start();
    }
    return !before.empty() && recording_.GetStatus().files >= 2 && SizeOf("Eins_ Zwei.mp3") > 0 &&
           station_.Count().all_listeners >= 2 &&
           recording_.GetStatus().bytes > before.size() + 4 * kInterval;
  });
  EXPECT_TRUE(test_support::ReadBytes(Folder() / "Eins_ Zwei.mp3").starts_with(before));
  EXPECT_GE(Files().size(), 2U);
  ExpectToPlay("Eins_ Zwei.mp3");
}

TEST_F(RecordingItself, AStationThatClosesTheConnectionIsTakenUpAgainSoon) {
  test_support::ScriptedIcyServer server;
  const std::string header = test_support::Header("HTTP/1.1 200 OK", {"Content-Type: audio/mpeg"});
  server.OnAny(test_support::Script().Send(header).Send(test_support::AudioBytes(2000)));
  const auto start = std::chrono::steady_clock::now();
  Record(server.Url(), [this] { return SizeOf("127.0.0.1 (2).mp3") == 2000; });
  EXPECT_LT(std::chrono::steady_clock::now() - start, 15s) << "a silent station is given twenty";
  EXPECT_EQ(test_support::ReadBytes(Folder() / "127.0.0.1.mp3"), test_support::AudioBytes(2000));
}

TEST_F(RecordingItself, TitlesThatAreNoFileNamesStillGetTheirFiles) {
  test_support::ScriptedIcyServer server;
  const std::string header =
      test_support::Header("HTTP/1.1 200 OK", {"Content-Type: audio/mpeg", "icy-metaint: 16"});
  test_support::Script script;
  script.Send(header);
  const std::vector<std::string> titles = {
      "../AC/DC: \"Live\"?",        "Doppelt", "Doppelt", "CON", "Doppelt", "..", std::string(2000, 'x'),
      std::string(2000, 'x') + "y", "Ende"};
  for (const std::string& title : titles) {
    script.Send(test_support::AudioBytes(16) + test_support::TitleBlock(title));
  }
  server.OnAny(script.Send("abc").Hold());
  Record(server.Url(), [this] { return SizeOf("Ende.mp3") == 3; });
  const std::string cut(243, 'x');
  EXPECT_THAT(Files(),
              testing::UnorderedElementsAre("_._AC_DC_ _Live__.mp3", "Doppelt.mp3", "Doppelt (2).mp3",
                                            "CON_.mp3", "_..mp3", cut + ".mp3", "Ende.mp3"));
  EXPECT_EQ(SizeOf("Doppelt.mp3"), 32U) << "a repeated title continues";
  EXPECT_EQ(SizeOf(cut + ".mp3"), 32U) << "what is the same once it is cut continues too";
}

}  // namespace
}  // namespace recorder
