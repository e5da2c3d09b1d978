#include "platform/win32/ui/row_painter.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>

#include "platform/win32/ui/drawing.h"
#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/text_drawing.h"

namespace platform::win32 {
namespace {

// At 100 %.
constexpr int kIconMargin = 3;
constexpr int kTextMargin = 6;
constexpr int kSortingArrow = 16;

PixelPlace Inside(const PixelPlace& place, int margin) {
  return {place.left + margin, place.top, std::max(0, place.width - 2 * margin), place.height};
}

/// The images have the size for the main screen's resolution; this one may be another.
void DrawImage(HDC context, HIMAGELIST images, int position, const PixelPlace& place) {
  int width = 0;
  int height = 0;
  ::ImageList_GetIconSize(images, &width, &height);
  if (width == place.width && height == place.height) {
    ::ImageList_Draw(images, position, context, place.left, place.top, ILD_TRANSPARENT);
    return;
  }
  HICON icon = ::ImageList_GetIcon(images, position, ILD_TRANSPARENT);
  ::DrawIconEx(context, place.left, place.top, icon, place.width, place.height, 0, nullptr, DI_NORMAL);
  ::DestroyIcon(icon);
}

}  // namespace

Ink RowPainter::InkOf(const RowLook& look) {
  const Contrast contrast = UsersContrast();
  if (look.selected) {
    return SelectionInk(
        look.list_has_keyboard ? SelectionOf::kListWithKeyboard : SelectionOf::kListWithoutKeyboard,
        contrast);
  }
  const Color ground = ShownColor(COLOR_WINDOW);
  const Color text = ShownColor(COLOR_WINDOWTEXT);
  return {look.striped ? StripeColor(ground, text, contrast) : ground, text};
}

Scale::Font RowPainter::FontOf(const controls::ListRow& row) {
  switch (row.mark) {
    case controls::RowMark::kPlaying:
      return Scale::Font::kBold;
    case controls::RowMark::kWaiting:
      return Scale::Font::kBoldItalic;
    case controls::RowMark::kNone:
      break;
  }
  return Scale::Font::kPlain;
}

void RowPainter::Paint(HDC context, const controls::ListRow& row, const RowLook& look) {
  const Ink ink = InkOf(look);
  const PixelPlace& area = look.area;
  const RECT all{area.left, area.top, area.left + area.width, area.top + area.height};
  FillArea(context, all, ink.ground);
  const SelectedFont font(context, scale_.Get(FontOf(row)));
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, ink.text);
  PixelPlace cell = area;
  PaintIcon(context, row, look);
  for (std::size_t column = 0; column < look.column_widths.size(); ++column) {
    cell.width = look.column_widths[column];
    PaintCell(context, row, column, cell, ink.text);
    cell.left += cell.width;
  }
  if (look.framed) DrawFocus(context, all);
}

int RowPainter::CellWidth(HDC context, const controls::ListRow& row, std::size_t column) const {
  const SelectedFont font(context, scale_.Get(FontOf(row)));
  const int icon = column == 0 ? scale_.Scaled(kIconMargin + kIconSide) : 0;
  return icon + WidthOf(context, OnOneLine(row.cells[column])) + 2 * scale_.Scaled(kTextMargin);
}

int RowPainter::CaptionWidth(HDC context, std::size_t column) const {
  const SelectedFont font(context, scale_.Get(Scale::Font::kPlain));
  return WidthOf(context, OnOneLine(list_.Columns()[column].caption)) +
         scale_.Scaled(2 * kTextMargin + kSortingArrow);
}

void RowPainter::PaintIcon(HDC context, const controls::ListRow& row, const RowLook& look) {
  const int side = scale_.Scaled(kIconSide);
  const PixelPlace& area = look.area;
  const PixelPlace place{area.left + scale_.Scaled(kIconMargin), area.top + (area.height - side) / 2, side,
                         side};
  const int end = area.left + (look.column_widths.empty() ? 0 : look.column_widths[0]);
  ::SaveDC(context);
  ::IntersectClipRect(context, area.left, area.top, end, area.top + area.height);
  _IMAGELIST* images = icons_.Images(ImageListHandle{list_.ImageList()});
  if (images == nullptr || row.icon < 0) {
    DrawPicture(context, initials_.Of(row.cells[0], side, scale_.Get(Scale::Font::kBold)), place);
  } else {
    DrawImage(context, images, row.icon, place);
  }
  DrawMark(context, row.mark, place, ShownColor(COLOR_WINDOW), ShownColor(COLOR_WINDOWTEXT));
  ::RestoreDC(context, -1);
}

void RowPainter::PaintCell(HDC context, const controls::ListRow& row, std::size_t column,
                           const PixelPlace& place, std::uint32_t ink) const {
  using controls::CellLook;
  const CellLook look = column < list_.Columns().size() ? list_.Columns()[column].look : CellLook::kText;
  const Text& text = row.cells[column];
  PixelPlace room = Inside(place, scale_.Scaled(kTextMargin));
  if (column == 0) {
    const int icon = scale_.Scaled(kIconMargin + kIconSide);
    room =
        Inside({place.left + icon, place.top, place.width - icon, place.height}, scale_.Scaled(kTextMargin));
  }
  if (look == CellLook::kMark && text == u"1") {
    const int side = std::min(scale_.FontHeight(), room.width);
    return DrawStar(context, {room.left, room.top + (room.height - side) / 2, side, side}, ink);
  }
  const CutAt cut = look == CellLook::kAddress ? CutAt::kMiddle : CutAt::kEnd;
  if (!text.empty()) DrawOnOneLine(context, OnOneLine(text), room, cut);
}

}  // namespace platform::win32
