#include "platform/qt/row_delegate.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform::qt {
namespace {

using controls::CellLook;
using controls::RowMark;

RowMark MarkOf(const QModelIndex& index) {
  return RowMark{static_cast<quint8>(index.data(RowDelegate::kMarkRole).toUInt())};
}

CellLook LookOf(const QModelIndex& index) {
  return CellLook{static_cast<quint8>(index.data(RowDelegate::kLookRole).toUInt())};
}

bool IsStar(const QModelIndex& index) {
  return LookOf(index) == CellLook::kMark && index.data().toString() == QLatin1String("1");
}

QStyleOptionViewItem WithMarkedFont(QStyleOptionViewItem option, RowMark mark) {
  option.font.setBold(mark != RowMark::kNone);
  option.font.setItalic(mark == RowMark::kWaiting);
  option.fontMetrics = QFontMetrics(option.font);
  return option;
}

const QStyle& StyleOf(const QStyleOptionViewItem& cell) {
  return cell.widget != nullptr ? *cell.widget->style() : *QApplication::style();
}

/// As high as a capital's line, where the text would begin, in the text's colour.
void DrawStar(QPainter& painter, const QStyleOptionViewItem& cell) {
  const int margin = StyleOf(cell).pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, cell.widget) + 1;
  const double radius = cell.fontMetrics.height() * 0.5;
  // The points of a star lie deeper on one side than on the other.
  const QPointF middle(cell.rect.left() + margin + radius, cell.rect.center().y() + 1 + radius * 0.1);
  QPolygonF star;
  constexpr int kCorners = 10;
  for (int corner = 0; corner < kCorners; ++corner) {
    const double angle = corner * std::numbers::pi / (kCorners / 2.0);
    const double reach = radius * (corner % 2 == 0 ? 1.0 : 0.42);
    star << middle + reach * QPointF(std::sin(angle), -std::cos(angle));
  }
  const bool selected = cell.state.testFlag(QStyle::State_Selected);
  const bool active = cell.state.testFlag(QStyle::State_Active);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(cell.palette.color(active ? QPalette::Active : QPalette::Inactive,
                                      selected ? QPalette::HighlightedText : QPalette::Text));
  painter.drawPolygon(star);
  painter.restore();
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
  const int height = std::max(option.decorationSize.height(), option.fontMetrics.height()) + kSpacing;
  const RowMark mark = MarkOf(index);
  if (mark == RowMark::kNone) return {plain.width(), height};
  return {QStyledItemDelegate::sizeHint(WithMarkedFont(option, mark), index).width(), height};
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  if (IsStar(index)) {
    QStyledItemDelegate::paint(painter, option, index);
    return DrawStar(*painter, option);
  }
  const RowMark mark = MarkOf(index);
  if (mark == RowMark::kNone) return QStyledItemDelegate::paint(painter, option, index);
  QStyleOptionViewItem marked = WithMarkedFont(option, mark);
  QStyledItemDelegate::paint(painter, marked, index);
  initStyleOption(&marked, index);
  if (!marked.features.testFlag(QStyleOptionViewItem::HasDecoration)) return;
  DrawSign(*painter,
           StyleOf(marked).subElementRect(QStyle::SE_ItemViewItemDecoration, &marked, marked.widget), mark,
           option.palette);
}

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (LookOf(index) == CellLook::kAddress) option->textElideMode = Qt::ElideMiddle;
  if (IsStar(index)) option->text.clear();
  if (index.column() != 0 || (option->state & QStyle::State_Selected) == 0) return;
  const auto pixmap = index.data(Qt::DecorationRole).value<QPixmap>();
  if (!pixmap.isNull()) option->icon.addPixmap(pixmap, QIcon::Selected);
}

}  // namespace platform::qt
