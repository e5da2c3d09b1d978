#pragma once
// GStreamer's own start, which is put off until it is needed or there is time for it: it reads what is known
// about every plugin. Not for items (media_item.h).

#include <atomic>
#include <functional>
#include <future>
#include <mutex>

namespace platform::gstreamer {

class Framework {
 public:
  /// Makes GStreamer ready and returns whether it is.
  using Start = std::function<bool()>;

  /// An empty `start` is GStreamer's own. It is called once at most.
  explicit Framework(Start start);
  Framework(const Framework&) = delete;
  Framework& operator=(const Framework&) = delete;

  /// Starts it on a thread of its own and returns at once. From one thread.
  void LoadAhead();

  /// Starts it unless that was done, or waits until it is; false when it failed. From any thread.
  [[nodiscard]] bool Ready();

  /// Whether its start is over, well or not. Does not wait; from any thread.
  [[nodiscard]] bool WasStarted() const { return was_started_; }

 private:
  Start start_;
  std::once_flag once_;
  bool ready_ = false;
  std::atomic<bool> was_started_{false};
  std::future<void> ahead_;
};

}  // namespace platform::gstreamer
