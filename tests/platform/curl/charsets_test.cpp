#include "platform/curl/charsets.h"

#include <gtest/gtest.h>

namespace platform::curl {
namespace {

TEST(CharsetsOfTheLibrary, MalformedBytesBecomeReplacements) {
  EXPECT_EQ(DecodeCharset("euc-jp",
                          "a\xFF"
                          "b"),
            u"a\uFFFDb");
  EXPECT_EQ(DecodeCharset("euc-jp", "a\xA5"), u"a\uFFFD") << "cut in a character";
}

}  // namespace
}  // namespace platform::curl
