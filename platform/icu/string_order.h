#pragma once
// Adapter: the natural order of names, implemented with ICU's collation for German with numeric ordering.
// Not for equality of keys or for letter case.

#include <unicode/ucol.h>

#include <memory>

#include "ports/string_order.h"

namespace platform::icu {

/// Only texts that are equal for the collation (letter case aside) compare as 0. Symmetric and transitive.
/// Public reference: Unicode Technical Standard #10, and the option "kn" of UTS #35.
class IcuStringOrder final : public StringOrder {
 public:
  IcuStringOrder();

  int StrCmpLogicalW(const Text& first, const Text& second) override;
  std::string SortKey(const Text& text) override;

 private:
  struct Closer {
    void operator()(UCollator* collator) const { ucol_close(collator); }
  };
  std::unique_ptr<UCollator, Closer> collator_;
};

}  // namespace platform::icu
