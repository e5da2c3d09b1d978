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

constexpr const char* kOwnNames = "subjectAltName=IP:127.0.0.1,DNS:localhost";
constexpr const char* kForeignName = "subjectAltName=DNS:somebody.invalid";

void RunOpenssl(ChildProcess::Arguments arguments) {
  arguments.insert(arguments.begin(), "openssl");
  if (RunProgram(arguments).exit_code != 0) throw std::runtime_error("openssl made no certificate");
}

void MakeKeyAnd(const std::string& kind, const std::string& subject, const std::string& names,
                const std::string& key, const std::string& out) {
  ChildProcess::Arguments arguments = {
      "req",     "-newkey", "ec",    "-pkeyopt", "ec_paramgen_curve:prime256v1",
      "-nodes",  "-subj",   subject, "-addext",  names,
      "-keyout", key,       "-out",  out};
  if (!kind.empty()) arguments.insert(arguments.end(), {kind, "-days", "2"});
  RunOpenssl(arguments);
}

/// A certificate of an issuer that is to be trusted; one of -1 days has expired.
void Issue(const std::filesystem::path& folder, const std::string& names, const std::string& days) {
  const auto file = [&folder](const char* name) { return (folder / name).string(); };
  MakeKeyAnd("-x509", "/CN=Testaussteller", "keyUsage=keyCertSign", file("issuer.key"), file("trusted.pem"));
  MakeKeyAnd("", "/CN=127.0.0.1", names, file("key.pem"), file("request.pem"));
  RunOpenssl({"x509", "-req", "-in", file("request.pem"), "-CA", file("trusted.pem"), "-CAkey",
              file("issuer.key"), "-CAcreateserial", "-copy_extensions", "copy", "-days", days, "-out",
              file("certificate.pem")});
}

void MakeCertificate(const std::filesystem::path& folder, TlsFront::Certificate certificate) {
  if (certificate == TlsFront::Certificate::kExpired) return Issue(folder, kOwnNames, "-1");
  if (certificate == TlsFront::Certificate::kOtherName) return Issue(folder, kForeignName, "2");
  MakeKeyAnd("-x509", "/CN=127.0.0.1", kOwnNames, folder / "key.pem", folder / "certificate.pem");
  std::filesystem::copy_file(folder / "certificate.pem", folder / "trusted.pem");
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

TlsFront::TlsFront(std::uint16_t plain_port, Certificate certificate) {
  MakeCertificate(folder_.Path(), certificate);
  front_ =
      ChildProcess({"python3", "-c", kFront, std::to_string(plain_port),
                    (folder_.Path() / "certificate.pem").string(), (folder_.Path() / "key.pem").string()},
                   {}, ChildProcess::Output::kPiped);
  port_ = ReadPort(front_.OutputDescriptor());
}

std::string TlsFront::Url(std::string_view target) const {
  return "https://127.0.0.1:" + std::to_string(port_) + std::string(target);
}

}  // namespace test_support
