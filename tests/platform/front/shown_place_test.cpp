#include "platform/front/shown_place.h"

#include <gtest/gtest.h>

namespace platform::front {
namespace {

TEST(ShownPlaceTest, WhatSticksOutAboveIsTakenFromTheLowerEnd) {
  EXPECT_EQ(BelowUpperEdge({10, -30, 200, 100}), (controls::Place{10, 0, 200, 70}));
  EXPECT_EQ(BelowUpperEdge({10, 0, 200, 100}), (controls::Place{10, 0, 200, 100}));
  EXPECT_EQ(BelowUpperEdge({10, 30, 200, 100}), (controls::Place{10, 30, 200, 100}));
}

TEST(ShownPlaceTest, PanelThatIsWhollyAboveHasNoHeight) {
  EXPECT_EQ(BelowUpperEdge({10, -130, 200, 100}), (controls::Place{10, -30, 200, 0}));
}

}  // namespace
}  // namespace platform::front
