#include "catalogue/new_station_dialog.h"

#include "app/state/genre_list.h"
#include "app/text/text_helpers.h"
#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

class NewStationDialogTest : public CatalogueTest {
 protected:
  /// Shows the dialog and acts on it while it is open.
  void Show(const std::function<void(app::Form2&)>& act) { dialog.Show(act); }

  test_support::FakeClipboard clipboard;
  app::Language language{settings, ini, profile, files, environment};
  NewStationDialog dialog{SymbolListview, settings, language, clipboard, dialogs};
};

TEST_F(NewStationDialogTest, OffersAllGenresInOrderWithTheFirstOneChosen) {
  Show([](app::Form2& form) {
    EXPECT_EQ(form.Combo1.Items(), app::Split(app::GenreList, u";"));
    EXPECT_EQ(form.Combo1.Items().size(), 17U);
    EXPECT_EQ(form.Combo1.GetText(), u"80er/90er");
  });
}

TEST_F(NewStationDialogTest, CarriesItsGermanTexts) {
  Show([](app::Form2& form) {
    EXPECT_EQ(form.form.Caption(), u"Neue Radiostation einfügen");
    EXPECT_EQ(form.Label2[0].Caption(), u"Station");
    EXPECT_EQ(form.Label2[1].Caption(), u"Weblink");
    EXPECT_EQ(form.Label2[2].Caption(), u"Genre:");
    EXPECT_EQ(form.Label1.Caption(),
              u"Das passende Icon (32 Pixel) zur Radiostation muss in den Ordner 'RadioICO' kopiert werden "
              u"(Dateiname ist Radiostationsname)");
    EXPECT_EQ(form.CommandButton1.Caption(), u"Übernehmen");
    EXPECT_EQ(form.CommandButton2.Caption(), u"Abbrechen");
    for (const auto& paste : form.CommandButton3) {
      EXPECT_EQ(paste.ToolTip(), u"Text aus der Zwischenablage einfügen");
    }
  });
}

TEST_F(NewStationDialogTest, AcceptAddsTheRowToTheFullListAndMarksTheCatalogueChanged) {
  Show([](app::Form2& form) {
    form.TextBox1[0].SetText(u" Neu ");
    form.TextBox1[1].SetText(u"http://neu");
    form.Combo1.SetText(u"Eigenes");
    form.CommandButton1.Click();
    EXPECT_TRUE(form.form.IsClosed());
    EXPECT_TRUE(form.CommandButton1.Enabled());
  });
  ASSERT_EQ(SymbolListview.Count(), 1U);
  EXPECT_EQ(SymbolListview.Rows()[0].cells,
            (controls::ListCells{u" Neu ", u"Eigenes", u"http://neu", u"", u"", u""}));
  EXPECT_EQ(SymbolListview.Rows()[0].icon, -1);
  EXPECT_TRUE(settings.CatalogueChanged);
  EXPECT_TRUE(profile.writes.empty());
}

TEST_F(NewStationDialogTest, AcceptWithOnlyANameTakesTheGenreShown) {
  Show([](app::Form2& form) {
    form.TextBox1[0].SetText(u"Neu");
    form.CommandButton1.Click();
  });
  EXPECT_EQ(SymbolListview.Rows()[0].cells[app::kGenreCell], u"80er/90er");
  EXPECT_EQ(SymbolListview.Rows()[0].cells[app::kLinkCell], u"");
}

TEST_F(NewStationDialogTest, AcceptWithoutANameSaysSoAndKeepsWhatWasTyped) {
  Show([&](app::Form2& form) {
    form.TextBox1[1].SetText(u"http://neu");
    form.Combo1.SetText(u"Rock");
    form.CommandButton1.Click();
    EXPECT_FALSE(form.form.IsClosed());
    EXPECT_EQ(form.TextBox1[1].GetText(), u"http://neu");
    EXPECT_EQ(form.Combo1.GetText(), u"Rock");
  });
  EXPECT_EQ(dialogs.boxes, (std::vector<test_support::FakeDialogs::Box>{
                               {u"Bitte geben Sie einen Namen für die Radiostation ein!", u"", 64}}));
  EXPECT_EQ(SymbolListview.Count(), 0U);
  EXPECT_FALSE(settings.CatalogueChanged);
}

TEST_F(NewStationDialogTest, NameOfBlanksIsANameAndTheGenreTheFirstOne) {
  Show([](app::Form2& form) {
    EXPECT_EQ(form.Combo1.ListIndex(), 0);
    form.TextBox1[0].SetText(u"  ");
    form.CommandButton1.Click();
    EXPECT_TRUE(form.form.IsClosed());
  });
  EXPECT_TRUE(dialogs.boxes.empty());
  ASSERT_EQ(SymbolListview.Count(), 1U);
  EXPECT_EQ(SymbolListview.Rows()[0].cells, (controls::ListCells{u"  ", u"80er/90er"}));
  EXPECT_TRUE(settings.CatalogueChanged);
}

