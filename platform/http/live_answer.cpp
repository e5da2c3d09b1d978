#include "platform/http/live_answer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>

namespace platform::http {
namespace {

// "Audio/MPEG; charset=x" gives "audio/mpeg".
std::string TypeOf(const AnswerHeader& header) {
  std::string type = header.Value("Content-Type");
  type.erase(std::min(type.find_first_of("; \t"), type.size()));
  std::transform(type.begin(), type.end(), type.begin(),
                 [](unsigned char byte) { return static_cast<char>(std::tolower(byte)); });
  return type;
}

bool MayBePlaylist(std::string_view type) {
  // audio/x-mpegurl, audio/mpeg-url, application/vnd.apple.mpegurl; audio/x-scpls, application/pls+xml;
  // audio/x-pn-realaudio, of which the text is a bare address.
  constexpr std::array<std::string_view, 3> kParts = {"url", "pls", "realaudio"};
  const auto is_in_type = [type](std::string_view part) { return type.find(part) != std::string_view::npos; };
  return type.starts_with("text/") || std::any_of(kParts.begin(), kParts.end(), is_in_type);
}

bool IsSoundOrVideo(std::string_view type) {
  return type.starts_with("audio/") || type.starts_with("video/") || type == "application/ogg";
}

}  // namespace

bool IsLiveAnswer(const AnswerHeader& header) {
  const std::string type = TypeOf(header);
  if (MayBePlaylist(type) || header.HasNameBeginning("Content-Length:")) return false;
  return IsSoundOrVideo(type) || header.HasNameBeginning("icy-");
}

}  // namespace platform::http
