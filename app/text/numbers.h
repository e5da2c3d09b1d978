#pragma once
// Converts texts to numbers and numbers to texts, the same under every locale.
// Not for times of day or for the player's time values.

#include <cstdint>
#include <optional>

#include "app/text/text.h"

namespace app {

/// The number that a text represents: blanks around it, a sign, digits with "." or "," as the decimal mark,
/// and an exponent are accepted. Nothing when the text is anything else (an empty one too) or when the number
/// is too large.
[[nodiscard]] std::optional<double> ToNumber(TextView text);

/// The nearest whole number; of two equally near ones the even one (0.5 gives 0, 1.5 gives 2). The program
/// rounds in no other way.
[[nodiscard]] double RoundTiesToEven(double number);

/// The number rounded in this way. Nothing when it does not fit (NaN included).
[[nodiscard]] std::optional<std::int32_t> RoundToInt32(double number);

/// The number that a text represents, rounded in this way: "2.5" gives 2, " 3,5 " gives 4.
[[nodiscard]] std::optional<std::int32_t> ToInt32(TextView text);

/// The decimal digits of a whole number, with "-" before a negative one; at least `digits` digits, filled
/// up with zeros from the left.
[[nodiscard]] Text FormatNumber(std::int64_t number, int digits = 1);

}  // namespace app
