#include "platform/live/text_types.h"

#include <gtest/gtest.h>

namespace live_test {
namespace {

using platform::live::IsListType;
using platform::live::IsTextType;

TEST(TextTypesTest, PagesAndListsOfAddressesAreTexts) {
  for (const char* type : {"text/html", "text/plain", "application/json", "audio/x-scpls", "audio/x-mpegurl",
                           "audio/mpegurl", "application/xspf+xml", "application/vnd.apple.mpegurl"}) {
    EXPECT_TRUE(IsTextType(type)) << type;
  }
}

TEST(TextTypesTest, SoundAndWhatHasNoTypeAreNot) {
  for (const char* type : {"audio/mpeg", "audio/aac", "application/ogg", "application/octet-stream", ""}) {
    EXPECT_FALSE(IsTextType(type)) << type;
  }
}

TEST(TextTypesTest, ListIsWhatNamesSegments) {
  for (const char* type : {"audio/x-mpegurl", "audio/mpegurl", "application/x-mpegurl", "application/mpegurl",
                           "application/vnd.apple.mpegurl"}) {
    EXPECT_TRUE(IsListType(type)) << type;
  }
  for (const char* type : {"text/html", "audio/x-scpls", "audio/mpeg", ""})
    EXPECT_FALSE(IsListType(type)) << type;
}

}  // namespace
}  // namespace live_test
