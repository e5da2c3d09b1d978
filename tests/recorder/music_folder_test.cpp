#include "recorder/music_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/posix/native_paths.h"
#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"

namespace recorder {
namespace {

using platform::Text;
using testing::ElementsAre;

class MusicFolderOf : public testing::Test {
 protected:
  MusicFolderOf() { environment_.variables[u"HOME"] = u"\\home\\u"; }
  Text Folder() { return MusicFolder(environment_, files_, paths_); }
  void UserDirs(const std::string& bytes) { files_.files[u"\\home\\u\\.config\\user-dirs.dirs"] = bytes; }

  test_support::FakeEnvironment environment_;
  test_support::MemoryFiles files_;
  platform::posix::PosixNativePaths paths_;
};

TEST_F(MusicFolderOf, TheVariableComesFirst) {
  environment_.variables[u"XDG_MUSIC_DIR"] = u"\\data\\musik";
  UserDirs("XDG_MUSIC_DIR=\"$HOME/Musik\"\n");
  EXPECT_EQ(Folder(), u"\\data\\musik\\Funkhausplayer");
}

TEST_F(MusicFolderOf, TheUsersChoiceComesNext) {
  UserDirs("# comment\nXDG_DESKTOP_DIR=\"$HOME/Desk\"\n  XDG_MUSIC_DIR=\"$HOME/Meine Musik\"\n");
  EXPECT_EQ(Folder(), u"\\home\\u\\Meine Musik\\Funkhausplayer");
  UserDirs("XDG_MUSIC_DIR=\"/srv/m\\\"u\\$ik\"");
  EXPECT_EQ(Folder(), u"\\srv\\m\"u$ik\\Funkhausplayer");
}

TEST_F(MusicFolderOf, TheLastAssignmentCounts) {
  UserDirs("XDG_MUSIC_DIR=\"/first\"\nXDG_MUSIC_DIR=\"/last\"\nXDG_VIDEOS_DIR=\"/videos\"\n");
  EXPECT_EQ(Folder(), u"\\last\\Funkhausplayer");
  UserDirs("XDG_MUSIC_DIR=\"/first\"\nXDG_MUSIC_DIR=\"relative\"\n");
  EXPECT_EQ(Folder(), u"\\first\\Funkhausplayer") << "one that names no folder is none";
}

TEST_F(MusicFolderOf, AnAssignmentWithoutQuotesIsNone) {
  for (const char* bytes :
       {"XDG_MUSIC_DIR=/unquoted\n", "XDG_MUSIC_DIR=x/half\"\n", "XDG_MUSIC_DIR=\"/half\n",
        "XDG_MUSIC_DIR='/single'\n", "XDG_MUSIC_DIR=$HOME\"\n"}) {
    UserDirs(bytes);
    EXPECT_EQ(Folder(), u"\\home\\u\\Music\\Funkhausplayer") << bytes;
  }
}

TEST_F(MusicFolderOf, TheConfigurationFolderMayBeElsewhere) {
  environment_.variables[u"XDG_CONFIG_HOME"] = u"\\conf";
  files_.files[u"\\conf\\user-dirs.dirs"] = "XDG_MUSIC_DIR=\"$HOME/M\xC3\xBCsik\"\n";
  EXPECT_EQ(Folder(), u"\\home\\u\\M\u00FCsik\\Funkhausplayer");
}

TEST_F(MusicFolderOf, OtherwiseItIsMusicInTheHomeFolder) {
  EXPECT_EQ(Folder(), u"\\home\\u\\Music\\Funkhausplayer");
  environment_.variables[u"XDG_MUSIC_DIR"] = u"relative";
  for (const char* bytes : {"XDG_MUSIC_DIR=\"relative\"\n", "XDG_MUSIC_DIR=/unquoted\n",
                            "XDG_MUSIC_DIR=\"/open\n", "XDG_MUSIC_DIR=", "\xFF\xFE\n\n\0\n"}) {
    UserDirs(bytes);
    EXPECT_EQ(Folder(), u"\\home\\u\\Music\\Funkhausplayer") << bytes;
  }
}

TEST_F(MusicFolderOf, WithoutAHomeItIsTheProgramsFolder) {
  environment_.variables.clear();
  EXPECT_EQ(Folder(), u"C:\\Programme\\Funkhaus\\Funkhausplayer");
}

TEST_F(MusicFolderOf, EveryMissingLevelIsMade) {
  EXPECT_TRUE(MakeFolder(files_, u"\\a\\b\\c"));
  EXPECT_THAT(files_.created_folders, ElementsAre(u"\\a", u"\\a\\b", u"\\a\\b\\c"));
  EXPECT_TRUE(MakeFolder(files_, u"\\a\\b\\c"));
  EXPECT_EQ(files_.created_folders.size(), 3U);
  files_.can_create_folders = false;
  EXPECT_FALSE(MakeFolder(files_, u"\\d"));
}

TEST_F(MusicFolderOf, TheAddressNamesTheFolder) {
  EXPECT_EQ(FolderAddress(paths_, u"\\home\\u\\Meine M\u00FCsik"), u"file:///home/u/Meine%20M%C3%BCsik");
}

}  // namespace
}  // namespace recorder
