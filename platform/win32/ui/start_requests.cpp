#include "platform/win32/ui/start_requests.h"

#include "platform/win32/base/windows_api.h"

namespace platform::win32 {

void ServeStartRequests(StartRequests& requests, const controls::Form& form, FormWindow& window,
                        const std::function<void(const std::string&)>& open) {
  while (const auto request = requests.Next()) {
    const bool asks = IsBlockedByDialog(window.Handle());
    if (form.Closing() && (!asks || !request->argument.empty())) continue;
    if (!window.BringToFront()) continue;
    requests.Accept();
    if (open && !request->argument.empty()) open(request->argument);
  }
}

}  // namespace platform::win32
