#pragma once
// The behaviour of the recording tool's window: Start, Stop, the folder, the status.
// Not the recording itself (recorder/station_recording.h).

#include "app/forms/record_form.h"
#include "controls/event.h"
#include "ports/shell.h"
#include "recorder/station_recording.h"

namespace recorder {

/// Closing the form ends the recording; Start then returns, and starts nothing more.
class RecordControl {
 public:
  /// `folder_address` is the "file" address of the recording's folder. All outlive the object.
  RecordControl(app::RecordForm& form, StationRecording& recording, platform::Files& files,
                platform::Shell& shell, platform::Text folder_address);

  /// Records this link as if the user had typed it; returns when the recording has ended.
  void Start(const platform::Text& link);

 private:
  void Record();
  void OpenFolder();
  void Show();

  app::RecordForm& form_;
  StationRecording& recording_;
  platform::Files& files_;
  platform::Shell& shell_;
  const platform::Text folder_address_;
  controls::Subscriptions subscriptions_;
};

}  // namespace recorder
