#pragma once
// The top-level window of a form: its controls, caption, inner size, closing, and the changes that the system
// reports to it. Not what the program's windows are for.

#include <functional>
#include <memory>

#include "app/forms/form_control.h"
#include "controls/form.h"
#include "platform/win32/ui/control_set.h"
#include "platform/win32/ui/form_keys.h"
#include "platform/win32/ui/media_keys.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/remembered_window.h"
#include "platform/win32/ui/scale.h"
#include "platform/win32/ui/tab_stops.h"
#include "platform/win32/ui/tool_tips.h"

namespace platform::win32 {

/// Constructed hidden. Walks the inventory when it is constructed; form and inventory outlive it. The form's
/// inner size is the window's without the footer, a label below it, if there is one. The window is hidden
/// when the form is closed, not before.
class FormWindow final : public Window {
 public:
  FormWindow(controls::Form& form, const app::Inventory& inventory, HWND owner, const Win32Icons& icons,
             Win32MessageLoop& loop);
  ~FormWindow() override;

  /// From now on the window's place and its columns are remembered in this file; before Show.
  void RememberIn(Files& files, const Text& file);

  /// Shows the window where it is remembered; otherwise at the form's size, or as large as the screen allows,
  /// in the middle of its owner or where the system puts it.
  void Show();
  /// The window leaves its minimised state and gets the keyboard, or the dialog that stands open over it.
  /// False when neither is shown.
  bool BringToFront();

  [[nodiscard]] const ControlSet& Controls() const { return *set_; }
  [[nodiscard]] const Scale& GetScale() const { return scale_; }
  /// The tooltip that a control shows now.
  [[nodiscard]] Text HintOf(const controls::Control& control) const {
    return tool_tips_.Of(set_->Of(control)->Handle());
  }

  /// From now on the window reports keys for media, as the system numbers them (APPCOMMAND_...): those
  /// pressed while it has the keyboard, and those that the program in front has not used. True: the key was
  /// used.
  using MediaKeyPressed = std::function<bool(int, KeyboardIn)>;
  void ReportMediaKeys(MediaKeyPressed pressed);

 protected:
  std::optional<std::intptr_t> OnMessage(const Message& message) override;

 private:
  struct Size {
    int width = 0;
    int height = 0;
  };
  void FollowForm();
  void TakeSize(int width, int height);
  void FollowResolution(unsigned int dots, std::intptr_t place);
  /// The user has changed something; often it is nothing that is shown here.
  void FollowSettings();
  void Refresh();
  void FollowColors();
  void TakeFocus() const;
  void AskToClose();
  void EndSession();
  [[nodiscard]] bool UseMediaKey(std::intptr_t command, KeyboardIn keyboard) const;
  void PutOnScreen() const;
  void LimitSize(std::intptr_t limits) const;
  [[nodiscard]] Size WindowSize(int width, int height) const;
  [[nodiscard]] Size InnerSize() const;
  [[nodiscard]] int FooterHeight() const;

  controls::Form& form_;
  const app::Inventory& inventory_;
  HWND owner_;
  Win32MessageLoop& loop_;
  Scale scale_;
  ToolTips tool_tips_;
  TabStops tab_stops_;
  const controls::Control* footer_ = nullptr;
  std::unique_ptr<ControlSet> set_;
  std::unique_ptr<FormKeys> keys_;
  SystemColors colors_;
  Brightness title_bar_ = Brightness::kLight;
  MediaKeyPressed media_key_pressed_;
  unsigned int shell_message_ = 0;
  bool following_ = false;
  std::optional<RememberedWindow> memory_;
  controls::Subscriptions subscriptions_;
  Lifetime lifetime_;
};

}  // namespace platform::win32
