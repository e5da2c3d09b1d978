#include "app/text/text_utilities.h"

#include <algorithm>

namespace app {
namespace {

using platform::CodePage;

enum class ByteKind { kPlain, kContinuation, kLead };

ByteKind KindOf(unsigned byte) {
  if (byte <= 127 || byte >= 254) return ByteKind::kPlain;
  return byte <= 191 ? ByteKind::kContinuation : ByteKind::kLead;
}

std::size_t ContinuationsAfter(unsigned lead) {
  if ((lead & 252U) == 252U) return 5;
  if ((lead & 248U) == 248U) return 4;
  if ((lead & 240U) == 240U) return 3;
  if ((lead & 224U) == 224U) return 2;
  return 1;
}

}  // namespace

bool IsUTF8(std::span<const std::byte> bytes, std::int32_t count) {
  if (count < 0) return false;
  const auto examined = bytes.first(std::min(bytes.size(), static_cast<std::size_t>(count)));
  std::size_t sequences = 0;
  for (std::size_t at = 0; at < examined.size();) {
    const auto byte = std::to_integer<unsigned>(examined[at]);
    const ByteKind kind = KindOf(byte);
    if (kind == ByteKind::kContinuation) return false;
    if (kind == ByteKind::kPlain) {
      ++at;
      continue;
    }
    const std::size_t length = ContinuationsAfter(byte);
    if (at + length >= examined.size()) break;
    const bool complete = std::ranges::all_of(examined.subspan(at + 1, length), [](std::byte follower) {
      return KindOf(std::to_integer<unsigned>(follower)) == ByteKind::kContinuation;
    });
    if (!complete) return false;
    ++sequences;
    at += length + 1;
  }
  return sequences >= 1;
}

bool IsUTF8(std::string_view bytes, std::int32_t count) {
  return IsUTF8(std::as_bytes(std::span(bytes)), count);
}

Text Decoded(platform::TextConversion& conversion, std::string_view bytes) {
  const bool is_utf8 = IsUTF8(bytes, static_cast<std::int32_t>(bytes.size()));
  return conversion.MultiByteToWideChar(is_utf8 ? CodePage::kUtf8 : CodePage::kAnsi, bytes);
}

Text Utf8ByteStringToText(platform::TextConversion& conversion, TextView byte_string) {
  return Utf8BytesToText(conversion, conversion.WideCharToMultiByte(CodePage::kAnsi, byte_string));
}

Text TextToUtf8ByteString(platform::TextConversion& conversion, TextView text) {
  return conversion.MultiByteToWideChar(CodePage::kAnsi, TextToUtf8Bytes(conversion, text));
}

std::string TextToUtf8Bytes(platform::TextConversion& conversion, TextView text) {
  return conversion.WideCharToMultiByte(CodePage::kUtf8, text);
}

Text Utf8BytesToText(platform::TextConversion& conversion, std::string_view bytes) {
  return conversion.MultiByteToWideChar(CodePage::kUtf8, bytes);
}

Text ReplaceM(Text text, std::span<const Text> pairs) {
  TextView replacement;
  for (std::size_t k = 0; k < pairs.size(); k += 2) {
    const TextView search = pairs[k];
    if (k + 1 < pairs.size()) replacement = pairs[k + 1];
    if (search.empty()) continue;
    std::size_t from = 0;
    for (auto found = text.find(search); found != Text::npos; found = text.find(search, from)) {
      text.replace(found, search.size(), replacement);
      // No occurrence begins before this position, so searching from here is as good as from the start.
      from = found < search.size() ? 0 : found - search.size() + 1;
    }
  }
  return text;
}

std::optional<Text> GetFileExt(platform::TextConversion& conversion, TextView Pfadname) {
  if (Pfadname.size() > kLongestPath) return std::nullopt;
  const auto dot = Pfadname.rfind(u'.');
  if (dot == TextView::npos) return Text();
  return conversion.CharUpperW(Pfadname.substr(dot + 1));
}

std::optional<Text> GetFileFromPath(TextView Pfadname) {
  if (Pfadname.size() > kLongestPath) return std::nullopt;
  const auto backslash = Pfadname.rfind(u'\\');
  return Text(backslash == TextView::npos ? Pfadname : Pfadname.substr(backslash + 1));
}

Text ReadablePath(Text path) {
  const auto first = path.find_first_of(u"\\/");
  const char16_t separator = first == Text::npos ? u'\\' : path[first];
  std::replace_if(
      path.begin(), path.end(), [](char16_t unit) { return unit == u'\\' || unit == u'/'; }, separator);
  return path;
}

Text AddBackslash(Text path) {
  if (!path.ends_with(u'\\')) path.push_back(u'\\');
  return path;
}

}  // namespace app
