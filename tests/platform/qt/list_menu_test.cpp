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
      row.cells = {name, u"", u"http://radio.example"};
      list_.AddRow(std::move(row));
    }
    form_.RowFavourite.OfferFor = [](const controls::ListView& list, controls::RowId row) {
      return controls::RowOffer{.available = true, .checked = list.Cell(row, app::kFavouriteCell) == u"1"};
    };
    for (controls::RowCommand* command : {&form_.RowRecording, &form_.RowLink}) {
      command->OfferFor = [](const controls::ListView& list, controls::RowId row) {
        return controls::RowOffer{.available = !list.Cell(row, app::kLinkCell).empty()};
      };
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
      if (entry->isEnabled() && entry->isVisible() && !entry->isSeparator()) texts << entry->text();
    }
    return texts;
  }
  QAction* Entry(const char* caption) const {
    for (QAction* entry : Menu()->actions()) {
      if (entry->text().startsWith(QString::fromUtf8(caption))) return entry;
    }
    return nullptr;
  }
  void Choose(const char* caption) {
    QAction* entry = Entry(caption);
    ASSERT_NE(entry, nullptr) << "no entry " << caption;
    QTest::mouseClick(Menu(), Qt::LeftButton, {}, Menu()->actionGeometry(entry).center());
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
  EXPECT_EQ(Entries(), QStringList({"Abspielen\tReturn", "Favorit", "Aufnehmen", "Link kopieren",
                                    QString::fromUtf8("Eintrag löschen\tDel"),
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

TEST_F(ListMenu, RightClickSelectsItsRowWhichIsResolvedWhenTheMenuIsGone) {
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
        WayOut{"Play", [](QMenu& menu) { ChooseIn(menu, 0); }},
        WayOut{"Favourite", [](QMenu& menu) { ChooseIn(menu, 1); }},
        WayOut{"Record", [](QMenu& menu) { ChooseIn(menu, 2); }},
        WayOut{"Delete", [](QMenu& menu) { ChooseIn(menu, 4); }},
        WayOut{"Closed", [](QMenu& menu) { menu.close(); }}),
    [](const auto& way) { return way.param.name; });

TEST_F(ListMenu, PlayingPlaysTheRowAsADoubleClickDoes) {
  controls::RowId played = controls::RowId::kNone;
  const auto subscription = list_.DoubleClicked.Subscribe([&](controls::RowId row) { played = row; });
  RightClick(At(1));
  Choose("Abspielen");
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

/// Remembers what is chosen of a command.
class Choices {
 public:
  explicit Choices(controls::RowCommand& command)
      : chosen_(command.Chosen.Subscribe(
            [this](const controls::RowChoice& choice) { all.emplace_back(choice.row, choice.checked); })) {}
  using All = std::vector<std::pair<controls::RowId, bool>>;
  All all;

 private:
  controls::Subscription chosen_;
};

TEST_F(ListMenu, FavouriteIsCheckedAsTheRowIsAndChoosingItAsksForTheOther) {
  list_.SetCell(list_.RowAt(1), app::kFavouriteCell, u"1");
  const Choices choices(form_.RowFavourite);
  for (const int row : {0, 1}) {
    RightClick(At(row));
    EXPECT_TRUE(Entry("Favorit")->isCheckable());
    EXPECT_EQ(Entry("Favorit")->isChecked(), row == 1);
    Choose("Favorit");
    EXPECT_TRUE(WaitFor([this] { return Menu() == nullptr; }));
  }
  EXPECT_TRUE(WaitFor([&] { return choices.all.size() == 2; }));
  EXPECT_EQ(choices.all, (Choices::All{{list_.RowAt(0), true}, {list_.RowAt(1), false}}));
}

TEST_F(ListMenu, FavouriteFollowsTheRowWhileTheMenuIsOpen) {
  RightClick(At(0));
  list_.SetCell(list_.RowAt(1), app::kFavouriteCell, u"1");
  EXPECT_FALSE(Entry("Favorit")->isChecked());
  list_.SetCell(list_.RowAt(0), app::kFavouriteCell, u"1");
  EXPECT_TRUE(Entry("Favorit")->isChecked());
  const Choices choices(form_.RowFavourite);
  Choose("Favorit");
  EXPECT_TRUE(WaitFor([&] { return !choices.all.empty(); }));
  EXPECT_EQ(choices.all, (Choices::All{{list_.RowAt(0), false}}));
}

TEST_F(ListMenu, RecordingAndTheLinkAreForTheRowAndNotBeforeTheMenuIsGone) {
  const Choices recorded(form_.RowRecording);
  const Choices copied(form_.RowLink);
  RightClick(At(1));
  Choose("Aufnehmen");
  EXPECT_TRUE(recorded.all.empty()) << "inside the toolkit's call";
  EXPECT_TRUE(WaitFor([&] { return !recorded.all.empty(); }));
  RightClick(At(0));
  Choose("Link kopieren");
  EXPECT_TRUE(WaitFor([&] { return !copied.all.empty(); }));
  EXPECT_EQ(recorded.all, (Choices::All{{list_.RowAt(1), false}}));
  EXPECT_EQ(copied.all, (Choices::All{{list_.RowAt(0), false}}));
}

TEST_F(ListMenu, WhatIsNotOfferedForTheRowCannotBeChosen) {
  list_.SetCell(list_.RowAt(1), app::kLinkCell, u"");
  RightClick(At(1));
  EXPECT_FALSE(Entry("Aufnehmen")->isEnabled());
  EXPECT_FALSE(Entry("Link kopieren")->isEnabled());
  EXPECT_TRUE(Entry("Favorit")->isEnabled());
  list_.SetCell(list_.RowAt(1), app::kLinkCell, u"http://radio.example");
  EXPECT_TRUE(Entry("Aufnehmen")->isEnabled());
}

TEST_F(ListMenu, RowThatIsDeletedWhileItsMenuIsOpenTakesItsEntriesAlong) {
  RightClick(At(1));
  list_.RemoveRow(list_.RowAt(0));
  EXPECT_TRUE(Entry("Abspielen")->isEnabled());
  list_.RemoveRow(list_.RowAt(0));
  for (const char* entry : {"Abspielen", "Favorit", "Aufnehmen", "Link kopieren", "Eintrag löschen"}) {
    EXPECT_FALSE(Entry(entry)->isEnabled()) << entry;
  }
  EXPECT_TRUE(Entry("Sender hinzufügen")->isEnabled());
}

TEST_F(ListMenu, RowsThatAreLoadedAgainWhileTheMenuIsOpenAreNotTheRowOfTheMenu) {
  RightClick(At(0));
  list_.Clear();
  list_.AddRow({});
  for (const char* entry : {"Abspielen", "Favorit", "Eintrag löschen"}) {
    EXPECT_FALSE(Entry(entry)->isEnabled()) << entry;
  }
}

TEST_F(ListMenu, RowThatGoesBetweenTheChoiceAndItsTurnIsLeftAlone) {
  const Choices choices(form_.RowRecording);
  RightClick(At(1));
  Choose("Aufnehmen");
  list_.RemoveRow(list_.RowAt(1));
  Settle();
  EXPECT_TRUE(choices.all.empty());
}

TEST_F(ListMenu, EntriesMeanTheRowOfTheMenuThoughAnotherOneIsSelectedMeanwhile) {
  controls::RowId played = controls::RowId::kNone;
  const auto plays = list_.DoubleClicked.Subscribe([&](controls::RowId row) { played = row; });
  controls::RowId deleted = controls::RowId::kNone;
  const auto deletions = form_.Command8[3].Clicked.Subscribe([&] { deleted = list_.SelectedRow(); });
  for (const char* entry : {"Abspielen", "Eintrag löschen"}) {
    list_.Select(list_.RowAt(0));
    RightClick(At(0));
    // A media key selects the next station.
    list_.Select(list_.RowAt(1));
    ASSERT_EQ(view_.SelectedRow(), 1);
    Choose(entry);
    EXPECT_TRUE(WaitFor([this] { return Menu() == nullptr; }));
    Settle();
  }
  EXPECT_EQ(played, list_.RowAt(0));
  EXPECT_EQ(deleted, list_.RowAt(0));
}

TEST_F(ListMenu, EntriesOfButtonsFollowThemWhileTheMenuIsOpen) {
  RightClick(At(0));
  EXPECT_FALSE(Entry("Löschen zurücknehmen")->isEnabled());
  form_.UndoDelete.SetEnabled(true);
  form_.CommandButton1.SetVisible(false);
  form_.TitleNotices.SetValue(controls::CheckValue::kChecked);
  EXPECT_TRUE(Entry("Löschen zurücknehmen")->isEnabled());
  EXPECT_FALSE(Entry("Liste speichern")->isVisible());
  EXPECT_TRUE(Entry("Neue Titel melden")->isChecked());
}

TEST_F(ListMenu, WindowThatGoesWhileTheMenuIsOpenHarmsNothing) {
  RightClick(At(1));
  Choose("Favorit");
  RightClick(At(1));
  fixture_.window.reset();
  list_.SetCell(list_.RowAt(1), app::kFavouriteCell, u"1");
  list_.Clear();
  Settle();
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
  EXPECT_EQ(Entries().size(), 6);
  EXPECT_FALSE(Entry("Liste speichern")->isVisible() || Entry("Sender hinzufügen")->isVisible());
}

}  // namespace
}  // namespace platform::qt
