#include "tests/platform/curl/tls_server.h"

#include <unistd.h>

#include <stdexcept>

namespace platform::curl {
namespace {

constexpr const char* kProgram = R"(
import socket, ssl, sys
certificate, key, answer = sys.argv[1:4]
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(certificate, key)
listener = socket.create_server(("127.0.0.1", 0))
print(listener.getsockname()[1], flush=True)
while True:
    connection, _ = listener.accept()
    try:
        with context.wrap_socket(connection, server_side=True) as secure:
            request = b""
            while b"\r\n\r\n" not in request:
                piece = secure.recv(4096)
                if not piece:
                    break
                request += piece
            secure.sendall(open(answer, "rb").read())
    except OSError:
        pass
)";

std::string ReadLine(int descriptor) {
  std::string line;
  char byte = 0;
  while (::read(descriptor, &byte, 1) == 1 && byte != '\n') line += byte;
  return line;
}

}  // namespace

TlsServer::TlsServer(const std::string& answer) {
  const std::string key = folder_.Path() / "key.pem";
  const auto made = test_support::RunProgram({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                                              "ec_paramgen_curve:P-256", "-nodes", "-keyout", key, "-out",
                                              CertificateFile(), "-days", "2", "-subj", "/CN=127.0.0.1",
                                              "-addext", "subjectAltName=IP:127.0.0.1"});
  if (made.exit_code != 0) throw std::runtime_error("openssl cannot make a certificate");
  const std::string answer_file = folder_.Write("answer", answer);
  server_ = test_support::ChildProcess({"python3", "-c", kProgram, CertificateFile(), key, answer_file}, {},
                                       test_support::ChildProcess::Output::kPiped);
  port_ = ReadLine(server_.OutputDescriptor());
  if (port_.empty()) throw std::runtime_error("the HTTPS server has not started");
}

std::string TlsServer::Url() const { return "https://127.0.0.1:" + port_ + "/"; }

std::string TlsServer::CertificateFile() const { return folder_.Path() / "certificate.pem"; }

}  // namespace platform::curl
