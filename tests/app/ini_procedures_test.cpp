#include "app/settings/ini_procedures.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/recording_profile.h"

namespace app {
namespace {

using test_support::RecordingProfile;

class IniProceduresTest : public testing::Test {
 protected:
  IniProceduresTest() {
    environment_.variables[u"APPDATA"] = u"C:\\Users\\x\\AppData";
    settings_.SettingsFolder = u"D:\\Cfg\\";
    settings_.StationFileName = u"Funkhaus.ini";
  }

  Text ReadPath(const Text& file_name, UseFamilyFolder folder = UseFamilyFolder::kNo) {
    (void)ini_.ReadIni(u"s", u"k", u"", file_name, folder);
    return profile_.reads.back().path;
  }
  Text OptPath(const Text& file_name, UseFamilyFolder folder = UseFamilyFolder::kNo) {
    ini_.WriteOptIni(u"s", u"k", u"v", file_name, folder);
    return profile_.writes.back().path;
  }
  Text StationPath(const Text& file_name, UseFamilyFolder folder = UseFamilyFolder::kNo) {
    ini_.WriteStationIni(u"s", u"k", u"v", file_name, folder);
    return profile_.writes.back().path;
  }
  Text DeletePath(const Text& file_name, UseFamilyFolder folder = UseFamilyFolder::kNo) {
    ini_.DeleteStationSection(u"s", file_name, folder);
    return profile_.writes.back().path;
  }

