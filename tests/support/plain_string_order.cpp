#include "tests/support/plain_string_order.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/support/plain_text_conversion.h"

namespace test_support {
namespace {

using platform::Text;
using platform::TextView;

constexpr std::uint32_t kDigits = 0x10000;
constexpr std::uint32_t kLetters = 0x20000;

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
bool IsLetter(char16_t unit) { return (unit >= u'a' && unit <= u'z') || unit >= 0xC0; }

/// The letters next to which a small letter sorts.
TextView Base(const char16_t& letter) {
  constexpr TextView kPlainLetters = u"aaaaaa.ceeeeiiii.nooooo.ouuuuy.y";
  if (letter == u'ß') return u"ss";
  if (letter == u'æ') return u"ae";
  if (letter == u'œ') return u"oe";
  if (letter == u'š') return u"s";
  if (letter == u'ž') return u"z";
  const bool has_mark = letter >= 0xE0 && letter <= 0xFF && kPlainLetters[letter - 0xE0U] != u'.';
  return has_mark ? kPlainLetters.substr(letter - 0xE0U, 1) : TextView(&letter, 1);
}

/// What counts first, and what decides between names that are equal in that.
struct Weights {
  std::vector<std::uint32_t> first;
  std::vector<std::uint32_t> second;
  friend auto operator<=>(const Weights&, const Weights&) = default;
};

void AppendNumber(Weights& weights, TextView digits) {
  digits.remove_prefix(std::min(digits.find_first_not_of(u'0'), digits.size()));
  weights.first.push_back(kDigits);
  weights.first.push_back(static_cast<std::uint32_t>(digits.size()));
  weights.first.insert(weights.first.end(), digits.begin(), digits.end());
}

Weights WeightsOf(const Text& name) {
  const Text lower = PlainTextConversion().CharLowerW(name);
  Weights weights;
  for (std::size_t at = 0; at < lower.size(); ++at) {
    const char16_t unit = lower[at];
    if (IsDigit(unit)) {
      const auto end = std::min(lower.find_first_not_of(u"0123456789", at), lower.size());
      AppendNumber(weights, TextView(lower).substr(at, end - at));
      at = end - 1;
      continue;
    }
    if (!IsLetter(unit)) {
      weights.first.push_back(unit);
      continue;
    }
    const TextView base = Base(unit);
    for (const char16_t letter : base) weights.first.push_back(kLetters + letter);
    weights.second.push_back(base == TextView(&unit, 1) ? 0U : unit);
  }
  return weights;
}

}  // namespace

int PlainStringOrder::StrCmpLogicalW(const Text& first, const Text& second) {
  const auto order = WeightsOf(first) <=> WeightsOf(second);
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

std::string PlainStringOrder::SortKey(const Text& text) {
  const Weights weights = WeightsOf(text);
  std::string key;
  const auto append = [&key](std::uint32_t weight) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) key.push_back(static_cast<char>(weight >> shift & 0xFFU));
  };
  for (const std::uint32_t weight : weights.first) append(weight + 1);
  append(0);  // the end sorts before everything
  for (const std::uint32_t weight : weights.second) append(weight + 1);
  return key;
}

}  // namespace test_support
