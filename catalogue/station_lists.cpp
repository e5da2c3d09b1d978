#include "catalogue/station_lists.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/state/station.h"
#include "app/text/numbers.h"
#include "catalogue/sort_dates.h"

namespace catalogue {

using controls::ListRow;
using controls::ListView;
using controls::SortDirection;
using controls::SortKind;

namespace {

constexpr std::u16string_view kParentRow = u"..";

std::int32_t Sign(double first, double second) {
  if (first < second) return -1;
  return first > second ? 1 : 0;
}

bool IsParent(const ListRow& row) { return row.cells[app::kNameCell] == kParentRow; }

}  // namespace

StationLists::StationLists(app::ListPair lists, platform::StringOrder& order, app::WindowState& state,
                           Actions actions)
    : lists_(lists), order_(order), state_(state), actions_(std::move(actions)) {
  Bind(lists_.full);
  Bind(lists_.filtered);
}

void StationLists::Bind(ListView& list) {
  subscriptions_ += list.HeaderClicked.Subscribe([this, &list](int column) { HeaderClicked(list, column); });
  subscriptions_ += list.SelectionChanged.Subscribe([this, &list] {
    if (list.SelectedRow() != controls::RowId::kNone) actions_.show_station_details();
  });
  subscriptions_ += list.SelectedRowClicked.Subscribe([this] { actions_.show_station_details(); });
  subscriptions_ += list.DoubleClicked.Subscribe([this](controls::RowId) { actions_.start_playing(); });
}

void StationLists::CreateColumns(ListView& list) {
  for (const app::StationColumn& column : app::kStationColumns) list.AddColumn(app::ListColumnOf(column));
}

void StationLists::SaveListindex() {
  const controls::RowId row = lists_.full.SelectedRow();
  const auto index = lists_.full.IndexOf(row);
  if (!index) return;
  saved_list_index_ = *index + 1;
  saved_name_ = lists_.full.Cell(row, app::kNameCell);
}

void StationLists::RestoreListindex() {
  const controls::RowId row = RememberedRow();
  if (row == controls::RowId::kNone) return;
  lists_.full.Select(row);
  lists_.full.EnsureVisible(row);
}

controls::RowId StationLists::RememberedRow() const {
  // While nothing is remembered there is no such row, and the name of none is empty like the remembered one.
  const controls::RowId row = lists_.full.RowAt(saved_list_index_ - 1);
  if (lists_.full.Cell(row, app::kNameCell) == saved_name_) return row;
  // A filter view may have deleted or renamed rows before it, and a reload may have moved it.
  const auto& rows = lists_.full.Rows();
  const auto same = std::find_if(rows.begin(), rows.end(), [this](const ListRow& candidate) {
    return candidate.cells[app::kNameCell] == saved_name_;
  });
  return same == rows.end() ? row : same->id;
}

void StationLists::HeaderClicked(ListView& list, int column) {
  const bool flips = list.SortColumn() == column && list.GetSortDirection() == SortDirection::kAscending;
  Sort(list, column, flips ? SortDirection::kDescending : SortDirection::kAscending);
}

void StationLists::SortAgain(ListView& list) {
  const int column = list.SortColumn() < 0 ? static_cast<int>(app::kNameCell) : list.SortColumn();
  Sort(list, column, list.GetSortDirection());
}

void StationLists::Sort(ListView& list, int column, SortDirection direction) {
  std::vector<int> parents(list.Count());
  std::transform(list.Rows().begin(), list.Rows().end(), parents.begin(), IsParent);
  const ListView::Comparison compare = ComparisonOf(list, static_cast<std::size_t>(column));
  list.Sort(column, direction, [&](std::size_t first, std::size_t second) {
    if (parents[first] != 0 || parents[second] != 0) return parents[second] - parents[first];
    const int order = compare(first, second);
    return direction == SortDirection::kAscending ? order : -order;
  });
  state_.details_are_stale = true;
}

/// The order of CompareListItems2. In natural order each text is weighed once instead of at every comparison.
ListView::Comparison StationLists::ComparisonOf(const ListView& list, std::size_t column) const {
  if (list.Columns()[column].sort_kind != SortKind::kNaturalOrder) {
    return [this, &list, column](std::size_t first, std::size_t second) {
      return CompareListItems2(list, list.Rows()[first], list.Rows()[second], column);
    };
  }
  std::vector<std::string> keys;
  keys.reserve(list.Count());
  for (const ListRow& row : list.Rows()) keys.push_back(order_.SortKey(row.cells[column]));
  return [keys = std::move(keys)](std::size_t first, std::size_t second) {
    return keys[first].compare(keys[second]);
  };
}

std::int32_t StationLists::CompareListItems2(const ListView& list, const ListRow& FirstItem,
                                             const ListRow& secondItem, std::size_t sortColumn) const {
  const auto& first = FirstItem.cells[sortColumn];
  const auto& second = secondItem.cells[sortColumn];
  switch (list.Columns()[sortColumn].sort_kind) {
    case SortKind::kNumbers:
      return Sign(app::ToNumber(first).value_or(0), app::ToNumber(second).value_or(0));
    case SortKind::kDates:
      return Sign(DateOf(first), DateOf(second));
    case SortKind::kNaturalOrder:
      break;
  }
  return order_.StrCmpLogicalW(first, second);
}

}  // namespace catalogue
