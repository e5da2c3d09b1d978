#pragma once
// Binds a list in report form to its view: rows, columns, selection, sorting, scrolling.
// Not what a selection or a double click does.

#include <QTimer>
#include <functional>
#include <optional>

#include "controls/list_view.h"
#include "controls/row_command.h"
#include "platform/qt/column_fit.h"
#include "platform/qt/empty_hint.h"
#include "platform/qt/icons.h"
#include "platform/qt/input_binding.h"
#include "platform/qt/list_model.h"
#include "platform/qt/report_view.h"

namespace platform::qt {

/// Selecting a station may start a fetch that takes seconds. Therefore the list is notified only when a
/// repeated key is released, and only after an open menu or dialog is closed.
class ListBinding final : public InputBinding {
 public:
  ListBinding(controls::ListView& list, ReportView& view, const TwipScale& scale, const QtIcons& icons,
              QtMessageLoop& loop);
  ~ListBinding() override;

  void FollowScale() override;

  [[nodiscard]] ReportView& View() const { return view_; }
  [[nodiscard]] controls::ListView& List() const { return list_; }
  /// The row that is shown as selected, which the list may not know yet; kNone for none.
  [[nodiscard]] controls::RowId ShownSelection() const;

  // User input for a row; nothing happens when the row is gone at its turn.
  void OpenRow(controls::RowId id);
  void DeleteRow(controls::RowId id);
  void UseOnRow(controls::RowCommand& command, controls::RowId id, bool checked);

 private:
  void FollowRowsBy(const std::function<void()>& change);
  void Follow();
  void FollowSelection();
  void FollowSorting();
  void FollowEmptiness();
  void FollowIconSize();
  void BindUser();
  void BindKeysAndClicks();
  void Rest();
  void TakeChoice(controls::RowId id);
  void Select(controls::RowId id);
  void TakeDoubleClick(controls::RowId id);
  void TakeDelete(controls::RowId id);
  [[nodiscard]] controls::RowId RowAt(int row) const;

  controls::ListView& list_;
  ReportView& view_;
  EmptyHint& hint_;  // the view's own
  ListModel model_;
  ColumnFit columns_;
  QTimer rest_;
  std::optional<controls::RowId> chosen_;       // shown as selected, but not known to the list yet
  std::optional<controls::RowId> handed_over_;  // the last choice that is queued
  std::uint32_t shown_images_ = 0;
  bool following_ = false;
};

}  // namespace platform::qt
