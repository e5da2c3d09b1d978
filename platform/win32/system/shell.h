#pragma once
// Adapter: opens addresses and starts programs as the desktop does. Not for waiting for what was started.

#include "ports/shell.h"

namespace platform::win32 {

/// COM is initialised on the calling thread. An owner other than 0 is the window that is active on this
/// thread; the system shows there what it has to say about a failure. The parameters of a program are its
/// command line as it stands, neither quoted nor escaped: the recording tool takes all of it as one link.
class Win32Shell final : public Shell {
 public:
  bool ShellExecuteW(std::uint32_t owner, const Text& verb, const Text& file, const Text& parameters,
                     const Text& folder, std::int32_t show) override;
};

}  // namespace platform::win32
