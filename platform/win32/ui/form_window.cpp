#include "platform/win32/ui/form_window.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/busy_pointer.h"
#include "platform/win32/ui/notifications.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

constexpr std::size_t kLongestTitle = 300;

Window::Style StyleOf(const controls::Form& form, HWND owner) {
  const DWORD fixed = WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  if (owner != nullptr) return {fixed | WS_POPUP, WS_EX_CONTROLPARENT | WS_EX_DLGMODALFRAME};
  if (form.FixedSize()) return {fixed | WS_MINIMIZEBOX, WS_EX_CONTROLPARENT};
  return {WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
}

const controls::Control* Footer(const app::Inventory& inventory) {
  for (const app::FormControl& entry : inventory) {
    const auto* label = app::As<controls::Label>(entry);
    if (label != nullptr && label->Look() == controls::LabelLook::kStatusLine) return label;
  }
  return nullptr;
}

BOOL CALLBACK PassOnColorChange(HWND control, LPARAM /*unused*/) {
  ::SendMessageW(control, WM_SYSCOLORCHANGE, 0, 0);
  return TRUE;
}

RECT WorkAreaOf(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork;
}

}  // namespace

FormWindow::FormWindow(controls::Form& form, const app::Inventory& inventory, HWND owner,
                       const Win32Icons& icons, Win32MessageLoop& loop)
    : Window(owner, StyleOf(form, owner), OnOneLine(form.Caption(), kLongestTitle)),
      form_(form),
      inventory_(inventory),
      owner_(owner),
      loop_(loop),
      scale_(::GetDpiForWindow(Handle())),
      tool_tips_(Handle(), scale_),
      footer_(Footer(inventory)) {
  // Public reference: the documentation of RegisterShellHookWindow.
  shell_message_ = ::RegisterWindowMessageW(L"SHELLHOOK");
  // A dialog is like its owner, which would not follow.
  if (owner == nullptr) FollowWantedBrightness();
  FollowColors();
  set_ = std::make_unique<ControlSet>(inventory, Handle(),
                                      Surroundings{scale_, loop_, tool_tips_, tab_stops_}, icons);
  keys_ = std::make_unique<FormKeys>(inventory, Handle(), *set_, loop_);
  subscriptions_ += form.Changed.Subscribe([this] { FollowForm(); });
  subscriptions_ += form.Closed.Subscribe([this] {
    // Whoever opened a menu waits for its end.
    ::EndMenu();
    ::ShowWindow(Handle(), SW_HIDE);
  });
  subscriptions_ += form.FocusWanted.Subscribe([this] { BringToFront(); });
  FollowForm();
}

FormWindow::~FormWindow() {
  ::DeregisterShellHookWindow(Handle());
  ForgetFocus(Handle());
  keys_.reset();
  set_.reset();
}

int FormWindow::FooterHeight() const {
  return footer_ == nullptr ? 0 : scale_.Pixels(footer_->GetPlace().height);
}

FormWindow::Size FormWindow::WindowSize(int width, int height) const {
  RECT area{0, 0, scale_.Pixels(width), scale_.Pixels(height) + FooterHeight()};
  ::AdjustWindowRectExForDpi(&area, static_cast<DWORD>(::GetWindowLongPtrW(Handle(), GWL_STYLE)), FALSE,
                             static_cast<DWORD>(::GetWindowLongPtrW(Handle(), GWL_EXSTYLE)),
                             scale_.DotsPerInch());
  return {static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top)};
}

FormWindow::Size FormWindow::InnerSize() const {
  RECT area{};
  ::GetClientRect(Handle(), &area);
  return {static_cast<int>(area.right), std::max(0, static_cast<int>(area.bottom) - FooterHeight())};
}

