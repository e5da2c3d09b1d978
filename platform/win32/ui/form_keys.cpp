#include "platform/win32/ui/form_keys.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/win32/ui/list_menu.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

bool IsDown(int key) { return ::GetKeyState(key) < 0; }

/// Keys that a field for typing uses itself.
bool FieldUses(HWND focus, WPARAM letter) {
  constexpr std::wstring_view kOfFields = L"CVXZ";
  return IsOfClass(focus, L"Edit") && kOfFields.find(static_cast<wchar_t>(letter)) != std::wstring_view::npos;
}

/// Not every version of a field knows this key. False: this is no field.
bool SelectAll(HWND focus) {
  if (!IsOfClass(focus, L"Edit")) return false;
  ::SendMessageW(focus, EM_SETSEL, 0, -1);
  return true;
}

/// A check box is no such button: Space toggles it, and Enter means the form's own button.
bool IsPushButton(HWND focus) {
  const LONG_PTR kind = ::GetWindowLongPtrW(focus, GWL_STYLE) & BS_TYPEMASK;
  return IsOfClass(focus, L"Button") && kind != BS_CHECKBOX && kind != BS_AUTOCHECKBOX;
}

/// The combo box whose list is open over the field, or null.
bool HasOpenList(HWND focus) {
  HWND const combo = IsOfClass(focus, L"Edit") ? ::GetParent(focus) : focus;
  return IsOfClass(combo, L"ComboBox") && ::SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0) != 0;
}

}  // namespace

FormKeys::FormKeys(const app::Inventory& inventory, HWND window, const ControlSet& set,
                   Win32MessageLoop& loop)
    : inventory_(inventory), window_(window), set_(set), loop_(loop) {
  loop_.SetKeyFilter(window_, [this](const tagMSG& message) { return TakeKey(message); });
  for (ListBinding* list : set_.Lists()) {
    subscriptions_ +=
        list->MenuWanted.Subscribe([this, list](int left, int top) { ShowMenu(*list, left, top); });
  }
}

FormKeys::~FormKeys() { loop_.RemoveKeyFilter(window_); }

void FormKeys::ShowMenu(ListBinding& list, int left, int top) {
  // A menu waits for the user, so it must not be opened inside a wait that only paints.
  loop_.HandOver(lifetime_, [this, &list, left, top] {
    if (menu_is_open_ || IsBlockedByDialog(window_)) return;
    menu_is_open_ = true;
    loop_.Rest();
    const Lifetime::Watch watch = lifetime_.Get();
    auto action = AskListMenu(inventory_, list, left, top);
    if (watch.expired()) return;
    menu_is_open_ = false;
    if (!action) return;
    loop_.HandOver(lifetime_, [this, action = std::move(action)] {
      if (!IsBlockedByDialog(window_)) action();
    });
  });
}

bool FormKeys::TakeKey(const tagMSG& message) {
  if (!IsKeyPress(message) || IsDown(VK_MENU)) return false;
  constexpr LPARAM kWasDown = 1 << 30;
  const bool first = (message.lParam & kWasDown) == 0;
  const bool control = IsDown(VK_CONTROL);
  if (control) {
    const bool letter = message.wParam >= 'A' && message.wParam <= 'Z';
    if (!letter || !first || IsDown(VK_SHIFT) || FieldUses(message.hwnd, message.wParam)) return false;
    if (message.wParam == 'A' && SelectAll(message.hwnd)) return true;
    return PressKey(controls::WithControl(static_cast<char16_t>(message.wParam)));
  }
  switch (message.wParam) {
    case VK_TAB:
      MoveFocus(IsDown(VK_SHIFT) ? -1 : 1);
      return true;
    case VK_RETURN:
      if (HasOpenList(message.hwnd) || IsOfClass(message.hwnd, WC_LISTVIEWW)) return false;
      return !first || PressEnter(message.hwnd);
    case VK_ESCAPE:
      return !HasOpenList(message.hwnd) && first && PressKey(controls::kEscapeKey);
    case VK_F1:
      return first && !IsDown(VK_SHIFT) && PressKey(controls::kHelpKey);
    default:
      return false;
  }
}

bool FormKeys::PressEnter(HWND focus) {
  if (IsPushButton(focus)) {
    ::SendMessageW(focus, BM_CLICK, 0, 0);
    return true;
  }
  if (auto* const entered = ButtonEnteredBy(focus)) {
    Press(*entered, app::KeyWhileHidden::kRests);
    return true;
  }
  // A field of one line would only beep.
  return PressKey(controls::kEnterKey) || IsOfClass(focus, L"Edit");
}

controls::CommandButton* FormKeys::ButtonEnteredBy(HWND focus) const {
  for (const app::FormControl& entry : inventory_) {
    if (entry.use.enter_clicks == nullptr) continue;
    const ControlBinding* const field = set_.Of(*app::As<controls::Control>(entry));
    // The field of a combo box is a window inside it.
    const bool focused =
        field != nullptr && (field->Handle() == focus || ::IsChild(field->Handle(), focus) != 0);
    if (focused) return entry.use.enter_clicks;
  }
  return nullptr;
}

bool FormKeys::PressKey(const controls::Key& key) {
  const auto entry =
      std::ranges::find_if(inventory_, [&key](const app::FormControl& one) { return one.use.key == key; });
  if (entry == inventory_.end()) return false;
  Activate(*entry);
  return true;
}

void FormKeys::Activate(const app::FormControl& entry) {
  auto* button = app::As<controls::CommandButton>(entry);
  if (button != nullptr) return Press(*button, entry.use.key_while_hidden);
  const auto* control = app::As<controls::Control>(entry);
  ControlBinding* const goal = control == nullptr ? nullptr : set_.Of(*control);
  ControlBinding* const first = goal == nullptr ? nullptr : set_.FirstForKeyboard(goal->Handle());
  if (first != nullptr) ::SetFocus(first->Handle());
}

void FormKeys::Press(controls::CommandButton& button, app::KeyWhileHidden while_hidden) {
  loop_.HandOver(lifetime_, [this, &button, while_hidden] {
    if (IsBlockedByDialog(window_)) return;
    if (button.Visible() || while_hidden == app::KeyWhileHidden::kWorks) button.Click();
  });
}

void FormKeys::FocusFirst() const {
  const auto& order = set_.Stops().Order();
  const auto first = std::ranges::find_if(order, [](const ControlBinding* one) { return one->IsReady(); });
  if (first != order.end()) ::SetFocus((*first)->Handle());
}

void FormKeys::MoveFocus(int step) const {
  // From now on the user wants to see where the keyboard is.
  ::SendMessageW(window_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
  const ControlBinding* const next = set_.Stops().Next(step);
  if (next == nullptr) return;
  ::SetFocus(next->Handle());
  if (IsOfClass(next->Handle(), L"Edit")) ::SendMessageW(next->Handle(), EM_SETSEL, 0, -1);
}

}  // namespace platform::win32
