#include "platform/win32/ui/column_fit.h"

#include "platform/win32/base/windows_api.h"

#include <utility>

#include "platform/front/following.h"

namespace platform::win32 {
namespace {

HWND HeaderOf(HWND list) { return reinterpret_cast<HWND>(::SendMessageW(list, LVM_GETHEADER, 0, 0)); }

int RoomIn(HWND list) {
  RECT all{};
  ::GetClientRect(list, &all);
  return static_cast<int>(all.right);
}

}  // namespace

ColumnFit::ColumnFit(controls::ListView& list, HWND window, const Scale& scale, Win32MessageLoop& loop,
                     std::function<int(int column)> needed)
    : window_(window),
      loop_(loop),
      needed_(std::move(needed)),
      shares_(list, {[&scale](int width) { return scale.Scaled(width); },
                     [&scale](int width) { return scale.Unscaled(width); }}) {}

int ColumnFit::WidthOf(int column) const {
  return static_cast<int>(::SendMessageW(window_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
}

std::vector<int> ColumnFit::Shown() const {
  std::vector<int> widths;
  const int count = static_cast<int>(::SendMessageW(HeaderOf(window_), HDM_GETITEMCOUNT, 0, 0));
  for (int column = 0; column < count; ++column) widths.push_back(WidthOf(column));
  return widths;
}

void ColumnFit::Fit() {
  if (fitting_) return;
  const front::Following guard(fitting_);
  // The columns that become wider may take the horizontal scroll bar away, and with it the vertical one.
  int room = -1;
  for (int tries = 0; tries < 2 && room != RoomIn(window_); ++tries) {
    room = RoomIn(window_);
    const std::vector<int> shown = Shown();
    const std::vector<int> widths = shares_.Widths(shown, room);
    if (widths != shown) Redraw();
    for (std::size_t column = 0; column < widths.size(); ++column) {
      if (shown[column] != widths[column])
        ::SendMessageW(window_, LVM_SETCOLUMNWIDTH, column, widths[column]);
    }
  }
}

/// The system redraws what a column has become wider by; a text that is cut in its middle changes as a whole.
void ColumnFit::Redraw() const { ::InvalidateRect(window_, nullptr, FALSE); }

void ColumnFit::FollowHeader(const tagNMHDR& notice) {
  if (fitting_ || notice.hwndFrom != HeaderOf(window_)) return;
  const auto& change = reinterpret_cast<const NMHEADERW&>(notice);
  switch (notice.code) {
    case HDN_BEGINTRACKA:
    case HDN_BEGINTRACKW:
      pressed_ = true;
      return;
    case HDN_ITEMCHANGEDA:
    case HDN_ITEMCHANGEDW:
      if (!pressed_ || change.pitem == nullptr || (change.pitem->mask & HDI_WIDTH) == 0) return;
      shares_.Drag(change.iItem, WidthOf(change.iItem));
      Redraw();
      return Fit();
    case HDN_ENDTRACKA:
    case HDN_ENDTRACKW:
      // Where columns do not change while they are dragged, the new width follows this message.
      if (pressed_ && change.pitem != nullptr && (change.pitem->mask & HDI_WIDTH) != 0 &&
          change.pitem->cxy != WidthOf(change.iItem)) {
        shares_.Drag(change.iItem, change.pitem->cxy);
      }
      return EndDrag();
    case HDN_DIVIDERDBLCLICKA:
    case HDN_DIVIDERDBLCLICKW:
      return FitToTexts(change.iItem);
    default:
      return;
  }
}

/// The system has done so too, but by texts as it would paint them.
void ColumnFit::FitToTexts(int column) {
  shares_.Drag(column, needed_(column));
  EndDrag();
}

void ColumnFit::EndDrag() {
  pressed_ = false;
  const auto dragged = shares_.EndDrag();
  if (!dragged) return;
  loop_.HandOver(lifetime_, [this, dragged] { shares_.Take(*dragged); });
  Fit();
}

}  // namespace platform::win32
