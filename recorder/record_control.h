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
  /// By which the desktop opens them.
  struct Addresses {
    platform::Text folder;  ///< of the recordings
    platform::Text guide;   ///< the user's guide; empty when there is none
  };

  /// The others outlive the object.
  RecordControl(app::RecordForm& form, StationRecording& recording, platform::Files& files,
                platform::Shell& shell, Addresses addresses);

  /// Records this link as if the user had typed it; returns when the recording has ended.
  void Start(const platform::Text& link);

 private:
  void Record();
  void OpenFolder();
  void ShowGuide();
  void Show();

  app::RecordForm& form_;
  StationRecording& recording_;
  platform::Files& files_;
  platform::Shell& shell_;
  const Addresses addresses_;
  controls::Subscriptions subscriptions_;
};

}  // namespace recorder
