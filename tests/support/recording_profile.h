#pragma once
// INI values in memory, by path, section and key; keeps what was asked and written.
// Not the INI format: names match exactly.

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <tuple>
#include <vector>

#include "ports/private_profile.h"

namespace test_support {

class RecordingProfile : public platform::PrivateProfile {
 public:
  struct Read {
    platform::Text section, key, default_value;
    std::size_t buffer_size;
    platform::Text path;
    friend bool operator==(const Read&, const Read&) = default;
  };
  struct Write {
    platform::Text section;
    std::optional<platform::Text> key, value;
    platform::Text path;
    friend bool operator==(const Write&, const Write&) = default;
  };

  std::uint32_t GetPrivateProfileStringW(const platform::Text& section, const platform::Text& key,
                                         const platform::Text& default_value, std::span<char16_t> buffer,
                                         const platform::Text& path) override {
    reads.push_back({section, key, default_value, buffer.size(), path});
    all_buffers_were_zero =
        all_buffers_were_zero && std::ranges::all_of(buffer, [](char16_t unit) { return unit == u'\0'; });
    const auto found = values.find({path, section, key});
    const platform::Text& value = found == values.end() ? default_value : found->second;
    const std::size_t count = std::min(value.size(), buffer.size() - 1);
    std::copy_n(value.begin(), count, buffer.begin());
    buffer[count] = u'\0';
    return static_cast<std::uint32_t>(count);
  }
  bool WritePrivateProfileStringW(const platform::Text& section, const std::optional<platform::Text>& key,
                                  const std::optional<platform::Text>& value,
                                  const platform::Text& path) override {
    writes.push_back({section, key, value, path});
    return can_write;
  }
  std::uint32_t GetPrivateProfileSectionNamesA(std::span<char>, const platform::Text&) override { return 0; }
  std::optional<platform::ProfileSection> CopySection(const platform::Text&, const platform::Text&) override {
    return std::nullopt;
  }
  bool InsertSection(const platform::ProfileSection&, const platform::Text&) override { return can_write; }
  void BeginReadGroup() override {}
  void EndReadGroup() override {}
  void BeginWriteGroup() override {}
  bool EndWriteGroup() override { return true; }

  std::map<std::tuple<platform::Text, platform::Text, platform::Text>, platform::Text> values;
  std::vector<Read> reads;
  std::vector<Write> writes;
  bool can_write = true;
  bool all_buffers_were_zero = true;
};

}  // namespace test_support
