#include "catalogue/station_store.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "app/state/station_row.h"
#include "catalogue/station_keys.h"
#include "catalogue/stored_name.h"

namespace catalogue {

using controls::ListRow;
using platform::Text;

StationStore::StationStore(Ports ports, app::IniProcedures& ini, const app::Settings& settings,
                           const StationIcons& icons, app::WindowState& state, app::ListPair lists,
                           UnsavedRows& unsaved, std::function<void(controls::ListView&)> sort_again)
    : ports_(ports),
      ini_(ini),
      settings_(settings),
      icons_(icons),
      state_(state),
      lists_(lists),
      unsaved_(unsaved),
      sort_again_(std::move(sort_again)) {}

void StationStore::LoadStations(const Text& Filter) {
  state_.details_are_stale = true;
  std::vector<ListRow> rows = ReadRows(Filter);
  if (Filter.empty()) {
    FillFullList(std::move(rows));
    return;
  }
  filter_ = Filter;
  lists_.filtered.Clear();
  lists_.filtered.AddRows(std::move(rows));
  sort_again_(lists_.filtered);
}

void StationStore::FillFullList(std::vector<ListRow> loaded) {
  std::vector<UnsavedRow> unsaved = unsaved_.All();
  for (UnsavedRow& row : unsaved) ReadWrittenCells(row);
  LeaveOutSectionsOf(unsaved, loaded);

  lists_.full.Clear();
  unsaved_.Clear();
  lists_.full.AddRows(std::move(loaded));
  for (const ListRow& row : lists_.full.Rows()) unsaved_.Remove(row.id);
  unsaved_.PutBack(std::move(unsaved));
  sort_again_(lists_.full);
}

/// A filter view may have written these cells since.
void StationStore::ReadWrittenCells(UnsavedRow& unsaved) const {
  // No value of an INI file holds a line end.
  const Text absent = u"\n";
  for (const app::StationCell cell : unsaved.part.cells) {
    const Text value =
        ini_.ReadIni(unsaved.row.cells[app::kNameCell], KeyOf(cell), absent, settings_.StationFileName);
    if (value != absent) unsaved.row.cells.Set(cell, value);
  }
}

void StationStore::LeaveOutSectionsOf(const std::vector<UnsavedRow>& unsaved,
                                      std::vector<ListRow>& loaded) const {
  std::multiset<Text> theirs;
  for (const UnsavedRow& row : unsaved) {
    for (const Text& section : row.part.sections) theirs.insert(StoredName(ports_.conversion, section));
  }
  if (theirs.empty()) return;
  std::erase_if(loaded, [&](const ListRow& row) {
    const auto found = theirs.find(StoredName(ports_.conversion, row.cells[app::kNameCell]));
    if (found == theirs.end()) return false;
    theirs.erase(found);
    return true;
  });
}

std::vector<ListRow> StationStore::ReadRows(const Text& filter) const {
  const Text wanted = ports_.conversion.CharLowerW(filter);
  const Match match = MatchOf(filter);
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

StationStore::Match StationStore::MatchOf(const Text& filter) {
  if (filter.empty()) return Match::kEvery;
  return filter == u"1" ? Match::kFavourites : Match::kGenre;
}

bool StationStore::BelongsToView(const Text& name) const {
  return Matches(name, MatchOf(filter_), ports_.conversion.CharLowerW(filter_));
}

bool StationStore::Matches(const Text& name, Match match, const Text& wanted) const {
  if (match == Match::kEvery) return true;
  const Text value =
      ReadKey(name, KeyOf(match == Match::kFavourites ? app::kFavouriteCell : app::kGenreCell));
  return ports_.conversion.CharLowerW(value) == wanted;
}

ListRow StationStore::ReadRow(const Text& name) const {
  ListRow row;
  row.icon = icons_.IconOf(name);
  row.cells.Set(app::kNameCell, name);
  for (const auto& [cell, key] : kCellKeys) row.cells.Set(cell, ReadKey(name, key));
  return row;
}

Text StationStore::ReadKey(const Text& name, const Text& key) const {
  return ini_.ReadIni(name, key, u"", settings_.StationFileName);
}

}  // namespace catalogue
