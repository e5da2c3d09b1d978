#pragma once
// The pointer that says that the program is busy but still takes input. Not when it is wanted.

namespace platform::qt {

/// Shown and hidden as often as wanted; hidden at the end at the latest.
class BusyCursor final {
 public:
  BusyCursor() = default;
  ~BusyCursor() { Hide(); }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;

  void Show();
  void Hide();

 private:
  bool shown_ = false;
};

}  // namespace platform::qt
