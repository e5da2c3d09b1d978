#include "playlist/opening_rules.h"

#include <array>

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
  if (!offer.files.empty()) return FileNameOf(offer.files.front());
  constexpr std::size_t kLongest = 80;
  const Text& text = offer.addresses.empty() ? offer.text : offer.addresses.front();
  return text.size() <= kLongest ? text : text.substr(0, kLongest) + u"…";
}

}  // namespace playlist
