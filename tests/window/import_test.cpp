// What becomes of imported rows in the whole window: the station file, unsaved changes, the views.
#include "tests/window/window_fixture.h"

namespace app {
namespace {

using platform::MessageBoxAnswer;

class ImportTest : public WindowTest {
 protected:
  ImportTest() {
    AddStation(u"A", u"http://a/", u"Rock", u"1");
    AddStation(u"B", u"http://b/");
    files.files[kListPath] = "#EXTINF:-1,Neu\nhttp://neu/\n";
    dialogs.chosen_file = kListPath;
  }

  void Import(MessageBoxAnswer answer) {
    dialogs.answers = {answer};
    Form().Command5.Click();
    dialogs.boxes.clear();
  }

  static constexpr char16_t kListPath[] = u"C:\\Musik\\liste.m3u";
};

TEST_F(ImportTest, RowsAreNeitherWrittenNorCountedAsAChange) {
  Start();
  profile.writes.clear();
  Import(MessageBoxAnswer::kYes);
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"A", u"B", u"Neu"}));
  EXPECT_TRUE(profile.writes.empty());
  EXPECT_FALSE(window->GetSettings().CatalogueChanged);
  Form().form.Close();
  EXPECT_TRUE(dialogs.boxes.empty()) << "closing does not ask";
  EXPECT_FALSE(profile.HasSection(kStationFilePath, u"Neu"));
}

TEST_F(ImportTest, RowsReachTheStationFileThroughTheSave) {
  Start();
  Import(MessageBoxAnswer::kYes);
  Form().CommandButton1.Click();
  EXPECT_EQ(profile.Get(kStationFilePath, u"Neu", u"Link"), u"http://neu/");
}

TEST_F(ImportTest, NoEmptiesTheListAndNotTheStationFile) {
  Start();
  Import(MessageBoxAnswer::kNo);
  EXPECT_EQ(Names(Form().SymbolListview), std::vector<Text>{u"Neu"});
  Form().CommandButton1.Click();
  EXPECT_TRUE(profile.HasSection(kStationFilePath, u"A"));
}

TEST_F(ImportTest, RowsOfAFilterViewNeverReachTheStationFile) {
  Start();
  Form().Check3.Click();
  Import(MessageBoxAnswer::kYes);
  EXPECT_EQ(Names(Form().ExplorerListFilter), (std::vector<Text>{u"A", u"Neu"}));
  EXPECT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"A", u"B"}));
  Form().CommandButton1.Click();
  EXPECT_EQ(BoxTexts(), std::vector<Text>{u"Bitte zuerst den Filter entfernen!"});
  Form().Check3.Click();
  Form().CommandButton1.Click();
  EXPECT_FALSE(profile.HasSection(kStationFilePath, u"Neu"));
}

TEST_F(ImportTest, TheStatusLineSaysWhatCame) {
  Start();
  Import(MessageBoxAnswer::kYes);
  EXPECT_EQ(Form().StatusLine.Caption(), u"Geladene Einträge: 1. Sie sind noch nicht gespeichert.");
}

TEST_F(ImportTest, HalfSavedRowComesBackWholeAfterTheListWasEmptied) {
  Start();
  Import(MessageBoxAnswer::kYes);
  Select(u"Neu");
  Form().Check2.Click();
  files.files[kListPath] = "";
  Import(MessageBoxAnswer::kNo);
  ASSERT_EQ(Form().SymbolListview.Count(), 0U);
  Form().Check3.Click();
  Form().Check3.Click();
  ASSERT_EQ(Names(Form().SymbolListview), (std::vector<Text>{u"A", u"B", u"Neu"}));
  EXPECT_EQ(Form().SymbolListview.Rows()[2].cells[kLinkCell], u"http://neu/");
  EXPECT_EQ(Form().SymbolListview.Rows()[2].cells[kFavouriteCell], u"1");
}

TEST_F(ImportTest, ExportWritesTheViewThatIsShown) {
  Start();
  Form().Check3.Click();
  Form().Command4.Click();
  EXPECT_EQ(files.files[kListPath], "#EXTM3U\n#EXTINF:-1,A\nhttp://a/\n\r\n");
}

}  // namespace
}  // namespace app
