// Why an address cannot be opened: each cause from a real server on 127.0.0.1 or a real file.
#include <gio/gio.h>
#include <gmock/gmock.h>
#include <gst/gst.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/gstreamer/connection_probe.h"
#include "platform/gstreamer/missing_decoder.h"
#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/local_socket.h"
#include "tests/support/media_files.h"
#include "tests/support/media_http_server.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tls_front.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::kSOk;
using platform::PlaybackFailure;
using platform::PlaybackState;
using platform::PlaybackStatus;
using test_support::HttpAnswer;
using test_support::LiveHead;
using test_support::MakeTone;
using test_support::MediaHttpServer;
using test_support::ReadBytes;
using test_support::TempFolder;
using test_support::TlsFront;
using Certificate = TlsFront::Certificate;

class FailureCausesTest : public testing::Test {
 protected:
  PlaybackStatus StatusAfter(const std::string& address) {
    EXPECT_NE(driver.Open(address), kSOk);
    const PlaybackStatus status = driver.Media().Status();
    EXPECT_EQ(status.state, PlaybackState::kFailed);
    return status;
  }
  PlaybackFailure CauseOf(const std::string& address) { return StatusAfter(address).failure; }
  std::string Answering(const std::string& answer) {
    server.On("/x", [answer](MediaHttpServer::Connection& connection) { connection.Send(answer); });
    return server.Url("/x");
  }
  /// Reading the system's list of issuers takes seconds on a busy machine, and an opening has ten.
  static void LoadTls() { g_object_unref(g_tls_backend_get_default_database(g_tls_backend_get_default())); }
  /// The cause for a server with this certificate, whose issuer is trusted.
  PlaybackFailure CauseOfCertificate(Certificate certificate) {
    LoadTls();
    const TlsFront front(server.Port(), certificate);
    auto options = Unheard();
    options.certificate_file = front.CertificateFile();
    SessionDriver trusting(options);
    EXPECT_NE(trusting.Open(front.Url("/none")), kSOk);
    return trusting.Media().Status().failure;
  }

  TempFolder folder;
  MediaHttpServer server;
  SessionDriver driver{Unheard()};
};

/// Answers whatever comes with an HTTP error, not waiting for a whole request.
class BabblingServer {
 public:
  BabblingServer() {
    answering_ = std::thread([this] {
      while (!stop_.IsRaised()) Answer(test_support::Accept(listener_, stop_));
    });
  }
  ~BabblingServer() {
    stop_.Raise();
    answering_.join();
  }
  BabblingServer(const BabblingServer&) = delete;
  BabblingServer& operator=(const BabblingServer&) = delete;

  [[nodiscard]] std::string Port() const { return std::to_string(test_support::LocalPort(listener_)); }

 private:
  void Answer(test_support::Descriptor connection) {
    std::string heard;
    if (!connection.IsOpen() || !test_support::Receive(connection, heard, stop_)) return;
    test_support::SendAll(connection, "HTTP/1.1 400 Bad Request\r\n\r\n", stop_);
    test_support::CloseCleanly(connection, stop_);
  }
  test_support::Descriptor listener_ = test_support::ListenLocally(0);
  test_support::StopSignal stop_;
  std::thread answering_;
};

TEST_F(FailureCausesTest, AnUnknownHost) {
  EXPECT_EQ(CauseOf("http://no-such-host.invalid/stream"), PlaybackFailure::kUnknownHost);
}

TEST_F(FailureCausesTest, ARefusedConnection) {
  server.Refuse();
  EXPECT_EQ(CauseOf(server.Url("/x")), PlaybackFailure::kRefused);
}

TEST_F(FailureCausesTest, ARedirectToARefusedConnectionOrAnUnknownHost) {
  const std::string to_nobody = HttpAnswer("302 Found", "text/html", "", "Location: http://127.0.0.1:1/\r\n");
  EXPECT_EQ(CauseOf(Answering(to_nobody)), PlaybackFailure::kRefused);
  const std::string away = HttpAnswer("302 Found", "text/html", "", "Location: http://nobody.invalid/\r\n");
  EXPECT_EQ(CauseOf(Answering(away)), PlaybackFailure::kUnknownHost);
}

