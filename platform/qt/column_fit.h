#pragma once
// Fits a list's columns to its view and follows the mouse on their edges. Not what the columns get
// (platform/front/column_shares.h).

#include <QObject>
#include <QTreeView>

#include "controls/list_view.h"
#include "platform/front/column_shares.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/twip_scale.h"

namespace platform::qt {

/// The list is notified of a width when the button is released.
class ColumnFit final : public QObject {
 public:
  ColumnFit(controls::ListView& list, QTreeView& view, const TwipScale& scale, QtMessageLoop& loop);

  /// Applies the widths again; to be called when columns or scale have changed.
  void Fit();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FollowHeaderInput(const QEvent& event);
  void TakeWidth(int column, int width);
  void EndDrag();

  QTreeView& view_;
  QtMessageLoop& loop_;
  front::ColumnShares shares_;
  bool pressed_ = false;
  bool fitting_ = false;
};

}  // namespace platform::qt
