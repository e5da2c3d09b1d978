#pragma once
// The station file as a test reads it: sections, the program's keys, and everything else line by line.
// Not the INI engine, which it is compared with.

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "ports/text.h"
#include "ports/text_conversion.h"

namespace app {

/// Texts as a file in the code page returns them.
class FileText {
 public:
  explicit FileText(platform::TextConversion& conversion) : conversion_(conversion) {}

  /// A value.
  [[nodiscard]] platform::Text Value(platform::TextView value) const {
    const platform::Text stored = Trimmed(value);
    const bool quoted = stored.size() > 1 && stored.front() == stored.back() &&
                        (stored.front() == u'"' || stored.front() == u'\'');
    return quoted ? stored.substr(1, stored.size() - 2) : stored;
  }
  /// A section's name, in one form for all letter cases.
  [[nodiscard]] platform::Text Name(platform::TextView name) const {
    return conversion_.CharLowerW(Trimmed(name));
  }
  [[nodiscard]] platform::Text Decoded(const std::string& bytes) const {
    return conversion_.MultiByteToWideChar(platform::CodePage::kAnsi, bytes);
  }

 private:
  [[nodiscard]] platform::Text Trimmed(platform::TextView text) const {
    platform::Text line(text);
    std::erase_if(line, [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
    const auto first = line.find_first_not_of(u" \t");
    if (first == platform::Text::npos) return {};
    line = line.substr(first, line.find_last_not_of(u" \t") - first + 1);
    return Decoded(conversion_.WideCharToMultiByte(platform::CodePage::kAnsi, line));
  }

  platform::TextConversion& conversion_;
};

struct FileSection {
  std::map<platform::Text, platform::Text> keys;  ///< "Station", "Link", "Genre", "Favorit", "M3uNr"
  std::vector<platform::Text> foreign;            ///< every other line
  /// A key's value, empty when it is missing.
  [[nodiscard]] platform::Text Value(const platform::Text& key) const {
    const auto found = keys.find(key);
    return found == keys.end() ? platform::Text() : found->second;
  }
};

/// The sections by FileText::Name; no name occurs twice. What comes before the first one is not included.
inline std::map<platform::Text, FileSection> ReadStationFile(const FileText& form, const std::string& bytes) {
  std::map<platform::Text, FileSection> sections;
  FileSection* section = nullptr;
  const platform::Text text = form.Decoded(bytes);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(u"\r\n", at), text.size());
    const platform::Text line = text.substr(at, end - at);
    at = end + 2;
    if (line.starts_with(u"[")) {
      section = &sections[form.Name(platform::TextView(line).substr(1, line.rfind(u']') - 1))];
      continue;
    }
    if (section == nullptr) continue;
    const auto equals = line.find(u'=');
    const platform::Text key = line.substr(0, equals);
    const bool own =
        equals != platform::Text::npos &&
        (key == u"Station" || key == u"Link" || key == u"Genre" || key == u"Favorit" || key == u"M3uNr");
    if (own) {
      section->keys.try_emplace(key, form.Value(platform::TextView(line).substr(equals + 1)));
    } else {
      section->foreign.push_back(line);
    }
  }
  return sections;
}

}  // namespace app
