#include "platform/win32/system/native_paths.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace platform::win32 {
namespace {

TEST(Win32NativePathsTest, AFileNameIsItsUtf8) {
  Win32NativePaths paths;
  const std::string native = "C:\\K\xC3\xB6rbe\\\xE2\x82\xAC/\xF0\x9D\x84\x9E";
  EXPECT_EQ(paths.FromNative(native), u"C:\\Körbe\\€/𝄞");
  EXPECT_EQ(paths.ToNative(u"C:\\Körbe\\€/𝄞"), native);
  EXPECT_EQ(paths.FromNative(""), u"");
  EXPECT_EQ(paths.ToNative(u""), "");
}

TEST(Win32NativePathsTest, EveryNameComesBackWithUnpairedSurrogatesToo) {
  Win32NativePaths paths;
  const Text units = u"a\\\u00E4\u20AC\uFFFD\xD834\xDD1E\xD800\xDFFF";
  std::minstd_rand random{4711};
  for (int round = 0; round < 20000; ++round) {
    Text name;
    for (int at = 0; at < 6; ++at) name.push_back(units[random() % units.size()]);
    ASSERT_EQ(paths.FromNative(paths.ToNative(name)), name);
  }
}

TEST(Win32NativePathsTest, BytesThatAreNoNameBecomeReplacementCharacters) {
  Win32NativePaths paths;
  EXPECT_EQ(paths.FromNative("a\xFF"
                             "b"),
            u"a\uFFFDb");
  EXPECT_EQ(paths.FromNative("\xC0\xAF"), u"\uFFFD\uFFFD");
  EXPECT_EQ(paths.FromNative("\xE2\x82"), u"\uFFFD\uFFFD");
}

}  // namespace
}  // namespace platform::win32
