#include "platform/qt/player_window.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>
#include <QLineEdit>
#include <QTimer>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// Runs the event loop as the program does, with `action` as the first thing that happens.
int RunWith(PlayerWindow& window, const std::function<void()>& action) {
  QTimer::singleShot(0, &window, action);
  return window.Run();
}

TEST(MainWindowTest, CloseButtonClosesTheFormOnceAndEndsTheProgram) {
  WindowFixture fixture;
  const Counter asked(fixture.form.form.QueryUnload);
  const Counter closed(fixture.form.form.Closed);
  EXPECT_EQ(RunWith(*fixture.window, [&] { fixture.window->close(); }), 0);
  EXPECT_EQ(asked.Count(), 1);
  EXPECT_EQ(closed.Count(), 1);
  EXPECT_FALSE(fixture.window->isVisible());
}

TEST(MainWindowTest, WindowIsStillThereWhileClosingIsAsked) {
  WindowFixture fixture;
  bool visible = false;
  const auto subscription =
      fixture.form.form.QueryUnload.Subscribe([&] { visible = fixture.window->isVisible(); });
  RunWith(*fixture.window, [&] { fixture.window->close(); });
  EXPECT_TRUE(visible);
}

TEST(MainWindowTest, SecondCloseWhileClosingIsAskedDoesNothing) {
  WindowFixture fixture;
  const Counter asked(fixture.form.form.QueryUnload);
  const auto subscription = fixture.form.form.QueryUnload.Subscribe([&] { fixture.window->close(); });
  RunWith(*fixture.window, [&] { fixture.window->close(); });
  EXPECT_EQ(asked.Count(), 1);
}

TEST(MainWindowTest, ClosingTheFormClosesTheWindowAndEndsTheProgram) {
  WindowFixture fixture;
  EXPECT_EQ(RunWith(*fixture.window, [&] { fixture.form.form.Close(); }), 0);
  EXPECT_FALSE(fixture.window->isVisible());
}

TEST(MainWindowTest, HasItsIconOnceItIsPainted) {
  WindowFixture fixture;
  const Counter appeared(fixture.window->Appeared);
  EXPECT_TRUE(fixture.window->windowIcon().isNull());
  fixture.window->Open();
  EXPECT_EQ(appeared.Count(), 0) << "not before the event loop runs";
  EXPECT_TRUE(WaitFor([&] { return appeared.Count() > 0; }));
  EXPECT_FALSE(fixture.window->windowIcon().isNull());
  fixture.window->repaint();
  QTest::qWait(1);
  EXPECT_EQ(appeared.Count(), 1);
}

TEST(MainWindowTest, HasItsIconAlsoWhenItIsNotPainted) {
  WindowFixture fixture;
  const Counter appeared(fixture.window->Appeared);
  fixture.window->Open();
  fixture.window->showMinimized();
  fixture.window->setUpdatesEnabled(false);
  EXPECT_TRUE(WaitFor([&] { return appeared.Count() > 0; }));
  EXPECT_FALSE(fixture.window->windowIcon().isNull());
}

TEST(MainWindowTest, FormThatWasClosedWhileLoadingNeverOpens) {
  WindowFixture fixture;
  QTimer::singleShot(0, [&] { fixture.form.form.Close(); });
  QApplication::exec();
  EXPECT_EQ(fixture.window->Run(), 0);
  EXPECT_FALSE(fixture.window->isVisible());
}

TEST(MainWindowTest, TitleIsTheFormsCaptionOnOneLine) {
  WindowFixture fixture;
  EXPECT_EQ(fixture.window->windowTitle(), "Funkhausplayer");
  fixture.form.form.SetCaption(u"Playing: Lied\r\n[*] zwei");
  EXPECT_EQ(fixture.window->windowTitle(), "Playing: Lied  [*][*] zwei");
}

TEST(MainWindowTest, ResizingNotifiesTheFormInTwips) {
  WindowFixture fixture;
  ASSERT_TRUE(fixture.Open());
  const Counter resized(fixture.form.form.Resized);
  // 24 pixels of it are the status line, which is no part of the inner size.
  fixture.window->resize(907, 664);
  ASSERT_TRUE(WaitFor([&] { return resized.Count() > 0; }));
  EXPECT_EQ(fixture.form.form.GetPlace().width, 13605);
  EXPECT_EQ(fixture.form.form.GetPlace().height, 9600);
  EXPECT_EQ(fixture.window->size(), QSize(907, 664));
}

