#include "platform/qt/list_menu.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QMenu>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

class ListMenu : public ::testing::Test {
 protected:
  ListMenu() {
    opened_ = fixture_.Open();
    form_.UndoDelete.SetEnabled(false);  // as at the program's start
    for (const char16_t* name : {u"Radio A", u"Radio B"}) {
      controls::ListRow row;
      row.cells.Set(0, name);
      list_.AddRow(std::move(row));
    }
  }
  void SetUp() override { ASSERT_TRUE(opened_); }

  QPoint At(int row) const { return view_.visualRect(view_.model()->index(row, 0)).center(); }
  void RightClick(const QPoint& place) {
    QTest::mouseClick(view_.viewport(), Qt::RightButton, {}, place);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, view_.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view_.viewport(), &event);
  }
  QMenu* Menu() const { return view_.findChild<QMenu*>(QStringLiteral("list_menu")); }
  /// The entries that can be chosen now, and the keys behind them.
  QStringList Entries() const {
    QStringList texts;
    for (const QAction* entry : Menu()->actions()) {
      if (entry->isEnabled() && !entry->isSeparator()) texts << entry->text();
    }
    return texts;
  }
  void Choose(const char* caption) {
    for (QAction* entry : Menu()->actions()) {
      if (!entry->text().startsWith(QString::fromUtf8(caption))) continue;
      QTest::mouseClick(Menu(), Qt::LeftButton, {}, Menu()->actionGeometry(entry).center());
      return;
    }
    ADD_FAILURE() << "no entry " << caption;
  }

  WindowFixture fixture_;
  app::Form1& form_ = fixture_.form;
  controls::ListView& list_ = form_.SymbolListview;
  ReportView& view_ = fixture_.Find<ReportView>("SymbolListview");

 private:
  bool opened_ = false;
};

TEST_F(ListMenu, ShowsTheControlsCaptionsAndTheirKeys) {
  form_.UndoDelete.SetEnabled(true);
  RightClick(At(1));
  ASSERT_NE(Menu(), nullptr);
  EXPECT_EQ(Entries(), QStringList({"Start\tReturn", QString::fromUtf8("Eintrag löschen\tDel"),
                                    QString::fromUtf8("Löschen zurücknehmen\tCtrl+Z"),
                                    "Liste speichern\tCtrl+S", QString::fromUtf8("Sender hinzufügen\tCtrl+N"),
                                    "Neue Titel melden, wenn das Fenster nicht zu sehen ist"}));
}

TEST_F(ListMenu, NotificationsAreSwitchedByACheck) {
  const auto check = [this] {
    RightClick(At(0));
    return Menu()->actions().last();
  };
  EXPECT_TRUE(check()->isCheckable());
  EXPECT_FALSE(Menu()->actions().last()->isChecked());
  Choose("Neue Titel melden");
  EXPECT_TRUE(WaitFor([this] { return form_.TitleNotices.Checked(); }));
  EXPECT_TRUE(WaitFor([this] { return Menu() == nullptr; }));
  EXPECT_TRUE(check()->isChecked());
  Choose("Neue Titel melden");
  EXPECT_TRUE(WaitFor([this] { return !form_.TitleNotices.Checked(); }));
}

TEST_F(ListMenu, RightClickSelectsItsRowWhichIsWorkedOutWhenTheMenuIsGone) {
  RightClick(At(1));
  EXPECT_EQ(view_.SelectedRow(), 1);
  EXPECT_FALSE(QTest::qWaitFor([this] { return list_.SelectedRow() == list_.RowAt(1); }, 600))
      << "what a selection starts may take long, and the menu would have to wait for it";
  QTest::keyClick(Menu(), Qt::Key_Escape);
  EXPECT_TRUE(WaitFor([this] { return list_.SelectedRow() == list_.RowAt(1); }));
}

/// The ways in which a menu closes.
struct WayOut {
  const char* name;
  std::function<void(QMenu& menu)> leave;
};

void ChooseIn(QMenu& menu, int entry) {
  QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions().at(entry)).center());
}

class MenuThatGoes : public ListMenu, public ::testing::WithParamInterface<WayOut> {};

