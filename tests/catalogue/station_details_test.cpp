#include "catalogue/station_details.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/feature_rig.h"

namespace catalogue {
namespace {

using platform::Text;
using Strings = std::vector<Text>;

class StationDetailsTest : public test_support::FeatureTest {
 protected:
  StationDetailsTest() {
    for (controls::ListView* list : {&form.SymbolListview, &form.ExplorerListFilter}) {
      selections += list->SelectionChanged.Subscribe([this] { details.ShowStationDetails(); });
    }
  }

  void Select(controls::ListView& list, const Text& name) { list.Select(RowNamed(list, name)); }
  void Select(const Text& name) { Select(form.SymbolListview, name); }
  const Text& Address() { return state.current_stream_address; }
  void ExpectNumberField(bool shown) {
    EXPECT_EQ(Form().UpDownTextBox1.Visible(), shown);
    EXPECT_EQ(Form().Label2.Visible(), shown);
    EXPECT_EQ(Form().Command8[0].Visible(), shown);
  }

  /// What the details started elsewhere, in order.
  Strings started;
  std::optional<stream::QueryFailure::Kind> reported;
  std::function<void()> on_fetch = [] {};
  StationDetails details{
      {.fields = EditorFields(form),
       .UpDownTextBox1 = form.UpDownTextBox1,
       .Label2 = form.Label2,
       .Command8_0 = form.Command8[0],
       .lists = lists},
      {.files = files, .conversion = conversion},
      state,
      cFunkhaus,
      {.take_row = [this](
                       const controls::ListView& list,
                       controls::RowId row) { started.push_back(u"row " + list.Cell(row, app::kNameCell)); },
       .fetch_title =
           [this] {
             started.push_back(u"title of " + Address());
             on_fetch();
           },
       .report_server =
           [this](const Text& station, const stream::QueryFailure& failure) {
             started.push_back(u"server of " + station);
             reported = failure.kind;
           },
       .show_picture = [this](const Text& station) { started.push_back(u"picture of " + station); }},
      life};
  controls::Subscriptions selections;
};

TEST_F(StationDetailsTest, RowFillsTheEditorsFields) {
  AddStation(u"A", u"http://host/live", u"Klassik", u"1");
  Select(u"A");
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"A");
  EXPECT_EQ(Form().TextBox1[1].GetText(), u"http://host/live");
  EXPECT_EQ(Form().Combo1.GetText(), u"Klassik");
  EXPECT_TRUE(Form().Check2.Checked());
  ExpectNumberField(false);
  EXPECT_EQ(state.current_station_name, u"A");
}

TEST_F(StationDetailsTest, OnlyTheMarkOneChecksTheFavouriteBox) {
  AddStation(u"A", u"http://a/", u"Rock", u"1");
  AddStation(u"B", u"http://b/", u"Rock", u"01");
  Select(u"A");
  Select(u"B");
  EXPECT_FALSE(Form().Check2.Checked());
}

TEST_F(StationDetailsTest, LinkThatIsNoPlaylistHidesTheNumberFieldAndIsTheAddress) {
  AddStation(u"A", u"http://host/live", u"Rock", u"", u"4");
  Select(u"A");
  ExpectNumberField(false);
  EXPECT_EQ(Form().UpDownTextBox1.GetText(), u"0");
  EXPECT_EQ(Address(), u"http://host/live");
}

TEST_F(StationDetailsTest, PlaylistLinkShowsTheNumberFieldWithOneWhenItIsEmpty) {
  AddStation(u"A", u"http://host/liste.m3u");
  AddStation(u"B", u"http://host/liste.TXT", u"Rock", u"", u"3");
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
  Select(u"A");
  EXPECT_EQ(Address(), u"http://zwei");
  Select(u"B");
  EXPECT_EQ(Address(), u"http://zwei");
}

TEST_F(StationDetailsTest, LocalPlaylistWithoutEntriesGivesNoAddress) {
  files.files[u"C:\\Radio\\leer.m3u"] = "#EXTM3U\r\n";
  AddStation(u"A", u"C:\\Radio\\leer.m3u");
  Select(u"A");
  EXPECT_EQ(Address(), u"");
}

TEST_F(StationDetailsTest, PlaylistFileThatDoesNotExistIsAskedForAsALink) {
  AddStation(u"A", u"C:\\Radio\\weg.m3u");
  Select(u"A");
  EXPECT_EQ(Address(), u"C:\\Radio\\weg.m3u");
  EXPECT_FALSE(requests.calls.empty());
}

TEST_F(StationDetailsTest, LinkWithoutTextIsAnEmptyAddressAndNoServerIsAsked) {
  AddStation(u"A", u"");
  Select(u"A");
  EXPECT_EQ(Address(), u"");
  ExpectNumberField(false);
  EXPECT_TRUE(requests.calls.empty());
}

TEST_F(StationDetailsTest, ActsOnTheFilteredListWhileItIsShown) {
  AddStation(u"B", u"http://b/");
  AddStationTo(Form().ExplorerListFilter, u"A", u"http://a/");
  Select(u"B");
  ShowFilteredList();
  Select(Form().ExplorerListFilter, u"A");
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"A");
  EXPECT_EQ(Address(), u"http://a/");
}

