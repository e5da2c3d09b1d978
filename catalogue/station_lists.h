#pragma once
// The two station lists: columns, order, selection memory and what their events trigger.
// Not their filling (catalogue/station_store.h), nor which of them is shown (catalogue/station_views.h).

#include <cstddef>
#include <cstdint>
#include <functional>

#include "app/state/list_pair.h"
#include "app/state/window_state.h"
#include "controls/list_view.h"
#include "ports/string_order.h"

namespace catalogue {

class StationLists {
 public:
  /// What the lists trigger in other features.
  struct Actions {
    std::function<void()> show_station_details;  ///< a row was clicked or the selection changed
    std::function<void()> start_playing;         ///< a row was double-clicked
  };

  StationLists(app::ListPair lists, platform::StringOrder& order, app::WindowState& state, Actions actions);

  /// Creates the columns; once per list.
  static void CreateColumns(controls::ListView& list);

  /// Remembers the selected row's index of the full list; without a selection the memory is kept.
  void SaveListindex();
  /// Selects the remembered row of the full list and scrolls it into view: the row at the remembered index,
  /// or, when another station is there now, the first one of the remembered name. Nothing happens when there
  /// is neither.
  void RestoreListindex();
  /// The index remembered, counted from 1; 0: none yet.
  [[nodiscard]] std::size_t SavedListIndex() const { return saved_list_index_; }

  /// Sorts the list again by its remembered column and direction, by name upwards before the first click.
  void SortAgain(controls::ListView& list);

  /// Negative, zero or positive as FirstItem sorts before, with or after secondItem in ascending order of
  /// `sortColumn`: by number, by date or in natural order, as the column's sort kind says. A text that is not
  /// a number or a date counts as 0.
  [[nodiscard]] std::int32_t CompareListItems2(const controls::ListView& list,
                                               const controls::ListRow& FirstItem,
                                               const controls::ListRow& secondItem,
                                               std::size_t sortColumn) const;

 private:
  void Bind(controls::ListView& list);
  [[nodiscard]] controls::RowId RememberedRow() const;
  void HeaderClicked(controls::ListView& list, int column);
  void Sort(controls::ListView& list, int column, controls::SortDirection direction);
  [[nodiscard]] controls::ListView::Comparison ComparisonOf(const controls::ListView& list,
                                                            std::size_t column) const;

  app::ListPair lists_;
  platform::StringOrder& order_;
  app::WindowState& state_;
  Actions actions_;
  std::size_t saved_list_index_ = 0;
  platform::Text saved_name_;
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
