// Catalogues of the sizes that people have, and the largest that the station file's list of names allows.
#include <algorithm>

#include "tests/journeys/catalogue_journey.h"

namespace app {
namespace {

using platform::MessageBoxAnswer;

class LargeCatalogue : public CatalogueJourney {
 protected:
  /// "Sender 00042": the given number of characters.
  static std::string Name(int number, std::size_t length) {
    std::string name = std::to_string(number);
    name.insert(0, 5 - name.size(), '0');
    name.insert(0, "Sender ");
    name.append(length - name.size(), 'x');
    return name;
  }
  static std::string Section(const std::string& name, int number) {
    const std::string mark = number % 3 == 0 ? "1" : "";
    const std::string entry = number % 5 == 1 ? "2" : "";
    return "[" + name + "]\r\nStation=" + name + "\r\nLink=http://127.0.0.1/" + std::to_string(number) +
           "\r\nGenre=" + (number % 2 == 0 ? "Rock" : "80er/90er") + "\r\nFavorit=" + mark +
           "\r\nM3uNr=" + entry + "\r\n";
  }
  static Text Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }
};

TEST_F(LargeCatalogue, ThreeHundredStationsLoadAndSaveWhole) {
  std::string stations;
  for (int number = 0; number < 300; ++number) stations += Section(Name(number, 12), number);
  Start(stations);
  ASSERT_EQ(Form().SymbolListview.Count(), 300U);
  const controls::ListRow& row = Form().SymbolListview.Rows()[36];
  EXPECT_EQ(row.cells,
            (controls::ListCells{u"Sender 00036", u"Rock", u"http://127.0.0.1/36", u"1", u"", u"2"}));
  Form().CommandButton1.Click();
  EXPECT_EQ(Stations(), stations) << "saving what was loaded changes nothing";
  Form().Check3.Click();
  EXPECT_EQ(Form().ExplorerListFilter.Count(), 100U);
  Form().Check1.Click();
  EXPECT_EQ(Form().ExplorerListFilter.Count(), 150U);
}

TEST_F(LargeCatalogue, NamesThatFillTheListToItsLimitLoadAndSaveWhole) {
  std::string stations;
  std::size_t characters = 0;  // each name with its NUL
  for (int number = 0; number < 315; ++number) {
    const std::string name = Name(number, number < 314 ? 25 : 26);
    stations += Section(name, number);
    characters += name.size() + 1;
  }
  ASSERT_EQ(characters, 8191U);
  Start(stations);
  ASSERT_EQ(Form().SymbolListview.Count(), 315U);
  EXPECT_EQ(Names(Form().SymbolListview).back(), Wide(Name(314, 26)));
  Form().CommandButton1.Click();
  EXPECT_EQ(Stations(), stations);
}

TEST_F(LargeCatalogue, StationsBeyondTheLimitAreNotLoadedButStayInTheFile) {
  std::string stations;
  for (int number = 0; number < 400; ++number) stations += Section(Name(number, 25), number);
  Start(stations);
  EXPECT_LT(Form().SymbolListview.Count(), 400U);
  EXPECT_GE(Form().SymbolListview.Count(), 315U);
  Form().CommandButton1.Click();
  Form().form.Close(controls::CloseReason::kSessionEnd);
  EXPECT_EQ(Stations().substr(0, stations.size()), stations);
}

TEST_F(LargeCatalogue, TwentyThousandImportedRowsSortFilterAndSave) {
  constexpr std::size_t kRows = 20'000;
  std::string playlist = "#EXTM3U\n";
  for (std::size_t number = 0; number < kRows; ++number) {
    playlist += "#EXTINF:-1,Import " + std::to_string(kRows - number) + "\nhttp://127.0.0.1/" +
                std::to_string(number) + "\n";
  }
  folder.Write("liste.m3u", playlist);
  Start(Section("Fester Sender", 3));
  dialogs.chosen_file = folder.TextPath("liste.m3u");
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().Command5.Click();
  ASSERT_EQ(Form().SymbolListview.Count(), kRows + 1);

  Form().SymbolListview.ClickHeader(0);
  Form().SymbolListview.ClickHeader(0);
  const auto sorted = Names(Form().SymbolListview);
  EXPECT_EQ(std::count(sorted.begin(), sorted.end(), u"Import 2"), 1);
  const auto second = std::find(sorted.begin(), sorted.end(), u"Import 2");
  const auto tenth = std::find(sorted.begin(), sorted.end(), u"Import 10");
  EXPECT_EQ(std::abs(tenth - second), 8) << "numbers count as numbers";

  Form().Check3.Click();
  EXPECT_EQ(Names(Form().ExplorerListFilter), std::vector<Text>{u"Fester Sender"});
  Form().Check3.Click();
  EXPECT_EQ(Form().SymbolListview.Count(), kRows + 1) << "unsaved rows survive the change of views";

  dialogs.boxes.clear();
  Form().CommandButton1.Click();
  ASSERT_EQ(dialogs.boxes.size(), 1U);
  const std::string saved = Stations();
  EXPECT_EQ(std::count(saved.begin(), saved.end(), '['), static_cast<std::ptrdiff_t>(kRows + 1));
  EXPECT_NE(saved.find("[Import 7]\r\nGenre=\r\nLink=http://127.0.0.1/19993\r\nFavorit=\r\nM3uNr=\r\n"),
            std::string::npos);
}

}  // namespace
}  // namespace app
