#include "platform/qt/application_icon.h"

#include <gtest/gtest.h>

#include <QImage>

namespace platform::qt {
namespace {

TEST(ApplicationIconTest, IsDrawnInEverySizeFromSixteenToTwoHundredAndFiftySix) {
  const QIcon icon = ApplicationIcon();
  const QList<QSize> sizes = icon.availableSizes();
  ASSERT_EQ(sizes.size(), 7);
  EXPECT_EQ(sizes.front(), QSize(16, 16));
  EXPECT_EQ(sizes.back(), QSize(256, 256));
  for (const QSize& size : sizes) {
    const QImage picture = icon.pixmap(size, 1.0).toImage();
    ASSERT_EQ(picture.size(), size);
    const int side = size.width();
    EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0) << side << ": the corners are round";
    EXPECT_EQ(picture.pixelColor(side / 2, side * 7 / 8), QColor(0x1f, 0x5f, 0x8b)) << side << ": the ground";
    const QColor top = picture.pixelColor(side / 2, side * 22 / 64);
    EXPECT_GT(top.red(), 240) << side << ": the top of the mast";
    EXPECT_GT(top.blue(), 240) << side;
  }
}

TEST(ApplicationIconTest, ACopyDrawsTheSame) {
  QIcon copy = ApplicationIcon();
  const QIcon icon = copy;
  copy.addPixmap(QPixmap());  // what makes it a copy of its own
  EXPECT_EQ(copy.pixmap(QSize(32, 32), 1.0).toImage(), icon.pixmap(QSize(32, 32), 1.0).toImage());
}

}  // namespace
}  // namespace platform::qt
