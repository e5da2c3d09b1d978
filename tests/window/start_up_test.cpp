#include "tests/window/window_fixture.h"

namespace app {
namespace {

using StartUpTest = WindowTest;

TEST_F(StartUpTest, SettingsFolderIsKnownBeforeLoading) {
  Construct();
  EXPECT_EQ(window->GetSettings().SettingsFolder, u"C:\\Daten\\Ordnerzentrale\\");
  EXPECT_EQ(window->GetSettings().StationFileName, u"Funkhaus.ini");
  EXPECT_EQ(Form().Combo1.Items().size(), 0U);
}

TEST_F(StartUpTest, GenresFillTheChoiceInOrderAndTheFirstIsChosen) {
  Start();
  EXPECT_EQ(Form().Combo1.Items(),
            (std::vector<Text>{u"80er/90er", u"Pop & Hits", u"Rock", u"Oldies", u"Schlager & Disco",
                               u"Country", u"Dance", u"Electro,Black Music", u"Klassik", u"Volksmusik",
                               u"Jazz & Blues", u"Gothic", u"Dance", u"Techno & House",
                               u"Nachrichten & Kultur", u"Kinder", u"Sonstiges"}));
  EXPECT_EQ(Form().Combo1.ListIndex(), 0);
}

TEST_F(StartUpTest, BothListsGetTheirSixColumnsOnce) {
  Start();
  EXPECT_EQ(Form().SymbolListview.Columns().size(), 6U);
  EXPECT_EQ(Form().ExplorerListFilter.Columns().size(), 6U);
}

TEST_F(StartUpTest, IconsComeFromTheFolderBesideTheProgramBeforeTheStations) {
  files.listing = {{u"A.ico", false, false}};
  AddStation(u"A", u"http://a/");
  Start();
  EXPECT_EQ(files.patterns, (std::vector<Text>{u"C:\\Programme\\Funkhaus\\RadioIco\\*.*"}));
  EXPECT_EQ(Form().SymbolListview.Rows()[0].icon, 0);
}

TEST_F(StartUpTest, WholeCatalogueIsLoaded) {
  AddStation(u"B", u"http://b/");
  AddStation(u"A", u"http://a/");
  Start();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"A", u"B"}));
  EXPECT_TRUE(Form().SymbolListview.Visible());
  EXPECT_EQ(Form().Frame2.Caption(), u"Gespeicherte Radiostationen");
}

class RestoringTest : public WindowTest {
 protected:
  /// What an earlier run left behind.
  void Leave(bool catalogue_changed, const std::vector<Text>& names) {
    catalogue::UnsavedCatalogue kept{catalogue_changed, {}};
    for (const Text& name : names) kept.rows.emplace_back().row.cells.Set(app::kNameCell, name);
    files.files[kKeptRowsPath] = catalogue::FormatUnsavedRows(kept, conversion);
  }
  const Text& Notice() { return Form().StatusLine.Caption(); }
};

TEST_F(RestoringTest, RowsThatWereNotSavedComeBackUnsavedAndTheStatusLineSaysSo) {
  AddStation(u"M", u"http://m/");
  Leave(true, {u"A", u"Z"});
  Start();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"A", u"M", u"Z"}));
  EXPECT_EQ(Notice(), u"2 nicht gespeicherte Einträge wurden wiederhergestellt.");
  EXPECT_TRUE(window->GetSettings().CatalogueChanged);
  EXPECT_TRUE(profile.writes.empty());

  dialogs.answers = {platform::MessageBoxAnswer::kYes};
  Form().form.Close();
  EXPECT_EQ(BoxTexts().front(), u"Sollen die Änderungen gespeichert werden?");
  EXPECT_TRUE(profile.HasSection(kStationFilePath, u"A"));
  EXPECT_FALSE(HasKeptRows());
}

TEST_F(RestoringTest, FlagOfUnsavedChangesIsAsItWas) {
  Leave(false, {u"Import"});
  Start();
  EXPECT_EQ(Notice(), u"Ein nicht gespeicherter Eintrag wurde wiederhergestellt.");
  EXPECT_FALSE(window->GetSettings().CatalogueChanged);
  Form().form.Close();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_FALSE(HasKeptRows());
}

TEST_F(RestoringTest, RestoredViewHidesTheRowsAndTheyStandInTheFullListAfterIt) {
  profile.Set(kOptIniPath, u"Pfad3", u"FunkhausFavorit", u"1");
  Leave(true, {u"Neu"});
  Start();
  EXPECT_TRUE(Form().ExplorerListFilter.Visible());
  EXPECT_EQ(Form().ExplorerListFilter.Count(), 0U);
  EXPECT_EQ(Notice(), u"Ein nicht gespeicherter Eintrag wurde wiederhergestellt.");
  Form().Check3.Click();
  EXPECT_EQ(Names(Form().SymbolListview), std::vector<Text>{u"Neu"});
}

