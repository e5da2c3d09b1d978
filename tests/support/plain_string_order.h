#pragma once
// The natural order of names for tests, by nothing but the standard library. Not for the program: it knows
// the letters of code page 1252 only.

#include "ports/string_order.h"

namespace test_support {

class PlainStringOrder final : public platform::StringOrder {
 public:
  int StrCmpLogicalW(const platform::Text& first, const platform::Text& second) override;
  std::string SortKey(const platform::Text& text) override;
};

}  // namespace test_support
