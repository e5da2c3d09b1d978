#pragma once
// The keys and the lists' menus that a form's inventory names, and the way of the keyboard through a form.
// Not what the controls do.

#include "app/forms/form_control.h"
#include "platform/win32/ui/control_set.h"

namespace platform::win32 {

class FormKeys {
 public:
  /// All given outlive the object.
  FormKeys(const app::Inventory& inventory, HWND window, const ControlSet& set, Win32MessageLoop& loop);
  ~FormKeys();
  FormKeys(const FormKeys&) = delete;
  FormKeys& operator=(const FormKeys&) = delete;

  /// The first control in the tab order that is ready takes the keyboard.
  void FocusFirst() const;

 private:
  bool TakeKey(const tagMSG& message);
  [[nodiscard]] bool PressEnter(HWND focus);
  [[nodiscard]] bool PressKey(const controls::Key& key);
  /// Null for a field in which Enter does not click a button of its own.
  [[nodiscard]] controls::CommandButton* ButtonEnteredBy(HWND focus) const;
  void Press(controls::CommandButton& button, app::KeyWhileHidden while_hidden);
  void Activate(const app::FormControl& entry);
  void MoveFocus(int step) const;
  void ShowMenu(ListBinding& list, int left, int top);

  const app::Inventory& inventory_;
  HWND window_;
  const ControlSet& set_;
  Win32MessageLoop& loop_;
  bool menu_is_open_ = false;
  controls::Subscriptions subscriptions_;
  Lifetime lifetime_;
};

}  // namespace platform::win32
