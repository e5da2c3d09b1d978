#pragma once
// Which types a server gives for what is text and not sound. Not for looking at the bytes.

#include <algorithm>
#include <array>
#include <string_view>

namespace platform::live {

/// Types of M3U lists: of addresses, or of the segments of a station. `type` is in lower case and without
/// parameters, here and below.
inline bool IsListType(std::string_view type) {
  constexpr std::array kLists = {
      std::string_view("audio/x-mpegurl"),       std::string_view("audio/mpegurl"),
      std::string_view("application/x-mpegurl"), std::string_view("application/vnd.apple.mpegurl"),
      std::string_view("application/mpegurl"),
  };
  return std::find(kLists.begin(), kLists.end(), type) != kLists.end();
}

/// Types of texts and of lists: no decoder will ever make sound of them.
inline bool IsTextType(std::string_view type) {
  constexpr std::array kOthers = {
      std::string_view("application/json"),      std::string_view("application/xml"),
      std::string_view("application/xhtml+xml"), std::string_view("application/pls+xml"),
      std::string_view("application/xspf+xml"),  std::string_view("audio/x-scpls"),
  };
  return type.starts_with("text/") || IsListType(type) ||
         std::find(kOthers.begin(), kOthers.end(), type) != kOthers.end();
}

}  // namespace platform::live
