#include "platform/qt/readable_color.h"

#include <algorithm>
#include <cmath>

namespace platform::qt {
namespace {

/// Relative luminance by WCAG 2.1.
double LuminanceOf(const QColor& color) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

double ContrastOf(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({LuminanceOf(one), LuminanceOf(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor Mixed(const QColor& first, const QColor& second, double part) {
  const auto mixed = [part](int from, int to) {
    return from + static_cast<int>(std::lround((to - from) * part));
  };
  return {mixed(first.red(), second.red()), mixed(first.green(), second.green()),
          mixed(first.blue(), second.blue())};
}

QColor Readable(const QColor& color, const QColor& ground, const QColor& text, double wanted) {
  constexpr int kSteps = 20;
  for (int step = 0; step < kSteps; ++step) {
    const QColor nearer = Mixed(color, text, static_cast<double>(step) / kSteps);
    if (ContrastOf(nearer, ground) >= wanted) return nearer;
  }
  return text;
}

}  // namespace platform::qt
