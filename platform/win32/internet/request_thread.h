#pragma once
// The thread on which WinINet waits for one server. Not for whoever must not wait (internet/web_exchange.h).

#include <memory>

#include "platform/http/exchange.h"
#include "platform/win32/internet/reading.h"

namespace platform::win32 {

/// The most of these threads at a time, those included that the system does not let end.
inline constexpr int kMostRequestThreads = 64;

/// Sends the request on a thread of its own, follows redirects and reads the body into `reading`, until its
/// end or until it is cancelled; then the thread ends. Where the library cannot end a wait that was cancelled
/// (Wine cannot), the thread is left behind until the server sends something or hangs up. Without another
/// thread the reading has ended with a failure.
void StartRequestThread(const http::ExchangeOptions& options, std::shared_ptr<Reading> reading);

}  // namespace platform::win32
