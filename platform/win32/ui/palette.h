#pragma once
// The colours of what the program paints itself, made from the system's, and those while it is dark. Not
// where they are painted.

#include <vector>

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/dark_mode.h"
#include "platform/win32/ui/drawing.h"

namespace platform::win32 {

/// A colour by the system's number for it (COLOR_...): the system's own, or the program's while it is dark.
[[nodiscard]] Color ShownColor(int number);
/// A brush of it, which is not to be deleted.
[[nodiscard]] HBRUSH ShownBrush(int number);

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

/// What is pressed with the mouse, where the program paints it instead of the system's theme.
enum class PartState { kUsual, kPointedAt, kPressed, kDisabled };
struct Face {
  Color ground;
  Color frame;
  Color text;
};
[[nodiscard]] Face FaceOf(PartState state);
/// Of what is dragged.
[[nodiscard]] Color HandleColor(PartState state);

}  // namespace platform::win32
