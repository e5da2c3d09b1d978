// The settings folder, the INI procedures and the language, together with the system's own files.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/settings/ini_procedures.h"
#include "app/settings/language.h"
#include "app/settings/settings_folder.h"
#include "platform/ini/private_profile.h"
#include "tests/support/fakes.h"
#include "tests/support/plain_disk.h"
#include "tests/support/plain_text_conversion.h"
#include "tests/support/temp_folder.h"

namespace app {
namespace {

class SettingsOnDiskTest : public testing::Test {
 protected:
  SettingsOnDiskTest() {
    std::filesystem::create_directory(folder_.Path() / "config");
    std::filesystem::create_directory(folder_.Path() / "program");
    environment_.variables[u"APPDATA"] = folder_.TextPath("config");
    environment_.program_folder = folder_.TextPath("program");
  }

  void Choose() { ChooseSettingsFolder(settings_, ini_, files_, environment_); }
  static std::string Utf8(const std::filesystem::path& path) { return path.string(); }

  test_support::TempFolder folder_;
  test_support::PlainTextConversion conversion_;
  test_support::PlainNativePaths paths_;
  test_support::PlainFiles files_;
  test_support::PlainProfileFiles profile_files_;
  platform::ini::IniPrivateProfile profile_{paths_, profile_files_, conversion_};
  test_support::FakeEnvironment environment_;
  Settings settings_;
  IniProcedures ini_{settings_, profile_, files_, environment_};
  Language language_{settings_, ini_, profile_, files_, environment_};
};

TEST_F(SettingsOnDiskTest, ANewUserGetsTheFamilyFolder) {
  Choose();
  EXPECT_TRUE(std::filesystem::is_directory(folder_.Path() / "config/Ordnerzentrale"));
  EXPECT_TRUE(ini_.WriteStationIni(u"Radio Köln", u"Link", u"http://1"));
  EXPECT_TRUE(ini_.WriteOptIni(u"Pfad3", u"FunkhausFavorit", u"2"));
  EXPECT_EQ(folder_.Read("config/Ordnerzentrale/Funkhaus.ini"), "[Radio K\xF6ln]\r\nLink=http://1\r\n");
  EXPECT_EQ(folder_.Read("config/Ordnerzentrale/Opt.ini"), "[Pfad3]\r\nFunkhausFavorit=2\r\n");
  EXPECT_EQ(ini_.ReadIni(u"Radio Köln", u"Link", u"", u""), u"http://1");
  EXPECT_EQ(ini_.ReadIni(u"Pfad3", u"FunkhausFavorit", u"0", kOptIni), u"2");
}

TEST_F(SettingsOnDiskTest, AMovedFolderIsFoundWithEitherSeparator) {
  std::filesystem::create_directory(folder_.Path() / "Cfg");
  const std::string native = Utf8(folder_.Path() / "Cfg") + "/";
  std::string backslashes = native;
  for (char& byte : backslashes) byte = byte == '/' ? '\\' : byte;
  for (const std::string& path : {native, backslashes}) {
    folder_.Write("config/Ordnerzentrale/Opt.ini",
                  "[Pfad3]\r\nIsUserIniChange=1\r\nUserIniPfad=" + path + "\r\n");
    Choose();
    EXPECT_EQ(settings_.SettingsFolder, Text(path.begin(), path.end()));
    EXPECT_TRUE(ini_.WriteStationIni(u"Radio", u"Link", Text(path.begin(), path.end())));
    EXPECT_EQ(folder_.Read("Cfg/Funkhaus.ini"), "[Radio]\r\nLink=" + path + "\r\n");
  }
}

TEST_F(SettingsOnDiskTest, AMovedFolderThatDoesNotExistIsIgnored) {
  folder_.Write("config/Ordnerzentrale/Opt.ini",
                "[Pfad3]\r\nIsUserIniChange=1\r\nUserIniPfad=" + Utf8(folder_.Path() / "weg") + "/\r\n");
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, folder_.TextPath("config") + u"\\Ordnerzentrale\\");
}

TEST_F(SettingsOnDiskTest, WithoutAFolderToMakeTheFilesLieBesideTheProgramFolder) {
  folder_.Write("config/Ordnerzentrale", "a file stands in the way");
  Choose();
  EXPECT_EQ(settings_.SettingsFolder, folder_.TextPath("program"));
  EXPECT_TRUE(ini_.WriteStationIni(u"Radio", u"Link", u"http://1"));
  EXPECT_EQ(folder_.Read("programFunkhaus.ini"), "[Radio]\r\nLink=http://1\r\n");
}

TEST_F(SettingsOnDiskTest, TheFolderIsMadeOneLevelDeepOnly) {
  environment_.variables[u"APPDATA"] = folder_.TextPath("missing");
  Choose();
  EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "missing"));
  EXPECT_EQ(settings_.SettingsFolder, folder_.TextPath("program"));
}

