#include "controls/row_command.h"

#include <gtest/gtest.h>

#include <vector>

namespace controls {
namespace {

class RowCommandTest : public testing::Test {
 protected:
  RowCommandTest() {
    row_ = list_.AddRow({});
    command_.OfferFor = [this](const ListView&, RowId) { return offer_; };
    chosen_ = command_.Chosen.Subscribe([this](const RowChoice& choice) {
      EXPECT_EQ(&choice.list, &list_);
      EXPECT_EQ(choice.row, row_);
      checks_.push_back(choice.checked);
    });
  }

  ListView list_;
  RowId row_ = RowId::kNone;
  RowCommand command_;
  RowOffer offer_{.available = true, .checked = true};
  std::vector<bool> checks_;
  Subscription chosen_;
};

TEST_F(RowCommandTest, OffersWhatTheProgramSaysOfTheRow) {
  EXPECT_TRUE(command_.Offer(list_, row_).available);
  EXPECT_TRUE(command_.Offer(list_, row_).checked);
  offer_ = {};
  EXPECT_FALSE(command_.Offer(list_, row_).available);
}

TEST_F(RowCommandTest, ChoiceTellsListRowAndWantedCheck) {
  command_.Choose(list_, row_, true);
  command_.Choose(list_, row_);
  EXPECT_EQ(checks_, (std::vector<bool>{true, false}));
}

TEST_F(RowCommandTest, NothingIsOfferedOrChosenForARowThatIsGone) {
  list_.RemoveRow(row_);
  for (const RowId row : {row_, RowId::kNone}) {
    EXPECT_FALSE(command_.Offer(list_, row).available);
    EXPECT_FALSE(command_.Offer(list_, row).checked);
    command_.Choose(list_, row);
  }
  EXPECT_TRUE(checks_.empty());
}

TEST_F(RowCommandTest, CommandThatIsDisabledUnavailableOrNobodysIsNotChosen) {
  command_.SetEnabled(false);
  command_.Choose(list_, row_);
  command_.SetEnabled(true);
  offer_.available = false;
  command_.Choose(list_, row_);
  command_.OfferFor = nullptr;
  command_.Choose(list_, row_);
  EXPECT_TRUE(checks_.empty());
}

}  // namespace
}  // namespace controls
