#include "platform/posix/program_data_paths.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/icu/text_conversion.h"
#include "platform/ini/private_profile.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/profile_files.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

constexpr std::size_t kMostBytes = 1000;

class ProgramDataPathsTest : public testing::Test {
 protected:
  /// The names that a search through a folder finds, in its order.
  std::vector<Text> Listed(const Text& data_folder) {
    PosixFiles files(paths);
    std::vector<Text> names;
    FoundFile found;
    const FindHandle search = files.FindFirstFileW(In(data_folder) + u"\\*.*", found);
    if (search == FindHandle::kNone) return names;
    do {
      names.push_back(found.name);
    } while (files.FindNextFileW(search, found));
    files.FindClose(search);
    return names;
  }
  [[nodiscard]] Text In(const Text& path) const { return folder.TextPath("program") + u"\\" + path; }
  /// The path found, from the program folder on.
  std::string Found(const Text& path) {
    const std::string native = paths.ToNativeForReading(In(path));
    return std::filesystem::path(native).lexically_relative(folder.Path() / "program");
  }

  test_support::TempFolder folder;
  const std::string users = folder.Path() / "home/data";
  PosixNativePaths plain;
  icu::IcuTextConversion conversion;
  ProgramDataPaths paths{plain, conversion, {users, folder.TextPath("program")}, {u"RadioIco", u"RadioJPG"}};
};

TEST_F(ProgramDataPathsTest, FolderAndFileAreFoundWhateverTheirLetterCase) {
  folder.Write("program/RADIOico/Radio Köln.ICO", "");
  folder.Write("program/RadioJPG/KÖLN.jpg", "");
  EXPECT_EQ(Found(u"RadioIco\\radio köln.ico"), "RADIOico/Radio Köln.ICO");
  EXPECT_EQ(Found(u"RadioJPG\\Köln.jpg"), "RadioJPG/KÖLN.jpg");
  EXPECT_EQ(Found(u"RadioIco"), "RADIOico");
  EXPECT_EQ(Found(u"RadioIco\\"), "RADIOico/");
}

TEST_F(ProgramDataPathsTest, NameAsItIsWrittenComesFirst) {
  folder.Write("program/RadioJPG/A.jpg", "");
  folder.Write("program/RadioJPG/a.jpg", "");
  folder.Write("program/RadioJPG/a.JPG", "");
  folder.Write("program/RADIOJPG/b.jpg", "");
  folder.Write("program/RadioJPG/B.jpg", "");
  EXPECT_EQ(Found(u"RadioJPG\\a.jpg"), "RadioJPG/a.jpg");
  EXPECT_EQ(Found(u"RadioJPG\\b.jpg"), "RadioJPG/B.jpg") << "folders count before the files in them";
}

TEST_F(ProgramDataPathsTest, OfSeveralThatDifferByCaseTheFirstByItsBytesIsFound) {
  for (const char* name : {"c.jpG", "C.jpg", "c.Jpg", "C.JPG", "c.jPg"}) {
    folder.Write("program/RadioJPG/" + std::string(name), "");
  }
  EXPECT_EQ(Found(u"RadioJPG\\c.jpg"), "RadioJPG/C.JPG");
}

TEST_F(ProgramDataPathsTest, WhatIsNotThereKeepsItsName) {
  EXPECT_EQ(Found(u"RadioJPG\\a.jpg"), "RadioJPG/a.jpg");
  folder.Write("program/radiojpg/ab.jpg", "");
  EXPECT_EQ(Found(u"RadioJPG\\a.jpg"), "RadioJPG/a.jpg");
  EXPECT_EQ(paths.ToNativeForReading(u""), "");
  EXPECT_EQ(paths.ToNativeForReading(In(Text(u"RadioJPG\\ab.jpg\0x", 17))),
            plain.ToNative(In(Text(u"RadioJPG\\ab.jpg\0x", 17))));
}

TEST_F(ProgramDataPathsTest, LinksAreFollowedAndThoseThatLeadNowherePassedOver) {
  folder.Write("elsewhere/Bild.JPG", "");
  folder.Write("program/beside.txt", "");
  std::filesystem::create_symlink("missing", folder.Path() / "program/RADIOJPG");
  std::filesystem::create_symlink("../elsewhere", folder.Path() / "program/radiojpg");
  EXPECT_EQ(Found(u"RadioJPG\\bild.jpg"), "radiojpg/Bild.JPG");
  std::filesystem::create_symlink("missing", folder.Path() / "program/RadioJPG");
  EXPECT_EQ(Found(u"RadioJPG\\bild.jpg"), "radiojpg/Bild.JPG");
}

