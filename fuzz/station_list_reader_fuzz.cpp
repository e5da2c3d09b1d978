// Feeds arbitrary files to the reader of station lists: what it finds stays bounded and is what it promises,
// and the stations come back from being written as either kind of list.

#include <algorithm>
#include <string>

#include "fuzz/fuzz_input.h"
#include "platform/icu/text_conversion.h"
#include "playlist/station_list_reader.h"
#include "playlist/web_address.h"

namespace {

using fuzz::Require;
using platform::Text;
using playlist::ListedStation;
using playlist::StationList;

void CheckStation(const ListedStation& station) {
  Require(!station.name.empty() && station.name.size() <= playlist::kLongestStationName);
  Require(std::none_of(station.name.begin(), station.name.end(),
                       [](char16_t unit) { return unit < u' ' || unit == u'\u007F'; }));
  Require(playlist::IsWebAddress(station.link));
}

std::string Utf16(const Text& text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

Text Digits(std::size_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

Text AsM3u(const StationList& list) {
  Text text = u"#EXTM3U\n";
  for (const ListedStation& station : list.stations) {
    text += u"#EXTINF:-1 x=\"a,b\"," + station.name + u"\n" + station.link + u"\n";
  }
  return text;
}

Text AsPls(const StationList& list) {
  Text text = u"[playlist]\r\n";
  for (std::size_t at = 0; at < list.stations.size(); ++at) {
    text += u"Title" + Digits(at) + u"=" + list.stations[at].name + u"\r\n";
    text += u"File" + Digits(at) + u"=" + list.stations[at].link + u"\r\n";
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  platform::icu::IcuTextConversion conversion;
  const StationList list = playlist::ReadStationList(conversion, fuzz::AsBytes(data, size));
  Require(list.stations.size() <= std::min(size, playlist::kMostStations));
  Require(list.stations.empty() || list.kind == StationList::Kind::kList);
  for (const ListedStation& station : list.stations) CheckStation(station);
  if (list.stations.empty()) return 0;
  Require(playlist::ReadStationList(conversion, Utf16(AsM3u(list))).stations == list.stations);
  Require(playlist::ReadStationList(conversion, Utf16(AsPls(list))).stations == list.stations);
  return 0;
}
