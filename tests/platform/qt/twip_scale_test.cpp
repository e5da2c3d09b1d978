#include "platform/qt/twip_scale.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace platform::qt {
namespace {

QFont FontOf(int points) {
  QFont font = QApplication::font();
  font.setPointSize(points);
  return font;
}

TEST(TwipScaleTest, FifteenTwipsAreOnePixelWithASmallFont) {
  const TwipScale scale(FontOf(8));
  EXPECT_EQ(scale.Factor(), 1.0);
  EXPECT_EQ(scale.Pixels(13600), 907);
  EXPECT_EQ(scale.Twips(907), 13605);
  EXPECT_EQ(scale.Pixels(controls::Place{15, 30, 150, 45}), QRect(1, 2, 10, 3));
}

TEST(TwipScaleTest, LargerFontEnlargesAndSaysSo) {
  TwipScale scale(FontOf(8));
  EXPECT_TRUE(scale.SetFont(FontOf(18)));
  EXPECT_FALSE(scale.SetFont(FontOf(18)));
  EXPECT_GT(scale.Pixels(15), 1);
  EXPECT_GT(scale.Scaled(300), 450);
}

TEST(TwipScaleTest, PixelsComeBackThroughTwips) {
  for (const int points : {8, 9, 11, 14, 20}) {
    const TwipScale scale(FontOf(points));
    for (int pixels = 1; pixels < 3000; pixels += 13) {
      EXPECT_EQ(scale.Pixels(scale.Twips(pixels)), pixels) << points;
    }
  }
}

TEST(TwipScaleTest, NegativeLengthsStayNegative) {
  const TwipScale scale(FontOf(9));
  EXPECT_EQ(scale.Pixels(-1500), -100);
}

}  // namespace
}  // namespace platform::qt
