#pragma once
// Adapter: the natural order of names by the system's own comparison, which its file manager uses as well.
// Not for equality of keys or for letter case.

#include "ports/string_order.h"

namespace platform::win32 {

/// Where umlauts, punctuation and very long numbers stand follows the version of the system.
class Win32StringOrder final : public StringOrder {
 public:
  int StrCmpLogicalW(const Text& first, const Text& second) override;
};

}  // namespace platform::win32
