#pragma once
// One opened item as its caller sees it: quick answers, no waiting for a server.
// Not the thread that keeps it playing; that is media_supervisor.h.

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "platform/gstreamer/item_state.h"
#include "platform/gstreamer/media_supervisor.h"
#include "ports/interface_call.h"
#include "ports/media_interfaces.h"

namespace platform::gstreamer {

/// Begins to open at once; WaitOpened says when it is done. The destructor shuts the item down.
class MediaItem {
 public:
  MediaItem(PipelineInput input, std::shared_ptr<ItemServices> services);
  ~MediaItem();
  MediaItem(const MediaItem&) = delete;
  MediaItem& operator=(const MediaItem&) = delete;

  std::optional<HResult> WaitOpened(std::chrono::milliseconds limit) { return state_->WaitOpened(limit); }

  void Start();
  void Pause();
  /// Stop and ShutDown return when the connection is released, at most about 50 ms later.
  void Stop();
  void ShutDown();
  [[nodiscard]] std::shared_ptr<const ItemState> SharedState() const { return state_; }
  [[nodiscard]] bool IsShutDown() const { return state_->Requested() == Wanted::kShutDown; }

  [[nodiscard]] ClockState State() const;
  /// Time played, in 100-nanosecond units; 0 while stopped.
  [[nodiscard]] std::int64_t Position() const;
  /// Length in 100-nanosecond units; 0 for a live stream.
  [[nodiscard]] std::int64_t Duration() const;
  [[nodiscard]] Properties GetProperties() const { return state_->GetProperties(); }
  [[nodiscard]] int Channels() const { return state_->Channels(); }
  /// Linear peaks of what is heard now, one per channel, volume and mute counted in.
  [[nodiscard]] std::vector<float> Peaks() const;
  /// Call after a change of the process's volume.
  void VolumeChanged() { state_->Wake(); }

 private:
  std::shared_ptr<ItemState> state_;
  std::shared_ptr<ItemServices> services_;
  std::thread thread_;
};

}  // namespace platform::gstreamer
