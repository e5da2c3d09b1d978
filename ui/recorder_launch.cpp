#include "ui/recorder_launch.h"

#include "app/state/station.h"
#include "app/state/status_sentences.h"
#include "app/text/text_utilities.h"

namespace ui {

using controls::RowId;
using platform::Text;

void RecorderLaunch::Launch() {
  controls::ListView& list = parts_.lists.Active();
  const RowId row = list.SelectedRow();
  Text command_line;
  if (row == RowId::kNone) {
    ports_.dialogs.MessageBoxW(u"Bitte Eintrag markieren oder neu erstellen!", u"",
                               platform::kMbIconExclamation);
    if (window_.Ended()) return;
  } else {
    CopyNumberInto(list, row);
    command_line = list.Cell(row, app::kLinkCell);
  }
  StartTool(command_line);
}

void RecorderLaunch::LaunchFor(const controls::ListView& list, RowId row) {
  if (window_.Ended()) return;
  if (&list == &parts_.lists.Active() && list.SelectedRow() == row) return Launch();
  StartTool(list.Cell(row, app::kLinkCell));
}

void RecorderLaunch::StartTool(const Text& command_line) {
  const Text program = app::AddBackslash(ports_.environment.ProgramFolder()) + u"OZRecordFunkhaus.exe";
  const bool started =
      ports_.shell.ShellExecuteW(kMainWindow, u"", program, command_line, u"", platform::kSwShowNormal);
  if (!started) notices_.Notify(app::sentences::kNoRecorder);
}

void RecorderLaunch::CopyNumberInto(controls::ListView& list, RowId row) {
  const Text& number = parts_.UpDownTextBox1.GetText();
  // The field is hidden for a link that is not a playlist, because no number changes its address.
  if (parts_.UpDownTextBox1.Visible() && list.Cell(row, app::kM3uNumberCell) != number)
    state_.details_are_stale = true;
  list.SetCell(row, app::kM3uNumberCell, number);
}

}  // namespace ui
