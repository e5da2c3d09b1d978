#include "platform/qt/slider_widget.h"

#include <gtest/gtest.h>

#include <QToolTip>

#include "tests/platform/qt/contrast.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

TEST(SliderWidgetTest, ToolTipIsTheValueWhoeverSetsIt) {
  WindowFixture fixture;
  ASSERT_TRUE(fixture.Open());
  auto& slider = fixture.Find<SliderWidget>("hscSavVolume");
  EXPECT_EQ(slider.toolTip(), "100 %");
  fixture.form.hscSavVolume.SetValue(37);
  EXPECT_EQ(slider.toolTip(), "37 %");
  QTest::keyClick(&slider, Qt::Key_Right);
  EXPECT_EQ(slider.toolTip(), "38 %");
}

TEST(SliderWidgetTest, ValueIsAPartOfTheRange) {
  SliderWidget slider(nullptr);
  slider.setRange(100, 300);
  slider.setValue(150);
  EXPECT_EQ(slider.toolTip(), "25 %");
  slider.setRange(150, 150);
  EXPECT_EQ(slider.toolTip(), "0 %");
}

TEST(SliderWidgetTest, ValueStandsBesideTheHandleWhileItIsDragged) {
  WindowFixture fixture;
  ASSERT_TRUE(fixture.Open());
  auto& slider = fixture.Find<SliderWidget>("hscSavVolume");
  fixture.form.hscSavVolume.SetValue(20);
  EXPECT_FALSE(QToolTip::isVisible()) << "nobody drags";
  slider.setSliderDown(true);
  slider.setSliderPosition(60);
  EXPECT_TRUE(WaitFor([] { return QToolTip::isVisible() && QToolTip::text() == "60 %"; }));
  slider.setSliderDown(false);
  QToolTip::hideText();
}

TEST(SliderWidgetTest, FocusIsARingRoundTheSliderInAllColours) {
  for (const QPalette& palette : DesktopPalettes()) {
    const WithPalette colors(palette);
    WindowFixture fixture;
    ASSERT_TRUE(fixture.Open());
    auto& slider = fixture.Find<SliderWidget>("hscSavVolume");
    fixture.form.hscSavVolume.SetValue(25);
    const QImage without = slider.grab().toImage();
    slider.setFocus();
    const QImage with = slider.grab().toImage();
    for (const QPoint& side : {QPoint(0, with.height() / 2), QPoint(with.width() - 1, with.height() / 2),
                               QPoint(with.width() / 2, 0), QPoint(with.width() / 2, with.height() - 1)}) {
      EXPECT_GE(Contrast(with.pixelColor(side), without.pixelColor(side)), 1.8);
    }
  }
}

}  // namespace
}  // namespace platform::qt
