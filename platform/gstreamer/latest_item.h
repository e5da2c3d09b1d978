#pragma once
// Remembers the state of the item that was opened last, even after the item is gone.
// Not the item itself, which lives as long as its handles.

#include <memory>
#include <utility>

#include "platform/gstreamer/item_state.h"
#include "ports/playback_monitor.h"

namespace platform::gstreamer {

/// Used on the user-interface thread.
class LatestItem {
 public:
  void Opening(std::shared_ptr<const ItemState> state) {
    state_ = std::move(state);
    failure_ = PlaybackFailure::kNone;
  }
  /// The opening failed before there was an item, or was given up while the item was still opening.
  void Failed(PlaybackFailure failure) {
    state_.reset();
    failure_ = failure;
  }

  [[nodiscard]] PlaybackStatus Status() const {
    if (state_) return state_->Status();
    PlaybackStatus status;
    if (failure_ == PlaybackFailure::kNone) return status;
    status.state = PlaybackState::kFailed;
    status.failure = failure_;
    return status;
  }

 private:
  std::shared_ptr<const ItemState> state_;
  PlaybackFailure failure_ = PlaybackFailure::kNone;
};

}  // namespace platform::gstreamer
