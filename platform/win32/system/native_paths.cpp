#include "platform/win32/system/native_paths.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace platform::win32 {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

struct Decoded {
  char32_t character;
  std::size_t size;
};

/// Bytes that follow the first byte of a sequence; nothing when it cannot be a first byte.
std::optional<std::size_t> FollowingBytes(unsigned char first) {
  if (first < 0x80) return 0;
  if (first >= 0xC2 && first <= 0xDF) return 1;
  if (first >= 0xE0 && first <= 0xEF) return 2;
  if (first >= 0xF0 && first <= 0xF4) return 3;
  return std::nullopt;
}

std::optional<Decoded> Decode(std::string_view bytes) {
  constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<unsigned char>(bytes.front());
  const auto following = FollowingBytes(first);
  if (!following || bytes.size() <= *following) return std::nullopt;
  char32_t character = *following == 0 ? first : first & (0x3FU >> *following);
  for (std::size_t index = 1; index <= *following; ++index) {
    const auto byte = static_cast<unsigned char>(bytes[index]);
    if ((byte & 0xC0U) != 0x80U) return std::nullopt;
    character = character << 6 | (byte & 0x3FU);
  }
  if (character < kSmallest[*following] || character > 0x10FFFF) return std::nullopt;
  return Decoded{character, *following + 1};
}

void AppendUnits(Text& text, char32_t character) {
  if (character < 0x10000) {
    text.push_back(static_cast<char16_t>(character));
    return;
  }
  text.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
}

void AppendBytes(std::string& bytes, char32_t character) {
  constexpr unsigned kFirst[] = {0, 0xC0, 0xE0, 0xF0};
  const int following = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  bytes.push_back(static_cast<char>(kFirst[following] | character >> (6 * following)));
  for (int left = following - 1; left >= 0; --left) {
    bytes.push_back(static_cast<char>(0x80U | (character >> (6 * left) & 0x3FU)));
  }
}

}  // namespace

Text Win32NativePaths::FromNative(const std::string& native) {
  Text text;
  text.reserve(native.size());
  for (std::string_view rest = native; !rest.empty();) {
    const Decoded decoded = Decode(rest).value_or(Decoded{kReplacement, 1});
    AppendUnits(text, decoded.character);
    rest.remove_prefix(decoded.size);
  }
  return text;
}

std::string Win32NativePaths::ToNative(const Text& path) {
  std::string native;
  native.reserve(path.size());
  for (std::size_t index = 0; index < path.size(); ++index) {
    char32_t character = path[index];
    if (IsHighSurrogate(character) && index + 1 < path.size() && IsLowSurrogate(path[index + 1])) {
      character = 0x10000 + ((character - 0xD800) << 10) + (path[++index] - 0xDC00U);
    }
    AppendBytes(native, character);
  }
  return native;
}

}  // namespace platform::win32
