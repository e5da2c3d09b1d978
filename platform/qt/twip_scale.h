#pragma once
// Turns the program's lengths into pixels: 15 twips are one pixel with the font that the places were drawn
// for; a larger desktop font enlarges all places. Not for the display's own scaling, which is Qt's.

#include <QFont>
#include <QRect>
#include <QSize>

#include "controls/control.h"

namespace platform::qt {

class TwipScale {
 public:
  /// The scale for a font; never below 1.
  explicit TwipScale(const QFont& font) { SetFont(font); }

  /// True when the scale has changed.
  bool SetFont(const QFont& font);

  [[nodiscard]] double Factor() const { return factor_; }
  [[nodiscard]] int Pixels(int twips) const;
  [[nodiscard]] int Twips(int pixels) const;
  [[nodiscard]] QRect Pixels(const controls::Place& place) const;
  /// A width given in pixels at 100 %.
  [[nodiscard]] int Scaled(int design_pixels) const { return Pixels(design_pixels * kTwipsPerPixel); }
  [[nodiscard]] int Unscaled(int pixels) const;

 private:
  static constexpr int kTwipsPerPixel = 15;
  double factor_ = 1.0;
};

}  // namespace platform::qt