TEST_F(NewStationDialogTest, SecondClickWhileTheRowIsAddedAddsNoSecondRow) {
  int announced = 0;
  Show([&](app::Form2& form) {
    form.TextBox1[0].SetText(u"Neu");
    const auto subscription = SymbolListview.RowsAdded.Subscribe([&](std::size_t, std::size_t) {
      ++announced;
      EXPECT_FALSE(form.CommandButton1.Enabled());
      form.CommandButton1.Click();
    });
    form.CommandButton1.Click();
  });
  EXPECT_EQ(announced, 1);
  EXPECT_EQ(SymbolListview.Count(), 1U);
}

TEST_F(NewStationDialogTest, NextUseBeginsEmpty) {
  Show([](app::Form2& form) {
    form.TextBox1[0].SetText(u"Neu");
    form.TextBox1[1].SetText(u"http://neu");
    form.Combo1.SetText(u"Rock");
    form.CommandButton2.Click();
  });
  NewStationDialog next(SymbolListview, settings, language, clipboard, dialogs);
  next.Show([](app::Form2& form) {
    EXPECT_EQ(form.TextBox1[0].GetText(), u"");
    EXPECT_EQ(form.TextBox1[1].GetText(), u"");
    EXPECT_EQ(form.Combo1.GetText(), u"80er/90er");
  });
}

TEST_F(NewStationDialogTest, RowGoesToTheFullListAlsoWhileAFilterIsShown) {
  Check3.Click();
  Show([](app::Form2& form) {
    form.TextBox1[0].SetText(u"Neu");
    form.CommandButton1.Click();
  });
  EXPECT_EQ(Names(SymbolListview), std::vector<Text>{u"Neu"});
  EXPECT_EQ(ExplorerListFilter.Count(), 0U);
}

TEST_F(NewStationDialogTest, SecondStationOfTheSameNameBecomesASecondRow) {
  AddRow(SymbolListview, u"Neu");
  Show([](app::Form2& form) {
    form.TextBox1[0].SetText(u"Neu");
    form.CommandButton1.Click();
  });
  EXPECT_EQ(SymbolListview.Count(), 2U);
}

TEST_F(NewStationDialogTest, CancelChangesNothing) {
  Show([](app::Form2& form) {
    form.TextBox1[0].SetText(u"Neu");
    form.CommandButton2.Click();
    EXPECT_TRUE(form.form.IsClosed());
  });
  EXPECT_EQ(SymbolListview.Count(), 0U);
  EXPECT_FALSE(settings.CatalogueChanged);
}

TEST_F(NewStationDialogTest, PasteReplacesTheTextOfItsOwnBox) {
  Show([&](app::Form2& form) {
    form.TextBox1[0].SetText(u"alt");
    form.TextBox1[1].SetText(u"alt");
    clipboard.text = u"http://aus der Ablage";
    form.CommandButton3[1].Click();
    EXPECT_EQ(form.TextBox1[0].GetText(), u"alt");
    EXPECT_EQ(form.TextBox1[1].GetText(), u"http://aus der Ablage");
    clipboard.text.clear();
    form.CommandButton3[0].Click();
    EXPECT_EQ(form.TextBox1[0].GetText(), u"");
  });
}

TEST_F(NewStationDialogTest, CaptionsAndMessageAreTranslatedAndTooltipsStayGerman) {
  const Text file = u"C:\\Programme\\Funkhaus\\Languages\\English.lng";
  settings.LanguageName = u"English";
  profile.Set(file, u"Common", u"Abbrechen", u"Cancel");
  profile.Set(file, u"Common", u"Genre:", u"Kind:");
  profile.Set(file, u"Common", u"Text aus der Zwischenablage einfügen", u"Paste");
  profile.Set(file, u"Common", u"Bitte geben Sie einen Namen für die Radiostation ein!", u"A name, please!");
  Show([](app::Form2& form) {
    EXPECT_EQ(form.CommandButton2.Caption(), u"Cancel");
    EXPECT_EQ(form.Label2[2].Caption(), u"Kind:");
    EXPECT_EQ(form.CommandButton1.Caption(), u"Übernehmen") << "without a translation it stays German";
    EXPECT_EQ(form.CommandButton3[0].ToolTip(), u"Text aus der Zwischenablage einfügen");
    form.CommandButton1.Click();
  });
  EXPECT_EQ(dialogs.boxes[0].text, u"A name, please!");
}

}  // namespace
}  // namespace catalogue
