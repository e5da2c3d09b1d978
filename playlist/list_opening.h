#pragma once
// Opens what is dropped on the window or given when the program is started: a file of stations becomes rows
// of the full list, a link a new station. Not "M3U laden..." (playlist/m3u_import.h).

#include <functional>

#include "app/state/list_pair.h"
#include "app/state/notices.h"
#include "app/state/runs.h"
#include "app/text/text.h"
#include "controls/form.h"
#include "controls/list_view.h"
#include "playlist/station_list_reader.h"
#include "ports/files.h"
#include "ports/text_conversion.h"

namespace playlist {

class ListOpening {
 public:
  struct Parts {
    controls::Form& form;
    app::ListPair lists;
  };

  /// What an opening triggers in other features. Anything can happen inside either.
  struct Actions {
    /// Shows the full list. kNewRow: no row is selected yet, because a new one is about to be.
    enum class Selects { kRememberedRow, kNewRow };
    std::function<void(Selects)> show_full_list;
    std::function<void(const app::Text& link)> add_station;  ///< asks for the rest of a new station
  };

  ListOpening(Parts parts, platform::Files& files, platform::TextConversion& conversion,
              app::Notices& notices, Actions actions, const app::Life& window);

  /// Something was dropped, or given when the program was started. What is neither a list nor a link is
  /// refused with a notice. A filter view is left first, because a view's rows cannot be saved.
  void Open(const controls::DropOffer& offer);

  /// The stations of a list file become unsaved rows of the full list, the first of them selected and
  /// scrolled into view; a notice says how many there are, or why there are none. In that case nothing else
  /// has changed.
  void OpenList(const app::Text& path);

 private:
  void OpenLink(const app::Text& link);
  [[nodiscard]] StationList Read(const app::Text& path);
  void AddRows(const StationList& list);

  Parts parts_;
  platform::Files& files_;
  platform::TextConversion& conversion_;
  app::Notices& notices_;
  Actions actions_;
  const app::Life& window_;
  app::Runs openings_;
  controls::Subscriptions subscriptions_;
};

}  // namespace playlist