  Settings settings_;
  RecordingProfile profile_;
  test_support::MemoryFiles files_;
  test_support::FakeEnvironment environment_;
  IniProcedures ini_{settings_, profile_, files_, environment_};
};

TEST_F(IniProceduresTest, ReadIniAsksTheProfileForTheValueWithItsDefault) {
  EXPECT_EQ(ini_.ReadIni(u"Pfad3", u"FunkhausFavorit", u"0", u"Opt.ini"), u"0");
  profile_.values[{u"D:\\Cfg\\Opt.ini", u"Pfad3", u"FunkhausFavorit"}] = u"2";
  EXPECT_EQ(ini_.ReadIni(u"Pfad3", u"FunkhausFavorit", u"0", u"Opt.ini"), u"2");
  EXPECT_EQ(profile_.reads.back(),
            (RecordingProfile::Read{u"Pfad3", u"FunkhausFavorit", u"0", 1024, u"D:\\Cfg\\Opt.ini"}));
  EXPECT_TRUE(profile_.all_buffers_were_zero);
}

TEST_F(IniProceduresTest, AValueLongerThan1023CharactersIsCutTo1023) {
  profile_.values[{u"D:\\Cfg\\Opt.ini", u"s", u"k"}] = Text(1023, u'a') + u"b";
  EXPECT_EQ(ini_.ReadIni(u"s", u"k", u"", u"Opt.ini"), Text(1023, u'a'));
}

TEST_F(IniProceduresTest, ReadIniWithAFileNameOfThreeCharactersOrFewerReadsTheStationFile) {
  EXPECT_EQ(ReadPath(u""), u"D:\\Cfg\\Funkhaus.ini");
  EXPECT_EQ(ReadPath(u"abc"), u"D:\\Cfg\\Funkhaus.ini");
  EXPECT_EQ(ReadPath(u"abcd"), u"D:\\Cfg\\abcd");
}

TEST_F(IniProceduresTest, ReadIniTakesEveryFileNameAsANameInTheSettingsFolder) {
  EXPECT_EQ(ReadPath(u"Opt.ini"), u"D:\\Cfg\\Opt.ini");
  EXPECT_EQ(ReadPath(u"C:\\x\\y.ini"), u"D:\\Cfg\\C:\\x\\y.ini");
  settings_.SettingsFolder = u"C:\\Programme\\Funkhaus";
  EXPECT_EQ(ReadPath(u""), u"C:\\Programme\\FunkhausFunkhaus.ini");
}

TEST_F(IniProceduresTest, ReadIniInTheFamilyFolderReadsAnExistingFile) {
  files_.files[u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Opt.ini"] = "";
  EXPECT_EQ(ReadPath(u"Opt.ini", UseFamilyFolder::kYes), u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Opt.ini");
  environment_.variables[u"APPDATA"] = u"C:\\Users\\x\\AppData\\";
  EXPECT_EQ(ReadPath(u"Opt.ini", UseFamilyFolder::kYes), u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Opt.ini");
}

TEST_F(IniProceduresTest, ReadIniWithAShortNameInTheFamilyFolderReadsTheStationFileThere) {
  files_.files[u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Funkhaus.ini"] = "";
  EXPECT_EQ(ReadPath(u"", UseFamilyFolder::kYes), u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Funkhaus.ini");
}

TEST_F(IniProceduresTest, AMissingFamilyFileFallsBackToTheStationFileAndNotToTheNamedFile) {
  EXPECT_EQ(ReadPath(u"Opt.ini", UseFamilyFolder::kYes), u"D:\\Cfg\\Funkhaus.ini");
  EXPECT_EQ(OptPath(u"", UseFamilyFolder::kYes), u"D:\\Cfg\\Funkhaus.ini");
  EXPECT_EQ(StationPath(u"", UseFamilyFolder::kYes), u"D:\\Cfg\\Funkhaus.ini");
  EXPECT_EQ(DeletePath(u"", UseFamilyFolder::kYes), u"D:\\Cfg\\Funkhaus.ini");
}

TEST_F(IniProceduresTest, WritingInTheFamilyFolderMeansItsExistingFilesWhateverTheName) {
  files_.files[u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Opt.ini"] = "";
  files_.files[u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Funkhaus.ini"] = "";
  for (const Text name : {u"", u"y.ini", u"C:\\x\\y.ini"}) {
    EXPECT_EQ(OptPath(name, UseFamilyFolder::kYes), u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Opt.ini");
    EXPECT_EQ(StationPath(name, UseFamilyFolder::kYes),
              u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Funkhaus.ini");
    EXPECT_EQ(DeletePath(name, UseFamilyFolder::kYes),
              u"C:\\Users\\x\\AppData\\Ordnerzentrale\\Funkhaus.ini");
  }
}

TEST_F(IniProceduresTest, UseProgramFolderPutsTheProgramFolderInPlaceOfTheFamilyFolder) {
  settings_.UseProgramFolder = true;
  EXPECT_EQ(ReadPath(u"Opt.ini", UseFamilyFolder::kYes), u"C:\\Programme\\Funkhaus\\Opt.ini");
  EXPECT_EQ(ReadPath(u"", UseFamilyFolder::kYes), u"C:\\Programme\\Funkhaus\\Funkhaus.ini");
  EXPECT_EQ(OptPath(u"", UseFamilyFolder::kYes), u"C:\\Programme\\Funkhaus\\Opt.ini");
  EXPECT_EQ(StationPath(u"", UseFamilyFolder::kYes), u"C:\\Programme\\Funkhaus\\Funkhaus.ini");
  EXPECT_EQ(DeletePath(u"", UseFamilyFolder::kYes), u"C:\\Programme\\Funkhaus\\Funkhaus.ini");
  EXPECT_TRUE(files_.existence_questions.empty());
  EXPECT_EQ(ReadPath(u"Opt.ini"), u"D:\\Cfg\\Opt.ini");
}

TEST_F(IniProceduresTest, WritingWithoutAFileNameMeansTheProceduresOwnFile) {
  EXPECT_EQ(OptPath(u""), u"D:\\Cfg\\Opt.ini");
  EXPECT_EQ(StationPath(u""), u"D:\\Cfg\\Funkhaus.ini");
  EXPECT_EQ(DeletePath(u""), u"D:\\Cfg\\Funkhaus.ini");
}

TEST_F(IniProceduresTest, WritingWithAPlainNameMeansAFileInTheSettingsFolder) {
  EXPECT_EQ(OptPath(u"y.ini"), u"D:\\Cfg\\y.ini");
  EXPECT_EQ(StationPath(u"y.ini"), u"D:\\Cfg\\y.ini");
  EXPECT_EQ(DeletePath(u"y"), u"D:\\Cfg\\y");
}

TEST_F(IniProceduresTest, WritingWithABackslashInTheNameMeansThatFullPath) {
  EXPECT_EQ(OptPath(u"C:\\x\\y.ini"), u"C:\\x\\y.ini");
  EXPECT_EQ(StationPath(u"C:\\x\\y.ini"), u"C:\\x\\y.ini");
  EXPECT_EQ(DeletePath(u"sub\\y.ini"), u"sub\\y.ini");
}

TEST_F(IniProceduresTest, WritingHandsOverSectionKeyAndValue) {
  EXPECT_TRUE(ini_.WriteOptIni(u"Pfad3", u"FunkhausFavorit", u"1"));
  EXPECT_TRUE(ini_.WriteStationIni(u"Radio", u"Link", u""));
  EXPECT_EQ(profile_.writes,
            (std::vector<RecordingProfile::Write>{{u"Pfad3", u"FunkhausFavorit", u"1", u"D:\\Cfg\\Opt.ini"},
                                                  {u"Radio", u"Link", u"", u"D:\\Cfg\\Funkhaus.ini"}}));
}

TEST_F(IniProceduresTest, DeletingAStationWritesNeitherKeyNorValue) {
  EXPECT_TRUE(ini_.DeleteStationSection(u"Radio"));
  EXPECT_EQ(profile_.writes, (std::vector<RecordingProfile::Write>{
                                 {u"Radio", std::nullopt, std::nullopt, u"D:\\Cfg\\Funkhaus.ini"}}));
}

TEST_F(IniProceduresTest, AFailedWriteIsReportedByValueOnly) {
  profile_.can_write = false;
  EXPECT_FALSE(ini_.WriteOptIni(u"s", u"k", u"v"));
  EXPECT_FALSE(ini_.WriteStationIni(u"s", u"k", u"v"));
  EXPECT_FALSE(ini_.DeleteStationSection(u"s"));
}

}  // namespace
}  // namespace app
