#include "platform/posix/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/posix/native_paths.h"
#include "tests/platform/posix/child_process.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

constexpr std::size_t kLimit = 1000;

class FilesTest : public testing::Test {
 protected:
  [[nodiscard]] std::ptrdiff_t Entries() const {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
  }
  std::vector<FoundFile> List(const Text& pattern) {
    std::vector<FoundFile> all;
    FoundFile found;
    const FindHandle search = files.FindFirstFileW(pattern, found);
    if (search == FindHandle::kNone) return all;
    do {
      all.push_back(found);
    } while (files.FindNextFileW(search, found));
    files.FindClose(search);
    return all;
  }

  test_support::TempFolder folder;
  PosixNativePaths paths;
  PosixFiles files{paths};
};

TEST_F(FilesTest, FilesAndFoldersExistAndAnEmptyPathDoesNot) {
  folder.Write("Körbe/a.txt", "x");
  EXPECT_TRUE(files.PathFileExistsW(folder.TextPath() + u"\\Körbe\\a.txt"));
  EXPECT_TRUE(files.PathFileExistsW(folder.TextPath() + u"\\Körbe"));
  EXPECT_TRUE(files.PathFileExistsW(folder.TextPath() + u"\\Körbe\\"));
  EXPECT_FALSE(files.PathFileExistsW(folder.TextPath() + u"\\b.txt"));
  EXPECT_FALSE(files.PathFileExistsW(u""));
  EXPECT_FALSE(files.PathFileExistsW(folder.TextPath() + Text(u"\\Körbe\0x", 8)));
}

TEST_F(FilesTest, CreateDirectoryMakesTheLastLevelOnly) {
  EXPECT_FALSE(files.CreateDirectoryW(folder.TextPath() + u"\\a\\b"));
  EXPECT_TRUE(files.CreateDirectoryW(folder.TextPath() + u"\\a\\"));
  EXPECT_TRUE(files.CreateDirectoryW(folder.TextPath() + u"\\a\\b"));
  EXPECT_FALSE(files.CreateDirectoryW(folder.TextPath() + u"\\a"));
  EXPECT_FALSE(files.CreateDirectoryW(u""));
  EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "a/b"));
}

TEST_F(FilesTest, ASearchGivesEveryNameWithItsKind) {
  folder.Write("b.ico", "");
  folder.Write("noext", "");
  folder.Write(".hidden", "");
  folder.Write("sub/inner", "");
  std::filesystem::create_symlink("b.ico", folder.Path() / "link.ico");
  std::filesystem::create_symlink("sub", folder.Path() / "link");
  std::filesystem::create_symlink("missing", folder.Path() / "dangling");
  for (const Text pattern : {u"\\*.*", u"\\*"}) {
    const auto all = List(folder.TextPath() + pattern);
    ASSERT_EQ(all.size(), 7U);
    EXPECT_EQ(all[0].name, u".hidden");
    EXPECT_EQ(all[1].name, u"b.ico");
    EXPECT_FALSE(all[1].is_directory || all[1].is_reparse_point);
    EXPECT_EQ(all[2].name, u"dangling");
    EXPECT_TRUE(all[2].is_reparse_point && !all[2].is_directory);
    EXPECT_TRUE(all[3].is_reparse_point && all[3].is_directory);
    EXPECT_TRUE(all[4].is_reparse_point && !all[4].is_directory);
    EXPECT_EQ(all[6].name, u"sub");
    EXPECT_TRUE(all[6].is_directory && !all[6].is_reparse_point);
  }
}

TEST_F(FilesTest, ASearchInAnEmptyOrMissingFolderFindsNothing) {
  FoundFile found{u"before"};
  EXPECT_EQ(files.FindFirstFileW(folder.TextPath() + u"\\*.*", found), FindHandle::kNone);
  EXPECT_EQ(files.FindFirstFileW(folder.TextPath() + u"\\missing\\*.*", found), FindHandle::kNone);
  EXPECT_EQ(files.FindFirstFileW(u"", found), FindHandle::kNone);
  EXPECT_EQ(files.FindFirstFileW(folder.TextPath() + u"\\*.ico", found), FindHandle::kNone);
  EXPECT_FALSE(files.FindNextFileW(FindHandle::kNone, found));
  files.FindClose(FindHandle::kNone);
  EXPECT_EQ(found.name, u"before");
}

