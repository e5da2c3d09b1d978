#include "player/rounding.h"

#include <gtest/gtest.h>

namespace player {
namespace {

TEST(Rounding, TiesGoToTheEvenNumber) {
  EXPECT_EQ(RoundTiesToEven(0.5), 0.0);
  EXPECT_EQ(RoundTiesToEven(1.5), 2.0);
  EXPECT_EQ(RoundTiesToEven(2.5), 2.0);
  EXPECT_EQ(RoundTiesToEven(-0.5), 0.0);
  EXPECT_EQ(RoundTiesToEven(-1.5), -2.0);
}

TEST(Rounding, EverythingElseGoesToTheNearest) {
  EXPECT_EQ(RoundTiesToEven(0.49999999999999994), 0.0);
  EXPECT_EQ(RoundTiesToEven(12.51), 13.0);
  EXPECT_EQ(RoundTiesToEven(-12.51), -13.0);
  EXPECT_EQ(RoundTiesToEven(7.0), 7.0);
}

}  // namespace
}  // namespace player
