#include "controls/picture_place.h"

#include <gtest/gtest.h>

namespace controls {
namespace {

constexpr Place kPanel{9000, 6000, 4000, 3030};
constexpr int kTop = 1000;  // so that 2000 twips are left below it

TEST(PicturePlace, SmallPictureKeepsItsSizeInTheLowerRightCorner) {
  EXPECT_EQ(FitLowerRight(300, 200, kPanel, kTop), (Place{3700, 2800, 300, 200}));
}

TEST(PicturePlace, WidePictureIsScaledToHalfOfThePanel) {
  EXPECT_EQ(FitLowerRight(4000, 1000, kPanel, kTop), (Place{2000, 2500, 2000, 500}));
}

TEST(PicturePlace, HighPictureIsScaledToTheRoomBelow) {
  EXPECT_EQ(FitLowerRight(1000, 4000, kPanel, kTop), (Place{3500, 1000, 500, 2000}));
}

TEST(PicturePlace, NothingFitsWithoutRoomAndNothingOfNoSize) {
  EXPECT_EQ(FitLowerRight(0, 200, kPanel, kTop), Place());
  EXPECT_EQ(FitLowerRight(300, 0, kPanel, kTop), Place());
  EXPECT_EQ(FitLowerRight(300, 200, kPanel, 3000), Place());
  EXPECT_EQ(FitLowerRight(300, 200, {0, 0, 1, 3000}, kTop), Place());
}

}  // namespace
}  // namespace controls
