#include "platform/win32/media/icy_filter.h"

#include <algorithm>
#include <cstdlib>

namespace platform::win32 {
namespace {

constexpr std::string_view kStatusLine = "ICY ";
constexpr std::string_view kHeaderEnd = "\r\n\r\n";
/// What has no end by then is no header.
constexpr std::size_t kLongestHeader = 65536;
constexpr std::size_t kBlockUnit = 16;

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& character : lower) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character + ('a' - 'A'));
  }
  return lower;
}

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

bool MayBegin(std::string_view text, std::string_view beginning) {
  const auto length = std::min(text.size(), beginning.size());
  return text.substr(0, length) == beginning.substr(0, length);
}

}  // namespace

HeaderFields ReadHeaderFields(std::string_view lines) {
  HeaderFields fields;
  while (!lines.empty()) {
    const auto end = std::min(lines.find('\n'), lines.size());
    const std::string_view line = lines.substr(0, end);
    lines.remove_prefix(std::min(end + 1, lines.size()));
    const auto colon = line.find(':');
    if (colon != std::string_view::npos)
      fields[Lower(Trimmed(line.substr(0, colon)))] = Trimmed(line.substr(colon + 1));
  }
  return fields;
}

bool IcyFilter::PassHeader(std::string& bytes) {
  if (header_ == Header::kPassed) return true;
  head_ += bytes;
  const bool header = MayBegin(head_, kStatusLine) || MayBegin(head_, "icy-");
  const auto end = head_.find(kHeaderEnd);
  const bool found = header && end != std::string::npos;
  if (header && !found && head_.size() < kLongestHeader) return false;
  header_ = Header::kPassed;
  if (found) {
    fields_ = ReadHeaderFields(std::string_view(head_).substr(0, end));
    head_.erase(0, end + kHeaderEnd.size());
    const auto interval = fields_.find("icy-metaint");
    if (interval != fields_.end()) interval_ = left_ = std::strtoul(interval->second.c_str(), nullptr, 10);
  }
  bytes = std::move(head_);
  return true;
}

std::string IcyFilter::Sound(std::string_view bytes) {
  std::string body(bytes);
  if (!PassHeader(body)) return {};
  if (interval_ == 0) return body;
  std::string sound;
  for (std::size_t at = 0; at < body.size();) {
    if (block_ > 0) {
      const auto passed = std::min(block_, body.size() - at);
      block_ -= passed;
      at += passed;
    } else if (left_ == 0) {
      block_ = static_cast<unsigned char>(body[at++]) * kBlockUnit;
      left_ = interval_;
    } else {
      const auto count = std::min(left_, body.size() - at);
      sound.append(body, at, count);
      left_ -= count;
      at += count;
    }
  }
  return sound;
}

}  // namespace platform::win32
