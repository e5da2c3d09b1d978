#include "platform/curl/body_text.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <optional>
#include <string>

namespace platform::curl {
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

class Converter {
 public:
  explicit Converter(const std::string& charset) : handle_(iconv_open("UTF-16LE", charset.c_str())) {}
  ~Converter() {
    if (IsOpen()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  [[nodiscard]] bool IsOpen() const {
    // The library's own way to say no is this one value.
    return handle_ != reinterpret_cast<iconv_t>(-1);  // NOLINT
  }

  Text Decode(std::string body) {
    Text text;
    char* in = body.data();
    std::size_t in_left = body.size();
    while (in_left > 0) {
      std::array<char, 4096> out{};
      char* out_at = out.data();
      std::size_t out_left = out.size();
      const std::size_t result = iconv(handle_, &in, &in_left, &out_at, &out_left);
      const int error = errno;
      text += DecodeUtf16({out.data(), out.size() - out_left}, ByteOrder::kLittle);
      if (result != static_cast<std::size_t>(-1) || error == E2BIG) continue;
      text += kReplacement;
      ++in;
      --in_left;
    }
    return text;
  }

 private:
  iconv_t handle_;
};

Text DecodeCharset(TextConversion& conversion, std::string_view body, const std::string& charset) {
  if (charset == "iso-8859-1" || charset == "latin1" || charset == "us-ascii" || charset == "windows-1252") {
    return conversion.MultiByteToWideChar(CodePage::kAnsi, body);
  }
  if (charset == "utf-16" || charset == "utf-16le") return DecodeUtf16(body, ByteOrder::kLittle);
  if (charset == "utf-16be") return DecodeUtf16(body, ByteOrder::kBig);
  if (!charset.empty() && charset != "utf-8" && charset != "utf8") {
    Converter converter(charset);
    if (converter.IsOpen()) return converter.Decode(std::string(body));
  }
  return conversion.MultiByteToWideChar(CodePage::kUtf8, body);
}

}  // namespace

Text DecodeBody(TextConversion& conversion, std::string_view body, std::string_view content_type) {
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  if (body.starts_with(kUtf8Mark)) {
    return conversion.MultiByteToWideChar(CodePage::kUtf8, body.substr(kUtf8Mark.size()));
  }
  if (body.starts_with("\xFF\xFE")) return DecodeUtf16(body.substr(2), ByteOrder::kLittle);
  if (body.starts_with("\xFE\xFF")) return DecodeUtf16(body.substr(2), ByteOrder::kBig);
  return DecodeCharset(conversion, body, CharsetOf(content_type));
}

}  // namespace platform::curl
