#include "platform/win32/ui/text_bindings.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/dark_parts.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

constexpr int kShownWithoutScrolling = 20;
// At 100 %.
constexpr int kFieldHeight = 24;
constexpr int kRoomAroundText = 8;

int FieldHeight(const Scale& scale) {
  return std::max(scale.Scaled(kFieldHeight), scale.FontHeight() + scale.Scaled(kRoomAroundText));
}

PixelPlace InTheMiddle(const PixelPlace& place, int height) {
  const int fitting = std::min(place.height, height);
  return {place.left, place.top + (place.height - fitting) / 2, place.width, fitting};
}

}  // namespace

EditBinding::EditBinding(controls::TextControl& box, HWND parent, const Surroundings& around,
                         std::uint32_t more_style)
    : ControlBinding(box, parent, around, {L"EDIT", ES_AUTOHSCROLL | more_style, WS_EX_CLIENTEDGE},
                     ForKeyboard::kYes),
      box_(box),
      typed_(box),
      look_(Handle(), around.scale) {
  ::SendMessageW(Handle(), EM_SETLIMITTEXT, 0, 0);
  subscriptions_ += box.Changed.Subscribe([this] { Follow(); });
  Follow();
}

void EditBinding::FollowScale() {
  ControlBinding::FollowScale();
  look_.FollowScale();
}

void EditBinding::FollowColors() { look_.FollowColors(); }

PixelPlace EditBinding::Fitted(const PixelPlace& place) const {
  return InTheMiddle(place, FieldHeight(GetScale()));
}

void EditBinding::Notice(unsigned int code) {
  if (code == EN_CHANGE && !following_) TakeTyping();
}

void EditBinding::TakeTyping() {
  HandOver([this, typed = TextOf(Handle()), basis = typed_.Basis()] {
    typed_.Take(basis, typed, [&] { box_.SetText(typed); });
  });
}

void EditBinding::Follow() {
  if (!typed_.ProgramWrote()) return;
  const Following guard(following_);
  ShowTitle(box_.GetText());
}

TextBoxBinding::TextBoxBinding(controls::TextBox& box, HWND parent, const Surroundings& around)
    : EditBinding(box, parent, around, 0) {
  FollowControl();
}

UpDownBinding::UpDownBinding(controls::UpDownTextBox& box, HWND parent, const Surroundings& around)
    : EditBinding(box, parent, around, ES_NUMBER),
      arrows_(
          ::CreateWindowExW(0, UPDOWN_CLASSW, L"",
                            WS_CHILD | WS_CLIPSIBLINGS | UDS_SETBUDDYINT | UDS_ARROWKEYS | UDS_NOTHOUSANDS, 0,
                            0, 0, 0, parent, nullptr, ::GetModuleHandleW(nullptr), nullptr)) {
  pointed_.emplace(arrows_, [this](const tagPOINT& pointer) { return ArrowAt(arrows_, pointer); });
  painted_.emplace(arrows_, [this](HDC context) { PaintArrows(arrows_, context, pointed_->Get()); });
  ::SendMessageW(arrows_, UDM_SETRANGE32, controls::UpDownTextBox::kMinimum,
                 controls::UpDownTextBox::kMaximum);
  ::SendMessageW(arrows_, UDM_SETBUDDY, reinterpret_cast<WPARAM>(Handle()), 0);
  FollowControl();
}

UpDownBinding::~UpDownBinding() {
  painted_.reset();
  pointed_.reset();
  ::DestroyWindow(arrows_);
}

int UpDownBinding::ArrowsWidth() const {
  return ::GetSystemMetricsForDpi(SM_CXVSCROLL, GetScale().DotsPerInch());
}

PixelPlace UpDownBinding::Fitted(const PixelPlace& place) const {
  PixelPlace field = EditBinding::Fitted(place);
  field.width = std::max(0, field.width - ArrowsWidth());
  return field;
}