// Choosing a row fetches its title while the window processes messages. The menu may go away at any such
// moment, and with it goes whatever call of the toolkit works on it.
TEST_P(MenuThatGoes, InsideTheWaitOfASelectionHarmsNothing) {
  int pumps_inside = 0;
  const auto fetch = list_.SelectionChanged.Subscribe([&] {
    EXPECT_TRUE(WaitFor([&] {
      if (Menu() != nullptr && Menu()->isVisible()) GetParam().leave(*Menu());
      fixture_.loop.ProcessPendingMessages();
      ++pumps_inside;
      return Menu() == nullptr;
    }));
  });
  RightClick(At(1));
  EXPECT_EQ(pumps_inside, 0) << "the menu's opening has called the program";
  ASSERT_NE(Menu(), nullptr);
  // Another fetch that is under way while the menu is open.
  list_.Select(list_.RowAt(0));
  EXPECT_GT(pumps_inside, 0);
  EXPECT_TRUE(WaitFor([this] { return list_.SelectedRow() == list_.RowAt(1) && Menu() == nullptr; }));
}

INSTANTIATE_TEST_SUITE_P(
    ListMenu, MenuThatGoes,
    ::testing::Values(
        WayOut{"Escape", [](QMenu& menu) { QTest::keyPress(&menu, Qt::Key_Escape); }},
        WayOut{"ClickBeside",
               [](QMenu& menu) { QTest::mousePress(&menu, Qt::LeftButton, {}, QPoint(-50, -50)); }},
        WayOut{"SecondRightClick",
               [](QMenu& menu) { QTest::mousePress(&menu, Qt::RightButton, {}, QPoint(-50, -50)); }},
        WayOut{"Start", [](QMenu& menu) { ChooseIn(menu, 0); }},
        WayOut{"Delete", [](QMenu& menu) { ChooseIn(menu, 1); }},
        WayOut{"Closed", [](QMenu& menu) { menu.close(); }}),
    [](const auto& way) { return way.param.name; });

TEST_F(ListMenu, StartPlaysTheRowAsADoubleClickDoes) {
  controls::RowId played = controls::RowId::kNone;
  const auto subscription = list_.DoubleClicked.Subscribe([&](controls::RowId row) { played = row; });
  RightClick(At(1));
  Choose("Start");
  EXPECT_TRUE(WaitFor([&] { return played == list_.RowAt(1); }));
}

TEST_F(ListMenu, DeleteDeletesTheRowThatWasClickedThoughTheListDidNotKnowItYet) {
  controls::RowId deleted = controls::RowId::kNone;
  const auto subscription = form_.Command8[3].Clicked.Subscribe([&] { deleted = list_.SelectedRow(); });
  list_.Select(list_.RowAt(0));
  RightClick(At(1));
  Choose("Eintrag löschen");
  EXPECT_TRUE(WaitFor([&] { return deleted == list_.RowAt(1); }));
}

TEST_F(ListMenu, DeletingIsTakenBackWhileThereIsSomethingToTakeBack) {
  const Counter undone(form_.UndoDelete.Clicked);
  form_.UndoDelete.SetEnabled(true);
  RightClick(At(0));
  Choose("Löschen zurücknehmen");
  EXPECT_TRUE(WaitFor([&] { return undone.Count() == 1; }));
  form_.UndoDelete.SetEnabled(false);
  RightClick(At(0));
  EXPECT_FALSE(Entries().contains(QString::fromUtf8("Löschen zurücknehmen\tCtrl+Z")));
}

TEST_F(ListMenu, SavingAndTheNewStationDoWhatTheirButtonsDo) {
  const Counter saved(form_.CommandButton1.Clicked);
  const Counter added(form_.CommandButton2.Clicked);
  RightClick(At(0));
  Choose("Liste speichern");
  EXPECT_TRUE(WaitFor([&] { return saved.Count() == 1; }));
  RightClick(At(0));
  Choose("Sender hinzufügen");
  EXPECT_TRUE(WaitFor([&] { return added.Count() == 1; }));
}

TEST_F(ListMenu, MenuKeyOpensItAtTheSelectedRow) {
  list_.Select(list_.RowAt(1));
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(0, 0), view_.mapToGlobal(QPoint(0, 0)));
  QApplication::sendEvent(&view_, &event);
  ASSERT_NE(Menu(), nullptr);
  const QRect row = view_.visualRect(view_.model()->index(1, 0));
  EXPECT_TRUE(row.contains(view_.viewport()->mapFromGlobal(Menu()->pos())));
}

TEST_F(ListMenu, WithoutASelectionOnlyTheListsOwnActionsCanBeChosen) {
  RightClick(QPoint(20, view_.viewport()->height() - 5));
  EXPECT_EQ(Entries().size(), 3);
}

TEST_F(ListMenu, HiddenButtonsHaveNoEntry) {
  form_.CommandButton1.SetVisible(false);
  form_.CommandButton2.SetVisible(false);
  RightClick(At(0));
  EXPECT_EQ(Entries().size(), 3);
}

}  // namespace
}  // namespace platform::qt
