#include "platform/posix/system_messages.h"

namespace platform::posix {
namespace {

struct Message {
  std::uint32_t code;
  const char16_t* german;
};

constexpr Message kMessages[] = {
    {0x80070002, u"Das System kann die angegebene Datei nicht finden."},
    {0xC00D36C4, u"Der Bytestreamtyp der angegebenen URL wird nicht unterstützt."},
};

}  // namespace

Text PosixSystemMessages::FormatMessageA(std::int32_t code) {
  for (const Message& message : kMessages) {
    if (message.code != static_cast<std::uint32_t>(code)) continue;
    return (translated_ ? translated_(message.german) : Text(message.german)) + u"\r\n";
  }
  return {};
}

}  // namespace platform::posix
