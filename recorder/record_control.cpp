#include "recorder/record_control.h"

#include <utility>

#include "app/text/text_helpers.h"
#include "recorder/music_folder.h"
#include "recorder/status_texts.h"

namespace recorder {

using platform::Text;

RecordControl::RecordControl(app::RecordForm& form, StationRecording& recording, platform::Files& files,
                             platform::Shell& shell, Text folder_address)
    : form_(form),
      recording_(recording),
      files_(files),
      shell_(shell),
      folder_address_(std::move(folder_address)) {
  subscriptions_ += form_.start.Clicked.Subscribe([this] { Record(); });
  subscriptions_ += form_.stop.Clicked.Subscribe([this] { recording_.Stop(); });
  subscriptions_ += form_.open_folder.Clicked.Subscribe([this] { OpenFolder(); });
  subscriptions_ += form_.address.TextChanged.Subscribe([this] { Show(); });
  subscriptions_ += form_.form.Unloaded.Subscribe([this] { recording_.Stop(); });
  subscriptions_ += recording_.Changed.Subscribe([this] { Show(); });
  Show();
}

void RecordControl::Start(const Text& link) {
  form_.address.SetText(link);
  form_.start.Click();
}

void RecordControl::Record() {
  if (form_.form.Closing()) return;
  const Text link = form_.address.GetText();
  recording_.Run(link);
}

void RecordControl::OpenFolder() {
  if (!MakeFolder(files_, recording_.Folder())) return;
  shell_.ShellExecuteW(0, u"open", folder_address_, u"", u"", platform::kSwShowNormal);
}

void RecordControl::Show() {
  const Status& status = recording_.GetStatus();
  const bool running = recording_.Running();
  form_.address.SetEnabled(!running);
  form_.start.SetEnabled(!running && !app::TrimControls(form_.address.GetText()).empty());
  form_.stop.SetEnabled(running);
  form_.station.SetCaption(OneLine(status.station));
  form_.title.SetCaption(OneLine(status.title));
  form_.time.SetCaption(TimeText(status.seconds));
  form_.written.SetCaption(BytesText(status.bytes) + u", " + FilesText(status.files));
  form_.state.SetCaption(PhaseText(status));
}

}  // namespace recorder
