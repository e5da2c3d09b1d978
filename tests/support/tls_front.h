#pragma once
// TLS in front of a plain server of 127.0.0.1, for tests of https addresses and of certificates.
// Not the server: what it answers is up to the plain one behind it.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace test_support {

/// Passes bytes both ways while it lives; each side's end ends the other. Needs openssl and python3, and
/// throws std::runtime_error without them.
class TlsFront {
 public:
  enum class Certificate : std::uint8_t {
    kSelfSigned,  ///< for 127.0.0.1 and localhost
    kExpired,     ///< for the same, from an issuer of the test's own
    kOtherName,   ///< for somebody else, from that issuer
  };
  explicit TlsFront(std::uint16_t plain_port, Certificate certificate = Certificate::kSelfSigned);

  [[nodiscard]] std::uint16_t Port() const { return port_; }
  /// "https://127.0.0.1:PORT" and the target.
  [[nodiscard]] std::string Url(std::string_view target = "/") const;
  /// What to trust in PEM form: the self-signed certificate, or the issuer's. Nobody trusts it unasked.
  [[nodiscard]] std::filesystem::path CertificateFile() const { return folder_.Path() / "trusted.pem"; }

 private:
  TempFolder folder_;
  ChildProcess front_;
  std::uint16_t port_ = 0;
};

}  // namespace test_support
