// What the files of a recording are on this system beyond the contract: links, pipes, rights, a full disk.

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

class RecordFilesOnPosix : public testing::Test {
 protected:
  RecordFile Open(const Text& name) { return files.OpenBinary(folder.TextPath(), name); }
  bool WriteText(RecordFile file, std::string_view bytes) {
    return files.WriteBytes(file, std::as_bytes(std::span(bytes)));
  }

  test_support::TempFolder folder;
  PosixNativePaths paths;
  PosixRecordFiles files{paths};
};

TEST_F(RecordFilesOnPosix, ANewFileIsMadeOnlyWhereNoEntryOfItsNameIs) {
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

TEST_F(RecordFilesOnPosix, LinksFoldersPipesAndDevicesAreRefused) {
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

TEST_F(RecordFilesOnPosix, APipeWithAReaderIsRefusedToo) {
  ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  const FileDescriptor reader(::open((folder.Path() / "pipe").c_str(), O_RDONLY | O_NONBLOCK));
  EXPECT_EQ(Open(u"pipe"), RecordFile::kNone);
}

TEST_F(RecordFilesOnPosix, AProgramFileIsRefused) {
  folder.Write("OZRecordFunkhaus", "program");
  ASSERT_EQ(::chmod((folder.Path() / "OZRecordFunkhaus").c_str(), 0755), 0);
  EXPECT_EQ(Open(u"OZRecordFunkhaus"), RecordFile::kNone);
  EXPECT_EQ(folder.Read("OZRecordFunkhaus"), "program");
}

TEST_F(RecordFilesOnPosix, AFullDiskIsReportedAndWhatFittedStays) {
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

TEST_F(RecordFilesOnPosix, TheLongestNameIsTheFileSystemsLimit) {
  const std::size_t longest = files.LongestFileName(folder.TextPath());
  EXPECT_NE(Open(Text(longest, u'x')), RecordFile::kNone);
  EXPECT_EQ(Open(Text(longest + 1, u'x')), RecordFile::kNone);
  EXPECT_EQ(files.LongestFileName(folder.TextPath("missing")), 255U);
}

}  // namespace
}  // namespace platform::posix
