#pragma once
// When a line whose text changes by itself is announced to screen readers. Not how, and no timer.

#include "controls/control.h"

namespace platform::front {

/// Each text has its turn at once, an empty one never. One that differs from the text before only in its
/// numbers (a countdown, a percentage) has it once it has stopped changing.
class AnnouncedText final {
 public:
  enum class Turn { kNever, kNow, kWhenItRests };
  /// How long a text that rests has not changed, in milliseconds.
  static constexpr int kRest = 3000;

  /// The line shows another text than before, whose turn takes the place of an earlier one's.
  Turn Show(controls::Text text);

 private:
  controls::Text wording_;  ///< without numbers
};

}  // namespace platform::front
