// Into how many replacement characters ICU decodes what is no UTF-8; the port leaves that to the adapter.

#include <gtest/gtest.h>

#include "platform/icu/text_conversion.h"

namespace platform::icu {
namespace {

TEST(MalformedUtf8, EachMaximalMalformedPartIsOneReplacementCharacter) {
  IcuTextConversion conversion;
  const auto utf8 = [&](std::string_view bytes) {
    return conversion.MultiByteToWideChar(CodePage::kUtf8, bytes);
  };
  EXPECT_EQ(utf8("\xC0\xAF"), u"\uFFFD\uFFFD") << "overlong";
  EXPECT_EQ(utf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD") << "surrogate";
  EXPECT_EQ(utf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD") << "too high";
  EXPECT_EQ(utf8("\xFE\xFF"), u"\uFFFD\uFFFD");
}

}  // namespace
}  // namespace platform::icu
