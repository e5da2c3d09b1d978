// NowPlaying's run over the titles of all stations in the list.

#include <algorithm>
#include <utility>

#include "tests/ui/now_playing_fixture.h"

namespace ui {
namespace {

using platform::MessageBoxAnswer;

TEST_F(NowPlayingTest, RunLeavesARowWhoseWaitInputEnded) {
  AddPlayingStation(u"a", "Erster");
  AddPlayingStation(u"b", "Zweiter");
  internet.answers[u"a:80/s"].reachable = false;
  message_loop.on_pump = [this] {
    // The input comes while the first row's server is silent, and is processed with the next messages.
    message_loop.input_ends_wait = internet.calls.empty();
  };
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"");
  EXPECT_EQ(TitleOf(u"b"), u"Zweiter");
}

TEST_F(NowPlayingTest, RowWhoseWaitInputEndedIsNotReadWithTheIntervalOfTheOneBefore) {
  AddPlayingStation(u"a", "Erster");
  AddPlayingStation(u"b", "Zweiter");
  internet.answers[u"b:80/s"].reachable = false;
  message_loop.on_pump = [this] { message_loop.input_ends_wait = TitleOf(u"a") == u"Erster"; };
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"Erster");
  EXPECT_EQ(TitleOf(u"b"), u"");
}

TEST_F(NowPlayingTest, RowWhoseIntervalIsGoneAtTheSecondAskingKeepsWhatItSays) {
  AddPlayingStation(u"a", "Erster");
  AddStation(u"b", u"http://b/s");
  internet.answers[u"b:80/s"].raw_headers = u"HTTP/1.1 200 OK\r\n\r\n";
  const auto changed = form.SymbolListview.RowChanged.Subscribe([this](std::size_t) {
    if (TitleOf(u"a") == u"Hole Info...") cFunkhaus->StreamUrl(u"http://b/s");
  });
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"Hole Info...");
}

TEST_F(NowPlayingTest, RowThatIsGoneBeforeItsTurnIsNotAskedAbout) {
  AddPlayingStation(u"a", "Erster");
  AddPlayingStation(u"b", "Zweiter");
  message_loop.on_pump = [this] {
    if (TitleOf(u"a") == u"Erster") form.SymbolListview.RemoveRow(RowNamed(form.SymbolListview, u"b"));
  };
  RunAllTitles();
  const auto opened =
      std::count_if(internet.calls.begin(), internet.calls.end(),
                    [](const std::string& call) { return call.starts_with("InternetOpenUrlW"); });
  EXPECT_EQ(opened, 1) << "the first row's title";
}

TEST_F(NowPlayingTest, RunWithoutAStreamClientAsksNobody) {
  AddPlayingStation(u"a", "Erster");
  cFunkhaus.reset();
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"");
  EXPECT_TRUE(internet.calls.empty());
}

TEST_F(NowPlayingTest, RunWarnsFirstAndCancelEndsIt) {
  AddPlayingStation(u"a", "Lied");
  dialogs.answers = {MessageBoxAnswer::kCancel};
  RunAllTitles();
  EXPECT_EQ(dialogs.boxes,
            (std::vector<test_support::FakeDialogs::Box>{
                {u"Die Funktion listet alle aktuellen Songtitel auf und ist sehr zeitintensiv. Abbruch durch "
                 u"ESC-Taste!",
                 u"", 65}}));
  EXPECT_TRUE(internet.calls.empty());
  EXPECT_EQ(TitleOf(u"a"), u"");
}

TEST_F(NowPlayingTest, RunWritesEveryRowsTitleAndTouchesNothingElse) {
  // Without an answer of its own a station keeps the interval of the previous one, so this row comes first.
  AddStation(u"d", u"http://d/s");
  AddPlayingStation(u"a", "Lied A");
  AddPlayingStation(u"b", "");
  AddPlayingStation(u"c", "K\xC3\xBCnstler");
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"Lied A");
  EXPECT_EQ(TitleOf(u"b"), u"--");
  EXPECT_EQ(TitleOf(u"c"), u"Künstler");
  EXPECT_EQ(TitleOf(u"d"), u"") << "a station without an interval is skipped";
  EXPECT_EQ(Form().Label4.Caption(), u"Titel:");
  EXPECT_FALSE(Form().Frame3.Visible()) << "the panel is left alone";
  EXPECT_EQ(Form().SymbolListview.SelectedRow(), controls::RowId::kNone);
}

