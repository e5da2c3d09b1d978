// The main window in another language: its own walk over the controls, the file that comes with the program,
// and the system's own files.
#include "app/forms/translation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <type_traits>
#include <vector>

#include "app/state/genre_list.h"
#include "app/text/text_helpers.h"
#include "catalogue/station_lists.h"
#include "tests/support/language_rig.h"

namespace app {
namespace {

/// Every control of Form1, gathered here once more; the sizes prove that none is left out.
class AllControls {
 public:
  explicit AllControls(Form1& form1) {
    AddAll(form1.form, form1.Frame2, form1.Frame1, form1.ProgressBar1, form1.Frame3, form1.SymbolListview,
           form1.ExplorerListFilter, form1.Command1, form1.Command6, form1.Command3, form1.Command2,
           form1.Label1, form1.frSav, form1.lblSav, form1.hscSavVolume, form1.ckSavMute, form1.Command7,
           form1.Label5, form1.TextBox1, form1.Label6, form1.Label7, form1.Combo1, form1.Check2, form1.Label2,
           form1.UpDownTextBox1, form1.Command8, form1.UndoDelete, form1.Check1, form1.Check3,
           form1.CommandButton1, form1.CommandButton2, form1.Command4, form1.Command5, form1.Label4,
           form1.Label3, form1.Image1, form1.CmdInfoClose, form1.tmPlay, form1.Timer1, form1.Timer2,
           form1.tmUnsaved);
    // Its sentences are translated one by one, by whoever shows them.
    size += sizeof(form1.StatusLine);
  }

  std::size_t size = 0;
  std::vector<controls::Captioned*> captioned;
  std::vector<controls::TextControl*> texts;
  std::vector<controls::CommandButton*> glyphs;

