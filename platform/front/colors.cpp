#include "platform/front/colors.h"

#include <algorithm>
#include <cmath>

namespace platform::front {
namespace {

// Relative luminance: white has a contrast of 4.7 with it, the dark palette's list one of 3.3.
constexpr double kBrightness = 0.172;
constexpr double kSaturation = 0.6;
constexpr double kMost = 255.0;

double LuminanceOf(double red, double green, double blue) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue);
}

double LuminanceOf(const Rgb& color) {
  return LuminanceOf(color.red / kMost, color.green / kMost, color.blue / kMost);
}

/// A number that stays the same from run to run and from build to build.
/// Public reference: the FNV-1a hash function.
std::uint32_t SteadyNumber(controls::TextView text) {
  std::uint32_t number = 0x811c9dc5U;
  for (const char16_t unit : text) {
    number = (number ^ (unit & 0xffU)) * 0x01000193U;
    number = (number ^ (static_cast<std::uint32_t>(unit) >> 8U)) * 0x01000193U;
  }
  return number;
}

struct ColorParts {
  double red;
  double green;
  double blue;
};

/// Hue, saturation and lightness from 0 to 1.
ColorParts FromHsl(double hue, double saturation, double lightness) {
  const double reach = saturation * std::min(lightness, 1.0 - lightness);
  const auto part = [&](double offset) {
    const double step = std::fmod(offset + hue * 12.0, 12.0);
    return lightness - reach * std::clamp(std::min(step - 3.0, 9.0 - step), -1.0, 1.0);
  };
  return {part(0.0), part(8.0), part(4.0)};
}

std::uint8_t Byte(double part) { return static_cast<std::uint8_t>(std::lround(part * kMost)); }

}  // namespace

double ContrastOf(const Rgb& one, const Rgb& other) {
  const auto [darker, lighter] = std::minmax({LuminanceOf(one), LuminanceOf(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

Rgb Mixed(const Rgb& first, const Rgb& second, double part) {
  const auto mixed = [part](int from, int to) {
    return static_cast<std::uint8_t>(from + static_cast<int>(std::lround((to - from) * part)));
  };
  return {mixed(first.red, second.red), mixed(first.green, second.green), mixed(first.blue, second.blue)};
}

Rgb Readable(const Rgb& color, const Rgb& ground, const Rgb& text, double wanted) {
  constexpr int kSteps = 20;
  for (int step = 0; step < kSteps; ++step) {
    const Rgb nearer = Mixed(color, text, static_cast<double>(step) / kSteps);
    if (ContrastOf(nearer, ground) >= wanted) return nearer;
  }
  return text;
}

Rgb ColorOfName(controls::TextView folded_name) {
  constexpr std::uint32_t kHues = 360;
  const double hue = static_cast<double>(SteadyNumber(folded_name) % kHues) / kHues;
  double dark = 0.0;
  double light = 1.0;
  constexpr int kSteps = 12;
  for (int step = 0; step < kSteps; ++step) {
    const double middle = (dark + light) / 2;
    const ColorParts parts = FromHsl(hue, kSaturation, middle);
    const bool too_light = LuminanceOf(parts.red, parts.green, parts.blue) > kBrightness;
    (too_light ? light : dark) = middle;
  }
  const ColorParts parts = FromHsl(hue, kSaturation, dark);
  return {Byte(parts.red), Byte(parts.green), Byte(parts.blue)};
}

}  // namespace platform::front
