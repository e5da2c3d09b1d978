// What becomes of lists and links that are dropped on the whole window: rows, views, the new-station dialog,
// the station file.
#include "tests/window/window_fixture.h"

namespace app {
namespace {

using platform::MessageBoxAnswer;

class OpeningTest : public WindowTest {
 protected:
  OpeningTest() {
    AddStation(u"A", u"http://a/", u"Rock", u"1");
    AddStation(u"B", u"http://b/");
    files.files[kListPath] = "#EXTINF:-1,Neu\nhttp://neu/\n#EXTINF:-1,Alt\nhttp://alt/\n";
    on_new_station = [this](app::Form2& form) {
      dialog_link_ = form.TextBox1[1].GetText();
      dialog_name_ = form.TextBox1[0].GetText();
      if (!accepts_) return form.CommandButton2.Click();
      form.TextBox1[0].SetText(u"C");
      form.CommandButton1.Click();
    };
  }

  void DropList() { Form().form.Dropped.Raise({{kListPath}, {}, {}}); }
  void DropLink() { Form().form.Dropped.Raise({{}, {u"http://c/"}, {}}); }

  static constexpr char16_t kListPath[] = u"C:\\Musik\\liste.m3u";
  bool accepts_ = false;
  std::optional<Text> dialog_link_;
  Text dialog_name_;
};

TEST_F(OpeningTest, RowsAreUnsavedLikeThoseOfAnImport) {
  Start();
  profile.writes.clear();
  DropList();
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"A", u"B", u"Neu", u"Alt"}));
  EXPECT_TRUE(profile.writes.empty());
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_FALSE(window->GetSettings().CatalogueChanged);
  EXPECT_EQ(Form().StatusLine.Caption(), u"Geladene Einträge: 2. Sie sind noch nicht gespeichert.");
  Form().CommandButton1.Click();
  EXPECT_EQ(profile.Get(kStationFilePath, u"Neu", u"Link"), u"http://neu/");
}

TEST_F(OpeningTest, FirstNewRowFillsTheEditor) {
  Start();
  DropList();
  EXPECT_EQ(Form().SymbolListview.SelectedRow(), RowNamed(Form().SymbolListview, u"Neu"));
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"Neu");
  EXPECT_EQ(Form().TextBox1[1].GetText(), u"http://neu/");
}

TEST_F(OpeningTest, RowsComeBackAfterAnEndThatAskedNobody) {
  Start();
  DropList();
  Form().form.Close(controls::CloseReason::kSessionEnd);
  EXPECT_EQ(KeptRows(), (std::vector<Text>{u"Neu", u"Alt"}));
}

TEST_F(OpeningTest, FilterViewIsLeftSoThatTheRowsCanBeSaved) {
  Start();
  Select(u"B");
  for (controls::CheckBox* box : {&Form().Check3, &Form().Check1}) {
    box->Click();
    ASSERT_TRUE(Form().ExplorerListFilter.Visible());
    DropList();
    EXPECT_FALSE(Form().ExplorerListFilter.Visible());
    EXPECT_TRUE(Form().SymbolListview.Visible());
    EXPECT_FALSE(box->Checked());
    EXPECT_TRUE(Form().CommandButton1.Visible());
    EXPECT_EQ(Form().Frame2.Caption(), u"Gespeicherte Radiostationen");
    EXPECT_EQ(Form().TextBox1[0].GetText(), u"Neu");
  }
  Form().CommandButton1.Click();
  EXPECT_TRUE(profile.HasSection(kStationFilePath, u"Neu"));
}

TEST_F(OpeningTest, StationRememberedByTheViewIsNotAskedForItsTitle) {
  Start();
  Select(u"B");
  Form().Check3.Click();
  std::vector<Text> names;
  const auto selections = Form().SymbolListview.SelectionChanged.Subscribe([&] {
    const auto row = Form().SymbolListview.SelectedRow();
    if (row != controls::RowId::kNone) names.push_back(Form().SymbolListview.Cell(row, kNameCell));
  });
  DropList();
  EXPECT_EQ(names, std::vector<Text>{u"Neu"});
}

