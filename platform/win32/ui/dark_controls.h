#pragma once
// What the system's controls need while the program is dark, beyond the colours that they ask their window
// for. Not how their parts look (dark_parts.h).

#include <functional>

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/dark_mode.h"

struct tagPOINT;

namespace platform::win32 {

/// The theme of a control while the program is dark; while it is light the control has the system's.
class ThemeWhenDark {
 public:
  /// Without one, a control has the colours that it is given. The dark scroll bars are a name of the
  /// system's, which decides about no text; where it is unknown the scroll bars stay light.
  enum class Kind { kNone, kDarkScrollBars };
  ThemeWhenDark(HWND control, Kind kind) : control_(control), kind_(kind) {}

  /// To be called when the control was made, and when the brightness may have changed. True: it has.
  bool Follow();

 private:
  HWND control_;
  Kind kind_;
  Brightness shown_ = Brightness::kLight;
};

/// Paints all of a control in the system's place while the program is dark, for as long as it lives; it ends
/// before the control.
class PaintedWhenDark {
 public:
  using Painter = std::function<void(HDC)>;
  PaintedWhenDark(HWND control, Painter painter);
  ~PaintedWhenDark();
  PaintedWhenDark(const PaintedWhenDark&) = delete;
  PaintedWhenDark& operator=(const PaintedWhenDark&) = delete;

  /// For the control's procedure. Nothing is painted outside of what the system asks for.
  void Paint() const;
  void Paint(HDC context) const { painter_(context); }

 private:
  HWND control_;
  Painter painter_;
};

/// While the program is dark: has a control painted again when the pointer comes to one of its parts or
/// leaves it, and when a part may have been pressed or released. It ends before the control.
class PointedPart {
 public:
  /// Which of the control's parts is at a place inside it; 0 for none that looks different.
  using PartAt = std::function<int(const tagPOINT&)>;
  PointedPart(HWND control, PartAt part_at);
  ~PointedPart();
  PointedPart(const PointedPart&) = delete;
  PointedPart& operator=(const PointedPart&) = delete;

  /// The part that the pointer is on.
  [[nodiscard]] int Get() const { return shown_; }

  /// For the control's procedure.
  void PointerMoved(const tagPOINT& pointer);
  void PointerLeft() { Show(0); }
  void PaintAgain() const;

 private:
  void Show(int part);

  HWND control_;
  PartAt part_at_;
  int shown_ = 0;
};

}  // namespace platform::win32
