#pragma once
// Paints the cells of a list in report form: rows of one height, and the marks of rows.
// Not which row has which mark.

#include <QStyledItemDelegate>

#include "controls/list_view.h"

namespace platform::qt {

/// All rows have one height, whatever is in them, with room around text and icon. A selected row's icon keeps
/// its colours. The texts of a marked row are bold, and slanted as well while it waits; its icon has a
/// symbol.
class RowDelegate final : public QStyledItemDelegate {
 public:
  /// The role under which the model gives a row's mark, as the number of the RowMark.
  static constexpr int kMarkRole = Qt::UserRole;
  /// The role under which the model gives a column's look, as the number of the CellLook.
  static constexpr int kLookRole = Qt::UserRole + 1;

  using QStyledItemDelegate::QStyledItemDelegate;

  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  /// What the style is given to paint a cell.
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace platform::qt
