#pragma once
// Rounding to whole numbers as all of the player's displays do it. Not for texts.

#include <cmath>

namespace player {

/// The nearest whole number; of two equally near ones the even one (0.5 gives 0, 1.5 gives 2).
[[nodiscard]] inline double RoundTiesToEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1.0;
  return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

}  // namespace player
