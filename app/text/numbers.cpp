#include "app/text/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

#include "app/text/text_helpers.h"

namespace app {

std::optional<double> ToNumber(TextView text) {
  text = Trim(text);
  const bool negative = text.starts_with(u'-');
  if (negative || text.starts_with(u'+')) text.remove_prefix(1);
  // Words such as "inf" and a second sign would be numbers for the conversion below.
  const auto first_digit = text.find_first_not_of(u".,");
  if (first_digit == TextView::npos || text[first_digit] < u'0' || text[first_digit] > u'9') return {};

  std::string digits;
  for (const char16_t unit : text) {
    if (unit > 0x7F) return {};
    digits.push_back(unit == u',' ? '.' : static_cast<char>(unit));
  }
  double number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stop != end) return {};
  return negative ? -number : number;
}

double RoundTiesToEven(double number) {
  const double below = std::floor(number);
  const double part = number - below;
  const bool up = part > 0.5 || (part == 0.5 && std::fmod(below, 2.0) != 0.0);
  return up ? below + 1.0 : below;
}

std::optional<std::int32_t> RoundToInt32(double number) {
  const double rounded = RoundTiesToEven(number);
  const bool fits = rounded >= std::numeric_limits<std::int32_t>::min() &&
                    rounded <= std::numeric_limits<std::int32_t>::max();
  if (!fits) return {};
  return static_cast<std::int32_t>(rounded);
}

std::optional<std::int32_t> ToInt32(TextView text) {
  const auto number = ToNumber(text);
  return number ? RoundToInt32(*number) : std::nullopt;
}

Text FormatNumber(std::int64_t number, int digits) {
  std::string figures = std::to_string(number);
  const bool negative = figures.front() == '-';
  if (negative) figures.erase(0, 1);
  const auto wanted = static_cast<std::size_t>(digits < 0 ? 0 : digits);
  if (figures.size() < wanted) figures.insert(0, wanted - figures.size(), '0');
  if (negative) figures.insert(0, 1, '-');
  return {figures.begin(), figures.end()};
}

}  // namespace app
