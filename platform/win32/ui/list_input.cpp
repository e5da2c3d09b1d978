// What the user does in a list, and what the system asks for to show it (list_binding.h).

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/dark_parts.h"
#include "platform/win32/ui/list_binding.h"
#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/text_drawing.h"

namespace platform::win32 {
namespace {

constexpr UINT kRestMilliseconds = 250;
bool StartsWith(const Text& text, std::wstring_view start) {
  if (text.size() < start.size()) return false;
  const int length = static_cast<int>(start.size());
  return ::CompareStringOrdinal(WideData(text), length, start.data(), length, TRUE) == CSTR_EQUAL;
}

bool MenuIsOpen() {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof thread;
  ::GetGUIThreadInfo(::GetCurrentThreadId(), &thread);
  return (thread.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE)) != 0;
}

}  // namespace

std::intptr_t ListBinding::Notice(tagNMHDR& notice) {
  switch (notice.code) {
    case LVN_GETDISPINFOW:
      GiveCell(reinterpret_cast<NMLVDISPINFOW&>(notice));
      return 0;
    case NM_CUSTOMDRAW:
      return Paint(reinterpret_cast<NMLVCUSTOMDRAW&>(notice));
    case LVN_ODFINDITEMW:
      return Find(notice);
    case LVN_ITEMCHANGED:
      RedrawRow(reinterpret_cast<const NMLISTVIEW&>(notice).iItem);
      NoticeSelection();
      return 0;
    case LVN_ODSTATECHANGED:
      RedrawRow(kAllRows);
      NoticeSelection();
      return 0;
    case LVN_COLUMNCLICK:
      HandOver([this, column = reinterpret_cast<const NMLISTVIEW&>(notice).iSubItem] {
        if (!IsBlocked()) list_.ClickHeader(column);
      });
      return 0;
    case NM_CLICK:
      Click(reinterpret_cast<const NMITEMACTIVATE&>(notice).iItem);
      return 0;
    case NM_DBLCLK:
      OpenRow(list_.RowAt(static_cast<std::size_t>(reinterpret_cast<const NMITEMACTIVATE&>(notice).iItem)));
      return 0;
    default:
      return 0;
  }
}

void ListBinding::GiveCell(tagLVDISPINFOW& wanted) const {
  const controls::ListRow* row = RowAt(wanted.item.iItem);
  if (row == nullptr) return;
  if ((wanted.item.mask & LVIF_IMAGE) != 0) wanted.item.iImage = row->icon;
  if ((wanted.item.mask & LVIF_TEXT) == 0 || wanted.item.cchTextMax <= 0) return;
  const auto room = static_cast<std::size_t>(wanted.item.cchTextMax) - 1;
  const Text text = OnOneLine(SpokenCell(*row, static_cast<std::size_t>(wanted.item.iSubItem)), room);
  ::lstrcpynW(wanted.item.pszText, Wide(text), wanted.item.cchTextMax);
}

/// The rows are painted here, so the texts that the system asks for are those for screen readers.
Text ListBinding::SpokenCell(const controls::ListRow& row, std::size_t column) const {
  const Text& text = row.cells[column];
  if (column > 0 || row.mark == controls::RowMark::kNone) return text;
  return text + u", " + list_.MarkText(row.mark);
}

