#pragma once
// Gives screen readers what the system cannot know of a control. Not the controls' texts, and not the events
// that report their changes.

#include "platform/win32/base/com_pointer.h"
#include "platform/win32/base/handles.h"
#include "ports/text.h"

struct IAccPropServices;

namespace platform::win32 {

/// By the system's service for annotations (IAccPropServices); without it nothing happens. COM is initialised
/// by whoever creates this.
class Annotations {
 public:
  Annotations();
  ~Annotations();
  Annotations(const Annotations&) = delete;
  Annotations& operator=(const Annotations&) = delete;

  void Name(HWND control, const Text& name);
  /// Makes the control a live region: its text is spoken, after what is being spoken, whenever
  /// EVENT_OBJECT_LIVEREGIONCHANGED is raised for it.
  void MakeLive(HWND control);
  /// Before the control is gone.
  void Forget(HWND control);

 private:
  ComPointer<IAccPropServices> service_;
};

}  // namespace platform::win32
