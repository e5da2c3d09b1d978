#include "recorder/terminal_report.h"

#include <utility>

#include "recorder/status_texts.h"

namespace recorder {

using platform::Text;

TerminalReport::TerminalReport(StationRecording& recording, Text folder, Print print)
    : recording_(recording),
      folder_(std::move(folder)),
      print_(std::move(print)),
      subscription_(recording.Changed.Subscribe([this] { Follow(); })) {}

void TerminalReport::Follow() {
  const Status& status = recording_.GetStatus();
  if (std::exchange(phase_, status.phase) != status.phase) TellPhase(status);
  if (title_ == status.title) return;
  title_ = status.title;
  if (!title_.empty()) PrintLine(TimeText(status.seconds) + u"  " + title_);
}

void TerminalReport::TellPhase(const Status& status) {
  switch (status.phase) {
    case Phase::kRecording:
      PrintLine(PhaseText(status) + u": " + status.station + u" (Ordner " + folder_ + u")");
      break;
    case Phase::kEnded:
      PrintLine(PhaseText(status) + u": " + TimeText(status.seconds) + u", " + FilesText(status.files) +
                u", " + BytesText(status.bytes));
      break;
    default:
      PrintLine(PhaseText(status));
      break;
  }
}

void TerminalReport::PrintLine(const Text& text) { print_(OneLine(text)); }

}  // namespace recorder
