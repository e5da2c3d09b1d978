#pragma once
// Adapter: the clipboard's text. Not for any other content.

#include "ports/clipboard.h"

namespace platform::win32 {

/// Another program may have the clipboard open. When that takes longer than a fifth of a second the clipboard
/// counts as empty, and keeps its content.
class Win32Clipboard final : public Clipboard {
 public:
  Text GetText() override;
  void SetText(const Text& text) override;
};

}  // namespace platform::win32
