#include "platform/posix/native_paths.h"

#include <gtest/gtest.h>

#include <random>

namespace platform::posix {
namespace {

class NativePathsTest : public testing::Test {
 protected:
  PosixNativePaths paths;
};

TEST_F(NativePathsTest, SeparatorsChangePlaces) {
  EXPECT_EQ(paths.FromNative("/home/a b/x.ini"), u"\\home\\a b\\x.ini");
  EXPECT_EQ(paths.ToNative(u"\\home\\a b\\x.ini"), "/home/a b/x.ini");
  EXPECT_EQ(paths.ToNative(u"/home/x.ini"), "/home/x.ini");
  EXPECT_EQ(paths.FromNative(""), u"");
  EXPECT_EQ(paths.ToNative(u""), "");
}

TEST_F(NativePathsTest, FileNamesAreUtf8) {
  EXPECT_EQ(paths.FromNative("/K\xC3\xB6rbe/\xE2\x82\xAC/\xF0\x9D\x84\x9E"), u"\\Körbe\\€\\𝄞");
  EXPECT_EQ(paths.ToNative(u"\\Körbe\\€\\𝄞"), "/K\xC3\xB6rbe/\xE2\x82\xAC/\xF0\x9D\x84\x9E");
}

TEST_F(NativePathsTest, ABackslashInsideANameIsNoSeparatorAndSurvives) {
  const Text text = paths.FromNative("/a\\b/c");
  EXPECT_EQ(text.find(u"a\\b"), Text::npos);
  EXPECT_EQ(paths.ToNative(text), "/a\\b/c");
}

TEST_F(NativePathsTest, NamesThatAreNoUtf8Survive) {
  for (const std::string name : {"/x\xFF"
                                 "y",
                                 "\xC3", "\xC3(", "\xED\xA0\x80", "\xC0\xAF", "\xF4\x90\x80\x80", "\xE2\x82",
                                 "\x80\\\xF0\x9D\x84\x9E\x84", "\xF0\x9D\x84"}) {
    EXPECT_EQ(paths.ToNative(paths.FromNative(name)), name);
  }
}

TEST_F(NativePathsTest, NoTextMakesASeparatorOrANulThatItDoesNotShow) {
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const std::string native = paths.ToNative(Text(1, static_cast<char16_t>(unit)));
    EXPECT_EQ(native.find('/') != std::string::npos, unit == U'/' || unit == U'\\');
    EXPECT_EQ(native.find('\0') != std::string::npos, unit == 0);
  }
}

TEST_F(NativePathsTest, OtherLoneSurrogatesBecomeTheReplacementCharacter) {
  EXPECT_EQ(paths.ToNative(Text{u'a', char16_t{0xD800}, u'b'}),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(paths.ToNative(Text{char16_t{0xDFFF}}), "\xEF\xBF\xBD");
}

TEST_F(NativePathsTest, EveryRowOfBytesSurvives) {
  std::mt19937 random(20261115);
  for (int round = 0; round < 20000; ++round) {
    std::string name(random() % 12, '\0');
    for (char& byte : name) byte = static_cast<char>(round % 2 == 0 ? random() % 256 : 0x7E + random() % 130);
    ASSERT_EQ(paths.ToNative(paths.FromNative(name)), name);
  }
}

TEST_F(NativePathsTest, AUsablePathIsNotEmptyAndContainsNoNul) {
  EXPECT_TRUE(IsUsablePath("/a"));
  EXPECT_FALSE(IsUsablePath(""));
  EXPECT_FALSE(IsUsablePath(std::string("/a\0b", 4)));
}

}  // namespace
}  // namespace platform::posix
