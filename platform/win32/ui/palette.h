#pragma once
// The colours of what the program paints itself, made from the system's. Not where they are painted.

#include <vector>

#include "platform/win32/ui/drawing.h"

namespace platform::win32 {

/// With high contrast all colours are the user's own, unmixed: each function then gives one of them.
enum class Contrast { kUsual, kHigh };
/// What the user has asked the system for.
[[nodiscard]] Contrast UsersContrast();

/// All that the user has chosen, to be compared with an earlier choice.
using SystemColors = std::vector<Color>;
[[nodiscard]] SystemColors UsersColors();

/// Of every second row: the ground, a little towards the text.
[[nodiscard]] Color StripeColor(Color ground, Color text, Contrast contrast);
/// Of the names of values: the text, paler but still readable.
[[nodiscard]] Color FadedColor(Color ground, Color text, Contrast contrast);
/// Of the text on a button that deletes.
[[nodiscard]] Color WarningColor(Color ground, Color text, Contrast contrast);

enum class Loudness { kQuiet, kLoud, kVeryLoud };
[[nodiscard]] Color ColorOf(Loudness loudness, Contrast contrast);

/// The ground and the text of a row that is selected; paler while the list does not have the keyboard.
struct Ink {
  Color ground;
  Color text;
};
enum class SelectionOf { kListWithKeyboard, kListWithoutKeyboard };
[[nodiscard]] Ink SelectionInk(SelectionOf list, Contrast contrast);

}  // namespace platform::win32
