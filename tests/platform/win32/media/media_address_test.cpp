#include "platform/win32/media/media_address.h"

#include <gtest/gtest.h>

namespace platform::win32 {
namespace {

TEST(MediaAddress, KnowsWebAddressesInEitherLetterCase) {
  EXPECT_EQ(ReadAddress(u"http://sender.example/a").kind, AddressKind::kWeb);
  EXPECT_EQ(ReadAddress(u"HTTPS://sender.example/a").kind, AddressKind::kWeb);
  EXPECT_EQ(ReadAddress(u"mms://sender.example/a").kind, AddressKind::kOther);
  EXPECT_EQ(ReadAddress(u"file:///C:/ton.wav").kind, AddressKind::kOther);
  EXPECT_EQ(ReadAddress(u"C:\\Musik\\ton.wav").kind, AddressKind::kFile);
  EXPECT_EQ(ReadAddress(u"http:").kind, AddressKind::kFile);
}

TEST(MediaAddress, DropsBlanksAtTheEndsOnly) {
  EXPECT_EQ(ReadAddress(u" \t http://a/b c\r\n").text, u"http://a/b c");
  EXPECT_EQ(ReadAddress(u"a").text, u"a");
}

TEST(MediaAddress, RefusesWhatIsNone) {
  EXPECT_EQ(ReadAddress(u"").kind, AddressKind::kNone);
  EXPECT_EQ(ReadAddress(u" \x7F\n").kind, AddressKind::kNone);
  EXPECT_EQ(ReadAddress(Text(u"a\0b", 3)).kind, AddressKind::kNone);
}

}  // namespace
}  // namespace platform::win32
