#include "platform/qt/text_bindings.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class TextBindings : public ::testing::Test {
 protected:
  TextBindings() {
    opened_ = fixture_.Open();
    for (const char16_t* genre : {u"Rock", u"Pop & Hits", u"Jazz", u"Dance", u"Oldies", u"Dance"}) {
      form_.Combo1.AddItem(genre);
    }
  }
  void SetUp() override { ASSERT_TRUE(opened_); }

  WindowFixture fixture_;
  app::Form1& form_ = fixture_.form;

 private:
  bool opened_ = false;
};

TEST_F(TextBindings, TypingReachesTheControl) {
  const Counter changes(form_.TextBox1[0].TextChanged);
  QTest::keyClicks(&fixture_.Find("TextBox1_0"), "abc");
  Settle();
  EXPECT_EQ(form_.TextBox1[0].GetText(), u"abc");
  EXPECT_EQ(changes.Count(), 3);
}

TEST_F(TextBindings, SettingTheTextShowsItFromItsBeginning) {
  auto& edit = fixture_.Find<QLineEdit>("TextBox1_1");
  form_.TextBox1[1].SetText(u"http://beispiel.example/küste");
  EXPECT_EQ(edit.text(), QString::fromUtf8("http://beispiel.example/küste"));
  EXPECT_EQ(edit.cursorPosition(), 0);
}

TEST_F(TextBindings, ControlCharactersComeBackUnchanged) {
  form_.TextBox1[0].SetText(u"Name\r");
  EXPECT_EQ(form_.TextBox1[0].GetText(), u"Name\r");
  EXPECT_EQ(fixture_.Find<QLineEdit>("TextBox1_0").text(), "Name\r");
}

TEST_F(TextBindings, TextLongerThanTheFieldTakesStaysInTheControl) {
  const std::u16string longest(100000, u'x');
  form_.TextBox1[1].SetText(longest);
  EXPECT_EQ(form_.TextBox1[1].GetText(), longest);
}

TEST_F(TextBindings, ArrowsCountWithinTheRange) {
  auto& field = fixture_.Find<CountingField>("UpDownTextBox1");
  form_.UpDownTextBox1.SetText(u"");
  QTest::keyClick(&field, Qt::Key_Up);
  Settle();
  EXPECT_EQ(form_.UpDownTextBox1.GetText(), u"1");
  QTest::keyClick(&field, Qt::Key_Down);
  QTest::keyClick(&field, Qt::Key_Down);
  Settle();
  EXPECT_EQ(form_.UpDownTextBox1.GetText(), u"0");
  form_.UpDownTextBox1.SetText(u"99999");
  QTest::keyClick(&field, Qt::Key_Up);
  Settle();
  EXPECT_EQ(form_.UpDownTextBox1.GetText(), u"99999");
}

TEST_F(TextBindings, NumberFieldShowsAnyTextButTakesOnlyDigits) {
  auto& field = fixture_.Find<CountingField>("UpDownTextBox1");
  form_.UpDownTextBox1.SetText(u"12");
  field.Edit().end(false);
  QTest::keyClicks(&field.Edit(), "x3");
  Settle();
  EXPECT_EQ(form_.UpDownTextBox1.GetText(), u"123");
  form_.UpDownTextBox1.SetText(u"keine");
  EXPECT_EQ(field.Edit().text(), "keine");
  EXPECT_EQ(form_.UpDownTextBox1.GetText(), u"keine");
}

TEST_F(TextBindings, ChoosingAnEntryByKeyRaisesClickedOnce) {
  form_.Combo1.SetListIndex(0);
  const Counter clicks(form_.Combo1.Clicked);
  QTest::keyClick(&fixture_.Find("Combo1"), Qt::Key_Down);
  Settle();
  EXPECT_EQ(form_.Combo1.ListIndex(), 1);
  EXPECT_EQ(form_.Combo1.GetText(), u"Pop & Hits");
  EXPECT_EQ(clicks.Count(), 1);
}

