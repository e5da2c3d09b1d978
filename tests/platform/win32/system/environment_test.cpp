#include "platform/win32/system/environment.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/temp_folder.h"

namespace platform::win32 {
namespace {

TEST(Win32EnvironmentTest, AVariableGivesItsValueAndAMissingOneNothing) {
  Win32Environment environment;
  const std::wstring value = L"Größe" + std::wstring(5000, L'x');
  ::SetEnvironmentVariableW(L"FUNKHAUS_TEST", value.c_str());
  EXPECT_EQ(environment.GetEnvironmentVariableW(u"FUNKHAUS_TEST"), u"Größe" + Text(5000, u'x'));
  EXPECT_EQ(environment.GetEnvironmentVariableW(Text(u"FUNKHAUS_TEST\0x", 15)), u"") << "no such name";
  ::SetEnvironmentVariableW(L"FUNKHAUS_TEST", nullptr);
  EXPECT_EQ(environment.GetEnvironmentVariableW(u"FUNKHAUS_TEST"), u"");
  EXPECT_EQ(environment.GetEnvironmentVariableW(u""), u"");
}

TEST(Win32EnvironmentTest, AppDataIsHonouredWhenItIsSetAndKnownToTheSystemOtherwise) {
  Win32Environment environment;
  const Text usual = environment.GetEnvironmentVariableW(u"APPDATA");
  ::SetEnvironmentVariableW(L"APPDATA", L"D:\\Eigenes");
  EXPECT_EQ(environment.GetEnvironmentVariableW(u"APPDATA"), u"D:\\Eigenes");
  ::SetEnvironmentVariableW(L"APPDATA", nullptr);
  EXPECT_EQ(environment.GetEnvironmentVariableW(u"APPDATA"), usual);
  EXPECT_TRUE(usual.find(u":\\") != Text::npos);
}

TEST(Win32EnvironmentTest, TheProgramFolderHoldsTheProgramAndHasNoSeparatorAtItsEnd) {
  Win32Environment environment;
  const Text folder = environment.ProgramFolder();
  EXPECT_FALSE(folder.ends_with(u'\\'));
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(folder) / "test_win32_system.exe"));
}

TEST(Win32EnvironmentTest, TheMusicFolderIsAFullPath) {
  EXPECT_EQ(Win32Environment().MusicFolder().substr(1, 2), u":\\");
}

TEST(Win32EnvironmentTest, AStateFileIsTheSameByWhateverNameItsFolderIsGiven) {
  const test_support::TempFolder folder;
  folder.Write("Sub/x", "");
  Win32Environment environment;
  const Text file = environment.StateFile(folder.TextPath("Sub") + u"\\Funkhaus.ini", u".rows");
  EXPECT_TRUE(file.ends_with(u".rows"));
  EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(file).parent_path()));
  EXPECT_EQ(environment.StateFile(folder.TextPath("Sub") + u"\\..\\sub\\funkhaus.ini", u".rows"), file);
  EXPECT_NE(environment.StateFile(folder.TextPath() + u"\\Funkhaus.ini", u".rows"), file);
  EXPECT_NE(environment.StateFile(folder.TextPath("Sub") + u"\\Opt.ini", u".rows"), file);
}

TEST(Win32EnvironmentTest, TheProcessHasItsNumber) {
  EXPECT_EQ(Win32Environment().GetCurrentProcessId(), ::GetCurrentProcessId());
}

}  // namespace
}  // namespace platform::win32
