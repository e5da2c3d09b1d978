// What the user does reaches the program from the event loop only, never inside a call of the toolkit.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QSlider>
#include <QTimer>

#include "platform/qt/dialogs.h"
#include "platform/qt/text_bindings.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

using controls::RowId;

class HandOver : public ::testing::Test {
 protected:
  HandOver() {
    for (const char16_t* name : {u"Radio A", u"Radio B", u"Radio C"}) {
      controls::ListRow row;
      row.cells.Set(0, name);
      list_.AddRow(std::move(row));
    }
    for (const char16_t* genre : {u"Rock", u"Jazz"}) form_.Combo1.AddItem(genre);
    opened_ = fixture_.Open();
  }
  void SetUp() override { ASSERT_TRUE(opened_); }

  QPoint At(int row) const { return view_.visualRect(view_.model()->index(row, 0)).center(); }
  void PressRow(int row) { QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, At(row)); }
  template <typename Widget>
  Widget& Find(const char* name) const {
    return fixture_.Find<Widget>(name);
  }

  /// The gesture's calls have returned when the event is raised for the first time.
  template <typename... Arguments>
  void ExpectLater(const char* what, controls::Event<Arguments...>& event,
                   const std::function<void()>& gesture) {
    const Counter raised(event);
    gesture();
    EXPECT_EQ(raised.Count(), 0) << what;
    Settle();
    EXPECT_GE(raised.Count(), 1) << what;
  }

  WindowFixture fixture_;
  app::Form1& form_ = fixture_.form;
  controls::ListView& list_ = form_.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");

 private:
  bool opened_ = false;
};

TEST_F(HandOver, ButtonsAndBoxes) {
  auto& start = Find<QWidget>("Command1");
  ExpectLater("mouse", form_.Command1.Clicked, [&] { QTest::mouseClick(&start, Qt::LeftButton); });
  ExpectLater("Enter", form_.Command1.Clicked, [&] { QTest::keyClick(&start, Qt::Key_Return); });
  ExpectLater("context", form_.Command3.ContextClicked, [&] {
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(&Find<QWidget>("Command3"), &event);
  });
  ExpectLater("check box", form_.Check1.Clicked, [&] { Find<QCheckBox>("Check1").click(); });
}

TEST_F(HandOver, Fields) {
  ExpectLater("typing", form_.TextBox1[0].TextChanged,
              [&] { QTest::keyClicks(&Find<QLineEdit>("TextBox1_0"), "a"); });
  ExpectLater("arrow", form_.UpDownTextBox1.TextChanged,
              [&] { QTest::keyClick(&Find<QWidget>("UpDownTextBox1"), Qt::Key_Up); });
  ExpectLater("genre by key", form_.Combo1.Clicked,
              [&] { QTest::keyClick(&Find<QWidget>("Combo1"), Qt::Key_Down); });
  ExpectLater("typed genre", form_.Combo1.TextChanged,
              [&] { QTest::keyClicks(Find<QComboBox>("Combo1").lineEdit(), "x"); });
  ExpectLater("slider's key", form_.hscSavVolume.ValueChanged,
              [&] { QTest::keyClick(&Find<QWidget>("hscSavVolume"), Qt::Key_Left); });
  ExpectLater("slider that is dragged", form_.hscSavVolume.Scrolled, [&] {
    Find<QSlider>("hscSavVolume").setSliderDown(true);
    Find<QSlider>("hscSavVolume").setSliderPosition(20);
  });
}

TEST_F(HandOver, Lists) {
  ExpectLater("row", list_.SelectionChanged, [&] { PressRow(1); });
  ExpectLater("selected row", list_.SelectedRowClicked, [&] { PressRow(1); });
  ExpectLater("arrow", list_.SelectionChanged, [&] { QTest::keyClick(&view_, Qt::Key_Down); });
  ExpectLater("Enter", list_.DoubleClicked, [&] { QTest::keyClick(&view_, Qt::Key_Return); });
  ExpectLater("double click", list_.DoubleClicked,
              [&] { QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, At(2)); });
  ExpectLater("Delete", list_.DeletePressed, [&] { QTest::keyClick(&view_, Qt::Key_Delete); });
  QHeaderView& header = *view_.header();
  ExpectLater("header", list_.HeaderClicked,
              [&] { QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(20, 5)); });
}

TEST_F(HandOver, KeysOfTheWindowAndItsClosing) {
  ExpectLater("shortcut", form_.CommandButton1.Clicked,
              [&] { QTest::keyClick(fixture_.window.get(), Qt::Key_S, Qt::ControlModifier); });
  ExpectLater("close button", form_.form.QueryUnload, [&] { fixture_.window->close(); });
}

