// Files and folders as wholes, as every system's adapter must handle them.

#include <gtest/gtest.h>

#include <filesystem>

#include "files_under_test.h"
#include "tests/support/temp_folder.h"

namespace platform {
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
  under_test::Disk disk;
  Files& files = disk.files;
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

TEST_F(FilesTest, ASearchInAnEmptyOrMissingFolderFindsNothing) {
  FoundFile found{u"before"};
  EXPECT_EQ(files.FindFirstFileW(folder.TextPath() + u"\\*.*", found), FindHandle::kNone);
  EXPECT_EQ(files.FindFirstFileW(folder.TextPath() + u"\\missing\\*.*", found), FindHandle::kNone);
  EXPECT_EQ(files.FindFirstFileW(u"", found), FindHandle::kNone);
  EXPECT_FALSE(files.FindNextFileW(FindHandle::kNone, found));
  files.FindClose(FindHandle::kNone);
  EXPECT_EQ(found.name, u"before");
}

TEST_F(FilesTest, ASearchForSomeNamesOnlyFindsNothing) {
  folder.Write("a.ico", "");
  FoundFile found;
  for (const Text pattern : {u"\\*.ico", u"\\a.ico", u"\\?.*", u""})
    EXPECT_EQ(files.FindFirstFileW(folder.TextPath() + pattern, found), FindHandle::kNone);
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

TEST_F(FilesTest, AHugeFileIsRefusedWithoutReadingIt) {
  folder.Write("huge", "");
  std::filesystem::resize_file(folder.Path() / "huge", std::uintmax_t{2} * 1024 * 1024 * 1024);
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath("huge"), 64 * 1024 * 1024), std::nullopt);
}

TEST_F(FilesTest, AFileIsMadeOrReplacedAndNothingIsLeftBesideIt) {
  EXPECT_TRUE(files.WriteWholeFile(folder.TextPath("a"), "first, longer"));
  EXPECT_EQ(folder.Read("a"), "first, longer");
  EXPECT_TRUE(files.WriteWholeFile(folder.TextPath("a"), std::string("\0x", 2)));
  EXPECT_EQ(folder.Read("a"), std::string("\0x", 2));
  EXPECT_EQ(Entries(), 1);
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

TEST_F(FilesTest, ASearchGivesEveryNameWithItsKindInOrder) {
  folder.Write("b.ico", "");
  folder.Write("noext", "");
  folder.Write(".hidden", "");
  folder.Write("K\xC3\xB6rbe/inner", "");
  for (const Text pattern : {u"\\*.*", u"\\*"}) {
    const auto all = List(folder.TextPath() + pattern);
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[0].name, u".hidden");
    EXPECT_EQ(all[1].name, u"Körbe");
    EXPECT_TRUE(all[1].is_directory && !all[1].is_reparse_point);
    EXPECT_EQ(all[2].name, u"b.ico");
    EXPECT_FALSE(all[2].is_directory || all[2].is_reparse_point);
    EXPECT_EQ(all[3].name, u"noext");
  }
}

TEST_F(FilesTest, AFolderIsNeitherReadNorReplaced) {
  std::filesystem::create_directory(folder.Path() / "sub");
  EXPECT_EQ(files.ReadWholeFile(folder.TextPath("sub"), kLimit), std::nullopt);
  EXPECT_FALSE(files.WriteWholeFile(folder.TextPath("sub"), "x"));
  EXPECT_FALSE(files.WriteWholeFile(folder.TextPath("missing/x"), "x"));
  EXPECT_FALSE(files.WriteWholeFile(u"", "x"));
  EXPECT_EQ(Entries(), 1);
}

}  // namespace
}  // namespace platform
