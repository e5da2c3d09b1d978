// Enter in a field of the editor presses the field's button, and nothing else does.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class EnterInFields : public ::testing::Test {
 protected:
  EnterInFields() {
    for (const char16_t* genre : {u"Rock", u"Pop", u"Jazz"}) form_.Combo1.AddItem(genre);
    form_.Combo1.SetListIndex(0);
    opened_ = fixture_.Open();
  }
  void SetUp() override { ASSERT_TRUE(opened_); }

  void Press(const char* field, int key = Qt::Key_Return, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&fixture_.Find(field), static_cast<Qt::Key>(key), modifiers);
    Settle();
  }

  WindowFixture fixture_;
  app::Form1& form_ = fixture_.form;
  struct Clicks {
    explicit Clicks(app::Form1& form)
        : number(form.Command8[0].Clicked),
          all(form.Command8[1].Clicked),
          link(form.Command8[2].Clicked),
          genre(form.Command8[4].Clicked) {}
    [[nodiscard]] std::array<int, 4> Counts() const {
      return {number.Count(), all.Count(), link.Count(), genre.Count()};
    }
    Counter number, all, link, genre;
  } clicks_{form_};
  using Counts = std::array<int, 4>;

 private:
  bool opened_ = false;
};

TEST_F(EnterInFields, PressesTheButtonBesideTheField) {
  Press("TextBox1_0");
  EXPECT_EQ(clicks_.Counts(), (Counts{0, 1, 0, 0}));
  Press("TextBox1_1");
  EXPECT_EQ(clicks_.Counts(), (Counts{0, 1, 1, 0}));
  Press("Combo1");
  EXPECT_EQ(clicks_.Counts(), (Counts{0, 1, 1, 1}));
  Press("UpDownTextBox1", Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(clicks_.Counts(), (Counts{1, 1, 1, 1}));
}

TEST_F(EnterInFields, WhatWasTypedComesFirst) {
  controls::Text applied;
  const auto applies = form_.Command8[2].Clicked.Subscribe([&] { applied = form_.TextBox1[1].GetText(); });
  QTest::keyClicks(&fixture_.Find("TextBox1_1"), "http://a/");
  Press("TextBox1_1");
  EXPECT_EQ(applied, u"http://a/");
}

TEST_F(EnterInFields, HiddenOrDisabledButtonIsNotPressed) {
  form_.Command8[1].SetVisible(false);
  form_.Command8[2].SetEnabled(false);
  Press("TextBox1_0");
  Press("TextBox1_1");
  EXPECT_EQ(clicks_.Counts(), (Counts{0, 0, 0, 0}));
}

TEST_F(EnterInFields, ButtonThatIsHiddenBeforeItsTurnIsNotPressed) {
  QTest::keyClick(&fixture_.Find("TextBox1_0"), Qt::Key_Return);
  form_.Command8[1].SetVisible(false);
  Settle();
  EXPECT_EQ(clicks_.Counts(), (Counts{0, 0, 0, 0}));
}

TEST_F(EnterInFields, KeyThatIsHeldDownAppliesOnceAndOneWithControlNever) {
  Press("TextBox1_0");
  QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, {}, QStringLiteral("\r"), true);
  QApplication::sendEvent(&fixture_.Find("TextBox1_0"), &repeated);
  Settle();
  Press("TextBox1_0", Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(clicks_.Counts(), (Counts{0, 1, 0, 0}));
}

TEST_F(EnterInFields, InTheOpenListOfTheComboBoxItChoosesOnly) {
  auto& combo = fixture_.Find<QComboBox>("Combo1");
  const Counter chosen(form_.Combo1.Clicked);
  combo.showPopup();
  ASSERT_TRUE(WaitFor([&] { return combo.view()->isVisible(); }));
  combo.view()->setCurrentIndex(combo.model()->index(2, 0));
  QTest::keyClick(combo.view(), Qt::Key_Return);
  ASSERT_TRUE(WaitFor([&] { return !combo.view()->isVisible(); }));
  Settle();
  EXPECT_EQ(form_.Combo1.GetText(), u"Jazz");
  EXPECT_EQ(chosen.Count(), 1);
  EXPECT_EQ(clicks_.Counts(), (Counts{0, 0, 0, 0}));
}

TEST_F(EnterInFields, TypedGenreIsAppliedAndNotChosenFromTheList) {
  auto& combo = fixture_.Find<QComboBox>("Combo1");
  combo.lineEdit()->selectAll();
  QTest::keyClicks(&combo, "Pop");
  Settle();
  const Counter chosen(form_.Combo1.Clicked);
  Press("Combo1");
  EXPECT_EQ(clicks_.Counts(), (Counts{0, 0, 0, 1}));
  EXPECT_EQ(chosen.Count(), 0) << "in the view of a genre that would show another view";
}

TEST_F(EnterInFields, HelpKeyWorksEverywhere) {
  const Counter shown(form_.ShowGuide.Clicked);
  for (const char* name : {"SymbolListview", "TextBox1_0", "Command6"}) {
    fixture_.Find(name).setFocus();
    QTest::keyClick(&fixture_.Find(name), Qt::Key_F1);
    Settle();
  }
  EXPECT_EQ(shown.Count(), 3);
}

}  // namespace
}  // namespace platform::qt
