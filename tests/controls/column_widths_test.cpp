#include "controls/column_widths.h"

#include <gtest/gtest.h>

namespace controls {
namespace {

using Widths = std::vector<int>;

TEST(ColumnWidthsTest, SpareRoomGoesInEqualPartsToTheColumnsThatTakeIt) {
  const std::vector<ColumnWish> wishes = {{300}, {120, true}, {120}, {200, true}, {120}};
  EXPECT_EQ(FittedWidths(wishes, 960), (Widths{300, 170, 120, 250, 120}));
  EXPECT_EQ(FittedWidths(wishes, 961), (Widths{300, 170, 120, 251, 120})) << "not one pixel is left over";
}

TEST(ColumnWidthsTest, LastColumnFillsTheRoomThatNoOtherTakes) {
  EXPECT_EQ(FittedWidths({{300}, {120}}, 500), (Widths{300, 200}));
}

TEST(ColumnWidthsTest, ColumnsThatNeedMoreThanThereIsStayAsTheyAre) {
  EXPECT_EQ(FittedWidths({{300}, {120, true}}, 419), (Widths{300, 120}));
  EXPECT_EQ(FittedWidths({{300}, {120, true}}, 0), (Widths{300, 120}));
  EXPECT_EQ(FittedWidths({{2000000000}, {2000000000, true}}, 400), (Widths{2000000000, 2000000000}));
}

TEST(ColumnWidthsTest, ListWithoutColumnsHasNothingToFit) { EXPECT_TRUE(FittedWidths({}, 400).empty()); }

}  // namespace
}  // namespace controls
