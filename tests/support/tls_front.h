#pragma once
// TLS with a self-signed certificate in front of a plain server of 127.0.0.1, for tests of https addresses.
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
  explicit TlsFront(std::uint16_t plain_port);

  [[nodiscard]] std::uint16_t Port() const { return port_; }
  /// "https://127.0.0.1:PORT" and the target.
  [[nodiscard]] std::string Url(std::string_view target = "/") const;
  /// The certificate in PEM form; whoever trusts it may call the server 127.0.0.1 or localhost. Nobody
  /// trusts it unasked.
  [[nodiscard]] std::filesystem::path CertificateFile() const { return folder_.Path() / "certificate.pem"; }

 private:
  TempFolder folder_;
  ChildProcess front_;
  std::uint16_t port_ = 0;
};

}  // namespace test_support
