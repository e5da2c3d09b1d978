// Lets a server answer with arbitrary bytes, through a real socket: status lines, header lines, redirects,
// chunked and compressed bodies, headers that do not end, connections that break. Bit 0 of the first byte
// asks the playlist request instead of the stream's operations, bit 1 repeats the last answer until the
// client has had enough; the pieces between bytes 0x1E are the answers to one connection after the other.
// What must hold: every request is one complete header of lines that the program knows, wherever the answer
// before sent it; there are at most eleven; an answer's header is bounded and well formed; the status is
// three digits or nothing; and no more bytes or text come out than the server sent, so that nothing is ever
// unpacked.

#include <chrono>
#include <cstring>

#include "fuzz/fuzz_input.h"
#include "fuzz/platform/loopback.h"
#include "platform/curl/curl_internet.h"
#include "platform/curl/curl_xml_http_request.h"
#include "platform/icu/text_conversion.h"
#include "tests/support/fakes.h"

namespace {

using fuzz::Require;
using platform::InternetHandle;
using platform::Text;
using std::chrono::milliseconds;

constexpr std::size_t kMostRequests = 11;
constexpr std::size_t kLongestHeader = std::size_t{256} * 1024;
/// Repeating goes on for longer than anything that is kept of an answer.
constexpr std::size_t kRepeatedBytes = std::size_t{2} << 20U;

fuzz::Loopback& Server() {
  static fuzz::Loopback server;
  return server;
}

Text Address() {
  const std::string address = "http://127.0.0.1:" + std::to_string(Server().Port()) + "/live";
  return {address.begin(), address.end()};
}

platform::curl::InternetSettings ShortWaits() {
  platform::curl::InternetSettings settings;
  settings.connect_limit = milliseconds(500);
  settings.answer_limit = milliseconds(200);
  settings.whole_limit = milliseconds(500);
  settings.quiet_before_short_read = milliseconds(20);
  return settings;
}

Text Query(platform::Internet& internet, InternetHandle request, std::uint32_t level) {
  std::vector<char16_t> buffer(2 * kLongestHeader);
  std::uint32_t size = 0;
  const auto bytes = std::as_writable_bytes(std::span(buffer));
  if (!internet.HttpQueryInfoW(request, level, bytes, size)) return {};
  return {buffer.data(), size / sizeof(char16_t)};
}

void CheckHeader(platform::Internet& internet, platform::TextConversion& conversion, InternetHandle request) {
  const Text status = Query(internet, request, platform::kHttpQueryStatusCode);
  Require(status.empty() || status.size() == 3);
  Require(status.find_first_not_of(u"0123456789") == Text::npos);
  const Text header = Query(internet, request, platform::kHttpQueryRawHeadersCrLf);
  Require(header.size() <= kLongestHeader);
  if (header.empty()) return;
  const Text version = conversion.CharUpperW(header.substr(0, 5));
  Require(version == u"HTTP/" || version == u"ICY 2");
  // The lines of a header that broke off count as far as they came.
  const std::size_t end = header.find(u"\r\n\r\n");
  Require(header.ends_with(u"\r\n") && (end == Text::npos || end == header.size() - 4));
  Require(status.empty() || header.substr(0, header.find(u"\r\n")).find(u" " + status) != Text::npos);
}

/// How many bytes came; reading ends at the end, at a failure, and after more than is of interest.
std::size_t ReadBody(platform::Internet& internet, InternetHandle request) {
  std::size_t total = 0;
  int without_bytes = 0;
  constexpr int kPatience = 20;
  while (total < kRepeatedBytes && without_bytes < kPatience) {
    std::array<std::byte, 4096> buffer{};
    const platform::InternetRead read = internet.InternetReadFile(request, buffer);
    Require(read.count <= buffer.size());
    Require(!read.ended || read.count == 0);
    total += read.count;
    without_bytes = read.count == 0 ? without_bytes + 1 : 0;
    if (read.ended || !read.ok) break;
  }
  return total;
}

std::size_t AskAsStream() {
  test_support::FakeMessageLoop loop;
  platform::icu::IcuTextConversion conversion;
  platform::curl::CurlInternet internet(loop, conversion, ShortWaits());
  const InternetHandle session =
      internet.InternetOpenW(u"WinampMPEG/5.09", platform::kInternetOpenTypeDirect);
  const InternetHandle request =
      internet.InternetOpenUrlW(session, Address(), u"Icy-MetaData:1", platform::kInternetFlagReload);
  Require((request != InternetHandle::kNone) == (internet.LastFailure() == platform::InternetFailure::kNone));
  if (request == InternetHandle::kNone) return 0;
  CheckHeader(internet, conversion, request);
  return ReadBody(internet, request);
}

/// How many units of text came.
std::size_t AskAsPlaylist() {
  platform::icu::IcuTextConversion conversion;
  platform::curl::CurlXmlHttpRequests requests(conversion);
  const auto request = requests.CreateObject(u"MSXML2.ServerXMLHTTP.6.0");
  Require(request && request->Open(u"GET", Address(), true) && request->Send());
  constexpr std::int32_t kCompleted = 4;
  const auto deadline = std::chrono::steady_clock::now() + milliseconds(300);
  while (request->ReadyState() != kCompleted && std::chrono::steady_clock::now() < deadline) {
  }
  const Text text = request->ResponseText();
  request->Abort();
  return text.size();
}

void CheckRequest(std::string_view request) {
  if (request.empty()) return;  // the client has left again
  Require(request.starts_with("GET /") || request.starts_with("GET http"));
  Require(request.find("\r\n\r\n") == request.size() - 4);
  std::vector<std::string_view> lines = fuzz::Pieces(request.substr(0, request.size() - 4), '\n');
  Require(lines.front().find(' ', 4) == lines.front().size() - std::strlen(" HTTP/1.1\r") ||
          lines.size() == 1);
  for (std::size_t at = 1; at < lines.size(); ++at) {
    const std::string_view name = lines[at].substr(0, lines[at].find(':'));
    Require(name == "Host" || name == "User-Agent" || name == "Icy-MetaData" || name == "Cache-Control" ||
            name == "Authorization" || name == "Accept");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  std::vector<std::string> answers;
  for (const std::string_view piece : fuzz::Pieces(fuzz::AsBytes(data + 1, size - 1), '\x1E')) {
    answers.emplace_back(piece);
  }
  const bool repeats = (data[0] & 2U) != 0 && !answers.back().empty();
  const std::size_t rounds = repeats ? kRepeatedBytes / answers.back().size() : 1;
  Server().Answer(std::move(answers), static_cast<int>(rounds));
  const bool as_playlist = (data[0] & 1U) != 0;
  const std::size_t came = as_playlist ? AskAsPlaylist() : AskAsStream();
  const fuzz::Loopback::Seen seen = Server().Finish();
  Require(seen.requests.size() <= kMostRequests);
  for (const std::string& request : seen.requests) CheckRequest(request);
  // A byte can be two units of text in some character sets; a header's bytes are part of what was sent.
  Require(came <= seen.sent * (as_playlist ? 2 : 1));
  return 0;
}
