#include "platform/front/named_lines.h"

#include <algorithm>

namespace platform::front {
namespace {

constexpr controls::TextView kAfterName = u": ";

NamedLine LineOf(controls::TextView line, controls::LabelLook look) {
  const std::size_t end =
      look == controls::LabelLook::kNamedValues ? line.find(kAfterName) : controls::TextView::npos;
  if (end == controls::TextView::npos || end == 0) return {{}, controls::Text(line)};
  return {controls::Text(line.substr(0, end + 1)), controls::Text(line.substr(end + kAfterName.size()))};
}

}  // namespace

controls::Text Joined(const NamedLine& line) {
  return line.name.empty() ? line.value : line.name + u" " + line.value;
}

std::vector<NamedLine> LinesOf(controls::TextView text, controls::LabelLook look) {
  while (!text.empty() && (text.back() == u'\n' || text.back() == u'\r')) text.remove_suffix(1);
  std::vector<NamedLine> lines;
  for (;;) {
    const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
    lines.push_back(LineOf(text.substr(0, end), look));
    if (end == text.size()) return lines;
    text.remove_prefix(text.substr(end).starts_with(u"\r\n") ? end + 2 : end + 1);
  }
}

}  // namespace platform::front
