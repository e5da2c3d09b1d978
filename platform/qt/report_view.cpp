#include "platform/qt/report_view.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/qt/row_delegate.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

qint64 Milliseconds() {
  using std::chrono::duration_cast;
  using std::chrono::milliseconds;
  return duration_cast<milliseconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace

ReportView::ReportView(QWidget* parent) : QTreeView(parent) {
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setAlternatingRowColors(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setTextElideMode(Qt::ElideRight);
  setItemDelegate(new RowDelegate(this));
  header()->setSectionsClickable(true);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(false);
  header()->setHighlightSections(false);
}

std::optional<int> ReportView::SelectedRow() const {
  const QModelIndexList rows = selectionModel()->selectedRows();
  if (rows.isEmpty()) return std::nullopt;
  return rows.first().row();
}

void ReportView::ScrollTo(int row) {
  if (!isVisible()) {
    scroll_when_shown_ = row;
    return;
  }
  scrollTo(model()->index(row, 0));
}

void ReportView::showEvent(QShowEvent* event) {
  QTreeView::showEvent(event);
  const auto row = std::exchange(scroll_when_shown_, std::nullopt);
  if (row) scrollTo(model()->index(*row, 0));
}

bool ReportView::Searching() const {
  return !searched_.isEmpty() && Milliseconds() - searched_at_ <= QApplication::keyboardInputInterval();
}

bool ReportView::StartsWith(int row, const QString& text) const {
  return model()->index(row, 0).data().toString().startsWith(text, Qt::CaseInsensitive);
}

void ReportView::keyboardSearch(const QString& search) {
  const int rows = model()->rowCount();
  if (rows == 0 || search.isEmpty()) return;
  const qint64 now = Milliseconds();
  if (!Searching()) searched_.clear();
  searched_at_ = now;
  searched_ += search;
  // The same letter again and again goes from row to row.
  const bool repeated = searched_.count(searched_.at(0)) == searched_.size();
  const QString wanted = repeated ? searched_.left(1) : searched_;
  const int current = currentIndex().isValid() ? currentIndex().row() : -1;
  const int start = repeated ? current + 1 : std::max(current, 0);
  for (int step = 0; step < rows; ++step) {
    const int row = (start + step) % rows;
    if (!StartsWith(row, wanted)) continue;
    setCurrentIndex(model()->index(row, 0));
    return;
  }
}

bool ReportView::event(QEvent* event) {
  const bool handled = QTreeView::event(event);
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) QWidget::update();
  if (event->type() == QEvent::Paint && hasFocus()) {
    // Not every style shows in a list's frame that the list has the keyboard.
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
  return handled;
}

void ReportView::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
    if (event->isAutoRepeat()) return;
    if (!SelectedRow()) SelectFramedRow();
    EnterPressed.Raise();
    return;
  }
  if (plain && event->key() == Qt::Key_Delete) {
    if (!event->isAutoRepeat()) DeletePressed.Raise();
    return;
  }
  if (plain && event->key() == Qt::Key_Space && Searching()) {
    // Names have blanks; inside one it is a letter like the others.
    keyboardSearch(QStringLiteral(" "));
  } else {
    PressKey(event);
  }
  UserMoved.Raise(event->isAutoRepeat() ? Movement::kMoving : Movement::kRested);
}

void ReportView::PressKey(QKeyEvent* event) {
  const int key = event->key();
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  const bool steps = key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Space;
  const bool leaps =
      key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
  if (plain && steps && !SelectedRow()) {
    SelectFramedRow();
    return;
  }
  QTreeView::keyPressEvent(event);
  // A jump to where the frame already is moves nothing.
  if (plain && leaps && !SelectedRow()) SelectFramedRow();
}

void ReportView::SelectFramedRow() {
  const QModelIndex framed = currentIndex().isValid() ? currentIndex() : model()->index(0, 0);
  // Selects a row that is current already, too.
  if (framed.isValid()) setCurrentIndex(framed);
}

void ReportView::keyReleaseEvent(QKeyEvent* event) {
  QTreeView::keyReleaseEvent(event);
  if (!event->isAutoRepeat()) UserMoved.Raise(Movement::kRested);
}

void ReportView::mousePressEvent(QMouseEvent* event) {
  const auto selected_before = SelectedRow();
  QTreeView::mousePressEvent(event);
  // A press outside the rows clears the selection, so that a new entry can be made.
  const QModelIndex pressed = indexAt(event->position().toPoint());
  if (!pressed.isValid()) selectionModel()->clearSelection();
  // With the control key a press takes the selection away, when the button is released.
  const bool plain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
  if (plain && pressed.isValid() && selected_before == pressed.row()) {
    SelectedRowPressed.Raise(pressed.row());
  } else if (event->button() != Qt::RightButton) {
    UserMoved.Raise(Movement::kRested);
  }
}

void ReportView::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  if (event->button() != Qt::RightButton) UserMoved.Raise(Movement::kRested);
}

void ReportView::mouseDoubleClickEvent(QMouseEvent* event) {
  QTreeView::mouseDoubleClickEvent(event);
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && index.isValid()) RowDoubleClicked.Raise(index.row());
}

void ReportView::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  const bool by_mouse = event->reason() == QContextMenuEvent::Mouse;
  const QRect row = visualRect(currentIndex()) & viewport()->rect();
  MenuWanted.Raise(by_mouse
                       ? event->globalPos()
                       : viewport()->mapToGlobal(QPoint(row.left() + iconSize().width(), row.center().y())));
}

void ReportView::focusOutEvent(QFocusEvent* event) {
  QTreeView::focusOutEvent(event);
  UserMoved.Raise(Movement::kRested);
}

bool ReportView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    ShowCellToolTip(help->pos(), help->globalPos());
    return true;
  }
  return QTreeView::viewportEvent(event);
}

void ReportView::ShowCellToolTip(const QPoint& place, const QPoint& screen_place) {
  const QModelIndex index = indexAt(place);
  if (index.isValid() && sizeHintForIndex(index).width() > header()->sectionSize(index.column())) {
    QToolTip::showText(screen_place, PlainToolTip(index.data().toString()), viewport());
  } else {
    QToolTip::hideText();
  }
}

}  // namespace platform::qt
