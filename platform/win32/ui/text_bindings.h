#pragma once
// Binds the controls whose text the user edits: text box, text box with arrows, combo box. Not labels.

#include <optional>

#include "controls/text_box.h"
#include "platform/front/typed_text.h"
#include "platform/win32/ui/control_binding.h"
#include "platform/win32/ui/dark_controls.h"
#include "platform/win32/ui/field_look.h"

namespace platform::win32 {

/// An edit field of one line in the middle of its place, with its text in its own middle.
class EditBinding : public ControlBinding {
 public:
  void Notice(unsigned int code) override;
  void FollowScale() override;
  void FollowColors() override;

 protected:
  EditBinding(controls::TextControl& box, HWND parent, const Surroundings& around, std::uint32_t more_style);
  [[nodiscard]] PixelPlace Fitted(const PixelPlace& place) const override;

 private:
  void Follow();
  void TakeTyping();

  controls::TextControl& box_;
  front::TypedText typed_;
  FieldLook look_;
  bool following_ = false;
};

class TextBoxBinding final : public EditBinding {
 public:
  TextBoxBinding(controls::TextBox& box, HWND parent, const Surroundings& around);
};

/// The field with the system's two arrows behind it.
class UpDownBinding final : public EditBinding {
 public:
  UpDownBinding(controls::UpDownTextBox& box, HWND parent, const Surroundings& around);
  ~UpDownBinding() override;

  [[nodiscard]] HWND Arrows() const { return arrows_; }

 protected:
  [[nodiscard]] PixelPlace Fitted(const PixelPlace& place) const override;
  void FollowWindow() override;

 private:
  [[nodiscard]] int ArrowsWidth() const;
  HWND arrows_ = nullptr;
  std::optional<PointedPart> pointed_;
  std::optional<PaintedWhenDark> painted_;
};

class ComboBoxBinding final : public ControlBinding {
 public:
  ComboBoxBinding(controls::ComboBox& box, HWND parent, const Surroundings& around);

  void Notice(unsigned int code) override;
  void FollowScale() override;
  void FollowColors() override;

 protected:
  [[nodiscard]] PixelPlace Fitted(const PixelPlace& place) const override;

 private:
  void Follow();
  void FollowItems();
  void FollowFieldHeight() const;
  void FollowUse(unsigned int code) const;
  void TakeTyping();
  void TakeUsersChoice();
  void Choose(int index);

  controls::ComboBox& box_;
  front::TypedText typed_;
  PointedPart pointed_;
  PaintedWhenDark painted_;
  // The system's own windows: the field inside the box, and the list that opens.
  std::optional<FieldLook> look_;
  std::optional<ThemeWhenDark> scroll_bar_;
  int inputs_to_come_ = 0;
  int choice_to_come_ = -1;
  bool following_ = false;
  bool typing_ = false;
};

}  // namespace platform::win32
