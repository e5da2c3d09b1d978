#include "stream/record_name.h"

#include <algorithm>
#include <array>

#include "app/text/text_helpers.h"

namespace stream {
namespace {

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

bool IsForbidden(char16_t unit) {
  constexpr TextView kForbidden = u"/\\:*?\"<>|";
  const bool is_control = unit < 0x20 || (unit >= 0x7F && unit <= 0x9F);
  return is_control || kForbidden.find(unit) != TextView::npos;
}

// 2 for a whole surrogate pair at `at`, otherwise 1.
std::size_t UnitsOfCharacter(TextView text, std::size_t at) {
  const bool is_pair = IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
  return is_pair ? 2 : 1;
}

std::size_t Utf8Bytes(TextView text, std::size_t at) {
  if (UnitsOfCharacter(text, at) == 2) return 4;
  if (text[at] < 0x80) return 1;
  return text[at] < 0x800 ? 2 : 3;
}

Text WithAllowedCharacters(TextView title) {
  Text name;
  for (std::size_t i = 0; i < title.size();) {
    const std::size_t units = UnitsOfCharacter(title, i);
    const bool is_half = units == 1 && (IsHighSurrogate(title[i]) || IsLowSurrogate(title[i]));
    name += is_half || IsForbidden(title[i]) ? TextView(u"_") : title.substr(i, units);
    i += units;
  }
  return name;
}

void DropTrailingBlanksAndDots(Text& name) {
  const std::size_t last = name.find_last_not_of(u" .");
  name.erase(last == Text::npos ? 0 : last + 1);
}

void CutToBytes(Text& name, std::size_t longest) {
  std::size_t end = 0;
  std::size_t bytes = 0;
  while (end < name.size()) {
    bytes += Utf8Bytes(name, end);
    if (bytes > longest) break;
    end += UnitsOfCharacter(name, end);
  }
  name.erase(end);
}

// Windows takes these names for devices, whatever extension follows the first dot.
bool IsDeviceName(TextView name) {
  constexpr std::array<TextView, 6> kDevices = {u"con", u"prn", u"aux", u"nul", u"conin$", u"conout$"};
  const Text stem = LowerCase(app::Trim(name.substr(0, name.find(u'.'))));
  if (std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end()) return true;
  const bool is_port_name = stem.starts_with(u"com") || stem.starts_with(u"lpt");
  constexpr TextView kPortNumbers = u"0123456789\u00B9\u00B2\u00B3";
  return is_port_name && stem.size() == 4 && kPortNumbers.find(stem[3]) != TextView::npos;
}

// The device name is what comes before the first dot, so the mark must go there.
void SpoilDeviceName(Text& name) {
  if (IsDeviceName(name)) name.insert(std::min(name.find(u'.'), name.size()), u"_");
}

}  // namespace

Text ExtensionOf(TextView sContentType) {
  const Text type = LowerCase(sContentType);
  if (type == u"audio/mpeg") return u".mp3";
  if (type == u"audio/aac" || type == u"audio/aacp" || type == u"audio/mp4") return u".m4a";
  if (type == u"audio/ogg" || type == u"application/ogg") return u".ogg";
  return {};
}

Text RecordFileName(TextView title, TextView extension, std::size_t longest) {
  // Only the end of the whole name must be neither; before an extension they distinguish titles.
  const auto tidy_end = [extension](Text& end) {
    if (extension.empty()) DropTrailingBlanksAndDots(end);
  };
  Text name = WithAllowedCharacters(title);
  tidy_end(name);
  SpoilDeviceName(name);
  CutToBytes(name, longest > extension.size() ? longest - extension.size() : 0);
  tidy_end(name);
  if (name.empty()) name = u"_";
  return name + Text(extension);
}

}  // namespace stream
