#include "platform/win32/ui/window.h"

#include "platform/win32/base/windows_api.h"

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/palette.h"

namespace platform::win32 {
namespace {

constexpr wchar_t kClass[] = L"FunkhausWindow";
constexpr wchar_t kReceiver[] = L"FunkhausReceiver";

Reflected* ReceiverOf(HWND control) {
  return control == nullptr ? nullptr : static_cast<Reflected*>(::GetPropW(control, kReceiver));
}

LRESULT CALLBACK WindowProcedure(HWND handle, UINT id, WPARAM w, LPARAM l) {
  auto* window = reinterpret_cast<Window*>(::GetWindowLongPtrW(handle, GWLP_USERDATA));
  const auto answer = window == nullptr ? std::nullopt : window->Receive({id, w, l});
  return answer ? static_cast<LRESULT>(*answer) : ::DefWindowProcW(handle, id, w, l);
}

void RegisterOnce() {
  static const ATOM registered = [] {
    WNDCLASSEXW kind{};
    kind.cbSize = sizeof kind;
    kind.style = CS_DBLCLKS;
    kind.lpfnWndProc = WindowProcedure;
    kind.hInstance = ::GetModuleHandleW(nullptr);
    kind.hIcon = ::LoadIconW(kind.hInstance, MAKEINTRESOURCEW(1));
    kind.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    kind.lpszClassName = kClass;
    return ::RegisterClassExW(&kind);
  }();
  static_cast<void>(registered);
}

}  // namespace

bool IsBlockedByDialog(HWND window) { return ::IsWindowEnabled(::GetAncestor(window, GA_ROOT)) == 0; }

void Reflected::Attach(HWND control, Reflected* receiver) {
  if (receiver == nullptr) {
    ::RemovePropW(control, kReceiver);
  } else {
    ::SetPropW(control, kReceiver, receiver);
  }
}

Window::Window(HWND parent, Style style, const Text& title) {
  RegisterOnce();
  handle_ = ::CreateWindowExW(style.extended, kClass, Wide(title), style.style, CW_USEDEFAULT, 0, 0, 0,
                              parent, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  ::SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Window::~Window() {
  ::SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
  ::DestroyWindow(handle_);
}

int Window::Ground() const { return COLOR_BTNFACE; }

std::optional<std::intptr_t> Window::Receive(const Message& message) {
  if (const auto answer = Reflect(message)) return answer;
  if (const auto answer = OnMessage(message)) return answer;
  switch (message.id) {
    case WM_ERASEBKGND: {
      RECT all{};
      ::GetClientRect(handle_, &all);
      ::FillRect(reinterpret_cast<HDC>(message.w), &all, ShownBrush(Ground()));
      return 1;
    }
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
      HDC context = reinterpret_cast<HDC>(message.w);
      ::SetTextColor(context, ShownColor(Ground() == COLOR_WINDOW ? COLOR_WINDOWTEXT : COLOR_BTNTEXT));
      ::SetBkColor(context, ShownColor(Ground()));
      return reinterpret_cast<std::intptr_t>(ShownBrush(Ground()));
    }
    // Of a field and of the list that a combo box opens.
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX: {
      HDC context = reinterpret_cast<HDC>(message.w);
      ::SetTextColor(context, ShownColor(COLOR_WINDOWTEXT));
      ::SetBkColor(context, ShownColor(COLOR_WINDOW));
      return reinterpret_cast<std::intptr_t>(ShownBrush(COLOR_WINDOW));
    }
    default:
      return std::nullopt;
  }
}

std::optional<std::intptr_t> Window::Reflect(const Message& message) const {
  switch (message.id) {
    case WM_COMMAND:
      if (Reflected* receiver = ReceiverOf(reinterpret_cast<HWND>(message.l))) {
        receiver->Notice(HIWORD(message.w));
        return 0;
      }
      break;
    case WM_NOTIFY: {
      auto& notice = *reinterpret_cast<NMHDR*>(message.l);
      if (Reflected* receiver = ReceiverOf(notice.hwndFrom)) return receiver->Notice(notice);
      break;
    }
    case WM_HSCROLL:
    case WM_VSCROLL:
      if (Reflected* receiver = ReceiverOf(reinterpret_cast<HWND>(message.l))) {
        receiver->Scrolled(LOWORD(message.w));
        return 0;
      }
      break;
    case WM_DRAWITEM: {
      const auto& place = *reinterpret_cast<const DRAWITEMSTRUCT*>(message.l);
      if (Reflected* receiver = ReceiverOf(place.hwndItem)) {
        receiver->Draw(place);
        return TRUE;
      }
      break;
    }
    case WM_CONTEXTMENU:
      if (Reflected* receiver = ReceiverOf(reinterpret_cast<HWND>(message.w))) {
        receiver->ContextWanted(static_cast<short>(LOWORD(message.l)), static_cast<short>(HIWORD(message.l)));
        return 0;
      }
      break;
    default:
      break;
  }
  return std::nullopt;
}

}  // namespace platform::win32
