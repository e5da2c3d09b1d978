#include "platform/gstreamer/ended_answers.h"

#include <gio/gio.h>
#include <gst/base/gstbasesrc.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

#include "tests/platform/gstreamer/session_driver.h"
#include "tests/support/child_process.h"
#include "tests/support/media_files.h"
#include "tests/support/media_http_server.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::kSOk;
using test_support::HttpAnswer;
using test_support::MakeTone;
using test_support::MediaHttpServer;
using test_support::ReadBytes;
using test_support::RunProgram;
using test_support::TempFolder;
using test_support::WaitUntil;

/// Whether there is a library of the kind whose answers are held here; an answer must have been read before.
bool KnowsTheLibrary() { return g_type_from_name("SoupClientInputStream") != 0; }

/// Keeps an answer that has arrived from its source until that is cancelled: in the library's own thread,
/// between the making of the answer's body and its delivery. It lasts as long as the process, as the
/// library's threads may.
class ArrivalHolder {
 public:
  enum class Stage : std::uint8_t {
    kNothing,
    kAwaited,
    kArrived,
    kCancelled,
    kClosed,  ///< the body was closed and released
  };

  /// Holds the next answer from an address with this ending; the one before must be closed.
  static ArrivalHolder& Await(std::string ending) {
    static auto* const only = new ArrivalHolder;
    const std::lock_guard lock(only->mutex_);
    only->ending_ = std::move(ending);
    only->stage_ = Stage::kAwaited;
    return *only;
  }
  [[nodiscard]] bool HasReached(Stage stage) {
    const std::lock_guard lock(mutex_);
    return stage_ >= stage;
  }

 private:
  ArrivalHolder() {
    holder = this;
    auto* const body = G_OBJECT_CLASS(g_type_class_peek(g_type_from_name("SoupClientInputStream")));
    set_property_ = body->set_property;
    body->set_property = OnBodyMade;
    auto* const source = GST_BASE_SRC_CLASS(g_type_class_peek(g_type_from_name("GstSoupHTTPSrc")));
    unlock_ = source->unlock;
    source->unlock = OnCancelled;
  }
  static void OnBodyMade(GObject* body, guint id, const GValue* value, GParamSpec* property) {
    holder->set_property_(body, id, value, property);
    if (G_VALUE_HOLDS_OBJECT(value)) holder->Hold(body, G_OBJECT(g_value_get_object(value)));
  }
  void Hold(GObject* body, GObject* message) {
    GUri* address = nullptr;
    g_object_get(message, "uri", &address, nullptr);
    const std::string path = address == nullptr ? "" : g_uri_get_path(address);
    g_clear_pointer(&address, g_uri_unref);
    std::unique_lock lock(mutex_);
    if (stage_ != Stage::kAwaited || !path.ends_with(ending_)) return;
    g_object_weak_ref(
        body, [](gpointer, GObject*) { holder->Continue(Stage::kCancelled, Stage::kClosed); }, nullptr);
    stage_ = Stage::kArrived;
    changed_.wait_for(lock, 5s, [this] { return stage_ == Stage::kCancelled; });
  }
  static gboolean OnCancelled(GstBaseSrc* source) {
    const gboolean result = holder->unlock_(source);
    gchar* address = nullptr;
    g_object_get(source, "location", &address, nullptr);
    if (holder->IsOfTheAnswer(address)) holder->Continue(Stage::kArrived, Stage::kCancelled);
    g_free(address);
    return result;
  }
  bool IsOfTheAnswer(const char* address) {
    const std::lock_guard lock(mutex_);
    return address != nullptr && std::string_view(address).ends_with(ending_);
  }
  void Continue(Stage from, Stage to) {
    const std::lock_guard lock(mutex_);
    if (stage_ != from) return;
    stage_ = to;
    changed_.notify_all();
  }

  static ArrivalHolder* holder;
  decltype(GObjectClass::set_property) set_property_ = nullptr;
  decltype(GstBaseSrcClass::unlock) unlock_ = nullptr;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::string ending_;
  Stage stage_ = Stage::kNothing;
};

ArrivalHolder* ArrivalHolder::holder = nullptr;
using Stage = ArrivalHolder::Stage;