// The program's own calls of the toolkit take the keyboard from the list as well.
TEST_F(HandOver, ListThatLosesTheKeyboardIsNotResolvedInsideTheCallThatTakesIt) {
  QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Down, {}, {}, true);
  ExpectLater("hidden", list_.SelectionChanged, [&] {
    view_.setFocus();
    QApplication::sendEvent(&view_, &repeated);
    list_.SetVisible(false);
  });
  list_.SetVisible(true);
  ExpectLater("keyboard moved", list_.SelectionChanged, [&] {
    view_.setFocus();
    QApplication::sendEvent(&view_, &repeated);
    form_.TextBox1[0].SetFocus();
  });
}

TEST_F(HandOver, ComesInTheOrderOfTheInput) {
  std::vector<std::string> order;
  controls::Subscriptions subscriptions;
  subscriptions += list_.SelectionChanged.Subscribe([&] { order.emplace_back("row"); });
  subscriptions += form_.Command6.Clicked.Subscribe([&] { order.emplace_back("stop"); });
  subscriptions += form_.hscSavVolume.ValueChanged.Subscribe([&] { order.emplace_back("volume"); });
  QTest::mouseClick(&Find<QWidget>("Command6"), Qt::LeftButton);
  PressRow(2);
  QTest::keyClick(&Find<QWidget>("hscSavVolume"), Qt::Key_Left);
  PressRow(0);
  Settle();
  EXPECT_EQ(order, (std::vector<std::string>{"stop", "row", "volume", "row"}));
}

TEST_F(HandOver, WidgetThatWentTakesWhatItHandedOverAlong) {
  const Counter clicks(form_.Command1.Clicked);
  QTest::mouseClick(&Find<QWidget>("Command1"), Qt::LeftButton);
  fixture_.window.reset();
  Settle();
  EXPECT_EQ(clicks.Count(), 0);
}

// What a widget shows already is not taken back because something else of its control changes.
TEST_F(HandOver, InputThatHasNotHadItsTurnStaysShown) {
  QTest::keyClicks(&Find<QLineEdit>("TextBox1_0"), "neu");
  form_.TextBox1[0].SetToolTip(u"anders");
  EXPECT_EQ(Find<QLineEdit>("TextBox1_0").text(), "neu");
  QTest::keyClick(&Find<QWidget>("UpDownTextBox1"), Qt::Key_Up);
  form_.UpDownTextBox1.SetToolTip(u"anders");
  EXPECT_EQ(Find<CountingField>("UpDownTextBox1").Edit().text(), "1");
  Find<QCheckBox>("Check2").click();
  form_.Check2.SetToolTip(u"anders");
  EXPECT_TRUE(Find<QCheckBox>("Check2").isChecked());
  QTest::keyClicks(Find<QComboBox>("Combo1").lineEdit(), "Folk");
  form_.Combo1.SetToolTip(u"anders");
  EXPECT_EQ(Find<QComboBox>("Combo1").currentText(), "Folk");
  QTest::keyClick(&Find<QWidget>("hscSavVolume"), Qt::Key_Left);
  form_.hscSavVolume.SetToolTip(u"anders");
  EXPECT_EQ(Find<QSlider>("hscSavVolume").value(), 99);
  PressRow(1);
  list_.SetToolTip(u"anders");
  EXPECT_EQ(view_.SelectedRow(), 1);
  Settle();
  EXPECT_EQ(form_.TextBox1[0].GetText(), u"neu");
  EXPECT_EQ(form_.UpDownTextBox1.GetText(), u"1");
  EXPECT_TRUE(form_.Check2.Checked());
  EXPECT_EQ(form_.Combo1.GetText(), u"Folk");
  EXPECT_EQ(form_.hscSavVolume.Value(), 99);
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(1));
}

TEST_F(HandOver, LettersTypedOneAfterTheOtherAllStay) {
  auto& field = Find<QLineEdit>("TextBox1_0");
  QTest::keyClicks(&field, "ab");
  QCoreApplication::sendPostedEvents(&fixture_.loop);
  QTest::keyClicks(&field, "c");
  Settle();
  EXPECT_EQ(field.text(), "abc");
  EXPECT_EQ(form_.TextBox1[0].GetText(), u"abc");
}

TEST_F(HandOver, TextThatTheProgramWritesReplacesTypingThatStoodOnAnother) {
  for (const char* name : {"TextBox1_0", "Combo1"}) {
    auto& control =
        name == std::string("Combo1") ? static_cast<controls::TextControl&>(form_.Combo1) : form_.TextBox1[0];
    auto& widget = Find<QWidget>(name);
    QTest::keyClicks(&widget, "x");
    control.SetText(u"Sender B");
    QTest::keyClick(&widget, Qt::Key_End);
    QTest::keyClicks(&widget, "!");
    std::vector<Text> texts;
    const auto changes = control.TextChanged.Subscribe([&] { texts.push_back(control.GetText()); });
    Settle();
    EXPECT_EQ(texts, std::vector<Text>{u"Sender B!"}) << name;
  }
}

