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

/// A triangle that points on.
void DrawStart(QPainter& painter, const QColor& color) {
  painter.setBrush(color);
  painter.drawPolygon(QPolygonF({{4.5, 3}, {12.5, 8}, {4.5, 13}}));
}

void DrawStop(QPainter& painter, const QColor& color) { painter.fillRect(QRectF(3, 3, 10, 10), color); }

void DrawRecord(QPainter& painter, const QColor& color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(QPointF(8, 8), 5.5, 5.5);
}

void DrawPlus(QPainter& painter) {
  painter.drawLine(QPointF(8, 2.5), QPointF(8, 13.5));
  painter.drawLine(QPointF(2.5, 8), QPointF(13.5, 8));
}

void DrawBin(QPainter& painter) {
  painter.drawLine(QPointF(2.5, 4), QPointF(13.5, 4));
  painter.drawPolyline(QPolygonF({{6, 4}, {6, 2}, {10, 2}, {10, 4}}));
  painter.drawPolyline(QPolygonF({{3.8, 4}, {4.6, 14}, {11.4, 14}, {12.2, 4}}));
  for (const double line : {6.6, 9.4}) painter.drawLine(QPointF(line, 6.8), QPointF(line, 11.4));
}

/// A disk with its label and its shutter.
void DrawDisk(QPainter& painter) {
  painter.drawPolygon(QPolygonF({{2.5, 2.5}, {11, 2.5}, {13.5, 5}, {13.5, 13.5}, {2.5, 13.5}}));
  painter.drawPolyline(QPolygonF({{5, 13.5}, {5, 9}, {11, 9}, {11, 13.5}}));
  painter.drawPolyline(QPolygonF({{5.5, 2.5}, {5.5, 5.5}, {9.5, 5.5}, {9.5, 2.5}}));
}

/// A tray with an arrow into it or out of it.
void DrawTray(QPainter& painter, controls::Glyph glyph) {
  painter.drawPolyline(QPolygonF({{2.5, 10}, {2.5, 13.5}, {13.5, 13.5}, {13.5, 10}}));
  painter.drawLine(QPointF(8, 2), QPointF(8, 10));
  const bool in = glyph == controls::Glyph::kImport;
  const double tip = in ? 10 : 2;
  const double ends = in ? 6.8 : 5.2;
  painter.drawPolyline(QPolygonF({{4.8, ends}, {8, tip}, {11.2, ends}}));
}

void DrawMagnifier(QPainter& painter) {
  painter.drawEllipse(QPointF(6.7, 6.7), 4.4, 4.4);
  painter.drawLine(QPointF(10, 10), QPointF(13.8, 13.8));
}

void DrawList(QPainter& painter) {
  for (const double line : {3.5, 8.0, 12.5}) {
    painter.drawPoint(QPointF(2.5, line));
    painter.drawLine(QPointF(6, line), QPointF(14, line));
  }
}

void DrawFolder(QPainter& painter) {
  painter.drawPolygon(QPolygonF({{2, 13}, {2, 3.2}, {6.2, 3.2}, {7.8, 5}, {14, 5}, {14, 13}}));
  painter.drawLine(QPointF(2, 7.5), QPointF(14, 7.5));
}

void DrawShape(QPainter& painter, controls::Glyph glyph, const QColor& color) {
  using controls::Glyph;
  switch (glyph) {
    case Glyph::kNone:
      return;
    case Glyph::kCheckMark:
      return DrawCheckMark(painter);
    case Glyph::kLoudspeaker:
      return DrawLoudspeaker(painter, color);
    case Glyph::kClose:
      return DrawCross(painter);
    case Glyph::kPaste:
      return DrawClipboard(painter, color);
    case Glyph::kStart:
      return DrawStart(painter, color);
    case Glyph::kStop:
      return DrawStop(painter, color);
    case Glyph::kRecord:
      return DrawRecord(painter, color);
    case Glyph::kAdd:
      return DrawPlus(painter);
    case Glyph::kDelete:
      return DrawBin(painter);
    case Glyph::kSave:
      return DrawDisk(painter);
    case Glyph::kImport:
    case Glyph::kExport:
      return DrawTray(painter, glyph);
    case Glyph::kFind:
      return DrawMagnifier(painter);
    case Glyph::kList:
      return DrawList(painter);
    case Glyph::kFolder:
      return DrawFolder(painter);
  }
}

/// Lines in the open make a shape that is read by its ends; those that enclose something read well thinner.
double LineWidth(controls::Glyph glyph) {
  using controls::Glyph;
  switch (glyph) {
    case Glyph::kCheckMark:
    case Glyph::kClose:
    case Glyph::kAdd:
      return 2.0;
    default:
      return 1.5;
  }
}

}  // namespace

void DrawGlyph(QPainter& painter, controls::Glyph glyph, const QRectF& area, const QColor& color) {
  const double side = std::min(area.width(), area.height());
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(area.x() + (area.width() - side) / 2, area.y() + (area.height() - side) / 2);
  painter.scale(side / kUnits, side / kUnits);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color, LineWidth(glyph), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  DrawShape(painter, glyph, color);
  painter.restore();
}

}  // namespace platform::qt
