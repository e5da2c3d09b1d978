// The forms in another language: every control that their inventories hold, the file that comes with the
// program, and the system's own files.
#include "app/forms/translation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "app/forms/form2.h"
#include "app/state/genre_list.h"
#include "app/text/text_helpers.h"
#include "tests/support/language_rig.h"

namespace app {
namespace {

using platform::Text;

/// The controls of a kind, or of a base of several kinds, in the order of the inventory.
template <typename Kind>
std::vector<Kind*> All(const Inventory& inventory) {
  std::vector<Kind*> found;
  for (const FormControl& entry : inventory) {
    if (Kind* control = As<Kind>(entry)) found.push_back(control);
  }
  return found;
}

/// The status line's sentences are translated one by one, when they are shown.
std::vector<controls::Captioned*> Captioned(Form1& form1) {
  std::vector<controls::Captioned*> captioned = All<controls::Captioned>(form1.inventory);
  std::erase(captioned, &form1.StatusLine);
  captioned.push_back(&form1.form);
  return captioned;
}

LookUp In(const Language& language) {
  return [&language](const Text& text) { return language.GetLangText(text, text); };
}

/// The window's texts before it is translated, as they are at the start.
void FillAtStart(Form1& form1) {
  for (controls::ListView* list : All<controls::ListView>(form1.inventory)) {
    list->AddColumn({u"Station", 100});
    list->AddColumn({u"Genre", 100});
  }
  for (Text& genre : Split(GenreList, u";")) form1.Combo1.AddItem(std::move(genre));
  form1.Combo1.SetListIndex(0);
}

TEST(TranslationTest, EveryCaptionAndTextIsTranslatedOnceWithItselfAsTheKey) {
  Form1 form1;
  FillAtStart(form1);
  const auto captioned = Captioned(form1);
  const auto fields = All<controls::TextControl>(form1.inventory);
  for (controls::Captioned* control : captioned) {
    if (control->Caption().empty()) control->SetCaption(u"caption");
  }
  for (controls::TextControl* control : fields) {
    if (control->GetText().empty()) control->SetText(u"text");
  }
  const auto texts = [&] {
    std::vector<Text> all;
    for (const controls::Captioned* control : captioned) all.push_back(control->Caption());
    for (const controls::TextControl* control : fields) all.push_back(control->GetText());
    return all;
  };
  const std::vector<Text> before = texts();
  const test_support::MarkingLanguage language;
  TranslateForm(form1, In(language.language));
  const std::vector<Text> after = texts();
  for (std::size_t index = 0; index < before.size(); ++index) {
    EXPECT_EQ(after[index], u"<" + before[index] + u">");
  }
  for (const controls::ListView* list : All<controls::ListView>(form1.inventory)) {
    EXPECT_EQ(list->Columns()[0].caption, u"<Station>");
    EXPECT_EQ(list->Columns()[1].caption, u"<Genre>");
  }
}

TEST(TranslationTest, WordsOfBothListsAreTranslated) {
  const Form1 german;
  Form1 form1;
  const test_support::MarkingLanguage language;
  TranslateForm(form1, In(language.language));
  const auto expect_marked = [](const controls::ListView& list, const controls::ListView& before) {
    EXPECT_EQ(list.EmptyText(), u"<" + before.EmptyText() + u">");
    for (const auto mark : {controls::RowMark::kPlaying, controls::RowMark::kWaiting}) {
      EXPECT_EQ(list.MarkText(mark), u"<" + before.MarkText(mark) + u">");
    }
  };
  expect_marked(form1.SymbolListview, german.SymbolListview);
  expect_marked(form1.ExplorerListFilter, german.ExplorerListFilter);
  EXPECT_NE(german.SymbolListview.EmptyText(), german.ExplorerListFilter.EmptyText());
}

TEST(TranslationTest, ColumnsOfTheFullListAreLookedUpFirstThenThoseOfTheFilteredOneThenTheControls) {
  Form1 form1;
  for (const char16_t* caption : {u"voll 1", u"voll 2"}) form1.SymbolListview.AddColumn({caption});
  for (const char16_t* caption : {u"gefiltert 1", u"gefiltert 2"})
    form1.ExplorerListFilter.AddColumn({caption});
  std::vector<Text> looked_up;
  TranslateForm(form1, [&](const Text& text) {
    looked_up.push_back(text);
    return text;
  });
  std::vector<std::ptrdiff_t> places;
  for (const char16_t* text :
       {u"Funkhausplayer", u"voll 1", u"voll 2", u"gefiltert 1", u"gefiltert 2", u"Start"}) {
    places.push_back(std::find(looked_up.begin(), looked_up.end(), text) - looked_up.begin());
  }
  EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
  EXPECT_LT(places.back(), std::ssize(looked_up));
}

TEST(TranslationTest, HintsAccessibleNamesAndTextsOfTheMenuAreTranslated) {
  const Form1 german;
  Form1 form1;
  const test_support::MarkingLanguage language;
  TranslateForm(form1, In(language.language));
  const auto marked = [](const Text& text) { return text.empty() ? text : u"<" + text + u">"; };
  std::size_t texts = 0;
  for (std::size_t index = 0; index < german.inventory.size(); ++index) {
    const Use& before = german.inventory[index].use;
    EXPECT_EQ(form1.inventory[index].use.hint, marked(before.hint));
    EXPECT_EQ(form1.inventory[index].use.accessible_name, marked(before.accessible_name));
    EXPECT_EQ(form1.inventory[index].use.menu_caption, marked(before.menu_caption));
    texts += before.hint.empty() ? 0U : 1U;
    texts += before.accessible_name.empty() ? 0U : 1U;
    texts += before.menu_caption.empty() ? 0U : 1U;
  }
  EXPECT_EQ(texts, 10U);
}

TEST(TranslationTest, EmptyCaptionsStayEmptyAndToolTipsStayGerman) {
  Form1 form1;
  const test_support::MarkingLanguage language;
  TranslateForm(form1, In(language.language));
  EXPECT_EQ(form1.Label1.Caption(), u"");
  EXPECT_EQ(form1.TextBox1[0].GetText(), u"");
  EXPECT_EQ(form1.Command8[1].ToolTip(), u"Alles übernehmen");
}

TEST(TranslationTest, StatusLineIsLeftToWhoeverShowsASentence) {
  Form1 form1;
  form1.StatusLine.SetCaption(u"Is playing.");
  const test_support::MarkingLanguage language;
  TranslateForm(form1, In(language.language));
  EXPECT_EQ(form1.StatusLine.Caption(), u"Is playing.");
}

TEST(TranslationTest, DialogsFieldsKeepWhatStandsInThem) {
  Form2 form2;
  form2.Combo1.SetText(u"80er/90er");
  const test_support::MarkingLanguage language;
  TranslateCaptions(form2.inventory, In(language.language));
  EXPECT_EQ(form2.Combo1.GetText(), u"80er/90er");
  EXPECT_EQ(form2.Label1.Caption().front(), u'<');
}

/// Whether the caption is a letter of a symbol font.
bool IsSymbol(const controls::CommandButton& button) {
  return button.GetGlyph() != controls::Glyph::kNone &&
         button.PlaceOfGlyph() == controls::GlyphPlace::kInsteadOfCaption;
}

/// Expects that the file has a translation for all that a translation asks for; a button's glyph needs none.
class KnownInEnglish {
 public:
  explicit KnownInEnglish(const Inventory& inventory) {
    for (const auto* button : All<controls::CommandButton>(inventory)) {
      if (IsSymbol(*button)) glyphs_.push_back(button->Caption());
    }
  }
  LookUp Check() {
    return [this](const Text& text) {
      const bool glyph = std::find(glyphs_.begin(), glyphs_.end(), text) != glyphs_.end();
      EXPECT_TRUE(glyph || english_.Knows(text)) << english_.Utf8(text);
      return text;
    };
  }

