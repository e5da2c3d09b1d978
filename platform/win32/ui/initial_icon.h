#pragma once
// The icon that is drawn for a station without one: an initial on a colour, both from the station's name.
// Not which stations have an icon of their own.

#include <map>
#include <string>

#include "platform/win32/ui/drawing.h"
#include "ports/text.h"

namespace platform::win32 {

/// The name's first letter or digit with its accents, as a capital where there is one; empty when the name
/// has neither. What comes before it (blanks, brackets, pictures) is skipped.
[[nodiscard]] Text InitialOf(TextView name);

/// A square of so many pixels. An initial that is empty, or that the user's font lacks, leaves room for an
/// aerial.
[[nodiscard]] Pixels DrawInitialIcon(const Text& initial, front::Rgb color, int side, HFONT font);

/// Draws each icon once and keeps the last ones, so that scrolling a list draws few.
class InitialIcons {
 public:
  static constexpr std::size_t kMostKept = 512;

  /// For the first cell of a row; valid until the next call.
  [[nodiscard]] const Pixels& Of(const Text& name, int side, HFONT font);
  /// To be called when the font has changed.
  void Forget() { kept_.clear(); }
  [[nodiscard]] std::size_t Kept() const { return kept_.size(); }

 private:
  std::map<Text, Pixels> kept_;
};

}  // namespace platform::win32
