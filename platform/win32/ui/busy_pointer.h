#pragma once
// The pointer that shows that the program is busy. Not when it is.

namespace platform::win32 {

/// There is one pointer, so there is one state for all windows of the thread; they ask for it whenever the
/// pointer moves over them.
class BusyPointer {
 public:
  ~BusyPointer() { Hide(); }
  void Show();
  void Hide();

  /// Gives the pointer its busy shape. False when the program is not busy.
  static bool Apply();
};

}  // namespace platform::win32
