#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>

#include "platform/gstreamer/results.h"
#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/child_process.h"
#include "tests/support/media_files.h"
#include "tests/support/media_http_server.h"
#include "tests/support/temp_folder.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::kErrorFileNotFound;
using platform::kMfEUnsupportedByteStreamType;
using platform::kSOk;
using test_support::HttpAnswer;
using test_support::LiveHead;
using test_support::MakeTone;
using test_support::MediaHttpServer;
using test_support::ReadBytes;
using test_support::RunProgram;
using test_support::TempFolder;
using Clock = std::chrono::steady_clock;

class OpeningTest : public testing::Test {
 protected:
  HResult ResultOfAnswer(const std::string& answer) {
    server.On("/x", [answer](MediaHttpServer::Connection& connection) { connection.Send(answer); });
    return driver.Open(server.Url("/x"));
  }

  TempFolder folder;
  MediaHttpServer server;
  SessionDriver driver{Unheard()};
};

bool AcceptsConnections(int port) {
  return RunProgram({"openssl", "s_client", "-connect", "127.0.0.1:" + std::to_string(port)}).exit_code == 0;
}

bool IsOtherFailure(HResult result) {
  return result < 0 && result != kErrorFileNotFound && result != kMfEUnsupportedByteStreamType;
}

TEST_F(OpeningTest, AMissingFileIsNotFound) {
  EXPECT_EQ(driver.Open((folder.Path() / "none.mp3").string()), kErrorFileNotFound);
  EXPECT_EQ(driver.Open("file://" + (folder.Path() / "none.mp3").string()), kErrorFileNotFound);
}

TEST_F(OpeningTest, PipesAndDevicesAreNotOpened) {
  const std::string pipe = (folder.Path() / "pipe.mp3").string();
  ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
  for (const std::string& address : {pipe, "file://" + pipe, std::string("/dev/zero")}) {
    EXPECT_EQ(driver.Open(address), kMfEUnsupportedByteStreamType) << address;
  }
  EXPECT_LT(driver.Open(folder.Path().string()), 0);
}

TEST_F(OpeningTest, AStatusOf404IsNotFound) {
  EXPECT_EQ(driver.Open(server.Url("/none")), kErrorFileNotFound);
}

TEST_F(OpeningTest, AnUnknownHostIsAnotherFailure) {
  EXPECT_PRED1(IsOtherFailure, driver.Open("http://no-such-host.invalid/stream"));
}

TEST_F(OpeningTest, EveryOtherBadStatusIsAnotherFailure) {
  for (const char* status : {"400 Bad Request", "401 Unauthorized", "403 Forbidden", "410 Gone",
                             "500 Internal Server Error", "503 Service Unavailable"}) {
    EXPECT_PRED1(IsOtherFailure, ResultOfAnswer(HttpAnswer(status, "text/plain", "no"))) << status;
  }
}

TEST_F(OpeningTest, ARefusedConnectionIsAnotherFailure) {
  server.Refuse();
  EXPECT_PRED1(IsOtherFailure, driver.Open(server.Url("/x")));
}

TEST_F(OpeningTest, AClosedConnectionWithoutAnAnswerIsAnotherFailure) {
  EXPECT_PRED1(IsOtherFailure, ResultOfAnswer(""));
}

TEST_F(OpeningTest, AnEndlessRedirectIsAnotherFailure) {
  EXPECT_PRED1(IsOtherFailure, ResultOfAnswer(HttpAnswer("302 Found", "text/html", "",
                                                         "Location: " + server.Url("/x") + "\r\n")));
  EXPECT_LT(server.Requests("/x"), 100);
}

TEST_F(OpeningTest, AWebPageIsAnUnsupportedType) {
  const std::string page = "<!DOCTYPE html><html><head><title>Radio</title></head><body>hello</body></html>";
  EXPECT_EQ(ResultOfAnswer(HttpAnswer("200 OK", "text/html", page)), kMfEUnsupportedByteStreamType);
  EXPECT_EQ(ResultOfAnswer(HttpAnswer("200 OK", "audio/mpeg", page)), kMfEUnsupportedByteStreamType);
}

TEST_F(OpeningTest, PlainTextIsAnUnsupportedType) {
  const std::string text = "This is only a text about radio stations, nothing more than that.\n";
  EXPECT_EQ(ResultOfAnswer(HttpAnswer("200 OK", "text/plain", text)), kMfEUnsupportedByteStreamType);
  EXPECT_EQ(driver.Open(folder.Write("a.mp3", text).string()), kMfEUnsupportedByteStreamType);
}

