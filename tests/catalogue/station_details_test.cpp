#include "catalogue/station_details.h"

#include "tests/window/window_fixture.h"

namespace app {
namespace {

class StationDetailsTest : public WindowTest {
 protected:
  StationDetailsTest() {
    internet.answer.status = u"404";
    requests.request.body = u"kein Verzeichnis";
  }

  const Text& Address() { return window->State().current_stream_address; }
  void ExpectNumberField(bool shown) {
    EXPECT_EQ(Form().UpDownTextBox1.Visible(), shown);
    EXPECT_EQ(Form().Label2.Visible(), shown);
    EXPECT_EQ(Form().Command8[0].Visible(), shown);
  }
};

TEST_F(StationDetailsTest, RowFillsTheEditorsFields) {
  AddStation(u"A", u"http://host/live", u"Klassik", u"1");
  Start();
  Select(u"A");
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"A");
  EXPECT_EQ(Form().TextBox1[1].GetText(), u"http://host/live");
  EXPECT_EQ(Form().Combo1.GetText(), u"Klassik");
  EXPECT_TRUE(Form().Check2.Checked());
  ExpectNumberField(false);
  EXPECT_EQ(window->State().current_station_name, u"A");
}

TEST_F(StationDetailsTest, OnlyTheMarkOneChecksTheFavouriteBox) {
  AddStation(u"A", u"http://a/", u"Rock", u"1");
  AddStation(u"B", u"http://b/", u"Rock", u"01");
  Start();
  Select(u"A");
  Select(u"B");
  EXPECT_FALSE(Form().Check2.Checked());
}

TEST_F(StationDetailsTest, SelectingStationsWritesNothing) {
  AddStation(u"A", u"http://a/", u"Rock", u"1");
  AddStation(u"B", u"http://b/");
  Start();
  profile.writes.clear();
  Select(u"A");
  Select(u"B");
  EXPECT_TRUE(profile.writes.empty());
}

TEST_F(StationDetailsTest, LinkThatIsNoPlaylistHidesTheNumberFieldAndIsTheAddress) {
  AddStation(u"A", u"http://host/live", u"Rock", u"", u"4");
  Start();
  Select(u"A");
  ExpectNumberField(false);
  EXPECT_EQ(Form().UpDownTextBox1.GetText(), u"0");
  EXPECT_EQ(Address(), u"http://host/live");
}

TEST_F(StationDetailsTest, PlaylistLinkShowsTheNumberFieldWithOneWhenItIsEmpty) {
  AddStation(u"A", u"http://host/liste.m3u");
  AddStation(u"B", u"http://host/liste.TXT", u"Rock", u"", u"3");
  Start();
  Select(u"A");
  ExpectNumberField(true);
  EXPECT_EQ(Form().UpDownTextBox1.GetText(), u"1");
  Select(u"B");
  EXPECT_EQ(Form().UpDownTextBox1.GetText(), u"3");
}

TEST_F(StationDetailsTest, LocalPlaylistGivesTheEntryOfTheNumberAndZeroIsTheFirst) {
  files.files[u"C:\\Radio\\liste.m3u"] = "http://eins\r\nhttp://zwei\r\nhttp://drei\r\n";
  AddStation(u"A", u"C:\\Radio\\liste.m3u", u"Rock", u"", u"3");
  AddStation(u"B", u"C:\\Radio\\liste.m3u", u"Rock", u"", u"0");
  AddStation(u"C", u"C:\\Radio\\liste.m3u", u"Rock", u"", u"keine Zahl");
  Start();
  Select(u"A");
  EXPECT_EQ(Address(), u"http://drei");
  Select(u"B");
  EXPECT_EQ(Address(), u"http://eins");
  Select(u"C");
  EXPECT_EQ(Address(), u"http://eins");
  EXPECT_TRUE(requests.calls.empty()) << "no server is asked for a local playlist";
}

TEST_F(StationDetailsTest, LocalPlaylistGivesItsLastEntryForANumberBelowZeroOrBeyondTheEntries) {
  files.files[u"C:\\Radio\\liste.TXT"] = "http://eins\r\nhttp://zwei\r\n";
  AddStation(u"A", u"C:\\Radio\\liste.TXT", u"Rock", u"", u"-1");
  AddStation(u"B", u"C:\\Radio\\liste.TXT", u"Rock", u"", u"9");
  Start();
  Select(u"A");
  EXPECT_EQ(Address(), u"http://zwei");
  Select(u"B");
  EXPECT_EQ(Address(), u"http://zwei");
}

TEST_F(StationDetailsTest, LocalPlaylistWithoutEntriesGivesNoAddress) {
  files.files[u"C:\\Radio\\leer.m3u"] = "#EXTM3U\r\n";
  AddStation(u"A", u"C:\\Radio\\leer.m3u");
  Start();
  Select(u"A");
  EXPECT_EQ(Address(), u"");
}

TEST_F(StationDetailsTest, PlaylistFileThatDoesNotExistIsAskedForAsALink) {
  AddStation(u"A", u"C:\\Radio\\weg.m3u");
  Start();
  Select(u"A");
  EXPECT_EQ(Address(), u"C:\\Radio\\weg.m3u");
  EXPECT_FALSE(requests.calls.empty());
}

TEST_F(StationDetailsTest, LinkWithoutTextIsAnEmptyAddressAndNoServerIsAsked) {
  AddStation(u"A", u"");
  Start();
  Select(u"A");
  EXPECT_EQ(Address(), u"");
  ExpectNumberField(false);
  EXPECT_TRUE(requests.calls.empty());
}

TEST_F(StationDetailsTest, ActsOnTheFilteredListWhileItIsShown) {
  AddStation(u"A", u"http://a/", u"Rock", u"1");
  AddStation(u"B", u"http://b/", u"Rock", u"1");
  Start();
  Select(u"B");
  Form().Check3.Click();
  SelectIn(Form().ExplorerListFilter, u"A");
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"A");
  EXPECT_EQ(Address(), u"http://a/");
}