void FormWindow::FollowForm() {
  const Text title = OnOneLine(form_.Caption(), kLongestTitle);
  if (TextOf(Handle()) != title) ::SetWindowTextW(Handle(), Wide(title));
  const Size inner = InnerSize();
  const controls::Place& place = form_.GetPlace();
  const bool same = scale_.Twips(inner.width) == place.width && scale_.Twips(inner.height) == place.height;
  if (same || following_ || ::IsIconic(Handle()) != 0 || ::IsZoomed(Handle()) != 0) return;
  const Following guard(following_);
  const Size size = WindowSize(place.width, place.height);
  ::SetWindowPos(Handle(), nullptr, 0, 0, size.width, size.height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::TakeSize(int width, int height) {
  form_.Resize(scale_.Twips(width), scale_.Twips(std::max(0, height - FooterHeight())));
}

void FormWindow::ReportMediaKeys(MediaKeyPressed pressed) {
  media_key_pressed_ = std::move(pressed);
  ::RegisterShellHookWindow(Handle());
}

bool FormWindow::UseMediaKey(std::intptr_t command, KeyboardIn keyboard) const {
  return media_key_pressed_ && media_key_pressed_(GET_APPCOMMAND_LPARAM(command), keyboard);
}

void FormWindow::RememberIn(Files& files, const Text& file) {
  memory_.emplace(form_, inventory_, Handle(), files, file);
}

void FormWindow::Show() {
  // A screen of another resolution scales a window that comes to it: the second time it is there already.
  for (int time = 0; time < 2; ++time) PutOnScreen();
  const bool maximized = memory_ && memory_->Restore();
  ::ShowWindow(Handle(), maximized ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
  keys_->FocusFirst();
}

void FormWindow::PutOnScreen() const {
  const Size wanted = WindowSize(form_.GetPlace().width, form_.GetPlace().height);
  const RECT room = WorkAreaOf(owner_ == nullptr ? Handle() : owner_);
  RECT place{};
  ::GetWindowRect(Handle(), &place);
  const int width = std::min(wanted.width, static_cast<int>(room.right - room.left));
  const int height = std::min(wanted.height, static_cast<int>(room.bottom - room.top));
  if (owner_ != nullptr) {
    RECT around{};
    ::GetWindowRect(owner_, &around);
    place.left = (around.left + around.right - width) / 2;
    place.top = (around.top + around.bottom - height) / 2;
  }
  const int left = std::clamp(static_cast<int>(place.left), static_cast<int>(room.left),
                              static_cast<int>(room.right) - width);
  const int top = std::clamp(static_cast<int>(place.top), static_cast<int>(room.top),
                             static_cast<int>(room.bottom) - height);
  ::SetWindowPos(Handle(), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

bool FormWindow::BringToFront() {
  HWND const front = ::GetLastActivePopup(Handle());
  if (::IsWindowVisible(front) == 0) return false;
  if (::IsIconic(Handle()) != 0) ::ShowWindow(Handle(), SW_RESTORE);
  ::SetForegroundWindow(front);
  return true;
}

std::optional<std::intptr_t> FormWindow::OnMessage(const Message& message) {
  if (message.id == shell_message_) {
    return message.w == HSHELL_APPCOMMAND && UseMediaKey(message.l, KeyboardIn::kOtherProgram) ? 1 : 0;
  }
  if (IsClickOnNotification(message)) {
    BringToFront();
    return 0;
  }
  switch (message.id) {
    case WM_SIZE:
      form_.SetInSight(::IsWindowVisible(Handle()) != 0 && message.w != SIZE_MINIMIZED);
      // It does nothing but move controls.
      if (message.w != SIZE_MINIMIZED) TakeSize(LOWORD(message.l), HIWORD(message.l));
      if (memory_) memory_->FollowPlace();
      return 0;
    case WM_MOVE:
      if (memory_) memory_->FollowPlace();
      return std::nullopt;
    case WM_SHOWWINDOW:
      form_.SetInSight(message.w != 0 && ::IsIconic(Handle()) == 0);
      return std::nullopt;
    case WM_GETMINMAXINFO:
      LimitSize(message.l);
      return 0;
    case WM_CLOSE:
      AskToClose();
      return 0;
    case WM_QUERYENDSESSION:
      // A wait that is in progress ends, so that the end finds the program where it can save at once: the
      // system may stop it as soon as it has answered that message.
      loop_.HandOver(
          lifetime_, [] {}, OnWait::kEndsWait);
      return TRUE;
    case WM_ENDSESSION:
      if (message.w != 0) EndSession();
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(message.w) == WA_INACTIVE && HasKeyboard(Handle())) KeepFocus();
      return std::nullopt;
    case WM_SETFOCUS:
      TakeFocus();
      return 0;
    case WM_SETCURSOR:
      if (BusyPointer::Apply()) return TRUE;
      return std::nullopt;
    case WM_APPCOMMAND:
      if (UseMediaKey(message.l, KeyboardIn::kOwnWindow)) return TRUE;
      return std::nullopt;
    case WM_DPICHANGED:
      FollowResolution(LOWORD(message.w), message.l);
      return 0;
    case WM_SYSCOLORCHANGE:
      // The system reports it to top-level windows only.
      ::EnumChildWindows(Handle(), PassOnColorChange, 0);
      [[fallthrough]];
    case WM_THEMECHANGED:
      FollowWantedBrightness();
      scale_.Set(::GetDpiForWindow(Handle()));
      Refresh();
      return std::nullopt;
    case WM_SETTINGCHANGE:
      FollowSettings();
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

void FormWindow::TakeFocus() const {
  HWND const kept = KeptFocus(Handle());
  if (kept != nullptr) {
    ::SetFocus(kept);
  } else if (keys_) {
    keys_->FocusFirst();
  }
}

void FormWindow::LimitSize(std::intptr_t limits) const {
  // The system asks before the window is complete.
  if (!set_) return;
  const RECT room = WorkAreaOf(Handle());
  Size smallest = WindowSize(form_.SmallestWidth(), form_.SmallestHeight());
  if (smallest.height > room.bottom - room.top) {
    smallest = WindowSize(form_.SmallestWidthIfLower(), form_.SmallestHeight());
  }
  auto& info = *reinterpret_cast<MINMAXINFO*>(limits);
  if (form_.SmallestWidth() == 0 && form_.SmallestHeight() == 0) return;
  info.ptMinTrackSize.x = std::min<LONG>(smallest.width, room.right - room.left);
  info.ptMinTrackSize.y = std::min<LONG>(smallest.height, room.bottom - room.top);
}

void FormWindow::FollowResolution(unsigned int dots, std::intptr_t place) {
  const RECT& wanted = *reinterpret_cast<const RECT*>(place);
  // The new size is already meant in the new scale.
  scale_.Set(dots);
  {
    const Following guard(following_);
    ::SetWindowPos(Handle(), nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
                   wanted.bottom - wanted.top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  Refresh();
}

void FormWindow::FollowSettings() {
  FollowWantedBrightness();
  const bool new_scale = scale_.Set(::GetDpiForWindow(Handle()));
  const bool new_colors = UsersColors() != colors_;
  // Other system colours are reported, and passed on; a brightness is not.
  if (new_colors) ::EnumChildWindows(Handle(), PassOnColorChange, 0);
  if (new_scale || new_colors) Refresh();
}

void FormWindow::Refresh() {
  // Messages of this kind come while the window is being made, too.
  if (!set_) return;
  tool_tips_.FollowScale();
  set_->FollowScale();
  FollowColors();
  scale_.ReleaseFormerFonts();
  RECT area{};
  ::GetClientRect(Handle(), &area);
  if (::IsIconic(Handle()) == 0) TakeSize(static_cast<int>(area.right), static_cast<int>(area.bottom));
  ::RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void FormWindow::FollowColors() {
  colors_ = UsersColors();
  if (std::exchange(title_bar_, ShownBrightness()) != ShownBrightness()) ColorTitleBar(Handle());
  tool_tips_.FollowColors();
  if (set_) set_->FollowColors();
}

void FormWindow::AskToClose() {
  // A question must not have to wait behind a menu.
  ::EndMenu();
  loop_.HandOver(
      lifetime_,
      [this] {
        // The user cannot close a window that a dialog blocks; and what was asked for before the dialog
        // opened is not answered inside it.
        if (!IsBlockedByDialog(Handle())) form_.Close();
      },
      OnWait::kEndsWait);
}

void FormWindow::EndSession() {
  const auto close = [this] {
    form_.Close(controls::CloseReason::kSessionEnd);
    // The form is being closed further up the stack, where it waits for an answer, or another dialog is open.
    // Leaving every loop dismisses whatever is open, and what waits for it continues.
    if (!form_.IsClosed() || IsBlockedByDialog(Handle())) Win32MessageLoop::LeaveAll();
  };
  if (loop_.PaintingOnly()) return loop_.HandOver(lifetime_, close, OnWait::kEndsWait);
  close();
}

}  // namespace platform::win32
