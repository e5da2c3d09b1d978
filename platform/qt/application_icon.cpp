#include "platform/qt/application_icon.h"

#include <QIconEngine>
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

/// Draws the icon whenever it is asked for: kept in all its sizes it takes a third of a megabyte, and who
/// asks, a window manager for one, has pictures of its own after that.
class DrawnIcon final : public QIconEngine {
 public:
  void paint(QPainter* painter, const QRect& place, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    constexpr double kUnits = 64.0;
    painter->save();
    painter->translate(place.topLeft());
    painter->scale(place.width() / kUnits, place.height() / kUnits);
    DrawIcon(*painter);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, picture.rect(), mode, state);
    return picture;
  }

  QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    QList<QSize> sizes;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) sizes.append(QSize(side, side));
    return sizes;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new DrawnIcon; }
};

}  // namespace

QIcon ApplicationIcon() { return QIcon(new DrawnIcon); }

}  // namespace platform::qt