TEST_F(NowPlayingTest, RowSaysThatItIsBeingFetched) {
  AddPlayingStation(u"a", "Lied");
  Text meanwhile;
  internet.before_read = [&] { meanwhile = TitleOf(u"a"); };
  RunAllTitles();
  EXPECT_EQ(meanwhile, u"Hole Info...");
}

TEST_F(NowPlayingTest, RowsWithoutAnIntervalKeepTheTitleTheyHad) {
  AddStation(u"a", u"http://a/s");
  Form().SymbolListview.SetCell(RowNamed(Form().SymbolListview, u"a"), app::kTitleCell, u"von vorhin");
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"von vorhin");
}

TEST_F(NowPlayingTest, RowOfAStationThatSendsNothingSaysTimeOut) {
  AddPlayingStation(u"a", "x");
  internet.answers[u"http://a/s"].reads.clear();
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"TimeOut");
}

TEST_F(NowPlayingTest, TickDuringTheRunTurnsTheClientToTheCurrentStationAndTheNextRowTurnsItBack) {
  AddPlayingStation(u"a", "Lied A");
  AddPlayingStation(u"b", "Lied B");
  AddPlayingStation(u"c", "Lied C");
  Select(u"c");
  Form().Timer2.SetEnabled(true);
  // Each row processes messages before and after its address is set; the tick comes after the first row's.
  const int second_pump_of_the_run = message_loop.pumps + 2;
  message_loop.on_pump = [this, second_pump_of_the_run] {
    if (message_loop.pumps == second_pump_of_the_run) Form().Timer2.Fire();
  };
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"Lied C");
  EXPECT_EQ(TitleOf(u"b"), u"Lied B");
  EXPECT_EQ(TitleOf(u"c"), u"Lied C");
  EXPECT_EQ(Form().Label4.Caption(), u"Lied C");
}

TEST_F(NowPlayingTest, RunInTheMiddleOfAFetchLeavesTheLabelAlone) {
  AddPlayingStation(u"a", "Lied A");
  AddPlayingStation(u"b", "Lied B");
  Select(u"a");
  Form().Timer2.SetEnabled(true);
  const int second_pump_of_the_fetch = message_loop.pumps + 2;
  message_loop.on_pump = [this, second_pump_of_the_fetch] {
    if (message_loop.pumps == second_pump_of_the_fetch) RunAllTitles();
  };
  Form().Timer2.Fire();
  EXPECT_EQ(TitleOf(u"b"), u"Lied B");
  EXPECT_EQ(Form().Label4.Caption(), u"Lied A");
}

TEST_F(NowPlayingTest, RunWorksOnTheFilteredListWhileItIsShown) {
  AddPlayingStation(u"a", "Lied");
  AddStationTo(Form().ExplorerListFilter, u"a", u"http://a/s");
  ShowFilteredList();
  RunAllTitles();
  EXPECT_EQ(Form().ExplorerListFilter.Cell(RowNamed(Form().ExplorerListFilter, u"a"), app::kTitleCell),
            u"Lied");
  EXPECT_EQ(TitleOf(u"a"), u"");
}

TEST_F(NowPlayingTest, EscapeAtTheStartEndsTheRunBeforeTheFirstRow) {
  AddPlayingStation(u"a", "Lied");
  message_loop.keys[platform::kVkEscape] = 1;
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"");
  EXPECT_TRUE(internet.calls.empty());
}

TEST_F(NowPlayingTest, EscapeThatIsProcessedBeforeTheFirstRowIsSeen) {
  AddPlayingStation(u"a", "Lied");
  message_loop.on_pump = [this] { message_loop.keys[platform::kVkEscape] = 1; };
  RunAllTitles();
  EXPECT_TRUE(internet.calls.empty()) << "messages are processed before the key is asked for";
}

TEST_F(NowPlayingTest, EscapeBetweenRowsKeepsWhatIsThere) {
  AddPlayingStation(u"a", "Lied A");
  AddPlayingStation(u"b", "Lied B");
  internet.before_read = [this] { message_loop.keys[platform::kVkEscape] = -32768; };
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"Lied A");
  EXPECT_EQ(TitleOf(u"b"), u"");
}

