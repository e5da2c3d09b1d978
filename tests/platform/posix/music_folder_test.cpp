#include "platform/posix/music_folder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>

#include "platform/posix/environment.h"
#include "platform/posix/native_paths.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

class MusicFolderTest : public testing::Test {
 protected:
  MusicFolderTest() { variables_.home = folder_.Path(); }
  [[nodiscard]] std::string Folder() const { return MusicFolder(variables_); }
  [[nodiscard]] std::string Home() const { return folder_.Path(); }
  void UserDirs(const std::string& bytes) { folder_.Write(".config/user-dirs.dirs", bytes); }

  test_support::TempFolder folder_;
  MusicVariables variables_;
};

TEST_F(MusicFolderTest, TheVariableComesFirst) {
  variables_.music = "/data/musik";
  UserDirs("XDG_MUSIC_DIR=\"$HOME/Musik\"\n");
  EXPECT_EQ(Folder(), "/data/musik");
}

TEST_F(MusicFolderTest, TheUsersChoiceComesNext) {
  UserDirs("# comment\nXDG_DESKTOP_DIR=\"$HOME/Desk\"\n  XDG_MUSIC_DIR=\"$HOME/Meine Musik\"\n");
  EXPECT_EQ(Folder(), Home() + "/Meine Musik");
  UserDirs("XDG_MUSIC_DIR=\"/srv/m\\\"u\\$ik\"");
  EXPECT_EQ(Folder(), "/srv/m\"u$ik");
}

TEST_F(MusicFolderTest, TheLastAssignmentCounts) {
  UserDirs("XDG_MUSIC_DIR=\"/first\"\nXDG_MUSIC_DIR=\"/last\"\nXDG_VIDEOS_DIR=\"/videos\"\n");
  EXPECT_EQ(Folder(), "/last");
  UserDirs("XDG_MUSIC_DIR=\"/first\"\nXDG_MUSIC_DIR=\"relative\"\n");
  EXPECT_EQ(Folder(), "/first") << "one that names no folder is none";
}

TEST_F(MusicFolderTest, AnAssignmentWithoutQuotesIsNone) {
  for (const char* bytes :
       {"XDG_MUSIC_DIR=/unquoted\n", "XDG_MUSIC_DIR=x/half\"\n", "XDG_MUSIC_DIR=\"/half\n",
        "XDG_MUSIC_DIR='/single'\n", "XDG_MUSIC_DIR=$HOME\"\n"}) {
    UserDirs(bytes);
    EXPECT_EQ(Folder(), Home() + "/Music") << bytes;
  }
}

TEST_F(MusicFolderTest, TheConfigurationFolderMayBeElsewhere) {
  variables_.config_home = folder_.Path() / "conf";
  folder_.Write("conf/user-dirs.dirs", "XDG_MUSIC_DIR=\"$HOME/M\xC3\xBCsik\"\n");
  EXPECT_EQ(Folder(), Home() + "/M\xC3\xBCsik");
}

TEST_F(MusicFolderTest, OtherwiseItIsMusicInTheHomeFolder) {
  EXPECT_EQ(Folder(), Home() + "/Music");
  variables_.music = "relative";
  for (const char* bytes : {"XDG_MUSIC_DIR=\"relative\"\n", "XDG_MUSIC_DIR=/unquoted\n",
                            "XDG_MUSIC_DIR=\"/open\n", "XDG_MUSIC_DIR=", "\xFF\xFE\n\n\0\n"}) {
    UserDirs(bytes);
    EXPECT_EQ(Folder(), Home() + "/Music") << bytes;
  }
}

TEST_F(MusicFolderTest, AHugeListOfTheUsersFoldersIsNotRead) {
  UserDirs("XDG_MUSIC_DIR=\"/music\"\n" + std::string(65536, '#'));
  EXPECT_EQ(Folder(), Home() + "/Music");
}

TEST_F(MusicFolderTest, WithoutAHomeItIsTheProgramsFolder) {
  EXPECT_EQ(MusicFolder({}), "");
  EXPECT_EQ(MusicFolder({"", "", "relative"}), "");
  ::unsetenv("XDG_MUSIC_DIR");
  ::unsetenv("XDG_CONFIG_HOME");
  ::unsetenv("HOME");
  PosixNativePaths paths;
  PosixEnvironment environment(paths);
  EXPECT_EQ(environment.MusicFolder(), environment.ProgramFolder());
  ::setenv("HOME", Home().c_str(), 1);
  EXPECT_EQ(environment.MusicFolder(), paths.FromNative(Home() + "/Music"));
  ::setenv("XDG_CONFIG_HOME", (Home() + "/conf").c_str(), 1);
  folder_.Write("conf/user-dirs.dirs", "XDG_MUSIC_DIR=\"/chosen\"");
  EXPECT_EQ(environment.MusicFolder(), u"\\chosen");
  ::setenv("XDG_MUSIC_DIR", "/first", 1);
  EXPECT_EQ(environment.MusicFolder(), u"\\first");
  ::unsetenv("XDG_MUSIC_DIR");
  ::unsetenv("XDG_CONFIG_HOME");
}

}  // namespace
}  // namespace platform::posix
