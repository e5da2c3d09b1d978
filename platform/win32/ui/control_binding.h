#pragma once
// What every window of a control shares with it: place, visibility, whether it takes input, tooltip, focus.
// Not the properties of one kind of control; those are in the bindings that derive from this.

#include <functional>

#include "controls/control.h"
#include "platform/front/following.h"
#include "platform/win32/base/handles.h"
#include "platform/win32/ui/message_loop.h"
#include "platform/win32/ui/scale.h"
#include "platform/win32/ui/tab_stops.h"
#include "platform/win32/ui/tool_tips.h"
#include "platform/win32/ui/window.h"

namespace platform::win32 {

/// What all bindings of a window use; it outlives them.
struct Surroundings {
  const Scale& scale;
  Win32MessageLoop& loop;
  ToolTips& tool_tips;
  TabStops& tab_stops;
};

/// What a control of the system is made of.
struct NativeKind {
  const wchar_t* class_name = nullptr;
  std::uint32_t style = 0;
  std::uint32_t extended = 0;
};

/// Whether the keyboard can go to the control.
enum class ForKeyboard { kYes, kNo };

/// Follows one control with one window, which it creates in `parent` and destroys. The control outlives it.
class ControlBinding : public Reflected {
 public:
  ~ControlBinding() override;
  ControlBinding(const ControlBinding&) = delete;
  ControlBinding& operator=(const ControlBinding&) = delete;

  [[nodiscard]] HWND Handle() const { return handle_; }
  [[nodiscard]] bool TakesKeyboard() const { return for_keyboard_ == ForKeyboard::kYes; }
  /// The control can be seen and used now.
  [[nodiscard]] bool IsReady() const;
  /// The tooltip while the control has none of its own.
  void SetHint(const Text& hint);

  /// Applies font, place and tooltip again; to be called when the scale has changed.
  virtual void FollowScale();
  /// To be called when the colours may have changed; what is only painted is painted again anyway.
  virtual void FollowColors() {}

 protected:
  ControlBinding(controls::Control& control, HWND parent, const Surroundings& around, const NativeKind& kind,
                 ForKeyboard for_keyboard);
  /// For a window that was made elsewhere and destroys itself.
  ControlBinding(controls::Control& control, HWND made, const Surroundings& around);

  /// To be called at the end of the constructor of the kind, and by itself when the control changes.
  void FollowControl();
  /// Where the window is within the control's place; the whole place unless the kind knows better.
  [[nodiscard]] virtual PixelPlace Fitted(const PixelPlace& place) const { return place; }
  /// Called after the window was moved, shown, hidden, enabled or disabled.
  virtual void FollowWindow() {}

  /// The program's reaction to user input, to be run from the message loop while the binding lives.
  void HandOver(std::function<void()> procedure, OnWait on_wait = OnWait::kKeepsWaiting);
  /// For the main use of the control.
  [[nodiscard]] OnWait UseOnWait() const {
    return control_.EndsWaiting() ? OnWait::kEndsWait : OnWait::kKeepsWaiting;
  }
  [[nodiscard]] bool IsBlocked() const { return IsBlockedByDialog(handle_); }
  [[nodiscard]] const Scale& GetScale() const { return around_.scale; }
  [[nodiscard]] const Surroundings& Around() const { return around_; }
  /// The tooltip that belongs to it now: the control's own, otherwise its form's.
  [[nodiscard]] virtual Text Tip() const { return control_.ToolTip().empty() ? hint_ : control_.ToolTip(); }
  /// The window's own text, when it is another.
  void ShowTitle(const Text& text) const;
  void SetFont(Scale::Font font);

  controls::Subscriptions subscriptions_;

 private:
  void Subscribe();
  void FollowPlace();

  controls::Control& control_;
  Surroundings around_;
  HWND handle_;
  const ForKeyboard for_keyboard_;
  const bool owns_window_;
  Scale::Font font_ = Scale::Font::kPlain;
  Text hint_;
  Lifetime lifetime_;
};

using front::Following;

}  // namespace platform::win32
