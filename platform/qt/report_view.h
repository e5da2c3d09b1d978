#pragma once
// A list in report form with the habits of a station list: one row at a time, type-ahead in the first column,
// Enter, Delete and the request for a menu. Not bound to a list by itself.

#include <QTreeView>
#include <optional>

#include "controls/event.h"

namespace platform::qt {

class ReportView final : public QTreeView {
 public:
  explicit ReportView(QWidget* parent);

  /// The user's gestures, raised inside the toolkit's calls: a receiver records what it means and queues the
  /// rest. `UserMoved`: the selection may be another; auto-repeated keys come as kMoving, and their end as
  /// kRested. Enter comes after it has selected the framed row when none was selected.
  enum class Movement { kMoving, kRested };
  controls::Event<Movement> UserMoved;
  controls::Event<> EnterPressed;
  controls::Event<> DeletePressed;
  controls::Event<int> RowDoubleClicked;
  /// Right click or menu key; the place on the screen where the menu belongs. A right click selects its row,
  /// but UserMoved is not raised for it, because the menu must not wait for what that triggers.
  controls::Event<QPoint> MenuWanted;
  /// A press on the row that was already selected.
  controls::Event<int> SelectedRowPressed;

  /// The selected row.
  [[nodiscard]] std::optional<int> SelectedRow() const;

  /// Scrolls until the row is visible; later, when the view is not shown yet.
  void ScrollTo(int row);

  void keyboardSearch(const QString& search) override;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  [[nodiscard]] bool Searching() const;
  [[nodiscard]] bool StartsWith(int row, const QString& text) const;
  void PressKey(QKeyEvent* event);
  void SelectFramedRow();
  void ShowCellToolTip(const QPoint& place, const QPoint& screen_place);

  QString searched_;
  qint64 searched_at_ = 0;
  std::optional<int> scroll_when_shown_;
};

}  // namespace platform::qt
