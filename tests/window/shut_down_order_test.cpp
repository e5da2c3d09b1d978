// The order in which the window ends what is at work when it closes.

#include "tests/window/window_fixture.h"

namespace app {
namespace {

class ShutDownOrderTest : public WindowTest {};

TEST_F(ShutDownOrderTest, RecordingIsAskedToStopBeforeTheLastMessagesAreProcessed) {
  Start();
  const auto client = window->StreamClient();
  client->StreamUrl(u"http://a/");
  // This reader ends after its first read when the client was stopped, and keeps reading otherwise.
  std::size_t reads = 0;
  message_loop.on_pump = [&] {
    message_loop.on_pump = nullptr;
    internet.before_read = [&] {
      if (++reads == 5) client->StopRecStream();
    };
    client->GetActiveMeta(u"", 8);
  };
  Form().form.Close();
  EXPECT_EQ(reads, 1U);
}

TEST_F(ShutDownOrderTest, PendingMessagesRunOnceBeforeThePlayerIsReleased) {
  Start();
  const int before = message_loop.pumps;
  bool framework_was_up = false;
  message_loop.on_pump = [&] {
    framework_was_up = std::count(media.Calls().begin(), media.Calls().end(), "MFShutdown()") == 0;
  };
  Form().form.Close();
  EXPECT_EQ(message_loop.pumps, before + 1);
  EXPECT_TRUE(framework_was_up);
  EXPECT_EQ(media.Calls().back(), "MFShutdown()");
  EXPECT_TRUE(media.LiveHandles().empty());
}

TEST_F(ShutDownOrderTest, StreamClientGoesAfterTheMessagesThenTheTimersStopThenThePlayerGoes) {
  Start();
  Form().tmPlay.SetEnabled(true);
  Form().Timer2.SetEnabled(true);
  std::vector<std::string> steps;
  const auto note = [&](const std::string& step) {
    const bool player_gone =
        std::count(media.Calls().begin(), media.Calls().end(), std::string("MFShutdown()")) > 0;
    steps.push_back(step + (window->StreamClient() ? ", client" : "") + (player_gone ? "" : ", player"));
  };
  message_loop.on_pump = [&] { note("messages"); };
  const auto position = Form().tmPlay.Changed.Subscribe([&] { note("position timer"); });
  const auto titles = Form().Timer2.Changed.Subscribe([&] { note("title timer"); });
  const auto closed = Form().form.Closed.Subscribe([&] { note("closed"); });
  Form().form.Close();
  EXPECT_EQ(steps, (std::vector<std::string>{"messages, client, player", "position timer, player",
                                             "title timer, player", "closed"}));
}

TEST_F(ShutDownOrderTest, ClosingInsideARecordingStopsItAndClosesItsFile) {
  Start();
  // Kept here too, so that nothing but a stop ends the recording.
  const auto client = window->StreamClient();
  internet.answer.reads.assign(5, {true, std::string(512, 'a')});
  client->StreamUrl(u"http://a/");
  message_loop.on_pump = [this] { Form().form.Close(); };
  internet.before_read = [&] {
    if (internet.reads.size() < 20) return;
    ADD_FAILURE() << "nobody stopped the recording";
    client->StopRecStream();
  };
  client->StartRecStream(u"audio/mpeg");
  EXPECT_TRUE(Form().form.IsClosed());
  EXPECT_EQ(record_files.opened.size(), 1U);
  EXPECT_EQ(record_files.OpenFiles(), 0U);
  EXPECT_EQ(internet.OpenHandles(), 0U);
}

TEST_F(ShutDownOrderTest, ClosingWhileTheWindowClosesDoesNothingMore) {
  Start();
  message_loop.on_pump = [this] { Form().form.Close(); };
  int closed = 0;
  const auto subscription = Form().form.Closed.Subscribe([&] { ++closed; });
  Form().form.Close();
  EXPECT_EQ(closed, 1);
}

TEST_F(ShutDownOrderTest, ImageListIsDestroyedAtTheEnd) {
  Start();
  Form().form.Close();
  EXPECT_EQ(icons.destroyed_lists, 0);
  window.reset();
  EXPECT_EQ(icons.destroyed_lists, 1);
}

TEST_F(ShutDownOrderTest, ClosingInsideATitleFetchEndsItAndTouchesNothingMore) {
  AddStation(u"A", u"http://a/");
  internet.answer.raw_headers = u"HTTP/1.1 200 OK\r\nicy-metaint:8\r\n\r\n";
  Start();
  const Text title_before = Form().Label4.Caption();
  internet.before_read = [this] { Form().form.Close(); };
  Select(u"A");
  EXPECT_TRUE(Form().form.IsClosed());
  EXPECT_EQ(internet.OpenHandles(), 0U);
  EXPECT_EQ(Form().Label4.Caption(), title_before);
}

TEST_F(ShutDownOrderTest, ClosingInsideThePlaylistFetchEndsIt) {
  AddStation(u"A", u"http://a/");
  Start();
  requests.request.states = {1};
  message_loop.on_pump = [this] { Form().form.Close(); };
  Select(u"A");
  EXPECT_TRUE(Form().form.IsClosed());
  EXPECT_EQ(requests.live_objects, 0);
  EXPECT_EQ(Form().Frame3.Visible(), false);
}

TEST_F(ShutDownOrderTest, ClosingInsideTheWaitForThePlayersServicesStartsNothing) {
  AddStation(u"A", u"http://a/");
  Start();
  Select(u"A");
  message_loop.on_sleep = [this](std::uint32_t milliseconds) {
    clock.seconds_since_midnight += milliseconds / 1000.0;
    Form().form.Close();
  };
  Form().Command1.Click();
  EXPECT_TRUE(Form().form.IsClosed());
  EXPECT_FALSE(Form().Timer1.Enabled());
  EXPECT_FALSE(Form().tmPlay.Enabled());
  window.reset();
  EXPECT_TRUE(media.LiveHandles().empty());
  EXPECT_TRUE(media.Misuses().empty());
}
}  // namespace
}  // namespace app
