#pragma once
// The pointer that shows that the program is busy but still takes input. Not the decision when to show it.

namespace platform::qt {

/// May be shown and hidden repeatedly; hidden at destruction at the latest.
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