TEST_F(ProgramDataPathsTest, FileInAFoldersPlaceIsPassedOver) {
  folder.Write("program/RADIOICO", "");
  folder.Write("program/radioico/a.ico", "");
  EXPECT_EQ(Found(u"RadioIco\\a.ico"), "radioico/a.ico");
  EXPECT_EQ(Found(u"RadioIco\\"), "radioico/");
}

TEST_F(ProgramDataPathsTest, NothingElseIsTakenForAnotherName) {
  folder.Write("program/FUNKHAUS.INI", "");
  folder.Write("program/OTHER/a.txt", "");
  folder.Write("OTHER.txt", "");
  folder.Write("programX/RADIOICO/a.ico", "");
  EXPECT_EQ(Found(u"Funkhaus.ini"), "Funkhaus.ini");
  EXPECT_EQ(Found(u"Other\\A.txt"), "Other/A.txt");
  folder.Write("program/RADIOICO/a.ico", "");
  EXPECT_EQ(paths.ToNativeForReading(In(u"RadioIco\\..\\..\\other.txt")),
            plain.ToNative(In(u"RadioIco\\..\\..\\other.txt")));
  EXPECT_EQ(paths.ToNativeForReading(folder.TextPath("programX") + u"\\RadioIco\\a.ico"),
            plain.ToNative(folder.TextPath("programX") + u"\\RadioIco\\a.ico"));
}

TEST_F(ProgramDataPathsTest, NamesToWriteStayAsTheyAre) {
  folder.Write("program/RADIOICO/A.ico", "");
  EXPECT_EQ(paths.ToNative(In(u"RadioIco\\a.ico")), plain.ToNative(In(u"RadioIco\\a.ico")));
  EXPECT_EQ(paths.FromNative("a/b"), u"a\\b");
}

TEST_F(ProgramDataPathsTest, NamesThatAreNoUtf8AreFoundToo) {
  folder.Write("program/RADIOJPG/x\xFF.jpg", "");
  EXPECT_EQ(Found(u"RadioJPG\\" + plain.FromNative("X\xFF.JPG")), "RADIOJPG/x\xFF.jpg");
}

TEST_F(ProgramDataPathsTest, RootFolderServesAsProgramFolder) {
  ProgramDataPaths at_root(plain, conversion, {"", u"\\"}, {u"Proc"});
  EXPECT_EQ(at_root.ToNativeForReading(u"\\Proc\\Self"), "/proc/self");
  EXPECT_EQ(at_root.ToNativeForReading(u"\\\\Proc\\Self"), "/proc/self");
}

TEST_F(ProgramDataPathsTest, WhatIsInTheUsersFolderWins) {
  folder.Write("program/RadioJPG/a.jpg", "");
  EXPECT_EQ(Found(u"RadioJPG\\a.jpg"), "RadioJPG/a.jpg") << "there is no folder of the user's yet";
  folder.Write("home/data/RadioJPG/a.jpg", "");
  EXPECT_EQ(Found(u"RadioJPG\\a.jpg"), "../home/data/RadioJPG/a.jpg");
  EXPECT_EQ(Found(u"RadioJPG"), "../home/data/RadioJPG");
}

TEST_F(ProgramDataPathsTest, LetterCaseDoesNotCountInTheUsersFolderEither) {
  folder.Write("program/RadioJPG/Köln.jpg", "");
  folder.Write("home/data/RADIOjpg/KÖLN.JPG", "");
  EXPECT_EQ(Found(u"RadioJPG\\Köln.jpg"), "../home/data/RADIOjpg/KÖLN.JPG") << "it wins over the exact name";
}

TEST_F(ProgramDataPathsTest, WhatTheUsersFolderLacksIsFoundBesideTheProgram) {
  folder.Write("home/data/RadioJPG/a.jpg", "");
  folder.Write("program/radiojpg/B.jpg", "");
  EXPECT_EQ(Found(u"RadioJPG\\b.jpg"), "radiojpg/B.jpg");
  EXPECT_EQ(Found(u"RadioJPG\\c.jpg"), "RadioJPG/c.jpg");
  std::filesystem::create_symlink("missing", folder.Path() / "home/data/RadioJPG/b.jpg");
  EXPECT_EQ(Found(u"RadioJPG\\b.jpg"), "radiojpg/B.jpg");
}

