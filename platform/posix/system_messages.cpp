#include "platform/posix/system_messages.h"

namespace platform::posix {
namespace {

struct Message {
  std::uint32_t code;
  const char16_t* german;
  const char16_t* english;
};

constexpr Message kMessages[] = {
    {0x80070002, u"Das System kann die angegebene Datei nicht finden.\r\n",
     u"The system cannot find the file specified.\r\n"},
    {0xC00D36C4, u"Der Bytestreamtyp der angegebenen URL wird nicht unterstützt.\r\n",
     u"The byte stream type of the given URL is unsupported.\r\n"},
};

}  // namespace

Text PosixSystemMessages::FormatMessageA(std::int32_t code) {
  for (const Message& message : kMessages) {
    if (message.code != static_cast<std::uint32_t>(code)) continue;
    return language_ == MessageLanguage::kGerman ? message.german : message.english;
  }
  return {};
}

}  // namespace platform::posix
