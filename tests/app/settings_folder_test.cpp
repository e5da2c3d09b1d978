#include "app/settings/settings_folder.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/recording_profile.h"

namespace app {
namespace {

const Text kHome = u"C:\\Users\\x\\AppData\\Ordnerzentrale\\";
const Text kHomeOpt = kHome + u"Opt.ini";

class SettingsFolderTest : public testing::Test {
 protected:
  SettingsFolderTest() {
    environment_.variables[u"APPDATA"] = u"C:\\Users\\x\\AppData";
    files_.folders = {kHome};
    files_.files[kHomeOpt] = "";
  }

  void MoveTo(const Text& folder, const Text& flag = u"1") {
    profile_.values[{kHomeOpt, u"Pfad3", u"IsUserIniChange"}] = flag;
    profile_.values[{kHomeOpt, u"Pfad3", u"UserIniPfad"}] = folder;
  }
  void Choose(Layout layout = Layout::kUserFolder) {
    ChooseSettingsFolder(settings_, ini_, files_, environment_, layout);
  }

  Settings settings_;
  test_support::RecordingProfile profile_;
  test_support::MemoryFiles files_;
  test_support::FakeEnvironment environment_;
  IniProcedures ini_{settings_, profile_, files_, environment_};
};

TEST_F(SettingsFolderTest, IsTheFamilyFolderUnlessTheUserHasMovedIt) {
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, kHome);
  EXPECT_EQ(settings_.StationFileName, u"Funkhaus.ini");
  EXPECT_FALSE(settings_.UseProgramFolder);
  EXPECT_TRUE(files_.created_folders.empty());
  ASSERT_EQ(profile_.reads.size(), 1U);
  EXPECT_EQ(profile_.reads[0].path, kHomeOpt);
  EXPECT_EQ(profile_.reads[0].default_value, u"0");
}

TEST_F(SettingsFolderTest, AnAppDataThatEndsWithABackslashGetsNoSecondOne) {
  environment_.variables[u"APPDATA"] = u"C:\\Users\\x\\AppData\\";
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, kHome);
}

TEST_F(SettingsFolderTest, AMovedFolderThatExistsHoldsBothFiles) {
  files_.folders.insert(u"D:\\Cfg\\");
  MoveTo(u"D:\\Cfg\\");
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, u"D:\\Cfg\\");
  (void)ini_.ReadIni(u"Pfad3", u"FunkhausFavorit", u"0", kOptIni);
  EXPECT_EQ(profile_.reads.back().path, u"D:\\Cfg\\Opt.ini");
  (void)ini_.ReadIni(u"Radio", u"Link", u"", u"");
  EXPECT_EQ(profile_.reads.back().path, u"D:\\Cfg\\Funkhaus.ini");
}

TEST_F(SettingsFolderTest, TheMovedFolderIsReadByTheFamilyFoldersRuleAndTheFlagIsNot) {
  files_.folders.insert(u"D:\\Cfg\\");
  MoveTo(u"D:\\Cfg\\");
  Choose();
  ASSERT_EQ(profile_.reads.size(), 2U);
  EXPECT_EQ(profile_.reads[1].path, kHomeOpt);
  EXPECT_EQ(profile_.reads[1].default_value, u"");
  EXPECT_EQ(files_.existence_questions.front(), kHomeOpt) << "that rule asks for the family's file first";
  // It falls back to the station file, whose name is not known at the first choice.
  files_.files.clear();
  settings_.StationFileName.clear();
  profile_.values[{kHome, u"Pfad3", u"UserIniPfad"}] = u"E:\\Cfg\\";
  files_.folders.insert(u"E:\\Cfg\\");
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, u"E:\\Cfg\\");
}

TEST_F(SettingsFolderTest, AMovedFolderWithoutABackslashIsTakenAsItStands) {
  files_.folders.insert(u"D:\\Cfg\\");
  MoveTo(u"D:\\Cfg");
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, u"D:\\Cfg");
}

TEST_F(SettingsFolderTest, AMovedFolderThatDoesNotExistIsIgnored) {
  MoveTo(u"D:\\Weg\\");
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, kHome);
  MoveTo(u"");
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, kHome);
}

TEST_F(SettingsFolderTest, OnlyTheValueOneMeansMoved) {
  files_.folders.insert(u"D:\\Cfg\\");
  for (const Text flag : {u"2", u"true", u"0", u"", u"11", u"-1"}) {
    MoveTo(u"D:\\Cfg\\", flag);
    Choose();
    EXPECT_EQ(settings_.SettingsFolder, kHome) << testing::PrintToString(flag);
  }
}

TEST_F(SettingsFolderTest, AMissingFolderIsMade) {
  files_.folders.clear();
  files_.files.clear();
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, kHome);
  EXPECT_EQ(files_.created_folders, std::vector<Text>{kHome});
}

TEST_F(SettingsFolderTest, WhetherAFolderIsThereDecidesAndNotTheAnswerOfMakingIt) {
  class Files final : public test_support::MemoryFiles {
   public:
    bool CreateDirectoryW(const Text& path) override {
      if (!answer) folders.insert(path);
      return answer;
    }
    bool answer = false;
  };
  Files files;
  ChooseSettingsFolder(settings_, ini_, files, environment_);
  EXPECT_EQ(settings_.SettingsFolder, kHome) << "another program made it in that moment";
  files.folders.clear();
  files.answer = true;
  ChooseSettingsFolder(settings_, ini_, files, environment_);
  EXPECT_EQ(settings_.SettingsFolder, u"C:\\Programme\\Funkhaus") << "it is gone again";
}

TEST_F(SettingsFolderTest, AFolderThatCannotBeMadeGivesTheProgramFolderWithoutABackslash) {
  files_.folders.clear();
  files_.files.clear();
  files_.can_create_folders = false;
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, u"C:\\Programme\\Funkhaus");
  ini_.WriteStationIni(u"Radio", u"Link", u"");
  EXPECT_EQ(profile_.writes.back().path, u"C:\\Programme\\FunkhausFunkhaus.ini");
}

TEST_F(SettingsFolderTest, UseProgramFolderIsSetBackAtTheStart) {
  settings_.UseProgramFolder = true;
  Choose();
  EXPECT_FALSE(settings_.UseProgramFolder);
  EXPECT_EQ(settings_.SettingsFolder, kHome);
}

TEST_F(SettingsFolderTest, APortableLayoutKeepsEverythingInTheProgramFolder) {
  files_.folders.insert(u"C:\\Programme\\Funkhaus\\");
  Choose(Layout::kProgramFolder);
  EXPECT_TRUE(settings_.UseProgramFolder);
  EXPECT_EQ(settings_.SettingsFolder, u"C:\\Programme\\Funkhaus\\");
  EXPECT_EQ(profile_.reads[0].path, u"C:\\Programme\\Funkhaus\\Opt.ini");
}

TEST_F(SettingsFolderTest, APortableLayoutHonoursAMovedFolderToo) {
  files_.folders = {u"C:\\Programme\\Funkhaus\\", u"D:\\Cfg\\"};
  const Text opt = u"C:\\Programme\\Funkhaus\\Opt.ini";
  profile_.values[{opt, u"Pfad3", u"IsUserIniChange"}] = u"1";
  profile_.values[{opt, u"Pfad3", u"UserIniPfad"}] = u"D:\\Cfg\\";
  Choose(Layout::kProgramFolder);
  EXPECT_EQ(settings_.SettingsFolder, u"D:\\Cfg\\");
}

}  // namespace
}  // namespace app
