#include "recorder/station_address.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/text/numbers.h"
#include "app/text/text_helpers.h"
#include "app/text/text_utilities.h"
#include "playlist/local_playlist.h"
#include "stream/header_lines.h"
#include "stream/stream_address.h"
#include "stream/text_pieces.h"

namespace recorder {

using platform::CodePage;
using platform::Text;
using platform::TextView;

namespace {

// A header's bytes have come through the code page; servers send UTF-8 in them too.
Text DecodedHeader(platform::TextConversion& conversion, const Text& value) {
  return app::Decoded(conversion, conversion.WideCharToMultiByte(CodePage::kAnsi, value));
}

// The value of a header that may occur twice or have parameters.
Text FirstValue(const Text& value) {
  return Text(app::Trim(TextView(value).substr(0, value.find_first_of(u",;"))));
}

bool IsSound(TextView content_type) {
  constexpr std::array<TextView, 4> kNoSound = {u"mpegurl", u"scpls", u"xspf", u"html"};
  if (stream::StartsWithIgnoringCase(content_type, u"text/")) return false;
  for (const TextView part : kNoSound) {
    if (stream::ContainsIgnoringCase(content_type, part)) return false;
  }
  return true;
}

// The address in the form that the header query needs: it accepts only lower-case schemes, and no host
// without a path.
Text Askable(const Text& address) {
  if (!stream::OpenFlagsOf(address)) return address;
  const std::size_t host = address.find(u"://") + 3;
  const std::size_t host_end = std::min(address.find_first_of(u"/?#", host), address.size());
  const bool has_path = TextView(address).substr(host_end).starts_with(u'/');
  return stream::LowerCase(TextView(address).substr(0, host)) + address.substr(host, host_end - host) +
         (has_path ? u"" : u"/") + address.substr(host_end);
}

// Stations announce lengths too, for players that ask for one; their own headers distinguish them from files.
bool IsFile(const stream::clsFunkhaus& cFunkhaus) {
  const std::vector<Text> lines = app::Split(cFunkhaus.GetStreamQueryInfoRawCrLf(), stream::kCrLf);
  const auto has = [&lines](TextView beginning) {
    return std::any_of(lines.begin(), lines.end(), [beginning](const Text& line) {
      return stream::StartsWithIgnoringCase(line, beginning);
    });
  };
  return has(u"content-length:") && !has(u"icy-") && !has(u"ice-");
}

}  // namespace

Text AddressOf(stream::clsFunkhaus& cFunkhaus, platform::Files& files, platform::TextConversion& conversion,
               const Text& link) {
  if (playlist::IsPlaylistFileName(conversion, link) && files.PathFileExistsW(link)) {
    return Askable(Text(app::Trim(playlist::GetLocalPlaylistEntry(files, conversion, link, 1))));
  }
  if (!cFunkhaus.IsUrlPlaylist(link) || cFunkhaus.GetPlaylistNumberOfEntries() <= 0) return Askable(link);
  Text entry;
  Text ignored_title;
  cFunkhaus.GetPlaylistEntry(0, entry, ignored_title);
  return Askable(Text(app::Trim(app::FirstLine(entry))));
}

Text HostOf(const Text& address) {
  const TextView whole = address;
  const std::size_t scheme = whole.find(u"://");
  if (scheme == TextView::npos) return {};
  const TextView rest = whole.substr(scheme + 3);
  const TextView authority = rest.substr(0, rest.find_first_of(u"/?#"));
  const TextView host = authority.substr(authority.rfind(u'@') + 1);
  // The colons of an IPv6 address are inside brackets.
  return Text(host.substr(0, host.find(u':', host.starts_with(u'[') ? host.find(u']') : 0)));
}

StreamFacts FactsOf(const stream::clsFunkhaus& cFunkhaus, platform::TextConversion& conversion) {
  StreamFacts facts;
  facts.station = DecodedHeader(conversion, cFunkhaus.GetStreamQueryInfo(stream::kIcyName));
  facts.content_type = FirstValue(cFunkhaus.GetStreamQueryInfo(stream::kContentType));
  facts.is_sound = IsSound(facts.content_type);
  const Text metaint = FirstValue(cFunkhaus.GetStreamQueryInfo(stream::kIcyMetaint));
  if (app::ToInt32(metaint).value_or(0) > 0) facts.metaint = metaint;
  facts.is_file = IsFile(cFunkhaus);
  return facts;
}

}  // namespace recorder
