// Imported rows through edits, views and saving: none is lost, doubled or mixed up.
#include <algorithm>

#include "tests/journeys/catalogue_journey.h"

namespace app {
namespace {

using controls::RowId;
using platform::MessageBoxAnswer;

class UnsavedRowsJourney : public CatalogueJourney {
 protected:
  UnsavedRowsJourney() { Start("[Alt]\r\nLink=http://alt\r\nGenre=Rock\r\n; Notiz\r\nFremd=1\r\n"); }

  /// Appends the entries of a playlist, each line with `line_end`.
  void Import(const std::vector<std::string>& lines, const std::string& line_end = "\n") {
    std::string playlist = "#EXTM3U" + line_end;
    for (const std::string& line : lines) playlist += line + line_end;
    folder.Write("liste.m3u", playlist);
    dialogs.chosen_file = folder.TextPath("liste.m3u");
    dialogs.answers = {MessageBoxAnswer::kYes};
    Form().Command5.Click();
  }
  RowId LastRow() { return Form().SymbolListview.RowAt(Form().SymbolListview.Count() - 1); }
  void LookAtTheFavourites() {
    Form().Check3.Click();
    Form().Check3.Click();
  }
  std::vector<Text> Links() {
    std::vector<Text> links;
    for (const controls::ListRow& row : Form().SymbolListview.Rows()) {
      links.push_back(row.cells[kLinkCell]);
    }
    return links;
  }
};

TEST_F(UnsavedRowsJourney, MarkedImportStaysOneRowWhateverItsNameLooksLike) {
  const std::vector<std::pair<std::string, std::string>> entries = {
      {"#EXTINF:-1, Radio X", "\n"},          // a blank after the comma
      {"#EXTINF:-1,Radio X", "\r\n"},         // the CR stays at the name's end
      {"#EXTINF:-1,\tRadio X \t", "\n"},      // blanks and tabs at both ends
      {"#EXTINF:-1,K\xFCste \xC4\xD6", "\n"}  // letters of the code page
  };
  for (const auto& [entry, line_end] : entries) {
    Start("");
    Import({entry, "http://x"}, line_end);
    ASSERT_TRUE(Form().SymbolListview.Select(LastRow()));
    Form().Check2.Click();
    Form().Combo1.Type(u"Jazz");
    Form().Command8[4].Click();
    LookAtTheFavourites();
    ASSERT_EQ(Form().SymbolListview.Count(), 1U) << entry;
    const controls::ListRow row = Form().SymbolListview.Rows()[0];
    EXPECT_EQ(row.cells[kLinkCell].substr(0, 8), u"http://x");
    EXPECT_EQ(row.cells[kGenreCell], u"Jazz");
    EXPECT_EQ(row.cells[kFavouriteCell], u"1");
    Form().CommandButton1.Click();
    LookAtTheFavourites();
    EXPECT_EQ(Links(), std::vector<Text>{u"http://x"});
    EXPECT_NE(Stations().find("Link=http://x\r\n"), std::string::npos);
  }
}

TEST_F(UnsavedRowsJourney, NameOutsideTheCodePageStaysOneRowToo) {
  new_name = u"Радио";
  new_link = u"http://r";
  dialogs.answers = {MessageBoxAnswer::kNo};
  Form().CommandButton2.Click();
  ASSERT_TRUE(Form().SymbolListview.Select(LastRow()));
  Form().Check2.Click();
  LookAtTheFavourites();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Alt", u"Радио"}));
  EXPECT_EQ(Links(), (std::vector<Text>{u"http://alt", u"http://r"}));
}

TEST_F(UnsavedRowsJourney, SecondStationOfANameKeepsItsOwnLinkWhenItIsMarked) {
  Import({"#EXTINF:-1, ALT", "http://zweiter"});
  ASSERT_TRUE(Form().SymbolListview.Select(LastRow()));
  Form().Check2.Click();
  LookAtTheFavourites();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u" ALT", u"Alt"}));
  EXPECT_EQ(Links(), (std::vector<Text>{u"http://zweiter", u"http://alt"}));
}