TEST_F(StationDetailsTest, WithoutASelectedRowNothingHappens) {
  AddStation(u"A", u"http://a/");
  details.ShowStationDetails();
  EXPECT_TRUE(started.empty());
  EXPECT_FALSE(state.details_are_stale);
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"");
}

TEST_F(StationDetailsTest, FieldsSayThatTheProgramFillsThem) {
  AddStation(u"A", u"http://a/", u"Rock", u"1");
  std::vector<bool> filling;
  const auto look = Form().Check2.Clicked.Subscribe([&] { filling.push_back(state.filling_fields); });
  Select(u"A");
  EXPECT_EQ(filling, std::vector<bool>{true}) << "so the favourite mark is not written";
  EXPECT_FALSE(state.filling_fields);
}

TEST_F(StationDetailsTest, RowIsChosenFirstThenTheTitleIsFetchedAndServerAndPictureAreShownAtLast) {
  requests.request.body = u"[playlist]\r\nNumberOfEntries=1\r\nFile1=http://eins/";
  AddStation(u"A", u"http://host/liste.pls");
  Select(u"A");
  EXPECT_EQ(started, (Strings{u"row A", u"title of http://eins/", u"server of A", u"picture of A"}));
}

TEST_F(StationDetailsTest, WindowThatClosesDuringTheTitleShowsNothingMore) {
  AddStation(u"A", u"http://a/");
  on_fetch = [this] { CloseWindow(); };
  Select(u"A");
  EXPECT_EQ(started, (Strings{u"row A", u"title of http://a/"}));
}

TEST_F(StationDetailsTest, WindowThatClosesDuringThePlaylistFetchesNoTitle) {
  AddStation(u"A", u"http://a/");
  requests.request.states = {1, 4};
  message_loop.on_pump = [this] { CloseWindow(); };
  Select(u"A");
  EXPECT_EQ(started, Strings{u"row A"});
}

TEST_F(StationDetailsTest, SelectionDuringTheTitleOfAnEarlierOneShowsTheLaterPictureOnly) {
  AddStation(u"A", u"http://a/");
  AddStation(u"B", u"http://b/");
  bool selected = false;
  on_fetch = [&] {
    if (!std::exchange(selected, true)) Select(u"B");
  };
  Select(u"A");
  EXPECT_EQ(started, (Strings{u"row A", u"title of http://a/", u"row B", u"title of http://b/",
                              u"server of B", u"picture of B"}));
}

TEST_F(StationDetailsTest, ServersFailureIsReportedWhenItWasAskedForThisAddress) {
  AddStation(u"A", u"http://a/");
  AddStation(u"B", u"http://b/");
  Select(u"A");
  EXPECT_EQ(reported, stream::QueryFailure::Kind::kNone) << "nobody asked";
  on_fetch = [this] { cFunkhaus->StreamUrl(Address()); };
  Select(u"B");
  EXPECT_EQ(reported, stream::QueryFailure::Kind::kHttpStatus);
}

