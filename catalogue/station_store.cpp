#include "catalogue/station_store.h"

#include <algorithm>
#include <set>
#include <utility>

#include "app/state/station_row.h"
#include "catalogue/stored_name.h"

namespace catalogue {

using controls::ListRow;
using platform::Text;

StationStore::StationStore(const StationFile& file, platform::TextConversion& conversion,
                           const StationIcons& icons, app::WindowState& state, app::ListPair lists,
                           UnsavedRows& unsaved, std::function<void(controls::ListView&)> sort_again)
    : file_(file),
      conversion_(conversion),
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
  for (const app::StationField& field : app::kStationFieldsByCell) {
    if (!unsaved.part.cells.contains(field.cell)) continue;
    const auto value = file_.FindField(unsaved.row.cells[app::kNameCell], field);
    if (value) unsaved.row.cells.Set(field.cell, *value);
  }
}

void StationStore::LeaveOutSectionsOf(const std::vector<UnsavedRow>& unsaved,
                                      std::vector<ListRow>& loaded) const {
  std::multiset<Text> theirs;
  for (const UnsavedRow& row : unsaved) {
    for (const Text& section : row.part.sections) theirs.insert(StoredName(conversion_, section));
  }
  if (theirs.empty()) return;
  std::erase_if(loaded, [&](const ListRow& row) {
    const auto found = theirs.find(StoredName(conversion_, row.cells[app::kNameCell]));
    if (found == theirs.end()) return false;
    theirs.erase(found);
    return true;
  });
}

std::vector<ListRow> StationStore::ReadRows(const Text& filter) const {
  const Text wanted = conversion_.CharLowerW(filter);
  const Match match = MatchOf(filter);
  std::vector<ListRow> rows;
  const platform::ReadGroup group = file_.ReadTogether();
  for (const Text& name : file_.Names()) {
    if (Matches(name, match, wanted)) rows.push_back(ReadRow(name));
  }
  return rows;
}

StationStore::Match StationStore::MatchOf(const Text& filter) {
  if (filter.empty()) return Match::kEvery;
  return filter == u"1" ? Match::kFavourites : Match::kGenre;
}

bool StationStore::BelongsToView(const Text& name) const {
  return Matches(name, MatchOf(filter_), conversion_.CharLowerW(filter_));
}

bool StationStore::Matches(const Text& name, Match match, const Text& wanted) const {
  if (match == Match::kEvery) return true;
  const app::StationField& field = match == Match::kFavourites ? app::kFavouriteField : app::kGenreField;
  return conversion_.CharLowerW(file_.ReadField(name, field)) == wanted;
}

ListRow StationStore::ReadRow(const Text& name) const {
  ListRow row = app::RowOf(file_.Read(name));
  row.icon = icons_.IconOf(name);
  return row;
}

}  // namespace catalogue