TEST_F(FailureCausesTest, AServerThatHangsUpWithoutAnAnswer) {
  EXPECT_EQ(CauseOf(Answering("")), PlaybackFailure::kHungUp);
  server.On("/x", [](MediaHttpServer::Connection& connection) { connection.ResetAtEnd(); });
  EXPECT_EQ(CauseOf(server.Url("/x")), PlaybackFailure::kHungUp);
}

TEST_F(FailureCausesTest, AServerThatIsSilentBeforeOrAfterItsHead) {
  auto options = Unheard();
  options.open_deadline = 300ms;
  for (const char* head : {"", "HTTP/1.0 200 OK\r\nContent-Type: audio/mpeg\r\n\r\n"}) {
    SessionDriver impatient(options);
    server.On("/x", [head](MediaHttpServer::Connection& connection) {
      connection.Send(head);
      connection.StaySilent(30s);
    });
    EXPECT_NE(impatient.Open(server.Url("/x")), kSOk);
    EXPECT_EQ(impatient.Media().Status().state, PlaybackState::kFailed);
    EXPECT_EQ(impatient.Media().Status().failure, PlaybackFailure::kNoAnswer) << head;
  }
}

TEST_F(FailureCausesTest, EveryBadHttpStatus) {
  for (const int code : {400, 401, 403, 404, 410, 500, 503}) {
    const PlaybackStatus status =
        StatusAfter(Answering(HttpAnswer(std::to_string(code) + " So", "text/plain", "no")));
    EXPECT_EQ(status.failure, PlaybackFailure::kHttpStatus);
    EXPECT_EQ(status.http_status, code);
  }
}

TEST_F(FailureCausesTest, AStationsOwnStatusLine) {
  const PlaybackStatus status = StatusAfter(Answering("ICY 404 Not Found\r\n\r\n"));
  EXPECT_EQ(status.failure, PlaybackFailure::kHttpStatus);
  EXPECT_EQ(status.http_status, 404);
}

TEST_F(FailureCausesTest, AnEndlessRedirectAndOneToNowhere) {
  const std::string circle = HttpAnswer("302 Found", "text/html", "", "Location: /x\r\n");
  EXPECT_EQ(CauseOf(Answering(circle)), PlaybackFailure::kTooManyRedirects);
  const PlaybackStatus nowhere = StatusAfter(Answering(HttpAnswer("302 Found", "text/html", "")));
  EXPECT_EQ(nowhere.failure, PlaybackFailure::kHttpStatus);
  EXPECT_EQ(nowhere.http_status, 302);
}

TEST_F(FailureCausesTest, ACertificateThatHasExpired) {
  EXPECT_EQ(CauseOfCertificate(Certificate::kExpired), PlaybackFailure::kCertificateExpired);
}

TEST_F(FailureCausesTest, ACertificateForAnotherName) {
  EXPECT_EQ(CauseOfCertificate(Certificate::kOtherName), PlaybackFailure::kCertificateOtherName);
}

TEST_F(FailureCausesTest, ACertificateThatNobodyVouchesFor) {
  LoadTls();
  const TlsFront front(server.Port());
  EXPECT_EQ(CauseOf(front.Url("/none")), PlaybackFailure::kCertificateUnknownIssuer);
}

TEST_F(FailureCausesTest, AGoodCertificateLeavesTheAnswersOwnCause) {
  EXPECT_EQ(CauseOfCertificate(Certificate::kSelfSigned), PlaybackFailure::kHttpStatus);
}

TEST_F(FailureCausesTest, AServerThatDoesNotSpeakTls) {
  LoadTls();
  const BabblingServer plain;
  EXPECT_EQ(CauseOf("https://127.0.0.1:" + plain.Port() + "/x"), PlaybackFailure::kNoSecureConnection);
}

