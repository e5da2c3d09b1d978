#pragma once
// Texts as dates, for sorting only. Not for numbers (app/text/numbers.h) or for reading a clock.

#include "ports/text.h"

namespace catalogue {

/// A point in time as days with their fraction, from "day.month.year" or "year-month-day", each with an
/// optional "hour:minute" or "hour:minute:second"; 0 when the text is not a date.
[[nodiscard]] double DateOf(platform::TextView text);

}  // namespace catalogue
