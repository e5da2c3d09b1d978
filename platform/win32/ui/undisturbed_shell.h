#pragma once
// A shell whose operation runs no event procedure of the program but those timers' that also tick while the
// window only paints. Not what it opens or starts, nor how.

#include "platform/win32/ui/message_loop.h"
#include "ports/shell.h"

namespace platform::win32 {

/// The system may ask the user something before it opens or starts anything, and handles the thread's
/// messages meanwhile. Both arguments outlive the object.
class UndisturbedShell final : public Shell {
 public:
  UndisturbedShell(Shell& shell, Win32MessageLoop& loop) : shell_(shell), loop_(loop) {}

  bool ShellExecuteW(std::uint32_t owner, const Text& verb, const Text& file, const Text& parameters,
                     const Text& folder, std::int32_t show) override;

 private:
  Shell& shell_;
  Win32MessageLoop& loop_;
};

}  // namespace platform::win32
