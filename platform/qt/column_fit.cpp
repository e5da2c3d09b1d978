#include "platform/qt/column_fit.h"

#include <QEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <cstddef>
#include <vector>

#include "platform/qt/widget_binding.h"

namespace platform::qt {

ColumnFit::ColumnFit(controls::ListView& list, QTreeView& view, const TwipScale& scale, QtMessageLoop& loop)
    : view_(view),
      loop_(loop),
      shares_(list, {[&scale](int width) { return scale.Scaled(width); },
                     [&scale](int width) { return scale.Unscaled(width); }}) {
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
  shares_.Drag(column, width);
  Fit();
}

void ColumnFit::EndDrag() {
  pressed_ = false;
  const auto dragged = shares_.EndDrag();
  if (!dragged) return;
  loop_.HandOver(*this, [this, dragged] { shares_.Take(*dragged); });
  Fit();
}

void ColumnFit::Fit() {
  std::vector<int> shown;
  for (int column = 0; column < view_.header()->count(); ++column) shown.push_back(view_.columnWidth(column));
  const Following guard(fitting_);
  const std::vector<int> widths = shares_.Widths(shown, view_.viewport()->width());
  for (std::size_t column = 0; column < widths.size(); ++column) {
    if (shown[column] != widths[column]) view_.setColumnWidth(static_cast<int>(column), widths[column]);
  }
}

}  // namespace platform::qt
