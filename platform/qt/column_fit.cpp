#include "platform/qt/column_fit.h"

#include <QEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/qt/widget_binding.h"

namespace platform::qt {

using controls::ColumnWish;

ColumnFit::ColumnFit(controls::ListView& list, QTreeView& view, const TwipScale& scale, QtMessageLoop& loop)
    : list_(list), view_(view), scale_(scale), loop_(loop) {
  view_.viewport()->installEventFilter(this);
  view_.header()->viewport()->installEventFilter(this);
  connect(view_.header(), &QHeaderView::sectionResized, this,
          [this](int column, int /*before*/, int width) { TakeWidth(column, width); });
}

bool ColumnFit::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view_.viewport()) {
    if (event->type() == QEvent::Resize) Fit();
  } else {
    FollowHeaderInput(*event);
  }
  return false;
}

void ColumnFit::FollowHeaderInput(const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      pressed_ = true;
      return;
    case QEvent::MouseMove:
      // The release may have gone to a window that came up meanwhile.
      if (static_cast<const QMouseEvent&>(event).buttons() == Qt::NoButton) EndDrag();
      return;
    case QEvent::MouseButtonRelease:
    case QEvent::Hide:
      return EndDrag();
    default:
      return;
  }
}

void ColumnFit::TakeWidth(int column, int width) {
  if (fitting_ || !pressed_) return;
  dragging_ = column;
  dragged_[column] = width;
  Fit();
}

void ColumnFit::EndDrag() {
  pressed_ = false;
  const int column = std::exchange(dragging_, -1);
  if (column < 0) return;
  const int width = dragged_[column];
  loop_.HandOver(*this, [this, column, width] {
    // Another drag of the column may have begun.
    if (dragging_ == column || dragged_[column] != width) return;
    dragged_.erase(column);
    list_.DragColumn(static_cast<std::size_t>(column), scale_.Unscaled(width));
  });
  Fit();
}

void ColumnFit::Fit() {
  const int columns = std::min(view_.header()->count(), static_cast<int>(list_.Columns().size()));
  std::vector<ColumnWish> wishes;
  for (int column = 0; column < columns; ++column) {
    const bool keeps_place = column <= dragging_;
    wishes.push_back(keeps_place ? ColumnWish{view_.columnWidth(column), false} : WishOf(column));
  }
  if (dragging_ < columns - 1) Apply(dragging_ + 1, wishes);
}

ColumnWish ColumnFit::WishOf(int column) const {
  const auto dragged = dragged_.find(column);
  if (dragged != dragged_.end()) return {dragged->second, false};
  const controls::ListColumn& wanted = list_.Columns()[static_cast<std::size_t>(column)];
  if (wanted.users_width) return {scale_.Scaled(*wanted.users_width), false};
  return {scale_.Scaled(wanted.width), wanted.spare_room == controls::SpareRoom::kTakes};
}

void ColumnFit::Apply(int first, const std::vector<ColumnWish>& wishes) {
  const Following guard(fitting_);
  const std::vector<int> widths = controls::FittedWidths(wishes, view_.viewport()->width());
  for (int column = first; column < static_cast<int>(widths.size()); ++column) {
    const int width = widths[static_cast<std::size_t>(column)];
    if (view_.columnWidth(column) != width) view_.setColumnWidth(column, width);
  }
}

}  // namespace platform::qt
