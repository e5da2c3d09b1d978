#pragma once
// Which types a server gives for what is text and not sound. Not for looking at the bytes.

#include <algorithm>
#include <array>
#include <string_view>

namespace platform::live {

/// Types of texts and of lists of addresses: no decoder will ever make sound of them. `type` is in lower case
/// and without parameters.
inline bool IsTextType(std::string_view type) {
  constexpr std::array kOthers = {
      std::string_view("application/json"),      std::string_view("application/xml"),
      std::string_view("application/xhtml+xml"), std::string_view("application/pls+xml"),
      std::string_view("application/xspf+xml"),  std::string_view("audio/x-scpls"),
      std::string_view("audio/x-mpegurl"),       std::string_view("audio/mpegurl"),
  };
  return type.starts_with("text/") || std::find(kOthers.begin(), kOthers.end(), type) != kOthers.end();
}

}  // namespace platform::live
