#pragma once
// What the lists' menu does with one row besides playing and deleting it: favourite mark, recording, link.
// Not the same for the selected row (catalogue/station_views.h, catalogue/station_editor.h).

#include <functional>

#include "app/state/list_pair.h"
#include "app/state/window_state.h"
#include "catalogue/station_writer.h"
#include "controls/captioned.h"
#include "controls/row_command.h"
#include "ports/clipboard.h"

namespace catalogue {

class RowCommands {
 public:
  struct Parts {
    controls::RowCommand& RowFavourite;
    controls::RowCommand& RowRecording;
    controls::RowCommand& RowLink;
    controls::CheckBox& Check2;  ///< favourite mark of the selected station
    app::ListPair lists;
  };

  /// What the commands trigger in other features.
  struct Actions {
    std::function<void(controls::ListView& list, controls::RowId row)> record;
  };

  RowCommands(Parts parts, StationWriter& writer, app::WindowState& state, platform::Clipboard& clipboard,
              Actions actions);

 private:
  void MakeOffers();
  void MarkFavourite(const controls::RowChoice& choice);
  void CopyLink(const controls::RowChoice& choice);

  Parts parts_;
  StationWriter& writer_;
  app::WindowState& state_;
  platform::Clipboard& clipboard_;
  Actions actions_;
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
