#include "platform/win32/system/system_messages.h"

#include "platform/win32/base/windows_api.h"

#include <array>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

struct Message {
  std::uint32_t code;
  const char16_t* german;
};

constexpr Message kMessages[] = {
    {0xC00D36C4, u"Der Bytestreamtyp der angegebenen URL wird nicht unterstützt."},
};

/// The system writes in its own code page. "%1" in a text stands for something that nobody has here.
Text SystemText(std::int32_t code) {
  std::array<char, 256> bytes{};
  const DWORD size = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      static_cast<DWORD>(code), 0, bytes.data(), bytes.size(), nullptr);
  Text text(size, u'\0');
  const int units = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(size),
                                          WideBuffer(text.data()), static_cast<int>(size));
  text.resize(static_cast<std::size_t>(units));
  return text;
}

}  // namespace

Text Win32SystemMessages::FormatMessageA(std::int32_t code) {
  if (Text text = SystemText(code); !text.empty()) return text;
  for (const Message& message : kMessages) {
    if (message.code != static_cast<std::uint32_t>(code)) continue;
    return (translated_ ? translated_(message.german) : Text(message.german)) + u"\r\n";
  }
  return {};
}

}  // namespace platform::win32
