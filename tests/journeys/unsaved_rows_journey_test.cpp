// Imported rows on their way through take-overs, views and saving: none is lost, doubled or mixed up.
#include "tests/journeys/catalogue_journey.h"
#include "tests/support/full_disk.h"

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
  {
    const test_support::FullDisk disk;
    Form().CommandButton2.Click();
  }
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

}  // namespace
}  // namespace app
