#pragma once
// A small radio station on 127.0.0.1 that plays an MP3 loop in real time, with ICY titles and playlists.
// Not a server that misbehaves: that is ScriptedIcyServer.

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/mp3_loop.h"

namespace test_support {

/// Serves, while it is on the air:
///   /stream        the music; titles for a client that sends "Icy-MetaData: 1", plain audio for others
///   /station.pls   a PLS playlist that names /stream
///   /station.m3u   an extended M3U playlist that names /stream
/// and "404 Not Found" for everything else. Lines of the playlists end with CR LF. A client hears a burst of
/// the last seconds at once and the rest at the pace of the music; the first block of titles names the
/// current one.
class IcyStation {
 public:
  struct Settings {
    std::string name = "Test";
    std::string genre = "Various";
    std::string url = "http://127.0.0.1/";
    std::vector<std::string> titles = {"Artist - Song"};  ///< UTF-8; empty: blocks without a title.
    std::chrono::milliseconds title_time{10'000};         ///< After this time the next title is on.
    std::chrono::milliseconds burst{3'000};
    std::size_t metaint = 16'000;
    std::string status_line = "HTTP/1.0 200 OK";
    /// Called on a thread of the station, one call at a time: "request GET /x HTTP/1.1", "title X" whenever
    /// a client is sent a title, "listener gone".
    std::function<void(const std::string&)> log;
  };
  struct Counts {
    int requests = 0;
    int listeners = 0;      ///< Clients that are being sent /stream now.
    int all_listeners = 0;  ///< Since the station was made.
    int titles = 0;         ///< Metadata blocks with a title.
    std::uint64_t audio_bytes = 0;
  };

  /// Off the air at first, but with a port of its own. Throws std::runtime_error when a named port is taken.
  IcyStation(Mp3Loop loop, Settings settings, std::uint16_t port = 0);
  ~IcyStation();
  IcyStation(const IcyStation&) = delete;
  IcyStation& operator=(const IcyStation&) = delete;

  /// Starts listening, again on the same port after a Stop. Does nothing while on the air.
  void Start();
  /// Cuts every listener off and refuses new ones. Does nothing while off the air.
  void Stop();

  [[nodiscard]] std::uint16_t Port() const;
  /// "http://127.0.0.1:PORT" and the target.
  [[nodiscard]] std::string Url(std::string_view target = "/stream") const;
  [[nodiscard]] Counts Count() const;
  /// Waits until the counts satisfy the condition, at most for `deadline`, and says whether they do.
  bool WaitUntil(const std::function<bool(const Counts&)>& condition,
                 std::chrono::milliseconds deadline) const;

 private:
  class Programme;
  class OnAir;
  std::unique_ptr<Programme> programme_;
  std::unique_ptr<OnAir> on_air_;
};

}  // namespace test_support
