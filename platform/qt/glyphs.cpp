#include "platform/qt/glyphs.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace platform::qt {
namespace {

// All shapes are drawn in a square of 16 units.
constexpr double kUnits = 16.0;

void DrawCheckMark(QPainter& painter) {
  painter.drawPolyline(QPolygonF({{2.5, 8.5}, {6.5, 12.5}, {13.5, 3.5}}));
}

void DrawCross(QPainter& painter) {
  painter.drawLine(QPointF(3.5, 3.5), QPointF(12.5, 12.5));
  painter.drawLine(QPointF(12.5, 3.5), QPointF(3.5, 12.5));
}

void DrawLoudspeaker(QPainter& painter, const QColor& color) {
  QPainterPath body;
  body.addPolygon(QPolygonF({{1.5, 6}, {4, 6}, {8, 2.5}, {8, 13.5}, {4, 10}, {1.5, 10}}));
  body.closeSubpath();
  painter.fillPath(body, color);
  QPen pen = painter.pen();
  pen.setWidthF(1.4);
  painter.setPen(pen);
  constexpr int kSixteenths = 16;
  painter.drawArc(QRectF(6.5, 5, 5, 6), -55 * kSixteenths, 110 * kSixteenths);
  painter.drawArc(QRectF(6, 2.5, 8.5, 11), -55 * kSixteenths, 110 * kSixteenths);
}

void DrawClipboard(QPainter& painter, const QColor& color) {
  QPen pen = painter.pen();
  pen.setWidthF(1.3);
  painter.setPen(pen);
  // The board with its clip, and a sheet that lies over its corner.
  painter.drawPolyline(QPolygonF({{5.5, 13.5}, {1.8, 13.5}, {1.8, 2.8}, {11.2, 2.8}, {11.2, 5}}));
  painter.fillRect(QRectF(4.2, 1.2, 4.6, 3), color);
  painter.drawRect(QRectF(7, 6.5, 7.3, 8.5));
  for (const double line : {9.2, 12.0}) painter.drawLine(QPointF(9, line), QPointF(12.3, line));
}

}  // namespace

void DrawGlyph(QPainter& painter, controls::Glyph glyph, const QRect& area, const QColor& color) {
  if (glyph == controls::Glyph::kNone) return;
  const double side = std::min(area.width(), area.height()) * 0.62;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(area.x() + (area.width() - side) / 2, area.y() + (area.height() - side) / 2);
  painter.scale(side / kUnits, side / kUnits);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color, 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  if (glyph == controls::Glyph::kCheckMark) DrawCheckMark(painter);
  if (glyph == controls::Glyph::kClose) DrawCross(painter);
  if (glyph == controls::Glyph::kLoudspeaker) DrawLoudspeaker(painter, color);
  if (glyph == controls::Glyph::kPaste) DrawClipboard(painter, color);
  painter.restore();
}

}  // namespace platform::qt
