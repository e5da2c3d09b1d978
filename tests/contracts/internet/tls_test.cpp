// Servers with certificates, good ones and others.

#include <gtest/gtest.h>

#include "tests/contracts/internet/internet_rig.h"

namespace platform {
namespace {

using under_test::TlsFront;
using Certificate = TlsFront::Certificate;

class Tls : public testing::Test {
 protected:
  Tls() { behind_.OnAny(Script().Send(kAnswer)); }
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

  // By its name: not every library knows the addresses in a certificate.
  static std::string Local(const TlsFront& front, const std::string& target = "/") {
    std::string url = front.Url(target);
    return url.replace(url.find("127.0.0.1"), 9, "localhost");
  }

  static constexpr const char* kAnswer =
      "HTTP/1.0 200 OK\r\nicy-name: Sicher\r\nContent-Type: text/plain\r\n\r\nhttp://127.0.0.1/stream";
  under_test::IcyServer behind_;
  under_test::NetText conversion_;
  under_test::XmlHttpRequests requests_{conversion_};
};

TEST_F(Tls, ACertificateThatNobodyVouchesForIsRefused) {
  const TlsFront secure(behind_.Port());
  InternetRig rig;
  EXPECT_EQ(rig.OpenUrl(Local(secure)), InternetHandle::kNone);
  EXPECT_EQ(rig.internet.LastFailure(), InternetFailure::kOther);
  EXPECT_EQ(behind_.Requests().size(), 0U) << "nothing is asked of whoever it is";
}

TEST_F(Tls, ATrustedCertificateIsAccepted) {
  if (!under_test::Trust::IsPossible()) GTEST_SKIP() << "nobody can be trusted here";
  const TlsFront secure(behind_.Port());
  const under_test::Trust trust(secure);
  InternetRig rig(trust.Settings());
  EXPECT_EQ(rig.Headers(rig.OpenUrl(Local(secure))),
            "HTTP/1.0 200 OK\r\nicy-name: Sicher\r\nContent-Type: text/plain\r\n\r\n");
}

TEST_F(Tls, ACertificateForAnotherHostOrOfThePastIsRefused) {
  for (const Certificate certificate : {Certificate::kOtherName, Certificate::kExpired}) {
    const TlsFront secure(behind_.Port(), certificate);
    const under_test::Trust trust(secure);
    InternetRig rig(trust.Settings());
    EXPECT_EQ(rig.OpenUrl(Local(secure)), InternetHandle::kNone) << static_cast<int>(certificate);
  }
}

TEST_F(Tls, ARedirectFromHttpToHttpsIsFollowedAndBackAgain) {
  if (!under_test::Trust::IsPossible()) GTEST_SKIP() << "nobody can be trusted here";
  const TlsFront secure(behind_.Port());
  const under_test::Trust trust(secure);
  InternetRig rig(trust.Settings());
  rig.server.On("/", test_support::Redirect("301 Moved Permanently", Local(secure, "/there")));
  behind_.On("/there", test_support::Redirect("302 Found", rig.server.Url("/back")));
  rig.server.On("/back", Script().Send(kOk));
  EXPECT_EQ(rig.Status(rig.Open()), u"200");
}

TEST_F(Tls, ARedirectDoesNotMakeACertificateBetter) {
  const TlsFront secure(behind_.Port());
  InternetRig rig;
  rig.server.OnAny(test_support::Redirect("301 Moved Permanently", Local(secure)));
  EXPECT_EQ(rig.Open(), InternetHandle::kNone);
  EXPECT_EQ(behind_.Requests().size(), 0U);
}

TEST_F(Tls, TheSecureFlagOfARequestMeansTls) {
  if (!under_test::Trust::IsPossible()) GTEST_SKIP() << "nobody can be trusted here";
  const TlsFront secure(behind_.Port());
  const under_test::Trust trust(secure);
  InternetRig rig(trust.Settings());
  const std::string port = secure.Url("").substr(std::string("https://127.0.0.1:").size());
  const InternetHandle session = rig.internet.InternetOpenW(u"Agent", kInternetOpenTypeDirect);
  const InternetHandle connection = rig.internet.InternetConnectW(
      session, u"localhost", static_cast<std::uint16_t>(std::stoi(port)), kInternetServiceHttp);
  const InternetHandle request = rig.internet.HttpOpenRequestW(connection, u"GET", u"/", u"HTTP/1.1",
                                                               kInternetFlagReload | kInternetFlagSecure);
  EXPECT_TRUE(rig.internet.HttpSendRequestW(request, u""));
}

TEST_F(Tls, ThePlaylistRequestIgnoresCertificateErrorsWhenItIsAskedTo) {
  const TlsFront secure(behind_.Port());
  if (under_test::IgnoresCertificates()) {
    EXPECT_EQ(Fetch(Local(secure), kSxhServerCertIgnoreAllServerErrors), u"http://127.0.0.1/stream");
  }
  EXPECT_EQ(Fetch(Local(secure), 0), u"");
}

}  // namespace
}  // namespace platform
