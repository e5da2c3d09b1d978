// What the window asks, saves and remembers when it closes.

#include "tests/window/window_fixture.h"

namespace app {
namespace {

using controls::CheckValue;
using platform::MessageBoxAnswer;

class ShutDownTest : public WindowTest {
 protected:
  std::optional<Text> WrittenView() { return profile.Get(kOptIniPath, u"Pfad3", u"FunkhausFavorit"); }

  std::set<Text> WrittenPaths() {
    std::set<Text> paths;
    for (const auto& write : profile.writes) paths.insert(write.path);
    return paths;
  }

  /// Adds a station through the dialog and answers the question after it with No.
  void AddUnsavedStation() {
    on_new_station = [](app::Form2& form) {
      form.TextBox1[0].SetText(u"Neu");
      form.CommandButton1.Click();
    };
    dialogs.answers = {MessageBoxAnswer::kNo};
    Form().CommandButton2.Click();
    dialogs.boxes.clear();
  }
};

TEST_F(ShutDownTest, WithoutChangesNothingIsAsked) {
  Start();
  Form().form.Close();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_TRUE(Form().form.IsClosed());
}

TEST_F(ShutDownTest, ViewIsWrittenBack) {
  Start();
  Form().form.Close();
  EXPECT_EQ(WrittenView(), u"0");

  Start();
  Form().Check1.Click();
  Form().form.Close();
  EXPECT_EQ(WrittenView(), u"2");

  profile.Set(kOptIniPath, u"Pfad3", u"FunkhausFavorit", u"0");
  Start();
  Form().Check3.Click();
  Form().form.Close();
  EXPECT_EQ(WrittenView(), u"1");
}

TEST_F(ShutDownTest, FavouritesWinWhenBothBoxesAreChecked) {
  Start();
  // Both boxes can be checked only while a switch is under way.
  const auto both = Form().Frame2.Changed.Subscribe([this] {
    if (Form().Frame2.Caption() != u"Favoriten") return;
    Form().Check1.SetValue(CheckValue::kChecked);
    Form().form.Close();
  });
  Form().Check3.Click();
  EXPECT_EQ(WrittenView(), u"1");
}

TEST_F(ShutDownTest, YesSavesOnceAndIsNotAskedAgain) {
  Start();
  AddUnsavedStation();
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().form.Close();
  EXPECT_EQ(BoxTexts(),
            (std::vector<Text>{u"Sollen die Änderungen gespeichert werden?", u"Änderungen gespeichert!"}));
  EXPECT_EQ(dialogs.boxes[0].style, 36U);
  EXPECT_EQ(dialogs.boxes[0].caption, u"");
  EXPECT_TRUE(profile.HasSection(kStationFilePath, u"Neu"));
  EXPECT_EQ(WrittenView(), u"0");
}

TEST_F(ShutDownTest, QuestionComesBeforeTheViewIsWritten) {
  Start();
  AddUnsavedStation();
  std::vector<std::optional<Text>> written;
  dialogs.on_box = [&] { written.push_back(WrittenView()); };
  dialogs.answers = {MessageBoxAnswer::kNo};
  Form().form.Close();
  EXPECT_EQ(written, std::vector<std::optional<Text>>{std::nullopt});
  EXPECT_EQ(WrittenView(), u"0");
}

TEST_F(ShutDownTest, OnlyYesSaves) {
  for (const auto answer : {MessageBoxAnswer::kNo, MessageBoxAnswer::kCancel, MessageBoxAnswer::kOk}) {
    Start();
    AddUnsavedStation();
    dialogs.answers = {answer};
    Form().form.Close();
    EXPECT_FALSE(profile.HasSection(kStationFilePath, u"Neu"));
    dialogs.boxes.clear();
  }
}

TEST_F(ShutDownTest, YesInAFilterViewIsRefusedCountsAsSavedAndTheWindowCloses) {
  Start();
  AddUnsavedStation();
  Form().Check3.Click();
  std::vector<bool> changed;
  dialogs.on_box = [&] { changed.push_back(window->GetSettings().CatalogueChanged); };
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().form.Close();
  EXPECT_EQ(BoxTexts(), (std::vector<Text>{u"Sollen die Änderungen gespeichert werden?",
                                           u"Bitte zuerst den Filter entfernen!"}));
  EXPECT_EQ(changed, (std::vector<bool>{true, false})) << "cleared before the save";
  EXPECT_FALSE(profile.HasSection(kStationFilePath, u"Neu"));
  EXPECT_EQ(WrittenView(), u"1");
  EXPECT_TRUE(Form().form.IsClosed());
}

TEST_F(ShutDownTest, NoSavesNothingAndTheViewIsWrittenAllTheSame) {
  Start();
  AddUnsavedStation();
  dialogs.answers = {MessageBoxAnswer::kNo};
  Form().form.Close();
  EXPECT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_FALSE(profile.HasSection(kStationFilePath, u"Neu"));
  EXPECT_EQ(WrittenView(), u"0");
  EXPECT_TRUE(Form().form.IsClosed());
}

TEST_F(ShutDownTest, EndOfTheSessionAsksNothingSavesNothingAndKeepsUnsavedRows) {
  Start();
  AddUnsavedStation();
  profile.writes.clear();
  Form().form.Close(controls::CloseReason::kSessionEnd);
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(WrittenPaths(), std::set<Text>{kOptIniPath}) << "the view";
  EXPECT_EQ(KeptRows(), std::vector<Text>{u"Neu"});
  EXPECT_EQ(WrittenView(), u"0");
  EXPECT_TRUE(Form().form.IsClosed());
}

TEST_F(ShutDownTest, EndOfTheSessionInAFilterViewKeepsUnsavedRowsAndWritesThatView) {
  Start();
  AddUnsavedStation();
  Form().Check3.Click();
  profile.writes.clear();
  Form().form.Close(controls::CloseReason::kSessionEnd);
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_EQ(WrittenPaths(), std::set<Text>{kOptIniPath});
  EXPECT_EQ(KeptRows(), std::vector<Text>{u"Neu"});
  EXPECT_EQ(WrittenView(), u"1");
}

TEST_F(ShutDownTest, EndOfTheSessionKeepsAnImportAboutWhichClosingDoesNotAsk) {
  Start();
  controls::ListRow row;
  row.cells.Set(app::kNameCell, u"Import");
  Form().SymbolListview.AddRow(row);
  Form().form.Close(controls::CloseReason::kSessionEnd);
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_FALSE(profile.HasSection(kStationFilePath, u"Import"));
  EXPECT_EQ(KeptRows(), std::vector<Text>{u"Import"});
}

TEST_F(ShutDownTest, EndOfTheSessionWithoutUnsavedRowsLeavesNothingBehind) {
  AddStation(u"A", u"http://a/");
  Start();
  profile.writes.clear();
  Form().form.Close(controls::CloseReason::kSessionEnd);
  EXPECT_EQ(WrittenPaths(), std::set<Text>{kOptIniPath});
  EXPECT_FALSE(HasKeptRows());
}

TEST_F(ShutDownTest, EndOfTheSessionWhileTheQuestionStandsOpenIsNoAnswer) {
  Start();
  AddUnsavedStation();
  dialogs.on_box = [this] { Form().form.Close(controls::CloseReason::kSessionEnd); };
  dialogs.answers = {MessageBoxAnswer::kNo};  // what a dismissed box answers
  Form().form.Close();
  EXPECT_EQ(BoxTexts(), std::vector<Text>{u"Sollen die Änderungen gespeichert werden?"});
  EXPECT_FALSE(profile.HasSection(kStationFilePath, u"Neu"));
  EXPECT_EQ(KeptRows(), std::vector<Text>{u"Neu"});
  EXPECT_EQ(WrittenView(), u"0");
  EXPECT_TRUE(Form().form.IsClosed());
}

TEST_F(ShutDownTest, EndOfTheSessionAfterYesFindsEverythingSaved) {
  Start();
  AddUnsavedStation();
  dialogs.on_box = [this] {
    if (dialogs.boxes.size() == 2) Form().form.Close(controls::CloseReason::kSessionEnd);
  };
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().form.Close();
  EXPECT_TRUE(profile.HasSection(kStationFilePath, u"Neu"));
  EXPECT_FALSE(HasKeptRows());
}

TEST_F(ShutDownTest, AnsweredQuestionLeavesNothingBehind) {
  for (const auto answer : {MessageBoxAnswer::kYes, MessageBoxAnswer::kNo}) {
    Start();
    AddUnsavedStation();
    Form().tmUnsaved.Fire();
    ASSERT_TRUE(HasKeptRows());
    dialogs.answers = {answer};
    Form().form.Close();
    EXPECT_FALSE(HasKeptRows());
  }
}

TEST_F(ShutDownTest, CloseWithoutAQuestionLeavesNothingOfAnImportBehind) {
  Start();
  controls::ListRow row;
  row.cells.Set(app::kNameCell, u"Import");
  Form().SymbolListview.AddRow(row);
  Form().tmUnsaved.Fire();
  ASSERT_TRUE(HasKeptRows());
  Form().form.Close();
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_FALSE(HasKeptRows());
}

TEST_F(ShutDownTest, YesThatCouldNotBeFollowedKeepsTheRows) {
  Start();
  AddUnsavedStation();
  profile.fail_writes = true;
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().form.Close();
  EXPECT_EQ(KeptRows(), std::vector<Text>{u"Neu"});
  EXPECT_TRUE(Form().form.IsClosed());

  profile.fail_writes = false;
  Start();
  EXPECT_EQ(Names(Form().SymbolListview), std::vector<Text>{u"Neu"});
  EXPECT_TRUE(window->GetSettings().CatalogueChanged);
  Form().Check3.Click();
  dialogs.boxes.clear();
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().form.Close();
  EXPECT_EQ(BoxTexts().back(), u"Bitte zuerst den Filter entfernen!");
  EXPECT_EQ(KeptRows(), std::vector<Text>{u"Neu"});

  Start();
  EXPECT_TRUE(window->GetSettings().CatalogueChanged) << "the next closing asks again";
}

TEST_F(ShutDownTest, FlagThatARefusedSaveClearedIsKeptCleared) {
  Start();
  AddUnsavedStation();
  Form().tmUnsaved.Fire();
  // While the dialog is open the genre view is switched on, so that the save after it is refused.
  on_new_station = [this](app::Form2&) { Form().Check1.Click(); };
  dialogs.answers = {MessageBoxAnswer::kYes};
  Form().CommandButton2.Click();
  ASSERT_FALSE(window->GetSettings().CatalogueChanged);
  Form().tmUnsaved.Fire();
  window.reset();  // the program was killed
  Start();
  EXPECT_NE(RowNamed(Form().SymbolListview, u"Neu"), controls::RowId::kNone);
  EXPECT_FALSE(window->GetSettings().CatalogueChanged);
}

TEST_F(ShutDownTest, EndBeforeTheViewIsRestoredLeavesTheRememberedViewAndTheKeptRows) {
  Start();
  AddUnsavedStation();
  Form().form.Close(controls::CloseReason::kSessionEnd);
  profile.Set(kOptIniPath, u"Pfad3", u"FunkhausFavorit", u"2");
  Construct();
  Form().form.Close(controls::CloseReason::kSessionEnd);
  EXPECT_EQ(WrittenView(), u"2");
  EXPECT_EQ(KeptRows(), std::vector<Text>{u"Neu"});

  // In the middle of the loading too: the columns are made before the list is filled.
  for (const auto reason : {controls::CloseReason::kSessionEnd, controls::CloseReason::kUser}) {
    Construct();
    const auto end = Form().SymbolListview.Changed.Subscribe([&] { Form().form.Close(reason); });
    window->Load();
    EXPECT_TRUE(Form().form.IsClosed());
    EXPECT_EQ(WrittenView(), u"2");
    EXPECT_EQ(KeptRows(), std::vector<Text>{u"Neu"});
  }
}

TEST_F(ShutDownTest, EndWhileTheViewIsBeingRestoredLeavesTheRememberedView) {
  AddStation(u"A", u"http://a/", u"Rock", u"1");
  profile.Set(kOptIniPath, u"Pfad3", u"FunkhausFavorit", u"1");
  Construct();
  const auto end = Form().ExplorerListFilter.RowsAdded.Subscribe([this](std::size_t, std::size_t) {
    Form().Check3.SetValue(CheckValue::kUnchecked);
    Form().form.Close(controls::CloseReason::kSessionEnd);
  });
  window->Load();
  EXPECT_TRUE(Form().form.IsClosed());
  EXPECT_EQ(WrittenView(), u"1");
}

TEST_F(ShutDownTest, PeakTimerStopsBeforeTheQuestionAndTheOthersWhenUnloading) {
  Start();
  AddUnsavedStation();
  for (controls::Timer* timer : {&Form().tmPlay, &Form().Timer1, &Form().Timer2}) timer->SetEnabled(true);
  dialogs.on_box = [this] {
    EXPECT_FALSE(Form().Timer1.Enabled());
    EXPECT_TRUE(Form().tmPlay.Enabled());
  };
  dialogs.answers = {MessageBoxAnswer::kNo};
  Form().form.Close();
  EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled());
}
}  // namespace
}  // namespace app
