#pragma once
// Adapter: the internet library's operations on WinINet.
// Not for playlists fetched in the background (internet/win32_xml_http_request.h).

#include "platform/http/internet_over_exchanges.h"

namespace platform::win32 {

class Win32Internet final : public http::InternetOverExchanges {
 public:
  Win32Internet(MessageLoop& loop, TextConversion& conversion, const http::InternetSettings& settings = {});
};

}  // namespace platform::win32
