#include "catalogue/sort_dates.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>

namespace catalogue {

namespace {

using platform::TextView;

/// The text in ASCII without blanks around it; what is not ASCII becomes "?" and so fails to parse.
std::string Ascii(TextView text) {
  std::string ascii;
  for (const char16_t unit : text) ascii.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
  const auto first = ascii.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return ascii.substr(first, ascii.find_last_not_of(' ') - first + 1);
}

/// Reads numbers separated by the characters of `separators`; nothing when the text has a different form.
template <std::size_t Count>
std::optional<std::array<std::int32_t, Count>> Numbers(std::string_view text, char separator) {
  std::array<std::int32_t, Count> numbers{};
  const char* at = text.data();
  const char* const end = at + text.size();
  for (std::size_t index = 0; index < Count; ++index) {
    if (index > 0 && (at == end || *at++ != separator)) return std::nullopt;
    const auto [next, error] = std::from_chars(at, end, numbers[index]);
    if (error != std::errc{} || numbers[index] < 0) return std::nullopt;
    at = next;
  }
  if (at != end) return std::nullopt;
  return numbers;
}

/// Days since the year 0 of the Gregorian calendar extended backwards; only differences matter.
std::optional<double> Days(std::int32_t year, std::int32_t month, std::int32_t day) {
  if (year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const std::int32_t shifted_year = month > 2 ? year : year - 1;
  const std::int32_t shifted_month = month > 2 ? month - 3 : month + 9;
  const std::int32_t leap_days = shifted_year / 4 - shifted_year / 100 + shifted_year / 400;
  const std::int32_t days_before_month = (153 * shifted_month + 2) / 5;
  return 365 * shifted_year + leap_days + days_before_month + day;
}

std::optional<double> Calendar(std::string_view text) {
  if (const auto german = Numbers<3>(text, '.')) return Days((*german)[2], (*german)[1], (*german)[0]);
  if (const auto iso = Numbers<3>(text, '-')) return Days((*iso)[0], (*iso)[1], (*iso)[2]);
  return std::nullopt;
}

std::optional<double> TimeOfDay(std::string_view text) {
  if (const auto full = Numbers<3>(text, ':')) {
    return ((*full)[0] * 3600.0 + (*full)[1] * 60.0 + (*full)[2]) / 86400.0;
  }
  if (const auto brief = Numbers<2>(text, ':')) return ((*brief)[0] * 3600.0 + (*brief)[1] * 60.0) / 86400.0;
  return std::nullopt;
}

}  // namespace

double DateOf(TextView text) {
  const std::string ascii = Ascii(text);
  const auto blank = ascii.find(' ');
  const auto days = Calendar(std::string_view(ascii).substr(0, blank));
  if (!days) return 0;
  if (blank == std::string::npos) return *days;
  const auto time = TimeOfDay(std::string_view(ascii).substr(blank + 1));
  return time ? *days + *time : 0;
}

}  // namespace catalogue
