#include "controls/value_controls.h"

#include <gtest/gtest.h>

namespace controls {
namespace {

TEST(ProgressBar, TakesValuesOutsideToTheNearerEnd) {
  ProgressBar bar;
  bar.SetRange(0, 10000);
  bar.SetValue(12345);
  EXPECT_EQ(bar.Value(), 10000);
  bar.SetValue(-1);
  EXPECT_EQ(bar.Value(), 0);
}

TEST(ProgressBar, AnnouncesOnlyOtherValues) {
  ProgressBar bar;
  int changes = 0;
  const auto changed = bar.Changed.Subscribe([&] { ++changes; });
  bar.SetValue(50);
  bar.SetValue(50);
  EXPECT_EQ(changes, 1);
}

TEST(ProgressBar, ANewRangeTakesTheValueAlong) {
  ProgressBar bar;
  bar.SetValue(50);
  bar.SetRange(0, 10);
  EXPECT_EQ(bar.Value(), 10);
  bar.SetRange(20, 30);
  EXPECT_EQ(bar.Value(), 20);
}

TEST(ProgressBar, ANewRangeIsAnnounced) {
  ProgressBar bar;
  int changes = 0;
  const auto changed = bar.Changed.Subscribe([&] { ++changes; });
  bar.SetRange(0, 10000);
  EXPECT_EQ(changes, 1);
}

TEST(ProgressBar, ARangeThatEndsBeforeItsBeginningIsEmpty) {
  ProgressBar bar;
  bar.SetRange(5, 1);
  EXPECT_EQ(bar.Minimum(), 5);
  EXPECT_EQ(bar.Maximum(), 5);
  EXPECT_EQ(bar.Value(), 5);
}

class ScrollBarTest : public testing::Test {
 protected:
  ScrollBarTest() {
    subscriptions_ += bar_.ValueChanged.Subscribe([this] { ++values_; });
    subscriptions_ += bar_.Scrolled.Subscribe([this] { ++scrolls_; });
  }

  ScrollBar bar_;
  int values_ = 0;
  int scrolls_ = 0;
  Subscriptions subscriptions_;
};

TEST_F(ScrollBarTest, AnotherValueIsAChangeTheSameIsNone) {
  bar_.SetValue(70);
  bar_.SetValue(70);
  EXPECT_EQ(bar_.Value(), 70);
  EXPECT_EQ(values_, 1);
  EXPECT_EQ(scrolls_, 0);
}

TEST_F(ScrollBarTest, DraggingScrollsWithoutAChange) {
  bar_.Scroll(30);
  bar_.Scroll(31);
  EXPECT_EQ(bar_.Value(), 31);
  EXPECT_EQ(scrolls_, 2);
  EXPECT_EQ(values_, 0);
}

TEST_F(ScrollBarTest, ValuesOutsideAreTakenToTheNearerEnd) {
  bar_.SetValue(101);
  EXPECT_EQ(bar_.Value(), 100);
  bar_.Scroll(-1);
  EXPECT_EQ(bar_.Value(), 0);
}

TEST_F(ScrollBarTest, ANewRangeTakesTheValueAlongAndSaysSo) {
  bar_.SetValue(70);
  bar_.SetRange(0, 50);
  EXPECT_EQ(bar_.Value(), 50);
  EXPECT_EQ(values_, 2);
  bar_.SetRange(0, 100);
  EXPECT_EQ(bar_.Value(), 50);
  EXPECT_EQ(values_, 2);
}

TEST_F(ScrollBarTest, ANewRangeIsAnnounced) {
  int changes = 0;
  const auto changed = bar_.Changed.Subscribe([&] { ++changes; });
  bar_.SetRange(10, 200);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(bar_.Minimum(), 10);
  EXPECT_EQ(bar_.Maximum(), 200);
}

TEST(Image, AnnouncesAnotherPicture) {
  Image image;
  int changes = 0;
  const auto changed = image.Changed.Subscribe([&] { ++changes; });
  image.SetPicture(7);
  image.SetPicture(7);
  EXPECT_EQ(image.Picture(), 7U);
  EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace controls
