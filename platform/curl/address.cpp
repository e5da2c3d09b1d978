#include "platform/curl/address.h"

#include <algorithm>
#include <string_view>

namespace platform::curl {
namespace {

bool IsBlankOrControl(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code <= 0x20 || code == 0x7F;
}

std::string_view WithoutBlanksAtTheEnds(std::string_view bytes) {
  const auto first = std::find_if_not(bytes.begin(), bytes.end(), IsBlankOrControl);
  const auto last = std::find_if_not(bytes.rbegin(), bytes.rend(), IsBlankOrControl).base();
  return first < last ? std::string_view(first, last) : std::string_view();
}

std::string PercentEncoded(std::string_view bytes) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string encoded;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    if (!IsBlankOrControl(byte) && code < 0x80) {
      encoded += byte;
      continue;
    }
    encoded += {'%', kHex[code >> 4], kHex[code & 0x0F]};
  }
  return encoded;
}

char LowerAscii(char byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte; }

// The length of "http://" or "https://" in any case, 0 for everything else.
std::size_t SchemeLength(std::string_view url) {
  for (const std::string_view scheme : {std::string_view("http://"), std::string_view("https://")}) {
    const bool matches = url.size() >= scheme.size() &&
                         std::equal(scheme.begin(), scheme.end(), url.begin(),
                                    [](char wanted, char byte) { return wanted == LowerAscii(byte); });
    if (matches) return scheme.size();
  }
  return 0;
}

}  // namespace

std::optional<std::string> RequestAddress(TextConversion& conversion, TextView url) {
  const std::string utf8 = conversion.WideCharToMultiByte(CodePage::kUtf8, url);
  const std::string_view bytes = WithoutBlanksAtTheEnds(utf8);
  const std::size_t scheme = SchemeLength(bytes);
  if (scheme == 0) return std::nullopt;
  const std::size_t host_end = std::min(bytes.find_first_of("/?#", scheme), bytes.size());
  const std::string_view host = bytes.substr(scheme, host_end - scheme);
  if (host.empty() || std::any_of(host.begin(), host.end(), IsBlankOrControl)) return std::nullopt;
  return std::string(bytes.substr(0, host_end)) + PercentEncoded(bytes.substr(host_end));
}

std::optional<std::string> RequestAddress(TextConversion& conversion, TextView host, std::uint16_t port,
                                          TextView path, Security security) {
  if (host.empty() || host.find_first_of(u"/?#@:\\%") != TextView::npos) return std::nullopt;
  Text url = security == Security::kTls ? u"https://" : u"http://";
  url += host;
  if (port != 0) {
    const std::string digits = std::to_string(port);
    url += u":" + Text(digits.begin(), digits.end());
  }
  if (!path.starts_with(u'/')) url += u'/';
  return RequestAddress(conversion, url + Text(path));
}

}  // namespace platform::curl
