#pragma once
// Fits a list's columns to its window and follows the mouse on their edges. Not what the columns get
// (platform/front/column_shares.h).

#include <functional>
#include <vector>

#include "controls/list_view.h"
#include "platform/front/column_shares.h"
#include "platform/win32/base/handles.h"
#include "platform/win32/ui/message_loop.h"
#include "platform/win32/ui/scale.h"

struct tagNMHDR;

namespace platform::win32 {

/// The list is notified of a width when the button is released.
class ColumnFit {
 public:
  /// `needed` gives the width that a column's visible texts need, for a double click on its edge.
  ColumnFit(controls::ListView& list, HWND window, const Scale& scale, Win32MessageLoop& loop,
            std::function<int(int column)> needed);

  /// Applies the widths again; to be called when columns, scale or the window's size have changed.
  void Fit();
  /// What the header reported to the list, once the list has dealt with it.
  void FollowHeader(const tagNMHDR& notice);
  /// The widths now, in pixels.
  [[nodiscard]] std::vector<int> Shown() const;

 private:
  [[nodiscard]] int WidthOf(int column) const;
  void Redraw() const;
  void FitToTexts(int column);
  void EndDrag();

  HWND window_;
  Win32MessageLoop& loop_;
  const std::function<int(int)> needed_;
  front::ColumnShares shares_;
  bool pressed_ = false;
  bool fitting_ = false;
  Lifetime lifetime_;
};

}  // namespace platform::win32
