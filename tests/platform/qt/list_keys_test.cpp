// The keyboard in a station list in which no row is selected.
#include <gtest/gtest.h>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

using controls::RowId;

class ListKeys : public ::testing::Test {
 protected:
  ListKeys() { opened_ = fixture_.Open(); }
  void SetUp() override { ASSERT_TRUE(opened_); }

  void Fill(int count) {
    for (int number = 0; number < count; ++number) {
      controls::ListRow row;
      row.cells.Set(0, u"Radio " + FromQt(QString::number(number)));
      list_.AddRow(std::move(row));
    }
  }
  void Press(Qt::Key key) {
    QTest::keyClick(&view_, key);
    Settle();
  }
  /// Selects a row and deletes it, as the program does.
  void Delete(std::size_t row) {
    list_.Select(list_.RowAt(row));
    list_.RemoveRow(list_.RowAt(row));
  }
  /// The position of the selected row, -1 for none.
  int Selected() const {
    const auto position = list_.IndexOf(list_.SelectedRow());
    return position ? static_cast<int>(*position) : -1;
  }

  WindowFixture fixture_;
  controls::ListView& list_ = fixture_.form.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");

 private:
  bool opened_ = false;
};

class KeyThatSelects : public ListKeys, public ::testing::WithParamInterface<Qt::Key> {};

TEST_P(KeyThatSelects, SelectsTheOnlyStation) {
  Fill(1);
  Press(GetParam());
  EXPECT_EQ(Selected(), 0);
}

INSTANTIATE_TEST_SUITE_P(Keys, KeyThatSelects,
                         ::testing::Values(Qt::Key_Up, Qt::Key_Down, Qt::Key_Space, Qt::Key_Home, Qt::Key_End,
                                           Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Return, Qt::Key_Enter));

class KeyThatSteps : public ListKeys, public ::testing::WithParamInterface<Qt::Key> {};

TEST_P(KeyThatSteps, SelectsTheFramedRowBeforeItLeavesIt) {
  Fill(5);
  list_.Select(list_.RowAt(2));
  list_.Select(RowId::kNone);
  ASSERT_EQ(view_.currentIndex().row(), 2);
  Press(GetParam());
  EXPECT_EQ(Selected(), 2);
}

TEST_P(KeyThatSteps, SelectsAfterADeletionTheRowThatTookThePlace) {
  Fill(5);
  Delete(2);
  EXPECT_EQ(Selected(), -1) << "a selection would fetch a title";
  EXPECT_EQ(view_.currentIndex().row(), 2);
  Press(GetParam());
  EXPECT_EQ(list_.Cell(list_.SelectedRow(), 0), u"Radio 3");
}

INSTANTIATE_TEST_SUITE_P(Keys, KeyThatSteps,
                         ::testing::Values(Qt::Key_Up, Qt::Key_Down, Qt::Key_Space, Qt::Key_Return));

TEST_F(ListKeys, AfterTheLastRowsDeletionTheFrameStandsOnTheRowBefore) {
  Fill(3);
  Delete(2);
  Press(Qt::Key_Down);
  EXPECT_EQ(list_.Cell(list_.SelectedRow(), 0), u"Radio 1");
}

TEST_F(ListKeys, SecondPressOfAnArrowMovesOn) {
  Fill(3);
  Press(Qt::Key_Down);
  ASSERT_EQ(Selected(), 0);
  Press(Qt::Key_Down);
  EXPECT_EQ(Selected(), 1);
}

TEST_F(ListKeys, EnterPlaysTheRowThatItSelects) {
  Fill(3);
  Delete(0);
  std::vector<Text> played;
  const auto subscription =
      list_.DoubleClicked.Subscribe([&](RowId id) { played.push_back(list_.Cell(id, 0)); });
  Press(Qt::Key_Return);
  EXPECT_EQ(played, std::vector<Text>{u"Radio 1"});
}

TEST_F(ListKeys, SpaceInsideANameThatIsTypedIsStillALetter) {
  for (const char16_t* name : {u"Radio", u"Radio Z"}) {
    controls::ListRow row;
    row.cells.Set(0, name);
    list_.AddRow(std::move(row));
  }
  QTest::keyClicks(&view_, "radio ");
  Settle();
  EXPECT_EQ(Selected(), 1);
}

}  // namespace
}  // namespace platform::qt
