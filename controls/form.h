#pragma once
// A window as the program sees it: caption, inner size, the events of its life. Not its controls.

#include <algorithm>
#include <functional>
#include <utility>

#include "controls/captioned.h"
#include "controls/drop_offer.h"

namespace controls {

/// On whose behalf a window is closed.
enum class CloseReason {
  kUser,        ///< the user or the program itself: there is somebody to answer a question
  kSessionEnd,  ///< the system ends the program: there is nobody to answer a question
};

/// The inner size is that of Control::GetPlace (twips). Closing a window raises QueryUnload, Unloaded and
/// Closed, once each and in this order; asking again meanwhile only records kSessionEnd.
class Form final : public Captioned {
 public:
  /// The user or the system changed the window's inner size.
  void Resize(int width, int height) {
    Place place = GetPlace();
    place.width = width;
    place.height = height;
    if (Move(place)) Resized.Raise();
  }

  /// The inner size (twips) below which the user cannot make the window smaller; 0 x 0 is no limit.
  [[nodiscard]] int SmallestWidth() const { return smallest_width_; }
  [[nodiscard]] int SmallestHeight() const { return smallest_height_; }
  void SetSmallestSize(int width, int height) {
    Set(smallest_width_, width);
    Set(smallest_height_, height);
  }
  /// A screen may be too low for the smallest height: this is the smallest width there. 0 is the usual one.
  [[nodiscard]] int SmallestWidthIfLower() const { return std::max(smallest_width_, width_if_lower_); }
  void SetSmallestWidthIfLower(int width) { Set(width_if_lower_, width); }
  /// A window that the user can make neither smaller nor larger. False at first.
  [[nodiscard]] bool FixedSize() const { return fixed_size_; }
  void SetFixedSize(bool fixed_size) { Set(fixed_size_, fixed_size); }

  /// Closes the window: asks (QueryUnload), then unloads. Has an effect only once.
  void Close(CloseReason reason = CloseReason::kUser) {
    // The end of the session may come while the user is still being asked.
    if (reason == CloseReason::kSessionEnd) reason_ = reason;
    if (std::exchange(closing_, true)) return;
    QueryUnload.Raise();
    Unloaded.Raise();
    closed_ = true;
    Closed.Raise();
  }

  /// True from the moment closing was asked for.
  [[nodiscard]] bool Closing() const { return closing_; }
  [[nodiscard]] bool IsClosed() const { return closed_; }
  /// Of the closing under way; may turn into kSessionEnd during QueryUnload.
  [[nodiscard]] CloseReason Reason() const { return reason_; }

  /// Whether the user can see the window; not while it is hidden or minimised. Set by the front end.
  [[nodiscard]] bool InSight() const { return in_sight_; }
  void SetInSight(bool in_sight) { Set(in_sight_, in_sight); }

  /// Whether the program can use what is dragged over the window; it can use nothing while this is not set.
  /// May be called at any time, inside a wait too.
  std::function<bool(const DropOffer&)> Accepts;

  /// Something was dropped on the window, or given when the program was started; the latter may be something
  /// that Accepts refuses.
  Event<const DropOffer&> Dropped;
  /// The same, while an open dialog blocks input to this window.
  Event<const DropOffer&> DroppedUnderDialog;

  Event<> Resized;
  Event<> QueryUnload;
  Event<> Unloaded;
  Event<> Closed;

 private:
  int smallest_width_ = 0;
  int smallest_height_ = 0;
  int width_if_lower_ = 0;
  bool fixed_size_ = false;
  bool closing_ = false;
  bool closed_ = false;
  bool in_sight_ = true;
  CloseReason reason_ = CloseReason::kUser;
};

}  // namespace controls
