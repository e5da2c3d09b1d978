#include "platform/win32/ui/list_binding.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/ui/dark_parts.h"
#include "platform/win32/ui/shown_text.h"

namespace platform::win32 {
namespace {

constexpr UINT_PTR kGestures = 2;
constexpr std::uint32_t kListStyle =
    LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS;

bool IsSteppingKey(WPARAM key) { return key == VK_RETURN || key == VK_DELETE; }

LRESULT CALLBACK ListGestures(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR /*id*/,
                              DWORD_PTR reference) {
  auto& binding = *reinterpret_cast<ListBinding*>(reference);
  constexpr LPARAM kWasDown = 1 << 30;
  switch (message) {
    case WM_KEYDOWN:
      if (!IsSteppingKey(w)) break;
      if ((l & kWasDown) != 0) return 0;
      if (w == VK_RETURN) binding.OpenRow();
      if (w == VK_DELETE) binding.DeleteRow();
      return 0;
    case WM_LBUTTONDOWN:
      binding.PressMouse();
      break;
    case WM_MOUSEMOVE:
      binding.PointAt(static_cast<short>(LOWORD(l)), static_cast<short>(HIWORD(l)));
      break;
    case WM_TIMER:
      if (w != ListBinding::kRestTimer) break;
      binding.RestTimerTicked();
      return 0;
    case WM_NOTIFY: {
      const auto painted = binding.PaintHeader(*reinterpret_cast<const NMHDR*>(l));
      if (painted) return *painted;
      const LRESULT handled = ::DefSubclassProc(window, message, w, l);
      binding.FollowHeader(*reinterpret_cast<const NMHDR*>(l));
      return handled;
    }
    case WM_SIZE: {
      const LRESULT handled = ::DefSubclassProc(window, message, w, l);
      binding.FitColumns();
      return handled;
    }
    case WM_NCPAINT: {
      // The scroll bars remain the system's.
      const LRESULT painted = ::DefSubclassProc(window, message, w, l);
      if (ShownBrightness() == Brightness::kDark) PaintEdge(window);
      return painted;
    }
    case WM_PAINT: {
      binding.PrepareHint();
      const LRESULT painted = ::DefSubclassProc(window, message, w, l);
      binding.PaintHint();
      return painted;
    }
    case WM_SETFOCUS: {
      const LRESULT handled = ::DefSubclassProc(window, message, w, l);
      binding.FocusChanged();
      return handled;
    }
    case WM_KEYUP:
    case WM_KILLFOCUS: {
      const LRESULT handled = ::DefSubclassProc(window, message, w, l);
      binding.FocusChanged();
      binding.ReleaseKey();
      return handled;
    }
    default:
      break;
  }
  return ::DefSubclassProc(window, message, w, l);
}

}  // namespace

ListBinding::ListBinding(controls::ListView& list, HWND parent, const Surroundings& around,
                         const Win32Icons& icons)
    : ControlBinding(list, parent, around, {WC_LISTVIEWW, kListStyle, WS_EX_CLIENTEDGE}, ForKeyboard::kYes),
      list_(list),
      painter_(list, icons, around.scale),
      columns_(list, Handle(), around.scale, around.loop, [this](int column) { return WidthNeeded(column); }),
      theme_(Handle(), ThemeWhenDark::Kind::kDarkScrollBars) {
  constexpr LPARAM kExtended = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
  ::SendMessageW(Handle(), LVM_SETEXTENDEDLISTVIEWSTYLE, 0, kExtended);
  EndTooltipsOfTheSystem();
  ::SetWindowSubclass(Handle(), ListGestures, kGestures, reinterpret_cast<DWORD_PTR>(this));
  subscriptions_ += list.Changed.Subscribe([this] { Follow(); });
  subscriptions_ += list.RowsReset.Subscribe([this] { FollowRows(true); });
  subscriptions_ += list.RowsAdded.Subscribe(
      [this](std::size_t first, std::size_t count) { FollowRows(first + count < list_.Count()); });
  subscriptions_ += list.RowRemoved.Subscribe([this](std::size_t) { FollowRows(true); });
  subscriptions_ += list.RowChanged.Subscribe([this](std::size_t position) {
    ::SendMessageW(Handle(), LVM_REDRAWITEMS, position, static_cast<LPARAM>(position));
    // For screen readers; rows count from 1 there.
    ::NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, Handle(), OBJID_CLIENT, static_cast<LONG>(position) + 1);
    FollowTip();
  });
  subscriptions_ += list.ScrollWanted.Subscribe([this](controls::RowId id) {
    if (const auto position = list_.IndexOf(id))
      ::SendMessageW(Handle(), LVM_ENSUREVISIBLE, *position, FALSE);
  });
  FollowRowHeight();
  if (ShownBrightness() == Brightness::kDark) FollowColors();
  FollowControl();
  FollowRows(true);
  Follow();
}

ListBinding::~ListBinding() {
  ::RemoveWindowSubclass(Handle(), ListGestures, kGestures);
  ::SendMessageW(Handle(), LVM_SETIMAGELIST, LVSIL_SMALL, 0);
  ::ImageList_Destroy(row_height_);
}

