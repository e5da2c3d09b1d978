#pragma once
// Starts the separate recording tool. Not recording itself.

#include <cstdint>

#include "controls/list_view.h"
#include "controls/text_box.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/shell.h"

namespace ui {

class RecorderLaunch {
 public:
  struct Ports {
    platform::Environment& environment;
    platform::Dialogs& dialogs;
    platform::Shell& shell;
  };

  /// The window that the tool is started from, as the shell knows it.
  static constexpr std::uint32_t kMainWindow = 1;

  RecorderLaunch(controls::ListPair lists, controls::UpDownTextBox& number_field, Ports ports)
      : lists_(lists), UpDownTextBox1(number_field), ports_(ports) {}

  /// Command8(5): copies the number field into the selected row and starts "OZRecordFunkhaus.exe" of the
  /// program folder with the row's link, as it stands. Without a selected row it says so and starts the
  /// tool without a link.
  void Launch();

 private:
  controls::ListPair lists_;
  controls::UpDownTextBox& UpDownTextBox1;
  Ports ports_;
};

}  // namespace ui
