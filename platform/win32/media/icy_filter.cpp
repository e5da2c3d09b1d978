#include "platform/win32/media/icy_filter.h"

#include <algorithm>

namespace platform::win32 {
namespace {

constexpr std::size_t kBlockUnit = 16;

}  // namespace

std::string IcyFilter::Sound(std::string_view body) {
  if (interval_ == 0) return std::string(body);
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