TEST_F(FilesTest, SearchesRunSideBySideAndLeaveTheLastEntryAloneAtTheEnd) {
  folder.Write("a/1", "");
  folder.Write("a/2", "");
  folder.Write("b/3", "");
  FoundFile one;
  FoundFile other;
  const FindHandle first = files.FindFirstFileW(folder.TextPath() + u"\\a\\*.*", one);
  const FindHandle second = files.FindFirstFileW(folder.TextPath() + u"\\b\\*.*", other);
  EXPECT_NE(first, second);
  EXPECT_FALSE(files.FindNextFileW(second, other));
  EXPECT_EQ(other.name, u"3");
  files.FindClose(second);
  EXPECT_TRUE(files.FindNextFileW(first, one));
  EXPECT_EQ(one.name, u"2");
  EXPECT_FALSE(files.FindNextFileW(first, one));
  files.FindClose(first);
  EXPECT_FALSE(files.FindNextFileW(first, one));
}

TEST_F(FilesTest, ANameThatIsNoUtf8IsFoundAndCanBeRead) {
  folder.Write("x\xFF\\y", "content");
  const auto all = List(folder.TextPath() + u"\\*.*");
  ASSERT_EQ(all.size(), 1U);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath() + u"\\" + all[0].name, kLimit), "content");
}

TEST_F(FilesTest, AFileIsReadUpToItsLimit) {
  const std::string bytes("a\0\r\n\xFF", 5);
  folder.Write("a", bytes);
  folder.Write("empty", "");
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath("a"), 5), bytes);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath("a"), 4), std::nullopt);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath("empty"), 0), "");
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath("missing"), kLimit), std::nullopt);
  EXPECT_EQ(files.ReadWholeFile(u"", kLimit), std::nullopt);
}

TEST_F(FilesTest, WhatIsNoRegularFileIsNotRead) {
  ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath("pipe"), kLimit), std::nullopt);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath(), kLimit), std::nullopt);
  EXPECT_EQ(files.ReadWholeFile(u"\\dev\\zero", kLimit), std::nullopt);
}

TEST_F(FilesTest, AHugeFileIsRefusedWithoutReadingIt) {
  folder.Write("huge", "");
  std::filesystem::resize_file(folder.Path() / "huge", std::uintmax_t{2} * 1024 * 1024 * 1024);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath("huge"), 64 * 1024 * 1024), std::nullopt);
}

TEST_F(FilesTest, AFileWhoseSizeIsNotKnownBeforehandIsReadToItsEnd) {
  const auto status = files.ReadWholeFile(u"\\proc\\self\\status", 100000);
  ASSERT_TRUE(status);
  EXPECT_NE(status->find("Pid:"), std::string::npos);
  EXPECT_EQ(files.ReadWholeFile(u"\\proc\\self\\status", 10), std::nullopt);
}

