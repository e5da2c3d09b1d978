#include "platform/posix/native_paths.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace platform::posix {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char16_t kEscape = 0xDC00;
constexpr char16_t kEscapedBackslash = kEscape + u'\\';

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
bool IsEscapedByte(char16_t unit) {
  return unit == kEscapedBackslash || (unit >= kEscape + 0x80 && unit <= kEscape + 0xFF);
}

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

/// The character at the beginning of `bytes` by RFC 3629; nothing when they do not form one.
std::optional<Decoded> DecodeUtf8(std::string_view bytes) {
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
  const bool is_surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < kSmallest[*following] || character > 0x10FFFF || is_surrogate) return std::nullopt;
  return Decoded{character, *following + 1};
}

void AppendUtf16(Text& text, char32_t character) {
  if (character < 0x10000) {
    text.push_back(static_cast<char16_t>(character));
    return;
  }
  const char32_t offset = character - 0x10000;
  text.push_back(static_cast<char16_t>(0xD800 + (offset >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + (offset & 0x3FF)));
}

void AppendUtf8(std::string& bytes, char32_t character) {
  const auto following = [](char32_t bits) { return static_cast<char>(0x80U | (bits & 0x3FU)); };
  if (character < 0x80) {
    bytes.push_back(static_cast<char>(character));
  } else if (character < 0x800) {
    bytes.push_back(static_cast<char>(0xC0U | character >> 6));
    bytes.push_back(following(character));
  } else if (character < 0x10000) {
    bytes.push_back(static_cast<char>(0xE0U | character >> 12));
    bytes.push_back(following(character >> 6));
    bytes.push_back(following(character));
  } else {
    bytes.push_back(static_cast<char>(0xF0U | character >> 18));
    bytes.push_back(following(character >> 12));
    bytes.push_back(following(character >> 6));
    bytes.push_back(following(character));
  }
}

char16_t Escaped(char byte) { return static_cast<char16_t>(kEscape + static_cast<unsigned char>(byte)); }

}  // namespace

Text PosixNativePaths::FromNative(const std::string& native) {
  Text text;
  text.reserve(native.size());
  std::string_view rest = native;
  while (!rest.empty()) {
    const auto decoded = DecodeUtf8(rest);
    if (!decoded || decoded->character == U'\\') {
      text.push_back(Escaped(rest.front()));
      rest.remove_prefix(1);
      continue;
    }
    AppendUtf16(text, decoded->character == U'/' ? U'\\' : decoded->character);
    rest.remove_prefix(decoded->size);
  }
  return text;
}

std::string PosixNativePaths::ToNative(const Text& path) {
  std::string native;
  native.reserve(path.size());
  for (std::size_t index = 0; index < path.size(); ++index) {
    const char16_t unit = path[index];
    if (unit == u'\\') {
      native.push_back('/');
    } else if (IsHighSurrogate(unit) && index + 1 < path.size() && IsLowSurrogate(path[index + 1])) {
      ++index;
      AppendUtf8(native, 0x10000 + ((unit - 0xD800U) << 10) + (path[index] - 0xDC00U));
    } else if (IsEscapedByte(unit)) {
      native.push_back(static_cast<char>(unit - kEscape));
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      AppendUtf8(native, kReplacement);
    } else {
      AppendUtf8(native, unit);
    }
  }
  return native;
}

bool IsUsablePath(const std::string& native) {
  return !native.empty() && native.find('\0') == std::string::npos;
}

}  // namespace platform::posix
