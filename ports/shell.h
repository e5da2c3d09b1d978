#pragma once
// Port: what the program needs from the desktop: opening addresses and starting programs.
// Not for windows of its own (ports/dialogs.h).

#include <cstdint>

#include "ports/text.h"

namespace platform {

inline constexpr std::int32_t kSwShowNormal = 1;  ///< SW_SHOWNORMAL

class Shell {
 public:
  virtual ~Shell() = default;

  /// Opens an address or starts a program file as an independent process. `verb` is "open" or empty (the
  /// default action). True when something was started. The parameters of a program file reach it as its
  /// single argument; empty means none.
  virtual bool ShellExecuteW(std::uint32_t owner, const Text& verb, const Text& file, const Text& parameters,
                             const Text& folder, std::int32_t show) = 0;
};

}  // namespace platform
