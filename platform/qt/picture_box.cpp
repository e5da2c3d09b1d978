#include "platform/qt/picture_box.h"

#include <QPainter>

#include "controls/picture_place.h"
#include "platform/qt/frame_widget.h"

namespace platform::qt {
namespace {

/// What the picture's place leaves free below itself already.
constexpr int kGapBelow = controls::kPictureBottomGap / 15;

/// The picture with the corners of the panels, in the dots of the screen.
QImage WithRoundCorners(const QImage& picture, double corner) {
  QImage round(picture.size(), QImage::Format_ARGB32_Premultiplied);
  round.fill(Qt::transparent);
  QPainter painter(&round);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QBrush(picture));
  painter.drawRoundedRect(round.rect(), corner, corner);
  return round;
}

}  // namespace

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) { setFocusPolicy(Qt::NoFocus); }

void PictureBox::SetPicture(const QImage& picture) {
  picture_ = picture;
  scaled_ = {};
  update();
}

int PictureBox::Margin() const { return fontMetrics().height() / 2; }

QRect PictureBox::PicturePlace() const {
  const QRect room = rect().adjusted(0, 0, -Margin(), kGapBelow - Margin());
  if (room.isEmpty()) return {};
  QRect place(QPoint(), size().scaled(room.size(), Qt::KeepAspectRatio));
  place.moveBottomRight(room.bottomRight());
  return place;
}

void PictureBox::paintEvent(QPaintEvent* /*event*/) {
  const QRect place = PicturePlace();
  if (picture_.isNull() || place.isEmpty()) return;
  const double dots = devicePixelRatioF();
  const QSize device = (QSizeF(place.size()) * dots).toSize();
  if (scaled_.size() != device) {
    const QImage scaled = picture_.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled_ = QPixmap::fromImage(WithRoundCorners(scaled, kPanelCorner * dots));
    scaled_.setDevicePixelRatio(dots);
  }
  QPainter(this).drawPixmap(place, scaled_);
}

}  // namespace platform::qt
