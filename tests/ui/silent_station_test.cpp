// What polling, selections, Start and the run over all titles do about a station that never answers.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "tests/ui/titled_window_fixture.h"

namespace app {
namespace {

class SilentStationTest : public TitledWindowTest {
 protected:
  SilentStationTest() {
    AddPlayingStation(u"good", "Lied");
    AddPlayingStation(u"silent", "Sp\xE4tes Lied");
    Answer(false);
    internet.before_answer = [this](bool is_answered) {
      if (!is_answered) clock.seconds_since_midnight += 3;
    };
  }
  void Answer(bool answers) {
    internet.answers[u"silent:80/s"].reachable = answers;
    internet.answers[u"http://silent/s"].reachable = answers;
  }
  /// How often the silent station's server was waited for in vain.
  std::ptrdiff_t Waits() const {
    return std::ranges::count_if(internet.calls, [](const std::string& call) {
      const bool asks = call.starts_with("HttpSendRequestW") || call.starts_with("InternetOpenUrlW");
      return asks && call.ends_with(" = 0");
    });
  }
  void Tick(int seconds_later) {
    clock.whole_seconds += seconds_later;
    Form().Timer2.SetEnabled(true);
    Form().Timer2.Fire();
  }
};

TEST_F(SilentStationTest, PollingAsksASilentStationEverMoreRarely) {
  Start();
  // Its interval stays in force, so that the silent station's title would be asked for too.
  Select(u"good");
  Select(u"silent");
  EXPECT_EQ(Waits(), 1);
  std::vector<int> asked;
  for (int second = 5; second <= 200; second += 5) {
    const auto before = Waits();
    Tick(5);
    EXPECT_LE(Waits(), before + 1) << "never for the title as well";
    if (Waits() > before) asked.push_back(second);
  }
  EXPECT_EQ(asked, (std::vector<int>{15, 40, 85, 150}));
}

TEST_F(SilentStationTest, SelectingItAnewAsksItOnceMore) {
  Start();
  Select(u"silent");
  Select(u"good");
  Select(u"silent");
  EXPECT_EQ(Waits(), 2);
  EXPECT_THAT(internet.calls, testing::Not(testing::Contains(testing::HasSubstr(", 1250)"))))
      << "as patiently as the first time";
  Tick(1);
  EXPECT_EQ(Waits(), 2);
  Select(u"good");
  Answer(true);
  Select(u"silent");
  EXPECT_EQ(Form().Label4.Caption(), u"Spätes Lied");
}

TEST_F(SilentStationTest, StartAsksItOnceMoreAtTheNextTick) {
  Start();
  Select(u"silent");
  Tick(1);
  EXPECT_EQ(Waits(), 1);
  Form().Command1.Click();
  EXPECT_EQ(Waits(), 1) << "Start itself asks for no title";
  Tick(1);
  EXPECT_EQ(Waits(), 2);
  EXPECT_THAT(internet.calls, testing::Contains(testing::HasSubstr(", 1250)"))) << "briefly";
  Tick(1);
  EXPECT_EQ(Waits(), 2);
}

TEST_F(SilentStationTest, RunOverAllStationsAsksASilentOneOnceAndTheOthersAsEver) {
  Start();
  RunAllTitles();
  EXPECT_EQ(Waits(), 1);
  EXPECT_EQ(TitleOf(u"good"), u"Lied");
  EXPECT_EQ(TitleOf(u"silent"), u"--") << "with the interval of the station before";
  RunAllTitles();
  EXPECT_EQ(Waits(), 1);
  EXPECT_EQ(TitleOf(u"good"), u"Lied");
}

TEST_F(SilentStationTest, EntryOfAPlaylistThatIsSelectedAnewIsAskedOnceMoreToo) {
  requests.requests[u"http://host/liste.pls"] = {{4}, u"http://silent/s"};
  AddStation(u"liste", u"http://host/liste.pls");
  Start();
  Select(u"liste");
  Select(u"good");
  Select(u"liste");
  EXPECT_EQ(window->State().current_stream_address, u"http://silent/s");
  EXPECT_EQ(Waits(), 2);
}

TEST_F(SilentStationTest, LinkThatIsSelectedAnewIsAskedWhetherItIsAPlaylist) {
  Start();
  Select(u"silent");
  Select(u"good");
  requests.calls.clear();
  Select(u"silent");
  EXPECT_THAT(requests.calls, testing::Contains("Open(GET, http://silent/s, True)"));
}

}  // namespace
}  // namespace app
