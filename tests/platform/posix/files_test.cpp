// What files are on this system beyond the contract: links, pipes, rights, a full disk.

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

class FilesOnPosix : public testing::Test {
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

TEST_F(FilesOnPosix, ASearchGivesEveryNameWithItsKind) {
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

TEST_F(FilesOnPosix, ANameThatIsNoUtf8IsFoundAndCanBeRead) {
  folder.Write("x\xFF\\y", "content");
  const auto all = List(folder.TextPath() + u"\\*.*");
  ASSERT_EQ(all.size(), 1U);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath() + u"\\" + all[0].name, kLimit), "content");
}

TEST_F(FilesOnPosix, WhatIsNoRegularFileIsNotRead) {
  ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath("pipe"), kLimit), std::nullopt);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath(), kLimit), std::nullopt);
  EXPECT_EQ(files.ReadWholeFile(u"\\dev\\zero", kLimit), std::nullopt);
}

TEST_F(FilesOnPosix, AFileWhoseSizeIsNotKnownBeforehandIsReadToItsEnd) {
  const auto status = files.ReadWholeFile(u"\\proc\\self\\status", 100000);
  ASSERT_TRUE(status);
  EXPECT_NE(status->find("Pid:"), std::string::npos);
  EXPECT_EQ(files.ReadWholeFile(u"\\proc\\self\\status", 10), std::nullopt);
}

TEST_F(FilesOnPosix, ALinkStaysOneAndPermissionsSurvive) {
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

TEST_F(FilesOnPosix, WhatIsNoRegularFileIsNotReplaced) {
  ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  std::filesystem::create_directory(folder.Path() / "sub");
  EXPECT_FALSE(files.WriteWholeFile(folder.TextPath("pipe"), "x"));
  EXPECT_FALSE(files.WriteWholeFile(folder.TextPath("sub"), "x"));
  EXPECT_FALSE(files.WriteWholeFile(folder.TextPath("missing/x"), "x"));
  EXPECT_FALSE(files.WriteWholeFile(u"", "x"));
  EXPECT_TRUE(std::filesystem::is_fifo(folder.Path() / "pipe"));
  EXPECT_EQ(Entries(), 2);
}

TEST_F(FilesOnPosix, OnAFullDiskAnExistingFileIsAsItWas) {
  folder.Write("a", "before");
  const std::string bytes(100000, 'x');
  const auto write = [&] { return files.WriteWholeFile(folder.TextPath("a"), bytes); };
  EXPECT_EQ(RunWithFullDisk(4096, write), ChildResult::kFalse);
  EXPECT_EQ(folder.Read("a"), "before");
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesOnPosix, WithoutPermissionAnExistingFileIsAsItWas) {
  folder.Write("a", "before");
  ASSERT_EQ(::chmod(folder.Path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod((folder.Path() / "a").c_str(), 0444), 0);
  const auto write = [&] { return files.WriteWholeFile(folder.TextPath("a"), "after"); };
  EXPECT_EQ(RunWithoutRights(write), ChildResult::kFalse);
  EXPECT_EQ(folder.Read("a"), "before");
}

TEST_F(FilesOnPosix, WhereFilesHaveNoPermissionsAnExistingFileIsReplacedAllTheSame) {
  folder.Write("a", "before");
  const auto write = [&] { return files.WriteWholeFile(folder.TextPath("a"), "after"); };
  EXPECT_EQ(RunWithoutFilePermissions(write), ChildResult::kTrue);
  EXPECT_EQ(folder.Read("a"), "after");
  EXPECT_EQ(Entries(), 1);
}

TEST_F(FilesOnPosix, WhereFilesHaveNoPermissionsAPrivateFileIsNotOpenedToOthers) {
  folder.Write("a", "before");
  ASSERT_EQ(::chmod((folder.Path() / "a").c_str(), 0600), 0);
  const auto write = [&] { return files.WriteWholeFile(folder.TextPath("a"), "after"); };
  EXPECT_EQ(RunWithoutFilePermissions(write), ChildResult::kTrue);
  struct stat status {};
  ASSERT_EQ(::stat((folder.Path() / "a").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

}  // namespace
}  // namespace platform::posix
