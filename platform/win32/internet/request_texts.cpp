#include "platform/win32/internet/request_texts.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <array>

#include "platform/win32/base/wide.h"

namespace platform::win32 {
namespace {

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

std::string HeaderBytes(const std::vector<std::string>& lines, std::string_view user) {
  std::string bytes;
  for (const std::string& line : lines) bytes += line + "\r\n";
  if (!user.empty()) {
    const bool has_password = user.find(':') != std::string_view::npos;
    bytes += "Authorization: Basic " + Base64(std::string(user) + (has_password ? "" : ":")) + "\r\n";
  }
  return bytes + "Connection: close\r\n";
}

std::string HostName(std::string_view host) {
  const auto is_ascii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
  if (std::all_of(host.begin(), host.end(), is_ascii)) return std::string(host);
  const int size = static_cast<int>(host.size());
  std::wstring name(host.size(), L'\0');
  const int units =
      ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, host.data(), size, name.data(), size);
  constexpr int kLongest = 255;
  std::array<wchar_t, kLongest> ascii{};
  const int length =
      units == 0 ? 0 : ::IdnToAscii(IDN_ALLOW_UNASSIGNED, name.data(), units, ascii.data(), kLongest);
  std::string bytes;
  for (int at = 0; at < length; ++at) bytes += static_cast<char>(ascii[static_cast<std::size_t>(at)]);
  return bytes;
}

}  // namespace platform::win32
