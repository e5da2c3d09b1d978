#pragma once
// Gives controls names for screen readers where the system cannot know them. Not their texts.

#include "platform/win32/base/com_pointer.h"
#include "platform/win32/base/handles.h"
#include "ports/text.h"

struct IAccPropServices;

namespace platform::win32 {

/// By the system's service for annotations (IAccPropServices); without it nothing happens. COM is initialised
/// by whoever creates this.
class AccessibleNames {
 public:
  AccessibleNames();
  ~AccessibleNames();
  AccessibleNames(const AccessibleNames&) = delete;
  AccessibleNames& operator=(const AccessibleNames&) = delete;

  void Name(HWND control, const Text& name);
  /// Before the control is gone.
  void Forget(HWND control);

 private:
  ComPointer<IAccPropServices> service_;
};

}  // namespace platform::win32