TEST_F(SettingsOnDiskTest, WhatIsMissingGivesTheDefaultAndMakesNoFile) {
  Choose();
  EXPECT_EQ(ini_.ReadIni(u"Pfad3", u"FunkhausFavorit", u"0", kOptIni), u"0");
  EXPECT_EQ(ini_.ReadIni(u"Radio", u"Link", u"", u""), u"");
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path() / "config/Ordnerzentrale"));
}

TEST_F(SettingsOnDiskTest, ALongValueIsReadUpTo1023Characters) {
  Choose();
  EXPECT_TRUE(ini_.WriteStationIni(u"Radio", u"Link", Text(1023, u'ä') + u"b"));
  EXPECT_EQ(ini_.ReadIni(u"Radio", u"Link", u"", u""), Text(1023, u'ä'));
}

TEST_F(SettingsOnDiskTest, DeletingAStationLeavesTheOthers) {
  folder_.Write("config/Ordnerzentrale/Funkhaus.ini", "[A]\nLink=1\n[B]\nLink=2\n");
  Choose();
  EXPECT_TRUE(ini_.DeleteStationSection(u"a"));
  EXPECT_EQ(folder_.Read("config/Ordnerzentrale/Funkhaus.ini"), "[B]\nLink=2\n");
}

TEST_F(SettingsOnDiskTest, TheLanguageFileTranslatesWhatItHolds) {
  folder_.Write("config/Ordnerzentrale/Opt.ini", "[Pfad1]\r\nLanguages=English\r\n");
  folder_.Write("program/Languages/English.lng",
                "[Common]\r\ngespeicherte radiostationen=Saved radio stations\r\n"
                "L\xF6schen=Delete\r\nTitel=\r\nGenre=\" \"\r\n");
  Choose();
  language_.ChooseLanguage();
  EXPECT_EQ(settings_.LanguageName, u"English");
  EXPECT_EQ(language_.GetLangText(u"Gespeicherte Radiostationen", u""), u"Saved radio stations");
  EXPECT_EQ(language_.GetLangText(u"LÖSCHEN", u""), u"Delete");
  EXPECT_EQ(language_.GetLangText(u"Titel", u"Titel"), u"Titel");
  EXPECT_EQ(language_.GetLangText(u"Genre", u"Genre"), u" ") << "a quoted blank is a translation";
  EXPECT_EQ(language_.GetLangText(u"Sender", u"Sender"), u"Sender");
}

TEST_F(SettingsOnDiskTest, OnlyTheSectionCommonOfALanguageFileCounts) {
  folder_.Write("program/Languages/English.lng", "Titel=a\r\n[Other]\r\nTitel=b\r\n[Common]\r\nGenre=c\r\n");
  Choose();
  settings_.LanguageName = u"English";
  EXPECT_EQ(language_.GetLangText(u"Titel", u""), u"Titel");
  EXPECT_EQ(language_.GetLangText(u"Genre", u""), u"c");
}

TEST_F(SettingsOnDiskTest, ALanguageWithoutAFileIsTheDefault) {
  folder_.Write("config/Ordnerzentrale/Opt.ini", "[Pfad1]\r\nLanguages=../../config/Ordnerzentrale/Opt\r\n");
  Choose();
  language_.ChooseLanguage();
  EXPECT_EQ(settings_.LanguageName, u"default");
}

}  // namespace
}  // namespace app