std::intptr_t ListBinding::Paint(const tagNMLVCUSTOMDRAW& step) {
  if (step.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (step.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const int position = static_cast<int>(step.nmcd.dwItemSpec);
  const controls::ListRow* row = RowAt(position);
  if (row != nullptr) painter_.Paint(step.nmcd.hdc, *row, LookOf(position));
  return CDRF_SKIPDEFAULT;
}

std::optional<std::intptr_t> ListBinding::PaintHeader(const tagNMHDR& notice) const {
  const auto header = reinterpret_cast<HWND>(::SendMessageW(Handle(), LVM_GETHEADER, 0, 0));
  const bool paints = notice.hwndFrom == header && notice.code == static_cast<UINT>(NM_CUSTOMDRAW);
  if (!paints || ShownBrightness() == Brightness::kLight) return std::nullopt;
  const auto& step = reinterpret_cast<const NMCUSTOMDRAW&>(notice);
  if (step.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
  if (step.dwDrawStage == CDDS_POSTPAINT) PaintHeaderRest(header, step.hdc);
  if (step.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const auto column = static_cast<int>(step.dwItemSpec);
  const bool up = list_.GetSortDirection() == controls::SortDirection::kAscending;
  const SortedBy sorted = column != list_.SortColumn() ? SortedBy::kNot
                          : up                         ? SortedBy::kUpwards
                                                       : SortedBy::kDownwards;
  const PartState state = (step.uItemState & CDIS_SELECTED) != 0 ? PartState::kPressed
                          : (step.uItemState & CDIS_HOT) != 0    ? PartState::kPointedAt
                                                                 : PartState::kUsual;
  const auto index = static_cast<std::size_t>(column);
  const Text caption = index < shown_captions_.size() ? shown_captions_[index] : Text();
  PaintHeaderItem(step.hdc, step.rc, caption, sorted, state, GetScale());
  return CDRF_SKIPDEFAULT;
}

/// The system redraws what it would have painted itself, which is less than the whole row.
void ListBinding::RedrawRow(int row) const {
  RECT area{};
  ::GetClientRect(Handle(), &area);
  RECT bounds{};
  bounds.left = LVIR_BOUNDS;
  const bool known = row != kAllRows && ::SendMessageW(Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                                                       reinterpret_cast<LPARAM>(&bounds)) != 0;
  if (known) {
    area.top = bounds.top;
    area.bottom = bounds.bottom;
  }
  ::InvalidateRect(Handle(), &area, FALSE);
}

void ListBinding::FocusChanged() const {
  if (ShownBrightness() == Brightness::kDark) PaintEdge(Handle());
  const auto shown = ShownRow();
  if (shown) RedrawRow(*shown);
}

RowLook ListBinding::LookOf(int row) const {
  const auto position = static_cast<WPARAM>(row);
  const LRESULT state = ::SendMessageW(Handle(), LVM_GETITEMSTATE, position, LVIS_SELECTED | LVIS_FOCUSED);
  const bool frames = (::SendMessageW(Handle(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) == 0;
  RECT area{};
  area.left = LVIR_BOUNDS;
  ::SendMessageW(Handle(), LVM_GETITEMRECT, position, reinterpret_cast<LPARAM>(&area));
  RowLook look;
  look.area = {area.left, area.top, area.right - area.left, area.bottom - area.top};
  look.column_widths = columns_.Shown();
  look.striped = row % 2 != 0;
  look.selected = (state & LVIS_SELECTED) != 0;
  look.list_has_keyboard = ::GetFocus() == Handle();
  look.framed = look.list_has_keyboard && frames && (state & LVIS_FOCUSED) != 0;
  return look;
}

int ListBinding::WidthNeeded(int column) const {
  const WindowContext context(Handle());
  const auto index = static_cast<std::size_t>(column);
  int widest = painter_.CaptionWidth(context.Get(), index);
  const auto first = static_cast<int>(::SendMessageW(Handle(), LVM_GETTOPINDEX, 0, 0));
  const auto count = static_cast<int>(::SendMessageW(Handle(), LVM_GETCOUNTPERPAGE, 0, 0));
  for (int position = first; position <= first + count; ++position) {
    const controls::ListRow* row = RowAt(position);
    if (row != nullptr) widest = std::max(widest, painter_.CellWidth(context.Get(), *row, index));
  }
  return widest;
}

void ListBinding::PointAt(int left, int top) {
  LVHITTESTINFO hit{};
  hit.pt = {left, top};
  ::SendMessageW(Handle(), LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  pointed_at_ = {hit.iItem, hit.iSubItem};
  FollowTip();
}

Text ListBinding::Tip() const {
  const controls::ListRow* row = RowAt(pointed_at_.first);
  if (row == nullptr) return ControlBinding::Tip();
  const auto column = static_cast<std::size_t>(std::max(0, pointed_at_.second));
  const std::vector<int> widths = columns_.Shown();
  if (column >= widths.size()) return ControlBinding::Tip();
  const WindowContext context(Handle());
  const bool cut = painter_.CellWidth(context.Get(), *row, column) > widths[column];
  return cut ? OnOneLine(row->cells[column]) : ControlBinding::Tip();
}

/// The hint needs fresh ground: painted over itself its letters would become bolder.
void ListBinding::PrepareHint() const {
  if (ShowsHint()) ::InvalidateRect(Handle(), nullptr, TRUE);
}

void ListBinding::PaintHint() const {
  if (!ShowsHint()) return;
  HDC context = ::GetDC(Handle());
  RECT all{};
  ::GetClientRect(Handle(), &all);
  RECT header{};
  ::GetClientRect(reinterpret_cast<HWND>(::SendMessageW(Handle(), LVM_GETHEADER, 0, 0)), &header);
  all.top += header.bottom;
  // Short lines in the middle read better than one across the whole list.
  const int line = GetScale().Scaled(360);
  const int surplus = std::max(0, static_cast<int>(all.right - all.left) - line);
  const HGDIOBJ before = ::SelectObject(context, GetScale().Get(Scale::Font::kPlain));
  const Text text = Lines(list_.EmptyText());
  RECT room{all.left + surplus / 2, all.top, all.right - surplus / 2, all.bottom};
  RECT needed = room;
  constexpr UINT kFormat = DT_CENTER | DT_WORDBREAK | DT_NOPREFIX;
  ::DrawTextW(context, WideData(text), static_cast<int>(text.size()), &needed, kFormat | DT_CALCRECT);
  room.top += std::max(0L, (room.bottom - room.top - (needed.bottom - needed.top)) / 2);
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, ShownColor(COLOR_WINDOWTEXT));
  ::DrawTextW(context, WideData(text), static_cast<int>(text.size()), &room, kFormat);
  ::SelectObject(context, before);
  ::ReleaseDC(Handle(), context);
}

std::intptr_t ListBinding::Find(tagNMHDR& notice) const {
  const auto& wanted = reinterpret_cast<const NMLVFINDITEMW&>(notice);
  const int count = static_cast<int>(list_.Count());
  if ((wanted.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || count == 0) return -1;
  const std::wstring_view start = wanted.lvfi.psz == nullptr ? L"" : wanted.lvfi.psz;
  const int first = wanted.iStart < 0 || wanted.iStart >= count ? 0 : wanted.iStart;
  for (int step = 0; step < count; ++step) {
    const int row = (first + step) % count;
    if (StartsWith(list_.Rows()[static_cast<std::size_t>(row)].cells[0], start)) return row;
  }
  return -1;
}

void ListBinding::NoticeSelection() {
  if (following_) return;
  chosen_ = ShownId();
  if (chosen_ == list_.SelectedRow() && !handed_over_) chosen_.reset();
  StartRest();
}

void ListBinding::StartRest() { ::SetTimer(Handle(), kRestTimer, kRestMilliseconds, nullptr); }

void ListBinding::RestTimerTicked() { Rest(); }

void ListBinding::ReleaseKey() { Rest(); }

void ListBinding::PressMouse() { selected_before_press_ = ShownRow(); }

void ListBinding::Click(int row) {
  const bool again = row >= 0 && selected_before_press_ == row && !chosen_;
  if (!again) return Rest();
  HandOver(
      [this, id = list_.RowAt(static_cast<std::size_t>(row))] {
        if (!IsBlocked()) list_.ClickRow(id);
      },
      UseOnWait());
}

void ListBinding::Rest() {
  ::KillTimer(Handle(), kRestTimer);
  if (!chosen_ || chosen_ == handed_over_) return;
  // A menu or a dialog must not have to wait for what a selection starts.
  if (MenuIsOpen() || IsBlocked()) return StartRest();
  handed_over_ = chosen_;
  const bool selects_a_row = *chosen_ != controls::RowId::kNone;
  HandOver(
      [this, id = *chosen_] {
        if (handed_over_ == id) handed_over_.reset();
        if (IsBlocked()) return StartRest();
        Select(id);
      },
      selects_a_row ? UseOnWait() : OnWait::kKeepsWaiting);
}

void ListBinding::Select(controls::RowId id) {
  if (chosen_ == id) {
    chosen_.reset();
    ::KillTimer(Handle(), kRestTimer);
  }
  if (id != list_.SelectedRow()) list_.Select(id);
  FollowSelection();
}

void ListBinding::OpenRow() {
  if (!ShownRow()) {
    const LRESULT framed = ::SendMessageW(Handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    if (framed < 0) return;
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED;
    state.state = LVIS_SELECTED;
    ::SendMessageW(Handle(), LVM_SETITEMSTATE, static_cast<WPARAM>(framed), reinterpret_cast<LPARAM>(&state));
  }
  OpenRow(ShownId());
}

void ListBinding::OpenRow(controls::RowId id) {
  if (id == controls::RowId::kNone) return;
  HandOver(
      [this, id] {
        if (IsBlocked()) return;
        Select(id);
        // Another row may have been selected meanwhile, and starting would play that one.
        if (list_.SelectedRow() == id) list_.DoubleClick(id);
      },
      UseOnWait());
}

void ListBinding::DeleteRow(controls::RowId id) {
  HandOver([this, id] {
    if (IsBlocked()) return;
    // The list may not know yet which row is shown selected, and selecting it may take so long that the user
    // selects another one meanwhile: only the row that the key was pressed for is deleted.
    Select(id);
    if (list_.SelectedRow() == id) list_.PressDelete();
  });
}

void ListBinding::UseOnRow(controls::RowCommand& command, controls::RowId id, bool checked) {
  HandOver([this, &command, id, checked] {
    if (!IsBlocked()) command.Choose(list_, id, checked);
  });
}

void ListBinding::ContextWanted(int left, int top) {
  if (left != -1 || top != -1) return MenuWanted.Raise(left, top);
  RECT row{};
  row.left = LVIR_LABEL;
  const auto shown = ShownRow();
  if (shown) {
    // The row may be scrolled out of sight.
    ::SendMessageW(Handle(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(*shown), FALSE);
    ::SendMessageW(Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(*shown), reinterpret_cast<LPARAM>(&row));
  }
  RECT inside{};
  ::GetClientRect(Handle(), &inside);
  POINT place{std::clamp(shown ? row.left : 0L, inside.left, inside.right),
              std::clamp(shown ? (row.top + row.bottom) / 2 : 0L, inside.top, inside.bottom)};
  ::ClientToScreen(Handle(), &place);
  MenuWanted.Raise(static_cast<int>(place.x), static_cast<int>(place.y));
}

}  // namespace platform::win32
