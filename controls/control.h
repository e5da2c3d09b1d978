#pragma once
// What every control has: place, visibility, whether it takes input, tooltip. Not a widget: no painting.

#include <utility>

#include "controls/event.h"
#include "controls/text.h"

namespace controls {

/// A place inside the container, in twips (15 to a pixel at 100 %).
struct Place {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const Place&, const Place&) = default;
};

/// The base of all visible controls. Setting a property to another value raises Changed, by which a
/// widget follows; setting it to the value it has does nothing.
class Control {
 public:
  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Set(visible_, visible); }

  [[nodiscard]] bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Set(enabled_, enabled); }

  [[nodiscard]] const Text& ToolTip() const { return tool_tip_; }
  void SetToolTip(Text tool_tip) { Set(tool_tip_, std::move(tool_tip)); }

  [[nodiscard]] const Place& GetPlace() const { return place_; }

  /// Moves and sizes in one step. False, and nothing changes, when width or height is negative.
  bool Move(const Place& place) {
    if (place.width < 0 || place.height < 0) return false;
    Set(place_, place);
    return true;
  }

  /// Using the control ends the program's current wait at once, so that what it starts need not wait.
  [[nodiscard]] bool EndsWaiting() const { return ends_waiting_; }
  void SetEndsWaiting(bool ends_waiting) { Set(ends_waiting_, ends_waiting); }

  /// Some property has a new value.
  Event<> Changed;

  /// The program asks for this control to get the keyboard focus.
  Event<> FocusWanted;
  void SetFocus() const { FocusWanted.Raise(); }

 protected:
  ~Control() = default;

  /// True when `field` changed; Changed has been raised then.
  template <typename Value>
  bool Set(Value& field, Value value) {
    if (field == value) return false;
    field = std::move(value);
    Changed.Raise();
    return true;
  }

 private:
  bool visible_ = true;
  bool enabled_ = true;
  bool ends_waiting_ = false;
  Text tool_tip_;
  Place place_;
};

}  // namespace controls
