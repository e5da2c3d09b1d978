#pragma once
// Fits a list's columns to its view and reports the widths that the user drags. Not the rule by which they
// share the room (controls/column_widths.h).

#include <QObject>
#include <QTreeView>
#include <map>
#include <vector>

#include "controls/column_widths.h"
#include "controls/list_view.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/twip_scale.h"

namespace platform::qt {

/// Together the columns reach the view's right edge. While the user drags one, only those behind it give way,
/// so that its edge stays under the pointer; the list is notified when the button is released.
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
  void Apply(int first, const std::vector<controls::ColumnWish>& wishes);
  [[nodiscard]] controls::ColumnWish WishOf(int column) const;

  controls::ListView& list_;
  QTreeView& view_;
  const TwipScale& scale_;
  QtMessageLoop& loop_;
  std::map<int, int> dragged_;  // pixels by column, until the list knows them
  int dragging_ = -1;           // the column whose edge the user holds
  bool pressed_ = false;
  bool fitting_ = false;
};

}  // namespace platform::qt
