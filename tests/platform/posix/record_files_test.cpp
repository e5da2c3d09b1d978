#include "platform/posix/record_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/posix/native_paths.h"
#include "tests/platform/posix/child_process.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

class RecordFilesTest : public testing::Test {
 protected:
  RecordFile Open(const Text& name) { return files.OpenBinary(folder.TextPath(), name); }
  bool WriteText(RecordFile file, std::string_view bytes) {
    return files.WriteBytes(file, std::as_bytes(std::span(bytes)));
  }

  test_support::TempFolder folder;
  PosixNativePaths paths;
  PosixRecordFiles files{paths};
};

TEST_F(RecordFilesTest, ARecordingIsMadeAndContainsWhatWasWritten) {
  const RecordFile file = Open(u"AC_ DC - Größe.mp3");
  ASSERT_NE(file, RecordFile::kNone);
  EXPECT_TRUE(WriteText(file, "abc"));
  EXPECT_TRUE(WriteText(file, ""));
  EXPECT_TRUE(WriteText(file, std::string("\0d", 2)));
  files.Close(file);
  EXPECT_EQ(folder.Read("AC_ DC - Gr\xC3\xB6\xC3\x9F"
                        "e.mp3"),
            std::string("abc\0d", 5));
}

TEST_F(RecordFilesTest, AnExistingRecordingIsOverwrittenFromItsBeginningAndNotTruncated) {
  folder.Write("record.mp3", "0123456789");
  const RecordFile file = Open(u"record.mp3");
  EXPECT_TRUE(WriteText(file, "abc"));
  files.Close(file);
  EXPECT_EQ(folder.Read("record.mp3"), "abc3456789");
}

TEST_F(RecordFilesTest, ANewFileIsMadeOnlyWhereNoEntryOfItsNameIs) {
  const NewRecordFile made = files.CreateBinary(folder.TextPath(), u"a.mp3");
  ASSERT_NE(made.file, RecordFile::kNone);
  EXPECT_FALSE(made.name_is_taken);
  EXPECT_TRUE(WriteText(made.file, "abc"));
  files.Close(made.file);
  std::filesystem::create_directory(folder.Path() / "folder");
  std::filesystem::create_symlink("missing", folder.Path() / "dangling");
  for (const Text name : {u"a.mp3", u"folder", u"dangling"}) {
    const NewRecordFile refused = files.CreateBinary(folder.TextPath(), name);
    EXPECT_EQ(refused.file, RecordFile::kNone);
    EXPECT_TRUE(refused.name_is_taken);
  }
  EXPECT_EQ(folder.Read("a.mp3"), "abc");
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "missing"));
}

TEST_F(RecordFilesTest, ANewFileThatCannotBeMadeHasNoTakenName) {
  for (const Text name : {u"", u"..", u"sub\\x", u"/x"}) {
    const NewRecordFile refused = files.CreateBinary(folder.TextPath(), name);
    EXPECT_EQ(refused.file, RecordFile::kNone);
    EXPECT_FALSE(refused.name_is_taken);
  }
  EXPECT_FALSE(files.CreateBinary(folder.TextPath("missing"), u"x").name_is_taken);
  EXPECT_FALSE(files.CreateBinary(folder.TextPath(), Text(300, u'x')).name_is_taken);
}

TEST_F(RecordFilesTest, FlushMakesSingleBytesVisible) {
  const RecordFile file = Open(u"a");
  for (const char byte : {'a', 'b', 'c'}) EXPECT_TRUE(WriteText(file, {&byte, 1}));
  EXPECT_TRUE(files.Flush(file));
  EXPECT_EQ(folder.Read("a"), "abc");
  EXPECT_TRUE(files.Flush(file));
  files.Close(file);
}

TEST_F(RecordFilesTest, FlushFailsOnceTheFileIsRemoved) {
  const RecordFile file = Open(u"a");
  EXPECT_TRUE(WriteText(file, "abc"));
  EXPECT_TRUE(files.Flush(file));
  std::filesystem::remove(folder.Path() / "a");
  EXPECT_TRUE(WriteText(file, "def"));
  EXPECT_FALSE(files.Flush(file));
  files.Close(file);
}

TEST_F(RecordFilesTest, MoreThanTheBufferIsWrittenInOrder) {
  std::string all;
  const RecordFile file = Open(u"a");
  for (std::size_t size : {1U, 65535U, 1U, 65536U, 200000U, 7U}) {
    const std::string part(size, static_cast<char>('a' + all.size() % 26));
    EXPECT_TRUE(WriteText(file, part));
    all += part;
  }
  files.Close(file);
  EXPECT_EQ(folder.Read("a"), all);
}

