#include "app/text/text_helpers.h"

#include <cstddef>

namespace app {

TextView Trim(TextView text) {
  const auto first = text.find_first_not_of(u' ');
  if (first == TextView::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

TextView TrimControls(TextView text) {
  const auto is_dropped = [](char16_t unit) { return unit <= u' ' || unit == 0x7F; };
  while (!text.empty() && is_dropped(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_dropped(text.back())) text.remove_suffix(1);
  return text;
}

std::vector<Text> Split(TextView text, TextView separator) {
  std::vector<Text> pieces;
  if (text.empty()) return pieces;
  std::size_t from = 0;
  if (!separator.empty()) {
    for (auto found = text.find(separator); found != TextView::npos; found = text.find(separator, from)) {
      pieces.emplace_back(text.substr(from, found - from));
      from = found + separator.size();
    }
  }
  pieces.emplace_back(text.substr(from));
  return pieces;
}

TextView FirstLine(TextView text) { return text.substr(0, text.find(u'\n')); }

Text Join(std::span<const Text> pieces, TextView separator) {
  Text joined;
  for (std::size_t index = 0; index < pieces.size(); ++index) {
    if (index > 0) joined.append(separator);
    joined.append(pieces[index]);
  }
  return joined;
}

}  // namespace app
