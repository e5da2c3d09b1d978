#pragma once
// Binds a list in report form to its view: rows, columns, selection, sorting, scrolling.
// Not what a selection or a double click does.

#include <QTimer>
#include <functional>

#include "controls/list_view.h"
#include "platform/qt/empty_hint.h"
#include "platform/qt/icons.h"
#include "platform/qt/list_model.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/report_view.h"
#include "platform/qt/widget_binding.h"

namespace platform::qt {

/// Selecting a station may start a fetch that takes seconds. While a key repeats itself the list is
/// therefore told only when the movement has come to rest.
class ListBinding final : public WidgetBinding {
 public:
  ListBinding(controls::ListView& list, ReportView& view, const TwipScale& scale, const QtIcons& icons,
              const QtMessageLoop& loop);
  ~ListBinding() override;

  void FollowScale() override;

 private:
  void FollowRowsBy(const std::function<void()>& change);
  void Follow();
  void FollowSelection();
  void FollowSorting();
  void FollowEmptiness();
  void FollowColumnWidths();
  void TakeMovement(ReportView::Movement movement);
  void TakeSelection();
  void TakeDoubleClick(int row);
  void TakeDelete();
  [[nodiscard]] controls::RowId ShownSelection() const;
  void BindUser();

  controls::ListView& list_;
  ReportView& view_;
  EmptyHint& hint_;  // the view's own
  const QtMessageLoop& loop_;
  ListModel model_;
  QTimer rest_;
  std::uint32_t shown_images_ = 0;
  bool following_ = false;
};

}  // namespace platform::qt
