#include "platform/win32/media/stall_watch.h"

#include <algorithm>

namespace platform::win32 {

bool StallWatch::Look(std::optional<std::int64_t> played, Source source, Clock::time_point now) {
  const bool stands = played && played == played_;
  if (looked_at_ && (stands || source == Source::kBuffers)) {
    still_ += std::min(now - *looked_at_, kLongestGap);
  } else {
    still_ = {};
  }
  looked_at_ = now;
  played_ = played;
  return still_ > limit_;
}

}  // namespace platform::win32
