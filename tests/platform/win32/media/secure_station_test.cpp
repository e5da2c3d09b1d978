// The player of the logic with a radio station over TLS: it needs with_sound.py.
#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <wincrypt.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "tests/platform/win32/media/station_rig.h"

namespace platform::win32 {
namespace {

/// The system believes it as long as the object lives. It reads the list once per process, when it first
/// checks a certificate.
class TrustedCertificate {
 public:
  explicit TrustedCertificate(const std::string& file) {
    std::ifstream stream(std::filesystem::path(file), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    std::vector<BYTE> der(text.size());
    auto size = static_cast<DWORD>(der.size());
    store_ = CertOpenSystemStoreW(0, L"ROOT");
    const bool read = CryptStringToBinaryA(text.c_str(), 0, CRYPT_STRING_BASE64HEADER, der.data(), &size,
                                           nullptr, nullptr) != FALSE;
    if (read)
      CertAddEncodedCertificateToStore(store_, X509_ASN_ENCODING, der.data(), size,
                                       CERT_STORE_ADD_REPLACE_EXISTING, &certificate_);
    Commit();
  }
  ~TrustedCertificate() {
    if (certificate_ != nullptr) CertDeleteCertificateFromStore(certificate_);
    Commit();
    CertCloseStore(store_, 0);
  }
  TrustedCertificate(const TrustedCertificate&) = delete;
  TrustedCertificate& operator=(const TrustedCertificate&) = delete;
  [[nodiscard]] bool IsKnown() const { return certificate_ != nullptr; }

 private:
  void Commit() { CertControlStore(store_, 0, CERT_STORE_CTRL_COMMIT, nullptr); }
  HCERTSTORE store_ = nullptr;
  PCCERT_CONTEXT certificate_ = nullptr;
};

struct SecureStation : StationRig {
  static void SetUpTestSuite() {
    const std::string file = Named("FUNKHAUS_CERTIFICATE");
    if (!file.empty()) certificate = std::make_unique<TrustedCertificate>(file);
  }
  static void TearDownTestSuite() { certificate.reset(); }
  void SetUp() override {
    StationRig::SetUp();
    ASSERT_TRUE(!certificate || certificate->IsKnown());
  }
  static Text NamedAddress(const char* variable) { return AsText(Named(variable) + "/stream"); }
  void ExpectRefusal(PlaybackFailure failure) {
    EXPECT_FALSE(player->IsMediaReady());
    EXPECT_EQ(media->Status().failure, failure);
    EXPECT_EQ(Ask("/count?/stream"), 0);
  }

  static inline std::unique_ptr<TrustedCertificate> certificate;
};

TEST_F(SecureStation, IsHeardWhenItsCertificateIsTrusted) {
  player->MediaFileFromUrl(NamedAddress("FUNKHAUS_SECURE_STATION"));
  ASSERT_EQ(results, std::vector<std::int32_t>{kSOk});
  ASSERT_TRUE(player->PlayMedia());
  EXPECT_TRUE(Heard());
}

TEST_F(SecureStation, ThatNobodyVouchesForIsRefused) {
  player->MediaFileFromUrl(NamedAddress("FUNKHAUS_STRANGER"));
  ExpectRefusal(PlaybackFailure::kCertificateUnknownIssuer);
}

TEST_F(SecureStation, WithACertificateForAnotherNameIsRefused) {
  Text address = NamedAddress("FUNKHAUS_SECURE_STATION");
  const Text named = u"localhost";
  player->MediaFileFromUrl(address.replace(address.find(named), named.size(), u"127.0.0.1"));
  ExpectRefusal(PlaybackFailure::kCertificateOtherName);
}

}  // namespace
}  // namespace platform::win32
