#include "ui/title_parts.h"

namespace ui {

using app::Text;
using app::TextView;

namespace {

TextView WithoutBlanks(TextView text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == TextView::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

}  // namespace

TitleParts SplitTitle(TextView sent) {
  constexpr TextView kBetween = u" - ";
  const std::size_t at = sent.find(kBetween);
  if (at != TextView::npos) {
    const TextView artist = WithoutBlanks(sent.substr(0, at));
    const TextView title = WithoutBlanks(sent.substr(at + kBetween.size()));
    if (!artist.empty() && !title.empty()) return {Text(artist), Text(title)};
  }
  return {Text(), Text(WithoutBlanks(sent))};
}

}  // namespace ui
