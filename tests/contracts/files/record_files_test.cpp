// The files of a running recording, as every system's adapter must handle them.

#include <gtest/gtest.h>

#include <filesystem>

#include "files_under_test.h"
#include "tests/support/temp_folder.h"

namespace platform {
namespace {

class RecordFilesTest : public testing::Test {
 protected:
  RecordFile Open(const Text& name) { return files.OpenBinary(folder.TextPath(), name); }
  bool WriteText(RecordFile file, std::string_view bytes) {
    return files.WriteBytes(file, std::as_bytes(std::span(bytes)));
  }

  test_support::TempFolder folder;
  under_test::Disk disk;
  RecordFiles& files = disk.record_files;
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

TEST_F(RecordFilesTest, FlushMakesSingleBytesVisible) {
  const RecordFile file = Open(u"a");
  for (const char byte : {'a', 'b', 'c'}) EXPECT_TRUE(WriteText(file, {&byte, 1}));
  EXPECT_TRUE(files.Flush(file));
  EXPECT_EQ(folder.Read("a"), "abc");
  EXPECT_TRUE(files.Flush(file));
  files.Close(file);
}

TEST_F(RecordFilesTest, FlushFailsOnceTheFileIsRemoved) {
  if (!under_test::ShowsRemoval()) GTEST_SKIP() << "this system does not show it";
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

TEST_F(RecordFilesTest, AFileWithASecondNameIsRefused) {
  folder.Write("backup", "before");
  std::filesystem::create_hard_link(folder.Path() / "backup", folder.Path() / "title.mp3");
  EXPECT_EQ(Open(u"title.mp3"), RecordFile::kNone);
  EXPECT_EQ(folder.Read("backup"), "before");
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

TEST_F(RecordFilesTest, ANewFileIsMadeOnlyWhereNoEntryOfItsNameIs) {
  const NewRecordFile made = files.CreateBinary(folder.TextPath(), u"a.mp3");
  ASSERT_NE(made.file, RecordFile::kNone);
  EXPECT_FALSE(made.name_is_taken);
  EXPECT_TRUE(WriteText(made.file, "abc"));
  files.Close(made.file);
  std::filesystem::create_directory(folder.Path() / "folder");
  for (const Text name : {u"a.mp3", u"folder"}) {
    const NewRecordFile refused = files.CreateBinary(folder.TextPath(), name);
    EXPECT_EQ(refused.file, RecordFile::kNone);
    EXPECT_TRUE(refused.name_is_taken);
    EXPECT_TRUE(name == u"a.mp3" || files.OpenBinary(folder.TextPath(), name) == RecordFile::kNone);
  }
  EXPECT_EQ(folder.Read("a.mp3"), "abc");
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

TEST_F(RecordFilesTest, WhatIsStillBufferedIsWrittenWhenTheProgramEnds) {
  {
    under_test::Disk other;
    const RecordFile file = other.record_files.OpenBinary(folder.TextPath(), u"a");
    const std::string_view bytes = "abc";
    EXPECT_TRUE(other.record_files.WriteBytes(file, std::as_bytes(std::span(bytes))));
  }
  EXPECT_EQ(folder.Read("a"), "abc");
}

TEST_F(RecordFilesTest, ANameOfTheLongestLengthCanBeOpened) {
  const std::size_t longest = files.LongestFileName(folder.TextPath());
  EXPECT_GE(longest, 32U);
  EXPECT_NE(Open(Text(longest, u'x')), RecordFile::kNone);
}

}  // namespace
}  // namespace platform
