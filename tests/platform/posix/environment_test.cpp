#include "platform/posix/environment.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/posix/native_paths.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

class EnvironmentTest : public testing::Test {
 protected:
  EnvironmentTest() {
    ::unsetenv("APPDATA");
    ::unsetenv("XDG_CONFIG_HOME");
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

TEST_F(EnvironmentTest, TheProgramFolderIsThatOfTheRunningFile) {
  const auto program = std::filesystem::canonical("/proc/self/exe");
  EXPECT_EQ(environment.ProgramFolder(), paths.FromNative(program.parent_path()));
}

TEST_F(EnvironmentTest, TheProcessHasItsNumber) {
  EXPECT_EQ(environment.GetCurrentProcessId(), static_cast<std::uint32_t>(::getpid()));
}

}  // namespace
}  // namespace platform::posix
