#pragma once
// Controls that show or set a number or a picture: progress bar, scroll bar, image. Not for texts.

#include <algorithm>
#include <cstdint>
#include <utility>

#include "controls/control.h"

namespace controls {

/// A bar between two ends; values outside are moved to the nearer end.
class ProgressBar final : public Control {
 public:
  [[nodiscard]] int Minimum() const { return minimum_; }
  [[nodiscard]] int Maximum() const { return maximum_; }
  [[nodiscard]] int Value() const { return value_; }
  /// The value is taken along into the new range.
  void SetRange(int minimum, int maximum) {
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
    value_ = std::clamp(value_, minimum_, maximum_);
    Changed.Raise();
  }
  void SetValue(int value) { Set(value_, std::clamp(value, minimum_, maximum_)); }

 private:
  int minimum_ = 0;
  int maximum_ = 100;
  int value_ = 0;
};

/// A slider. ValueChanged comes when the value changes, Scrolled while the user drags.
class ScrollBar final : public Control {
 public:
  [[nodiscard]] int Minimum() const { return minimum_; }
  [[nodiscard]] int Maximum() const { return maximum_; }
  [[nodiscard]] int Value() const { return value_; }
  /// The value is taken along into the new range.
  void SetRange(int minimum, int maximum) {
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
    const int value = std::clamp(value_, minimum_, maximum_);
    const bool moved = std::exchange(value_, value) != value;
    Changed.Raise();
    if (moved) ValueChanged.Raise();
  }
  void SetValue(int value) {
    if (Set(value_, std::clamp(value, minimum_, maximum_))) ValueChanged.Raise();
  }
  /// The user drags the slider and has not released it yet.
  void Scroll(int value) {
    if (Set(value_, std::clamp(value, minimum_, maximum_))) Scrolled.Raise();
  }

  Event<> ValueChanged;
  Event<> Scrolled;

 private:
  int minimum_ = 0;
  int maximum_ = 100;
  int value_ = 0;
};

/// A picture, as the handle from its decoder; 0 is none. The control does not own it.
class Image final : public Control {
 public:
  [[nodiscard]] std::uint32_t Picture() const { return picture_; }
  void SetPicture(std::uint32_t picture) { Set(picture_, picture); }

 private:
  std::uint32_t picture_ = 0;
};

}  // namespace controls
