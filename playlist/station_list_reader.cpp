#include "playlist/station_list_reader.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "app/text/text_helpers.h"
#include "playlist/web_address.h"

namespace playlist {
namespace {

using app::Text;
using app::TextView;
using platform::CodePage;

enum class ByteOrder { kLittle, kBig };

Text TextOfUtf16(std::string_view bytes, ByteOrder order) {
  Text text;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    text += order == ByteOrder::kLittle ? static_cast<char16_t>(second << 8 | first)
                                        : static_cast<char16_t>(first << 8 | second);
  }
  return text;
}

Text Decode(platform::TextConversion& conversion, std::string_view bytes) {
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  if (bytes.starts_with("\xFF\xFE")) return TextOfUtf16(bytes.substr(2), ByteOrder::kLittle);
  if (bytes.starts_with("\xFE\xFF")) return TextOfUtf16(bytes.substr(2), ByteOrder::kBig);
  if (bytes.starts_with(kUtf8Mark)) {
    return conversion.MultiByteToWideChar(CodePage::kUtf8, bytes.substr(kUtf8Mark.size()));
  }
  Text text = conversion.MultiByteToWideChar(CodePage::kUtf8, bytes);
  // Malformed input does not survive the round trip unchanged.
  if (conversion.WideCharToMultiByte(CodePage::kUtf8, text) == bytes) return text;
  return conversion.MultiByteToWideChar(CodePage::kAnsi, bytes);
}

/// Walks through the lines that are not blank, without the blanks at their ends.
class FilledLines {
 public:
  explicit FilledLines(TextView text) : rest_(text) {}

  std::optional<TextView> Next() {
    while (!rest_.empty()) {
      const auto end = std::min(rest_.find_first_of(u"\r\n"), rest_.size());
      const TextView line = app::TrimControls(rest_.substr(0, end));
      rest_.remove_prefix(std::min(end + 1, rest_.size()));
      if (!line.empty()) return line;
    }
    return std::nullopt;
  }

 private:
  TextView rest_;
};

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }

Text NameFrom(TextView given, TextView link) {
  const TextView trimmed = app::TrimControls(given);
  TextView name = trimmed.substr(0, kLongestStationName);
  if (name.size() < trimmed.size() && IsHighSurrogate(name.back())) name.remove_suffix(1);
  name = app::TrimControls(name);
  if (name.empty()) return NameFrom(HostOf(link), u"");
  Text clean(name);
  std::replace_if(
      clean.begin(), clean.end(), [](char16_t unit) { return unit < u' ' || unit == u'\u007F'; }, u' ');
  return clean;
}

void Add(StationList& list, TextView name, TextView link) {
  if (list.stations.size() == kMostStations) {
    list.is_cut = true;
    return;
  }
  list.stations.push_back({NameFrom(name, link), Text(link)});
}

/// The text after the first comma outside quotes; an unclosed quote does not count.
TextView BehindComma(TextView info) {
  std::size_t at = info.find_first_of(u",\"");
  while (at != TextView::npos && info[at] == u'"') {
    const auto closing = info.find(u'"', at + 1);
    at = closing == TextView::npos ? info.find(u',', at) : info.find_first_of(u",\"", closing + 1);
  }
  return at == TextView::npos ? TextView() : info.substr(at + 1);
}

StationList ReadM3u(TextView text) {
  constexpr TextView kInfo = u"#extinf:";
  StationList list;
  TextView name;
  FilledLines lines(text);
  while (const auto line = lines.Next()) {
    if (StartsWithIgnoringCase(*line, u"#ext-x-targetduration") ||
        StartsWithIgnoringCase(*line, u"#ext-x-stream-inf")) {
      return {StationList::Kind::kStream, {}, false};
    }
    if (StartsWithIgnoringCase(*line, kInfo)) name = BehindComma(line->substr(kInfo.size()));
    if (line->starts_with(u'#')) continue;
    if (IsWebAddress(*line)) Add(list, name, *line);
    name = {};
  }
  return list;
}

struct PlsLine {
  enum class Key { kFile, kTitle };
  Key key;
  std::uint32_t number;
  TextView value;
};

/// The number that a text of up to nine digits represents.
std::optional<std::uint32_t> NumberOf(TextView digits) {
  constexpr std::size_t kMostDigits = 9;
  if (digits.empty() || digits.size() > kMostDigits) return std::nullopt;
  std::uint32_t number = 0;
  for (const char16_t digit : digits) {
    if (digit < u'0' || digit > u'9') return std::nullopt;
    number = number * 10 + static_cast<std::uint32_t>(digit - u'0');
  }
  return number;
}

std::optional<PlsLine> PlsLineOf(TextView line) {
  const auto equals = line.find(u'=');
  if (equals == TextView::npos) return std::nullopt;
  constexpr std::pair<TextView, PlsLine::Key> kKeys[] = {{u"file", PlsLine::Key::kFile},
                                                         {u"title", PlsLine::Key::kTitle}};
  const TextView key = app::TrimControls(line.substr(0, equals));
  for (const auto& [word, kind] : kKeys) {
    if (!StartsWithIgnoringCase(key, word)) continue;
    const auto number = NumberOf(key.substr(word.size()));
    if (number) return PlsLine{kind, *number, app::TrimControls(line.substr(equals + 1))};
  }
  return std::nullopt;
}

/// Decided by the first line that is not a comment; a list that lost its header counts too.
bool IsPls(TextView text) {
  FilledLines lines(text);
  while (const auto line = lines.Next()) {
    if (line->starts_with(u'#') || line->starts_with(u';')) continue;
    return StartsWithIgnoringCase(*line, u"[playlist]") ||
           StartsWithIgnoringCase(*line, u"numberofentries") || PlsLineOf(*line).has_value();
  }
  return false;
}

StationList ReadPls(TextView text) {
  StationList list;
  std::map<std::uint32_t, TextView> links;
  std::map<std::uint32_t, TextView> titles;
  FilledLines lines(text);
  while (const auto line = lines.Next()) {
    const auto entry = PlsLineOf(*line);
    if (!entry) continue;
    const bool is_link = entry->key == PlsLine::Key::kFile;
    if (is_link && !IsWebAddress(entry->value)) continue;
    auto& known = is_link ? links : titles;
    if (known.size() < kMostStations) {
      known.emplace(entry->number, entry->value);
    } else if (is_link && !known.contains(entry->number)) {
      list.is_cut = true;
    }
  }
  for (const auto& [number, link] : links) {
    const auto title = titles.find(number);
    Add(list, title == titles.end() ? TextView() : title->second, link);
  }
  return list;
}

}  // namespace

StationList ReadStationList(platform::TextConversion& conversion, std::string_view bytes) {
  const Text text = Decode(conversion, bytes);
  if (!FilledLines(text).Next()) return {StationList::Kind::kEmpty, {}, false};
  return IsPls(text) ? ReadPls(text) : ReadM3u(text);
}

}  // namespace playlist