TEST_F(RestoringTest, WhatCannotBeReadIsReportedAndTheStartContinues) {
  AddStation(u"A", u"http://a/");
  files.files[kKeptRowsPath] = "\xFF nonsense";
  Start();
  EXPECT_EQ(Notice(), u"Die Sicherung nicht gespeicherter Einträge ist unlesbar und wurde beiseitegelegt.");
  EXPECT_EQ(Names(Form().SymbolListview), std::vector<Text>{u"A"});
  EXPECT_FALSE(HasKeptRows());
}

TEST_F(RestoringTest, WithoutSuchRowsTheStatusLineSaysNothing) {
  Start();
  EXPECT_EQ(Notice(), u"");
  EXPECT_EQ(files.writes, 0);
}

TEST_F(StartUpTest, TimersAreOffWithTheirIntervals) {
  Start();
  EXPECT_EQ(Form().tmPlay.Interval(), 500);
  EXPECT_EQ(Form().Timer1.Interval(), 20);
  EXPECT_EQ(Form().Timer2.Interval(), 5000);
  EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled());
}

TEST_F(StartUpTest, RecordedTitleStandsInTheWindowsCaption) {
  Start();
  EXPECT_EQ(Form().form.Caption(), u"Funkhausplayer");
  window->StreamClient()->RecStreamCurrentPlaying(u"Lied", u"", u"");
  EXPECT_EQ(Form().form.Caption(), u"Playing: Lied");
}

TEST_F(StartUpTest, PlayerStartsTheFramework) {
  Start();
  ASSERT_FALSE(media.Calls().empty());
  EXPECT_EQ(media.Calls()[0], "MFStartup(1, 0)");
}

TEST_F(StartUpTest, ViewOneRestoresTheFavourites) {
  AddStation(u"A", u"http://a/", u"Rock", u"1");
  AddStation(u"B", u"http://b/");
  profile.Set(kOptIniPath, u"Pfad3", u"FunkhausFavorit", u"1");
  Start();
  EXPECT_TRUE(Form().Check3.Checked());
  EXPECT_FALSE(Form().Check1.Checked());
  EXPECT_EQ(Form().Frame2.Caption(), u"Favoriten");
  EXPECT_EQ(Names(Form().ExplorerListFilter), std::vector<Text>{u"A"});
}

TEST_F(StartUpTest, ViewTwoRestoresTheGenreViewWithTheFirstGenre) {
  AddStation(u"A", u"http://a/", u"80er/90er");
  AddStation(u"B", u"http://b/");
  profile.Set(kOptIniPath, u"Pfad3", u"FunkhausFavorit", u"2");
  Start();
  EXPECT_TRUE(Form().Check1.Checked());
  EXPECT_EQ(Form().Frame2.Caption(), u"Genre-Filter: 80er/90er");
  EXPECT_EQ(Names(Form().ExplorerListFilter), std::vector<Text>{u"A"});
}

TEST_F(StartUpTest, AnyOtherViewShowsAllStations) {
  for (const char16_t* view : {u"3", u"0", u"", u"11"}) {
    profile.Set(kOptIniPath, u"Pfad3", u"FunkhausFavorit", view);
    Start();
    EXPECT_FALSE(Form().Check1.Checked() || Form().Check3.Checked());
    EXPECT_TRUE(Form().SymbolListview.Visible());
  }
}

TEST_F(StartUpTest, NothingIsReportedAndNothingWrittenWhenEverythingIsMissing) {
  files.folders.clear();
  files.files.clear();
  Start();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_TRUE(profile.writes.empty());
  EXPECT_EQ(Form().SymbolListview.Count(), 0U);
}

TEST_F(StartUpTest, LoadingContinuesWhenTheMediaFrameworkDoesNotStart) {
  media.faults["MFStartup"] = platform::kEFail;
  profile.Set(kOptIniPath, u"Pfad3", u"FunkhausFavorit", u"1");
  Start();
  EXPECT_TRUE(Form().Check3.Checked());
}

TEST_F(StartUpTest, LanguageFileThatIsMissingLeavesTheGermanTexts) {
  profile.Set(kOptIniPath, u"Pfad1", u"Languages", u"Klingon");
  Start();
  EXPECT_EQ(window->GetSettings().LanguageName, u"default");
  EXPECT_EQ(Form().CommandButton1.Caption(), u"Liste speichern");
}

