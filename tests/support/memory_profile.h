#pragma once
// INI files in memory, section by section and key by key, with the order in which keys were written.
// Not the INI format; tests of that use the real adapter and real files.

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ports/private_profile.h"

namespace test_support {

/// Every path is one file; sections and keys in the order in which they came, ASCII case folded.
class MemoryProfile : public platform::PrivateProfile {
 public:
  using Text = platform::Text;
  struct Write {
    Text section;
    std::optional<Text> key;
    std::optional<Text> value;
    Text path;
    friend bool operator==(const Write&, const Write&) = default;
  };
  struct Section {
    Text name;
    std::vector<std::pair<Text, Text>> keys;
  };

  std::uint32_t GetPrivateProfileStringW(const Text& section, const Text& key, const Text& default_value,
                                         std::span<char16_t> buffer, const Text& path) override {
    reads.push_back(path);
    if (open_read_groups == 0) ++reads_outside_groups;
    const Text* value = Find(section, key, path);
    const Text& result = value != nullptr ? *value : default_value;
    const std::size_t count = std::min(result.size(), buffer.size() - 1);
    std::copy_n(result.begin(), count, buffer.begin());
    buffer[count] = u'\0';
    return static_cast<std::uint32_t>(count);
  }

  bool WritePrivateProfileStringW(const Text& section, const std::optional<Text>& key,
                                  const std::optional<Text>& value, const Text& path) override {
    writes.push_back({section, key, value, path});
    if (fail_writes) return false;
    auto& sections = files[path];
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [&](const Section& entry) { return Fold(entry.name) == Fold(section); });
    if (!key) {
      if (found != sections.end()) sections.erase(found);
      return true;
    }
    Section& target = found != sections.end() ? *found : sections.emplace_back(Section{section, {}});
    const auto entry = std::find_if(target.keys.begin(), target.keys.end(),
                                    [&](const auto& pair) { return Fold(pair.first) == Fold(*key); });
    if (entry != target.keys.end()) {
      entry->second = value.value_or(u"");
    } else {
      target.keys.emplace_back(*key, value.value_or(u""));
    }
    return true;
  }

  std::uint32_t GetPrivateProfileSectionNamesA(std::span<char> buffer, const Text& path) override {
    section_buffers.push_back(buffer.size());
    std::string names;
    for (const Section& section : files[path]) {
      for (const char16_t unit : section.name) names.push_back(unit < 256 ? static_cast<char>(unit) : '?');
      names.push_back('\0');
    }
    const bool cut = names.size() + 1 > buffer.size();
    const std::size_t count = cut ? buffer.size() - 2 : names.size();
    std::copy_n(names.begin(), count, buffer.begin());
    const auto rest = buffer.subspan(count);
    std::fill(rest.begin(), rest.end(), '#');
    std::fill_n(rest.begin(), std::min<std::size_t>(cut ? 2 : 1, rest.size()), '\0');
    return static_cast<std::uint32_t>(count);
  }

  std::optional<platform::ProfileSection> CopySection(const Text& section, const Text& path) override {
    const auto& sections = files[path];
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [&](const Section& entry) { return Fold(entry.name) == Fold(section); });
    if (found == sections.end()) return std::nullopt;
    platform::ProfileSection copy{u"[" + found->name + u"]\n", std::nullopt};
    for (const auto& [key, value] : found->keys) copy.lines += key + u"=" + value + u"\n";
    if (found + 1 != sections.end()) copy.next = (found + 1)->name;
    return copy;
  }
  bool InsertSection(const platform::ProfileSection& section, const Text& path) override {
    if (fail_writes) return false;
    const std::size_t header_end = section.lines.find(u"]\n");
    Section inserted{section.lines.substr(1, header_end - 1), {}};
    for (std::size_t at = header_end + 2; at < section.lines.size();) {
      const std::size_t equals = section.lines.find(u'=', at);
      const std::size_t end = section.lines.find(u'\n', at);
      inserted.keys.emplace_back(section.lines.substr(at, equals - at),
                                 section.lines.substr(equals + 1, end - equals - 1));
      at = end + 1;
    }
    auto& sections = files[path];
    const auto next = std::find_if(sections.begin(), sections.end(), [&](const Section& entry) {
      return section.next && Fold(entry.name) == Fold(*section.next);
    });
    sections.insert(next, std::move(inserted));
    return true;
  }
  void BeginReadGroup() override { ++open_read_groups; }
  void EndReadGroup() override { --open_read_groups; }
  void BeginWriteGroup() override { ++open_groups; }
  bool EndWriteGroup() override {
    --open_groups;
    ++ended_groups;
    return !fail_writes;
  }

  /// Sets up a station or any other key without a trace in `writes`.
  void Set(const Text& path, const Text& section, const Text& key, const Text& value) {
    WritePrivateProfileStringW(section, key, value, path);
    writes.clear();
  }
  /// The value of a key; nothing when it is absent.
  std::optional<Text> Get(const Text& path, const Text& section, const Text& key) {
    const Text* value = Find(section, key, path);
    return value != nullptr ? std::optional<Text>(*value) : std::nullopt;
  }
  bool HasSection(const Text& path, const Text& section) {
    const auto& sections = files[path];
    return std::any_of(sections.begin(), sections.end(),
                       [&](const Section& entry) { return Fold(entry.name) == Fold(section); });
  }

  std::map<Text, std::vector<Section>> files;
  std::vector<Write> writes;
  std::vector<Text> reads;
  std::vector<std::size_t> section_buffers;
  bool fail_writes = false;
  int open_read_groups = 0;
  int reads_outside_groups = 0;
  int open_groups = 0;
  int ended_groups = 0;

 private:
  static Text Fold(Text text) {
    for (char16_t& unit : text) {
      if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + 32);
    }
    return text;
  }
  const Text* Find(const Text& section, const Text& key, const Text& path) {
    for (const Section& entry : files[path]) {
      if (Fold(entry.name) != Fold(section)) continue;
      for (const auto& [name, value] : entry.keys) {
        if (Fold(name) == Fold(key)) return &value;
      }
      return nullptr;
    }
    return nullptr;
  }
};

}  // namespace test_support
