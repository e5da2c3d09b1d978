#include "platform/win32/internet/web_exchange.h"

#include "platform/win32/base/windows_api.h"

#include <wininet.h>

#include "platform/win32/internet/request_thread.h"

namespace platform::win32 {

WebExchange::WebExchange(const http::ExchangeOptions& options) : connect_limit_(options.connect_limit) {
  StartRequestThread(options, reading_);
}

WebExchange::~WebExchange() { reading_->Cancel(); }

void WebExchange::Work(milliseconds slice) {
  reading_->Await(slice);
  // The library's own limit, for all addresses of a host together, counts no handshake.
  reading_->LimitConnecting(connect_limit_, ERROR_INTERNET_TIMEOUT);
}

}  // namespace platform::win32
