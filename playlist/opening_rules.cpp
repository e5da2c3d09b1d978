#include "playlist/opening_rules.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "app/text/text_helpers.h"
#include "playlist/web_address.h"

namespace playlist {
namespace {

using app::Text;
using app::TextView;

bool IsStationList(TextView path) {
  constexpr std::array kEndings = {TextView(u".m3u"), TextView(u".m3u8"), TextView(u".pls")};
  for (const TextView ending : kEndings) {
    // A file that is called just ".m3u" has a name without an ending.
    const Text name = FileNameOf(path);
    if (name.size() <= ending.size()) continue;
    const TextView end = TextView(name).substr(name.size() - ending.size());
    if (StartsWithIgnoringCase(end, ending)) return true;
  }
  return false;
}

std::optional<Opening> Link(TextView text) {
  const TextView link = app::TrimControls(text);
  if (!IsWebAddress(link) || link.find(u' ') != TextView::npos) return std::nullopt;
  return Opening{Opening::Kind::kLink, Text(link)};
}

/// At most `longest` units and dots, without control characters and without half of a character at the cut.
Text OneLine(TextView text, std::size_t longest) {
  const bool is_cut = text.size() > longest;
  const bool splits = is_cut && (text[longest] & 0xFC00) == 0xDC00 && (text[longest - 1] & 0xFC00) == 0xD800;
  Text line(text.substr(0, splits ? longest - 1 : longest));
  std::replace_if(
      line.begin(), line.end(),
      [](char16_t unit) { return unit < u' ' || (unit >= u'\u007F' && unit <= u'\u009F'); }, u' ');
  return is_cut ? line + u"…" : line;
}

}  // namespace

Text FileNameOf(TextView path) { return Text(path.substr(path.find_last_of(u"\\/") + 1)); }

std::optional<Opening> WhatToOpen(const controls::DropOffer& offer) {
  const auto count = offer.files.size() + offer.addresses.size();
  if (count > 1) return std::nullopt;
  if (count == 0) return Link(offer.text);
  if (offer.files.empty()) return Link(offer.addresses.front());
  if (!IsStationList(offer.files.front())) return std::nullopt;
  return Opening{Opening::Kind::kList, offer.files.front()};
}

Text NameOfOffer(const controls::DropOffer& offer) {
  constexpr std::size_t kLongestName = 255;
  constexpr std::size_t kLongestText = 80;
  if (!offer.files.empty()) return OneLine(FileNameOf(offer.files.front()), kLongestName);
  return OneLine(offer.addresses.empty() ? offer.text : offer.addresses.front(), kLongestText);
}

}  // namespace playlist
