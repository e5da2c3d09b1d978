#pragma once
// The station file and the list of a journey beside the model of what the user entered, and the checks that
// all three agree. Not what the user does; catalogue_model_test.cpp has that.

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/journeys/catalogue_journey.h"
#include "tests/journeys/catalogue_model.h"
#include "tests/journeys/station_file_text.h"

namespace app {

inline constexpr const char* kTopOfTheFile = "; top of the file\r\n\r\n";

class ComparedCatalogue : public CatalogueJourney {
 protected:
  using Station = CatalogueModel::Station;

  ComparedCatalogue() : CatalogueJourney(Memory()) {}

  /// Thousands of replaced files would wait for the disk most of the time.
  static std::filesystem::path Memory() {
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
  }

  bool InView() { return Form().ExplorerListFilter.Visible(); }
  controls::ListView& List() { return InView() ? Form().ExplorerListFilter : Form().SymbolListview; }

  Station* StationOf(const controls::ListRow& row) {
    return model.Find(form.Name(row.cells[kNameCell]), form.Value(row.cells[kLinkCell]));
  }
  Station InFile(const Text& name) {
    const auto sections = ReadStationFile(form, Stations());
    Station station;
    const auto found = sections.find(name);
    if (found == sections.end()) return station;
    const FileSection& keys = found->second;
    station = {name, keys.Value(u"Link"), keys.Value(u"Genre"), keys.Value(u"Favorit"), keys.Value(u"M3uNr")};
    station.shown = station.number;
    station.saved = true;
    return station;
  }

  /// The names and links of the full list, from top to bottom.
  std::vector<std::pair<Text, Text>> Order() {
    std::vector<std::pair<Text, Text>> order;
    for (const controls::ListRow& row : Form().SymbolListview.Rows()) {
      order.emplace_back(form.Name(row.cells[kNameCell]), form.Value(row.cells[kLinkCell]));
    }
    return order;
  }

  /// The stations of the file that the test starts with.
  void Adopt() {
    std::vector<Station> stations;
    std::map<Text, CatalogueModel::Foreign> foreign;
    for (const auto& [name, keys] : ReadStationFile(form, Stations())) {
      stations.push_back(InFile(name));
      if (!keys.foreign.empty()) foreign[name] = keys.foreign;
    }
    model.Start(stations, foreign);
  }

  void Check() {
    CheckFile();
    if (!InView()) CheckList();
    const bool must_ask = std::any_of(model.Stations().begin(), model.Stations().end(),
                                      [](const Station& s) { return s.must_ask; });
    EXPECT_TRUE(!must_ask || window->GetSettings().CatalogueChanged) << "closing would not ask";
  }

  void CheckFile() {
    const std::string bytes = Stations();
    EXPECT_TRUE(bytes.starts_with(kTopOfTheFile));
    auto sections = ReadStationFile(form, bytes);
    for (const Station& station : model.Stations()) {
      if (!station.saved || station.overwritten) continue;
      ASSERT_TRUE(sections.contains(station.name)) << Shown(station) << " vanished from the file";
      const FileSection& keys = sections[station.name];
      EXPECT_EQ(keys.Value(u"Link"), station.link) << Shown(station);
      if (station.loose) continue;
      EXPECT_EQ(keys.Value(u"Genre"), station.genre) << Shown(station);
      EXPECT_EQ(keys.Value(u"Favorit"), station.favourite) << Shown(station);
      EXPECT_EQ(keys.Value(u"M3uNr"), station.number) << Shown(station);
    }
    for (const auto& [name, keys] : sections) {
      // A section without a name is never listed; its rows stay unsaved ones.
      if (name.empty()) continue;
      EXPECT_NE(model.OfSection(name), nullptr) << Utf8(name) << " belongs to no station";
      const auto foreign = model.ForeignLines().find(name);
      EXPECT_EQ(keys.foreign,
                foreign == model.ForeignLines().end() ? CatalogueModel::Foreign() : foreign->second)
          << Utf8(name);
    }
    for (const auto& [name, lines] : model.ForeignLines()) EXPECT_TRUE(sections.contains(name)) << Utf8(name);
  }

  void CheckList() {
    std::vector<const Station*> expected;
    for (const Station& station : model.Stations()) {
      if (!station.hidden) expected.push_back(&station);
    }
    for (const controls::ListRow& row : Form().SymbolListview.Rows()) {
      const auto found = std::find_if(expected.begin(), expected.end(), [&](const Station* station) {
        return station->name == form.Name(row.cells[kNameCell]) &&
               station->link == form.Value(row.cells[kLinkCell]);
      });
      ASSERT_NE(found, expected.end()) << Shown(row) << " is doubled, or nobody entered it";
      const Station& station = **found;
      expected.erase(found);
      if (station.loose) continue;
      EXPECT_EQ(form.Value(row.cells[kGenreCell]), station.genre) << Shown(row);
      EXPECT_EQ(form.Value(row.cells[kFavouriteCell]), station.favourite) << Shown(row);
      EXPECT_EQ(form.Value(row.cells[kM3uNumberCell]), station.shown) << Shown(row);
    }
    for (const Station* station : expected) ADD_FAILURE() << Shown(*station) << " vanished from the list";
  }
  void CheckOrder() {
    const controls::ListView& list = Form().SymbolListview;
    const auto column = static_cast<std::size_t>(list.SortColumn());
    const int sign = list.GetSortDirection() == controls::SortDirection::kAscending ? 1 : -1;
    for (std::size_t index = 1; index < list.Count(); ++index) {
      const Text& before = list.Rows()[index - 1].cells[column];
      EXPECT_LE(sign * string_order.StrCmpLogicalW(before, list.Rows()[index].cells[column]), 0);
    }
  }
  /// What several stations of a name wrote into one section is what the list shows now.
  void AdoptSharedFields() {
    for (const controls::ListRow& row : Form().SymbolListview.Rows()) {
      Station* const station = StationOf(row);
      if (station == nullptr || !station->loose) continue;
      station->genre = form.Value(row.cells[kGenreCell]);
      station->favourite = form.Value(row.cells[kFavouriteCell]);
      station->number = station->shown = form.Value(row.cells[kM3uNumberCell]);
      station->loose = model.CountOf(station->name) > 1;
    }
  }

  std::string Utf8(const Text& text) {
    return "\"" + conversion.WideCharToMultiByte(platform::CodePage::kUtf8, text) + "\"";
  }
  std::string Shown(const Station& station) { return Utf8(station.name) + " " + Utf8(station.link); }
  std::string Shown(const controls::ListRow& row) {
    return Utf8(row.cells[kNameCell]) + " " + Utf8(row.cells[kLinkCell]);
  }
  std::string LastActions() {
    std::string text;
    const std::size_t first = actions.size() > 60 ? actions.size() - 60 : 0;
    for (std::size_t index = first; index < actions.size(); ++index) text += "\n  " + actions[index];
    return text;
  }

  void CheckFavourites() {
    std::multiset<Text> shown, marked;
    for (const controls::ListRow& row : Form().ExplorerListFilter.Rows())
      shown.insert(form.Name(row.cells[kNameCell]));
    for (const auto& [name, keys] : ReadStationFile(form, Stations())) {
      if (keys.Value(u"Favorit") == u"1" && !name.empty()) marked.insert(name);
    }
    EXPECT_EQ(shown, marked);
  }

  FileText form{conversion};
  CatalogueModel model;
  std::vector<std::string> actions;
};

}  // namespace app
