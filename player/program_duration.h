#pragma once
// The length of what is being played, one value for the whole program. Not the position in it.

#include <cstdint>

namespace player {

/// In 100-nanosecond units; zero when unknown or live. Written by every clsMFPlayer that was given it
/// (an opening sets it to zero first), read through their Duration.
struct ProgramDuration {
  std::int64_t value = 0;
};

}  // namespace player
