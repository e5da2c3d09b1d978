#include "platform/qt/row_delegate.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>

namespace platform::qt {
namespace {

using controls::RowMark;

RowMark MarkOf(const QModelIndex& index) {
  return RowMark{static_cast<quint8>(index.data(RowDelegate::kMarkRole).toUInt())};
}

QStyleOptionViewItem WithMarkedFont(QStyleOptionViewItem option, RowMark mark) {
  option.font.setBold(mark != RowMark::kNone);
  option.font.setItalic(mark == RowMark::kWaiting);
  option.fontMetrics = QFontMetrics(option.font);
  return option;
}

/// A disc in the icon's lower right corner: a triangle that points on, or three dots. Its ring keeps it apart
/// from icons and selections of every colour.
void DrawSign(QPainter& painter, const QRect& icon, RowMark mark, const QPalette& palette) {
  constexpr double kPartOfIcon = 0.6;
  constexpr double kUnits = 16.0;
  const double side = std::min(icon.width(), icon.height()) * kPartOfIcon;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(icon.right() + 1 - side, icon.bottom() + 1 - side);
  painter.scale(side / kUnits, side / kUnits);
  const QColor ground = palette.color(QPalette::Base);
  painter.setPen(QPen(ground, 1.5));
  painter.setBrush(palette.color(QPalette::Text));
  painter.drawEllipse(QRectF(0.75, 0.75, 14.5, 14.5));
  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  if (mark == RowMark::kPlaying) {
    painter.drawPolygon(QPolygonF({{6, 4}, {12.2, 8}, {6, 12}}));
  } else {
    for (const double across : {4.6, 8.0, 11.4}) painter.drawEllipse(QPointF(across, 8), 1.25, 1.25);
  }
  painter.restore();
}

}  // namespace

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  constexpr int kSpacing = 6;
  const QSize plain = QStyledItemDelegate::sizeHint(option, index);
  const int height = std::max(plain.height(), option.fontMetrics.height() + kSpacing);
  const RowMark mark = MarkOf(index);
  if (mark == RowMark::kNone) return {plain.width(), height};
  return {QStyledItemDelegate::sizeHint(WithMarkedFont(option, mark), index).width(), height};
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  const RowMark mark = MarkOf(index);
  if (mark == RowMark::kNone) return QStyledItemDelegate::paint(painter, option, index);
  QStyleOptionViewItem marked = WithMarkedFont(option, mark);
  QStyledItemDelegate::paint(painter, marked, index);
  initStyleOption(&marked, index);
  if (!marked.features.testFlag(QStyleOptionViewItem::HasDecoration)) return;
  const QStyle& style = marked.widget != nullptr ? *marked.widget->style() : *QApplication::style();
  DrawSign(*painter, style.subElementRect(QStyle::SE_ItemViewItemDecoration, &marked, marked.widget), mark,
           option.palette);
}

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (index.column() != 0 || (option->state & QStyle::State_Selected) == 0) return;
  const auto pixmap = index.data(Qt::DecorationRole).value<QPixmap>();
  if (!pixmap.isNull()) option->icon.addPixmap(pixmap, QIcon::Selected);
}

}  // namespace platform::qt
