#pragma once
// Adapter: keeps the computer from falling asleep by itself. Not for the screen.

#include "ports/sleep_inhibitor.h"

namespace platform::win32 {

/// The request belongs to the calling thread, the same one for both calls, and ends with it.
class Win32SleepInhibitor final : public SleepInhibitor {
 public:
  void Hold() override;
  void Release() override;
};

}  // namespace platform::win32
