// Paths that are longer than the system's operations take as they are.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include "platform/win32/system/files.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

TEST(Win32LongPathsTest, WhatIsThereExistsAndWhatIsNotDoesNot) {
  const test_support::TempFolder folder;
  Win32Files files;
  Text path = folder.TextPath();
  while (path.size() <= MAX_PATH) {
    path += u"\\" + Text(60, u'x');
    EXPECT_FALSE(files.PathFileExistsW(path));
    ASSERT_TRUE(files.CreateDirectoryW(path));
    EXPECT_TRUE(files.PathFileExistsW(path));
  }
  EXPECT_FALSE(files.PathFileExistsW(path + u"\\a"));
  EXPECT_TRUE(files.WriteWholeFile(path + u"\\a", "bytes"));
  EXPECT_TRUE(files.PathFileExistsW(path + u"\\a"));
  EXPECT_TRUE(files.DeleteFileW(path + u"\\a"));
}

}  // namespace
}  // namespace platform::win32
