#pragma once
// Answers later starts of the program: the window comes to the front and opens what they were given. Not how
// they reach this one.

#include <functional>
#include <string>

#include "controls/form.h"
#include "platform/win32/ui/form_window.h"
#include "ports/start_requests.h"

namespace platform::win32 {

/// Serves all that are pending; may be called inside any wait of the program. A request that comes while the
/// window closes is refused: the later start is to take its place. One with something to open is also refused
/// while the closing question is open.
void ServeStartRequests(StartRequests& requests, const controls::Form& form, FormWindow& window,
                        const std::function<void(const std::string&)>& open);

}  // namespace platform::win32
