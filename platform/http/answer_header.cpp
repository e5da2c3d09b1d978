#include "platform/http/answer_header.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <system_error>

namespace platform::http {
namespace {

bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

bool SameIgnoringCase(char left, char right) {
  return std::tolower(static_cast<unsigned char>(left)) == std::tolower(static_cast<unsigned char>(right));
}

bool BeginsIgnoringCase(std::string_view line, std::string_view beginning) {
  return line.size() >= beginning.size() &&
         std::equal(beginning.begin(), beginning.end(), line.begin(), SameIgnoringCase);
}

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// What begins the header of an answer. Lines after a header that do not are trailers of its body (RFC 9112,
/// section 7.1.2).
bool IsStatusLine(std::string_view line) {
  return BeginsIgnoringCase(line, "HTTP/") || BeginsIgnoringCase(line, "ICY ");
}

std::string_view WithoutLineEnd(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

void AnswerHeader::Begin(std::string_view status_line) {
  complete_ = false;
  block_.clear();
  const std::size_t blank = status_line.find(' ');
  const std::string_view code =
      blank == std::string_view::npos ? std::string_view() : status_line.substr(blank + 1, 3);
  const bool is_code = code.size() == 3 && std::all_of(code.begin(), code.end(), IsDigit);
  status_code_ = is_code ? code : std::string_view();
}

bool AnswerHeader::AddLine(std::string_view line) {
  line = WithoutLineEnd(line);
  // To the library, whatever follows such a CR, this line ends the header.
  if (line.starts_with('\r')) line = {};
  if (complete_ && !IsStatusLine(line)) return true;
  if (complete_) Begin(line);
  block_ += line;
  block_ += "\r\n";
  if (block_.size() > kLimit) return false;
  if (!line.empty()) return true;
  complete_ = true;
  const bool is_interim = status_code_.starts_with('1');
  const bool is_redirect = status_code_.starts_with('3') && !Value("Location").empty();
  is_interim_or_redirect_ = is_interim || is_redirect;
  return true;
}

// Without the status line.
std::vector<std::string_view> AnswerHeader::FieldLines() const {
  std::vector<std::string_view> lines;
  const std::string_view block = block_;
  for (std::size_t at = 0; at < block.size();) {
    const std::size_t end = std::min(block.find("\r\n", at), block.size());
    if (at > 0) lines.push_back(block.substr(at, end - at));
    at = end + 2;
  }
  return lines;
}

std::string AnswerHeader::Value(std::string_view name) const {
  std::string value;
  for (const std::string_view line : FieldLines()) {
    const bool is_named = line.find(':') == name.size() && BeginsIgnoringCase(line, name);
    if (is_named) value = Trim(line.substr(name.size() + 1));
  }
  return value;
}

std::optional<std::uint64_t> AnswerHeader::ContentLength() const {
  const std::string value = Value("Content-Length");
  std::uint64_t length = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), length);
  const bool is_number = !value.empty() && error == std::errc() && end == value.data() + value.size();
  return is_number ? std::optional(length) : std::nullopt;
}

bool AnswerHeader::HasNameBeginning(std::string_view beginning) const {
  const std::vector<std::string_view> lines = FieldLines();
  return std::any_of(lines.begin(), lines.end(), [beginning](std::string_view line) {
    return line.find(':') != std::string_view::npos && BeginsIgnoringCase(line, beginning);
  });
}

}  // namespace platform::http
