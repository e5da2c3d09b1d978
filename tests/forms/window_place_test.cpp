#include "app/forms/window_place.h"

#include <gtest/gtest.h>

namespace app {
namespace {

const std::vector<ScreenRoom> kTwo = {{0, 0, 1920, 1050}, {1920, 0, 1280, 1024}};
constexpr FrameSize kFrame = {20, 60};

WindowPlace Placed(const WindowPlace& place, const std::vector<ScreenRoom>& screens = kTwo) {
  return PlaceOnAScreen(place, screens, kFrame);
}

TEST(WindowPlaceTest, WindowThatTheUserCanTakeHoldOfStaysWhereItWas) {
  for (const WindowPlace& place : {WindowPlace{100, 80, 1024, 724},
                                   {2000, 100, 1024, 724},
                                   {1500, 0, 1024, 724},    // on both screens
                                   {-800, 500, 1024, 724},  // most of it beyond the edge
                                   {1000, 1000, 1024, 724}}) {
    EXPECT_EQ(Placed(place), place) << place.left;
  }
}

TEST(WindowPlaceTest, WindowOfAScreenThatIsGoneIsMovedOntoTheOneThatIsLeft) {
  const std::vector<ScreenRoom> one = {kTwo[0]};
  EXPECT_EQ(Placed({2000, 100, 1024, 724}, one), (WindowPlace{876, 100, 1024, 724}));
  EXPECT_EQ(Placed({-3000, -3000, 1024, 724}, one), (WindowPlace{0, 0, 1024, 724}));
  EXPECT_EQ(Placed({100000, 100000, 100000, 100000}, one), (WindowPlace{0, 0, 1900, 990}));
}

TEST(WindowPlaceTest, WindowWhoseUpperEdgeCannotBeReachedIsMoved) {
  EXPECT_EQ(Placed({100, -20, 1024, 724}), (WindowPlace{100, 0, 1024, 724})) << "above the screen";
  EXPECT_EQ(Placed({-1000, 100, 1024, 724}), (WindowPlace{0, 100, 1024, 724})) << "a sliver at the left";
  EXPECT_EQ(Placed({100, 1040, 1024, 724}), (WindowPlace{100, 266, 1024, 724})) << "a sliver at the bottom";
}

TEST(WindowPlaceTest, WindowIsMovedOntoTheScreenThatShowsMostOfIt) {
  EXPECT_EQ(Placed({2100, -400, 1024, 724}), (WindowPlace{2100, 0, 1024, 724}));
}

TEST(WindowPlaceTest, WindowThatIsLargerThanItsScreenIsMadeSmaller) {
  EXPECT_EQ(Placed({2000, 100, 2500, 724}), (WindowPlace{1920, 100, 1260, 724}));
  EXPECT_EQ(Placed({0, 0, 1024, 3000}), (WindowPlace{0, 0, 1024, 990}));
}

TEST(WindowPlaceTest, ScreensCanHaveNegativePlacesAndTinyOnesLeaveSomething) {
  EXPECT_EQ(Placed({-1000, 50, 800, 600}, {{-1280, 0, 1280, 1024}}), (WindowPlace{-1000, 50, 800, 600}));
  EXPECT_EQ(Placed({50, 50, 800, 600}, {{0, 0, 10, 10}}), (WindowPlace{0, 0, 1, 1}));
  EXPECT_EQ(Placed({50, 50, 800, 600}, {}), (WindowPlace{50, 50, 800, 600}));
}

}  // namespace
}  // namespace app
