#pragma once
// Which adapters the tests of the internet's contracts have before them on Linux, and their servers. Not for
// tests of one adapter.

#include <memory>
#include <string>

#include "platform/curl/charsets.h"
#include "platform/curl/curl_internet.h"
#include "platform/curl/curl_xml_http_request.h"
#include "platform/curl/transfer.h"
#include "platform/icu/text_conversion.h"
#include "platform/posix/clock.h"
#include "tests/support/icecast_server.h"
#include "tests/support/media_files.h"
#include "tests/support/scripted_icy_server.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tls_front.h"

namespace under_test {

using NetClock = platform::posix::PosixClock;
using IcyServer = test_support::ScriptedIcyServer;
using Internet = platform::curl::CurlInternet;
using InternetSettings = platform::curl::InternetSettings;
using NetText = platform::icu::IcuTextConversion;
using TlsFront = test_support::TlsFront;
using XmlHttpRequests = platform::curl::CurlXmlHttpRequests;
using platform::curl::DecodeCharset;

inline std::unique_ptr<platform::http::Exchange> MakeExchange(const platform::http::ExchangeOptions& asked) {
  platform::curl::TransferOptions options;
  static_cast<platform::http::ExchangeOptions&>(options) = asked;
  return std::make_unique<platform::curl::Transfer>(options);
}

/// Makes the adapters trust a front's certificate, while it lives.
class Trust {
 public:
  static bool IsPossible() { return true; }
  explicit Trust(const TlsFront& front) { settings_.trusted_certificates = front.CertificateFile(); }
  [[nodiscard]] const InternetSettings& Settings() const { return settings_; }

 private:
  InternetSettings settings_;
};

class Icecast {
 public:
  std::string FeedTone(const std::string& mount) {
    server_.Feed(mount, test_support::MakeTone(music_, "tone.mp3", "libmp3lame"), "mp3", "audio/mpeg");
    return server_.Url(mount);
  }
  void SetTitle(const std::string& mount, const std::string& title) { server_.SetTitle(mount, title); }

 private:
  test_support::TempFolder music_;
  test_support::IcecastServer server_;
};

/// Whether the library notices whatever is wrong with an answer.
inline bool NoticesEveryFault() { return true; }
/// Whether what is given up has its connection closed at once, even when the server is silent.
inline bool EndsSilentConnections() { return true; }
/// Whether a playlist request that is given up has its connection closed.
inline bool EndsPlaylistRequests() { return true; }
/// Whether the request has the given lines and path as they are, and no others.
inline bool SendsLinesAsGiven() { return true; }
/// Whether the playlist request reports each state as it comes.
inline bool ReportsEveryState() { return true; }
/// Whether the playlist request ends by how much has come, and not only by how long that takes.
inline bool CountsWhatComes() { return true; }
/// Whether the playlist request can be told to ignore certificate errors.
inline bool IgnoresCertificates() { return true; }

}  // namespace under_test
