#pragma once
// Binds the controls that carry a caption: label, command button, check box. Not frames (frame_window.h) nor
// texts of any length (text_panel.h).

#include "controls/captioned.h"
#include "platform/win32/ui/control_binding.h"

namespace platform::win32 {

/// A short caption, usually beside a field.
class LabelBinding final : public ControlBinding {
 public:
  LabelBinding(controls::Label& label, HWND parent, const Surroundings& around);

 private:
  void Follow();
  controls::Label& label_;
};

/// Whether it looks like the button that Enter presses.
enum class DefaultButton { kNo, kYes };

/// Painted by button_face.h. The text of a button with a glyph in place of its caption, which a screen reader
/// speaks, is its tooltip; a caption that is wider than the button is the tooltip of one without.
class CommandButtonBinding final : public ControlBinding {
 public:
  CommandButtonBinding(controls::CommandButton& button, HWND parent, const Surroundings& around,
                       DefaultButton is_default);

  void Notice(unsigned int code) override;
  std::intptr_t Notice(tagNMHDR& notice) override;
  void Draw(const tagDRAWITEMSTRUCT& place) override;
  void ContextWanted(int left, int top) override;

 protected:
  [[nodiscard]] Text Tip() const override;

 private:
  void Follow();
  controls::CommandButton& button_;
};

class CheckBoxBinding final : public ControlBinding {
 public:
  CheckBoxBinding(controls::CheckBox& box, HWND parent, const Surroundings& around);

  void Notice(unsigned int code) override;
  /// In the dark it is painted by dark_parts.h.
  std::intptr_t Notice(tagNMHDR& notice) override;

 private:
  void Follow();
  void TakeUsersChoice(controls::CheckValue value);
  controls::CheckBox& box_;
  int choices_to_come_ = 0;  // which the window already shows
};

}  // namespace platform::win32
