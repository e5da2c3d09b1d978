#include "tests/support/http_request.h"

#include <algorithm>
#include <cctype>

namespace test_support {
namespace {

// Far more than any client of the tests sends; it bounds what garbage can make the server keep.
constexpr std::size_t kLongestHead = 256 * 1024;

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

bool SameIgnoringCase(std::string_view left, std::string_view right) {
  return std::ranges::equal(
      left, right, [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

std::string TargetOf(const std::string& line) {
  const auto start = line.find(' ');
  if (start == std::string::npos) return {};
  return line.substr(start + 1, line.find(' ', start + 1) - start - 1);
}

}  // namespace

std::optional<std::string> HttpRequest::Header(std::string_view name) const {
  std::string_view rest = headers;
  while (!rest.empty()) {
    const auto end = std::min(rest.find('\n'), rest.size());
    const std::string_view header = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const auto colon = header.find(':');
    if (colon == std::string_view::npos || !SameIgnoringCase(Trimmed(header.substr(0, colon)), name))
      continue;
    return std::string(Trimmed(header.substr(colon + 1)));
  }
  return std::nullopt;
}

std::optional<HttpRequest> ReadRequest(const Descriptor& socket, std::string& received,
                                       const StopSignal& stop) {
  while (received.find("\r\n\r\n") == std::string::npos) {
    if (received.size() > kLongestHead || !Receive(socket, received, stop)) return std::nullopt;
  }
  const std::string head = received.substr(0, received.find("\r\n\r\n") + 2);
  received.erase(0, head.size() + 2);
  const auto line_end = head.find("\r\n");
  HttpRequest request;
  request.line = head.substr(0, line_end);
  request.target = TargetOf(request.line);
  request.headers = head.substr(line_end + 2);
  return request;
}

}  // namespace test_support
