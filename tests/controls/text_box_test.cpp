#include "controls/text_box.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace controls {
namespace {

TEST(TextBox, ANewTextIsAnnouncedOnceAndTheSameTextIsNot) {
  TextBox box;
  int texts = 0;
  int changes = 0;
  const auto text_changed = box.TextChanged.Subscribe([&] { ++texts; });
  const auto changed = box.Changed.Subscribe([&] { ++changes; });
  box.SetText(u"Radio");
  box.SetText(u"Radio");
  EXPECT_EQ(box.GetText(), u"Radio");
  EXPECT_EQ(texts, 1);
  EXPECT_EQ(changes, 1);
}

class ComboBoxTest : public testing::Test {
 protected:
  ComboBoxTest() {
    for (const Text item : {u"Rock", u"Dance", u"Jazz", u"Dance"}) box_.AddItem(item);
    clicked_ = box_.Clicked.Subscribe([this] { ++clicks_; });
  }

  ComboBox box_;
  int clicks_ = 0;
  Subscription clicked_;
};

TEST_F(ComboBoxTest, ANewEntryIsAnnounced) {
  int changes = 0;
  const auto changed = box_.Changed.Subscribe([&] { ++changes; });
  box_.AddItem(u"Klassik");
  EXPECT_EQ(changes, 1);
}

TEST_F(ComboBoxTest, NothingIsChosenAtFirst) {
  EXPECT_EQ(box_.ListIndex(), -1);
  EXPECT_EQ(box_.GetText(), u"");
}

TEST_F(ComboBoxTest, ChoosingAnEntrySetsTheTextAndCountsAsAClick) {
  EXPECT_TRUE(box_.SetListIndex(2));
  EXPECT_EQ(box_.GetText(), u"Jazz");
  EXPECT_EQ(box_.ListIndex(), 2);
  EXPECT_EQ(clicks_, 1);
}

TEST_F(ComboBoxTest, TheTextIsSetBeforeTheClick) {
  Text seen;
  const auto subscription = box_.Clicked.Subscribe([&] { seen = box_.GetText(); });
  box_.SetListIndex(2);
  EXPECT_EQ(seen, u"Jazz");
}

TEST_F(ComboBoxTest, ChoosingTheChosenEntryAgainIsNoClick) {
  box_.SetListIndex(2);
  box_.SetListIndex(2);
  EXPECT_EQ(clicks_, 1);
}

TEST_F(ComboBoxTest, EveryChoiceIsAnnouncedOnceWithIndexAndTextTogether) {
  std::vector<std::pair<int, Text>> seen;
  const auto subscription =
      box_.Changed.Subscribe([&] { seen.emplace_back(box_.ListIndex(), box_.GetText()); });
  box_.SetListIndex(1);
  box_.SetListIndex(3);
  box_.SetListIndex(0);
  EXPECT_EQ(seen, (std::vector<std::pair<int, Text>>{{1, u"Dance"}, {3, u"Dance"}, {0, u"Rock"}}));
}

TEST_F(ComboBoxTest, EqualEntriesAreDifferentChoices) {
  box_.SetListIndex(1);
  box_.SetListIndex(3);
  EXPECT_EQ(box_.ListIndex(), 3);
  EXPECT_EQ(clicks_, 2);
}

TEST_F(ComboBoxTest, AnEntryThatDoesNotExistIsNotChosen) {
  box_.SetListIndex(0);
  EXPECT_FALSE(box_.SetListIndex(-1));
  EXPECT_FALSE(box_.SetListIndex(4));
  EXPECT_EQ(box_.ListIndex(), 0);
  EXPECT_EQ(clicks_, 1);
}

TEST_F(ComboBoxTest, TypingIsNoChoiceAndNoClick) {
  box_.SetListIndex(0);
  box_.Type(u"Rock und Pop");
  EXPECT_EQ(box_.GetText(), u"Rock und Pop");
  EXPECT_EQ(box_.ListIndex(), -1);
  box_.Type(u"Rock");
  EXPECT_EQ(box_.ListIndex(), -1);
  EXPECT_EQ(clicks_, 1);
}

TEST_F(ComboBoxTest, AnEntryCanBeChosenAgainAfterAnotherTextWasSet) {
  box_.SetListIndex(0);
  box_.SetText(u"Jazz");
  EXPECT_EQ(box_.ListIndex(), -1);
  EXPECT_TRUE(box_.SetListIndex(0));
  EXPECT_EQ(box_.GetText(), u"Rock");
  EXPECT_EQ(clicks_, 2);
}

}  // namespace
}  // namespace controls
