#pragma once
// Message boxes and file dialogs by the system. Not the program's own dialog windows.

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/message_loop.h"
#include "ports/dialogs.h"

namespace platform::win32 {

class Win32Dialogs final : public Dialogs {
 public:
  explicit Win32Dialogs(Win32MessageLoop& loop) : loop_(loop) {}

  /// The window over which dialogs open, or over the dialog that is open over it.
  void SetMainWindow(HWND window) { main_window_ = window; }

  MessageBoxAnswer MessageBoxW(const Text& text, const Text& caption, std::uint32_t style) override;
  bool GetOpenFileNameW(OpenFileName& dialog) override;
  bool GetSaveFileNameW(OpenFileName& dialog) override;

 private:
  enum class Direction { kOpen, kSave };
  bool Choose(OpenFileName& dialog, Direction direction);
  [[nodiscard]] HWND Owner() const;

  Win32MessageLoop& loop_;
  HWND main_window_ = nullptr;
};

}  // namespace platform::win32