TEST_F(RecordFilesTest, NamesThatLeadOutOfTheFolderAreRefused) {
  std::filesystem::create_directory(folder.Path() / "sub");
  for (const Text name : {u"", u".", u"..", u"sub\\x", u"sub/x", u"..\\x", u"\\x", u"/x"}) {
    EXPECT_EQ(Open(name), RecordFile::kNone);
  }
  EXPECT_EQ(Open(Text(u"a\0.mp3", 6)), RecordFile::kNone);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path() / "sub"));
  EXPECT_EQ(files.OpenBinary(folder.TextPath("missing"), u"x"), RecordFile::kNone);
  EXPECT_EQ(files.OpenBinary(u"", u"x"), RecordFile::kNone);
}

TEST_F(RecordFilesTest, LinksFoldersPipesAndDevicesAreRefused) {
  folder.Write("target", "before");
  std::filesystem::create_symlink("target", folder.Path() / "link");
  std::filesystem::create_symlink("missing", folder.Path() / "dangling");
  std::filesystem::create_directory(folder.Path() / "sub");
  ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  for (const Text name : {u"link", u"dangling", u"sub", u"pipe"}) EXPECT_EQ(Open(name), RecordFile::kNone);
  EXPECT_EQ(files.OpenBinary(u"\\dev", u"null"), RecordFile::kNone);
  EXPECT_EQ(folder.Read("target"), "before");
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "missing"));
}

TEST_F(RecordFilesTest, APipeWithAReaderIsRefusedToo) {
  ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  const FileDescriptor reader(::open((folder.Path() / "pipe").c_str(), O_RDONLY | O_NONBLOCK));
  EXPECT_EQ(Open(u"pipe"), RecordFile::kNone);
}

TEST_F(RecordFilesTest, AFileWithASecondNameIsRefused) {
  folder.Write("backup", "before");
  std::filesystem::create_hard_link(folder.Path() / "backup", folder.Path() / "title.mp3");
  EXPECT_EQ(Open(u"title.mp3"), RecordFile::kNone);
  EXPECT_EQ(folder.Read("backup"), "before");
}

TEST_F(RecordFilesTest, AProgramFileIsRefused) {
  folder.Write("OZRecordFunkhaus", "program");
  ASSERT_EQ(::chmod((folder.Path() / "OZRecordFunkhaus").c_str(), 0755), 0);
  EXPECT_EQ(Open(u"OZRecordFunkhaus"), RecordFile::kNone);
  EXPECT_EQ(folder.Read("OZRecordFunkhaus"), "program");
}

TEST_F(RecordFilesTest, SeveralRecordingsRunSideBySide) {
  const RecordFile first = Open(u"a");
  const RecordFile second = Open(u"b");
  EXPECT_NE(first, second);
  EXPECT_TRUE(WriteText(first, "1"));
  EXPECT_TRUE(WriteText(second, "2"));
  files.Close(first);
  EXPECT_TRUE(WriteText(second, "3"));
  files.Close(second);
  EXPECT_EQ(folder.Read("a") + folder.Read("b"), "123");
}

TEST_F(RecordFilesTest, AClosedOrUnknownRecordingTakesNothing) {
  const RecordFile file = Open(u"a");
  files.Close(file);
  files.Close(file);
  files.Close(RecordFile::kNone);
  EXPECT_FALSE(WriteText(file, "x"));
  EXPECT_FALSE(WriteText(RecordFile::kNone, "x"));
  EXPECT_FALSE(files.Flush(RecordFile::kNone));
}

TEST_F(RecordFilesTest, WhatIsStillBufferedIsWrittenWhenTheProgramEnds) {
  {
    PosixRecordFiles other(paths);
    const RecordFile file = other.OpenBinary(folder.TextPath(), u"a");
    const std::string_view bytes = "abc";
    EXPECT_TRUE(other.WriteBytes(file, std::as_bytes(std::span(bytes))));
  }
  EXPECT_EQ(folder.Read("a"), "abc");
}

TEST_F(RecordFilesTest, AFullDiskIsReportedAndWhatFittedStays) {
  const auto record = [&] {
    const RecordFile file = Open(u"a");
    bool taken = true;
    for (int part = 0; part < 100; ++part) taken = WriteText(file, std::string(4096, 'x')) && taken;
    const bool flushed = files.Flush(file);
    files.Close(file);
    return !taken && !flushed;
  };
  EXPECT_EQ(RunWithFullDisk(100000, record), ChildResult::kTrue);
  EXPECT_EQ(folder.Read("a"), std::string(100000, 'x'));
}

TEST_F(RecordFilesTest, TheLongestNameIsTheFileSystemsLimit) {
  const std::size_t longest = files.LongestFileName(folder.TextPath());
  EXPECT_NE(Open(Text(longest, u'x')), RecordFile::kNone);
  EXPECT_EQ(Open(Text(longest + 1, u'x')), RecordFile::kNone);
  EXPECT_EQ(files.LongestFileName(folder.TextPath("missing")), 255U);
}

}  // namespace
}  // namespace platform::posix