TEST_F(FilesTest, AFileIsMadeOrReplacedAndNothingIsLeftBesideIt) {
  EXPECT_TRUE(files.WriteWholeFile(folder.TextPath("a"), "first, longer"));
  EXPECT_EQ(folder.Read("a"), "first, longer");
  EXPECT_TRUE(files.WriteWholeFile(folder.TextPath("a"), std::string("\0x", 2)));
  EXPECT_EQ(folder.Read("a"), std::string("\0x", 2));
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesTest, ALinkStaysOneAndPermissionsSurvive) {
  folder.Write("real", "1");
  ASSERT_EQ(::chmod((folder.Path() / "real").c_str(), 0604), 0);
  std::filesystem::create_symlink("real", folder.Path() / "link");
  EXPECT_TRUE(files.WriteWholeFile(folder.TextPath("link"), "2"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "link"));
  EXPECT_EQ(folder.Read("real"), "2");
  struct stat status {};
  ASSERT_EQ(::stat((folder.Path() / "real").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0604U);
}

TEST_F(FilesTest, WhatIsNoRegularFileIsNotReplaced) {
  ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  std::filesystem::create_directory(folder.Path() / "sub");
  EXPECT_FALSE(files.WriteWholeFile(folder.TextPath("pipe"), "x"));
  EXPECT_FALSE(files.WriteWholeFile(folder.TextPath("sub"), "x"));
  EXPECT_FALSE(files.WriteWholeFile(folder.TextPath("missing/x"), "x"));
  EXPECT_FALSE(files.WriteWholeFile(u"", "x"));
  EXPECT_TRUE(std::filesystem::is_fifo(folder.Path() / "pipe"));
  EXPECT_EQ(Entries(), 2);
}

TEST_F(FilesTest, OnAFullDiskAnExistingFileIsAsItWas) {
  folder.Write("a", "before");
  const std::string bytes(100000, 'x');
  const auto write = [&] { return files.WriteWholeFile(folder.TextPath("a"), bytes); };
  EXPECT_EQ(RunWithFullDisk(4096, write), ChildResult::kFalse);
  EXPECT_EQ(folder.Read("a"), "before");
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesTest, WithoutPermissionAnExistingFileIsAsItWas) {
  folder.Write("a", "before");
  ASSERT_EQ(::chmod(folder.Path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod((folder.Path() / "a").c_str(), 0444), 0);
  const auto write = [&] { return files.WriteWholeFile(folder.TextPath("a"), "after"); };
  EXPECT_EQ(RunWithoutRights(write), ChildResult::kFalse);
  EXPECT_EQ(folder.Read("a"), "before");
}

TEST_F(FilesTest, WhereFilesHaveNoPermissionsAnExistingFileIsReplacedAllTheSame) {
  folder.Write("a", "before");
  const auto write = [&] { return files.WriteWholeFile(folder.TextPath("a"), "after"); };
  EXPECT_EQ(RunWithoutFilePermissions(write), ChildResult::kTrue);
  EXPECT_EQ(folder.Read("a"), "after");
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesTest, WhereFilesHaveNoPermissionsAPrivateFileIsNotOpenedToOthers) {
  folder.Write("a", "before");
  ASSERT_EQ(::chmod((folder.Path() / "a").c_str(), 0600), 0);
  const auto write = [&] { return files.WriteWholeFile(folder.TextPath("a"), "after"); };
  EXPECT_EQ(RunWithoutFilePermissions(write), ChildResult::kTrue);
  struct stat status {};
  ASSERT_EQ(::stat((folder.Path() / "a").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(FilesTest, DeletingAFileRemovesItAndNothingElse) {
  folder.Write("a", "1");
  folder.Write("sub/b", "2");
  EXPECT_TRUE(files.DeleteFileW(folder.TextPath("a")));
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "a"));
  EXPECT_FALSE(files.DeleteFileW(folder.TextPath("a"))) << "there is none any more";
  EXPECT_FALSE(files.DeleteFileW(folder.TextPath("sub")));
  EXPECT_FALSE(files.DeleteFileW(u""));
  EXPECT_EQ(folder.Read("sub/b"), "2");
}

TEST_F(FilesTest, MovingGivesAnotherNameAndReplacesTheFileThatBoreIt) {
  folder.Write("a", "new");
  folder.Write("b", "old");
  EXPECT_TRUE(files.MoveFileExW(folder.TextPath("a"), folder.TextPath("b")));
  EXPECT_EQ(folder.Read("b"), "new");
  EXPECT_EQ(Entries(), 1);
  EXPECT_FALSE(files.MoveFileExW(folder.TextPath("a"), folder.TextPath("b")));
  EXPECT_FALSE(files.MoveFileExW(folder.TextPath("b"), folder.TextPath("missing/b")));
  EXPECT_FALSE(files.MoveFileExW(folder.TextPath("b"), u""));
  EXPECT_FALSE(files.MoveFileExW(u"", folder.TextPath("b")));
  EXPECT_EQ(folder.Read("b"), "new");
}

}  // namespace
}  // namespace platform::posix
