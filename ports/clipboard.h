#pragma once
// Port: the clipboard's text. Not for any other content.

#include "ports/text.h"

namespace platform {

class Clipboard {
 public:
  virtual ~Clipboard() = default;
  /// The clipboard's text, empty when it holds none.
  virtual Text GetText() = 0;
  /// Replaces the clipboard's content.
  virtual void SetText(const Text& text) = 0;
};

}  // namespace platform
