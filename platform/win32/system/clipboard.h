#pragma once
// Adapter: the clipboard's text. Not for writing to it.

#include "ports/clipboard.h"

namespace platform::win32 {

/// Another program may have the clipboard open; it counts as empty when that takes longer than a fifth of a
/// second.
class Win32Clipboard final : public Clipboard {
 public:
  Text GetText() override;
};

}  // namespace platform::win32
