#include "platform/qt/picture_box.h"

#include <QPainter>

namespace platform::qt {

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) { setFocusPolicy(Qt::NoFocus); }

void PictureBox::SetPicture(const QImage& picture) {
  picture_ = picture;
  scaled_ = {};
  update();
}

void PictureBox::paintEvent(QPaintEvent* /*event*/) {
  if (picture_.isNull() || size().isEmpty()) return;
  const QSize device = (QSizeF(size()) * devicePixelRatioF()).toSize();
  if (scaled_.size() != device) {
    scaled_ = QPixmap::fromImage(picture_.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    scaled_.setDevicePixelRatio(devicePixelRatioF());
  }
  QPainter(this).drawPixmap(rect(), scaled_);
}

}  // namespace platform::qt
