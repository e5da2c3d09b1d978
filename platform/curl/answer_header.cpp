#include "platform/curl/answer_header.h"

#include <algorithm>
#include <cctype>

namespace platform::curl {
namespace {

bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

bool SameIgnoringCase(char left, char right) {
  return std::tolower(static_cast<unsigned char>(left)) == std::tolower(static_cast<unsigned char>(right));
}

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
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

std::string AnswerHeader::Value(std::string_view name) const {
  std::string value;
  std::string_view rest = block_;
  while (!rest.empty()) {
    const std::size_t end = rest.find("\r\n");
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 2);
    const std::size_t colon = line.find(':');
    if (colon != name.size() || !std::equal(name.begin(), name.end(), line.begin(), SameIgnoringCase))
      continue;
    value = Trim(line.substr(colon + 1));
  }
  return value;
}

}  // namespace platform::curl
