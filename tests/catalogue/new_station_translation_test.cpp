// The new-station dialog in another language: its own list of texts, and the file that comes with the
// program.
#include <gtest/gtest.h>

#include "catalogue/new_station_dialog.h"
#include "tests/support/language_rig.h"

namespace catalogue {
namespace {

using platform::Text;

class NewStationTranslationTest : public ::testing::Test {
 protected:
  void Show(const app::Language& language, const std::function<void(app::Form2&)>& act) {
    NewStationDialog dialog(list_, settings_, language, clipboard_, dialogs_);
    dialog.Show(act);
  }
  /// The window's caption and every other one in the order of the inventory.
  static std::vector<Text> Captions(const app::Form2& form) {
    std::vector<Text> captions = {form.form.Caption()};
    for (const app::FormControl& entry : form.inventory) {
      const auto* captioned = app::As<controls::Captioned>(entry);
      if (captioned != nullptr) captions.push_back(captioned->Caption());
    }
    return captions;
  }

  controls::ListView list_;
  app::Settings settings_;
  test_support::FakeClipboard clipboard_;
  test_support::FakeDialogs dialogs_;
};

TEST_F(NewStationTranslationTest, LabelsAndButtonsAreTranslatedTheWindowsCaptionAndTheToolTipsStayGerman) {
  test_support::MarkingLanguage marks;
  Show(marks.language, [](app::Form2& form) {
    EXPECT_EQ(
        Captions(form),
        (std::vector<Text>{u"Neue Radiostation einfügen", u"<Station>", u"", u"<Weblink>", u"", u"<Genre:>",
                           u"<Das passende Icon (32 Pixel) zur Radiostation muss in den Ordner "
                           u"'RadioICO' kopiert werden (Dateiname ist Radiostationsname)>",
                           u"<Übernehmen>", u"<Abbrechen>"}));
    for (const controls::CommandButton& button : form.CommandButton3) {
      EXPECT_EQ(button.ToolTip(), u"Text aus der Zwischenablage einfügen");
    }
    EXPECT_EQ(form.Combo1.GetText(), u"80er/90er");
  });
}

TEST_F(NewStationTranslationTest, EnglishFileKnowsEveryCaptionAndTheMessage) {
  test_support::ProgramLanguage english(u"English");
  ASSERT_TRUE(english.language.Translates()) << "the build puts the file beside the program";
  app::Form2 form;
  for (const Text& caption : Captions(form)) {
    EXPECT_TRUE(caption.empty() || english.Knows(caption)) << english.Utf8(caption);
  }
  Show(english.language, [](app::Form2& shown) {
    EXPECT_EQ(shown.CommandButton1.Caption(), u"Accept");
    EXPECT_EQ(shown.CommandButton2.Caption(), u"Cancel");
    EXPECT_EQ(shown.Label2[1].Caption(), u"Web link");
    shown.CommandButton1.Click();
    EXPECT_FALSE(shown.form.IsClosed());
  });
  ASSERT_EQ(dialogs_.boxes.size(), 1U);
  EXPECT_EQ(dialogs_.boxes[0].text, u"Please enter a name for the radio station!");
}

TEST_F(NewStationTranslationTest, LanguageFileInUtf16TranslatesAsItsCopyInTheCodePage) {
  test_support::ProgramLanguage english(u"English");
  test_support::ProgramLanguage wide(u"English", test_support::LanguageEncoding::kUtf16);
  ASSERT_TRUE(wide.language.Translates());
  std::vector<Text> captions;
  Show(english.language, [&](app::Form2& form) { captions = Captions(form); });
  Show(wide.language, [&](app::Form2& form) { EXPECT_EQ(Captions(form), captions); });
  EXPECT_EQ(wide.Translated(u"Übernehmen"), u"Accept");
}

}  // namespace
}  // namespace catalogue
