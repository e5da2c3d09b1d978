// What comes in the middle of a wait: each test lets it happen at every single moment at which the window
// processes its messages.
#include "tests/window/window_fixture.h"

namespace app {
namespace {

using State = std::vector<Text>;

class ReentryTest : public WindowTest {
 protected:
  ReentryTest() {
    for (const char16_t* name : {u"A", u"C"}) files.files[PicturePath(name)] = "jpg";
    AddTitledStation(u"A", u"http://a/liste.m3u", u"http://a-zwei/", "Titel A");
    AddTitledStation(u"B", u"http://b/", u"http://b/", "Titel B");
    AddTitledStation(u"C", u"http://c/liste.m3u", u"http://c-zwei/", "Titel C");
    profile.Set(kStationFilePath, u"C", u"Favorit", u"1");
    profile.Set(kStationFilePath, u"C", u"Genre", u"Klassik");
    dialogs.chosen_file = u"C:\\liste.m3u";
  }

  static Text PicturePath(const Text& name) {
    return u"C:\\Programme\\Funkhaus\\RadioJPG\\" + name + u".jpg";
  }

  void AddTitledStation(const Text& name, const Text& link, const Text& address, const std::string& title) {
    AddStation(name, link, u"Rock", u"", u"2");
    requests.requests[link] = {
        {1, 1, 4}, u"[playlist]\r\nNumberOfEntries=2\r\nFile1=http://falsch/\r\nFile2=" + address};
    if (link == address) requests.requests[link].body = u"kein Verzeichnis";
    test_support::ScriptedAnswer answer;
    answer.raw_headers = u"ICY 200 OK\r\nicy-metaint:8\r\n\r\n";
    std::string block = "StreamTitle='" + title + "';";
    block.resize(32, '\0');
    answer.reads = {{true, "AAAA"}, {true, "AAAA\2"}, {true, block}};
    internet.answers[address] = answer;
    internet.answers[address.substr(7, address.size() - 8) + u":80/"] = answer;
  }

  /// Everything of the window that belongs to the selected station.
  State Shown() {
    const Form1& form = Form();
    const auto yes = [](bool value) { return Text(value ? u"ja" : u"nein"); };
    return {form.SymbolListview.Cell(form.SymbolListview.SelectedRow(), app::kNameCell),
            form.TextBox1[0].GetText(),
            form.TextBox1[1].GetText(),
            form.Combo1.GetText(),
            yes(form.Check2.Checked()),
            form.UpDownTextBox1.GetText(),
            yes(form.UpDownTextBox1.Visible()),
            yes(form.Label2.Visible()),
            yes(form.Command8[0].Visible()),
            window->State().current_stream_address,
            window->State().current_station_name,
            yes(window->State().details_are_stale),
            form.Label4.Caption(),
            form.Label3.Caption(),
            yes(form.Frame3.Visible()),
            yes(form.Image1.Visible()),
            icons.picture_paths[form.Image1.Picture()]};
  }
  State ShownAfterSelecting(const Text& name) {
    Start();
    Select(name);
    return Shown();
  }

  /// Does `action`, and `meanwhile` at the `moment`-th processing of messages in it. False when `action` has
  /// not so many moments.
  bool Interrupt(int moment, const std::function<void()>& action, const std::function<void()>& meanwhile) {
    int now = 0;
    message_loop.on_pump = [&] {
      if (++now == moment) meanwhile();
    };
    action();
    message_loop.on_pump = nullptr;
    return now >= moment;
  }

  /// The player's services are waited for in hundreds of equal moments; some of them represent all.
  static int NextMoment(int moment) { return moment < 20 ? moment + 1 : moment + 37; }

  std::size_t CountCalls(const std::string& part) const {
    std::size_t count = 0;
    for (const std::string& call : media.Calls()) count += call.find(part) != std::string::npos ? 1U : 0U;
    return count;
  }
  void SelectAndSort() {
    Select(u"A");
    Form().SymbolListview.ClickHeader(0);
    ASSERT_TRUE(window->State().details_are_stale);
  }

