#pragma once
// Texts of one line, cut with dots where there is too little room. Not texts of several lines (text_panel.h).

#include <cstddef>

#include "platform/win32/base/handles.h"
#include "platform/win32/ui/scale.h"
#include "ports/text.h"

namespace platform::win32 {

/// The width in the font that is selected.
[[nodiscard]] int WidthOf(HDC context, TextView text);

/// As much of beginning and end as goes into `room` with dots between them; the text itself where it fits.
[[nodiscard]] Text CutInTheMiddle(HDC context, TextView text, int room);

/// How many units of the text go into `room` on one line: up to a blank, or the part of an address, where
/// there is one; at least one character.
[[nodiscard]] std::size_t UnitsInLine(HDC context, TextView text, int room);

/// The text with line ends in those of its words that are wider than `room`.
[[nodiscard]] Text WithLongWordsBroken(HDC context, TextView text, int room);

/// In the middle of the area's height, at its left; in the font and the colour that are selected.
enum class CutAt { kEnd, kMiddle };
void DrawOnOneLine(HDC context, TextView text, const PixelPlace& area, CutAt cut = CutAt::kEnd);

/// Measures in a window, or draws outside of its painting.
class WindowContext {
 public:
  explicit WindowContext(HWND window);
  ~WindowContext();
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;
  [[nodiscard]] HDC Get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

/// Paints into memory, and shows all at once at its end, so that nothing flickers.
class PaintBuffer {
 public:
  /// The area of `target` that is painted; its ground is painted, too.
  PaintBuffer(HDC target, const PixelPlace& area);
  ~PaintBuffer();
  PaintBuffer(const PaintBuffer&) = delete;
  PaintBuffer& operator=(const PaintBuffer&) = delete;
  /// With the target's coordinates.
  [[nodiscard]] HDC Get() const { return context_; }

 private:
  HDC target_;
  PixelPlace area_;
  HDC context_;
  HBITMAP bitmap_ = nullptr;
  void* before_ = nullptr;
};

/// Selects a font for as long as it lives.
class SelectedFont {
 public:
  SelectedFont(HDC context, HFONT font);
  ~SelectedFont();
  SelectedFont(const SelectedFont&) = delete;
  SelectedFont& operator=(const SelectedFont&) = delete;

 private:
  HDC context_;
  void* before_;
};

}  // namespace platform::win32
