#include "platform/win32/system/record_files.h"

#include <gtest/gtest.h>

#include "platform/win32/system/files.h"
#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

TEST(Win32RecordFilesTest, ADeviceWhoseNameIsInEveryFolderIsNoRecording) {
  const test_support::TempFolder folder;
  Win32RecordFiles files;
  const NewRecordFile created = files.CreateBinary(folder.TextPath(), u"NUL");
  EXPECT_EQ(created.file, RecordFile::kNone);
  EXPECT_FALSE(created.name_is_taken);
  EXPECT_EQ(files.OpenBinary(folder.TextPath(), u"NUL"), RecordFile::kNone);
}

TEST(Win32RecordFilesTest, AnotherStreamOfAFileIsNoRecording) {
  const test_support::TempFolder folder;
  folder.Write("a.mp3", "x");
  Win32RecordFiles files;
  EXPECT_EQ(files.OpenBinary(folder.TextPath(), u"a.mp3:b"), RecordFile::kNone);
  EXPECT_FALSE(files.CreateBinary(folder.TextPath(), u"a.mp3:b").name_is_taken);
}

TEST(Win32RecordFilesTest, ADeepFolderLeavesRoomForShortNamesAndAVeryDeepOneForShortOnesAllTheSame) {
  Win32RecordFiles files;
  EXPECT_EQ(files.LongestFileName(u"C:\\Musik"), 250U);
  EXPECT_EQ(files.LongestFileName(Text(2, u'x')), 255U) << "no file system takes more";
  EXPECT_EQ(files.LongestFileName(Text(200, u'x')), 58U);
  for (const std::size_t size : {230U, 258U, 259U, 5000U})
    EXPECT_EQ(files.LongestFileName(Text(size, u'x')), 32U) << size;
}

}  // namespace
}  // namespace platform::win32
