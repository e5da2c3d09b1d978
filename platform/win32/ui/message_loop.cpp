#include "platform/win32/ui/message_loop.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace platform::win32 {
namespace {

constexpr UINT kTurn = WM_APP;
constexpr wchar_t kLoopClass[] = L"FunkhausLoop";
/// A flood of messages, from ticks that take longer than their interval, does not hold a waiting procedure.
constexpr std::chrono::milliseconds kLongestPump{200};
constexpr LPARAM kWithAlt = 1 << 29;
constexpr LPARAM kWasDown = 1 << 30;

/// Gives a variable another value, and its own back in the end.
class KeptValue {
 public:
  KeptValue(bool& variable, bool meanwhile)
      : variable_(variable), kept_(std::exchange(variable, meanwhile)) {}
  ~KeptValue() { variable_ = kept_; }
  KeptValue(const KeptValue&) = delete;
  KeptValue& operator=(const KeptValue&) = delete;

 private:
  bool& variable_;
  const bool kept_;
};

LRESULT CALLBACK LoopProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == kTurn) {
    auto* loop = reinterpret_cast<Win32MessageLoop*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (loop != nullptr) loop->TakeTurn();
    return 0;
  }
  return ::DefWindowProcW(window, message, w, l);
}

HWND MakeLoopWindow(Win32MessageLoop* loop) {
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.lpfnWndProc = LoopProcedure;
  kind.hInstance = ::GetModuleHandleW(nullptr);
  kind.lpszClassName = kLoopClass;
  ::RegisterClassExW(&kind);
  HWND window =
      ::CreateWindowExW(0, kLoopClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, kind.hInstance, nullptr);
  ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(loop));
  return window;
}

/// What a timer's procedure throws would otherwise be swallowed, and the program continue half-way. Public
/// reference: the documentation of SetTimer.
void LetTimersFail() {
  BOOL swallow = FALSE;
  ::SetUserObjectInformationW(::GetCurrentProcess(), UOI_TIMERPROC_EXCEPTION_SUPPRESSION, &swallow,
                              sizeof swallow);
}

}  // namespace

bool IsKeyPress(const tagMSG& message) {
  const bool without_focus = message.message == WM_SYSKEYDOWN && (message.lParam & kWithAlt) == 0;
  return message.message == WM_KEYDOWN || without_focus;
}

Win32MessageLoop::Win32MessageLoop(LongProcedures long_procedures)
    : long_procedures_(long_procedures), window_(MakeLoopWindow(this)) {
  LetTimersFail();
}

Win32MessageLoop::~Win32MessageLoop() { ::DestroyWindow(window_); }

void Win32MessageLoop::ProcessPendingMessages() {
  running_.Pumps();
  // Processing messages inside a wait that only paints is allowed in full: its caller may be re-entered.
  const KeptValue outer(painting_only_, false);
  for (; turns_held_ > 0; --turns_held_) AskForTurn();
  HandlePending();
}

void Win32MessageLoop::ProcessPaintMessages() {
  running_.Waits();
  CallWithoutProcedures([this] { HandlePending(); });
}

void Win32MessageLoop::CallWithoutProcedures(const std::function<void()>& call) {
  {
    const KeptValue outer(painting_only_, true);
    call();
  }
  if (painting_only_) return;
  for (; turns_held_ > 0; --turns_held_) AskForTurn();
}

bool Win32MessageLoop::InputEndsWait() const {
  if (long_procedures_ == LongProcedures::kAreWaits && running_.EscapePressedInside()) return true;
  return std::any_of(handed_over_.begin(), handed_over_.end(), [](const HandedOver& next) {
    return next.on_wait == OnWait::kEndsWait && !next.context.expired();
  });
}

void Win32MessageLoop::Sleep(std::uint32_t milliseconds) { ::Sleep(milliseconds); }

std::int16_t Win32MessageLoop::GetAsyncKeyState(std::int32_t virtual_key) {
  if (virtual_key != kVkEscape) return 0;
  constexpr std::int16_t kDown = static_cast<std::int16_t>(0x8000);
  const bool pressed = std::exchange(escape_pressed_, false);
  return static_cast<std::int16_t>((escape_down_ ? kDown : 0) | (pressed ? 1 : 0));
}

void Win32MessageLoop::HandOver(const Lifetime& context, std::function<void()> procedure, OnWait on_wait) {
  handed_over_.push_back({context.Get(), std::move(procedure), on_wait});
  AskForTurn();
}

void Win32MessageLoop::AskForTurn() const { ::PostMessageW(window_, kTurn, 0, 0); }

void Win32MessageLoop::TakeTurn() {
  if (painting_only_) {
    ++turns_held_;
    return;
  }
  if (handed_over_.empty()) return;
  const HandedOver next = std::move(handed_over_.front());
  handed_over_.pop_front();
  if (next.context.expired()) return;
  const front::RunningProcedures::Scope scope(running_, long_procedures_ == LongProcedures::kAreWaits
                                                            ? front::Pumping::kIsWaiting
                                                            : front::Pumping::kIsWork);
  next.procedure();
}

void Win32MessageLoop::Tick(const std::function<void()>& procedure) {
  if (painting_only_) return;
  const front::RunningProcedures::Scope scope(running_, front::Pumping::kIsWork);
  procedure();
}

void Win32MessageLoop::HandlePending() {
  const auto end = std::chrono::steady_clock::now() + kLongestPump;
  MSG message{};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) return LeaveAll();
    Handle(message);
    if (std::chrono::steady_clock::now() >= end) return;
  }
}

void Win32MessageLoop::RunWhile(const std::function<bool()>& wanted) {
  while (wanted()) {
    MSG message{};
    if (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == 0) {
      Rest();
      ::WaitMessage();
      continue;
    }
    if (message.message == WM_QUIT) return LeaveAll();
    Handle(message);
  }
}

void Win32MessageLoop::LeaveAll() { ::PostQuitMessage(0); }

void Win32MessageLoop::Rest() {
  escape_pressed_ = false;
  running_.Rests();
}

void Win32MessageLoop::SetKeyFilter(HWND window, KeyFilter filter) { filters_[window] = std::move(filter); }

void Win32MessageLoop::Handle(const tagMSG& message) {
  WatchKeys(message);
  const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  if (key) {
    const auto filter = filters_.find(::GetAncestor(message.hwnd, GA_ROOT));
    if (filter != filters_.end() && filter->second(message)) return;
  }
  ::TranslateMessage(&message);
  ::DispatchMessageW(&message);
}

void Win32MessageLoop::WatchKeys(const tagMSG& message) {
  if (message.wParam != VK_ESCAPE) return;
  if (message.message == WM_KEYUP || message.message == WM_SYSKEYUP) escape_down_ = false;
  if (!IsKeyPress(message)) return;
  escape_down_ = true;
  escape_pressed_ = true;
  if ((message.lParam & kWasDown) == 0) running_.EscapePressed();
}

}  // namespace platform::win32