TEST_F(OpeningTest, FilterViewStaysWhenAListBringsNothing) {
  files.files[kListPath] = "";
  Start();
  Form().Check3.Click();
  DropList();
  EXPECT_TRUE(Form().ExplorerListFilter.Visible());
  EXPECT_EQ(Form().StatusLine.Caption(), u"Nichts geladen: liste.m3u ist leer.");
}

TEST_F(OpeningTest, LinkStandsInTheFieldOfTheNewStation) {
  Start();
  DropLink();
  EXPECT_EQ(dialog_link_, u"http://c/");
  EXPECT_EQ(dialog_name_, u"");
  EXPECT_EQ(Form().SymbolListview.Count(), 2U);
  EXPECT_TRUE(dialogs.boxes.empty()) << "nothing was changed";
}

TEST_F(OpeningTest, NewStationsButtonOpensAnEmptyField) {
  Start();
  Form().CommandButton2.Click();
  EXPECT_EQ(dialog_link_, u"");
}

TEST_F(OpeningTest, NewStationOfALinkIsOfferedToBeSavedLikeThatOfTheButton) {
  accepts_ = true;
  dialogs.answers = {MessageBoxAnswer::kYes};
  Start();
  DropLink();
  EXPECT_EQ(BoxTexts(),
            (std::vector<Text>{u"Sollen die Änderungen gespeichert werden?", u"Änderungen gespeichert!"}));
  EXPECT_EQ(profile.Get(kStationFilePath, u"C", u"Link"), u"http://c/");
}

TEST_F(OpeningTest, NewStationOfALinkCanBeSavedFromAFilterView) {
  accepts_ = true;
  dialogs.answers = {MessageBoxAnswer::kYes};
  Start();
  Select(u"B");
  Form().Check3.Click();
  DropLink();
  EXPECT_FALSE(Form().ExplorerListFilter.Visible());
  EXPECT_EQ(Form().SymbolListview.SelectedRow(), RowNamed(Form().SymbolListview, u"B"));
  EXPECT_TRUE(profile.HasSection(kStationFilePath, u"C"));
}

TEST_F(OpeningTest, ChangeThatTheSaveTookBackIsKeptForTheNextStart) {
  accepts_ = true;
  dialogs.answers = {MessageBoxAnswer::kNo};
  Start();
  DropLink();
  Form().tmUnsaved.Fire();
  ASSERT_EQ(KeptRows(), std::vector<Text>{u"C"});
  dialogs.answers = {MessageBoxAnswer::kYes};
  on_new_station = [](app::Form2& form) { form.CommandButton2.Click(); };
  DropLink();
  Form().tmUnsaved.Fire();
  EXPECT_FALSE(HasKeptRows());
}

TEST_F(OpeningTest, ListThatComesWhileATitleIsFetchedIsOpened) {
  Start();
  bool dropped = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(dropped, true)) DropList();
  };
  Select(u"B");
  ASSERT_TRUE(dropped);
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"A", u"B", u"Neu", u"Alt"}));
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"Neu") << "the later selection counts";
}

TEST_F(OpeningTest, ViewThatIsChosenWhileTheNewRowsTitleIsFetchedDoesNoHarm) {
  Start();
  bool chosen = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(chosen, true)) Form().Check3.Click();
  };
  DropList();
  ASSERT_TRUE(chosen);
  EXPECT_TRUE(Form().ExplorerListFilter.Visible());
  message_loop.on_pump = {};
  Form().Check3.Click();
  EXPECT_NE(RowNamed(Form().SymbolListview, u"Neu"), controls::RowId::kNone);
}

TEST_F(OpeningTest, WindowThatClosesWhileTheNewRowsTitleIsFetchedEnds) {
  Start();
  message_loop.on_pump = [&] { Form().form.Close(controls::CloseReason::kSessionEnd); };
  DropList();
  EXPECT_TRUE(Form().form.IsClosed());
  EXPECT_EQ(KeptRows(), (std::vector<Text>{u"Neu", u"Alt"}));
}

}  // namespace
}  // namespace app
