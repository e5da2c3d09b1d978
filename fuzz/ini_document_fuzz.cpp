// Feeds arbitrary files to the INI document and holds it to its promises: what is not changed keeps its
// bytes, a value that was written can be read, and writing it once more changes nothing.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/icu/text_conversion.h"
#include "platform/ini/ini_document.h"
#include "platform/ini/ini_line.h"

namespace {

using platform::Text;
using platform::ini::IniChange;
using platform::ini::IniDocument;

void Require(bool promise) {
  if (!promise) std::abort();
}

/// Draws names and values from the file itself, so that edits meet what is there.
class Draws {
 public:
  explicit Draws(std::string_view file) : state_(std::hash<std::string_view>()(file) | 1U) {}
  std::size_t Below(std::size_t bound) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return (state_ >> 33U) % bound;
  }
  Text Pick(const std::vector<Text>& texts) { return texts[Below(texts.size())]; }

 private:
  std::uint64_t state_;
};

/// Everything of `before` outside one run of bytes is still there, and that run lies within one line.
void RequireOneChangedLine(std::string_view before, std::string_view after) {
  std::size_t front = 0;
  while (front < before.size() && front < after.size() && before[front] == after[front]) ++front;
  std::size_t back = 0;
  while (back < before.size() - front && back < after.size() - front &&
         before[before.size() - 1 - back] == after[after.size() - 1 - back]) {
    ++back;
  }
  const std::string_view changed = before.substr(front, before.size() - front - back);
  const bool is_utf16 = before.starts_with("\xFF\xFE");
  Require(is_utf16 || changed.find_first_of("\r\n") == std::string_view::npos);
}

std::vector<Text> KeysIn(std::string_view file, platform::TextConversion& conversion) {
  std::vector<Text> keys{u"Link", u"Genre", u"neu"};
  for (std::size_t at = 0; at < file.size() && keys.size() < 40;) {
    const std::size_t end = std::min(file.find_first_of("\r\n", at), file.size());
    const Text line = conversion.MultiByteToWideChar(platform::CodePage::kAnsi, file.substr(at, end - at));
    keys.emplace_back(platform::ini::ReadIniLine(line).name);
    at = end + 1;
  }
  return keys;
}

void Set(IniDocument& document, platform::TextConversion& conversion, const Text& section, const Text& key,
         const Text& value) {
  const std::string before = document.Bytes();
  const IniChange change = document.SetValue(section, key, value);
  const std::string after = document.Bytes();
  if (change != IniChange::kMade) {
    Require(before == after);
    return;
  }
  Require(before != after);
  RequireOneChangedLine(before, after);
  const auto written = document.Value(section, key);
  Require(written.has_value());
  Require(IniDocument(conversion, after).Value(section, key) == written);
  Require(document.SetValue(section, key, value) == IniChange::kNone);
  Require(document.Bytes() == after);
}

void Delete(IniDocument& document, const Text& section, const Text* key) {
  const std::string before = document.Bytes();
  const auto names = document.SectionNames().size();
  const IniChange change =
      key == nullptr ? document.DeleteSection(section) : document.DeleteKey(section, *key);
  const std::string after = document.Bytes();
  Require(change != IniChange::kRefused);
  Require((change == IniChange::kMade) == (after.size() < before.size()));
  Require(change == IniChange::kMade || before == after);
  Require(document.SectionNames().size() == names - (key == nullptr && change == IniChange::kMade ? 1 : 0));
}

void DeleteAndPutBack(IniDocument& document, const Text& section) {
  const auto copy = document.CopySection(section);
  Require((document.DeleteSection(section) == IniChange::kMade) == copy.has_value());
  if (!copy) return;
  const auto names = document.SectionNames().size();
  Require(document.InsertSection(*copy) == IniChange::kMade);
  Require(document.SectionNames().size() == names + 1);
  Require(document.CopySection(section).has_value());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string file(reinterpret_cast<const char*>(data), size);
  platform::icu::IcuTextConversion conversion;
  IniDocument document(conversion, file);
  std::vector<Text> sections = document.SectionNames();
  const std::vector<Text> keys = KeysIn(file, conversion);
  for (const Text& section : sections) {
    for (const Text& key : keys) document.Value(section, key);
  }
  Require(document.Bytes() == file);

  sections.insert(sections.end(), {u"", u"Größe", u"Ωmega", u"a]b"});
  const std::vector<Text> values{u"", u"1", u"  \"x\" ", u"Ω ü", u"[a]", u"]=;'", keys.back()};
  Draws draws(file);
  for (int step = 0; step < 8; ++step) {
    const Text section = draws.Pick(sections);
    const Text key = draws.Pick(keys);
    switch (draws.Below(7)) {
      case 0:
        Delete(document, section, nullptr);
        break;
      case 1:
        Delete(document, section, &key);
        break;
      case 2:
        DeleteAndPutBack(document, section);
        break;
      default:
        Set(document, conversion, section, key, draws.Pick(values));
    }
  }
  return 0;
}