TEST_F(HandOver, CheckThatIsTakenBackBeforeItsTurnCountsTwice) {
  const Counter clicks(form_.Check2.Clicked);
  Find<QCheckBox>("Check2").click();
  Find<QCheckBox>("Check2").click();
  Settle();
  EXPECT_EQ(clicks.Count(), 2);
  EXPECT_FALSE(Find<QCheckBox>("Check2").isChecked());
}

// A row that is chosen before the previous one had its turn: both are resolved, the last one stays.
TEST_F(HandOver, RowsChosenQuicklyAreEachResolved) {
  std::vector<RowId> selected;
  const auto subscription =
      list_.SelectionChanged.Subscribe([&] { selected.push_back(list_.SelectedRow()); });
  for (const int row : {0, 1, 2}) PressRow(row);
  Settle();
  EXPECT_EQ(selected, (std::vector<RowId>{list_.RowAt(0), list_.RowAt(1), list_.RowAt(2)}));
  EXPECT_EQ(view_.SelectedRow(), 2);
}

TEST_F(HandOver, RowThatGoesBeforeItsTurnIsNotSelected) {
  list_.Select(list_.RowAt(0));
  PressRow(1);
  list_.RemoveRow(list_.RowAt(1));
  Settle();
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(0));
  EXPECT_EQ(view_.SelectedRow(), 0);
}

TEST_F(HandOver, StartOfARowIsDroppedWhenAnotherOneIsSelectedMeanwhile) {
  const Counter starts(list_.DoubleClicked);
  const auto slow = list_.SelectionChanged.Subscribe([&, entered = false]() mutable {
    if (std::exchange(entered, true)) return;
    PressRow(2);
    fixture_.loop.ProcessPendingMessages();
  });
  list_.Select(RowId::kNone);
  QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Down, {}, {}, true);
  QApplication::sendEvent(&view_, &repeated);
  QTest::keyClick(&view_, Qt::Key_Return);
  Settle();
  EXPECT_EQ(list_.SelectedRow(), list_.RowAt(2));
  EXPECT_EQ(starts.Count(), 0);
}

/// A message box over the main window, and what is done while it is open.
class InsideADialog : public HandOver {
 protected:
  void OpenBox(const std::function<void()>& inside) {
    dialogs_.SetMainWindow(fixture_.window.get());
    QTimer::singleShot(0, qApp, [&] {
      ASSERT_NE(QApplication::activeModalWidget(), nullptr);
      inside();
      QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return);
    });
    dialogs_.MessageBoxW(u"Text", u"", kMbIconInformation);
  }
  QtDialogs dialogs_{fixture_.paths};
};

TEST_F(InsideADialog, CommandsGivenBeforeItOpenedAreDroppedAsTheirInputWouldBe) {
  const Counter starts(form_.Command1.Clicked);
  const Counter views(form_.Check1.Clicked);
  const Counter genres(form_.Combo1.Clicked);
  const Counter deletions(list_.DeletePressed);
  const Counter closings(form_.form.QueryUnload);
  QTest::mouseClick(&Find<QWidget>("Command1"), Qt::LeftButton);
  Find<QCheckBox>("Check1").click();
  QTest::keyClick(&Find<QWidget>("Combo1"), Qt::Key_Down);
  QTest::keyClick(&view_, Qt::Key_Delete);
  fixture_.window->close();
  OpenBox([] { Settle(); });
  Settle();
  EXPECT_EQ(starts.Count() + views.Count() + genres.Count() + deletions.Count() + closings.Count(), 0);
  EXPECT_FALSE(Find<QCheckBox>("Check1").isChecked()) << "the widget shows what is";
  EXPECT_EQ(Find<QComboBox>("Combo1").currentText(), "");
}

TEST_F(InsideADialog, ValuesSetBeforeItOpenedAreTaken) {
  QTest::keyClicks(&Find<QWidget>("TextBox1_0"), "neu");
  QTest::keyClick(&Find<QWidget>("hscSavVolume"), Qt::Key_Left);
  OpenBox([] { Settle(); });
  EXPECT_EQ(form_.TextBox1[0].GetText(), u"neu");
  EXPECT_EQ(form_.hscSavVolume.Value(), 99);
}

// The toolkit keeps the user from doing this; when the session ends it closes the windows itself.
TEST_F(InsideADialog, ClosingOfTheBlockedWindowIsNotDropped) {
  OpenBox([this] {
    fixture_.window->close();
    Settle();
    EXPECT_TRUE(form_.form.IsClosed());
  });
}

TEST_F(InsideADialog, ChosenRowIsResolvedWhenItIsGone) {
  PressRow(1);
  OpenBox([this] {
    Settle();
    EXPECT_EQ(list_.SelectedRow(), RowId::kNone);
    EXPECT_EQ(view_.SelectedRow(), 1);
  });
  EXPECT_TRUE(WaitFor([this] { return list_.SelectedRow() == list_.RowAt(1); }));
}

}  // namespace
}  // namespace platform::qt
