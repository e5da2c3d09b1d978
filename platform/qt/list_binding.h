#pragma once
// Binds a list in report form to its view: rows, columns, selection, sorting, scrolling.
// Not what a selection or a double click does.

#include <QTimer>
#include <functional>
#include <optional>

#include "controls/list_view.h"
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
  [[nodiscard]] controls::RowId ShownSelection() const;
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
