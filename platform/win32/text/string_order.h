#pragma once
// Adapter: the natural order of names by the system's sort keys for German. Not for equality of keys or for
// letter case.

#include "ports/string_order.h"

namespace platform::win32 {

/// Where a sharp s and very long numbers stand follows the version of the system.
class Win32StringOrder final : public StringOrder {
 public:
  int StrCmpLogicalW(const Text& first, const Text& second) override;
  std::string SortKey(const Text& text) override;
};

}  // namespace platform::win32