void UpDownBinding::FollowWindow() {
  RECT field{};
  ::GetWindowRect(Handle(), &field);
  ::MapWindowPoints(nullptr, ::GetParent(Handle()), reinterpret_cast<POINT*>(&field), 2);
  ::SetWindowPos(arrows_, nullptr, field.right, field.top, ArrowsWidth(), field.bottom - field.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  const bool shown = (::GetWindowLongPtrW(Handle(), GWL_STYLE) & WS_VISIBLE) != 0;
  ::ShowWindow(arrows_, shown ? SW_SHOWNA : SW_HIDE);
  ::EnableWindow(arrows_, ::IsWindowEnabled(Handle()));
}

ComboBoxBinding::ComboBoxBinding(controls::ComboBox& box, HWND parent, const Surroundings& around)
    : ControlBinding(box, parent, around, {L"COMBOBOX", CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL},
                     ForKeyboard::kYes),
      box_(box),
      typed_(box),
      pointed_(Handle(), [this](const tagPOINT& pointer) { return ComboBoxPartAt(Handle(), pointer); }),
      painted_(Handle(), [this](HDC context) { PaintComboBox(Handle(), context, pointed_.Get()); }) {
  ::SendMessageW(Handle(), CB_SETMINVISIBLE, kShownWithoutScrolling, 0);
  subscriptions_ += box.Changed.Subscribe([this] { Follow(); });
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  ::GetComboBoxInfo(Handle(), &parts);
  look_.emplace(parts.hwndItem, around.scale);
  scroll_bar_.emplace(parts.hwndList, ThemeWhenDark::Kind::kDarkScrollBars);
  scroll_bar_->Follow();
  FollowFieldHeight();
  FollowControl();
  Follow();
}

PixelPlace ComboBoxBinding::Fitted(const PixelPlace& place) const {
  // The height given to the system is that of the open list; that of the field follows from the font.
  RECT field{};
  ::GetWindowRect(Handle(), &field);
  const int height = static_cast<int>(field.bottom - field.top);
  PixelPlace fitted = place;
  if (height > 0 && height < place.height) fitted.top += (place.height - height) / 2;
  if (height > 0) fitted.height = height;
  return fitted;
}

void ComboBoxBinding::FollowFieldHeight() const {
  constexpr auto kField = static_cast<WPARAM>(-1);
  RECT field{};
  ::GetWindowRect(Handle(), &field);
  const auto text = static_cast<int>(::SendMessageW(Handle(), CB_GETITEMHEIGHT, kField, 0));
  const int border = static_cast<int>(field.bottom - field.top) - text;
  ::SendMessageW(Handle(), CB_SETITEMHEIGHT, kField, FieldHeight(GetScale()) - border);
  look_->FollowScale();
}

void ComboBoxBinding::FollowScale() {
  ControlBinding::FollowScale();
  FollowFieldHeight();
  // The font may have changed the field's height, on which its place depends.
  FollowControl();
}

void ComboBoxBinding::FollowColors() {
  look_->FollowColors();
  if (!scroll_bar_->Follow()) return;
  // An open list is no part of the window, and is not painted again with it.
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  ::GetComboBoxInfo(Handle(), &parts);
  ::RedrawWindow(parts.hwndList, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
}

void ComboBoxBinding::Notice(unsigned int code) {
  FollowUse(code);
  if (following_) return;
  if (code == CBN_EDITCHANGE) TakeTyping();
  const bool open = ::SendMessageW(Handle(), CB_GETDROPPEDSTATE, 0, 0) != 0;
  if (code == CBN_SELENDOK || (code == CBN_SELCHANGE && !open)) TakeUsersChoice();
}

/// What the system does not paint by itself when the box is painted in its place.
void ComboBoxBinding::FollowUse(unsigned int code) const {
  const bool shown =
      code == CBN_SETFOCUS || code == CBN_KILLFOCUS || code == CBN_DROPDOWN || code == CBN_CLOSEUP;
  if (shown && ShownBrightness() == Brightness::kDark) ::InvalidateRect(Handle(), nullptr, FALSE);
}

void ComboBoxBinding::TakeTyping() {
  ++inputs_to_come_;
  HandOver([this, typed = TextOf(Handle()), basis = typed_.Basis()] {
    --inputs_to_come_;
    typed_.Take(basis, typed, [&] {
      // The control loses its chosen entry before it has the new text; what lies between is not shown.
      const Following guard(typing_);
      box_.Type(typed);
    });
    Follow();
  });
}

void ComboBoxBinding::TakeUsersChoice() {
  const auto index = static_cast<int>(::SendMessageW(Handle(), CB_GETCURSEL, 0, 0));
  const bool known = index >= 0 && static_cast<std::size_t>(index) < box_.Items().size();
  // The system reports a choice twice.
  if (!known || choice_to_come_ == index) return;
  choice_to_come_ = index;
  ++inputs_to_come_;
  HandOver([this, index] {
    --inputs_to_come_;
    if (choice_to_come_ == index) choice_to_come_ = -1;
    if (!IsBlocked()) Choose(index);
    Follow();
  });
}

void ComboBoxBinding::Choose(int index) {
  const Text item = box_.Items()[static_cast<std::size_t>(index)];
  typed_.Take(typed_.Basis(), item, [&] {
    // Choosing the entry that was chosen last counts too, because the field may contain another text by now.
    if (box_.ListIndex() == index) box_.Type(item);
    box_.SetListIndex(index);
  });
}

void ComboBoxBinding::Follow() {
  if (typing_) return;
  const Following guard(following_);
  FollowItems();
  if (!typed_.ProgramWrote() && inputs_to_come_ > 0) return;
  const int chosen = box_.ListIndex();
  if (chosen >= 0 && ::SendMessageW(Handle(), CB_GETCURSEL, 0, 0) != chosen) {
    ::SendMessageW(Handle(), CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
  }
  ShowTitle(box_.GetText());
}

void ComboBoxBinding::FollowItems() {
  const auto& items = box_.Items();
  const auto shown = static_cast<std::size_t>(::SendMessageW(Handle(), CB_GETCOUNT, 0, 0));
  for (std::size_t index = shown; index < items.size(); ++index) {
    const Text line = OnOneLine(items[index]);
    ::SendMessageW(Handle(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(line)));
  }
}

}  // namespace platform::win32
