#pragma once
// What a user types into a field, beside what the program writes into it. Not the field.

#include <functional>

#include "controls/text_box.h"

namespace platform::front {

/// Distinguishes what the program writes into a field from what the user types into it, while the control is
/// notified of the typing only later. What the program has written since replaces it.
class TypedText final {
 public:
  explicit TypedText(controls::TextControl& control) : control_(control) {}

  /// Which typing counts: that which was based on the program's latest text.
  [[nodiscard]] int Basis() const { return basis_; }
  /// True when the program wrote another text since this was last asked; what was typed before is void then.
  bool ProgramWrote();
  /// The turn of a typed text: `write` gives it to the control, unless it is void.
  void Take(int basis, const controls::Text& typed, const std::function<void()>& write);

 private:
  controls::TextControl& control_;
  controls::Text known_;
  int basis_ = 0;
};

}  // namespace platform::front