TEST(FailureOfCertificateTest, AnUnknownIssuerSaysNothingOfDatesAndNames) {
  using platform::gstreamer::FailureOfCertificate;
  const auto flags = [](int bits) { return static_cast<GTlsCertificateFlags>(bits); };
  EXPECT_EQ(FailureOfCertificate(flags(G_TLS_CERTIFICATE_EXPIRED | G_TLS_CERTIFICATE_UNKNOWN_CA)),
            PlaybackFailure::kCertificateUnknownIssuer);
  EXPECT_EQ(FailureOfCertificate(flags(G_TLS_CERTIFICATE_EXPIRED | G_TLS_CERTIFICATE_BAD_IDENTITY)),
            PlaybackFailure::kCertificateExpired);
  EXPECT_EQ(FailureOfCertificate(G_TLS_CERTIFICATE_NOT_ACTIVATED), PlaybackFailure::kCertificateNotYetValid);
  EXPECT_EQ(FailureOfCertificate(G_TLS_CERTIFICATE_REVOKED), PlaybackFailure::kNoSecureConnection);
}

TEST_F(FailureCausesTest, AWebPageOrTextInsteadOfSound) {
  const std::string page = "<!DOCTYPE html><html><head><title>Radio</title></head><body>hello</body></html>";
  const std::string text = "This is only a text about radio stations, nothing more than that.\n";
  const std::string list = "[playlist]\nNumberOfEntries=1\nFile1=http://127.0.0.1/x\n";
  for (const auto& [type, body] : std::vector<std::pair<std::string, std::string>>{
           {"text/html", page},
           {"audio/mpeg", page},
           {"text/plain; charset=utf-8", text},
           {"Application/JSON", "{\"a\": 1}"},
           {"audio/x-scpls", list},
           {"audio/x-mpegurl", "#EXTM3U\nhttp://127.0.0.1/x\n"}}) {
    EXPECT_EQ(CauseOf(Answering(HttpAnswer("200 OK", type, body))), PlaybackFailure::kWebPage) << type;
  }
}

TEST_F(FailureCausesTest, DataThatIsNoSound) {
  std::string noise;
  unsigned state = 1;
  while (noise.size() < 50000) noise += static_cast<char>((state = state * 1103515245U + 12345U) >> 24U);
  EXPECT_EQ(CauseOf(Answering(HttpAnswer("200 OK", "audio/mpeg", noise))), PlaybackFailure::kUnreadable);
  EXPECT_EQ(CauseOf(folder.Write("noise.mp3", noise).string()), PlaybackFailure::kUnreadable);
  const std::string picture(
      "GIF89a\1\0\1\0\x80\0\0\0\0\0\xff\xff\xff!\xf9\4\1\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;", 43);
  EXPECT_EQ(CauseOf(Answering(HttpAnswer("200 OK", "image/gif", picture))), PlaybackFailure::kUnreadable);
}

TEST_F(FailureCausesTest, AnAnswerThatBreaksOffBeforeThereIsSound) {
  const std::string head = "HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\nContent-Length: 100000\r\n\r\n";
  server.On("/x", [head](MediaHttpServer::Connection& connection) { connection.Send(head + "ID3"); });
  EXPECT_EQ(CauseOf(server.Url("/x")), PlaybackFailure::kConnectionLost);
}

TEST_F(FailureCausesTest, AnAnswerWithoutAnything) {
  EXPECT_EQ(CauseOf(Answering(HttpAnswer("200 OK", "audio/mpeg", ""))), PlaybackFailure::kUnreadable);
}

TEST_F(FailureCausesTest, AFileThatIsMissingOrCannotBeRead) {
  EXPECT_EQ(CauseOf((folder.Path() / "none.mp3").string()), PlaybackFailure::kNotFound);
  EXPECT_EQ(CauseOf(folder.Path().string()), PlaybackFailure::kNoAccess) << "a folder";
}

TEST_F(FailureCausesTest, AnAddressThatIsNone) {
  for (const char* address : {"", "gopher://127.0.0.1/x", "http://[/x", "http://127.0.0.1:99999/x"}) {
    EXPECT_EQ(CauseOf(address), PlaybackFailure::kBadAddress) << address;
  }
}

