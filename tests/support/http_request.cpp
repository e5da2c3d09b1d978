#include "tests/support/http_request.h"

#include <algorithm>
#include <cctype>

namespace test_support {
namespace {

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

bool SameIgnoringCase(std::string_view left, std::string_view right) {
  return std::ranges::equal(
      left, right, [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
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

}  // namespace test_support
