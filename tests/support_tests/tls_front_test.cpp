#include "tests/support/tls_front.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/child_process.h"
#include "tests/support/scripted_icy_server.h"

namespace test_support {
namespace {

// Prints the body, or "untrusted" when the certificate is refused. Arguments: address, file of what to trust.
constexpr const char* kClient = R"(
import ssl, sys, urllib.error, urllib.request
context = ssl.create_default_context(cafile=sys.argv[2] if len(sys.argv) > 2 else None)
try:
    with urllib.request.urlopen(sys.argv[1], context=context, timeout=20) as answer:
        print(answer.read().decode(), end="")
except urllib.error.URLError as error:
    print("untrusted" if isinstance(error.reason, ssl.SSLCertVerificationError) else error, end="")
)";

TEST(TlsFront, PassesTheAnswerOfThePlainServerToWhoTrustsIt) {
  ScriptedIcyServer server;
  server.On("/a", Page("text/plain", "through TLS"));
  const TlsFront front(server.Port());
  const RunResult result =
      RunProgram({"python3", "-c", kClient, front.Url("/a"), front.CertificateFile().string()});
  EXPECT_EQ(result.output, "through TLS");
  ASSERT_EQ(server.Requests().size(), 1U);
  EXPECT_EQ(server.Requests()[0].target, "/a");
}

TEST(TlsFront, IsNotTrustedUnasked) {
  ScriptedIcyServer server;
  const TlsFront front(server.Port());
  EXPECT_EQ(RunProgram({"python3", "-c", kClient, front.Url("/a")}).output, "untrusted");
  EXPECT_TRUE(server.Requests().empty());
}

}  // namespace
}  // namespace test_support