/// Takes elements out of the installation, as if their package were not there.
class WithoutElements {
 public:
  explicit WithoutElements(const std::vector<const char*>& names) {
    gst_init(nullptr, nullptr);
    for (const char* name : names) {
      GstPluginFeature* feature = gst_registry_lookup_feature(gst_registry_get(), name);
      if (feature == nullptr) continue;
      gst_registry_remove_feature(gst_registry_get(), feature);
      features_.push_back(feature);
    }
  }
  ~WithoutElements() {
    for (GstPluginFeature* feature : features_) {
      gst_registry_add_feature(gst_registry_get(), feature);
      gst_object_unref(feature);
    }
  }
  WithoutElements(const WithoutElements&) = delete;
  WithoutElements& operator=(const WithoutElements&) = delete;

 private:
  std::vector<GstPluginFeature*> features_;
};

TEST_F(FailureCausesTest, AFormatWithoutADecoder) {
  const std::string sound = ReadBytes(MakeTone(folder, "t.flac", "flac", {.seconds = 1}));
  {
    const WithoutElements without({"flacdec", "avdec_flac"});
    const PlaybackStatus status = StatusAfter(Answering(HttpAnswer("200 OK", "audio/flac", sound)));
    EXPECT_EQ(status.failure, PlaybackFailure::kNoDecoder);
    EXPECT_EQ(status.format, u"Free Lossless Audio Codec (FLAC)");
    EXPECT_EQ(status.package, u"gstreamer1.0-plugins-good");
  }
  EXPECT_EQ(driver.Open(server.Url("/x")), kSOk) << "with its decoder it is heard";
}

TEST_F(FailureCausesTest, ADecoderInAContainer) {
  const std::string file = MakeTone(folder, "t.m4a", "alac", {.seconds = 1});
  const WithoutElements without({"avdec_alac"});
  const PlaybackStatus status = StatusAfter(file);
  EXPECT_EQ(status.failure, PlaybackFailure::kNoDecoder);
  EXPECT_EQ(status.format, u"Apple Lossless Audio (ALAC)");
  EXPECT_EQ(status.package, u"gstreamer1.0-libav");
}

TEST(MissingDecoderTest, PackagesAreThoseOfDebian) {
  gst_init(nullptr, nullptr);
  const auto package = [](const char* caps) {
    GstCaps* parsed = gst_caps_from_string(caps);
    const auto cause = platform::gstreamer::CauseOfMissingDecoder(*parsed);
    gst_caps_unref(parsed);
    return cause.package;
  };
  EXPECT_EQ(package("audio/x-wma, wmaversion=2"), u"gstreamer1.0-libav");
  EXPECT_EQ(package("video/x-ms-asf"), u"gstreamer1.0-plugins-ugly");
  EXPECT_EQ(package("audio/x-ac3"), u"gstreamer1.0-plugins-ugly");
  EXPECT_EQ(package("application/x-hls"), u"gstreamer1.0-plugins-bad");
  EXPECT_EQ(package("audio/x-opus"), u"gstreamer1.0-plugins-base");
  EXPECT_EQ(package("audio/mpeg, mpegversion=1, layer=3"), u"gstreamer1.0-plugins-good");
  EXPECT_EQ(package("audio/mpeg, mpegversion=4, stream-format=adts"), u"gstreamer1.0-plugins-bad");
  EXPECT_EQ(package("audio/mpeg, mpegversion=4, stream-format=loas"), u"gstreamer1.0-libav");
  EXPECT_EQ(package("audio/x-nobody-knows"), u"");
}

TEST_F(FailureCausesTest, TheNextOpeningForgetsTheCause) {
  EXPECT_EQ(CauseOf(server.Url("/none")), PlaybackFailure::kHttpStatus);
  ASSERT_EQ(driver.Open(MakeTone(folder, "t.mp3", "libmp3lame", {.seconds = 1})), kSOk);
  EXPECT_EQ(driver.Media().Status().failure, PlaybackFailure::kNone);
  EXPECT_EQ(driver.Media().Status().http_status, 0);
}

}  // namespace
}  // namespace gstreamer_test
