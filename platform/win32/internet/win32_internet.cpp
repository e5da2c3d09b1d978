#include "platform/win32/internet/win32_internet.h"

#include <memory>

#include "platform/win32/internet/web_exchange.h"

namespace platform::win32 {

Win32Internet::Win32Internet(MessageLoop& loop, TextConversion& conversion,
                             const http::InternetSettings& settings)
    : InternetOverExchanges(loop, conversion, settings, [](const http::ExchangeOptions& options) {
        return std::make_unique<WebExchange>(options);
      }) {}

}  // namespace platform::win32
