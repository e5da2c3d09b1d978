#include "platform/posix/file_address.h"

#include <string_view>

namespace platform::posix {

Text FileAddress(const std::string& native) {
  constexpr TextView kDigits = u"0123456789ABCDEF";
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  Text address = u"file://";
  for (const char byte : native) {
    if (kPlain.find(byte) != std::string_view::npos) {
      address += static_cast<char16_t>(byte);
      continue;
    }
    const auto value = static_cast<unsigned char>(byte);
    address += {u'%', kDigits[value >> 4], kDigits[value & 0xF]};
  }
  return address;
}

}  // namespace platform::posix
