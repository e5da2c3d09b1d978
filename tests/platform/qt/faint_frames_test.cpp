// Whether fields and buttons have a frame that can be seen on black, by the pixels that are painted.
#include "platform/qt/faint_frames.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLineEdit>
#include <QPainter>

#include "tests/platform/qt/contrast.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// The weakest side of the outermost three pixels.
double ContrastOfEdge(QWidget& widget, const QColor& ground) {
  const QImage picture = widget.grab().toImage();
  const int right = picture.width() - 1;
  const int bottom = picture.height() - 1;
  double weakest = 21.0;
  for (const QRect& side : {QRect(0, bottom / 2, 3, 1), QRect(right - 2, bottom / 2, 3, 1),
                            QRect(right / 2, 0, 1, 3), QRect(right / 2, bottom - 2, 1, 3)}) {
    weakest = std::min(weakest, StrongestContrast(picture, side, ground));
  }
  return weakest;
}

TEST(FaintFrames, FieldsAndButtonsHaveAVisibleFrameOnBlack) {
  const WithPalette colors(QPalette(Qt::black, Qt::black));
  WindowFixture fixture;
  for (const char* name : {"TextBox1_0", "Combo1", "UpDownTextBox1", "Command6", "Command8_1"}) {
    EXPECT_GE(ContrastOfEdge(fixture.Find(name), Qt::black), 3.0) << name;
  }
}

TEST(FaintFrames, WhereTheStyleHasAShadeForItTheFrameIsTheStyles) {
  const QPalette light(QColor(239, 239, 239));
  const WithPalette colors(light);
  WindowFixture fixture;
  QLineEdit plain(fixture.window.get());
  auto& field = fixture.Find<QLineEdit>("TextBox1_1");
  plain.setGeometry(field.geometry());
  EXPECT_EQ(field.grab().toImage(), plain.grab().toImage());
}

TEST(FaintFrames, MainButtonKeepsTheFrameOfItsOwnColour) {
  QPalette black(Qt::black, Qt::black);
  black.setColor(QPalette::Highlight, QColor(26, 235, 255));
  const WithPalette colors(black);
  WindowFixture fixture;
  EXPECT_GE(ContrastOfEdge(fixture.Find("Command1"), Qt::black), 1.5);
  const QImage start = fixture.Find("Command1").grab().toImage();
  const QColor side = start.pixelColor(start.width() / 2, 0);
  EXPECT_GT(side.blue(), side.red()) << "no grey";
}

TEST(FaintFrames, LinesAreEvenAtEveryScaleAndPlace) {
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
    for (int place = 0; place < 4; ++place) {
      QImage picture(QSize(100, 100), QImage::Format_RGB32);
      picture.setDevicePixelRatio(scale);
      picture.fill(Qt::black);
      const QRect part(place, place, 21, 11);
      QPainter painter(&picture);
      DrawFrame(painter, part, Qt::white);
      painter.end();
      const QRect outer = QRectF(QPointF(part.topLeft()) * scale, QSizeF(part.size()) * scale).toRect();
      const int width = static_cast<int>(scale);
      QImage expected(QSize(100, 100), QImage::Format_RGB32);
      expected.fill(Qt::black);
      QPainter plain(&expected);
      plain.fillRect(outer, Qt::white);
      plain.fillRect(outer.adjusted(width, width, -width, -width), Qt::black);
      plain.end();
      picture.setDevicePixelRatio(1.0);
      EXPECT_EQ(picture, expected) << scale << ", " << place;
    }
  }
}

TEST(FaintFrames, FlatButtonHasNoFrame) {
  const WithPalette colors(QPalette(Qt::black, Qt::black));
  WindowFixture fixture;
  EXPECT_LT(ContrastOfEdge(fixture.Find("CmdInfoClose"), Qt::black), 1.5);
}

}  // namespace
}  // namespace platform::qt
