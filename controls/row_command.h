#pragma once
// A command on one row of a list, which the menu of the lists offers. Not the menu
// (app/forms/form_control.h).

#include <functional>

#include "controls/captioned.h"
#include "controls/list_view.h"

namespace controls {

/// How a command is offered for a row.
struct RowOffer {
  bool available = false;
  bool checked = false;  ///< of a switch
};

/// What the user has chosen. The row is in the list.
struct RowChoice {
  ListView& list;
  RowId row;
  bool checked;  ///< whether a switch is to be checked; false for an action
};

enum class RowCommandKind {
  kAction,
  kSwitch,  ///< its entry has a check, which follows the row
};

/// Has no widget of its own, only an entry in a menu.
class RowCommand final : public Captioned {
 public:
  [[nodiscard]] RowCommandKind Kind() const { return kind_; }
  void SetKind(RowCommandKind kind) { Set(kind_, kind); }

  /// The program's answer for a row of the list; nothing is available while this is not set. May be called at
  /// any time, inside a wait too.
  std::function<RowOffer(const ListView& list, RowId row)> OfferFor;

  /// Not available for a row that is gone.
  [[nodiscard]] RowOffer Offer(const ListView& list, RowId row) const {
    const bool can_be_asked = OfferFor && Enabled() && list.Contains(row);
    return can_be_asked ? OfferFor(list, row) : RowOffer{};
  }

  /// The user's choice; ignored when the command is not available any more.
  void Choose(ListView& list, RowId row, bool checked = false) {
    if (Offer(list, row).available) Chosen.Raise({list, row, checked});
  }

  Event<const RowChoice&> Chosen;

 private:
  RowCommandKind kind_ = RowCommandKind::kAction;
};

}  // namespace controls
