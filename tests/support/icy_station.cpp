#include "tests/support/icy_station.h"

#include <poll.h>

#include <algorithm>
#include <condition_variable>
#include <list>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "tests/support/icy_script.h"
#include "tests/support/local_socket.h"
#include "tests/support/request_reading.h"

namespace test_support {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

/// What is played and counted, on the air or not.
class IcyStation::Programme {
 public:
  Programme(Mp3Loop loop, Settings settings) : loop_(std::move(loop)), settings_(std::move(settings)) {}

  [[nodiscard]] const Mp3Loop& Loop() const { return loop_; }
  [[nodiscard]] const Settings& Wanted() const { return settings_; }
  [[nodiscard]] nanoseconds Elapsed() const { return steady_clock::now() - start_; }

  /// The position of the current title; nothing when the station has none.
  [[nodiscard]] std::optional<std::size_t> CurrentTitle() const {
    if (settings_.titles.empty()) return std::nullopt;
    const auto turn = static_cast<std::size_t>(Elapsed() / settings_.title_time);
    return turn % settings_.titles.size();
  }

  void Change(const std::function<void(Counts&)>& change, const std::string& line = "") {
    const std::lock_guard lock(mutex_);
    change(counts_);
    if (settings_.log && !line.empty()) settings_.log(line);
    changed_.notify_all();
  }
  Counts Count() const {
    const std::lock_guard lock(mutex_);
    return counts_;
  }
  bool WaitUntil(const std::function<bool(const Counts&)>& condition, milliseconds deadline) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, deadline, [&] { return condition(counts_); });
  }

  Descriptor reserved;  ///< Keeps the port while the station is off the air.
  std::uint16_t port = 0;

 private:
  const Mp3Loop loop_;
  const Settings settings_;
  const steady_clock::time_point start_ = steady_clock::now();
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  Counts counts_;
};

/// One time on the air: the listening socket and the threads of its clients.
class IcyStation::OnAir {
 public:
  OnAir(Programme& programme, Descriptor listener) : programme_(programme), listener_(std::move(listener)) {
    accepting_ = std::thread([this] { AcceptClients(); });
  }
  ~OnAir() {
    stop_.Raise();
    accepting_.join();
    for (std::thread& thread : serving_) thread.join();
  }
  OnAir(const OnAir&) = delete;
  OnAir& operator=(const OnAir&) = delete;

 private:
  enum class Titles { kWanted, kUnwanted };

  void AcceptClients() {
    while (true) {
      Descriptor socket = Accept(listener_, stop_);
      if (!socket.IsOpen()) return;
      serving_.emplace_back([this, owned = std::move(socket)]() mutable { Serve(std::move(owned)); });
    }
  }
  void Serve(Descriptor socket);
  [[nodiscard]] std::string Page(const std::string& target) const;
  [[nodiscard]] std::string StreamHeader(Titles titles) const;
  void Play(const Descriptor& socket, Titles titles);
  bool WaitForItsTime(const Descriptor& socket, steady_clock::time_point due);
  std::string WithTitles(std::string_view audio, std::size_t& until_block,
                         std::optional<std::size_t>& last_title);

  Programme& programme_;
  StopSignal stop_;
  Descriptor listener_;
  std::list<std::thread> serving_;
  std::thread accepting_;
};

void IcyStation::OnAir::Serve(Descriptor socket) {
  std::string received;
  const auto request = ReadRequest(socket, received, stop_);
  if (!request) return;
  programme_.Change([](Counts& counts) { ++counts.requests; }, "request " + request->line);
  const std::string target = request->target.substr(0, request->target.find('?'));
  if (target != "/stream") {
    SendAll(socket, Page(target), stop_);
    CloseCleanly(socket, stop_);
    return;
  }
  const Titles titles = request->Header("Icy-MetaData") == "1" ? Titles::kWanted : Titles::kUnwanted;
  if (!SendAll(socket, StreamHeader(titles), stop_)) return;
  programme_.Change([](Counts& counts) {
    ++counts.listeners;
    ++counts.all_listeners;
  });
  Play(socket, titles);
  programme_.Change([](Counts& counts) { --counts.listeners; }, "listener gone");
}