/// It shows a cut name, beside the tooltip that shows every cut cell (PointAt).
void ListBinding::EndTooltipsOfTheSystem() const {
  const auto tips = reinterpret_cast<HWND>(::SendMessageW(Handle(), LVM_SETTOOLTIPS, 0, 0));
  if (tips != nullptr) ::DestroyWindow(tips);
}

void ListBinding::Follow() {
  FollowColumns();
  if (shown_images_ != list_.ImageList()) {
    shown_images_ = list_.ImageList();
    ::InvalidateRect(Handle(), nullptr, TRUE);
  }
  FollowSelection();
}

void ListBinding::FollowRows(bool all) {
  FollowTip();
  {
    const Following guard(following_);
    const LPARAM flags = LVSICF_NOSCROLL | (all ? 0 : LVSICF_NOINVALIDATEALL);
    ::SendMessageW(Handle(), LVM_SETITEMCOUNT, list_.Count(), flags);
    if (all) ::InvalidateRect(Handle(), nullptr, TRUE);
  }
  FollowSorting();
  FollowSelection();
}

void ListBinding::FollowColumns() {
  std::vector<Text> captions;
  for (const auto& column : list_.Columns()) captions.push_back(OnOneLine(column.caption));
  if (captions == shown_captions_) return columns_.Fit();
  const std::size_t before = shown_captions_.size();
  shown_captions_ = std::move(captions);
  for (std::size_t index = 0; index < shown_captions_.size(); ++index) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(Wide(shown_captions_[index]));
    column.iSubItem = static_cast<int>(index);
    ::SendMessageW(Handle(), index < before ? LVM_SETCOLUMNW : LVM_INSERTCOLUMNW, index,
                   reinterpret_cast<LPARAM>(&column));
  }
  columns_.Fit();
  FollowSorting();
}

void ListBinding::FollowRowHeight() {
  const Scale& scale = GetScale();
  const int height = std::max(scale.Scaled(RowPainter::kRowHeight), scale.FontHeight());
  _IMAGELIST* const images =
      ::ImageList_Create(scale.Scaled(RowPainter::kIconSide), height, ILC_COLOR32, 0, 1);
  ::SendMessageW(Handle(), LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
  ::ImageList_Destroy(std::exchange(row_height_, images));
}

void ListBinding::FollowScale() {
  ControlBinding::FollowScale();
  painter_.FollowScale();
  FollowRowHeight();
  columns_.Fit();
}

void ListBinding::FollowColors() {
  theme_.Follow();
  const auto ground = static_cast<LPARAM>(ShownColor(COLOR_WINDOW));
  // The ground below the rows, which the system chose when the list was made.
  ::SendMessageW(Handle(), LVM_SETBKCOLOR, 0, ground);
  ::SendMessageW(Handle(), LVM_SETTEXTBKCOLOR, 0, ground);
  ::SendMessageW(Handle(), LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(ShownColor(COLOR_WINDOWTEXT)));
}

void ListBinding::FollowSorting() {
  const auto header = reinterpret_cast<HWND>(::SendMessageW(Handle(), LVM_GETHEADER, 0, 0));
  const bool ascending = list_.GetSortDirection() == controls::SortDirection::kAscending;
  for (std::size_t index = 0; index < shown_captions_.size(); ++index) {
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    ::SendMessageW(header, HDM_GETITEMW, index, reinterpret_cast<LPARAM>(&item));
    const int before = item.fmt;
    item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
    if (static_cast<int>(index) == list_.SortColumn()) item.fmt |= ascending ? HDF_SORTUP : HDF_SORTDOWN;
    if (item.fmt != before) ::SendMessageW(header, HDM_SETITEMW, index, reinterpret_cast<LPARAM>(&item));
  }
}

void ListBinding::FollowSelection() {
  const Following guard(following_);
  const bool gone = chosen_ && *chosen_ != controls::RowId::kNone && !list_.Contains(*chosen_);
  if (gone) chosen_.reset();
  const auto position = list_.IndexOf(chosen_.value_or(list_.SelectedRow()));
  const auto shown = ShownRow();
  if (position && shown == static_cast<int>(*position)) return;
  LVITEMW state{};
  state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  if (shown)
    ::SendMessageW(Handle(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
  if (!position) return;
  state.state = LVIS_SELECTED | LVIS_FOCUSED;
  ::SendMessageW(Handle(), LVM_SETITEMSTATE, *position, reinterpret_cast<LPARAM>(&state));
}

std::optional<int> ListBinding::ShownRow() const {
  const LRESULT row = ::SendMessageW(Handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
  if (row < 0) return std::nullopt;
  return static_cast<int>(row);
}

controls::RowId ListBinding::ShownId() const {
  const auto row = ShownRow();
  return row ? list_.RowAt(static_cast<std::size_t>(*row)) : controls::RowId::kNone;
}

const controls::ListRow* ListBinding::RowAt(int row) const {
  const auto& rows = list_.Rows();
  return row >= 0 && static_cast<std::size_t>(row) < rows.size() ? &rows[static_cast<std::size_t>(row)]
                                                                 : nullptr;
}

}  // namespace platform::win32