TEST_F(NowPlayingTest, EmptyListRunsOverNothing) {
  RunAllTitles();
  EXPECT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_TRUE(internet.calls.empty());
}

TEST_F(NowPlayingTest, RunCopesWithRowsThatAreSortedDeletedAndReplacedMeanwhile) {
  AddPlayingStation(u"a", "Lied A");
  AddPlayingStation(u"b", "Lied B");
  AddPlayingStation(u"c", "Lied C");
  bool done = false;
  internet.before_read = [&] {
    if (std::exchange(done, true)) return;
    Form().SymbolListview.Sort(
        0, controls::SortDirection::kDescending, [this](std::size_t first, std::size_t second) {
          const auto& rows = Form().SymbolListview.Rows();
          return rows[second].cells[app::kNameCell].compare(rows[first].cells[app::kNameCell]);
        });
    Form().SymbolListview.RemoveRow(RowNamed(Form().SymbolListview, u"b"));
  };
  RunAllTitles();
  EXPECT_EQ(Form().SymbolListview.Rows()[0].cells[app::kNameCell], u"c");
  EXPECT_EQ(std::ranges::count_if(
                internet.calls, [](const std::string& call) { return call.starts_with("InternetConnectW"); }),
            2)
      << "no row is asked twice, and the deleted one not at all";
  EXPECT_EQ(TitleOf(u"a"), u"Lied A");
  EXPECT_EQ(TitleOf(u"c"), u"Lied C");
  EXPECT_EQ(Form().SymbolListview.Count(), 2U);

  internet.before_read = [&] { Form().SymbolListview.Clear(); };
  RunAllTitles();
  EXPECT_EQ(Form().SymbolListview.Count(), 0U);
}

TEST_F(NowPlayingTest, RowThatIsRemovedAtAnyMomentOfTheRunIsLeftOutAndTheOthersGetTheirTitles) {
  AddPlayingStation(u"a", "Lied A");
  AddPlayingStation(u"b", "Lied B");
  AddPlayingStation(u"c", "Lied C");
  int moment = 0;
  bool reached = true;
  while (reached) {
    reached = false;
    ++moment;
    Form().SymbolListview.Clear();
    for (const char16_t* name : {u"a", u"b", u"c"}) AddStation(name, u"http://" + Text(name) + u"/s");
    int now = 0;
    message_loop.on_pump = [&] {
      if (++now != moment) return;
      reached = true;
      Form().SymbolListview.RemoveRow(RowNamed(Form().SymbolListview, u"b"));
    };
    RunAllTitles();
    EXPECT_EQ(TitleOf(u"a"), u"Lied A") << moment;
    EXPECT_EQ(TitleOf(u"c"), u"Lied C") << moment;
    EXPECT_EQ(Form().SymbolListview.Count(), reached ? 2U : 3U) << moment;
  }
  EXPECT_GT(moment, 6);
}

TEST_F(NowPlayingTest, RunPassesOverRowsThatWereLoadedAgainMeanwhile) {
  AddPlayingStation(u"a", "Lied A");
  AddPlayingStation(u"b", "Lied B");
  bool done = false;
  internet.before_read = [&] {
    if (std::exchange(done, true)) return;
    Form().SymbolListview.Clear();
    AddStation(u"a", u"http://a/s");
    AddStation(u"b", u"http://b/s");
  };
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"");
  EXPECT_EQ(TitleOf(u"b"), u"");
}

TEST_F(NowPlayingTest, WindowThatClosesDuringTheWarningAsksNoStation) {
  AddPlayingStation(u"a", "Lied A");
  dialogs.on_box = [this] { CloseWindow(); };
  RunAllTitles();
  EXPECT_TRUE(internet.calls.empty());
  EXPECT_EQ(TitleOf(u"a"), u"");
}

TEST_F(NowPlayingTest, RunEndsWhenTheWindowCloses) {
  AddPlayingStation(u"a", "Lied A");
  AddPlayingStation(u"b", "Lied B");
  internet.before_read = [this] { CloseWindow(); };
  RunAllTitles();
  EXPECT_EQ(TitleOf(u"a"), u"Hole Info...");
  EXPECT_EQ(TitleOf(u"b"), u"");
}
}  // namespace
}  // namespace ui
