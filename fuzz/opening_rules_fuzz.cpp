// Feeds arbitrary offers to the rules for what is dropped or given at the start. The input's pieces between
// line feeds are files ("f..."), addresses ("a...") and the text (everything else). What must hold: at most
// one thing is opened; a link is a web address without blanks and control characters, of bounded length, and
// was in the offer; a list was the only file and keeps its path; and what the user is told of an offer is one
// bounded line without control characters that splits no character.

#include "controls/drop_offer.h"
#include "fuzz/fuzz_input.h"
#include "playlist/opening_rules.h"
#include "playlist/web_address.h"

namespace {

using fuzz::Require;
using platform::Text;
using playlist::Opening;

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

controls::DropOffer OfferOf(std::string_view input) {
  controls::DropOffer offer;
  for (const std::string_view piece : fuzz::Pieces(input, '\n')) {
    if (piece.starts_with('f')) {
      offer.files.push_back(fuzz::AsText(piece.substr(1)));
    } else if (piece.starts_with('a')) {
      offer.addresses.push_back(fuzz::AsText(piece.substr(1)));
    } else {
      offer.text = fuzz::AsText(piece);
    }
  }
  return offer;
}

void CheckOpening(const controls::DropOffer& offer, const Opening& opening) {
  Require(offer.files.size() + offer.addresses.size() <= 1);
  if (opening.kind == Opening::Kind::kList) return Require(opening.target == offer.files.at(0));
  Require(offer.files.empty());
  const Text& given = offer.addresses.empty() ? offer.text : offer.addresses.front();
  Require(given.find(opening.target) != Text::npos);
  Require(playlist::IsWebAddress(opening.target) && opening.target.size() <= playlist::kLongestAddress);
  Require(opening.target.find_first_of(u" \t\r\n") == Text::npos);
}

void CheckName(const controls::DropOffer& offer) {
  constexpr std::size_t kLongestName = 256;
  constexpr std::size_t kLongestText = 81;
  const Text name = playlist::NameOfOffer(offer);
  Require(name.size() <= (offer.files.empty() ? kLongestText : kLongestName));
  Require(!fuzz::HoldsControl(name));
  if (!name.ends_with(u'…') || name.size() < 2 || !IsHighSurrogate(name[name.size() - 2])) return;
  // A half character before the dots was one before the cut.
  const Text& whole = !offer.files.empty()      ? offer.files.front()
                      : offer.addresses.empty() ? offer.text
                                                : offer.addresses.front();
  const Text file = offer.files.empty() ? whole : playlist::FileNameOf(whole);
  Require(file.size() < name.size() || !IsLowSurrogate(file[name.size() - 1]));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const controls::DropOffer offer = OfferOf(fuzz::AsBytes(data, size));
  if (const auto opening = playlist::WhatToOpen(offer)) CheckOpening(offer, *opening);
  CheckName(offer);
  return 0;
}
