#pragma once
// Collects the header lines of an answer and reports when they are those of the final one.
// Not for a request's header, nor for the meaning of single lines beyond status and redirect.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::http {

/// Takes the lines of every answer of an exchange (interim answers and redirects too) in order; what it
/// reports is about the last one. What follows a header without beginning another one is left out: the
/// trailers of its body. Public references: RFC 9112, sections 4 and 5; "ICY 200 OK" is the status line of
/// SHOUTcast servers.
class AnswerHeader {
 public:
  /// The longest header block, in bytes as sent.
  static constexpr std::size_t kLimit = 256 * 1024;

  /// One line with its line end as sent. False when the block has become too long.
  bool AddLine(std::string_view line);

  /// The empty line after the header has come, and the answer is neither an interim one nor a redirect.
  [[nodiscard]] bool IsFinal() const { return complete_ && !is_interim_or_redirect_; }

  /// The status line as it was sent, the header lines, an empty line; every line end is CR LF.
  [[nodiscard]] const std::string& Block() const { return block_; }

  /// The three digits of the status line; empty when it has none.
  [[nodiscard]] const std::string& StatusCode() const { return status_code_; }

  /// Whether a line's name begins like this (any case).
  [[nodiscard]] bool HasNameBeginning(std::string_view beginning) const;

  /// The value of the last line with this name (any case), without blanks around it; empty without one.
  [[nodiscard]] std::string Value(std::string_view name) const;

  /// The number of bytes in the body; nothing when the header does not say it.
  [[nodiscard]] std::optional<std::uint64_t> ContentLength() const;

 private:
  void Begin(std::string_view status_line);
  [[nodiscard]] std::vector<std::string_view> FieldLines() const;

  std::string block_;
  std::string status_code_;
  bool complete_ = true;  ///< so that the first line begins a block
  bool is_interim_or_redirect_ = true;
};

}  // namespace platform::http
