#pragma once
// A list in report form: columns, rows with sub-items, selection, sorting. Not the stations themselves.

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "controls/control.h"

namespace controls {

/// Identifies a row for as long as it exists, whatever happens to the rows around it. Never used twice.
enum class RowId : std::uint64_t { kNone = 0 };

enum class SortDirection { kAscending, kDescending };

/// What distinguishes a row for a while, besides its cells.
enum class RowMark : std::uint8_t {
  kNone,
  kPlaying,  ///< the row's station is being played
  kWaiting,  ///< the row's station is about to be played
};

/// What a column's texts are when rows are sorted by it.
enum class SortKind { kNaturalOrder, kNumbers, kDates };

/// How a column's texts are shown. Neither their order nor what a screen reader says depends on it.
enum class CellLook : std::uint8_t {
  kText,     ///< cut with dots at its end where there is too little room
  kAddress,  ///< cut in its middle: beginning and end tell addresses apart
  kMark,     ///< "1" as a star, any other text as a text
};

/// Whether a column gets wider when the list has more room than its columns need.
enum class SpareRoom : std::uint8_t { kLeaves, kTakes };

struct ListColumn {
  Text caption;
  int width = 0;  ///< pixels at 100 %
  SortKind sort_kind = SortKind::kNaturalOrder;
  CellLook look = CellLook::kText;
  SpareRoom spare_room = SpareRoom::kLeaves;
  /// What the user has dragged the column to, in pixels at 100 %; such a column takes no spare room.
  std::optional<int> users_width = std::nullopt;
};

/// The bounds of a width that the user gives a column, in pixels at 100 %.
inline constexpr int kNarrowestColumn = 16;
inline constexpr int kWidestColumn = 4000;

/// The texts of a row. Cells that were never set are empty and cost nothing.
class ListCells {
 public:
  ListCells() = default;
  ListCells(std::initializer_list<Text> texts) : texts_(texts) {}

  [[nodiscard]] const Text& operator[](std::size_t cell) const;
  void Set(std::size_t cell, Text text);
  /// Makes room for that many cells at once; none of them is set.
  void Reserve(std::size_t cells) { texts_.reserve(cells); }
  [[nodiscard]] auto begin() const { return texts_.begin(); }
  [[nodiscard]] auto end() const { return texts_.end(); }
  friend bool operator==(const ListCells& one, const ListCells& other);

 private:
  std::vector<Text> texts_;
};

/// One row: cell 0 is the row's text, cells 1 and up its sub-items.
struct ListRow {
  RowId id = RowId::kNone;
  int icon = -1;  ///< position in the image list, -1 for none
  RowMark mark = RowMark::kNone;
  ListCells cells;
};

/// Rows are in display order and are addressed by RowId, so that nothing goes wrong when they are sorted,
/// removed or replaced during a wait. An unknown id reads as empty texts, and writing to it does nothing.
class ListView final : public Control {
 public:
  // Columns
  [[nodiscard]] const std::vector<ListColumn>& Columns() const { return columns_; }
  void AddColumn(ListColumn column);
  /// Nothing happens when there is no such column.
  void SetColumnCaption(std::size_t column, Text caption);
  /// The image list whose positions the rows' icons are; 0 for none.
  [[nodiscard]] std::uint32_t ImageList() const { return image_list_; }
  void SetImageList(std::uint32_t image_list) { Set(image_list_, image_list); }

  // Texts
  /// What the list shows in its middle while it has no rows; empty for nothing.
  [[nodiscard]] const Text& EmptyText() const { return empty_text_; }
  void SetEmptyText(Text text) { Set(empty_text_, std::move(text)); }
  /// A mark in words, for a screen reader; empty for kNone.
  [[nodiscard]] const Text& MarkText(RowMark mark) const {
    return mark_texts_[static_cast<std::size_t>(mark)];
  }
  void SetMarkText(RowMark mark, Text text) {
    Set(mark_texts_[static_cast<std::size_t>(mark)], std::move(text));
  }

