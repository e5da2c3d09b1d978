#include "platform/qt/value_bindings.h"

#include <gtest/gtest.h>

#include <QSlider>

#include "platform/qt/peak_bar.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class ValueBindings : public ::testing::Test {
 protected:
  ValueBindings() { opened_ = fixture_.Open(); }
  void SetUp() override { ASSERT_TRUE(opened_); }

  WindowFixture fixture_;
  app::Form1& form_ = fixture_.form;

 private:
  bool opened_ = false;
};

TEST_F(ValueBindings, KeysOnTheSliderChangeTheValueOnce) {
  form_.hscSavVolume.SetValue(50);
  const Counter changes(form_.hscSavVolume.ValueChanged);
  auto& slider = fixture_.Find<QSlider>("hscSavVolume");
  QTest::keyClick(&slider, Qt::Key_Right);
  Settle();
  EXPECT_EQ(form_.hscSavVolume.Value(), 51);
  EXPECT_EQ(changes.Count(), 1);
}

TEST_F(ValueBindings, SettingTheValueMovesTheSlider) {
  form_.hscSavVolume.SetValue(37);
  EXPECT_EQ(fixture_.Find<QSlider>("hscSavVolume").value(), 37);
}

TEST_F(ValueBindings, DraggingScrollsAndTheProgramDoesNotPullTheHandleAway) {
  form_.hscSavVolume.SetValue(10);
  const Counter scrolls(form_.hscSavVolume.Scrolled);
  const Counter changes(form_.hscSavVolume.ValueChanged);
  auto& slider = fixture_.Find<QSlider>("hscSavVolume");
  slider.setSliderDown(true);
  slider.setSliderPosition(40);
  Settle();
  EXPECT_EQ(form_.hscSavVolume.Value(), 40);
  EXPECT_EQ(scrolls.Count(), 1);
  EXPECT_EQ(changes.Count(), 0);
  form_.hscSavVolume.SetValue(80);
  EXPECT_EQ(slider.value(), 40);
  slider.setSliderDown(false);
  EXPECT_EQ(slider.value(), 80);
}

TEST_F(ValueBindings, PeakBarPaintsOnlyWhenItsHeightChanges) {
  auto& bar = fixture_.Find<PeakBar>("ProgressBar1_0");
  form_.ProgressBar1[0].SetVisible(true);
  form_.ProgressBar1[0].SetValue(5000);
  ASSERT_TRUE(WaitFor([&] { return bar.Paints() > 0; }));
  QApplication::processEvents();
  const int before = bar.Paints();
  for (int value = 5000; value < 5010; ++value) {
    form_.ProgressBar1[0].SetValue(value);
    QApplication::processEvents();
  }
  EXPECT_EQ(bar.Paints(), before);
  form_.ProgressBar1[0].SetValue(9000);
  EXPECT_TRUE(WaitFor([&] { return bar.Paints() > before; }));
}

TEST_F(ValueBindings, PeakBarHeightFollowsTheValue) {
  auto& bar = fixture_.Find<PeakBar>("ProgressBar1_1");
  form_.ProgressBar1[1].SetValue(10000);
  EXPECT_EQ(bar.LevelHeight(), bar.height() - 2);
  form_.ProgressBar1[1].SetValue(0);
  EXPECT_EQ(bar.LevelHeight(), 0);
  form_.ProgressBar1[1].SetValue(5000);
  EXPECT_NEAR(bar.LevelHeight(), bar.height() / 2, 2);
}

TEST_F(ValueBindings, PeakBarIsPaintedFromTheBottom) {
  auto& bar = fixture_.Find<PeakBar>("ProgressBar1_0");
  form_.ProgressBar1[0].SetVisible(true);
  form_.ProgressBar1[0].SetValue(3000);
  const QImage image = bar.grab().toImage();
  const int middle = image.width() / 2;
  const QColor base = bar.palette().color(QPalette::Base);
  EXPECT_EQ(image.pixelColor(middle, 5), base);
  EXPECT_NE(image.pixelColor(middle, image.height() - 5), base);
}

}  // namespace
}  // namespace platform::qt
