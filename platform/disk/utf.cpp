#include "platform/disk/utf.h"

namespace platform::disk {
namespace {

constexpr char32_t kFirstPaired = 0x10000;
constexpr char32_t kHighest = 0x10FFFF;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// Bytes that follow the first byte of a sequence; nothing when it cannot be a first byte.
std::optional<std::size_t> FollowingBytes(unsigned char first) {
  if (first < 0x80) return 0;
  if (first >= 0xC2 && first <= 0xDF) return 1;
  if (first >= 0xE0 && first <= 0xEF) return 2;
  if (first >= 0xF0 && first <= 0xF4) return 3;
  return std::nullopt;
}

int FollowingBytesOf(char32_t character) {
  if (character < 0x80) return 0;
  if (character < 0x800) return 1;
  return character < kFirstPaired ? 2 : 3;
}

}  // namespace

std::optional<DecodedCharacter> DecodeUtf8(std::string_view bytes) {
  constexpr char32_t kSmallest[] = {0, 0x80, 0x800, kFirstPaired};
  const auto first = static_cast<unsigned char>(bytes.front());
  const auto following = FollowingBytes(first);
  if (!following || bytes.size() <= *following) return std::nullopt;
  char32_t character = *following == 0 ? first : first & (0x3FU >> *following);
  for (std::size_t index = 1; index <= *following; ++index) {
    const auto byte = static_cast<unsigned char>(bytes[index]);
    if ((byte & 0xC0U) != 0x80U) return std::nullopt;
    character = character << 6 | (byte & 0x3FU);
  }
  if (character < kSmallest[*following] || character > kHighest) return std::nullopt;
  return DecodedCharacter{character, *following + 1};
}

DecodedCharacter DecodeUtf16(TextView units) {
  const char32_t first = units.front();
  if (!IsHighSurrogate(first) || units.size() < 2 || !IsLowSurrogate(units[1])) return {first, 1};
  return {kFirstPaired + ((first - 0xD800) << 10) + (units[1] - 0xDC00U), 2};
}

void AppendUtf8(std::string& bytes, char32_t character) {
  constexpr unsigned kMarks[] = {0, 0xC0, 0xE0, 0xF0};
  const int following = FollowingBytesOf(character);
  bytes.push_back(static_cast<char>(kMarks[following] | character >> (6 * following)));
  for (int left = following - 1; left >= 0; --left) {
    bytes.push_back(static_cast<char>(0x80U | (character >> (6 * left) & 0x3FU)));
  }
}

void AppendUtf16(Text& units, char32_t character) {
  if (character < kFirstPaired) {
    units.push_back(static_cast<char16_t>(character));
    return;
  }
  const char32_t offset = character - kFirstPaired;
  units.push_back(static_cast<char16_t>(0xD800 + (offset >> 10)));
  units.push_back(static_cast<char16_t>(0xDC00 + (offset & 0x3FF)));
}

}  // namespace platform::disk
