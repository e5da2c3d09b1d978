#include <gtest/gtest.h>

#include "platform/curl/curl_xml_http_request.h"
#include "tests/platform/curl/curl_rig.h"
#include "tests/platform/curl/tls_server.h"

namespace platform::curl {
namespace {

class CurlTls : public testing::Test {
 protected:
  // What a completed playlist request for the address brings.
  Text Fetch(const std::string& url, std::int32_t certificate_option) {
    const auto request = requests_.CreateObject(u"MSXML2.ServerXMLHTTP.6.0");
    request->SetOption(kSxhOptionIgnoreServerSslCertErrorFlags, certificate_option);
    EXPECT_TRUE(request->Open(u"GET", Wide(url), true));
    EXPECT_TRUE(request->Send());
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (request->ReadyState() != 4 && std::chrono::steady_clock::now() < deadline) {
    }
    return request->ResponseText();
  }
  static InternetSettings Trusting(const TlsServer& server) {
    InternetSettings settings;
    settings.trusted_certificates = server.CertificateFile();
    return settings;
  }

  TlsServer secure_{
      "ICY 200 OK\r\nicy-name:Sicher\r\nContent-Type:text/plain\r\n\r\nhttp://127.0.0.1/stream"};
  icu::IcuTextConversion conversion_;
  CurlXmlHttpRequests requests_{conversion_};
};

TEST_F(CurlTls, ACertificateThatNobodyVouchesForIsRefused) {
  CurlRig rig;
  EXPECT_EQ(rig.OpenUrl(secure_.Url()), InternetHandle::kNone);
}

TEST_F(CurlTls, ATrustedCertificateIsAccepted) {
  CurlRig rig(Trusting(secure_));
  EXPECT_EQ(rig.Headers(rig.OpenUrl(secure_.Url())),
            "ICY 200 OK\r\nicy-name:Sicher\r\nContent-Type:text/plain\r\n\r\n");
}

TEST_F(CurlTls, ACertificateForAnotherHostIsRefused) {
  CurlRig rig(Trusting(secure_));
  std::string other = secure_.Url();
  other.replace(other.find("127.0.0.1"), 9, "localhost");
  EXPECT_EQ(rig.OpenUrl(other), InternetHandle::kNone);
}

TEST_F(CurlTls, ARedirectFromHttpToHttpsIsFollowed) {
  CurlRig rig(Trusting(secure_));
  rig.server.OnAny(test_support::Redirect("301 Moved Permanently", secure_.Url()));
  EXPECT_EQ(rig.Status(rig.Open()), u"200");
}

TEST_F(CurlTls, TheSecureFlagOfARequestMeansTls) {
  CurlRig rig(Trusting(secure_));
  const std::string port = secure_.Url().substr(18, secure_.Url().size() - 19);
  const InternetHandle session = rig.internet.InternetOpenW(u"Agent", kInternetOpenTypeDirect);
  const InternetHandle connection = rig.internet.InternetConnectW(
      session, u"127.0.0.1", static_cast<std::uint16_t>(std::stoi(port)), kInternetServiceHttp);
  const InternetHandle request = rig.internet.HttpOpenRequestW(connection, u"GET", u"/", u"HTTP/1.1",
                                                               kInternetFlagReload | kInternetFlagSecure);
  EXPECT_TRUE(rig.internet.HttpSendRequestW(request, u""));
}

TEST_F(CurlTls, ThePlaylistRequestIgnoresCertificateErrorsWhenItIsAskedTo) {
  EXPECT_EQ(Fetch(secure_.Url(), kSxhServerCertIgnoreAllServerErrors), u"http://127.0.0.1/stream");
  EXPECT_EQ(Fetch(secure_.Url(), 0), u"");
}

}  // namespace
}  // namespace platform::curl
