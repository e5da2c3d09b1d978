#pragma once
// Adapter: the internet library's operations on libcurl.
// Not for playlists fetched in the background (platform/curl/curl_xml_http_request.h).

#include <string>

#include "platform/http/internet_over_exchanges.h"

namespace platform::curl {

/// The time limits, and which certificates are trusted.
struct InternetSettings : http::InternetSettings {
  std::string trusted_certificates;  ///< a PEM file in place of the system's; empty: the system's
};

class CurlInternet final : public http::InternetOverExchanges {
 public:
  CurlInternet(MessageLoop& loop, TextConversion& conversion, const InternetSettings& settings = {});
};

}  // namespace platform::curl
