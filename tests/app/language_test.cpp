#include "app/settings/language.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/recording_profile.h"

namespace app {
namespace {

const Text kEnglish = u"C:\\Programme\\Funkhaus\\Languages\\English.lng";
const Text kStations = u"Gespeicherte Radiostationen";

class LanguageTest : public testing::Test {
 protected:
  LanguageTest() {
    settings_.SettingsFolder = u"D:\\Cfg\\";
    files_.files[kEnglish] = "";
    profile_.values[{kEnglish, u"Common", kStations}] = u"Saved radio stations";
  }

  void Want(const Text& name) { profile_.values[{u"D:\\Cfg\\Opt.ini", u"Pfad1", u"Languages"}] = name; }

  Settings settings_;
  test_support::RecordingProfile profile_;
  test_support::MemoryFiles files_;
  test_support::FakeEnvironment environment_;
  IniProcedures ini_{settings_, profile_, files_, environment_};
  Language language_{settings_, ini_, profile_, files_, environment_};
};

TEST_F(LanguageTest, IsTheUsersChoiceWhenItsFileExists) {
  Want(u"English");
  language_.ChooseLanguage();
  EXPECT_EQ(settings_.LanguageName, u"English");
  EXPECT_TRUE(language_.Translates());
  EXPECT_EQ(files_.existence_questions, std::vector<Text>{kEnglish});
}

TEST_F(LanguageTest, AMissingLanguageFileFallsBackToDefault) {
  Want(u"Klingonisch");
  language_.ChooseLanguage();
  EXPECT_EQ(settings_.LanguageName, u"default");
  EXPECT_FALSE(language_.Translates());
}

TEST_F(LanguageTest, NoChoiceFallsBackToDefault) {
  language_.ChooseLanguage();
  EXPECT_EQ(settings_.LanguageName, u"default");
}

TEST_F(LanguageTest, FilesNamedDefaultOrWithoutANameTranslateNothing) {
  files_.files[u"C:\\Programme\\Funkhaus\\Languages\\default.lng"] = "";
  files_.files[u"C:\\Programme\\Funkhaus\\Languages\\.lng"] = "";
  for (const Text name : {u"default", u""}) {
    Want(name);
    language_.ChooseLanguage();
    EXPECT_EQ(settings_.LanguageName, name);
    EXPECT_FALSE(language_.Translates());
  }
}

TEST_F(LanguageTest, DefaultAndEmptyTouchNoFile) {
  for (const Text name : {u"default", u""}) {
    settings_.LanguageName = name;
    EXPECT_EQ(language_.GetLangText(kStations, kStations), kStations);
    EXPECT_EQ(language_.GetLangText(kStations, u"Anders"), u"Anders");
    EXPECT_EQ(language_.GetLangText(kStations, u""), kStations);
  }
  EXPECT_TRUE(profile_.reads.empty());
  EXPECT_TRUE(files_.existence_questions.empty());
}

TEST_F(LanguageTest, AKeyOfTheLanguageFileIsTranslated) {
  settings_.LanguageName = u"English";
  EXPECT_EQ(language_.GetLangText(kStations, kStations), u"Saved radio stations");
  EXPECT_EQ(profile_.reads.back(),
            (test_support::RecordingProfile::Read{u"Common", kStations, u"", 800, kEnglish}));
  EXPECT_TRUE(profile_.all_buffers_were_zero);
}

TEST_F(LanguageTest, AMissingKeyStaysGermanWhileTheOthersAreTranslated) {
  settings_.LanguageName = u"English";
  EXPECT_EQ(language_.GetLangText(u"Löschen", u"Löschen"), u"Löschen");
  EXPECT_EQ(language_.GetLangText(kStations, kStations), u"Saved radio stations");
}

TEST_F(LanguageTest, AnEmptyTranslationKeepsTheGermanText) {
  settings_.LanguageName = u"English";
  profile_.values[{kEnglish, u"Common", u"Titel"}] = u"";
  EXPECT_EQ(language_.GetLangText(u"Titel", u"Titel"), u"Titel");
}

TEST_F(LanguageTest, AQuotedBlankIsATranslation) {
  settings_.LanguageName = u"English";
  profile_.values[{kEnglish, u"Common", u"Titel"}] = u" ";
  EXPECT_EQ(language_.GetLangText(u"Titel", u"Titel"), u" ");
}

TEST_F(LanguageTest, AnEmptyDefaultGivesTheKeyWithoutATranslation) {
  settings_.LanguageName = u"English";
  EXPECT_EQ(language_.GetLangText(u"Titel", u""), u"Titel");
  EXPECT_EQ(language_.GetLangText(kStations, u""), u"Saved radio stations");
}

TEST_F(LanguageTest, ATranslationOfMoreThan799CharactersIsCut) {
  settings_.LanguageName = u"English";
  profile_.values[{kEnglish, u"Common", u"Titel"}] = Text(799, u'a') + u"b";
  EXPECT_EQ(language_.GetLangText(u"Titel", u""), Text(799, u'a'));
}

}  // namespace
}  // namespace app
