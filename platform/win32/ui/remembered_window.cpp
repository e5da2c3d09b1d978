#include "platform/win32/ui/remembered_window.h"

#include "platform/win32/base/windows_api.h"

#include <utility>
#include <vector>

namespace platform::win32 {
namespace {

BOOL CALLBACK AddScreen(HMONITOR screen, HDC /*context*/, RECT* /*area*/, LPARAM rooms) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  if (::GetMonitorInfoW(screen, &monitor) == 0) return TRUE;
  auto& list = *reinterpret_cast<std::vector<app::ScreenRoom>*>(rooms);
  const RECT& work = monitor.rcWork;
  const app::ScreenRoom room{static_cast<int>(work.left), static_cast<int>(work.top),
                             static_cast<int>(work.right - work.left),
                             static_cast<int>(work.bottom - work.top)};
  const bool is_main = (monitor.dwFlags & MONITORINFOF_PRIMARY) != 0;
  list.insert(is_main ? list.begin() : list.end(), room);
  return TRUE;
}

/// The main one first.
std::vector<app::ScreenRoom> Screens() {
  std::vector<app::ScreenRoom> rooms;
  ::EnumDisplayMonitors(nullptr, nullptr, AddScreen, reinterpret_cast<LPARAM>(&rooms));
  return rooms;
}

/// What the window is larger than its inside.
app::FrameSize FrameOf(HWND window) {
  RECT frame{};
  ::AdjustWindowRectExForDpi(&frame, static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_STYLE)), FALSE,
                             static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_EXSTYLE)),
                             ::GetDpiForWindow(window));
  return {static_cast<int>(frame.right - frame.left), static_cast<int>(frame.bottom - frame.top)};
}

/// Of a maximised window: where it comes back to, which the system moves along to another screen.
app::WindowPlace PlaceWhenRestored(HWND window) {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  ::GetWindowPlacement(window, &placement);
  const RECT& usual = placement.rcNormalPosition;
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  ::GetMonitorInfoW(::MonitorFromRect(&usual, MONITOR_DEFAULTTONEAREST), &monitor);
  // The place is counted from the screen's part that no taskbar covers.
  const LONG beside = monitor.rcWork.left - monitor.rcMonitor.left;
  const LONG above = monitor.rcWork.top - monitor.rcMonitor.top;
  const app::FrameSize frame = FrameOf(window);
  return {static_cast<int>(usual.left + beside), static_cast<int>(usual.top + above),
          static_cast<int>(usual.right - usual.left) - frame.width,
          static_cast<int>(usual.bottom - usual.top) - frame.height};
}

}  // namespace

RememberedWindow::RememberedWindow(controls::Form& form, const app::Inventory& inventory, HWND window,
                                   Files& files, Text file)
    : inventory_(inventory), window_(window), files_(files), file_(std::move(file)) {
  in_file_ = files_.ReadWholeFile(file_, app::kLongestWindowMemory).value_or(std::string());
  memory_ = app::ParseWindowMemory(in_file_).value_or(app::WindowMemory());
  app::RestoreColumns(inventory_, memory_.columns);
  subscriptions_ += form.QueryUnload.Subscribe([this] { Save(); });
  // When it has closed it is hidden already.
  subscriptions_ += form.Unloaded.Subscribe([this] { Save(); });
}

bool RememberedWindow::Restore() const {
  if (!memory_.place) return memory_.maximized;
  // A screen of another resolution scales a window that comes to it, and its frame is another: the second
  // time the window is there already.
  for (int time = 0; time < 2; ++time) {
    const app::FrameSize frame = FrameOf(window_);
    const app::WindowPlace place = app::PlaceOnAScreen(*memory_.place, Screens(), frame);
    ::SetWindowPos(window_, nullptr, place.left, place.top, place.width + frame.width,
                   place.height + frame.height, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  return memory_.maximized;
}

void RememberedWindow::FollowPlace() {
  if (::IsWindowVisible(window_) == 0 || ::IsIconic(window_) != 0) return;
  memory_.maximized = ::IsZoomed(window_) != 0;
  if (memory_.maximized) {
    memory_.place = PlaceWhenRestored(window_);
    return;
  }
  RECT outer{};
  RECT inner{};
  ::GetWindowRect(window_, &outer);
  ::GetClientRect(window_, &inner);
  memory_.place = {static_cast<int>(outer.left), static_cast<int>(outer.top), static_cast<int>(inner.right),
                   static_cast<int>(inner.bottom)};
}

void RememberedWindow::Save() {
  // A maximised window's usual place changes without a message.
  FollowPlace();
  memory_.columns = app::UsersColumns(inventory_);
  const std::string bytes = app::FormatWindowMemory(memory_);
  if (bytes == in_file_) return;
  if (files_.WriteWholeFile(file_, bytes)) in_file_ = bytes;
}

}  // namespace platform::win32