 private:
  template <typename... Controls>
  void AddAll(Controls&... all) {
    (Add(all), ...);
  }
  template <typename Control, std::size_t kCount>
  void Add(std::array<Control, kCount>& several) {
    for (Control& control : several) Add(control);
  }
  template <typename Control>
  void Add(Control& control) {
    size += sizeof(Control);
    if constexpr (std::is_base_of_v<controls::Captioned, Control>) captioned.push_back(&control);
    if constexpr (std::is_base_of_v<controls::TextControl, Control>) texts.push_back(&control);
    if constexpr (std::is_same_v<controls::CommandButton, Control>) {
      if (control.GetGlyph() != controls::Glyph::kNone) glyphs.push_back(&control);
    }
  }
};

void Translate(Form1& form1, const Language& language) {
  TranslateForm(form1, [&](const Text& text) { return language.GetLangText(text, text); });
}

/// What stands in the window before it is translated, as the start leaves it.
void FillAtStart(Form1& form1) {
  for (controls::ListView* list : {&form1.SymbolListview, &form1.ExplorerListFilter}) {
    catalogue::StationLists::CreateColumns(*list);
  }
  for (Text& genre : Split(GenreList, u";")) form1.Combo1.AddItem(std::move(genre));
  form1.Combo1.SetListIndex(0);
}

TEST(TranslationTest, EveryControlOfTheFormIsKnownHere) {
  Form1 form1;
  EXPECT_EQ(AllControls(form1).size, sizeof(Form1));
}

TEST(TranslationTest, EveryCaptionAndTextIsTranslatedOnceWithItselfAsTheKey) {
  Form1 form1;
  FillAtStart(form1);
  AllControls all(form1);
  for (controls::Captioned* control : all.captioned) {
    if (control->Caption().empty()) control->SetCaption(u"caption");
  }
  for (controls::TextControl* control : all.texts) {
    if (control->GetText().empty()) control->SetText(u"text");
  }
  std::vector<Text> before;
  for (controls::Captioned* control : all.captioned) before.push_back(control->Caption());
  for (controls::TextControl* control : all.texts) before.push_back(control->GetText());

  test_support::MarkingLanguage language;
  Translate(form1, language.language);

  std::vector<Text> after;
  for (controls::Captioned* control : all.captioned) after.push_back(control->Caption());
  for (controls::TextControl* control : all.texts) after.push_back(control->GetText());
  for (std::size_t index = 0; index < before.size(); ++index) {
    EXPECT_EQ(after[index], u"<" + before[index] + u">");
  }
  for (const controls::ListView* list : {&form1.SymbolListview, &form1.ExplorerListFilter}) {
    std::vector<Text> captions;
    for (const controls::ListColumn& column : list->Columns()) captions.push_back(column.caption);
    EXPECT_EQ(captions, (std::vector<Text>{u"<Station>", u"<Genre>", u"<WebLink>", u"<Favorit>", u"<Titel>",
                                           u"<M3U Nr.>"}));
  }
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
  const auto place = [&](const Text& text) {
    return std::find(looked_up.begin(), looked_up.end(), text) - looked_up.begin();
  };
  std::vector<std::ptrdiff_t> places;
  for (const char16_t* text :
       {u"Funkhausplayer", u"voll 1", u"voll 2", u"gefiltert 1", u"gefiltert 2", u"Start"}) {
    places.push_back(place(text));
  }
  EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
  EXPECT_LT(places.back(), std::ssize(looked_up));
}

TEST(TranslationTest, WordsOfBothListsAreTranslated) {
  const Form1 german;
  Form1 form1;
  test_support::MarkingLanguage language;
  Translate(form1, language.language);
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

TEST(TranslationTest, EmptyCaptionsStayEmptyAndToolTipsStayGerman) {
  Form1 form1;
  test_support::MarkingLanguage language;
  Translate(form1, language.language);
  EXPECT_EQ(form1.Label1.Caption(), u"");
  EXPECT_EQ(form1.TextBox1[0].GetText(), u"");
  EXPECT_EQ(form1.Command8[1].ToolTip(), u"Alles übernehmen");
}

TEST(TranslationTest, EnglishFileBesideTheProgramTranslatesEveryText) {
  test_support::ProgramLanguage english(u"English");
  ASSERT_TRUE(english.language.Translates()) << "the build puts the file beside the program";
  Form1 form1;
  FillAtStart(form1);
  AllControls all(form1);
  const auto expect_known = [&](const Text& text) {
    EXPECT_TRUE(text.empty() || english.Knows(text)) << english.Utf8(text);
  };
  for (const controls::Captioned* control : all.captioned) {
    const bool glyph = std::find(all.glyphs.begin(), all.glyphs.end(), control) != all.glyphs.end();
    if (!glyph) expect_known(control->Caption());
  }
  for (const controls::TextControl* control : all.texts) expect_known(control->GetText());
  for (const controls::ListColumn& column : form1.SymbolListview.Columns()) expect_known(column.caption);
  for (const controls::ListView* list : {&form1.SymbolListview, &form1.ExplorerListFilter}) {
    expect_known(list->EmptyText());
    for (const auto mark : {controls::RowMark::kPlaying, controls::RowMark::kWaiting}) {
      expect_known(list->MarkText(mark));
    }
  }
  // A restored view has named itself before the window is translated.
  expect_known(u"Favoriten");
  expect_known(u"Genre-Filter: " + form1.Combo1.GetText());
}

TEST(TranslationTest, EnglishWindowKeepsNoGermanTextAndItsSymbolsAndGenresAsTheyAre) {
  test_support::ProgramLanguage english(u"English");
  Form1 form1;
  FillAtStart(form1);
  AllControls all(form1);
  Translate(form1, english.language);
  EXPECT_EQ(form1.Frame2.Caption(), u"Saved radio stations");
  EXPECT_EQ(form1.Command8[3].Caption(), u"Delete entry");
  EXPECT_EQ(form1.SymbolListview.Columns()[3].caption, u"Favourite");
  EXPECT_EQ(form1.Label6.Caption(), u"Web link");
  std::vector<Text> symbols;
  for (const controls::CommandButton* button : all.glyphs) symbols.push_back(button->Caption());
  EXPECT_EQ(symbols, (std::vector<Text>{u"8", u"a", u"a", u"a", u"a", u"x"}));
  EXPECT_EQ(form1.Combo1.ListIndex(), 0) << "the genre still is one of the catalogue's";
}

TEST(TranslationTest, LanguageFileInUtf16TranslatesAsItsCopyInTheCodePage) {
  test_support::ProgramLanguage english(u"English");
  test_support::ProgramLanguage wide(u"English", test_support::LanguageEncoding::kUtf16);
  ASSERT_TRUE(wide.language.Translates());
  Form1 form1;
  Form1 wide_form1;
  Translate(form1, english.language);
  Translate(wide_form1, wide.language);
  const AllControls all(form1);
  const AllControls wide_all(wide_form1);
  for (std::size_t index = 0; index < all.captioned.size(); ++index) {
    EXPECT_EQ(all.captioned[index]->Caption(), wide_all.captioned[index]->Caption());
  }
  EXPECT_EQ(wide_form1.lblSav.Caption(), u"Volume");
}

}  // namespace
}  // namespace app