TEST_F(StationDetailsTest, LocalFileOfAnotherKindIsPlayedAsItIs) {
  files.files[u"C:\\Radio\\lied.mp3"] = "mp3";
  AddStation(u"A", u"C:\\Radio\\lied.mp3");
  Start();
  Select(u"A");
  EXPECT_EQ(Address(), u"C:\\Radio\\lied.mp3");
}

TEST_F(StationDetailsTest, RemotePlaylistGivesTheEntryOfTheNumber) {
  requests.request.body =
      u"[playlist]\r\nNumberOfEntries=2\r\nFile1=http://eins\r\nFile2=http://zwei\r\nVersion=2";
  AddStation(u"A", u"http://host/liste.pls");
  AddStation(u"B", u"http://host/liste.m3u", u"Rock", u"", u"2");
  AddStation(u"C", u"http://host/liste.m3u", u"Rock", u"", u"5");
  AddStation(u"D", u"http://host/liste.m3u", u"Rock", u"", u"-3");
  Start();
  Select(u"A");
  EXPECT_EQ(Address(), u"http://eins");
  Select(u"B");
  EXPECT_EQ(Address(), u"http://zwei");
  Select(u"C");
  EXPECT_EQ(Address(), u"") << "an index beyond the entries answers with the empty text";
  Select(u"D");
  EXPECT_EQ(Address(), u"http://eins") << "below 1 the first entry is asked for";
}

TEST_F(StationDetailsTest, RemotePlaylistWithoutEntriesLeavesTheLinkAsItStands) {
  requests.request.body = u"[playlist]\r\nVersion=2";
  AddStation(u"A", u"http://host/liste.pls");
  Start();
  Select(u"A");
  EXPECT_EQ(Address(), u"http://host/liste.pls");
}

TEST_F(StationDetailsTest, AddressEndsAtItsFirstLineFeed) {
  requests.request.body = u"[playlist]\r\nNumberOfEntries=1\r\nFile1=http://eins\nFile2=http://zwei";
  AddStation(u"A", u"http://host/liste.pls");
  Start();
  Select(u"A");
  EXPECT_EQ(Address(), u"http://eins");
}

