#pragma once
// Which adapters the tests of the internet's contracts have before them on Windows, and their servers. Not
// for tests of one adapter.

#include "platform/win32/base/windows_api.h"

#include <wincrypt.h>

#include <memory>
#include <string>

#include "platform/win32/internet/charsets.h"
#include "platform/win32/internet/web_exchange.h"
#include "platform/win32/internet/win32_internet.h"
#include "platform/win32/internet/win32_xml_http_request.h"
#include "platform/win32/system/clock.h"
#include "platform/win32/text/text_conversion.h"
#include "tests/support/remote/remote_servers.h"

namespace under_test {

using NetClock = platform::win32::Win32Clock;
using Icecast = test_support::RemoteIcecastServer;
using IcyServer = test_support::RemoteIcyServer;
using Internet = platform::win32::Win32Internet;
using InternetSettings = platform::http::InternetSettings;
using NetText = platform::win32::Win32TextConversion;
using TlsFront = test_support::RemoteTlsFront;
using XmlHttpRequests = platform::win32::Win32XmlHttpRequests;
using platform::win32::DecodeCharset;

inline std::unique_ptr<platform::http::Exchange> MakeExchange(
    const platform::http::ExchangeOptions& options) {
  return std::make_unique<platform::win32::WebExchange>(options);
}

inline bool IsWine() {
  return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

/// Makes the adapters trust a front's certificate, while it lives: it is one of the user's authorities.
class Trust {
 public:
  /// In Wine the user's authorities do not count.
  static bool IsPossible() { return !IsWine(); }
  explicit Trust(const TlsFront& front) : store_(::CertOpenSystemStoreW(0, L"ROOT")) {
    const std::string& pem = front.TrustedPem();
    DWORD size = 0;
    ::CryptStringToBinaryA(pem.data(), 0, CRYPT_STRING_BASE64HEADER, nullptr, &size, nullptr, nullptr);
    std::string bytes(size, '\0');
    auto* const encoded = reinterpret_cast<BYTE*>(bytes.data());
    ::CryptStringToBinaryA(pem.data(), 0, CRYPT_STRING_BASE64HEADER, encoded, &size, nullptr, nullptr);
    ::CertAddEncodedCertificateToStore(store_, X509_ASN_ENCODING, encoded, size, CERT_STORE_ADD_ALWAYS,
                                       &certificate_);
  }
  ~Trust() {
    if (certificate_ != nullptr) ::CertDeleteCertificateFromStore(certificate_);
    ::CertCloseStore(store_, 0);
  }
  Trust(const Trust&) = delete;
  Trust& operator=(const Trust&) = delete;
  [[nodiscard]] InternetSettings Settings() const { return {}; }

 private:
  HCERTSTORE store_;
  PCCERT_CONTEXT certificate_ = nullptr;
};

/// Whether the library notices whatever is wrong with an answer. In Wine it does not know
/// another status line than HTTP's, nor see that a header has been cut or a body without a length.
inline bool NoticesEveryFault() { return !IsWine(); }
/// Whether what is given up has its connection closed at once, even when the server is silent. In Wine
/// nothing ends a read.
inline bool EndsSilentConnections() { return !IsWine(); }
/// Whether a playlist request that is given up has its connection closed. In Wine it is read on.
inline bool EndsPlaylistRequests() { return !IsWine(); }
/// Whether the request has the given lines and path as they are, and no others. The system adds lines, and
/// Wine puts a blank after each colon and goes through "..".
inline bool SendsLinesAsGiven() { return false; }
/// Whether the playlist request reports each state as it comes. Wine's collects the body first.
inline bool ReportsEveryState() { return !IsWine(); }
/// Whether the playlist request ends by how much has come, and not only by how long that takes.
inline bool CountsWhatComes() { return false; }
/// Whether the playlist request can be told to ignore certificate errors. Wine's cannot.
inline bool IgnoresCertificates() { return !IsWine(); }

}  // namespace under_test
