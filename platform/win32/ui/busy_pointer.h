#pragma once
// The pointer that shows that the program is busy. Not when it is.

#include "platform/front/running_procedures.h"

namespace platform::win32 {

/// There is one pointer, so there is one state for all windows of the thread; they ask for it whenever the
/// pointer moves over them.
class BusyPointer final : public front::BusyPointer {
 public:
  BusyPointer() = default;
  ~BusyPointer() override { Hide(); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;

  void Show() override;
  void Hide() override;

  /// Gives the pointer its busy shape. False when the program is not busy.
  static bool Apply();
};

}  // namespace platform::win32
