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
  [[nodiscard]] Text In(const Text& path) const { return folder.TextPath("program") + u"\\" + path; }
  /// The path found, from the program folder on.
  std::string Found(const Text& path) {
    const std::string native = paths.ToNativeForReading(In(path));
    return std::filesystem::path(native).lexically_relative(folder.Path() / "program");
  }

  test_support::TempFolder folder;
  PosixNativePaths plain;
  icu::IcuTextConversion conversion;
  ProgramDataPaths paths{plain, conversion, folder.TextPath("program"), {u"RadioIco", u"RadioJPG"}};
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
  folder.Write("program/placeholder", "");
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
  ProgramDataPaths at_root(plain, conversion, u"\\", {u"Proc"});
  EXPECT_EQ(at_root.ToNativeForReading(u"\\Proc\\Self"), "/proc/self");
  EXPECT_EQ(at_root.ToNativeForReading(u"\\\\Proc\\Self"), "/proc/self");
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
