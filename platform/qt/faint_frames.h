#pragma once
// The program's own frames: their drawing, and where buttons, fields and handles need one on black. Not where
// check boxes do (platform/qt/check_box_widget.h).

#include <QPaintEvent>
#include <QPainter>
#include <QPalette>
#include <QWidget>

namespace platform::qt {

/// A line around the inside of `part`, in whole pixels of the screen: at 150 % a line that is one of the
/// widget's own pixels wide covers one or two of them, depending on its place.
void DrawFrame(QPainter& painter, const QRect& part, const QColor& color);

/// To be called at the end of a paint event. Styles derive frames from a darker shade of the window's colour,
/// of which black has none; where the ground that the style gives the part of the widget is as black, its
/// edge gets a line that stands out as WCAG 2.1 wants it (criterion 1.4.11).
void OutlineWhereFaint(QPainter& painter, const QWidget& widget, const QRect& part,
                       QPalette::ColorRole ground);

/// A field with such a frame.
template <typename Field>
class Outlined final : public Field {
 public:
  using Field::Field;

 protected:
  void paintEvent(QPaintEvent* event) override {
    Field::paintEvent(event);
    if (this->hasFocus()) return;
    QPainter painter(this);
    OutlineWhereFaint(painter, *this, this->rect(), QPalette::Base);
  }
};

}  // namespace platform::qt
