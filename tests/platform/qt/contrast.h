#pragma once
// Measures how well something painted stands out from its ground. Not what is painted.

#include <QApplication>
#include <QColor>
#include <QImage>
#include <QPalette>
#include <algorithm>
#include <array>
#include <cmath>

#include "platform/qt/desktop_colors.h"

namespace platform::qt {

/// Relative luminance, as WCAG 2.1 defines it.
inline double Luminance(const QColor& color) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The contrast ratio of WCAG 2.1: 1 to 21.
inline double Contrast(const QColor& one, const QColor& other) {
  const double lighter = std::max(Luminance(one), Luminance(other));
  const double darker = std::min(Luminance(one), Luminance(other));
  return (lighter + 0.05) / (darker + 0.05);
}

/// The pixel of `picture` within `area` that stands out most from `ground`.
inline double StrongestContrast(const QImage& picture, const QRect& area, const QColor& ground) {
  double strongest = 1.0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      if (picture.rect().contains(x, y))
        strongest = std::max(strongest, Contrast(picture.pixelColor(x, y), ground));
    }
  }
  return strongest;
}

/// Gives the application other colours for the time of a test.
class WithPalette {
 public:
  explicit WithPalette(const QPalette& palette) { QApplication::setPalette(palette); }
  ~WithPalette() { QApplication::setPalette(QPalette()); }
  WithPalette(const WithPalette&) = delete;
  WithPalette& operator=(const WithPalette&) = delete;
};

/// What a desktop may prefer: light, dark, and high contrast of both kinds.
inline std::array<QPalette, 4> DesktopPalettes() {
  return {QPalette(QColor(239, 239, 239)), DesktopColors::DarkPalette(), QPalette(Qt::black, Qt::black),
          QPalette(Qt::white, Qt::white)};
}

}  // namespace platform::qt