TEST_F(StartUpTest, LanguageFileTranslatesColumnsAndControls) {
  const Text file = u"C:\\Programme\\Funkhaus\\Languages\\English.lng";
  files.files[file] = "";
  profile.Set(kOptIniPath, u"Pfad1", u"Languages", u"English");
  profile.Set(file, u"Common", u"Funkhausplayer", u"Radio House");
  profile.Set(file, u"Common", u"WebLink", u"Link");
  profile.Set(file, u"Common", u"Liste speichern", u"Save list");
  profile.Set(file, u"Common", u"Gespeicherte Radiostationen", u"Saved radio stations");
  profile.Set(file, u"Common", u"80er/90er", u"80s/90s");
  profile.Set(file, u"Common", u"Sender suchen", u"");
  Start();
  EXPECT_EQ(Form().form.Caption(), u"Radio House");
  EXPECT_EQ(Form().SymbolListview.Columns()[2].caption, u"Link");
  EXPECT_EQ(Form().ExplorerListFilter.Columns()[2].caption, u"Link");
  EXPECT_EQ(Form().CommandButton1.Caption(), u"Save list");
  EXPECT_EQ(Form().Frame2.Caption(), u"Saved radio stations");
  EXPECT_EQ(Form().Combo1.GetText(), u"80s/90s");
  EXPECT_EQ(Form().Command2.Caption(), u"Sender suchen") << "an empty translation is none";
  EXPECT_EQ(Form().Command1.Caption(), u"Start") << "a missing key keeps the German text";
}

TEST_F(StartUpTest, MessageBoxesStayGermanInAnotherLanguage) {
  const Text file = u"C:\\Programme\\Funkhaus\\Languages\\English.lng";
  files.files[file] = "";
  profile.Set(kOptIniPath, u"Pfad1", u"Languages", u"English");
  profile.Set(file, u"Common", u"Bitte zuerst eine Radiostation markieren!", u"Please mark a station first!");
  Start();
  Form().Check2.Click();
  EXPECT_EQ(BoxTexts(), std::vector<Text>{u"Bitte zuerst eine Radiostation markieren!"});
}

TEST_F(StartUpTest, StepsRunInTheirOrder) {
  AddStation(u"A", u"http://a/", u"Rock", u"1");
  const Text file = u"C:\\Programme\\Funkhaus\\Languages\\English.lng";
  files.files[file] = "";
  profile.Set(kOptIniPath, u"Pfad1", u"Languages", u"English");
  profile.Set(kOptIniPath, u"Pfad3", u"FunkhausFavorit", u"1");
  profile.Set(file, u"Common", u"Funkhausplayer", u"Radio House");
  profile.Set(file, u"Common", u"Favoriten", u"Favourites");
  Construct();
  Form1& form = Form();
  form.tmPlay.SetEnabled(true);
  form.tmPlay.SetInterval(1);

  std::vector<std::string> steps;
  const auto first = [&steps](const std::string& step) {
    if (std::find(steps.begin(), steps.end(), step) == steps.end()) steps.push_back(step);
  };
  controls::Subscriptions subscriptions;
  subscriptions += form.Combo1.Clicked.Subscribe([&] {
    EXPECT_NE(window->StreamClient(), nullptr);
    first("genres");
  });
  subscriptions += form.SymbolListview.Changed.Subscribe([&] {
    if (form.SymbolListview.Columns().size() < 6) return;
    first(form.SymbolListview.ImageList() == 0 ? "columns of the full list" : "icons");
  });
  subscriptions += form.ExplorerListFilter.Changed.Subscribe([&] {
    if (form.ExplorerListFilter.Columns().size() == 6) first("columns of the filtered list");
  });
  subscriptions += form.SymbolListview.RowsAdded.Subscribe([&](std::size_t, std::size_t) {
    EXPECT_TRUE(media.Calls().empty()) << "the player comes later";
    first("catalogue");
  });
  subscriptions += form.tmPlay.Changed.Subscribe([&] {
    EXPECT_TRUE(media.Calls().empty());
    first("position timer");
  });
  subscriptions += form.ExplorerListFilter.RowsAdded.Subscribe([&](std::size_t, std::size_t) {
    EXPECT_FALSE(media.Calls().empty()) << "the player is there";
    EXPECT_EQ(window->GetSettings().LanguageName, u"");
    first("view");
  });
  subscriptions += form.form.Changed.Subscribe([&] { first("language"); });
  window->Load();

  EXPECT_EQ(steps, (std::vector<std::string>{"genres", "columns of the full list", "icons",
                                             "columns of the filtered list", "catalogue", "position timer",
                                             "view", "language"}));
  EXPECT_FALSE(form.tmPlay.Enabled());
  EXPECT_EQ(form.tmPlay.Interval(), 500);
  EXPECT_EQ(form.Frame2.Caption(), u"Favourites") << "the restored view has named itself before";
}

TEST_F(StartUpTest, IconFileOfAStationThatHasOneIsReportedAndLoadingContinues) {
  files.listing = {{u"A.ico", false, false}, {u"a.ICO", false, false}};
  AddStation(u"A", u"http://a/");
  Start();
  EXPECT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_EQ(Names(Form().SymbolListview), std::vector<Text>{u"A"});
}

}  // namespace
}  // namespace app
