#include "platform/http/body_text.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <utility>

namespace platform::http {
namespace {

constexpr char16_t kReplacement = u'\uFFFD';

enum class ByteOrder { kLittle, kBig };

Text DecodeUtf16(std::string_view body, ByteOrder order) {
  Text text;
  for (std::size_t i = 0; i + 1 < body.size(); i += 2) {
    const auto first = static_cast<unsigned char>(body[i]);
    const auto second = static_cast<unsigned char>(body[i + 1]);
    const unsigned high = order == ByteOrder::kBig ? first : second;
    const unsigned low = order == ByteOrder::kBig ? second : first;
    text += static_cast<char16_t>((high << 8) | low);
  }
  if (body.size() % 2 != 0) text += kReplacement;
  return text;
}

std::string LowerCase(std::string_view text) {
  std::string lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                 [](unsigned char byte) { return static_cast<char>(std::tolower(byte)); });
  return lowered;
}

bool IsCharsetCharacter(char byte) {
  return std::isalnum(static_cast<unsigned char>(byte)) != 0 || byte == '-' || byte == '_' || byte == '.' ||
         byte == ':' || byte == '+';
}

// The charset in lower case; empty when none is named or the name cannot be one.
std::string CharsetOf(std::string_view content_type) {
  constexpr std::string_view kParameter = "charset=";
  const std::string lowered = LowerCase(content_type);
  const std::size_t found = lowered.find(kParameter);
  if (found == std::string::npos) return {};
  std::string_view value = std::string_view(lowered).substr(found + kParameter.size());
  const bool is_quoted = value.starts_with('"') || value.starts_with('\'');
  if (is_quoted) value.remove_prefix(1);
  const auto end = std::find_if_not(value.begin(), value.end(), IsCharsetCharacter);
  constexpr std::size_t kLongestName = 40;
  const auto length = static_cast<std::size_t>(end - value.begin());
  return length > kLongestName ? std::string() : std::string(value.substr(0, length));
}

Text DecodeAs(TextConversion& conversion, const DecodeCharset& decode_charset, const std::string& charset,
              std::string_view body) {
  if (charset == "iso-8859-1" || charset == "latin1" || charset == "us-ascii" || charset == "windows-1252") {
    return conversion.MultiByteToWideChar(CodePage::kAnsi, body);
  }
  if (charset == "utf-16" || charset == "utf-16le") return DecodeUtf16(body, ByteOrder::kLittle);
  if (charset == "utf-16be") return DecodeUtf16(body, ByteOrder::kBig);
  if (!charset.empty() && charset != "utf-8" && charset != "utf8") {
    if (auto text = decode_charset(charset, body)) return std::move(*text);
  }
  return conversion.MultiByteToWideChar(CodePage::kUtf8, body);
}

}  // namespace

Text DecodeBody(TextConversion& conversion, const DecodeCharset& decode_charset, std::string_view body,
                std::string_view content_type) {
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  if (body.starts_with(kUtf8Mark)) {
    return conversion.MultiByteToWideChar(CodePage::kUtf8, body.substr(kUtf8Mark.size()));
  }
  if (body.starts_with("\xFF\xFE")) return DecodeUtf16(body.substr(2), ByteOrder::kLittle);
  if (body.starts_with("\xFE\xFF")) return DecodeUtf16(body.substr(2), ByteOrder::kBig);
  return DecodeAs(conversion, decode_charset, CharsetOf(content_type), body);
}

}  // namespace platform::http
