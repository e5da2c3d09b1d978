#include "platform/win32/internet/stray_header.h"

#include <algorithm>
#include <array>

namespace platform::win32 {
namespace {

constexpr std::string_view kStatusLine = "ICY 200 OK\r\n";
/// What the first line begins with, in lower case. Any name would be too much: a text may begin "http:".
/// "icy " is the status line itself, where the library leaves it, too.
constexpr std::array<std::string_view, 5> kNames = {"icy-", "icy ", "ice-", "content-type:", "server:"};

char LowerAscii(char byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte; }

bool AgreesIgnoringCase(std::string_view bytes, std::string_view name) {
  const std::size_t length = std::min(bytes.size(), name.size());
  return std::equal(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length), name.begin(),
                    [](char byte, char wanted) { return LowerAscii(byte) == wanted; });
}

}  // namespace

bool StrayHeader::MayBeBehind(const http::AnswerHeader& header) {
  return header.Block() == "HTTP/1.0 200 OK\r\n\r\n";
}

StrayHeader::State StrayHeader::Add(std::string_view bytes) {
  rest_ += bytes;
  const bool is_end = bytes.empty();
  if (!rest_.empty() && (rest_[0] == '\r' || rest_[0] == '\n')) return state_ = State::kGarbage;
  const auto agrees = [this](std::string_view name) { return AgreesIgnoringCase(rest_, name); };
  if (std::none_of(kNames.begin(), kNames.end(), agrees)) return state_ = State::kNone;
  const std::size_t crlf = std::min(rest_.find("\n\r\n"), rest_.size());
  const std::size_t lf = std::min(rest_.find("\n\n"), rest_.size());
  const std::size_t end = crlf < lf ? crlf + 3 : lf + 2;
  if (std::min(crlf, lf) == rest_.size()) {
    if (rest_.size() > http::AnswerHeader::kLimit) return state_ = State::kTooLong;
    if (!is_end) return State::kUnknown;
    // Cut inside the header, or a body that is as short as the beginning of a name.
    const auto is_begun = [&](std::string_view name) { return agrees(name) && rest_.size() >= name.size(); };
    return state_ = std::any_of(kNames.begin(), kNames.end(), is_begun) ? State::kGarbage : State::kNone;
  }
  if (!agrees("icy ")) static_cast<void>(header_.AddLine(kStatusLine));
  bool fits = true;
  for (std::size_t at = 0; at < end;) {
    const std::size_t next = rest_.find('\n', at) + 1;
    fits = header_.AddLine(std::string_view(rest_).substr(at, next - at)) && fits;
    at = next;
  }
  rest_.erase(0, end);
  return state_ = fits ? State::kWhole : State::kTooLong;
}

}  // namespace platform::win32
