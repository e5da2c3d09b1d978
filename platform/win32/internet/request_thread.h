#pragma once
// The thread on which WinINet waits for one server. Not for whoever must not wait (internet/web_exchange.h).

#include <memory>

#include "platform/http/exchange.h"
#include "platform/win32/internet/reading.h"

namespace platform::win32 {

/// The most requests at a time, those included that were given up and that the library has not released yet.
inline constexpr int kMostRequests = 64;

/// Sends the request on a thread of its own, follows redirects and reads the body into `reading`, until its
/// end or until it is cancelled; then the thread ends. Beyond the most requests, and without another thread,
/// the reading has ended with a failure.
void StartRequestThread(const http::ExchangeOptions& options, std::shared_ptr<Reading> reading);

}  // namespace platform::win32
