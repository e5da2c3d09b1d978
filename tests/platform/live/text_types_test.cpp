#include "platform/live/text_types.h"

#include <gtest/gtest.h>

namespace live_test {
namespace {

using platform::live::IsTextType;

TEST(TextTypesTest, PagesAndListsOfAddressesAreTexts) {
  for (const char* type : {"text/html", "text/plain", "application/json", "audio/x-scpls", "audio/x-mpegurl",
                           "audio/mpegurl", "application/xspf+xml"}) {
    EXPECT_TRUE(IsTextType(type)) << type;
  }
}

TEST(TextTypesTest, SoundAndWhatHasNoTypeAreNot) {
  for (const char* type : {"audio/mpeg", "audio/aac", "application/ogg", "application/octet-stream", ""}) {
    EXPECT_FALSE(IsTextType(type)) << type;
  }
}

}  // namespace
}  // namespace live_test
