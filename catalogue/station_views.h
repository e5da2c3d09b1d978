#pragma once
// The three views of the catalogue - all stations, one genre, the favourites - and the favourite mark.
// Not the lists' order or selection (catalogue/station_lists.h).

#include "app/state/list_pair.h"
#include "app/state/window_state.h"
#include "catalogue/station_lists.h"
#include "catalogue/station_store.h"
#include "catalogue/station_writer.h"
#include "controls/captioned.h"
#include "controls/text_box.h"
#include "ports/dialogs.h"

namespace catalogue {

class StationViews {
 public:
  struct Parts {
    controls::CheckBox& Check1;               ///< genre view
    controls::CheckBox& Check2;               ///< favourite mark of the selected station
    controls::CheckBox& Check3;               ///< favourites view
    controls::ComboBox& Combo1;               ///< genre
    controls::Frame& Frame2;                  ///< shows the name of the current view
    controls::CommandButton& CommandButton1;  ///< saves the list
    controls::CommandButton& CommandButton2;  ///< new station
    app::ListPair lists;
  };

  StationViews(Parts parts, StationStore& store, StationLists& station_lists, StationWriter& writer,
               const app::WindowState& state, platform::Dialogs& dialogs);

  /// Leaves a filter view as if the user had cleared its box; does nothing while the full list is shown.
  /// kNone: the previously selected row is not selected again, because another one is about to be.
  enum class Selection { kRemembered, kNone };
  void LeaveFilter(Selection selection);

  void Check1_Click();  ///< genre view on or off
  void Check2_Click();  ///< writes the favourite mark
  void Check3_Click();  ///< favourites view on or off
  void Combo1_Click();  ///< another genre

 private:
  void ShowFiltered(const platform::Text& filter, const platform::Text& caption);
  void ShowAll(Selection selection = Selection::kRemembered);
  void UncheckBoth();
  [[nodiscard]] platform::Text GenreCaption() const;

  Parts parts_;
  StationStore& store_;
  StationLists& station_lists_;
  StationWriter& writer_;
  const app::WindowState& state_;
  platform::Dialogs& dialogs_;
  bool InViewSwitch = false;  ///< while it is set, no other view switch begins
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
