#pragma once
// Adapter: the clipboard's text. Not for any other content.

#include "platform/win32/base/handles.h"
#include "ports/clipboard.h"

namespace platform::win32 {

/// Another program may have the clipboard open. When that takes longer than a fifth of a second the clipboard
/// counts as empty, and keeps its content. What is put there belongs to a window of the object's own, as the
/// system asks, and stays when that is gone. Order: used and destroyed on one thread.
class Win32Clipboard final : public Clipboard {
 public:
  Win32Clipboard() = default;
  ~Win32Clipboard() override;
  Win32Clipboard(const Win32Clipboard&) = delete;
  Win32Clipboard& operator=(const Win32Clipboard&) = delete;

  Text GetText() override;
  void SetText(const Text& text) override;

 private:
  bool Open();

  HWND owner_ = nullptr;
};

}  // namespace platform::win32
