#include "platform/posix/system_messages.h"

#include <gtest/gtest.h>

namespace platform::posix {
namespace {

TEST(PosixSystemMessages, TheTwoErrorsOfOpeningHaveGermanTextsThatEndWithALineEnd) {
  PosixSystemMessages messages;
  EXPECT_EQ(messages.FormatMessageA(static_cast<std::int32_t>(0x80070002)),
            u"Das System kann die angegebene Datei nicht finden.\r\n");
  EXPECT_EQ(messages.FormatMessageA(-1072875836),
            u"Der Bytestreamtyp der angegebenen URL wird nicht unterstützt.\r\n");
}

TEST(PosixSystemMessages, TheyAreLookedUpWithoutTheirLineEnd) {
  PosixSystemMessages messages;
  messages.SetLookUp([](const Text& german) { return u"<" + german + u">"; });
  EXPECT_EQ(messages.FormatMessageA(static_cast<std::int32_t>(0x80070002)),
            u"<Das System kann die angegebene Datei nicht finden.>\r\n");
}

TEST(PosixSystemMessages, AnUnknownCodeHasNoText) {
  PosixSystemMessages messages;
  for (const std::int32_t code : {0, 1, 2, -1}) EXPECT_EQ(messages.FormatMessageA(code), u"");
}

}  // namespace
}  // namespace platform::posix