TEST_F(ProgramDataPathsTest, OnlyTheFoldersOfDataAreLookedForInTheUsersFolder) {
  folder.Write("home/data/Funkhaus.ini", "");
  folder.Write("home/data/Other/a.txt", "");
  folder.Write("home/b.jpg", "");
  EXPECT_EQ(Found(u"Funkhaus.ini"), "Funkhaus.ini");
  EXPECT_EQ(Found(u"Other\\a.txt"), "Other/a.txt");
  EXPECT_EQ(Found(u"RadioJPG\\..\\..\\b.jpg"), "RadioJPG/../../b.jpg");
}

TEST_F(ProgramDataPathsTest, AListingContainsBothFoldersAndOfOneNameTheUsers) {
  folder.Write("program/RadioIco/b.ico", "");
  folder.Write("program/RadioIco/C.ICO", "");
  EXPECT_EQ(Listed(u"RadioIco"), (std::vector<Text>{u"C.ICO", u"b.ico"}))
      << "there is no folder of the user's yet";
  folder.Write("home/data/radioico/a.ico", "");
  folder.Write("home/data/radioico/c.ico", "");
  EXPECT_EQ(Listed(u"RadioIco"), (std::vector<Text>{u"a.ico", u"b.ico", u"c.ico"}));
  EXPECT_EQ(Listed(u"RadioJPG"), std::vector<Text>());
  std::filesystem::remove_all(folder.Path() / "program");
  EXPECT_EQ(Listed(u"RadioIco"), (std::vector<Text>{u"a.ico", u"c.ico"}));
}

TEST_F(ProgramDataPathsTest, AListingPassesOverLinksOfTheUsersThatLeadNowhere) {
  folder.Write("program/RadioIco/A.ico", "");
  folder.Write("home/data/RadioIco/b.ico", "");
  std::filesystem::create_symlink("missing", folder.Path() / "home/data/RadioIco/a.ico");
  EXPECT_EQ(Listed(u"RadioIco"), (std::vector<Text>{u"A.ico", u"b.ico"}));
}

TEST_F(ProgramDataPathsTest, FilesLooksListsAndReadsByThem) {
  folder.Write("program/RADIOICO/A.ICO", "icon");
  PosixFiles files(paths);
  EXPECT_TRUE(files.PathFileExistsW(In(u"RadioIco\\a.ico")));
  EXPECT_EQ(files.ReadWholeFile(In(u"RadioIco\\a.ico"), kMostBytes), "icon");
  FoundFile found;
  const FindHandle search = files.FindFirstFileW(In(u"RadioIco\\*.*"), found);
  ASSERT_NE(search, FindHandle::kNone);
  EXPECT_EQ(found.name, u"A.ICO");
  files.FindClose(search);
}

TEST_F(ProgramDataPathsTest, FilesAreWrittenUnderTheNameThatIsGiven) {
  folder.Write("program/RadioIco/A.ICO", "icon");
  PosixFiles files(paths);
  EXPECT_TRUE(files.WriteWholeFile(In(u"RadioIco\\a.ico"), "other"));
  EXPECT_EQ(folder.Read("program/RadioIco/A.ICO"), "icon");
  EXPECT_EQ(folder.Read("program/RadioIco/a.ico"), "other");
  EXPECT_FALSE(files.CreateDirectoryW(In(u"radioico\\a.ico")));
}

TEST_F(ProgramDataPathsTest, IniFilesAreReadByThemAndWrittenUnderTheNameThatIsGiven) {
  folder.Write("program/RadioIco/A.LNG", "[Common]\r\nTitel=Title\r\n");
  PosixProfileFiles disk;
  ini::IniPrivateProfile profile(paths, disk, conversion);
  std::vector<char16_t> buffer(10);
  EXPECT_EQ(profile.GetPrivateProfileStringW(u"Common", u"Titel", u"", buffer, In(u"RadioIco\\a.lng")), 5U);
  std::vector<char> names(10);
  EXPECT_EQ(profile.GetPrivateProfileSectionNamesA(names, In(u"RadioIco\\a.lng")), 7U);
  EXPECT_TRUE(profile.WritePrivateProfileStringW(u"Common", u"Titel", u"x", In(u"RadioIco\\a.lng")));
  EXPECT_EQ(folder.Read("program/RadioIco/A.LNG"), "[Common]\r\nTitel=Title\r\n");
  EXPECT_EQ(folder.Read("program/RadioIco/a.lng"), "[Common]\r\nTitel=x\r\n");
}

}  // namespace
}  // namespace platform::posix
