#pragma once
// Reports a recording line by line, for a terminal or a log: its state when that changes, and every title.
// Not for the window (recorder/record_control.h).

#include <functional>

#include "controls/event.h"
#include "recorder/station_recording.h"

namespace recorder {

class TerminalReport {
 public:
  /// Takes one line without its end; nothing in it can control a terminal.
  using Print = std::function<void(const platform::Text& line)>;

  /// `folder` is the recording's folder as the user knows it. The recording outlives the object.
  TerminalReport(StationRecording& recording, platform::Text folder, Print print);

 private:
  void Follow();
  void TellPhase(const Status& status);
  void PrintLine(const platform::Text& text);

  StationRecording& recording_;
  const platform::Text folder_;
  const Print print_;
  Phase phase_ = Phase::kIdle;
  platform::Text title_;
  controls::Subscription subscription_;
};

}  // namespace recorder
