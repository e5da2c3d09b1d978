#include "platform/curl/charsets.h"

#include <iconv.h>

#include <array>
#include <bit>
#include <cerrno>

namespace platform::curl {
namespace {

constexpr char16_t kReplacement = u'\uFFFD';
/// The units of a text, as iconv calls them.
constexpr const char* kUnits = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

class Converter {
 public:
  explicit Converter(const std::string& charset) : handle_(iconv_open(kUnits, charset.c_str())) {}
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
      std::array<char16_t, 2048> out{};
      char* out_at = reinterpret_cast<char*>(out.data());
      std::size_t out_left = sizeof out;
      const std::size_t result = iconv(handle_, &in, &in_left, &out_at, &out_left);
      const int error = errno;
      text.append(out.data(), (sizeof out - out_left) / sizeof(char16_t));
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

}  // namespace

std::optional<Text> DecodeCharset(const std::string& charset, std::string_view body) {
  Converter converter(charset);
  if (!converter.IsOpen()) return std::nullopt;
  return converter.Decode(std::string(body));
}

}  // namespace platform::curl
