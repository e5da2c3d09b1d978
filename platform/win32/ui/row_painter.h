#pragma once
// Paints a row of a list in report form: stripes, icon, mark, star, texts cut to their columns. Not which row
// has which mark, and not the system's list view.

#include <vector>

#include "controls/list_view.h"
#include "platform/win32/base/handles.h"
#include "platform/win32/ui/icons.h"
#include "platform/win32/ui/initial_icon.h"
#include "platform/win32/ui/palette.h"
#include "platform/win32/ui/scale.h"

namespace platform::win32 {

/// How a row is to look now.
struct RowLook {
  PixelPlace area;
  std::vector<int> column_widths;
  bool striped = false;
  bool selected = false;
  bool list_has_keyboard = false;
  bool framed = false;  ///< the keyboard is on it, and the user wants to see where
};

class RowPainter {
 public:
  /// At 100 %; icons are squares.
  static constexpr int kIconSide = 32;
  static constexpr int kRowHeight = 38;

  RowPainter(const controls::ListView& list, const Win32Icons& icons, const Scale& scale)
      : list_(list), icons_(icons), scale_(scale) {}

  void Paint(HDC context, const controls::ListRow& row, const RowLook& look);
  /// What a cell needs to be painted whole, and what a header does with the arrow of a sorting.
  [[nodiscard]] int CellWidth(HDC context, const controls::ListRow& row, std::size_t column) const;
  [[nodiscard]] int CaptionWidth(HDC context, std::size_t column) const;
  /// To be called when the scale has changed.
  void FollowScale() { initials_.Forget(); }

 private:
  [[nodiscard]] static Ink InkOf(const RowLook& look);
  [[nodiscard]] static Scale::Font FontOf(const controls::ListRow& row);
  void PaintIcon(HDC context, const controls::ListRow& row, const RowLook& look);
  void PaintCell(HDC context, const controls::ListRow& row, std::size_t column, const PixelPlace& place,
                 std::uint32_t ink) const;

  const controls::ListView& list_;
  const Win32Icons& icons_;
  const Scale& scale_;
  InitialIcons initials_;
};

}  // namespace platform::win32
