#pragma once
// Port: the natural order of names as people expect it in a list. Not for equality of keys.

#include <string>

#include "ports/text.h"

namespace platform {

class StringOrder {
 public:
  virtual ~StringOrder() = default;

  /// Negative, zero or positive as `first` sorts before, with or after `second`: runs of digits by their
  /// number whatever their length, letters without regard to case and in German order, blanks and punctuation
  /// before digits, digits before letters, the end of a text before everything.
  virtual int StrCmpLogicalW(const Text& first, const Text& second) = 0;

  /// Bytes that compare, each as an unsigned number, as StrCmpLogicalW compares the texts: for sorting many,
  /// where each text is compared again and again.
  virtual std::string SortKey(const Text& text) = 0;
};

}  // namespace platform
