#pragma once
// Leaves of an answer's body what is sound: without a SHOUTcast server's header lines, where those are part
// of the body, and without its blocks of titles. Not the connection.

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace platform::win32 {

/// Names in lower case, values without blanks around them.
using HeaderFields = std::map<std::string, std::string>;

/// The fields of lines "Name: value" with CR LF or LF ends; other lines are passed over.
HeaderFields ReadHeaderFields(std::string_view lines);

class IcyFilter {
 public:
  /// `interval`: so many bytes of sound lie between blocks of titles; 0 is none.
  explicit IcyFilter(std::size_t interval) : interval_(interval), left_(interval) {}

  /// The sound in the next bytes of the body.
  std::string Sound(std::string_view bytes);
  /// The fields of header lines that were part of the body.
  [[nodiscard]] const HeaderFields& Fields() const { return fields_; }

 private:
  /// Takes header lines off the body's beginning; false while more of them must come.
  bool PassHeader(std::string& bytes);

  enum class Header { kUnknown, kInside, kPassed };
  Header header_ = Header::kUnknown;
  std::string head_;
  HeaderFields fields_;
  std::size_t interval_;
  std::size_t left_;       ///< bytes of sound before the next block
  std::size_t block_ = 0;  ///< bytes left of the block
};

}  // namespace platform::win32
