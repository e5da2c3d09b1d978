// The commands that the lists' menu offers for a row, connected to the whole window.
#include "tests/window/window_fixture.h"

namespace app {
namespace {

class RowMenuTest : public WindowTest {
 protected:
  RowMenuTest() {
    AddStation(u"A", u"http://a/");
    AddStation(u"B", u"http://b/");
    Start();
    Select(u"A");
  }
  controls::ListView& List() { return Form().SymbolListview; }
  controls::RowId B() { return RowNamed(List(), u"B"); }
};

TEST_F(RowMenuTest, RecordingStartsTheToolWithTheRowsLink) {
  Form().RowRecording.Choose(List(), B());
  ASSERT_EQ(shell.launches.size(), 1U);
  EXPECT_EQ(shell.launches[0].parameters, u"http://b/");
}

TEST_F(RowMenuTest, LinkGoesToTheClipboard) {
  Form().RowLink.Choose(List(), B());
  EXPECT_EQ(clipboard.text, u"http://b/");
}

TEST_F(RowMenuTest, FavouriteIsSavedAndShownInTheEditorOnceTheRowIsSelected) {
  Form().RowFavourite.Choose(List(), B(), true);
  EXPECT_EQ(profile.Get(kStationFilePath, u"B", u"Favorit"), u"1");
  EXPECT_FALSE(Form().Check2.Checked());
  Select(u"B");
  EXPECT_TRUE(Form().Check2.Checked());
  Form().RowFavourite.Choose(List(), B(), false);
  EXPECT_FALSE(Form().Check2.Checked());
  EXPECT_EQ(profile.Get(kStationFilePath, u"B", u"Favorit"), u"");
}

TEST_F(RowMenuTest, ClosedWindowRecordsNothing) {
  Form().form.Close();
  Form().RowRecording.Choose(List(), B());
  EXPECT_TRUE(shell.launches.empty());
}

}  // namespace
}  // namespace app
