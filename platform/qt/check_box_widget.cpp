#include "platform/qt/check_box_widget.h"

#include <QImage>
#include <QPainter>
#include <QStyleOptionButton>

#include "platform/qt/faint_frames.h"
#include "platform/qt/readable_color.h"

namespace platform::qt {
namespace {

/// Whether each side of the box is seen, a quarter of its width deep.
bool StandsOut(const QImage& box, const QColor& ground) {
  const QPoint middle = box.rect().center();
  const QPoint last = box.rect().bottomRight();
  const auto seen = [&](const QPoint& place) {
    return ContrastOf(box.pixelColor(place), ground) >= kContrastOfParts;
  };
  bool left = false;
  bool right = false;
  bool top = false;
  bool bottom = false;
  for (int depth = 0; depth < box.width() / 4; ++depth) {
    left = left || seen({depth, middle.y()});
    right = right || seen({last.x() - depth, middle.y()});
    top = top || seen({middle.x(), depth});
    bottom = bottom || seen({middle.x(), last.y() - depth});
  }
  return left && right && top && bottom;
}

/// No nearer to the text's colour than it has to be.
QColor FrameColor(const QColor& window, const QColor& text) {
  return Readable(Mixed(window, text, 0.5), window, text, kContrastOfParts);
}

}  // namespace

CheckBoxWidget::CheckBoxWidget(QWidget* parent) : QCheckBox(parent) {}

void CheckBoxWidget::paintEvent(QPaintEvent* event) {
  QCheckBox::paintEvent(event);
  QStyleOptionButton option;
  initStyleOption(&option);
  option.rect = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
  if (!isEnabled() || !NeedsFrame(option)) return;
  QPainter painter(this);
  DrawFrame(painter, option.rect,
            FrameColor(palette().color(QPalette::Window), palette().color(QPalette::WindowText)));
}

bool CheckBoxWidget::NeedsFrame(QStyleOptionButton box) {
  if (measured_style_ == style() && measured_palette_ == palette().cacheKey()) return needs_frame_;
  measured_style_ = style();
  measured_palette_ = palette().cacheKey();
  const QColor window = palette().color(QPalette::Window);
  box.rect.moveTo(0, 0);
  box.state = QStyle::State_Enabled | QStyle::State_Off;
  QImage picture(box.rect.size(), QImage::Format_ARGB32_Premultiplied);
  picture.fill(window);
  {
    QPainter painter(&picture);
    style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, this);
  }
  needs_frame_ = !StandsOut(picture, window);
  return needs_frame_;
}

}  // namespace platform::qt
