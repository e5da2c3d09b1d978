#pragma once
// Remembers a window's size, place, maximised state and the user's column widths in a file. Not the file's
// format (app/forms/window_memory.h), nor where a window may be opened (app/forms/window_place.h).

#include <string>

#include "app/forms/form_control.h"
#include "app/forms/window_memory.h"
#include "controls/form.h"
#include "platform/win32/base/handles.h"
#include "ports/files.h"

namespace platform::win32 {

/// The file is read once, with distrust: what is no such file leaves everything as it is. It is written when
/// closing is asked for, because the end of a session may leave no more time, and once more when the window
/// has closed; each time in one step, and never when nothing has changed. A file that cannot be written is
/// left as it is. All given outlive the object; so does the window.
class RememberedWindow {
 public:
  RememberedWindow(controls::Form& form, const app::Inventory& inventory, HWND window, Files& files,
                   Text file);

  /// Gives the hidden window its remembered place, or leaves it where it is. True: it is to be shown
  /// maximised.
  [[nodiscard]] bool Restore() const;
  /// To be called when the window was moved, resized or shown.
  void FollowPlace();

 private:
  void Save();

  const app::Inventory& inventory_;
  HWND window_;
  Files& files_;
  const Text file_;
  std::string in_file_;
  app::WindowMemory memory_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::win32
