#include "platform/posix/environment.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/posix/native_names.h"
#include "platform/posix/native_paths.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

class EnvironmentTest : public testing::Test {
 protected:
  EnvironmentTest() {
    ::unsetenv("APPDATA");
    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("XDG_STATE_HOME");
    ::setenv("HOME", folder.Path().c_str(), 1);
  }

  test_support::TempFolder folder;
  PosixNativePaths paths;
  PosixEnvironment environment{paths};
};

TEST_F(EnvironmentTest, AVariableGivesItsValueAndAMissingOneNothing) {
  ::setenv("FUNKHAUS_TEST",
           "Gr\xC3\xB6\xC3\x9F"
           "e",
           1);
  EXPECT_EQ(environment.GetEnvironmentVariableW(u"FUNKHAUS_TEST"), u"Größe");
  ::unsetenv("FUNKHAUS_TEST");
  EXPECT_EQ(environment.GetEnvironmentVariableW(u"FUNKHAUS_TEST"), u"");
  EXPECT_EQ(environment.GetEnvironmentVariableW(u""), u"");
}

TEST_F(EnvironmentTest, AppDataIsHonouredWhenItIsSet) {
  ::setenv("APPDATA", "/some/place", 1);
  ::setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
  EXPECT_EQ(environment.GetEnvironmentVariableW(u"APPDATA"), u"\\some\\place");
}

TEST_F(EnvironmentTest, OtherwiseXdgConfigHomeTakesItsPlaceAndIsMade) {
  const std::string wanted = folder.Path() / "x/y";
  ::setenv("XDG_CONFIG_HOME", wanted.c_str(), 1);
  EXPECT_EQ(environment.GetEnvironmentVariableW(u"APPDATA"), paths.FromNative(wanted));
  struct stat status {};
  ASSERT_EQ(::stat(wanted.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(EnvironmentTest, OtherwiseDotConfigInTheHomeFolderTakesItsPlaceAndIsMade) {
  EXPECT_EQ(environment.GetEnvironmentVariableW(u"APPDATA"), paths.FromNative(folder.Path() / ".config"));
  EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / ".config"));
}

TEST_F(EnvironmentTest, TheConfigurationFolderFollowsTheVariablesInTheirOrder) {
  EXPECT_EQ(ConfigurationFolder({"/x", "/h", "/a"}), "/x");
  EXPECT_EQ(ConfigurationFolder({"relative", "/h", "/a"}), "/h/.config");
  EXPECT_EQ(ConfigurationFolder({"", "/h", "/a"}), "/h/.config");
  EXPECT_EQ(ConfigurationFolder({"", "", "/a"}), "/a/.config");
  EXPECT_EQ(ConfigurationFolder({"", "/", ""}), "/.config");
}

TEST_F(EnvironmentTest, TheStateFolderFollowsTheVariablesInTheirOrder) {
  EXPECT_EQ(StateFolder({"/x", "/h", "/a"}), "/x/funkhausplayer");
  EXPECT_EQ(StateFolder({"relative", "/h", "/a"}), "/h/.local/state/funkhausplayer");
  EXPECT_EQ(StateFolder({"", "", "/a"}), "/a/.local/state/funkhausplayer");
  EXPECT_EQ(StateFolder({"", "/", ""}), "/.local/state/funkhausplayer");
}

TEST_F(EnvironmentTest, TheDataFolderFollowsTheVariablesInTheirOrder) {
  EXPECT_EQ(DataFolder({"/x", "/h", "/a"}), "/x/funkhausplayer");
  EXPECT_EQ(DataFolder({"relative", "/h", "/a"}), "/h/.local/share/funkhausplayer");
  EXPECT_EQ(DataFolder({"", "", "/a"}), "/a/.local/share/funkhausplayer");
  EXPECT_EQ(DataFolder({"", "/", ""}), "/.local/share/funkhausplayer");
}

TEST_F(EnvironmentTest, TheUsersDataFolderIsNamedAndNotMade) {
  EXPECT_EQ(UsersDataFolder(), folder.Path() / ".local/share/funkhausplayer");
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / ".local"));
  ::setenv("XDG_DATA_HOME", "/some/place", 1);
  EXPECT_EQ(UsersDataFolder(), "/some/place/funkhausplayer");
}

TEST_F(EnvironmentTest, AStateFileLiesInTheStateFolderWhichIsMadeForItsUserOnly) {
  const std::string home = paths.ToNative(environment.StateFile(u"\\a\\b.ini", u".lock"));
  EXPECT_EQ(FolderOf(home), folder.Path() / ".local/state/funkhausplayer");
  EXPECT_TRUE(home.ends_with(".lock")) << home;
  struct stat status {};
  ASSERT_EQ(::stat(FolderOf(home).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);

  const std::string wanted = folder.Path() / "x/y";
  ::setenv("XDG_STATE_HOME", wanted.c_str(), 1);
  EXPECT_EQ(FolderOf(paths.ToNative(environment.StateFile(u"\\a\\b.ini", u".lock"))),
            wanted + "/funkhausplayer");
}

TEST_F(EnvironmentTest, AStateFileBelongsToOneFileUnderAllNamesOfItsFolder) {
  std::filesystem::create_directories(folder.Path() / "one");
  std::filesystem::create_directories(folder.Path() / "two");
  std::filesystem::create_directory_symlink("one", folder.Path() / "link");
  const auto of = [this](const std::string& path) {
    return environment.StateFile(paths.FromNative(folder.Path() / path), u".x");
  };
  EXPECT_EQ(of("one/a.ini"), of("one/a.ini"));
  EXPECT_EQ(of("one/a.ini"), of("link/a.ini"));
  EXPECT_EQ(of("one/a.ini"), of("two/../one//a.ini"));
  EXPECT_NE(of("one/a.ini"), of("two/a.ini"));
  EXPECT_NE(of("one/a.ini"), of("one/b.ini"));
  EXPECT_NE(of("missing/a.ini"), of("missing/b.ini"));
}

TEST_F(EnvironmentTest, AStateFileHasTheSameNameInEveryRun) {
  const Text name = environment.StateFile(u"\\missing\\a.ini", u".x");
  EXPECT_EQ(name.substr(name.rfind(u'\\') + 1), u"8aa487cc6e7ee236.x");
}

TEST_F(EnvironmentTest, TheProgramFolderIsThatOfTheRunningFile) {
  const auto program = std::filesystem::canonical("/proc/self/exe");
  EXPECT_EQ(environment.ProgramFolder(), paths.FromNative(program.parent_path()));
}

TEST_F(EnvironmentTest, TheProcessHasItsNumber) {
  EXPECT_EQ(environment.GetCurrentProcessId(), static_cast<std::uint32_t>(::getpid()));
}

}  // namespace
}  // namespace platform::posix
