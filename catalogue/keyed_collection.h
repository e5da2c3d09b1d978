#pragma once
// A collection of numbers under text keys, regardless of letter case. Not a cache: nothing is replaced.

#include <cstdint>
#include <map>
#include <optional>

#include "ports/text_conversion.h"

namespace catalogue {

class KeyedCollection {
 public:
  explicit KeyedCollection(platform::TextConversion& conversion) : conversion_(conversion) {}

  /// False, and nothing changes, when the key is taken.
  bool Add(std::int32_t entry, const platform::Text& key) {
    return entries_.emplace(conversion_.CharLowerW(key), entry).second;
  }

  /// The entry of a key; nothing when there is none.
  [[nodiscard]] std::optional<std::int32_t> Item(const platform::Text& key) const {
    const auto entry = entries_.find(conversion_.CharLowerW(key));
    if (entry == entries_.end()) return std::nullopt;
    return entry->second;
  }

  void Clear() { entries_.clear(); }

 private:
  platform::TextConversion& conversion_;
  std::map<platform::Text, std::int32_t> entries_;
};

/// The collection's entry for `key`, -1 when the key is absent.
[[nodiscard]] inline std::int32_t ItemIndex(const KeyedCollection& collection, const platform::Text& key) {
  return collection.Item(key).value_or(-1);
}

}  // namespace catalogue
