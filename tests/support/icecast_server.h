#pragma once
// A real Icecast server on 127.0.0.1, fed by ffmpeg, that can be killed and started again.
// Not for odd answers; media_http_server.h gives those.

#include <map>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace test_support {

class IcecastServer {
 public:
  /// Starts the server and waits until it listens.
  IcecastServer();

  /// Feeds `mount` ("/mp3") from a file, over and over, in real time, and waits until it can be heard.
  /// `format` is ffmpeg's ("mp3", "ogg", "adts"), `type` the content type that is announced.
  void Feed(const std::string& mount, const std::string& file, const std::string& format,
            const std::string& type);

  [[nodiscard]] std::string Url(const std::string& mount) const;
  /// Whether a client of that name listens to the mount now.
  [[nodiscard]] bool IsHeardBy(const std::string& mount, const std::string& user_agent) const;
  /// Sets the mount's title.
  void SetTitle(const std::string& mount, const std::string& title) const;

  /// The server and its feeds vanish without closing their connections properly.
  void Kill();
  /// The server comes back on the same port, with the same feeds.
  void Restart();
  /// Freezes the server (it keeps its connections but sends nothing), and lets it continue.
  void Freeze();
  void Thaw();

  /// The name by which every mount introduces itself.
  static constexpr const char* kStationName = "Testsender";

 private:
  struct Source {
    ChildProcess::Arguments arguments;
    ChildProcess process;
  };
  void Start();
  [[nodiscard]] std::string Log() const;
  [[nodiscard]] bool Answers(const std::string& path) const;

  TempFolder folder_;
  int port_;
  ChildProcess server_;
  std::map<std::string, Source> sources_;
};

}  // namespace test_support