  /// `action` in a window that is closed meanwhile, at every moment in turn. Gives the number of moments.
  int CloseDuring(const std::function<void()>& prepare, const std::function<void()>& action) {
    int moment = 0;
    bool reached = true;
    while (reached) {
      Start();
      prepare();
      moment = NextMoment(moment);
      reached = Interrupt(moment, action, [this] { Form().form.Close(); });
      if (!reached) break;
      EXPECT_TRUE(Form().form.IsClosed());
      EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled()) << moment;
      EXPECT_EQ(internet.OpenHandles(), 0U) << moment;
      EXPECT_EQ(requests.live_objects, 0) << moment;
      window.reset();
      EXPECT_TRUE(media.LiveHandles().empty()) << moment;
    }
    EXPECT_TRUE(media.Misuses().empty());
    return moment - 1;
  }
};

TEST_F(ReentryTest, SelectionAtAnyMomentOfAnEarlierOneEndsWithEverythingOfTheLast) {
  for (const auto& pair : std::vector<std::pair<Text, Text>>{
           {u"A", u"B"}, {u"B", u"A"}, {u"A", u"C"}, {u"C", u"B"}, {u"C", u"A"}}) {
    const Text& first = pair.first;
    const Text& second = pair.second;
    const State expected = ShownAfterSelecting(second);
    int moment = 0;
    bool reached = true;
    while (reached) {
      Start();
      reached = Interrupt(
          ++moment, [&] { Select(first); }, [&] { Select(second); });
      if (!reached) break;
      EXPECT_EQ(Shown(), expected) << moment;
    }
    EXPECT_GT(moment, 6) << "playlist, header query and title were all interrupted";
  }
}

TEST_F(ReentryTest, ThirdSelectionInTheMiddleOfTheSecondWinsToo) {
  const State expected = ShownAfterSelecting(u"C");
  int moment = 0;
  bool reached = true;
  while (reached) {
    Start();
    int later = 0;
    reached = Interrupt(
        ++moment, [&] { Select(u"A"); },
        [&] {
          later = moment % 5 + 1;
          Interrupt(
              later, [&] { Select(u"B"); }, [&] { Select(u"C"); });
        });
    if (!reached) break;
    EXPECT_EQ(Shown(), expected) << moment << " " << later;
  }
  EXPECT_GT(moment, 6);
}

TEST_F(ReentryTest, StopAtAnyMomentOfAStartLeavesNothingPlaying) {
  int moment = 0;
  bool reached = true;
  while (reached) {
    Start();
    SelectAndSort();
    moment = NextMoment(moment);
    reached = Interrupt(
        moment, [this] { Form().Command1.Click(); }, [this] { Form().Command6.Click(); });
    if (!reached) break;
    EXPECT_EQ(CountCalls(".Start("), 0U) << moment;
    EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled()) << moment;
  }
  EXPECT_GT(moment, 6);
}

TEST_F(ReentryTest, SecondStartAtAnyMomentOfTheFirstPlaysOnce) {
  int moment = 0;
  bool reached = true;
  while (reached) {
    Start();
    SelectAndSort();
    const std::size_t starts_before = CountCalls(".Start(");
    const auto start = [this] { Form().Command1.Click(); };
    moment = NextMoment(moment);
    reached = Interrupt(moment, start, start);
    EXPECT_EQ(CountCalls(".Start(") - starts_before, 1U) << moment;
    EXPECT_EQ(CountCalls("CreateObjectFromURL(\"http://falsch/"), 0U) << moment;
    EXPECT_TRUE(Form().tmPlay.Enabled() && Form().Timer1.Enabled() && Form().Timer2.Enabled()) << moment;
  }
  EXPECT_GT(moment, 6);
}

TEST_F(ReentryTest, WindowCanBeClosedAtAnyMomentOfEveryAction) {
  const auto nothing = [] {};
  const auto selected = [this] { Select(u"A"); };
  EXPECT_GT(CloseDuring(nothing, selected), 5);
  EXPECT_GT(CloseDuring(nothing, [this] { Form().Command3.Click(); }), 7) << "all titles";
  EXPECT_GT(CloseDuring(selected, [this] { Form().Command3.ContextClick(); }), 3);
  EXPECT_GT(CloseDuring([this] { SelectAndSort(); }, [this] { Form().Command1.Click(); }), 5);
  EXPECT_EQ(CloseDuring(nothing, [this] { Form().Command4.Click(); }), 3) << "the export, once per row";
  EXPECT_EQ(files.writes, 1) << "only the run that nobody interrupted wrote";
  EXPECT_GT(
      CloseDuring([&] { selected(), Form().Timer2.SetEnabled(true); }, [this] { Form().Timer2.Fire(); }), 3);
}

}  // namespace
}  // namespace app
