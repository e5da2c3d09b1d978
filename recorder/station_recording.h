#pragma once
// Records one station until it is stopped: finds the stream, records, reconnects when the connection is lost.
// Not for showing any of it; the status reports what to show.

#include <cstdint>
#include <optional>

#include "app/state/runs.h"
#include "controls/event.h"
#include "ports/files.h"
#include "recorder/kept_files.h"
#include "recorder/station_address.h"
#include "recorder/watched_internet.h"
#include "stream/cls_funkhaus.h"

namespace recorder {

enum class Phase {
  kIdle,        ///< nothing was recorded yet
  kConnecting,  ///< waiting for the server
  kRecording,   ///< bytes are arriving
  kWaiting,     ///< pausing before the next attempt
  kEnded
};

/// Why a connection has ended.
enum class Fault {
  kNone,
  kNotHttp,      ///< the address is neither http nor https; ends the recording
  kUnreachable,  ///< no answer
  kServerError,  ///< the server cannot answer now (5xx, "too many requests")
  kRefused,      ///< the server will not answer (4xx); ends the recording, see Limits::refusals
  kNoSound,      ///< a page or a playlist instead of a stream
  kLost,         ///< the stream broke off or fell silent
  kCannotWrite,  ///< the folder or a file cannot be made; ends the recording
  kDiskFull      ///< a file takes no more bytes; ends the recording
};

/// Whether this fault can end a recording. Otherwise the recording continues until somebody ends it.
[[nodiscard]] bool EndsRecording(Fault fault);

struct Status {
  Phase phase = Phase::kIdle;
  Fault fault = Fault::kNone;
  platform::Text station;       ///< its name, or its address when it has none
  platform::Text title;         ///< empty while none is known
  std::int64_t seconds = 0;     ///< for which bytes have been arriving
  std::uint64_t bytes = 0;      ///< written into files
  std::uint64_t files = 0;      ///< written so far, the current one included
  int seconds_to_next_try = 0;  ///< while waiting
  int answer_code = 0;          ///< the server's status code, with kServerError and kRefused
};

/// What was recorded is never overwritten (recorder/kept_files.h). Titles are decoded, and only received
/// bytes are written.
class StationRecording {
 public:
  struct Ports {
    stream::Ports stream;
    platform::Files& files;
  };
  /// In seconds.
  struct Limits {
    int silence = 20;        ///< after which a connection counts as dead
    int longest_pause = 30;  ///< between two attempts; the first pause is 1, each next one twice as long
    int steady = 10;         ///< after a connection that brought bytes for this long, pauses begin at 1 again
    /// How many times in a row (about three and a half minutes) a station that was recorded before may
    /// refuse, as servers do while its studio is cut off, or an address may bring pages instead of sound. An
    /// address that refuses before anything was recorded is wrong, and ends the recording at once.
    int refusals = 12;
  };

  /// `folder` is made when it is missing. The ports outlive the object.
  StationRecording(const Ports& ports, platform::Text folder);
  StationRecording(const Ports& ports, platform::Text folder, Limits limits);
  StationRecording(const StationRecording&) = delete;
  StationRecording& operator=(const StationRecording&) = delete;

  /// Records until Stop is called while messages are processed, until nothing can be written any more, or
  /// until the address turns out not to be a station's. A file on a server is recorded once, to its end. Does
  /// nothing for an empty link and while it runs already.
  void Run(const platform::Text& link);

  /// Ends Run soon: at once while recording or pausing, after the bounded wait while connecting.
  void Stop();

  [[nodiscard]] bool Running() const { return running_; }
  [[nodiscard]] const Status& GetStatus() const { return status_; }
  [[nodiscard]] const platform::Text& Folder() const { return folder_; }

  /// The status may have changed.
  controls::Event<> Changed;

 private:
  /// The latest connection, from asking for the stream's address to its last byte.
  struct Connection {
    stream::clsFunkhaus* client = nullptr;  ///< while it records
    std::int64_t opened_at = 0;             ///< in whole seconds of the clock, as the next one
    std::int64_t last_bytes_at = 0;
    bool brought_bytes = false;
    bool closed_by_server = false;  ///< at an end that the server meant
    bool complete = false;          ///< a file was recorded to its end

    [[nodiscard]] bool BroughtBytesFor(int seconds) const {
      return brought_bytes && last_bytes_at - opened_at >= seconds;
    }
  };

  void RecordUntilStopped(const platform::Text& link, const app::Runs::Run& run);
  Fault RecordOnce(const platform::Text& link, const app::Runs::Run& run);
  Fault RecordStream(stream::clsFunkhaus& client, const platform::Text& address, const app::Runs::Run& run);
  void Record(stream::clsFunkhaus& client, const platform::Text& address, const StreamFacts& facts);
  [[nodiscard]] bool IsFinal(Fault fault, int refusals) const;
  Fault FaultOfAnswer();
  void StopClient();
  void Pause(int seconds, const app::Runs::Run& run);
  void OnRead(const platform::InternetRead& read);
  void Report();

  const Ports ports_;
  const platform::Text folder_;
  const Limits limits_;
  WatchedInternet internet_;
  std::optional<KeptFiles> kept_files_;  ///< of the latest Run
  Status status_;
  Connection connection_;
  bool running_ = false;
  app::Life life_;
  app::Runs runs_{life_};  ///< interrupted by Stop
};

}  // namespace recorder
