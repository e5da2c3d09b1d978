#pragma once
// The inside and the edge of a field of one line: its text in the middle of its height, and, while the
// program is dark, what the system would paint in colours of its own. Not what is typed.

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/dark_controls.h"
#include "platform/win32/ui/scale.h"

namespace platform::win32 {

/// Ends before the field; the scale outlives it. In the dark the edge is the program's, and so is the text of
/// a field that is disabled, for which the system takes a colour that nobody can choose.
class FieldLook {
 public:
  FieldLook(HWND field, const Scale& scale);
  ~FieldLook();
  FieldLook(const FieldLook&) = delete;
  FieldLook& operator=(const FieldLook&) = delete;

  /// Has the inside calculated again; to be called when the scale has changed.
  void FollowScale() const;
  void FollowColors();

  // For the field's procedure.
  [[nodiscard]] const Scale& GetScale() const { return scale_; }
  void PaintOutside() const;
  void PaintDisabled() const;
  void PaintDisabled(HDC context) const;

 private:
  [[nodiscard]] bool HasEdge() const;
  /// Above and below the text; they belong to the field's border.
  void FillStrips() const;

  HWND field_;
  const Scale& scale_;
  ThemeWhenDark theme_;
};

}  // namespace platform::win32
