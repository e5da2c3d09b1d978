#include "platform/posix/system_messages.h"

#include <gtest/gtest.h>

namespace platform::posix {
namespace {

TEST(PosixSystemMessages, TheTwoErrorsOfOpeningHaveGermanTextsThatEndWithALineEnd) {
  PosixSystemMessages messages(MessageLanguage::kGerman);
  EXPECT_EQ(messages.FormatMessageA(static_cast<std::int32_t>(0x80070002)),
            u"Das System kann die angegebene Datei nicht finden.\r\n");
  EXPECT_EQ(messages.FormatMessageA(-1072875836),
            u"Der Bytestreamtyp der angegebenen URL wird nicht unterstützt.\r\n");
}

TEST(PosixSystemMessages, AndEnglishOnes) {
  PosixSystemMessages messages(MessageLanguage::kEnglish);
  EXPECT_EQ(messages.FormatMessageA(static_cast<std::int32_t>(0x80070002)),
            u"The system cannot find the file specified.\r\n");
  EXPECT_EQ(messages.FormatMessageA(-1072875836),
            u"The byte stream type of the given URL is unsupported.\r\n");
}

TEST(PosixSystemMessages, TheLanguageMayBeChosenLater) {
  PosixSystemMessages messages(MessageLanguage::kGerman);
  messages.SetLanguage(MessageLanguage::kEnglish);
  EXPECT_EQ(messages.FormatMessageA(static_cast<std::int32_t>(0x80070002)),
            u"The system cannot find the file specified.\r\n");
}

TEST(PosixSystemMessages, AnUnknownCodeHasNoText) {
  PosixSystemMessages messages(MessageLanguage::kGerman);
  for (const std::int32_t code : {0, 1, 2, -1}) EXPECT_EQ(messages.FormatMessageA(code), u"");
}

}  // namespace
}  // namespace platform::posix
