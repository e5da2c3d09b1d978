#include "controls/list_view.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace controls {

const Text& ListCells::operator[](std::size_t cell) const {
  static const Text kEmpty;
  return cell < texts_.size() ? texts_[cell] : kEmpty;
}

void ListCells::Set(std::size_t cell, Text text) {
  if (cell >= texts_.size()) texts_.resize(cell + 1);
  texts_[cell] = std::move(text);
}

bool operator==(const ListCells& one, const ListCells& other) {
  const std::size_t count = std::max(one.texts_.size(), other.texts_.size());
  for (std::size_t cell = 0; cell < count; ++cell) {
    if (one[cell] != other[cell]) return false;
  }
  return true;
}

void ListView::AddColumn(ListColumn column) {
  columns_.push_back(std::move(column));
  Changed.Raise();
}

void ListView::SetColumnCaption(std::size_t column, Text caption) {
  if (column < columns_.size()) Set(columns_[column].caption, std::move(caption));
}

RowId ListView::RowAt(std::size_t index) const {
  return index < rows_.size() ? rows_[index].id : RowId::kNone;
}

std::optional<std::size_t> ListView::IndexOf(RowId id) const {
  const auto found = positions_.find(id);
  if (found == positions_.end()) return std::nullopt;
  return found->second;
}

const Text& ListView::Cell(RowId id, std::size_t cell) const {
  static const Text kEmpty;
  const auto index = IndexOf(id);
  return index ? rows_[*index].cells[cell] : kEmpty;
}

void ListView::SetCell(RowId id, std::size_t cell, Text text) {
  const auto index = IndexOf(id);
  if (!index || cell >= columns_.size()) return;
  ListCells& cells = rows_[*index].cells;
  if (cells[cell] == text) return;
  cells.Set(cell, std::move(text));
  RowChanged.Raise(*index);
}

RowMark ListView::Mark(RowId id) const {
  const auto index = IndexOf(id);
  return index ? rows_[*index].mark : RowMark::kNone;
}

void ListView::SetMark(RowId id, RowMark mark) {
  const auto index = IndexOf(id);
  if (!index || rows_[*index].mark == mark) return;
  rows_[*index].mark = mark;
  RowChanged.Raise(*index);
}

void ListView::Append(ListRow row) {
  row.id = RowId{++last_id_};
  row.mark = RowMark::kNone;
  positions_[row.id] = rows_.size();
  rows_.push_back(std::move(row));
}

RowId ListView::AddRow(ListRow row) {
  Append(std::move(row));
  const RowId id = rows_.back().id;
  RowsAdded.Raise(rows_.size() - 1, 1);
  return id;
}

void ListView::AddRows(std::vector<ListRow> rows) {
  if (rows.empty()) return;
  const std::size_t first = rows_.size();
  // A list that is added to again and again grows at its own pace.
  if (first == 0) {
    rows_.reserve(rows.size());
    positions_.reserve(rows.size());
  }
  for (ListRow& row : rows) Append(std::move(row));
  RowsAdded.Raise(first, rows.size());
}

RowId ListView::InsertRow(std::size_t position, ListRow row) {
  const std::size_t place = std::min(position, rows_.size());
  Append(std::move(row));
  const RowId id = rows_.back().id;
  const auto target = rows_.begin() + static_cast<std::ptrdiff_t>(place);
  std::rotate(target, rows_.end() - 1, rows_.end());
  Reindex(place);
  RowsAdded.Raise(place, 1);
  return id;
}

bool ListView::RemoveRow(RowId id) {
  const auto index = IndexOf(id);
  if (!index) return false;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(*index));
  positions_.erase(id);
  Reindex(*index);
  const bool was_selected = selected_ == id;
  if (was_selected) selected_ = RowId::kNone;
  RowRemoved.Raise(*index);
  if (was_selected) SelectionChanged.Raise();
  return true;
}

void ListView::Clear() {
  if (rows_.empty()) return;
  rows_.clear();
  positions_.clear();
  const bool was_selected = std::exchange(selected_, RowId::kNone) != RowId::kNone;
  RowsReset.Raise();
  if (was_selected) SelectionChanged.Raise();
}

bool ListView::Select(RowId id) {
  if (id != RowId::kNone && !Contains(id)) return false;
  if (Set(selected_, id)) SelectionChanged.Raise();
  return true;
}

void ListView::EnsureVisible(RowId id) {
  if (Contains(id)) ScrollWanted.Raise(id);
}

void ListView::Sort(int column, SortDirection direction, const Comparison& comparison) {
  sort_column_ = column;
  sort_direction_ = direction;
  std::vector<std::size_t> order(rows_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t first, std::size_t second) { return comparison(first, second) < 0; });
  std::vector<ListRow> sorted;
  sorted.reserve(rows_.size());
  for (const std::size_t position : order) sorted.push_back(std::move(rows_[position]));
  rows_ = std::move(sorted);
  Reindex(0);
  RowsReset.Raise();
}

void ListView::ClickHeader(int column) {
  if (column < 0 || static_cast<std::size_t>(column) >= columns_.size()) return;
  HeaderClicked.Raise(column);
}

void ListView::DragColumn(std::size_t column, int width) {
  if (column >= columns_.size()) return;
  const int bounded = std::clamp(width, kNarrowestColumn, kWidestColumn);
  if (Set(columns_[column].users_width, std::optional(bounded))) ColumnDragged.Raise(column);
}

void ListView::ClickRow(RowId id) {
  if (id != RowId::kNone && id == selected_) {
    SelectedRowClicked.Raise();
  } else {
    Select(id);
  }
}

void ListView::DoubleClick(RowId id) {
  if (Contains(id)) DoubleClicked.Raise(id);
}

void ListView::Reindex(std::size_t from) {
  for (std::size_t index = from; index < rows_.size(); ++index) positions_[rows_[index].id] = index;
}

}  // namespace controls
