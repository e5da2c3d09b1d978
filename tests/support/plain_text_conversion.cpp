#include "tests/support/plain_text_conversion.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace test_support {
namespace {

using platform::CodePage;
using platform::Text;
using platform::TextView;

constexpr char32_t kReplacement = 0xFFFD;

/// The characters of the bytes 0x80 to 0x9F. Public reference: the Unicode Consortium's table CP1252.TXT.
constexpr TextView kAnsiMiddle =
    u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F"
    u"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178";

bool IsLead(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsTrail(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// Takes one character off the front; an unpaired surrogate is the replacement character.
char32_t TakeCharacter(TextView& text) {
  const char16_t first = text.front();
  text.remove_prefix(1);
  if (!IsLead(first)) return IsTrail(first) ? kReplacement : first;
  if (text.empty() || !IsTrail(text.front())) return kReplacement;
  const char32_t character = 0x10000U + ((first - 0xD800U) << 10U) + (text.front() - 0xDC00U);
  text.remove_prefix(1);
  return character;
}

void Append(Text& text, char32_t character) {
  if (character < 0x10000) {
    text.push_back(static_cast<char16_t>(character));
    return;
  }
  text.push_back(static_cast<char16_t>(0xD800U + ((character - 0x10000U) >> 10U)));
  text.push_back(static_cast<char16_t>(0xDC00U + ((character - 0x10000U) & 0x3FFU)));
}

char AnsiByte(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
  const auto place = character > 0xFFFF ? TextView::npos : kAnsiMiddle.find(static_cast<char16_t>(character));
  return place == TextView::npos ? '?' : static_cast<char>(0x80 + place);
}

void AppendUtf8(std::string& bytes, char32_t character) {
  const auto tail = [&](unsigned shift) {
    bytes.push_back(static_cast<char>(0x80U | ((character >> shift) & 0x3FU)));
  };
  if (character < 0x80) {
    bytes.push_back(static_cast<char>(character));
  } else if (character < 0x800) {
    bytes.push_back(static_cast<char>(0xC0U | (character >> 6U)));
    tail(0);
  } else if (character < 0x10000) {
    bytes.push_back(static_cast<char>(0xE0U | (character >> 12U)));
    tail(6);
    tail(0);
  } else {
    bytes.push_back(static_cast<char>(0xF0U | (character >> 18U)));
    tail(12);
    tail(6);
    tail(0);
  }
}

/// A sequence's first byte: how many follow, and between which two the second one must be.
struct Sequence {
  std::size_t following = 0;
  unsigned lowest = 0x80;
  unsigned highest = 0xBF;
  char32_t bits = 0;
};

/// Public reference: RFC 3629, section 4.
Sequence SequenceOf(unsigned lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return {1, 0x80, 0xBF, lead & 0x1FU};
  if (lead >= 0xE0 && lead <= 0xEF) {
    return {2, lead == 0xE0 ? 0xA0U : 0x80U, lead == 0xED ? 0x9FU : 0xBFU, lead & 0x0FU};
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    return {3, lead == 0xF0 ? 0x90U : 0x80U, lead == 0xF4 ? 0x8FU : 0xBFU, lead & 0x07U};
  }
  return {};
}

/// Takes one character or one maximal malformed part off the front.
char32_t TakeUtf8(std::string_view& bytes) {
  const unsigned lead = static_cast<unsigned char>(bytes.front());
  bytes.remove_prefix(1);
  if (lead < 0x80) return lead;
  const Sequence sequence = SequenceOf(lead);
  if (sequence.following == 0) return kReplacement;
  char32_t character = sequence.bits;
  for (std::size_t at = 0; at < sequence.following; ++at) {
    const unsigned next = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.front());
    const unsigned lowest = at == 0 ? sequence.lowest : 0x80;
    const unsigned highest = at == 0 ? sequence.highest : 0xBF;
    if (next < lowest || next > highest) return kReplacement;
    character = character << 6U | (next & 0x3FU);
    bytes.remove_prefix(1);
  }
  return character;
}

/// Capital letters from `first` to `last`, each with its small one `distance` after it.
struct Capitals {
  char16_t first;
  char16_t last;
  int distance;
};

constexpr std::array kCapitals = {
    Capitals{u'A', u'Z', 32},   Capitals{0xC0, 0xD6, 32},   Capitals{0xD8, 0xDE, 32},
    Capitals{0x152, 0x152, 1},  Capitals{0x160, 0x160, 1},  Capitals{0x178, 0x178, 0xFF - 0x178},
    Capitals{0x17D, 0x17D, 1},  Capitals{0x391, 0x3A1, 32}, Capitals{0x3A3, 0x3A9, 32},
    Capitals{0x400, 0x40F, 80}, Capitals{0x410, 0x42F, 32},
};

bool IsBetween(int value, int first, int last) { return value >= first && value <= last; }

char16_t Lower(char16_t unit) {
  for (const Capitals& group : kCapitals) {
    if (IsBetween(unit, group.first, group.last)) return static_cast<char16_t>(unit + group.distance);
  }
  return unit;
}

char16_t Upper(char16_t unit) {
  for (const Capitals& group : kCapitals) {
    if (IsBetween(unit - group.distance, group.first, group.last)) {
      return static_cast<char16_t>(unit - group.distance);
    }
  }
  return unit;
}

}  // namespace

std::string PlainTextConversion::WideCharToMultiByte(CodePage page, TextView text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    if (page == CodePage::kUtf8) {
      AppendUtf8(bytes, character);
    } else {
      bytes.push_back(AnsiByte(character));
    }
  }
  return bytes;
}

Text PlainTextConversion::MultiByteToWideChar(CodePage page, std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  while (page == CodePage::kUtf8 && !bytes.empty()) Append(text, TakeUtf8(bytes));
  for (const char byte : bytes) {
    const auto number = static_cast<unsigned char>(byte);
    text.push_back(number >= 0x80 && number < 0xA0 ? kAnsiMiddle[number - 0x80U] : char16_t{number});
  }
  return text;
}

Text PlainTextConversion::CharLowerW(TextView text) {
  Text lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
  return lower;
}

Text PlainTextConversion::CharUpperW(TextView text) {
  Text upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
  return upper;
}

}  // namespace test_support
