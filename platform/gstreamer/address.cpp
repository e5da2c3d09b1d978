#include "platform/gstreamer/address.h"

#include <glib/gstdio.h>
#include <gst/gst.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/gstreamer/gst_pointers.h"
#include "platform/gstreamer/results.h"

namespace platform::gstreamer {
namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr std::string_view kFileScheme = "file://";

/// What a line of a text file leaves around an address: blanks, tabs, the CR of a line end, other controls.
bool IsBlankOrControl(char16_t unit) { return unit <= 0x20 || unit == 0x7F; }

Text WithoutBlankEnds(const Text& text) {
  const auto first = std::find_if_not(text.begin(), text.end(), IsBlankOrControl);
  const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), IsBlankOrControl);
  return {first, last.base()};
}

bool StartsWithIgnoringCase(const std::string& text, std::string_view prefix) {
  return text.size() >= prefix.size() && g_ascii_strncasecmp(text.c_str(), prefix.data(), prefix.size()) == 0;
}

bool IsSchemeCharacter(char character) {
  return g_ascii_isalnum(character) || character == '+' || character == '-' || character == '.';
}

bool HasScheme(const std::string& text) {
  const auto end = text.find("://");
  if (end == std::string::npos || end == 0 || !g_ascii_isalpha(text.front())) return false;
  return std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), IsSchemeCharacter);
}

/// Escapes what no URI may hold; everything that is escaped already stays as it is.
std::string EscapeForUri(std::string_view text) {
  constexpr std::string_view kForbidden = "\"<>\\^`{|}";
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string escaped;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte > 0x20 && byte < 0x7F && kForbidden.find(character) == std::string_view::npos) {
      escaped += character;
      continue;
    }
    escaped += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return escaped;
}

/// Splits the host off, which is not escaped but spelled in ASCII (RFC 3490), and puts all together again.
std::string WebUri(const std::string& text) {
  const auto host_start = text.find("://") + 3;
  const auto host_end = std::min(text.find_first_of("/?#", host_start), text.size());
  const std::string authority = text.substr(host_start, host_end - host_start);
  const GStringPointer ascii(g_hostname_is_non_ascii(authority.c_str())
                                 ? g_hostname_to_ascii(authority.c_str())
                                 : g_strdup(authority.c_str()));
  const std::string host = ascii ? ascii.get() : authority;
  return text.substr(0, host_start) + EscapeForUri(host) + EscapeForUri(text.substr(host_end));
}

/// Opening a pipe waits for somebody who writes, and cannot be given up; a playlist from a server may name
/// one.
bool IsPipeOrDevice(const std::string& native_path) {
  GStatBuf status{};
  if (g_stat(native_path.c_str(), &status) != 0) return false;
  return !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

Address FileAddress(const std::string& native_path) {
  if (native_path.find('\0') != std::string::npos) return {};
  if (IsPipeOrDevice(native_path)) return {kMfEUnsupportedByteStreamType, {}, true};
  const GStringPointer uri(gst_filename_to_uri(native_path.c_str(), nullptr));
  if (!uri) return {};
  return {kSOk, uri.get(), true};
}

/// The file name inside a file address, unescaped; empty when its escapes are broken.
std::string PathOfFileUri(std::string text) {
  std::replace(text.begin(), text.end(), '\\', '/');
  std::string path = text.substr(kFileScheme.size());
  if (StartsWithIgnoringCase(path, "localhost/")) path.erase(0, std::string_view("localhost").size());
  const GStringPointer unescaped(g_uri_unescape_string(path.c_str(), nullptr));
  return unescaped ? unescaped.get() : std::string();
}

}  // namespace

Address ResolveAddress(const Text& untrimmed, NativePaths& native_paths) {
  const Text text = WithoutBlankEnds(untrimmed);
  if (text.empty() || text.find(u'\0') != Text::npos) return {};
  const std::string utf8 = Utf8FromText(text);
  if (StartsWithIgnoringCase(utf8, "http://") || StartsWithIgnoringCase(utf8, "https://")) {
    return {kSOk, WebUri(utf8), false};
  }
  if (StartsWithIgnoringCase(utf8, kFileScheme)) {
    const std::string path = PathOfFileUri(utf8);
    return path.empty() ? Address{} : FileAddress(path);
  }
  if (HasScheme(utf8)) return {kMfEUnsupportedScheme, {}, false};
  return FileAddress(native_paths.ToNative(text));
}

std::string Utf8FromText(const Text& text) {
  std::string utf8;
  for (std::size_t at = 0; at < text.size(); ++at) {
    gunichar code = text[at];
    const bool high = code >= 0xD800 && code < 0xDC00;
    const bool paired = high && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000;
    if (paired) {
      code = 0x10000 + ((code - 0xD800) << 10) + (text[++at] - gunichar{0xDC00});
    } else if (code >= 0xD800 && code < 0xE000) {
      code = kReplacement;
    }
    char bytes[6];
    utf8.append(bytes, static_cast<std::size_t>(g_unichar_to_utf8(code, bytes)));
  }
  return utf8;
}

Text TextFromUtf8(const char* utf8) {
  const GStringPointer valid(g_utf8_make_valid(utf8, -1));
  glong length = 0;
  gunichar2* units = g_utf8_to_utf16(valid.get(), -1, nullptr, &length, nullptr);
  if (units == nullptr) return {};
  Text text;
  std::copy(units, units + length, std::back_inserter(text));
  g_free(units);
  return text;
}

}  // namespace platform::gstreamer
