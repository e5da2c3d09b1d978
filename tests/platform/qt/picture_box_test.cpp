#include "platform/qt/picture_box.h"

#include <gtest/gtest.h>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class PictureBoxTest : public ::testing::Test {
 protected:
  PictureBoxTest() {
    QImage red(400, 300, QImage::Format_RGB32);
    red.fill(Qt::red);
    window_.resize(300, 300);
    box_.setGeometry(20, 20, 120, 90);
    box_.SetPicture(red);
  }
  bool IsRed(const QImage& grabbed, int x, int y) { return grabbed.pixelColor(x, y) == QColor(Qt::red); }

  QWidget window_;
  PictureBox box_{&window_};
};

TEST_F(PictureBoxTest, PictureKeepsAMarginToThePanelsEdgesAndItsShape) {
  const QImage grabbed = box_.grab().toImage();
  int left = grabbed.width();
  int right = 0;
  int top = grabbed.height();
  int bottom = 0;
  for (int y = 0; y < grabbed.height(); ++y) {
    for (int x = 0; x < grabbed.width(); ++x) {
      if (!IsRed(grabbed, x, y)) continue;
      left = std::min(left, x);
      right = std::max(right, x);
      top = std::min(top, y);
      bottom = std::max(bottom, y);
    }
  }
  const int margin = box_.fontMetrics().height() / 2;
  EXPECT_EQ(right, box_.width() - 1 - margin);
  EXPECT_EQ(bottom, box_.height() - 1 - (margin - 2)) << "two pixels are left free below the box";
  EXPECT_NEAR(static_cast<double>(right - left + 1) / (bottom - top + 1), 4.0 / 3.0, 0.05);
}

TEST_F(PictureBoxTest, CornersAreRound) {
  const QImage grabbed = box_.grab().toImage();
  const int margin = box_.fontMetrics().height() / 2;
  const int right = box_.width() - 1 - margin;
  const int bottom = box_.height() - 1 - (margin - 2);
  EXPECT_FALSE(IsRed(grabbed, right, bottom));
  EXPECT_TRUE(IsRed(grabbed, right - 4, bottom));
  EXPECT_TRUE(IsRed(grabbed, right, bottom - 4));
}

TEST_F(PictureBoxTest, PlaceTooSmallForItsMarginShowsNothing) {
  box_.resize(4, 4);
  const QImage grabbed = box_.grab().toImage();
  EXPECT_FALSE(IsRed(grabbed, 0, 0));
}

}  // namespace
}  // namespace platform::qt
