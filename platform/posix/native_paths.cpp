#include "platform/posix/native_paths.h"

#include <string_view>

#include "platform/disk/utf.h"

namespace platform::posix {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char16_t kEscape = 0xDC00;
constexpr char16_t kEscapedBackslash = kEscape + u'\\';

bool IsEscapedByte(char32_t unit) {
  return unit == kEscapedBackslash || (unit >= kEscape + 0x80 && unit <= kEscape + 0xFF);
}

char16_t Escaped(char byte) { return static_cast<char16_t>(kEscape + static_cast<unsigned char>(byte)); }

}  // namespace

Text PosixNativePaths::FromNative(const std::string& native) {
  Text text;
  text.reserve(native.size());
  std::string_view rest = native;
  while (!rest.empty()) {
    const auto decoded = disk::DecodeUtf8(rest);
    if (!decoded || decoded->character == U'\\' || disk::IsSurrogate(decoded->character)) {
      text.push_back(Escaped(rest.front()));
      rest.remove_prefix(1);
      continue;
    }
    disk::AppendUtf16(text, decoded->character == U'/' ? U'\\' : decoded->character);
    rest.remove_prefix(decoded->size);
  }
  return text;
}

std::string PosixNativePaths::ToNative(const Text& path) {
  std::string native;
  native.reserve(path.size());
  for (TextView rest = path; !rest.empty();) {
    const auto [character, size] = disk::DecodeUtf16(rest);
    if (character == U'\\') {
      native.push_back('/');
    } else if (IsEscapedByte(character)) {
      native.push_back(static_cast<char>(character - kEscape));
    } else {
      disk::AppendUtf8(native, disk::IsSurrogate(character) ? kReplacement : character);
    }
    rest.remove_prefix(size);
  }
  return native;
}

bool IsUsablePath(const std::string& native) {
  return !native.empty() && native.find('\0') == std::string::npos;
}

}  // namespace platform::posix
