#include "platform/win32/system/start_channel.h"

#include "platform/win32/base/windows_api.h"

#include <utility>

namespace platform::win32 {
namespace {

constexpr const wchar_t* kClass = L"FunkhausplayerStart";
/// Distinguishes the program's messages from those that any program may send ("FPST").
constexpr ULONG_PTR kMark = 0x46505354;

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message != WM_COPYDATA) return ::DefWindowProcW(window, message, first, second);
  auto* const listener = reinterpret_cast<StartListener*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  const auto* const data = reinterpret_cast<const COPYDATASTRUCT*>(second);
  if (listener == nullptr || data == nullptr || data->dwData != kMark) return FALSE;
  if (data->cbData > StartListener::kLongestRequest) return FALSE;
  return listener->Take({static_cast<const char*>(data->lpData), data->cbData}) ? TRUE : FALSE;
}

void RegisterOnce() {
  WNDCLASSEXW window_class{};
  window_class.cbSize = sizeof window_class;
  window_class.lpfnWndProc = Procedure;
  window_class.hInstance = ::GetModuleHandleW(nullptr);
  window_class.lpszClassName = kClass;
  ::RegisterClassExW(&window_class);
}

}  // namespace

StartListener::StartListener(const std::wstring& name) {
  RegisterOnce();
  window_ = ::CreateWindowExW(0, kClass, name.c_str(), 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              ::GetModuleHandleW(nullptr), nullptr);
  ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  // A program with more rights may be asked by one with fewer.
  ::ChangeWindowMessageFilterEx(window_, WM_COPYDATA, MSGFLT_ALLOW, nullptr);
}

StartListener::~StartListener() {
  if (window_ != nullptr) ::DestroyWindow(window_);
}

std::optional<StartRequest> StartListener::Next() { return std::exchange(pending_, std::nullopt); }

bool StartListener::Take(std::string argument) {
  is_accepted_ = false;
  pending_ = StartRequest{{}, std::move(argument)};
  if (Arrived) Arrived();
  pending_.reset();
  return std::exchange(is_accepted_, false);
}

bool AskRunningStart(const std::wstring& name, const StartRequest& request, std::chrono::milliseconds limit) {
  HWND const window = ::FindWindowExW(HWND_MESSAGE, nullptr, kClass, name.c_str());
  if (window == nullptr) return false;
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  ::AllowSetForegroundWindow(process);
  std::string bytes = request.argument;
  COPYDATASTRUCT data{kMark, static_cast<DWORD>(bytes.size()), bytes.data()};
  DWORD_PTR answer = FALSE;
  const LRESULT sent = ::SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data),
                                             SMTO_NORMAL, static_cast<UINT>(limit.count()), &answer);
  return sent != 0 && answer == TRUE;
}

}  // namespace platform::win32
