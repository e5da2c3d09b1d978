#include "platform/qt/application_icon.h"

#include <QPainter>
#include <QPixmap>

namespace platform::qt {
namespace {

/// A transmitter mast with its waves on a blue ground, as in packaging/funkhausplayer.svg; drawn in a
/// square of 64 units.
void DrawIcon(QPainter& painter) {
  constexpr QRgb kGround = 0xff1f5f8b;
  constexpr QRgb kMast = 0xffffffff;
  constexpr QRgb kWaves = 0xffffc857;
  constexpr int kSixteenths = 16;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(kGround));
  painter.drawRoundedRect(QRectF(2, 2, 60, 60), 13, 13);

  QPen pen(QColor::fromRgb(kMast), 3.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  painter.setPen(pen);
  painter.drawPolyline(QPolygonF({{20, 55}, {32, 25}, {44, 55}}));
  painter.drawLine(QPointF(25.5, 42), QPointF(38.5, 42));
  painter.setBrush(QColor::fromRgb(kMast));
  painter.setPen(Qt::NoPen);
  painter.drawEllipse(QPointF(32, 22), 5, 5);

  pen.setColor(QColor::fromRgb(kWaves));
  pen.setWidthF(3.8);
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  for (const double radius : {11.5, 19.0}) {
    const QRectF circle(32 - radius, 22 - radius, 2 * radius, 2 * radius);
    painter.drawArc(circle, -45 * kSixteenths, 90 * kSixteenths);
    painter.drawArc(circle, 135 * kSixteenths, 90 * kSixteenths);
  }
}

}  // namespace

QIcon ApplicationIcon() {
  QIcon drawn;
  constexpr double kUnits = 64.0;
  for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.scale(side / kUnits, side / kUnits);
    DrawIcon(painter);
    drawn.addPixmap(pixmap);
  }
  return drawn;
}

}  // namespace platform::qt