TEST_F(TextBindings, ChoosingFromTheOpenListRaisesClicked) {
  form_.Combo1.SetListIndex(0);
  const Counter clicks(form_.Combo1.Clicked);
  auto& box = fixture_.Find<QComboBox>("Combo1");
  box.showPopup();
  QTest::keyClick(box.view(), Qt::Key_Down);
  QTest::keyClick(box.view(), Qt::Key_Return);
  Settle();
  EXPECT_EQ(form_.Combo1.ListIndex(), 1);
  EXPECT_EQ(clicks.Count(), 1);
}

TEST_F(TextBindings, ChoosingTheSameEntryCountsWhenAnotherTextStandsThere) {
  form_.Combo1.SetListIndex(0);
  form_.Combo1.SetText(u"Jazz");
  const Counter clicks(form_.Combo1.Clicked);
  auto& box = fixture_.Find<QComboBox>("Combo1");
  box.showPopup();
  QTest::keyClick(box.view(), Qt::Key_Home);
  QTest::keyClick(box.view(), Qt::Key_Return);
  Settle();
  EXPECT_EQ(form_.Combo1.GetText(), u"Rock");
  EXPECT_EQ(clicks.Count(), 1);
}

TEST_F(TextBindings, SecondOfTwoEqualEntriesCanBeChosen) {
  auto& box = fixture_.Find<QComboBox>("Combo1");
  form_.Combo1.SetListIndex(4);
  QTest::keyClick(&box, Qt::Key_Down);
  Settle();
  EXPECT_EQ(form_.Combo1.ListIndex(), 5);
  EXPECT_EQ(box.currentIndex(), 5);
}

TEST_F(TextBindings, TypingAGenreOnlyChangesTheText) {
  form_.Combo1.SetListIndex(0);
  const Counter clicks(form_.Combo1.Clicked);
  auto& box = fixture_.Find<QComboBox>("Combo1");
  box.lineEdit()->selectAll();
  QTest::keyClicks(box.lineEdit(), "Polka");
  Settle();
  EXPECT_EQ(form_.Combo1.GetText(), u"Polka");
  EXPECT_EQ(form_.Combo1.ListIndex(), -1);
  EXPECT_EQ(box.currentText(), "Polka");
  EXPECT_EQ(clicks.Count(), 0);
}

TEST_F(TextBindings, TypingInTheMiddleKeepsTheCursor) {
  form_.Combo1.SetListIndex(0);
  auto& edit = *fixture_.Find<QComboBox>("Combo1").lineEdit();
  edit.setCursorPosition(2);
  QTest::keyClicks(&edit, "xy");
  Settle();
  EXPECT_EQ(form_.Combo1.GetText(), u"Roxyck");
  EXPECT_EQ(edit.cursorPosition(), 4);
}

TEST_F(TextBindings, LeavingTheFieldChoosesNothing) {
  form_.Combo1.SetListIndex(0);
  auto& box = fixture_.Find<QComboBox>("Combo1");
  box.setFocus();
  const Counter clicks(form_.Combo1.Clicked);
  form_.Combo1.SetText(u"Jazz");
  fixture_.Find("Command1").setFocus();
  box.setFocus();
  box.lineEdit()->selectAll();
  QTest::keyClicks(box.lineEdit(), "Oldies");
  QTest::keyClick(box.lineEdit(), Qt::Key_Return);
  Settle();
  EXPECT_EQ(form_.Combo1.GetText(), u"Oldies");
  EXPECT_EQ(clicks.Count(), 0);
}

TEST_F(TextBindings, EntriesAddedLaterAreShown) {
  form_.Combo1.AddItem(u"Gothic");
  auto& box = fixture_.Find<QComboBox>("Combo1");
  EXPECT_EQ(box.count(), 7);
  EXPECT_EQ(box.itemText(6), "Gothic");
}

TEST_F(TextBindings, ProgramMayGiveAFieldTheFocus) {
  form_.TextBox1[1].SetFocus();
  EXPECT_TRUE(fixture_.Find("TextBox1_1").hasFocus());
}

}  // namespace
}  // namespace platform::qt
