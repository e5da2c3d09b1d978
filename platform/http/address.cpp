#include "platform/http/address.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <vector>

namespace platform::http {
namespace {

constexpr std::uint16_t kHttpPort = 80;
constexpr std::uint16_t kHttpsPort = 443;

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

int HexDigit(char byte) {
  if (byte >= '0' && byte <= '9') return byte - '0';
  const char lower = LowerAscii(byte);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string PercentDecoded(std::string_view bytes) {
  std::string decoded;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const bool may_be_code = bytes[at] == '%' && at + 2 < bytes.size();
    const int high = may_be_code ? HexDigit(bytes[at + 1]) : -1;
    const int low = may_be_code ? HexDigit(bytes[at + 2]) : -1;
    const bool is_code = high >= 0 && low >= 0;
    decoded += is_code ? static_cast<char>(high * 16 + low) : bytes[at];
    if (is_code) at += 2;
  }
  return decoded;
}

// Takes ":port" off the end of a host; `usual` when there is none.
std::optional<std::uint16_t> TakePort(std::string_view& host, std::uint16_t usual) {
  const std::size_t colon = host.rfind(':');
  const std::size_t bracket = host.rfind(']');
  const bool is_in_brackets = bracket != std::string_view::npos && colon < bracket;
  if (colon == std::string_view::npos || is_in_brackets) return usual;
  const std::string_view digits = host.substr(colon + 1);
  host.remove_suffix(host.size() - colon);
  if (digits.empty()) return usual;
  std::uint16_t port = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
  const bool is_port = error == std::errc() && end == digits.data() + digits.size() && port != 0;
  return is_port ? std::optional(port) : std::nullopt;
}

// "name:" before any other sign of a path, query or fragment.
bool HasScheme(std::string_view reference) {
  const std::size_t end = reference.find_first_of(":/?#");
  return end != std::string_view::npos && end > 0 && reference[end] == ':';
}

// RFC 3986, section 5.2.4. `path` begins with "/" or is empty.
std::string WithoutDotSegments(std::string_view path) {
  std::vector<std::string_view> kept;
  bool ends_in_folder = true;
  for (std::size_t at = path.starts_with('/') ? 1 : 0; at <= path.size();) {
    const std::size_t end = std::min(path.find('/', at), path.size());
    const std::string_view segment = path.substr(at, end - at);
    ends_in_folder = segment == "." || segment == "..";
    if (segment == ".." && !kept.empty()) kept.pop_back();
    if (!ends_in_folder) kept.push_back(segment);
    at = end + 1;
  }
  std::string result;
  for (const std::string_view segment : kept) result.append("/").append(segment);
  if (ends_in_folder) result += '/';
  return result;
}

}  // namespace

std::optional<std::string> RequestAddress(TextConversion& conversion, TextView url) {
  return RequestAddress(conversion.WideCharToMultiByte(CodePage::kUtf8, url));
}

std::optional<std::string> RequestAddress(std::string_view url) {
  const std::string_view bytes = WithoutBlanksAtTheEnds(url);
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

std::optional<AddressParts> PartsOf(std::string_view address) {
  const std::size_t scheme = SchemeLength(address);
  if (scheme == 0) return std::nullopt;
  AddressParts parts;
  parts.security = LowerAscii(address[4]) == 's' ? Security::kTls : Security::kPlain;
  const std::size_t host_end = std::min(address.find_first_of("/?#", scheme), address.size());
  std::string_view host = address.substr(scheme, host_end - scheme);
  if (const std::size_t at = host.rfind('@'); at != std::string_view::npos) {
    parts.user = PercentDecoded(host.substr(0, at));
    host.remove_prefix(at + 1);
  }
  const auto port = TakePort(host, parts.security == Security::kTls ? kHttpsPort : kHttpPort);
  if (!port || host.empty()) return std::nullopt;
  parts.port = *port;
  parts.host = host;
  const std::string_view target = address.substr(host_end, address.find('#', host_end) - host_end);
  parts.target = target.starts_with('/') ? std::string(target) : "/" + std::string(target);
  return parts;
}

std::optional<std::string> ResolveReference(std::string_view address, std::string_view reference) {
  reference = WithoutBlanksAtTheEnds(reference);
  const std::size_t scheme = SchemeLength(address);
  if (scheme == 0) return std::nullopt;
  if (HasScheme(reference)) return RequestAddress(reference);
  const auto absolute = [](std::string_view beginning, std::string_view rest) {
    return RequestAddress(std::string(beginning) + std::string(rest));
  };
  if (reference.starts_with("//")) return absolute(address.substr(0, scheme - 2), reference);
  const std::size_t host_end = std::min(address.find_first_of("/?#", scheme), address.size());
  if (reference.starts_with('/')) return absolute(address.substr(0, host_end), reference);
  const std::size_t path_end = std::min(address.find_first_of("?#", host_end), address.size());
  if (reference.starts_with('?')) return absolute(address.substr(0, path_end), reference);
  if (reference.empty() || reference.starts_with('#')) return RequestAddress(address);
  const std::string_view path = address.substr(host_end, path_end - host_end);
  const std::size_t reference_path_end = std::min(reference.find_first_of("?#"), reference.size());
  const std::string merged =
      std::string(path.substr(0, path.rfind('/') + 1)) + std::string(reference.substr(0, reference_path_end));
  return absolute(address.substr(0, host_end),
                  WithoutDotSegments(merged) + std::string(reference.substr(reference_path_end)));
}

}  // namespace platform::http