TEST_F(OpeningTest, APictureIsAnUnsupportedType) {
  const std::string picture(
      "GIF89a\1\0\1\0\x80\0\0\0\0\0\xff\xff\xff!\xf9\4\1\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 43);
  EXPECT_EQ(ResultOfAnswer(HttpAnswer("200 OK", "image/gif", picture)), kMfEUnsupportedByteStreamType);
}

TEST_F(OpeningTest, NoiseIsAnUnsupportedType) {
  std::string noise;
  unsigned state = 1;
  while (noise.size() < 50000) noise += static_cast<char>((state = state * 1103515245U + 12345U) >> 24U);
  EXPECT_EQ(ResultOfAnswer(HttpAnswer("200 OK", "audio/mpeg", noise)), kMfEUnsupportedByteStreamType);
}

TEST_F(OpeningTest, AnEmptyAddressAndAnUnknownSchemeFail) {
  EXPECT_PRED1(IsOtherFailure, driver.Open(""));
  EXPECT_PRED1(IsOtherFailure, driver.Open("gopher://127.0.0.1/x"));
}

TEST_F(OpeningTest, ASilentServerIsGivenUpInTimeAndTheWindowIsPaintedMeanwhile) {
  server.On("/x", [](MediaHttpServer::Connection& connection) { connection.StaySilent(30s); });
  const auto start = Clock::now();
  EXPECT_PRED1(IsOtherFailure, driver.Open(server.Url("/x")));
  const auto taken = Clock::now() - start;
  EXPECT_GE(taken, 9s);
  // The first opening of a process also starts GStreamer.
  EXPECT_LT(taken, 13s);
  EXPECT_GT(driver.loop.paints, 300);
  EXPECT_EQ(driver.loop.pumps, 0);
}

TEST_F(OpeningTest, InputThatEndsAWaitGivesASilentServerUpAtOnce) {
  server.On("/x", [](MediaHttpServer::Connection& connection) { connection.StaySilent(30s); });
  driver.loop.on_paint = [this] { driver.loop.input_ends_wait = driver.loop.paints == 5; };
  EXPECT_EQ(driver.Open(server.Url("/x")), platform::kErrorCancelled);
  EXPECT_EQ(driver.Media().Status(), platform::PlaybackStatus{}) << "nothing has failed";
  EXPECT_EQ(driver.loop.paints, 5) << "it is asked in every slice";
  EXPECT_EQ(driver.loop.pumps, 0) << "the input is left for later";
}

TEST_F(OpeningTest, AServerThatFallsSilentAfterItsHeadIsNoUnsupportedType) {
  auto options = Unheard();
  options.open_deadline = 500ms;
  SessionDriver impatient(options);
  server.On("/x", [](MediaHttpServer::Connection& connection) {
    connection.Send(LiveHead("audio/mpeg"));
    connection.StaySilent(30s);
  });
  EXPECT_PRED1(IsOtherFailure, impatient.Open(server.Url("/x")));
}

TEST_F(OpeningTest, AacLabelledAsMp3IsOpened) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.aac", "aac"));
  EXPECT_EQ(ResultOfAnswer(HttpAnswer("200 OK", "audio/mpeg", sound)), kSOk);
  EXPECT_THAT(driver.TextProperty(u"AudioCodec"), testing::HasSubstr("AAC"));
}

TEST_F(OpeningTest, ALiveAacStreamLabelledAsMp3IsOpened) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.aac", "aac"));
  server.On("/x", [sound](MediaHttpServer::Connection& connection) {
    if (connection.Send(LiveHead("audio/mpeg") + sound)) connection.StaySilent(10s);
  });
  EXPECT_EQ(driver.Open(server.Url("/x")), kSOk);
  EXPECT_EQ(driver.DurationSeconds(), std::nullopt);
}

TEST_F(OpeningTest, FileNamesMayBeWrittenInEveryForm) {
  const std::string file = MakeTone(folder, "t\xC3\xB6n 50% #1.mp3", "libmp3lame", {.seconds = 1});
  std::string with_backslashes = file;
  std::replace(with_backslashes.begin(), with_backslashes.end(), '/', '\\');
  EXPECT_EQ(driver.Open(file), kSOk);
  EXPECT_EQ(driver.Open(with_backslashes), kSOk);
  EXPECT_EQ(driver.Open("file://" + folder.Path().string() + "/t%C3%B6n%2050%25%20%231.mp3"), kSOk);
}

TEST_F(OpeningTest, TheProgramNamesItselfToTheServer) {
  std::string request;
  server.On("/x", [&request](MediaHttpServer::Connection& connection) {
    request = connection.Request();
    connection.Send(HttpAnswer("404 Not Found", "text/plain", ""));
  });
  driver.Open(server.Url("/x"));
  EXPECT_THAT(request, testing::HasSubstr("User-Agent: Funkhausplayer"));
}

TEST_F(OpeningTest, ACertificateMustBeTrusted) {
  const std::string key = (folder.Path() / "key.pem").string();
  const std::string certificate = (folder.Path() / "certificate.pem").string();
  ASSERT_EQ(RunProgram({"openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "1", "-subj",
                        "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out",
                        certificate})
                .exit_code,
            0);
  MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 2});
  const int port = test_support::FreePort();
  const test_support::ChildProcess https({"sh", "-c",
                                          "cd '" + folder.Path().string() +
                                              "' && exec openssl s_server -quiet -WWW -accept 127.0.0.1:" +
                                              std::to_string(port) + " -key key.pem -cert certificate.pem"});
  const std::string address = "https://127.0.0.1:" + std::to_string(port) + "/t.mp3";
  ASSERT_TRUE(test_support::WaitUntil([&] { return AcceptsConnections(port); }, 10s));
  EXPECT_PRED1(IsOtherFailure, driver.Open(address)) << "nobody vouches for it";
  auto options = Unheard();
  options.certificate_file = certificate;
  SessionDriver trusting(options);
  EXPECT_EQ(trusting.Open(address), kSOk);
}

}  // namespace
}  // namespace gstreamer_test
