#include "recorder/record_control.h"

#include <utility>

#include "app/state/status_sentences.h"
#include "app/text/text_helpers.h"
#include "recorder/music_folder.h"
#include "recorder/status_texts.h"

namespace recorder {

using platform::Text;

RecordControl::RecordControl(app::RecordForm& form, StationRecording& recording, platform::Files& files,
                             platform::Shell& shell, Addresses addresses)
    : form_(form), recording_(recording), files_(files), shell_(shell), addresses_(std::move(addresses)) {
  subscriptions_ += form_.start.Clicked.Subscribe([this] { Record(); });
  subscriptions_ += form_.stop.Clicked.Subscribe([this] { recording_.Stop(); });
  subscriptions_ += form_.open_folder.Clicked.Subscribe([this] { OpenFolder(); });
  subscriptions_ += form_.show_guide.Clicked.Subscribe([this] { ShowGuide(); });
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
  shell_.ShellExecuteW(0, u"open", addresses_.folder, u"", u"", platform::kSwShowNormal);
}

/// A failure stands in place of the recording's state until that changes.
void RecordControl::ShowGuide() {
  if (addresses_.guide.empty()) return form_.state.SetCaption(Text(app::sentences::kNoGuide));
  const bool opened = shell_.ShellExecuteW(0, u"open", addresses_.guide, u"", u"", platform::kSwShowNormal);
  if (!opened) form_.state.SetCaption(u"Das Handbuch ließ sich nicht öffnen: " + addresses_.guide);
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
