#include "catalogue/station_store.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/station_row.h"

namespace catalogue {

using controls::ListRow;
using controls::RowId;
using platform::Text;

namespace {

/// Which key of a station's section fills which cell of its row.
constexpr std::pair<app::StationCell, const char16_t*> kCellKeys[] = {{app::kGenreCell, u"Genre"},
                                                                      {app::kLinkCell, u"Link"},
                                                                      {app::kFavouriteCell, u"Favorit"},
                                                                      {app::kM3uNumberCell, u"M3uNr"}};

}  // namespace

StationStore::StationStore(Ports ports, app::IniProcedures& ini, const app::Settings& settings,
                           const StationIcons& icons, app::WindowState& state, controls::ListPair lists,
                           std::function<void(controls::ListView&)> sort_again)
    : ports_(ports),
      ini_(ini),
      settings_(settings),
      icons_(icons),
      state_(state),
      lists_(lists),
      sort_again_(std::move(sort_again)) {}

void StationStore::LoadStations(const Text& Filter) {
  state_.reselect = true;
  std::vector<ListRow> rows = ReadRows(Filter);
  if (Filter.empty()) {
    FillFullList(std::move(rows));
    return;
  }
  lists_.filtered.Clear();
  lists_.filtered.AddRows(std::move(rows));
  sort_again_(lists_.filtered);
}

void StationStore::FillFullList(std::vector<ListRow> loaded) {
  std::vector<std::pair<ListRow, RowOrigin>> kept;
  std::set<Text> kept_names;
  for (ListRow row : lists_.full.Rows()) {
    const RowOrigin origin = origins_.Of(row.id);
    if (origin == RowOrigin::kSaved) continue;
    if (origin == RowOrigin::kPartlySaved) {
      if (!TakeWrittenKeys(row)) continue;
      kept_names.insert(ports_.conversion.CharLowerW(row.cells[app::kNameCell]));
    }
    kept.emplace_back(std::move(row), origin);
  }
  std::erase_if(loaded, [&](const ListRow& row) {
    return kept_names.contains(ports_.conversion.CharLowerW(row.cells[app::kNameCell]));
  });

  lists_.full.Clear();
  origins_.Clear();
  lists_.full.AddRows(std::move(loaded));
  for (const ListRow& row : lists_.full.Rows()) origins_.MarkSaved(row.id);
  sort_again_(lists_.full);
  for (auto& [row, origin] : kept) {
    const RowId id = lists_.full.AddRow(std::move(row));
    if (origin == RowOrigin::kPartlySaved) origins_.MarkKeyWritten(id);
  }
}

bool StationStore::TakeWrittenKeys(ListRow& row) const {
  // No value of an INI file holds a line end.
  const Text absent = u"\n";
  bool in_file = false;
  for (const auto& [cell, key] : kCellKeys) {
    const Text value = ini_.ReadIni(row.cells[app::kNameCell], key, absent, settings_.StationFileName);
    if (value == absent) continue;
    row.cells[cell] = value;
    in_file = true;
  }
  return in_file;
}

std::vector<ListRow> StationStore::ReadRows(const Text& filter) const {
  const Text wanted = ports_.conversion.CharLowerW(filter);
  const Match match = filter.empty() ? Match::kEvery : (filter == u"1" ? Match::kFavourites : Match::kGenre);
  std::vector<ListRow> rows;
  for (const Text& name : SectionNames()) {
    if (Matches(name, match, wanted)) rows.push_back(ReadRow(name));
  }
  return rows;
}

std::vector<Text> StationStore::SectionNames() const {
  std::string buffer(kNameListCapacity, '\0');
  const std::uint32_t count = ports_.profile.GetPrivateProfileSectionNamesA(
      buffer, settings_.SettingsFolder + settings_.StationFileName);
  buffer.resize(std::min<std::size_t>(count, buffer.size()));

  std::vector<Text> names;
  for (std::size_t begin = 0; begin < buffer.size();) {
    const std::size_t end = std::min(buffer.find('\0', begin), buffer.size());
    if (end > begin) {
      names.push_back(ports_.conversion.MultiByteToWideChar(
          platform::CodePage::kAnsi, std::string_view(buffer).substr(begin, end - begin)));
    }
    begin = end + 1;
  }
  return names;
}

bool StationStore::Matches(const Text& name, Match match, const Text& wanted) const {
  if (match == Match::kEvery) return true;
  const Text value = ReadKey(name, match == Match::kFavourites ? u"Favorit" : u"Genre");
  return ports_.conversion.CharLowerW(value) == wanted;
}

ListRow StationStore::ReadRow(const Text& name) const {
  ListRow row;
  row.icon = icons_.IconOf(name);
  row.cells[app::kNameCell] = name;
  for (const auto& [cell, key] : kCellKeys) row.cells[cell] = ReadKey(name, key);
  return row;
}

Text StationStore::ReadKey(const Text& name, const Text& key) const {
  return ini_.ReadIni(name, key, u"", settings_.StationFileName);
}

}  // namespace catalogue
