// The main window without widgets on a real station file: started, operated, closed, started again.

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "app/state/station.h"
#include "player/mf_player.h"
#include "tests/journeys/catalogue_journey.h"

namespace app {
namespace {

/// A comment, an unknown key and odd spacing, none of which belongs to the program.
constexpr char kStations[] =
    "; meine Sender\r\n"
    "[Radio 10]\r\nStation=Radio 10\r\nLink=http://zehn.example/live\r\nGenre=Rock\r\nFavorit=1\r\nM3uNr=\r\n"
    "\r\n"
    "[Radio 2]\r\nLink = http://zwei.example/live\r\nGenre=80er/90er\r\nNotiz=bleibt\r\n"
    "[K\xFCstenfunk S\xFC"
    "d]\r\nLink=\"http://kueste.example/live\"\r\nGenre=Pop & Hits\r\n";

class StartJourney : public CatalogueJourney {
 protected:
  StartJourney() {
    folder.Write(kStationFile, kStations);
    folder.Write(kOptFile, "[Pfad1]\r\nandere=1\r\n");
    folder.Write(
        "program/RadioIco/K\xC3\xBCstenfunk S\xC3\xBC"
        "d.ICO",
        "ico");
    folder.Write("program/RadioIco/liesmich.txt", "");
    internet.answer.status = u"404";
  }

  std::vector<Text> AllNames() { return Names(Form().SymbolListview); }
};

TEST_F(StartJourney, CatalogueIsShownInNaturalOrderWithUmlautsAndIcons) {
  Restart();
  EXPECT_EQ(AllNames(), (std::vector<Text>{u"Küstenfunk Süd", u"Radio 2", u"Radio 10"}));
  const controls::ListRow& coast = Form().SymbolListview.Rows()[0];
  EXPECT_EQ(coast.icon, 0);
  EXPECT_EQ(coast.cells[app::kLinkCell], u"http://kueste.example/live");
  EXPECT_EQ(Form().SymbolListview.Rows()[1].icon, -1);
  EXPECT_EQ(Form().SymbolListview.Rows()[2].cells[app::kFavouriteCell], u"1");
}

TEST_F(StartJourney, LookingAroundChangesNoByteOfTheStationFile) {
  Restart();
  for (const controls::ListRow& row : std::vector<controls::ListRow>(Form().SymbolListview.Rows())) {
    Form().SymbolListview.Select(row.id);
  }
  Form().SymbolListview.ClickHeader(1);
  Form().Check3.Click();
  Form().Check1.Click();
  Form().Check1.Click();
  Form().form.Close();
  EXPECT_EQ(Stations(), kStations);
}

TEST_F(StartJourney, StationIsSelectedStartedHeardAndStopped) {
  Restart();
  Form().SymbolListview.Select(Form().SymbolListview.RowAt(1));
  EXPECT_EQ(Form().TextBox1[1].GetText(), u"http://zwei.example/live");
  Form().Command1.Click();
  EXPECT_TRUE(Form().tmPlay.Enabled());
  media.play_state = player::kPlayStateRunning;
  media.position = 30'000'000;
  media.channel_peaks = {0.25F, 0.5F};
  Form().tmPlay.Fire();
  Form().Timer1.Fire();
  EXPECT_EQ(Form().Label1.Caption(), u"Pos: 00:00:03");
  EXPECT_EQ(Form().ProgressBar1[1].Value(), 5000);
  Form().Command6.Click();
  EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled());
  Form().form.Close();
  EXPECT_TRUE(media.LiveHandles().empty());
  EXPECT_TRUE(media.Misuses().empty());
}

TEST_F(StartJourney, FavouriteMarkTouchesItsLineOnly) {
  Restart();
  Form().SymbolListview.Select(Form().SymbolListview.RowAt(2));
  Form().Check2.Click();
  std::string expected = kStations;
  expected.replace(expected.find("Favorit=1"), 9, "Favorit=");
  EXPECT_EQ(Stations(), expected);
}

TEST_F(StartJourney, ViewIsRememberedFromOneStartToTheNext) {
  Restart();
  Form().Check3.Click();
  Form().form.Close();
  EXPECT_EQ(folder.Read(kOptFile), "[Pfad1]\r\nandere=1\r\n[Pfad3]\r\nFunkhausFavorit=1\r\n");
  Restart();
  EXPECT_TRUE(Form().Check3.Checked());
  EXPECT_EQ(Form().Frame2.Caption(), u"Favoriten");
  EXPECT_EQ(Form().ExplorerListFilter.Count(), 1U);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StartJourney, UsersMovedFolderHoldsBothFiles) {
  const std::string moved = (folder.Path() / "umgezogen").string() + "/";
  folder.Write("umgezogen/Funkhaus.ini", "[Dort]\r\nLink=http://dort/\r\n");
  folder.Write(kOptFile, "[Pfad3]\r\nIsUserIniChange=1\r\nUserIniPfad=" + moved + "\r\n");
  Restart();
  EXPECT_EQ(AllNames(), std::vector<Text>{u"Dort"});
  Form().form.Close();
  EXPECT_EQ(folder.Read("umgezogen/Opt.ini"), "[Pfad3]\r\nFunkhausFavorit=0\r\n");
}

TEST_F(StartJourney, FirstStartOnAnEmptyMachineMakesTheFolder) {
  environment.variables[u"APPDATA"] = folder.TextPath("leer");
  std::filesystem::create_directory(folder.Path() / "leer");
  Restart();
  EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "leer/Ordnerzentrale"));
  EXPECT_EQ(Form().SymbolListview.Count(), 0U);
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StartJourney, BinaryStationFileDoesNoHarm) {
  std::string bytes;
  for (int index = 0; index < 70000; ++index) bytes.push_back(static_cast<char>(index * 7 % 256));
  folder.Write(kStationFile, bytes);
  Restart();
  Form().form.Close();
  EXPECT_EQ(Stations(), bytes);
}

}  // namespace
}  // namespace app
