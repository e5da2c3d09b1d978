#pragma once
// How parts of the system's controls look where the program paints them because it is dark. Not when that is,
// nor whole rows and buttons (row_painter.h, button_face.h).

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/drawing.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/scale.h"
#include "ports/text.h"

struct tagPOINT;

namespace platform::win32 {

/// The edge of two pixels that the system gives a field or a list (WS_EX_CLIENTEDGE), outside of its inside;
/// of another colour while the control has the keyboard.
void PaintEdge(HWND control);

void PaintCheckBox(HWND box, HDC context, const Text& caption, const Scale& scale);
// The part at a place inside the control that looks different while it is pointed at; 0 for none. It is what
// the painters below are given as `pointed`.
/// The handle.
[[nodiscard]] int SliderPartAt(HWND slider, const tagPOINT& place);
/// The button.
[[nodiscard]] int ComboBoxPartAt(HWND box, const tagPOINT& place);
/// The upper arrow or the lower one.
[[nodiscard]] int ArrowAt(HWND arrows, const tagPOINT& place);

/// A horizontal slider.
void PaintSlider(HWND slider, HDC context, int pointed);
/// Without the field inside it, which is a window of its own.
void PaintComboBox(HWND box, HDC context, int pointed);
/// The two arrows behind a field.
void PaintArrows(HWND arrows, HDC context, int pointed);

enum class SortedBy { kNot, kUpwards, kDownwards };
void PaintHeaderItem(HDC context, const tagRECT& area, const Text& caption, SortedBy sorted, PartState state,
                     const Scale& scale);
/// Behind the last of its items.
void PaintHeaderRest(HWND header, HDC context);

}  // namespace platform::win32
