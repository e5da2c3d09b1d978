#include "tests/support/tls_front.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <stdexcept>

namespace test_support {
namespace {

// Arguments: port of the plain server, certificate, key. Prints its own port once it listens.
constexpr const char* kFront = R"(
import asyncio, ssl, sys

async def pump(source, target):
    try:
        while data := await source.read(65536):
            target.write(data)
            await target.drain()
    except (OSError, ssl.SSLError):
        pass
    target.close()

async def serve(reader, writer):
    try:
        plain_reader, plain_writer = await asyncio.open_connection("127.0.0.1", int(sys.argv[1]))
    except OSError:
        writer.close()
        return
    await asyncio.gather(pump(reader, plain_writer), pump(plain_reader, writer))

async def main():
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[2], sys.argv[3])
    server = await asyncio.start_server(serve, "127.0.0.1", 0, ssl=context)
    print(server.sockets[0].getsockname()[1], flush=True)
    await server.serve_forever()

asyncio.run(main())
)";

void MakeCertificate(const std::string& certificate, const std::string& key) {
  const RunResult made =
      RunProgram({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                  "-nodes", "-days", "2", "-subj", "/CN=127.0.0.1", "-addext",
                  "subjectAltName=IP:127.0.0.1,DNS:localhost", "-keyout", key, "-out", certificate});
  if (made.exit_code != 0) throw std::runtime_error("openssl made no certificate");
}

std::uint16_t ReadPort(int output) {
  std::string line;
  pollfd entry{output, POLLIN, 0};
  while (line.find('\n') == std::string::npos) {
    std::array<char, 64> piece;
    const ssize_t count = ::poll(&entry, 1, 20'000) == 1 ? ::read(output, piece.data(), piece.size()) : -1;
    if (count <= 0) throw std::runtime_error("the TLS front did not start");
    line.append(piece.data(), static_cast<std::size_t>(count));
  }
  std::uint16_t port = 0;
  std::from_chars(line.data(), line.data() + line.size(), port);
  return port;
}

}  // namespace

TlsFront::TlsFront(std::uint16_t plain_port) {
  const std::string key = (folder_.Path() / "key.pem").string();
  MakeCertificate(CertificateFile().string(), key);
  front_ =
      ChildProcess({"python3", "-c", kFront, std::to_string(plain_port), CertificateFile().string(), key}, {},
                   ChildProcess::Output::kPiped);
  port_ = ReadPort(front_.OutputDescriptor());
}

std::string TlsFront::Url(std::string_view target) const {
  return "https://127.0.0.1:" + std::to_string(port_) + std::string(target);
}

}  // namespace test_support
