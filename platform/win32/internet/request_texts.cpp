#include "platform/win32/internet/request_texts.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

constexpr UINT kCodePage = 1252;

Text FromBytes(UINT code_page, std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  Text text(bytes.size(), u'\0');
  const int length =
      size == 0 ? 0 : ::MultiByteToWideChar(code_page, 0, bytes.data(), size, WideBuffer(text.data()), size);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string Base64(std::string_view bytes) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string encoded;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - at);
    unsigned group = 0;
    for (std::size_t i = 0; i < 3; ++i)
      group = group << 8 | (i < count ? static_cast<unsigned char>(bytes[at + i]) : 0U);
    for (std::size_t i = 0; i < 4; ++i) encoded += i <= count ? kDigits[group >> (18 - 6 * i) & 63] : '=';
  }
  return encoded;
}

}  // namespace

std::string Utf8(TextView text) {
  const int units = static_cast<int>(text.size());
  std::string bytes(text.size() * 3, '\0');
  const int length = units == 0 ? 0
                                : ::WideCharToMultiByte(CP_UTF8, 0, WideData(text), units, bytes.data(),
                                                        static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

Text FromAnsi(std::string_view bytes) { return FromBytes(kCodePage, bytes); }

Text HeaderText(const std::vector<std::string>& lines, std::string_view user) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  if (!user.empty()) {
    const bool has_password = user.find(':') != std::string_view::npos;
    text += "Authorization: Basic " + Base64(std::string(user) + (has_password ? "" : ":")) + "\r\n";
  }
  text += "Connection: close\r\n";
  return FromAnsi(text);
}

Text HostName(std::string_view host) {
  const Text name = FromBytes(CP_UTF8, host);
  const bool is_ascii = std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit < 0x80; });
  if (is_ascii) return name;
  constexpr int kLongest = 255;
  Text ascii(kLongest, u'\0');
  const int length = ::IdnToAscii(IDN_ALLOW_UNASSIGNED, WideData(name), static_cast<int>(name.size()),
                                  WideBuffer(ascii.data()), kLongest);
  if (length <= 0) return name;
  ascii.resize(static_cast<std::size_t>(length));
  return ascii;
}

}  // namespace platform::win32
