#include "platform/ini/ini_line.h"

namespace platform::ini {
namespace {

constexpr TextView kBlanks = u" \t";

}  // namespace

TextView TrimBlanks(TextView text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == TextView::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

TextView RemoveQuotes(TextView value) {
  if (value.size() < 2 || value.front() != value.back()) return value;
  if (value.front() != u'"' && value.front() != u'\'') return value;
  return value.substr(1, value.size() - 2);
}

IniLine ReadIniLine(TextView line) {
  line = TrimBlanks(line);
  if (line.empty()) return {};
  if (line.front() == u';') return {IniLineKind::kOther, {}, {}};
  if (line.front() == u'[') {
    const auto end = line.rfind(u']');
    if (end != TextView::npos) return {IniLineKind::kSection, TrimBlanks(line.substr(1, end - 1)), {}};
  }
  const auto equals = line.find(u'=');
  if (equals == TextView::npos) return {IniLineKind::kOther, {}, {}};
  return {IniLineKind::kKey, TrimBlanks(line.substr(0, equals)), TrimBlanks(line.substr(equals + 1))};
}

}  // namespace platform::ini
