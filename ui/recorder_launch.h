#pragma once
// Starts the separate recording tool. Not recording itself.

#include <cstdint>

#include "app/state/list_pair.h"
#include "app/state/notices.h"
#include "app/state/runs.h"
#include "app/state/window_state.h"
#include "controls/list_view.h"
#include "controls/text_box.h"
#include "ports/dialogs.h"
#include "ports/environment.h"
#include "ports/shell.h"

namespace ui {

class RecorderLaunch {
 public:
  struct Parts {
    controls::UpDownTextBox& UpDownTextBox1;  ///< number of the entry within a playlist link
    app::ListPair lists;
  };

  struct Ports {
    platform::Environment& environment;
    platform::Dialogs& dialogs;
    platform::Shell& shell;
  };

  /// The window that the tool is started from, by the shell's number for it.
  static constexpr std::uint32_t kMainWindow = 1;

  /// Once the life of `window` has ended the tool is not started any more.
  RecorderLaunch(Parts parts, Ports ports, app::WindowState& state, app::Notices& notices,
                 const app::Life& window)
      : parts_(parts), ports_(ports), state_(state), notices_(notices), window_(window) {}

  /// Command8(5): copies the number field into the selected row and starts "OZRecordFunkhaus.exe" in the
  /// program folder with the row's link, unchanged. Without a selected row it shows a message and starts the
  /// tool without a link. When nothing could be started, the status line reports it.
  void Launch();

  /// The same for a row of either list. Only for the selected row does the number field hold its number, so
  /// any other is recorded without changing it.
  void LaunchFor(const controls::ListView& list, controls::RowId row);

 private:
  void StartTool(const platform::Text& command_line);
  void CopyNumberInto(controls::ListView& list, controls::RowId row);

  Parts parts_;
  Ports ports_;
  app::WindowState& state_;
  app::Notices& notices_;
  const app::Life& window_;
};

}  // namespace ui
