#include "platform/win32/system/system_path.h"

#include <gtest/gtest.h>

#include "platform/win32/system/files.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

TEST(SystemPathTest, AShortPathStaysAsItIs) {
  EXPECT_EQ(SystemPath(u"C:\\Körbe/x.ini"), L"C:\\Körbe/x.ini");
  EXPECT_EQ(SystemPath(u"x.ini"), L"x.ini");
}

TEST(SystemPathTest, WhatNamesNoFileIsNone) {
  EXPECT_EQ(SystemPath(u""), std::nullopt);
  EXPECT_EQ(SystemPath(Text(u"C:\\a\0b", 6)), std::nullopt);
}

TEST(SystemPathTest, ALongPathGetsThePrefixAndIsResolved) {
  const std::wstring part(300, L'x');
  const Text text(300, u'x');
  EXPECT_EQ(SystemPath(u"C:\\a\\..\\b/" + text), L"\\\\?\\C:\\b\\" + part);
  EXPECT_EQ(SystemPath(u"\\\\server\\share\\" + text), L"\\\\?\\UNC\\server\\share\\" + part);
  EXPECT_EQ(SystemPath(u"\\\\?\\C:\\" + text), L"\\\\?\\C:\\" + part);
}

TEST(SystemPathTest, AShortPathIsKnownToUsersWithoutThePrefix) {
  EXPECT_EQ(WithoutPrefix(L"\\\\?\\C:\\K\u00F6rbe"), L"C:\\K\u00F6rbe");
  EXPECT_EQ(WithoutPrefix(L"\\\\?\\UNC\\server\\share\\x"), L"\\\\server\\share\\x");
  EXPECT_EQ(WithoutPrefix(L"C:\\x"), L"C:\\x");
  const std::wstring path = L"\\\\?\\C:\\" + std::wstring(300, L'x');
  EXPECT_EQ(WithoutPrefix(path), path);
}

TEST(SystemPathTest, ADeepFolderKeepsThePrefixByWhichItCanBeReached) {
  const test_support::TempFolder folder;
  Win32Files files;
  Text deep = folder.TextPath();
  while (deep.size() < 300) {
    deep += u"\\" + Text(60, u'x');
    ASSERT_TRUE(files.CreateDirectoryW(deep));
  }
  const std::wstring path = SystemPath(deep).value();
  EXPECT_EQ(ResolvedPath(path), path) << "with the prefix";
}

TEST(SystemPathTest, AFileInADeepFolderIsWrittenAndRead) {
  const test_support::TempFolder folder;
  Win32Files files;
  Text deep = folder.TextPath();
  for (int level = 0; level < 8; ++level) {
    deep += u"\\" + Text(60, static_cast<char16_t>(u'a' + level));
    ASSERT_TRUE(files.CreateDirectoryW(deep));
  }
  EXPECT_TRUE(files.WriteWholeFile(deep + u"\\datei.txt", "inhalt"));
  EXPECT_EQ(files.ReadWholeFile(deep + u"\\datei.txt", 100), "inhalt");
  FoundFile found;
  const FindHandle search = files.FindFirstFileW(deep + u"\\*.*", found);
  EXPECT_EQ(found.name, u"datei.txt");
  files.FindClose(search);
  EXPECT_TRUE(files.DeleteFileW(deep + u"\\datei.txt"));
}

TEST(SystemPathTest, TheNumberOfANameStaysTheSameWhateverItsLetterCase) {
  EXPECT_EQ(NumberOf(L"C:\\ÄPFEL\\Funkhaus.ini"), NumberOf(L"c:\\äpfel\\funkhaus.INI"));
  EXPECT_NE(NumberOf(L"a"), NumberOf(L"b"));
  EXPECT_NE(NumberOf(L"\u4E01"), NumberOf(L"\u4F01")) << "every bit counts";
  EXPECT_EQ(NumberOf(L"").size(), 16U);
  EXPECT_EQ(NumberOf(L""), L"cbf29ce484222325");
}

TEST(SystemPathTest, AnExistingFolderIsKnownByOneNameOnly) {
  const test_support::TempFolder folder;
  folder.Write("Sub/x", "");
  const std::wstring path = folder.Path().wstring();
  const auto resolved = ResolvedPath(path + L"\\Sub");
  ASSERT_TRUE(resolved);
  EXPECT_TRUE(resolved->ends_with(L"\\Sub")) << "without a separator";
  EXPECT_FALSE(resolved->starts_with(L"\\\\?\\"));
  EXPECT_EQ(ResolvedPath(path + L"\\sub\\..\\SUB\\"), resolved);
  EXPECT_EQ(ResolvedPath(path + L"\\missing"), std::nullopt);
}

}  // namespace
}  // namespace platform::win32