TEST(MainWindowTest, EveryTickOfATimerIsDrivenByTheWindow) {
  WindowFixture fixture;
  for (controls::Timer* timer : {&fixture.form.tmPlay, &fixture.form.Timer1, &fixture.form.Timer2}) {
    const Counter ticks(timer->Ticked);
    timer->SetInterval(5);
    timer->SetEnabled(true);
    EXPECT_TRUE(WaitFor([&] { return ticks.Count() > 0; }));
    timer->SetEnabled(false);
  }
}

class Keys : public ::testing::Test {
 protected:
  Keys() { opened_ = fixture_.Open(); }
  void SetUp() override { ASSERT_TRUE(opened_); }

  WindowFixture fixture_;
  app::Form1& form_ = fixture_.form;

 private:
  bool opened_ = false;
};

TEST_F(Keys, ControlSSavesTheList) {
  const Counter clicks(form_.CommandButton1.Clicked);
  QTest::keyClick(&fixture_.Find("TextBox1_0"), Qt::Key_S, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(clicks.Count(), 1);
  EXPECT_FALSE(fixture_.Find("CommandButton1").toolTip().isEmpty());
}

TEST_F(Keys, ControlSReachesTheProgramThoughAFilterViewHidesTheButton) {
  const Counter clicks(form_.CommandButton1.Clicked);
  form_.CommandButton1.SetVisible(false);
  QTest::keyClick(fixture_.window.get(), Qt::Key_S, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(clicks.Count(), 1);
}

TEST_F(Keys, ControlNMakesAStationUnlessItsButtonIsHidden) {
  const Counter clicks(form_.CommandButton2.Clicked);
  QTest::keyClick(fixture_.window.get(), Qt::Key_N, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(clicks.Count(), 1);
  form_.CommandButton2.SetVisible(false);
  QTest::keyClick(fixture_.window.get(), Qt::Key_N, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(clicks.Count(), 1);
}

TEST_F(Keys, ControlFGoesToTheVisibleList) {
  fixture_.Find("TextBox1_0").setFocus();
  QTest::keyClick(&fixture_.Find("TextBox1_0"), Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(fixture_.Find("SymbolListview").hasFocus());
  form_.SymbolListview.SetVisible(false);
  form_.ExplorerListFilter.SetVisible(true);
  QTest::keyClick(fixture_.window.get(), Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(fixture_.Find("ExplorerListFilter").hasFocus());
}

TEST_F(Keys, DeleteInAListDeletesTheEntryAndInAFieldOnlyALetter) {
  const Counter clicks(form_.Command8[3].Clicked);
  QTest::keyClick(&fixture_.Find("SymbolListview"), Qt::Key_Delete);
  Settle();
  EXPECT_EQ(clicks.Count(), 1);
  QTest::keyClick(&fixture_.Find("TextBox1_0"), Qt::Key_Delete);
  Settle();
  EXPECT_EQ(clicks.Count(), 1);
}

TEST_F(Keys, ControlZTakesADeletionBackUnlessATextFieldHasTheFocus) {
  const Counter clicks(form_.UndoDelete.Clicked);
  int expected = 0;
  for (const char* name : {"SymbolListview", "Command1", "Check2"}) {
    fixture_.Find(name).setFocus();
    QTest::keyClick(&fixture_.Find(name), Qt::Key_Z, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(clicks.Count(), ++expected) << name;
  }
  form_.UpDownTextBox1.SetVisible(true);
  for (const char* name : {"TextBox1_0", "TextBox1_1", "Combo1", "UpDownTextBox1"}) {
    QWidget& field = fixture_.Find(name);
    auto* line = qobject_cast<QLineEdit*>(&field);
    if (line == nullptr) line = field.findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr) << name;
    field.setFocus();
    const QString before = line->text();
    QTest::keyClick(&field, Qt::Key_7);
    EXPECT_NE(line->text(), before) << name;
    for (int times = 0; times < 3; ++times) QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(line->text(), before) << name;
  }
  Settle();
  EXPECT_EQ(clicks.Count(), expected);
}

/// The control that has the keyboard focus; a field's own line edit counts as the field.
QWidget& FocusedControl() {
  QWidget* focused = QApplication::focusWidget();
  const bool inner = focused->objectName().isEmpty() || focused->objectName().startsWith("qt_");
  return inner ? *focused->parentWidget() : *focused;
}

/// The visible widgets that take the keyboard, in the order of the form's inventory.
std::vector<QWidget*> TabStops(const WindowFixture& fixture) {
  std::vector<QWidget*> stops;
  for (const app::FormControl& entry : fixture.form.inventory) {
    auto* widget = fixture.window->findChild<QWidget*>(QLatin1String(entry.name));
    const bool takes_it = widget != nullptr && (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
    if (takes_it && widget->isVisible()) stops.push_back(widget);
  }
  return stops;
}

TEST_F(Keys, TabGoesFromEachControlToTheNextOfTheInventory) {
  form_.Frame3.SetVisible(true);
  const std::vector<QWidget*> stops = TabStops(fixture_);
  ASSERT_GE(stops.size(), 26U);
  stops.front()->setFocus();
  for (QWidget* stop : stops) {
    ASSERT_EQ(FocusedControl().objectName(), stop->objectName());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(&FocusedControl(), stops.front());
}

TEST_F(Keys, EveryControlShowsThatItHasTheKeyboard) {
  form_.Frame3.SetVisible(true);
  controls::ListRow row;
  row.cells.Set(0, u"Radio A");
  form_.SymbolListview.Select(form_.SymbolListview.AddRow(std::move(row)));
  // Styles show the focus of some controls only once the keyboard has moved it.
  fixture_.Find("CmdInfoClose").setFocus();
  QTest::keyClick(&fixture_.Find("CmdInfoClose"), Qt::Key_Tab);
  const std::size_t controls = TabStops(fixture_).size();
  for (std::size_t step = 0; step < controls; ++step) {
    QWidget& control = FocusedControl();
    const QImage with_focus = control.grab().toImage();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_NE(control.grab().toImage(), with_focus) << control.objectName().toStdString();
  }
  EXPECT_TRUE(fixture_.Find("SymbolListview").hasFocus()) << "all of them were seen";
}

QString AccessibleName(QWidget& widget) {
  return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

TEST(Accessibility, EveryControlThatTakesTheKeyboardHasAName) {
  WindowFixture fixture;
  int named = 0;
  for (QWidget* widget : fixture.window->findChildren<QWidget*>()) {
    const bool own = !widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_");
    if (!own || (widget->focusPolicy() & Qt::TabFocus) == 0) continue;
    EXPECT_GT(AccessibleName(*widget).size(), 1) << widget->objectName().toStdString();
    ++named;
  }
  EXPECT_GE(named, 26);
}

TEST(Accessibility, NamesComeFromLabelsToolTipsAndCaptions) {
  WindowFixture fixture;
  const struct {
    const char* control;
    const char* name;
  } expected[] = {{"TextBox1_0", "Station"},
                  {"TextBox1_1", "Weblink"},
                  {"Combo1", "Genre"},
                  {"UpDownTextBox1", "M3U-Nr.:"},
                  {"hscSavVolume", "Lautstärke"},
                  {"Command7", "Lautstärkeregelung"},
                  {"Command8_0", "M3U-Nummer übernehmen"},
                  {"Command8_1", "Alles übernehmen"},
                  {"Command8_2", "Weblink übernehmen"},
                  {"Command8_4", "Genre übernehmen"},
                  {"CmdInfoClose", "Informationen schließen"},
                  {"Command1", "Start"},
                  {"SymbolListview", "Gespeicherte Radiostationen"}};
  for (const auto& [control, name] : expected) {
    EXPECT_EQ(AccessibleName(fixture.Find(control)), QString::fromUtf8(name)) << control;
  }
}

TEST(Accessibility, ListsAreNamedAfterTheView) {
  WindowFixture fixture;
  fixture.form.Frame2.SetCaption(u"Favoriten");
  EXPECT_EQ(AccessibleName(fixture.Find("ExplorerListFilter")), "Favoriten");
}

TEST(Accessibility, ToolTipOfTheNumberButtonNamesTheGenreAsItsFormDoes) {
  WindowFixture fixture;
  EXPECT_EQ(fixture.Find("Command8_0").toolTip(), QString::fromUtf8("Genre übernehmen"));
  EXPECT_EQ(fixture.Find("CommandButton2").toolTip(), "Neuen Listeneintrag erstellen");
}

}  // namespace
}  // namespace platform::qt
