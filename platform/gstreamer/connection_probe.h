#pragma once
// Finds out why a server gave no answer, by connecting once more: GStreamer's HTTP source does not say.
// Not for playing, and it requests nothing from the server.

#include <gio/gio.h>

#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "platform/gstreamer/gst_pointers.h"
#include "ports/playback_monitor.h"

namespace platform::gstreamer {

struct ProbeTarget {
  std::string address;           ///< http or https
  std::string certificate_file;  ///< as in GstMediaOptions
};

/// Start and Cancel may be called from any thread.
class ConnectionProbe {
 public:
  using Done = std::function<void(PlaybackFailure)>;

  ConnectionProbe() = default;
  ~ConnectionProbe() { Cancel(); }
  ConnectionProbe(const ConnectionProbe&) = delete;
  ConnectionProbe& operator=(const ConnectionProbe&) = delete;

  /// Connects on a thread of its own, which calls `done` with the result unless Cancel comes first; that may
  /// take long, so somebody must cancel in time. Only the first Start counts, and none after Cancel.
  void Start(ProbeTarget target, Done done);
  /// Returns once the thread has ended, which takes a moment; `done` is not called any more. Not from `done`.
  void Cancel();

 private:
  std::mutex mutex_;
  bool used_ = false;
  GObjectPointer<GCancellable> cancellable_{g_cancellable_new()};
  std::thread thread_;
};

/// The failure for the flags with which a certificate was refused.
PlaybackFailure FailureOfCertificate(GTlsCertificateFlags flags);

}  // namespace platform::gstreamer
