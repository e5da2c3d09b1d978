#pragma once
// Walks a form's inventory once: creates a window for each control and binds the two. Not the form's own
// window, not its keys and menus (form_keys.h), and not where the places come from.

#include <map>
#include <memory>
#include <vector>

#include "app/forms/form_control.h"
#include "platform/win32/ui/annotations.h"
#include "platform/win32/ui/control_binding.h"
#include "platform/win32/ui/frame_window.h"
#include "platform/win32/ui/icons.h"
#include "platform/win32/ui/list_binding.h"
#include "platform/win32/ui/text_panel.h"
#include "platform/win32/ui/timer_binding.h"

namespace platform::win32 {

/// A control's window has this plus the control's place in the inventory as its number, by which drivers of
/// the window recognise it from outside. Below it are the numbers that the system gives a meaning.
inline constexpr int kFirstControlId = 1000;

/// The set must end before the window does.
class ControlSet {
 public:
  ControlSet(const app::Inventory& inventory, HWND window, const Surroundings& around,
             const Win32Icons& icons);
  ~ControlSet();
  ControlSet(const ControlSet&) = delete;
  ControlSet& operator=(const ControlSet&) = delete;

  /// Null for a control that has no window: a timer, a command on a row, or a button without a look.
  [[nodiscard]] ControlBinding* Of(const controls::Control& control) const;
  /// The controls that the keyboard can reach, in the tab order.
  [[nodiscard]] const TabStops& Stops() const { return around_.tab_stops; }
  /// The first of them that is ready and inside this window; null for none.
  [[nodiscard]] ControlBinding* FirstForKeyboard(HWND within) const;
  [[nodiscard]] const std::vector<ListBinding*>& Lists() const { return lists_; }

  /// Applies all places again; to be called when the scale has changed.
  void FollowScale();
  /// To be called when the colours may have changed.
  void FollowColors();

 private:
  // One for each kind of control; null for one that is not to be seen.
  std::unique_ptr<ControlBinding> Make(controls::Frame& frame, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::Label& label, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::CommandButton& button, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::CheckBox& box, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::TextBox& box, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::UpDownTextBox& box, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::ComboBox& box, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::ProgressBar& bar, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::ScrollBar& bar, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::Image& image, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::ListView& list, HWND parent, const app::Use& use);
  std::unique_ptr<ControlBinding> Make(controls::RowCommand& command, HWND parent, const app::Use& use);

  struct TextBesidePicture {
    const controls::Image* picture;
    const controls::Label* label;
    TextPanelBinding* text;
  };
  void Add(const app::FormControl& entry, controls::Control& control,
           std::unique_ptr<ControlBinding> binding);
  void Name(const app::Use& use, ControlBinding& binding);
  void BringTextsRoundPictures(const app::Inventory& inventory);
  void Flow(const TextBesidePicture& pair) const;

  HWND window_;
  Surroundings around_;
  const Win32Icons& icons_;
  Annotations annotations_;
  std::map<const controls::Control*, std::unique_ptr<ControlBinding>> bindings_;
  std::map<const controls::Control*, HWND> containers_;
  std::vector<ListBinding*> lists_;
  std::map<const controls::Control*, TextPanelBinding*> texts_;
  std::vector<TextBesidePicture> pairs_;
  std::vector<std::unique_ptr<TimerBinding>> timers_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::win32
