#include "platform/win32/ui/captioned_bindings.h"

#include "platform/win32/base/windows_api.h"

#include "platform/win32/ui/button_face.h"
#include "platform/win32/ui/dark_parts.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

std::uint32_t StyleOf(const controls::Label& label) {
  const bool right = label.Look() == controls::LabelLook::kRightCaption;
  return SS_NOPREFIX | SS_CENTERIMAGE | SS_ENDELLIPSIS | (right ? SS_RIGHT : SS_LEFT);
}

std::uint32_t StyleOf(const controls::CommandButton& button, DefaultButton is_default) {
  if (button.Look() == controls::ButtonLook::kFlat) return BS_OWNERDRAW | BS_NOTIFY;
  return BS_NOTIFY | (is_default == DefaultButton::kYes ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
}

/// Where a button is to be painted in the system's place; null for every other notice.
HDC PaintedInto(const tagNMHDR& notice) {
  if (notice.code != static_cast<UINT>(NM_CUSTOMDRAW)) return nullptr;
  const auto& step = reinterpret_cast<const NMCUSTOMDRAW&>(notice);
  return step.dwDrawStage == CDDS_PREPAINT ? step.hdc : nullptr;
}

}  // namespace

LabelBinding::LabelBinding(controls::Label& label, HWND parent, const Surroundings& around)
    : ControlBinding(label, parent, around, {L"STATIC", StyleOf(label)}, ForKeyboard::kNo), label_(label) {
  subscriptions_ += label.Changed.Subscribe([this] { Follow(); });
  Follow();
  FollowControl();
}

void LabelBinding::Follow() { ShowTitle(OnOneLine(label_.Caption())); }

CommandButtonBinding::CommandButtonBinding(controls::CommandButton& button, HWND parent,
                                           const Surroundings& around, DefaultButton is_default)
    : ControlBinding(button, parent, around, {L"BUTTON", StyleOf(button, is_default)}, ForKeyboard::kYes),
      button_(button) {
  subscriptions_ += button.Changed.Subscribe([this] { Follow(); });
  Follow();
  FollowControl();
}

void CommandButtonBinding::Follow() {
  const bool named = ShowsGlyphAlone(button_) && !button_.ToolTip().empty();
  ShowTitle(named ? button_.ToolTip() : WithoutMnemonics(button_.Caption()));
  ::InvalidateRect(Handle(), nullptr, TRUE);
}

Text CommandButtonBinding::Tip() const {
  const Text given = ControlBinding::Tip();
  return !given.empty() || ShowsWholeCaption(button_, Handle(), GetScale()) ? given : button_.Caption();
}

void CommandButtonBinding::Notice(unsigned int code) {
  if (code != BN_CLICKED) return;
  HandOver(
      [this] {
        if (!IsBlocked()) button_.Click();
      },
      UseOnWait());
}

void CommandButtonBinding::ContextWanted(int /*left*/, int /*top*/) {
  HandOver([this] {
    if (!IsBlocked()) button_.ContextClick();
  });
}

std::intptr_t CommandButtonBinding::Notice(tagNMHDR& notice) {
  HDC const context = PaintedInto(notice);
  if (context == nullptr) return CDRF_DODEFAULT;
  PaintButton(button_, Handle(), context, GetScale());
  return CDRF_SKIPDEFAULT;
}

void CommandButtonBinding::Draw(const tagDRAWITEMSTRUCT& place) {
  PaintFlatButton(button_, Handle(), place.hDC, GetScale());
}

CheckBoxBinding::CheckBoxBinding(controls::CheckBox& box, HWND parent, const Surroundings& around)
    : ControlBinding(box, parent, around, {L"BUTTON", BS_AUTOCHECKBOX | BS_NOTIFY}, ForKeyboard::kYes),
      box_(box) {
  subscriptions_ += box.Changed.Subscribe([this] { Follow(); });
  Follow();
  FollowControl();
}

void CheckBoxBinding::Follow() {
  ShowTitle(WithoutMnemonics(box_.Caption()));
  if (choices_to_come_ > 0) return;
  const WPARAM wanted = box_.Checked() ? BST_CHECKED : BST_UNCHECKED;
  if (static_cast<WPARAM>(::SendMessageW(Handle(), BM_GETCHECK, 0, 0)) == wanted) return;
  ::SendMessageW(Handle(), BM_SETCHECK, wanted, 0);
}

void CheckBoxBinding::Notice(unsigned int code) {
  if (code != BN_CLICKED) return;
  const bool checked = ::SendMessageW(Handle(), BM_GETCHECK, 0, 0) == BST_CHECKED;
  TakeUsersChoice(checked ? controls::CheckValue::kChecked : controls::CheckValue::kUnchecked);
}

std::intptr_t CheckBoxBinding::Notice(tagNMHDR& notice) {
  HDC const context = PaintedInto(notice);
  if (context == nullptr || ShownBrightness() == Brightness::kLight) return CDRF_DODEFAULT;
  PaintCheckBox(Handle(), context, box_.Caption(), GetScale());
  return CDRF_SKIPDEFAULT;
}

void CheckBoxBinding::TakeUsersChoice(controls::CheckValue value) {
  ++choices_to_come_;
  HandOver([this, value] {
    --choices_to_come_;
    // The program may have come first.
    if (!IsBlocked() && value != box_.Value()) box_.Click();
    Follow();
  });
}

}  // namespace platform::win32
