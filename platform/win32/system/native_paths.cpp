#include "platform/win32/system/native_paths.h"

#include <string_view>

#include "platform/disk/utf.h"

namespace platform::win32 {
namespace {

constexpr disk::DecodedCharacter kReplacement{0xFFFD, 1};

}  // namespace

Text Win32NativePaths::FromNative(const std::string& native) {
  Text text;
  text.reserve(native.size());
  for (std::string_view rest = native; !rest.empty();) {
    const auto [character, size] = disk::DecodeUtf8(rest).value_or(kReplacement);
    disk::AppendUtf16(text, character);
    rest.remove_prefix(size);
  }
  return text;
}

std::string Win32NativePaths::ToNative(const Text& path) {
  std::string native;
  native.reserve(path.size());
  for (TextView rest = path; !rest.empty();) {
    const auto [character, size] = disk::DecodeUtf16(rest);
    disk::AppendUtf8(native, character);
    rest.remove_prefix(size);
  }
  return native;
}

}  // namespace platform::win32