TEST_F(UnsavedRowsJourney, UnsavedRowsStandAmongTheLoadedOnesInTheOrderThatTheHeaderShows) {
  Import({"#EXTINF:-1,Zett", "http://z", "#EXTINF:-1,Aber", "http://a"});
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Alt", u"Zett", u"Aber"}));
  LookAtTheFavourites();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Aber", u"Alt", u"Zett"}));
  Form().SymbolListview.ClickHeader(0);
  LookAtTheFavourites();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Zett", u"Alt", u"Aber"}));
}

TEST_F(UnsavedRowsJourney, SaveOnAFullDiskLosesNothing) {
  const std::string before = Stations();
  dialogs.answers = {MessageBoxAnswer::kYes};
  SetDiskFull(true);
  Form().CommandButton2.Click();
  SetDiskFull(false);
  EXPECT_EQ(Stations(), before);
  EXPECT_EQ(dialogs.boxes.back().text, u"Änderungen gespeichert!");
  EXPECT_EQ(Form().StatusLine.Caption(),
            u"Nicht gespeichert: " + folder.TextPath(kStationFile) + u" konnte nicht geschrieben werden.");
  LookAtTheFavourites();
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().form.Close();
  EXPECT_EQ(Stations(), before +
                            "Favorit=\r\nM3uNr=\r\n[Neu]\r\nGenre=80er/90er\r\nLink=http://neu\r\n"
                            "Favorit=\r\nM3uNr=\r\n")
      << "closing asks, and the save succeeds";
}

TEST_F(UnsavedRowsJourney, SaveIntoAFolderThatIsGoneStaysAnUnsavedChange) {
  std::filesystem::rename(folder.Path() / "config", folder.Path() / "away");
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().CommandButton2.Click();
  EXPECT_TRUE(window->GetSettings().CatalogueChanged);
  std::filesystem::rename(folder.Path() / "away", folder.Path() / "config");
  Form().CommandButton1.Click();
  EXPECT_FALSE(window->GetSettings().CatalogueChanged);
  EXPECT_NE(Stations().find("[Neu]"), std::string::npos);
}

TEST_F(UnsavedRowsJourney, FolderThatIsMovedAwayIsNotMadeAgainAndComesBackWithItsComments) {
  const std::string before = Stations();
  const std::filesystem::path place = folder.Path() / "config/Ordnerzentrale";
  const std::filesystem::path elsewhere = folder.Path() / "config/Woanders";
  std::filesystem::rename(place, elsewhere);
  Select(u"Alt");
  Form().Check2.Click();
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().CommandButton2.Click();
  EXPECT_EQ(dialogs.boxes.back().text, u"Änderungen gespeichert!");
  EXPECT_EQ(Form().StatusLine.Caption(),
            u"Nicht gespeichert: " + folder.TextPath(kStationFile) + u" konnte nicht geschrieben werden.");
  ASSERT_FALSE(std::filesystem::exists(place)) << "it would be in the way of the old one";
  std::filesystem::rename(elsewhere, place);
  EXPECT_EQ(Stations(), before);
  Form().CommandButton1.Click();
  EXPECT_EQ(Stations(), before +
                            "Favorit=1\r\nM3uNr=\r\n[Neu]\r\nGenre=80er/90er\r\nLink=http://neu\r\n"
                            "Favorit=\r\nM3uNr=\r\n");
  EXPECT_FALSE(window->GetSettings().CatalogueChanged);
}

/// The program is killed, a moment after the last change, and started again.
class KilledJourney : public UnsavedRowsJourney {
 protected:
  void KillAndRestart() {
    Form().tmUnsaved.Fire();
    Restart();
  }
  [[nodiscard]] bool IsKept() const { return folder.Read("state.unsaved") != "<missing>"; }
};

