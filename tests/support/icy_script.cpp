#include "tests/support/icy_script.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <utility>

namespace test_support {

Script& Script::Send(std::string bytes) {
  steps_.push_back({Kind::kSend, std::move(bytes)});
  return *this;
}

Script& Script::SendInPieces(std::string bytes, std::size_t piece, std::chrono::milliseconds gap) {
  steps_.push_back({Kind::kSend, std::move(bytes), piece, gap});
  return *this;
}

Script& Script::Stall(std::chrono::milliseconds time) {
  steps_.push_back({Kind::kStall, {}, 0, time});
  return *this;
}

Script& Script::Hold() {
  steps_.push_back({Kind::kHold, {}});
  return *this;
}

Script& Script::AwaitSignal(std::string name) {
  steps_.push_back({Kind::kAwaitSignal, std::move(name)});
  return *this;
}

Script& Script::Mark(std::string name) {
  steps_.push_back({Kind::kMark, std::move(name)});
  return *this;
}

Script& Script::Flood(std::string pattern) {
  if (pattern.empty()) throw std::invalid_argument("a flood needs bytes");
  steps_.push_back({Kind::kFlood, std::move(pattern)});
  return *this;
}

Script& Script::NextRequest() {
  steps_.push_back({Kind::kNextRequest, {}});
  return *this;
}

Script& Script::Close() {
  steps_.push_back({Kind::kClose, {}});
  return *this;
}

Script& Script::Reset() {
  steps_.push_back({Kind::kReset, {}});
  return *this;
}

std::string Header(std::string_view status_line, const std::vector<std::string>& lines) {
  std::string header = std::string(status_line) + "\r\n";
  for (const std::string& line : lines) header += line + "\r\n";
  return header + "\r\n";
}

std::string AudioBytes(std::size_t count, std::size_t start) {
  std::string bytes(count, '\0');
  for (std::size_t n = 0; n < count; ++n) bytes[n] = static_cast<char>(0x80 + (start + n) % 127);
  return bytes;
}

std::string MetadataBlock(std::string_view text) {
  const std::size_t units = (text.size() + 15) / 16;
  if (units > 255) throw std::length_error("a metadata block holds at most 4080 bytes");
  std::string block(1 + units * 16, '\0');
  block[0] = static_cast<char>(units);
  block.replace(1, text.size(), text);
  return block;
}

std::string TitleBlock(std::string_view title, std::string_view url) {
  std::string text = "StreamTitle='" + std::string(title) + "';";
  if (!url.empty()) text += "StreamUrl='" + std::string(url) + "';";
  return MetadataBlock(text);
}

std::string Interleave(std::size_t metaint, const std::vector<std::string>& blocks) {
  std::string body;
  std::size_t position = 0;
  for (const std::string& block : blocks) {
    body += AudioBytes(metaint, position) + block;
    position += metaint;
  }
  return body;
}

std::string Chunk(std::string_view bytes) {
  std::array<char, 16> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), bytes.size(), 16).ptr;
  return std::string(digits.data(), end) + "\r\n" + std::string(bytes) + "\r\n";
}

Script Redirect(std::string_view status, std::string_view location) {
  return Script().Send(Header("HTTP/1.1 " + std::string(status), {"Location: " + std::string(location),
                                                                  "Content-Length: 0", "Connection: close"}));
}

Script Page(std::string_view content_type, std::string_view body) {
  return Script().Send(
      Header("HTTP/1.1 200 OK", {"Content-Type: " + std::string(content_type),
                                 "Content-Length: " + std::to_string(body.size()), "Connection: close"}) +
      std::string(body));
}

}  // namespace test_support
