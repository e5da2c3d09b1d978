#pragma once
// Colours that can be told from their ground, as WCAG 2.1 measures it, and the colour of a station without an
// icon. Not which colours a control has.

#include <cstdint>

#include "controls/text.h"

namespace platform::front {

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

/// What WCAG 2.1 wants of parts of a control (criterion 1.4.11) and of texts (1.4.3).
inline constexpr double kContrastOfParts = 3.0;
inline constexpr double kContrastOfTexts = 4.5;

/// The contrast ratio, 1 to 21.
[[nodiscard]] double ContrastOf(const Rgb& one, const Rgb& other);

/// Between the two colours; 0 is the first, 1 the second.
[[nodiscard]] Rgb Mixed(const Rgb& first, const Rgb& second, double part);

/// `color`, moved no further towards `text` than it takes to stand out from `ground` by the wanted contrast.
[[nodiscard]] Rgb Readable(const Rgb& color, const Rgb& ground, const Rgb& text, double wanted);

/// A colour for a name whose letter case was removed: the same in every run. All are equally bright: white is
/// readable on them, and they stand out from light and dark lists alike.
[[nodiscard]] Rgb ColorOfName(controls::TextView folded_name);

}  // namespace platform::front