TEST_F(KilledJourney, ImportComesBackAsItWasAndNothingReachesTheStationFile) {
  const std::string before = Stations();
  Import({"#EXTINF:-1,K\xFCste", "http://k", "#EXTINF:-1, Radio X\t", "http://x"}, "\r\n");
  const auto names = Names(Form().SymbolListview);
  const auto links = Links();
  KillAndRestart();
  LookAtTheFavourites();
  std::vector<Text> expected = names;
  std::sort(expected.begin(), expected.end());
  std::vector<Text> found = Names(Form().SymbolListview);
  std::sort(found.begin(), found.end());
  EXPECT_EQ(found, expected) << "CR, blanks and tabs included";
  EXPECT_EQ(Links().size(), links.size());
  EXPECT_EQ(Stations(), before);
  EXPECT_EQ(Form().StatusLine.Caption(), u"2 nicht gespeicherte Einträge wurden wiederhergestellt.");
}

TEST_F(KilledJourney, RowOfWhichSingleCellsWereWrittenIsNeverDoubled) {
  Import({"#EXTINF:-1, Radio X", "http://x"});
  ASSERT_TRUE(Form().SymbolListview.Select(LastRow()));
  Form().Check2.Click();
  for (int round = 0; round < 2; ++round) {
    KillAndRestart();
    ASSERT_EQ(Form().SymbolListview.Count(), 2U);
    const RowId row = RowNamed(Form().SymbolListview, u" Radio X");
    EXPECT_EQ(Form().SymbolListview.Cell(row, kLinkCell), u"http://x");
    EXPECT_EQ(Form().SymbolListview.Cell(row, kFavouriteCell), u"1");
    ASSERT_TRUE(Form().SymbolListview.Select(row));
    Form().Combo1.Type(u"Jazz");
    Form().Command8[4].Click();
  }
  Form().CommandButton1.Click();
  EXPECT_FALSE(IsKept());
  Restart();
  EXPECT_EQ(Links(), (std::vector<Text>{u"http://alt", u"http://x"}));
}

TEST_F(KilledJourney, RowWhoseSectionAFilterViewDeletesStaysDeleted) {
  Import({"#EXTINF:-1,X", "http://x"});
  ASSERT_TRUE(Form().SymbolListview.Select(LastRow()));
  Form().Check2.Click();
  Form().Check3.Click();
  ASSERT_TRUE(Form().ExplorerListFilter.Select(RowNamed(Form().ExplorerListFilter, u"X")));
  Form().Command8[3].Click();
  KillAndRestart();
  EXPECT_EQ(Names(Form().SymbolListview), std::vector<Text>{u"Alt"});
  EXPECT_FALSE(IsKept());
}

TEST_F(KilledJourney, StationThatAnotherProgramAddedMeanwhileStandsBesideTheRow) {
  Import({"#EXTINF:-1,Neu", "http://meiner"});
  Form().tmUnsaved.Fire();
  window.reset();
  const std::string foreign = Stations() + "[Neu]\r\nLink=http://fremd\r\nFremd=2\r\n";
  folder.Write(kStationFile, foreign);
  Restart();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Alt", u"Neu", u"Neu"}));
  EXPECT_EQ(Stations(), foreign);
}

TEST_F(KilledJourney, RowsComeBackAgainAndAgainUntilTheyAreSaved) {
  new_name = u"Neu";
  new_link = u"http://neu";
  dialogs.answers = {MessageBoxAnswer::kNo};
  Form().CommandButton2.Click();
  for (int round = 0; round < 3; ++round) KillAndRestart();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Alt", u"Neu"}));
  EXPECT_TRUE(window->GetSettings().CatalogueChanged);
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().form.Close();
  EXPECT_FALSE(IsKept());
  Restart();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"Alt", u"Neu"}));
  EXPECT_FALSE(window->GetSettings().CatalogueChanged);
}

TEST_F(KilledJourney, StateFolderThatCannotBeWrittenHoldsUpNothing) {
  environment.state_file = folder.TextPath("missing/state");
  Restart();
  Import({"#EXTINF:-1,Neu", "http://neu"});
  KillAndRestart();
  EXPECT_EQ(Names(Form().SymbolListview), std::vector<Text>{u"Alt"});
}

}  // namespace
}  // namespace app
