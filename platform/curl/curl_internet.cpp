#include "platform/curl/curl_internet.h"

#include <memory>

#include "platform/curl/transfer.h"

namespace platform::curl {

CurlInternet::CurlInternet(MessageLoop& loop, TextConversion& conversion, const InternetSettings& settings)
    : InternetOverExchanges(loop, conversion, settings,
                            [trusted = settings.trusted_certificates](const http::ExchangeOptions& asked) {
                              TransferOptions options;
                              static_cast<http::ExchangeOptions&>(options) = asked;
                              options.trusted_certificates = trusted;
                              return std::make_unique<Transfer>(options);
                            }) {}

}  // namespace platform::curl
