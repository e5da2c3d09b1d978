#include "stream/text_pieces.h"

#include <algorithm>

namespace stream {
namespace {

char16_t LowerUnit(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

bool SameIgnoringCase(char16_t left, char16_t right) { return LowerUnit(left) == LowerUnit(right); }

}  // namespace

std::optional<TextView> PieceOf(TextView text, char16_t separator, std::size_t index) {
  if (text.empty()) return std::nullopt;
  for (; index > 0; --index) {
    const std::size_t end = text.find(separator);
    if (end == TextView::npos) return std::nullopt;
    text.remove_prefix(end + 1);
  }
  return text.substr(0, text.find(separator));
}

Text RemoveAll(TextView text, TextView unwanted) {
  Text rest;
  while (true) {
    const std::size_t found = text.find(unwanted);
    rest += text.substr(0, found);
    if (found == TextView::npos) return rest;
    text.remove_prefix(found + unwanted.size());
  }
}

Text LowerCase(TextView text) {
  Text lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(), LowerUnit);
  return lowered;
}

bool EqualsIgnoringCase(TextView text, TextView other) {
  return std::equal(text.begin(), text.end(), other.begin(), other.end(), SameIgnoringCase);
}

bool StartsWithIgnoringCase(TextView text, TextView prefix) {
  return EqualsIgnoringCase(text.substr(0, prefix.size()), prefix);
}

bool ContainsIgnoringCase(TextView text, TextView wanted) {
  return std::search(text.begin(), text.end(), wanted.begin(), wanted.end(), SameIgnoringCase) != text.end();
}

}  // namespace stream