TEST_F(StationDetailsTest, LocalFileOfAnotherKindIsPlayedAsItIs) {
  files.files[u"C:\\Radio\\lied.mp3"] = "mp3";
  AddStation(u"A", u"C:\\Radio\\lied.mp3");
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
  Select(u"A");
  EXPECT_EQ(Address(), u"http://host/liste.pls");
}

TEST_F(StationDetailsTest, AddressEndsAtItsFirstLineFeed) {
  requests.request.body = u"[playlist]\r\nNumberOfEntries=1\r\nFile1=http://eins\nFile2=http://zwei";
  AddStation(u"A", u"http://host/liste.pls");
  Select(u"A");
  EXPECT_EQ(Address(), u"http://eins");
}

TEST_F(StationDetailsTest, SelectionDuringThePlaylistFetchWins) {
  AddStation(u"A", u"http://a/");
  AddStation(u"B", u"http://b/");
  requests.request.states = {1, 1, 4};
  bool selected = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(selected, true)) Select(u"B");
  };
  Select(u"A");
  EXPECT_EQ(Address(), u"http://b/");
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"B");
  EXPECT_FALSE(state.details_are_stale);
}

TEST_F(StationDetailsTest, RowThatIsEditedWhileTheAddressIsResolvedLeavesTheDetailsStale) {
  const controls::RowId row = AddStation(u"A", u"http://a/liste.m3u");
  for (const std::size_t cell : {app::kNameCell, app::kLinkCell, app::kM3uNumberCell}) {
    requests.request.states = {1, 4};
    bool edited = false;
    message_loop.on_pump = [&] {
      if (!std::exchange(edited, true)) Form().SymbolListview.SetCell(row, cell, u"7");
    };
    Select(u"A");
    EXPECT_TRUE(edited) << cell;
    EXPECT_TRUE(state.details_are_stale) << cell;
    Form().SymbolListview.Select(controls::RowId::kNone);
    Form().SymbolListview.SetCell(row, app::kNameCell, u"A");
    Form().SymbolListview.SetCell(row, app::kLinkCell, u"http://a/liste.m3u");
  }
}

TEST_F(StationDetailsTest, RowThatIsDeselectedWhileItIsResolvedLeavesTheDetailsStale) {
  AddStation(u"A", u"http://a/liste.m3u");
  requests.request.states = {1, 4};
  bool deselected = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(deselected, true)) Form().SymbolListview.Select(controls::RowId::kNone);
  };
  state.details_are_stale = true;
  Select(u"A");
  EXPECT_TRUE(deselected);
  EXPECT_TRUE(state.details_are_stale);
}

TEST_F(StationDetailsTest, RowThatIsReplacedWhileItIsResolvedLeavesTheDetailsStale) {
  AddStation(u"A", u"http://a/");
  requests.request.states = {1, 4};
  bool replaced = false;
  message_loop.on_pump = [&] {
    if (!std::exchange(replaced, true)) Form().SymbolListview.Clear();
  };
  Form().SymbolListview.Select(RowNamed(Form().SymbolListview, u"A"));
  EXPECT_TRUE(state.details_are_stale);
}

TEST_F(StationDetailsTest, DetailsAreStaleUntilTheAddressIsKnown) {
  AddStation(u"A", u"http://a/");
  AddStation(u"B", u"http://b/");
  // The first selection counts as little as the start: the details were stale before.
  for (const char16_t* name : {u"A", u"B"}) {
    requests.request.states = {1, 4};
    bool stale = false;
    message_loop.on_pump = [&] { stale = stale || state.details_are_stale; };
    Select(name);
    EXPECT_TRUE(stale) << (name[0] == u'B');
    EXPECT_FALSE(state.details_are_stale);
    message_loop.on_pump = nullptr;
  }
}

TEST_F(StationDetailsTest, SelectionOfTheFilteredListDoesNotCountWhileThatIsHidden) {
  AddStation(u"B", u"http://b/");
  const auto hidden = AddStationTo(form.ExplorerListFilter, u"A", u"http://a/");
  form.ExplorerListFilter.Select(hidden);
  Select(u"B");
  EXPECT_EQ(Form().TextBox1[0].GetText(), u"B");
  EXPECT_EQ(Address(), u"http://b/");
}

}  // namespace
}  // namespace catalogue