  // Rows
  [[nodiscard]] std::size_t Count() const { return rows_.size(); }
  /// The row at a position of the display order, kNone when there is none.
  [[nodiscard]] RowId RowAt(std::size_t index) const;
  /// The position of a row; nothing when it is gone.
  [[nodiscard]] std::optional<std::size_t> IndexOf(RowId id) const;
  [[nodiscard]] bool Contains(RowId id) const { return IndexOf(id).has_value(); }
  /// All rows in display order; the reference is valid until the next change.
  [[nodiscard]] const std::vector<ListRow>& Rows() const { return rows_; }
  /// The text of a cell: 0 the row's text, 1 and up its sub-items.
  [[nodiscard]] const Text& Cell(RowId id, std::size_t cell) const;
  /// Nothing happens when there is no such column.
  void SetCell(RowId id, std::size_t cell, Text text);
  [[nodiscard]] RowMark Mark(RowId id) const;
  void SetMark(RowId id, RowMark mark);
  /// Appends a row without a mark and gives its id; id and mark of `row` are ignored.
  RowId AddRow(ListRow row);
  /// Appends many rows with one notification.
  void AddRows(std::vector<ListRow> rows);
  /// Puts a row at a position of the display order, at the end when there are fewer rows; otherwise as
  /// AddRow.
  RowId InsertRow(std::size_t position, ListRow row);
  bool RemoveRow(RowId id);
  /// Removes all rows, and the selection with them.
  void Clear();

  // Selection: at most one row.
  [[nodiscard]] RowId SelectedRow() const { return selected_; }
  /// Selects a row (kNone: no row). SelectionChanged is raised when it is another row than before. False when
  /// there is no such row.
  bool Select(RowId id);
  /// Asks for the row to be scrolled into view.
  void EnsureVisible(RowId id);

  // Sorting
  /// The column that the list is sorted by, -1 before the first sorting.
  [[nodiscard]] int SortColumn() const { return sort_column_; }
  [[nodiscard]] SortDirection GetSortDirection() const { return sort_direction_; }
  /// Negative when the row at the position `first` is to come before the one at `second`; the comparison
  /// itself takes care of the direction. It gives the same answer whenever it is asked. The positions are
  /// those before the sorting, and Rows() is as it was until the last comparison.
  using Comparison = std::function<int(std::size_t first, std::size_t second)>;
  /// Sorts the rows with `comparison` (rows that compare equal keep their order) and shows the arrow in
  /// the column's header. Selection and ids stay with their rows.
  void Sort(int column, SortDirection direction, const Comparison& comparison);

  // User input
  void ClickHeader(int column);
  /// Gives a column a width (pixels at 100 %), within the bounds above.
  void DragColumn(std::size_t column, int width);
  /// A click on a row: selects it, or reports that the selected row was clicked again.
  void ClickRow(RowId id);
  void DoubleClick(RowId id);
  /// The Delete key, for the selected row.
  void PressDelete() const { DeletePressed.Raise(); }

  // Events for the program
  Event<> SelectionChanged;
  Event<> SelectedRowClicked;
  Event<int> HeaderClicked;
  Event<std::size_t> ColumnDragged;  ///< raised when the column has another width of the user's than before
  Event<RowId> DoubleClicked;
  Event<> DeletePressed;

  // Notifications for a widget, raised after the change. Clearing and sorting raise RowsReset.
  Event<> RowsReset;
  Event<std::size_t, std::size_t> RowsAdded;  ///< first position, count
  Event<std::size_t> RowRemoved;              ///< the position it had
  Event<std::size_t> RowChanged;              ///< position
  Event<RowId> ScrollWanted;

 private:
  void Append(ListRow row);
  void Reindex(std::size_t from);

  std::vector<ListColumn> columns_;
  std::vector<ListRow> rows_;
  std::unordered_map<RowId, std::size_t> positions_;
  RowId selected_ = RowId::kNone;
  std::uint64_t last_id_ = 0;
  std::uint32_t image_list_ = 0;
  Text empty_text_;
  std::array<Text, 3> mark_texts_;  // by RowMark
  int sort_column_ = -1;
  SortDirection sort_direction_ = SortDirection::kAscending;
};

}  // namespace controls
