#pragma once
// An HTTPS server on 127.0.0.1 with a self-made certificate, for one fixed answer.
// Not a server that misbehaves: that is ScriptedIcyServer.

#include <string>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace platform::curl {

/// Runs as a child process (Python's ssl module; the certificate comes from the openssl tool). Every
/// connection gets `answer`, whatever it asks for, and is closed.
class TlsServer {
 public:
  /// Returns once the server listens; throws when it cannot be started.
  explicit TlsServer(const std::string& answer);

  /// "https://127.0.0.1:PORT/".
  [[nodiscard]] std::string Url() const;
  /// The certificate, for a client that should trust the server.
  [[nodiscard]] std::string CertificateFile() const;

 private:
  test_support::TempFolder folder_;
  test_support::ChildProcess server_;
  std::string port_;
};

}  // namespace platform::curl
