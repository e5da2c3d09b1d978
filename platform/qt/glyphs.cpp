#include "platform/qt/glyphs.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>

#include "platform/front/glyph_shapes.h"

namespace platform::qt {
namespace {

using Kind = front::GlyphPart::Kind;

QPolygonF Polygon(const front::GlyphPart& part) {
  QPolygonF polygon;
  for (const front::GlyphPoint& point : part.points) polygon << QPointF(point.x, point.y);
  return polygon;
}

void DrawArc(QPainter& painter, const front::GlyphPart& part) {
  constexpr double kSixteenths = 16;
  const auto [x, y] = part.points.front();
  const auto angle = static_cast<int>(part.degrees_each_way * kSixteenths);
  painter.drawArc(QRectF(x - part.radius.x, y - part.radius.y, 2 * part.radius.x, 2 * part.radius.y), -angle,
                  2 * angle);
}

void DrawPart(QPainter& painter, const front::GlyphPart& part, const QColor& color) {
  const bool filled = part.kind == Kind::kArea || part.kind == Kind::kDisc;
  painter.setBrush(filled ? QBrush(color) : Qt::NoBrush);
  painter.setPen(filled ? QPen(Qt::NoPen)
                        : QPen(color, part.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPolygonF points = Polygon(part);
  switch (part.kind) {
    case Kind::kLine:
      painter.drawPolyline(points);
      return;
    case Kind::kOutline:
    case Kind::kArea:
      painter.drawPolygon(points);
      return;
    case Kind::kCircle:
    case Kind::kDisc:
      painter.drawEllipse(points.first(), part.radius.x, part.radius.y);
      return;
    case Kind::kArc:
      return DrawArc(painter, part);
  }
}

}  // namespace

void DrawGlyph(QPainter& painter, controls::Glyph glyph, const QRectF& area, const QColor& color) {
  const double side = std::min(area.width(), area.height());
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(area.x() + (area.width() - side) / 2, area.y() + (area.height() - side) / 2);
  painter.scale(side / front::kGlyphUnits, side / front::kGlyphUnits);
  for (const front::GlyphPart& part : front::PartsOf(glyph)) DrawPart(painter, part, color);
  painter.restore();
}

}  // namespace platform::qt
