#include "platform/front/column_shares.h"

#include <gtest/gtest.h>

namespace platform::front {
namespace {

using Pixels = std::vector<int>;

/// At 200 %: a view's pixels are half as large.
class ColumnSharesTest : public ::testing::Test {
 protected:
  ColumnSharesTest() {
    for (const auto spare :
         {controls::SpareRoom::kLeaves, controls::SpareRoom::kTakes, controls::SpareRoom::kLeaves}) {
      controls::ListColumn column;
      column.width = 100;
      column.spare_room = spare;
      list_.AddColumn(column);
    }
  }

  controls::ListView list_;
  ColumnShares shares_{list_, {[](int width) { return width * 2; }, [](int width) { return width / 2; }}};
};

TEST_F(ColumnSharesTest, SpareRoomGoesToTheColumnThatTakesIt) {
  EXPECT_EQ(shares_.Widths({0, 0, 0}, 1000), (Pixels{200, 600, 200}));
  EXPECT_EQ(shares_.Widths({0, 0, 0}, 100), (Pixels{200, 200, 200}));
}

TEST_F(ColumnSharesTest, OnlyColumnsBehindTheDraggedOneGiveWay) {
  shares_.Drag(1, 300);
  EXPECT_EQ(shares_.Widths({210, 300, 200}, 1000), (Pixels{210, 300, 490}));
  shares_.Drag(2, 150);
  EXPECT_EQ(shares_.Widths({210, 300, 150}, 1000), (Pixels{210, 300, 150})) << "nothing is behind the last";
}

TEST_F(ColumnSharesTest, ListLearnsTheWidthAtTheTurnOfTheDragThatHasEnded) {
  shares_.Drag(1, 250);
  shares_.Drag(1, 300);
  const auto dragged = shares_.EndDrag();
  ASSERT_TRUE(dragged);
  EXPECT_EQ(shares_.EndDrag().has_value(), false);
  EXPECT_EQ(list_.Columns()[1].users_width, std::nullopt);
  EXPECT_EQ(shares_.Widths({200, 300, 200}, 1000), (Pixels{200, 300, 500})) << "before the list knows it";
  shares_.Take(*dragged);
  EXPECT_EQ(list_.Columns()[1].users_width, 150);
  EXPECT_EQ(shares_.Widths({200, 300, 200}, 1000), (Pixels{200, 300, 500}));
}

TEST_F(ColumnSharesTest, DragThatBeganMeanwhileCountsInsteadOfTheOneBefore) {
  shares_.Drag(0, 300);
  const auto first = shares_.EndDrag();
  shares_.Drag(0, 340);
  shares_.Take(*first);
  EXPECT_EQ(list_.Columns()[0].users_width, std::nullopt);
  const auto second = shares_.EndDrag();
  shares_.Take(*first);
  EXPECT_EQ(list_.Columns()[0].users_width, std::nullopt);
  shares_.Take(*second);
  EXPECT_EQ(list_.Columns()[0].users_width, 170);
}

TEST_F(ColumnSharesTest, ViewMayHaveFewerColumnsThanTheList) {
  EXPECT_EQ(shares_.Widths({0, 0}, 1000), (Pixels{200, 800}));
  EXPECT_EQ(shares_.Widths({}, 1000), Pixels{});
}

}  // namespace
}  // namespace platform::front
