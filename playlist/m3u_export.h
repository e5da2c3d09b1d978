#pragma once
// "M3U erstellen...": writes the stations of the visible list into an M3U file.
// Not for reading one (playlist/m3u_import.h).

#include <optional>

#include "app/state/list_pair.h"
#include "app/state/runs.h"
#include "app/text/text.h"
#include "controls/captioned.h"
#include "controls/list_view.h"
#include "ports/clock.h"
#include "ports/dialogs.h"
#include "ports/files.h"
#include "ports/message_loop.h"
#include "ports/text_conversion.h"

namespace playlist {

/// The file holds "#EXTM3U", then per station "#EXTINF:-1,", its name and its link, each line ended by LF,
/// and CR LF at the very end; in the ANSI code page, without a mark, names and links unchanged.
class M3uExport {
 public:
  struct Parts {
    app::ListPair lists;
    controls::CommandButton& Command4;  ///< M3U export
  };

  M3uExport(Parts parts, platform::Dialogs& dialogs, platform::Files& files,
            platform::TextConversion& conversion, platform::MessageLoop& messages, platform::Clock& clock,
            const app::Life& window);

  /// Asks for the file, writes the rows of the visible list in display order and says where they are. Escape
  /// ends the list early; what was listed until then is written. There is no message for a cancelled dialog,
  /// for a file that cannot be written, and for a window that closes meanwhile, which leaves the file alone.
  void Command4_Click();

 private:
  [[nodiscard]] app::Text AskForPath() const;
  [[nodiscard]] app::Text DefaultFileName() const;
  [[nodiscard]] std::optional<app::Text> PlaylistText() const;

  Parts parts_;
  platform::Dialogs& dialogs_;
  platform::Files& files_;
  platform::TextConversion& conversion_;
  platform::MessageLoop& messages_;
  platform::Clock& clock_;
  const app::Life& window_;
  controls::Subscriptions subscriptions_;
};

}  // namespace playlist