class EndedAnswersTest : public testing::Test {
 protected:
  void ServeTone() {
    server.On("/tone.mp3", [bytes = ReadBytes(MakeTone(folder, "tone.mp3", "libmp3lame"))](auto& connection) {
      connection.Send(HttpAnswer("200 OK", "audio/mpeg", bytes));
    });
  }
  /// From then on the library has its classes.
  void OpenAndClose() {
    ASSERT_EQ(driver.Open(server.Url("/tone.mp3")), kSOk);
    driver.Close();
    ASSERT_TRUE(WaitUntil([&] { return server.Open() == 0; }, 5s));
  }
  void ServeSegments() {
    const std::string tone = MakeTone(folder, "tone.m4a", "aac", {.seconds = 6});
    RunProgram({"ffmpeg", "-y", "-loglevel", "error", "-i", tone, "-c", "copy", "-hls_time", "1",
                "-hls_list_size", "0", "-hls_segment_filename", (folder.Path() / "%d.ts").string(),
                (folder.Path() / "list.m3u8").string()});
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      const bool list = entry.path().extension() == ".m3u8";
      if (!list && entry.path().extension() != ".ts") continue;
      const std::string type = list ? "application/vnd.apple.mpegurl" : "video/mp2t";
      server.On("/" + entry.path().filename().string(),
                [bytes = ReadBytes(entry.path()), type](MediaHttpServer::Connection& connection) {
                  connection.Send(HttpAnswer("200 OK", type, bytes));
                });
    }
  }
  /// A file in three parts: each connection ends after one, and is asked for the rest.
  void ServeInThreeParts(const std::string& path) {
    const std::string all = ReadBytes(MakeTone(folder, "parts.mp3", "libmp3lame"));
    server.On(path, [this, all](MediaHttpServer::Connection& connection) {
      const std::string& request = connection.Request();
      constexpr char kRange[] = "\r\nRange: bytes=";
      const auto range = request.find(kRange);
      const bool again = range != std::string::npos;
      const std::size_t from = again ? std::stoul(request.substr(range + sizeof(kRange) - 1)) : 0;
      const std::string bounds = std::to_string(from) + "-" + std::to_string(all.size() - 1);
      const std::string more = "Accept-Ranges: bytes\r\nContent-Range: bytes " + bounds + "/" +
                               std::to_string(all.size()) + "\r\n";
      const std::string answer = HttpAnswer(again ? "206 Partial Content" : "200 OK", "audio/mpeg",
                                            all.substr(from), again ? more : "");
      const std::size_t rest = all.size() - from;
      const std::size_t part = std::min(rest, all.size() / 3 + 1);
      sent += connection.Send(answer.substr(0, answer.size() - rest + part)) ? part : 0;
      // Its rest is only asked for when the file is open.
      WaitUntil([&] { return opened.load(); }, 5s);
    });
    size = all.size();
  }
  TempFolder folder;
  std::size_t size = 0;
  std::atomic<std::size_t> sent{0};
  std::atomic<bool> opened{false};
  MediaHttpServer server;
  SessionDriver driver{Unheard()};
};

TEST_F(EndedAnswersTest, AStopInTheMomentInWhichTheAnswerArrivesEndsTheOpening) {
  ServeTone();
  OpenAndClose();
  if (!KnowsTheLibrary()) GTEST_SKIP() << "another HTTP library";
  auto& holder = ArrivalHolder::Await("/tone.mp3");
  driver.loop.on_paint = [&] { driver.loop.input_ends_wait = holder.HasReached(Stage::kArrived); };
  EXPECT_NE(driver.Open(server.Url("/tone.mp3")), kSOk);
  EXPECT_TRUE(WaitUntil([&] { return holder.HasReached(Stage::kClosed); }, 5s));
}

TEST_F(EndedAnswersTest, AListIsClosedInTheMomentInWhichASegmentArrives) {
  ServeTone();
  OpenAndClose();
  if (!KnowsTheLibrary()) GTEST_SKIP() << "another HTTP library";
  ServeSegments();
  auto& holder = ArrivalHolder::Await("/2.ts");
  ASSERT_EQ(driver.Open(server.Url("/list.m3u8")), kSOk);
  ASSERT_EQ(driver.Start(), kSOk);
  ASSERT_TRUE(WaitUntil([&] { return holder.HasReached(Stage::kArrived); }, 5s));
  driver.Close();
  EXPECT_TRUE(WaitUntil([&] { return holder.HasReached(Stage::kClosed); }, 5s));
}

TEST_F(EndedAnswersTest, AFileWhoseConnectionBreaksTwiceIsReadToItsEnd) {
  ServeInThreeParts("/parts.mp3");
  ASSERT_EQ(driver.Open(server.Url("/parts.mp3")), kSOk);
  opened = true;
  EXPECT_TRUE(WaitUntil([&] { return sent == size && server.Open() == 0; }, 5s)) << sent << " of " << size;
  EXPECT_EQ(server.Requests("/parts.mp3"), 3);
}

}  // namespace
}  // namespace gstreamer_test
