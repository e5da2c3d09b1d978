#pragma once
// Port: the clipboard's text. Not for writing to it; the program never does.

#include "ports/text.h"

namespace platform {

class Clipboard {
 public:
  virtual ~Clipboard() = default;
  /// The clipboard's text, empty when it holds none.
  virtual Text GetText() = 0;
};

}  // namespace platform
