#include "platform/qt/twip_scale.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace platform::qt {
namespace {

// The largest font that the design-time places hold without cutting a text, by height and by the width of
// one of their captions.
constexpr double kDesignFontHeight = 17.0;
constexpr double kDesignSampleWidth = 120.0;
constexpr double kLargestFactor = 4.0;

}  // namespace

bool TwipScale::SetFont(const QFont& font) {
  const QFontMetricsF metrics(font);
  const double by_height = metrics.height() / kDesignFontHeight;
  const double by_width = metrics.horizontalAdvance(QStringLiteral("Sender hinzufügen")) / kDesignSampleWidth;
  const double factor = std::clamp(std::max(by_height, by_width), 1.0, kLargestFactor);
  if (std::abs(factor - factor_) < 1e-6) return false;
  factor_ = factor;
  return true;
}

int TwipScale::Pixels(int twips) const {
  return static_cast<int>(std::lround(twips * factor_ / kTwipsPerPixel));
}

int TwipScale::Twips(int pixels) const {
  return static_cast<int>(std::lround(pixels * kTwipsPerPixel / factor_));
}

int TwipScale::Unscaled(int pixels) const { return static_cast<int>(std::lround(pixels / factor_)); }

QRect TwipScale::Pixels(const controls::Place& place) const {
  return {Pixels(place.left), Pixels(place.top), Pixels(place.width), Pixels(place.height)};
}

}  // namespace platform::qt
