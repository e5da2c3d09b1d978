#pragma once
// Binds the controls whose text the user edits: text box, text box with arrows, combo box. Not labels.

#include <functional>

#include "controls/text_box.h"
#include "platform/win32/ui/control_binding.h"

namespace platform::win32 {

/// Distinguishes what the program writes into a field from what the user types into it, while the control is
/// notified of the typing only later. What the program has written since replaces it.
class TypedText final {
 public:
  explicit TypedText(controls::TextControl& control) : control_(control) {}

  /// Which typing counts: that which was based on the program's latest text.
  [[nodiscard]] int Basis() const { return basis_; }
  /// True when the program wrote another text since this was last asked; what was typed before is void then.
  bool ProgramWrote();
  /// The turn of a typed text: `write` gives it to the control, unless it is void.
  void Take(int basis, const Text& typed, const std::function<void()>& write);

 private:
  controls::TextControl& control_;
  Text known_;
  int basis_ = 0;
};

/// An edit field of one line, as high as its font needs, in the middle of its place.
class EditBinding : public ControlBinding {
 public:
  void Notice(unsigned int code) override;

 protected:
  EditBinding(controls::TextControl& box, HWND parent, const Surroundings& around, std::uint32_t more_style);
  [[nodiscard]] PixelPlace Fitted(const PixelPlace& place) const override;

 private:
  void Follow();
  void TakeTyping();

  controls::TextControl& box_;
  TypedText typed_;
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
  void FollowScale() override;

 protected:
  [[nodiscard]] PixelPlace Fitted(const PixelPlace& place) const override;
  void FollowWindow() override;

 private:
  [[nodiscard]] int ArrowsWidth() const;
  HWND arrows_ = nullptr;
};

class ComboBoxBinding final : public ControlBinding {
 public:
  ComboBoxBinding(controls::ComboBox& box, HWND parent, const Surroundings& around);

  void Notice(unsigned int code) override;
  void FollowScale() override;

 protected:
  [[nodiscard]] PixelPlace Fitted(const PixelPlace& place) const override;

 private:
  void Follow();
  void FollowItems();
  void TakeTyping();
  void TakeUsersChoice();
  void Choose(int index);

  controls::ComboBox& box_;
  TypedText typed_;
  int inputs_to_come_ = 0;
  int choice_to_come_ = -1;
  bool following_ = false;
  bool typing_ = false;
};

}  // namespace platform::win32
