#include "platform/posix/start_argument.h"

#include <strings.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <optional>

namespace platform::posix {
namespace {

std::optional<int> HexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return std::nullopt;
}

/// A "%" that is not followed by two digits stays as it is, and so does one for a NUL, which no path
/// contains.
std::string PercentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool has_two = text[at] == '%' && at + 2 < text.size();
    const auto high = has_two ? HexDigit(text[at + 1]) : std::nullopt;
    const auto low = has_two ? HexDigit(text[at + 2]) : std::nullopt;
    if (!high || !low || (*high == 0 && *low == 0)) {
      decoded += text[at];
      continue;
    }
    decoded += static_cast<char>(*high * 16 + *low);
    at += 2;
  }
  return decoded;
}

bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && ::strncasecmp(text.data(), prefix.data(), prefix.size()) == 0;
}

/// Nothing for a file of another machine.
std::optional<std::string> PathOfFileAddress(std::string_view address) {
  for (const std::string_view prefix :
       {std::string_view("file:///"), std::string_view("file://localhost/")}) {
    if (StartsWithIgnoringCase(address, prefix)) return PercentDecoded(address.substr(prefix.size() - 1));
  }
  return std::nullopt;
}

}  // namespace

std::string StartArgument(std::string_view word, std::string_view folder) {
  if (auto path = PathOfFileAddress(word)) return *std::move(path);
  const bool is_address = word.find("://") != std::string_view::npos;
  if (word.empty() || folder.empty() || is_address || word.starts_with('/')) return std::string(word);
  std::string path(folder);
  if (!path.ends_with('/')) path += '/';
  return path.append(word);
}

std::string WorkingFolder() {
  const std::unique_ptr<char, decltype(&std::free)> folder(::getcwd(nullptr, 0), &std::free);
  // The kernel names a folder that cannot be reached by any path in brackets.
  return folder && *folder == '/' ? folder.get() : std::string();
}

}  // namespace platform::posix