 private:
  test_support::ProgramLanguage english_{u"English"};
  std::vector<Text> glyphs_;
};

TEST(TranslationTest, EnglishFileBesideTheProgramTranslatesEveryText) {
  ASSERT_TRUE(test_support::ProgramLanguage(u"English").language.Translates())
      << "the build puts the file beside the program";
  Form1 form1;
  FillAtStart(form1);
  TranslateForm(form1, KnownInEnglish(form1.inventory).Check());
  Form2 form2;
  TranslateCaptions(form2.inventory, KnownInEnglish(form2.inventory).Check());
}

TEST(TranslationTest, EnglishWindowKeepsNoGermanTextAndItsSymbolsAndGenresAsTheyAre) {
  const test_support::ProgramLanguage english(u"English");
  Form1 form1;
  FillAtStart(form1);
  TranslateForm(form1, In(english.language));
  EXPECT_EQ(form1.Frame2.Caption(), u"Saved radio stations");
  EXPECT_EQ(form1.Command8[3].Caption(), u"Delete entry");
  EXPECT_EQ(form1.Label6.Caption(), u"Web link");
  std::vector<Text> symbols;
  for (const auto* button : All<controls::CommandButton>(form1.inventory)) {
    if (IsSymbol(*button)) symbols.push_back(button->Caption());
  }
  EXPECT_EQ(symbols, (std::vector<Text>{u"8", u"a", u"a", u"a", u"a", u"x"}));
  EXPECT_EQ(form1.Combo1.ListIndex(), 0) << "the genre still is one of the catalogue's";
}

TEST(TranslationTest, LanguageFileInUtf16TranslatesAsItsCopyInTheCodePage) {
  const test_support::ProgramLanguage english(u"English");
  const test_support::ProgramLanguage wide(u"English", test_support::LanguageEncoding::kUtf16);
  ASSERT_TRUE(wide.language.Translates());
  Form1 form1;
  Form1 wide_form1;
  TranslateForm(form1, In(english.language));
  TranslateForm(wide_form1, In(wide.language));
  const auto all = Captioned(form1);
  const auto wide_all = Captioned(wide_form1);
  ASSERT_EQ(all.size(), wide_all.size());
  for (std::size_t index = 0; index < all.size(); ++index) {
    EXPECT_EQ(all[index]->Caption(), wide_all[index]->Caption());
  }
  EXPECT_EQ(wide_form1.lblSav.Caption(), u"Volume");
}

}  // namespace
}  // namespace app
