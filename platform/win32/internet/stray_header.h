#pragma once
// The header of a SHOUTcast server's answer where the library takes it for the body: as Wine's does, which
// drops a status line that it does not know. Not for headers that the library reads.

#include <string>
#include <string_view>

#include "platform/http/answer_header.h"

namespace platform::win32 {

/// Public reference: the server's answer begins with "ICY 200 OK" and lines like "icy-name:..."; Windows'
/// library knows it.
class StrayHeader {
 public:
  enum class State {
    kUnknown,  ///< more of the body must come
    kNone,     ///< the body begins like any other; Rest is all of it
    kWhole,    ///< Header is the answer's, Rest what follows it in the body
    kTooLong,
    kGarbage  ///< cut, or a line without any header behind it: this was no answer at all
  };

  /// Whether the library may have made this header up in place of an unknown status line.
  static bool MayBeBehind(const http::AnswerHeader& header);

  /// The next bytes of the body, while the state is not known; an empty piece is its end.
  State Add(std::string_view bytes);
  [[nodiscard]] const http::AnswerHeader& Header() const { return header_; }
  [[nodiscard]] const std::string& Rest() const { return rest_; }

 private:
  State state_ = State::kUnknown;
  http::AnswerHeader header_;
  std::string rest_;
};

}  // namespace platform::win32