std::string IcyStation::OnAir::Page(const std::string& target) const {
  const std::string address = "http://127.0.0.1:" + std::to_string(programme_.port) + "/stream";
  const std::string& name = programme_.Wanted().name;
  std::string type;
  std::string body;
  if (target == "/station.pls") {
    type = "audio/x-scpls";
    body = "[playlist]\r\nNumberOfEntries=1\r\nFile1=" + address + "\r\nTitle1=" + name +
           "\r\nLength1=-1\r\nVersion=2\r\n";
  }
  if (target == "/station.m3u") {
    type = "audio/x-mpegurl";
    body = "#EXTM3U\r\n#EXTINF:-1," + name + "\r\n" + address + "\r\n";
  }
  if (type.empty()) return Header("HTTP/1.0 404 Not Found", {"Content-Length: 0", "Connection: close"});
  return Header("HTTP/1.0 200 OK", {"Content-Type: " + type, "Content-Length: " + std::to_string(body.size()),
                                    "Connection: close"}) +
         body;
}

std::string IcyStation::OnAir::StreamHeader(Titles titles) const {
  const Settings& wanted = programme_.Wanted();
  std::vector<std::string> lines = {"Content-Type: audio/mpeg",
                                    "icy-name:" + wanted.name,
                                    "icy-genre:" + wanted.genre,
                                    "icy-url:" + wanted.url,
                                    "icy-br:" + std::to_string(programme_.Loop().BitRate()),
                                    "icy-pub:0",
                                    "Cache-Control: no-cache",
                                    "Connection: close"};
  if (titles == Titles::kWanted) lines.push_back("icy-metaint:" + std::to_string(wanted.metaint));
  return Header(wanted.status_line, lines);
}

void IcyStation::OnAir::Play(const Descriptor& socket, Titles titles) {
  const Mp3Loop& loop = programme_.Loop();
  const auto begin = steady_clock::now() - programme_.Wanted().burst;
  const auto first = static_cast<std::size_t>(programme_.Elapsed() / loop.FrameDuration());
  std::size_t until_block = programme_.Wanted().metaint;
  std::optional<std::size_t> last_title;
  for (std::size_t sent = 0;; ++sent) {
    if (!WaitForItsTime(socket, begin + loop.FrameDuration() * static_cast<std::int64_t>(sent))) return;
    const std::string_view frame = loop.Frame(first + sent);
    const bool taken = titles == Titles::kWanted
                           ? SendAll(socket, WithTitles(frame, until_block, last_title), stop_)
                           : SendAll(socket, frame, stop_);
    if (!taken) return;
    programme_.Change([&](Counts& counts) { counts.audio_bytes += frame.size(); });
  }
}

// What a listener sends is ignored; a listener that hangs up ends the wait.
bool IcyStation::OnAir::WaitForItsTime(const Descriptor& socket, steady_clock::time_point due) {
  std::string ignored;
  while (true) {
    const auto left = std::chrono::ceil<milliseconds>(due - steady_clock::now());
    const Wake wake = WaitFor(socket.Get(), POLLIN, stop_, std::max(left, milliseconds(0)));
    if (wake == Wake::kTimeout) return true;
    if (wake == Wake::kStopped || !Receive(socket, ignored, stop_)) return false;
    ignored.clear();
  }
}

// Puts the metadata blocks that fall into these bytes between them.
std::string IcyStation::OnAir::WithTitles(std::string_view audio, std::size_t& until_block,
                                          std::optional<std::size_t>& last_title) {
  std::string bytes;
  while (audio.size() >= until_block) {
    bytes += audio.substr(0, until_block);
    audio.remove_prefix(until_block);
    until_block = programme_.Wanted().metaint;
    const auto title = programme_.CurrentTitle();
    if (!title || title == last_title) {
      bytes += MetadataBlock("");
      continue;
    }
    last_title = title;
    const std::string& text = programme_.Wanted().titles[*title];
    bytes += TitleBlock(text);
    programme_.Change([](Counts& counts) { ++counts.titles; }, "title " + text);
  }
  until_block -= audio.size();
  return bytes += audio;
}

IcyStation::IcyStation(Mp3Loop loop, Settings settings, std::uint16_t port)
    : programme_(std::make_unique<Programme>(std::move(loop), std::move(settings))) {
  programme_->reserved = ReserveLocally(port);
  programme_->port = LocalPort(programme_->reserved);
}

IcyStation::~IcyStation() = default;

void IcyStation::Start() {
  if (!on_air_) on_air_ = std::make_unique<OnAir>(*programme_, ListenLocally(programme_->port));
}

void IcyStation::Stop() { on_air_.reset(); }

std::uint16_t IcyStation::Port() const { return programme_->port; }

std::string IcyStation::Url(std::string_view target) const {
  return "http://127.0.0.1:" + std::to_string(programme_->port) + std::string(target);
}

IcyStation::Counts IcyStation::Count() const { return programme_->Count(); }

bool IcyStation::WaitUntil(const std::function<bool(const Counts&)>& condition, milliseconds deadline) const {
  return programme_->WaitUntil(condition, deadline);
}

}  // namespace test_support
