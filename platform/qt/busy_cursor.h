#pragma once
// The pointer that shows that the program is busy but still takes input. Not the decision when to show it.

#include "platform/front/running_procedures.h"

namespace platform::qt {

/// May be shown and hidden repeatedly; hidden at destruction at the latest.
class BusyCursor final : public front::BusyPointer {
 public:
  BusyCursor() = default;
  ~BusyCursor() override { Hide(); }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;

  void Show() override;
  void Hide() override;

 private:
  bool shown_ = false;
};

}  // namespace platform::qt
