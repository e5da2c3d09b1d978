#pragma once
// The pair of lists in which stations are shown. Not the lists themselves (controls/list_view.h).

#include "controls/list_view.h"

namespace app {

/// The two lists that share one place: exactly one of them is visible. Features act on that one.
struct ListPair {
  controls::ListView& full;
  controls::ListView& filtered;

  /// The filtered list while it is visible, otherwise the full one.
  [[nodiscard]] controls::ListView& Active() const { return filtered.Visible() ? filtered : full; }
};

}  // namespace app