TEST_F(StationDetailsTest, PictureIsFittedIntoThePanelWithItsAspect) {
  files.files[u"C:\\Programme\\Funkhaus\\RadioJPG\\A.jpg"] = "jpg";
  AddStation(u"A", u"http://a/");
  icons.picture_width = 30000;
  icons.picture_height = 15000;
  Start();
  Form().Label3.SetCaption(u"alt");
  Select(u"A");
  EXPECT_TRUE(Form().Frame3.Visible());
  EXPECT_TRUE(Form().Image1.Visible());
  EXPECT_EQ(Form().Label3.Caption(), u"");
  const controls::Place picture = Form().Image1.GetPlace();
  const controls::Place panel = Form().Frame3.GetPlace();
  EXPECT_GT(picture.width, 0);
  EXPECT_LE(picture.left + picture.width, panel.width);
  EXPECT_LE(picture.top + picture.height, panel.height);
  EXPECT_NEAR(picture.width, 2 * picture.height, 2);
}

TEST_F(StationDetailsTest, MissingPictureHidesAndClearsTheImageAndLeavesThePanel) {
  files.files[u"C:\\Programme\\Funkhaus\\RadioJPG\\A.jpg"] = "jpg";
  AddStation(u"A", u"http://a/");
  AddStation(u"B", u"http://b/");
  Start();
  Select(u"A");
  EXPECT_EQ(icons.live_pictures, 1);
  Select(u"B");
  EXPECT_FALSE(Form().Image1.Visible());
  EXPECT_EQ(Form().Image1.Picture(), 0U);
  EXPECT_TRUE(Form().Frame3.Visible());
  EXPECT_EQ(icons.live_pictures, 0);
}

TEST_F(StationDetailsTest, PictureThatCannotBeDecodedDoesNoHarm) {
  files.files[u"C:\\Programme\\Funkhaus\\RadioJPG\\A.jpg"] = "kein jpg";
  files.files[u"C:\\Programme\\Funkhaus\\RadioJPG\\B.jpg"] = "jpg";
  icons.loadable = [](const Text& path) { return path.ends_with(u"B.jpg"); };
  AddStation(u"A", u"http://a/");
  AddStation(u"B", u"http://b/");
  Start();
  Select(u"B");
  Select(u"A");
  EXPECT_EQ(Form().Image1.Picture(), 0U) << "nor does the picture of the station before stay";
  EXPECT_EQ(icons.live_pictures, 0);
}

TEST_F(StationDetailsTest, SelectionDuringThePlaylistFetchWins) {
  AddStation(u"A", u"http://a/");
  AddStation(u"B", u"http://b/");
  Start();
  requests.request.states = {1, 1, 4};
  bool selected = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(selected, true)) Select(u"B");
  };
  Select(u"A");
  EXPECT_EQ(Address(), u"http://b/");
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"B");
  EXPECT_FALSE(window->State().details_are_stale);
}

TEST_F(StationDetailsTest, WhatIsEditedWhileTheAddressIsWorkedOutStaysDoubtful) {
  AddStation(u"A", u"http://a/liste.m3u");
  for (const std::size_t button : {0U, 2U}) {
    Start();
    requests.request.states = {1, 4};
    bool edited = false;
    message_loop.on_pump = [&] {
      if (std::exchange(edited, true)) return;
      Form().TextBox1[1].SetText(u"http://neu/");
      Form().UpDownTextBox1.SetText(u"7");
      Form().Command8[button].Click();
    };
    Select(u"A");
    message_loop.on_pump = nullptr;
    EXPECT_TRUE(window->State().details_are_stale) << button;
  }
}

TEST_F(StationDetailsTest, RowThatIsReplacedWhileItIsWorkedOutStaysDoubtful) {
  AddStation(u"A", u"http://a/");
  Start();
  requests.request.states = {1, 4};
  bool replaced = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(replaced, true)) Form().SymbolListview.Clear();
  };
  Form().SymbolListview.Select(RowNamed(Form().SymbolListview, u"A"));
  EXPECT_TRUE(window->State().details_are_stale);
}

TEST_F(StationDetailsTest, AddressIsDoubtfulUntilItIsKnown) {
  AddStation(u"A", u"http://a/");
  Start();
  requests.request.states = {1, 4};
  bool doubtful = false;
  message_loop.on_pump = [&] { doubtful = doubtful || window->State().details_are_stale; };
  Select(u"A");
  EXPECT_TRUE(doubtful);
  EXPECT_FALSE(window->State().details_are_stale);
}

}  // namespace
}  // namespace app
