#pragma once
// "M3U laden...": turns the entries of an M3U file into rows of the visible list.
// Not for playlists from a server.

#include <functional>

#include "app/state/list_pair.h"
#include "app/state/notices.h"
#include "app/state/runs.h"
#include "app/text/text.h"
#include "controls/captioned.h"
#include "controls/list_view.h"
#include "ports/dialogs.h"
#include "ports/files.h"
#include "ports/text_conversion.h"

namespace playlist {

class M3uImport {
 public:
  struct Parts {
    app::ListPair lists;
    controls::CommandButton& Command5;  ///< M3U import
  };

  /// What the import triggers in other features.
  struct Actions {
    std::function<void()> full_list_is_emptied;  ///< before the full list loses its rows
  };

  M3uImport(Parts parts, platform::Dialogs& dialogs, platform::Files& files,
            platform::TextConversion& conversion, app::Notices& notices, Actions actions,
            const app::Life& window);

  void Command5_Click();  ///< asks for a file and imports it

  /// Asks whether to append, then adds a row for each "#EXTINF:" line, with the text between its first two
  /// commas as name and the last "http" line before the next such line as link. The answer No empties the
  /// list first; Yes and Cancel append. A "#EXTINF:" line without a comma ends the import; the rows before it
  /// stay. The first new row is scrolled into view; a notice says how many rows were added, or why none were.
  void ImportM3uFile(const app::Text& path);

 private:
  Parts parts_;
  platform::Dialogs& dialogs_;
  platform::Files& files_;
  platform::TextConversion& conversion_;
  app::Notices& notices_;
  Actions actions_;
  const app::Life& window_;
  controls::Subscriptions subscriptions_;
};

}  // namespace playlist
