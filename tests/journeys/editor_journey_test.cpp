// What the station file on the disk says after each action of the editor, byte for byte.
#include "tests/journeys/catalogue_journey.h"

namespace app {
namespace {

using controls::CheckValue;
using controls::RowId;
using platform::MessageBoxAnswer;

// Written by hand in places: comments, odd order, a key of another program, blank lines.
const std::string kTop = "; Meine Sender\r\n\r\n";
const std::string kA =
    "[Radio A]\r\nStation=Radio A\r\nLink=http://a\r\nGenre=Rock\r\nFavorit=1\r\nM3uNr=2\r\n";
const std::string kB =
    "[Radio B]\r\nGenre=Dance\r\n; geht nur abends\r\nLink=http://b\r\nNotiz=bleibt\r\n\r\n";
const std::string kC =
    "[K\xFCste]\r\nStation=K\xFCste\r\nLink=http://c\r\nGenre=Oldies\r\nFavorit=\r\nM3uNr=\r\n";
const std::string kAll = kTop + kA + kB + kC;

class EditorJourney : public CatalogueJourney {
 protected:
  EditorJourney() { Start(kAll); }
  void Press(std::size_t index) { Form().Command8[index].Click(); }
};

TEST_F(EditorJourney, StartAndLookingRoundWriteNothing) {
  Select(u"Radio A");
  Form().Check1.Click();
  Form().Check3.Click();
  Form().Check3.Click();
  Form().SymbolListview.ClickHeader(1);
  EXPECT_EQ(Stations(), kAll);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(EditorJourney, ApplyingTheLinkChangesOneLine) {
  Select(u"Radio A");
  Form().TextBox1[1].SetText(u"http://anders");
  Press(2);
  EXPECT_EQ(Stations(),
            kTop +
                "[Radio A]\r\nStation=Radio A\r\nLink=http://anders\r\nGenre=Rock\r\nFavorit=1\r\n"
                "M3uNr=2\r\n" +
                kB + kC);
}

TEST_F(EditorJourney, ApplyingTheGenreChangesOneLineAmongWhatIsNotTheProgramsOwn) {
  Select(u"Radio B");
  Form().Combo1.Type(u"Jazz & Blues");
  Press(4);
  EXPECT_EQ(Stations(), kTop + kA +
                            "[Radio B]\r\nGenre=Jazz & Blues\r\n; geht nur abends\r\nLink=http://b\r\n"
                            "Notiz=bleibt\r\n\r\n" +
                            kC);
}

TEST_F(EditorJourney, ApplyingTheNumberAddsTheMissingKeyBeforeTheBlankLine) {
  Select(u"Radio B");
  Form().UpDownTextBox1.SetText(u"3");
  Press(0);
  EXPECT_EQ(Stations(),
            kTop + kA +
                "[Radio B]\r\nGenre=Dance\r\n; geht nur abends\r\nLink=http://b\r\nNotiz=bleibt\r\n"
                "M3uNr=3\r\n\r\n" +
                kC);
}

TEST_F(EditorJourney, FavouriteMarkIsWrittenAtOnceAndTakenBackAsAnEmptyValue) {
  Select(u"Küste");
  Form().Check2.Click();
  EXPECT_EQ(Stations(), kTop + kA + kB +
                            "[K\xFCste]\r\nStation=K\xFCste\r\nLink=http://c\r\nGenre=Oldies\r\nFavorit=1\r\n"
                            "M3uNr=\r\n");
  Form().Check2.Click();
  EXPECT_EQ(Stations(), kAll);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(EditorJourney, FavouriteTakenBackInTheFavouritesViewStaysUntilTheViewIsLoadedAgain) {
  Form().Check3.Click();
  SelectIn(Form().ExplorerListFilter, u"Radio A");
  Form().Check2.Click();
  EXPECT_EQ(Form().ExplorerListFilter.Count(), 1U);
  EXPECT_NE(Stations().find("Genre=Rock\r\nFavorit=\r\nM3uNr=2\r\n"), std::string::npos);
  Form().Check3.Click();
  Form().Check3.Click();
  EXPECT_EQ(Form().ExplorerListFilter.Count(), 0U);
}

TEST_F(EditorJourney, DeletingRemovesTheSectionAndNothingElse) {
  Select(u"Radio A");
  Press(3);
  EXPECT_EQ(Stations(), kTop + kB + kC);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(EditorJourney, DeletedEntriesComeBackByteForByte) {
  for (const char16_t* name : {u"Radio A", u"Küste"}) {
    Select(name);
    Press(3);
  }
  Form().Check1.Click();
  Form().Combo1.Type(u"Dance");
  Form().Combo1.Clicked.Raise();
  SelectIn(Form().ExplorerListFilter, u"Radio B");
  Press(3);
  ASSERT_EQ(Stations(), kTop);
  Form().UndoDelete.Click();
  EXPECT_EQ(Stations(), kTop + kB);
  Form().Check1.Click();
  Form().UndoDelete.Click();
  Form().UndoDelete.Click();
  EXPECT_EQ(Stations(), kAll);
  EXPECT_EQ(Form().StatusLine.Caption(), u"„Radio A“ ist wieder da.");
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Küste", u"Radio A", u"Radio B"}));
}

TEST_F(EditorJourney, NewEntryIsWrittenBehindTheOthersWithAllKeysInTheirOrder) {
  FillFields(u"Grüner Hügel", u"http://g", u"Klassik", u"");
  Form().Check2.SetValue(CheckValue::kUnchecked);
  Press(1);
  EXPECT_EQ(Stations(), kAll +
                            "[Gr\xFCner H\xFCgel]\r\nStation=Gr\xFCner H\xFCgel\r\nLink=http://g\r\n"
                            "Genre=Klassik\r\nFavorit=\r\nM3uNr=\r\n");
}

TEST_F(EditorJourney, UpdateWritesTheSectionAnewBehindTheOthersWithoutANumberBelowOne) {
  Select(u"Radio A");
  FillFields(u"Radio A", u"http://a2", u"Rock", u"0");
  Press(1);
  EXPECT_EQ(Stations(),
            kTop + kB + kC + "[Radio A]\r\nStation=Radio A\r\nLink=http://a2\r\nGenre=Rock\r\nFavorit=1\r\n");
}

TEST_F(EditorJourney, UpdateWithAnotherNameLeavesNothingOfTheOldOne) {
  Select(u"Radio A");
  const auto position = Form().SymbolListview.IndexOf(RowNamed(Form().SymbolListview, u"Radio A"));
  FillFields(u"Zuletzt", u"http://z", u"Rock", u"4");
  Press(1);
  EXPECT_EQ(Stations(), kTop + kB + kC +
                            "[Zuletzt]\r\nStation=Zuletzt\r\nLink=http://z\r\nGenre=Rock\r\nFavorit=1\r\n"
                            "M3uNr=4\r\n");
  EXPECT_EQ(Form().SymbolListview.IndexOf(RowNamed(Form().SymbolListview, u"Zuletzt")), position);
}

TEST_F(EditorJourney, SavingAddsTheMissingKeysWithEmptyValuesAndKeepsEveryOtherLine) {
  Form().CommandButton1.Click();
  EXPECT_EQ(Stations(),
            kTop + kA +
                "[Radio B]\r\nGenre=Dance\r\n; geht nur abends\r\nLink=http://b\r\nNotiz=bleibt\r\n"
                "Favorit=\r\nM3uNr=\r\n\r\n" +
                kC);
  ASSERT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_EQ(dialogs.boxes[0].text, u"Änderungen gespeichert!");
}

TEST_F(EditorJourney, StationOfTheDialogReachesTheFileOnlyByTheSave) {
  dialogs.answers = {MessageBoxAnswer::kNo};
  Form().CommandButton2.Click();
  EXPECT_EQ(Stations(), kAll);
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().form.Close();
  EXPECT_EQ(Stations().substr(Stations().rfind('[')),
            "[Neu]\r\nGenre=80er/90er\r\nLink=http://neu\r\nFavorit=\r\nM3uNr=\r\n");
  Restart();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Küste", u"Neu", u"Radio A", u"Radio B"}));
}

TEST_F(EditorJourney, RefusedSaveWritesNothing) {
  Form().Check3.Click();
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().CommandButton2.Click();
  ASSERT_EQ(dialogs.boxes.size(), 2U);
  EXPECT_EQ(dialogs.boxes[1].text, u"Bitte zuerst den Filter entfernen!");
  EXPECT_EQ(Stations(), kAll);
  dialogs.boxes.clear();
  Form().form.Close();
  EXPECT_TRUE(dialogs.boxes.empty()) << "the catalogue counts as saved";
  EXPECT_EQ(Stations(), kAll);
}

TEST_F(EditorJourney, SwitchingViewsLosesNoUnsavedStation) {
  dialogs.answers = {MessageBoxAnswer::kNo};
  Form().CommandButton2.Click();
  Form().Check1.Click();
  Form().Check3.Click();
  Form().Check3.Click();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Küste", u"Neu", u"Radio A", u"Radio B"}));
  EXPECT_EQ(Stations(), kAll);
}

TEST_F(EditorJourney, EndOfTheSessionInAFilterViewKeepsTheUnsavedStationAndTheFileAsItIs) {
  Form().Check3.Click();
  SelectIn(Form().ExplorerListFilter, u"Radio A");
  Press(3);
  dialogs.answers = {MessageBoxAnswer::kNo};
  Form().CommandButton2.Click();
  dialogs.boxes.clear();
  const std::string stations = Stations();
  Form().form.Close(controls::CloseReason::kSessionEnd);
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(Stations(), stations);
  EXPECT_EQ(folder.Read(kOptFile), "[Pfad3]\r\nFunkhausFavorit=1\r\n");

  Restart();
  Form().Check3.Click();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Küste", u"Neu", u"Radio B"}));
  Form().CommandButton1.Click();
  EXPECT_EQ(Stations(),
            kTop +
                "[Radio B]\r\nGenre=Dance\r\n; geht nur abends\r\nLink=http://b\r\nNotiz=bleibt\r\n"
                "Favorit=\r\nM3uNr=\r\n\r\n" +
                kC + "[Neu]\r\nGenre=80er/90er\r\nLink=http://neu\r\nFavorit=\r\nM3uNr=\r\n");
}

TEST_F(EditorJourney, OptIniKeepsWhatBelongsToOtherPrograms) {
  const std::string before =
      "; Familie\r\n[Pfad1]\r\nLanguages=\r\nLaufwerk=D\r\n\r\n[Pfad3]\r\nAndere=1\r\n";
  folder.Write(kOptFile, before);
  Restart();
  Form().Check1.Click();
  Form().form.Close();
  EXPECT_EQ(folder.Read(kOptFile), before + "FunkhausFavorit=2\r\n");
  Restart();
  EXPECT_TRUE(Form().Check1.Checked());
}

}  // namespace
}  // namespace app
