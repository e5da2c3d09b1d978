#include "ui/title_notice.h"

#include <utility>

namespace ui {

using platform::PlaybackState;
using platform::Text;

TitleNotice::TitleNotice(Parts parts, Ports ports, CurrentTrack& track, PlayingMark& mark)
    : parts_(parts), ports_(ports), track_(track), mark_(mark) {
  subscriptions_ += track.Changed.Subscribe([this] { TakeTrack(); });
  subscriptions_ += mark.Changed.Subscribe([this] {
    if (mark_.State() == PlaybackState::kStopped) Withdraw();
  });
  subscriptions_ += parts_.form.Changed.Subscribe([this] {
    if (parts_.form.InSight()) Withdraw();
  });
  subscriptions_ += parts_.form.Unloaded.Subscribe([this] { Withdraw(); });
}

void TitleNotice::Restore(const Text& path) {
  path_ = path;
  if (ports_.files.PathFileExistsW(path_)) parts_.TitleNotices.SetValue(controls::CheckValue::kChecked);
  subscriptions_ += parts_.TitleNotices.Clicked.Subscribe([this] { Remember(); });
}

void TitleNotice::Remember() {
  if (parts_.TitleNotices.Checked()) {
    ports_.files.WriteWholeFile(path_, "1\n");
  } else {
    ports_.files.DeleteFileW(path_);
    Withdraw();
  }
}

void TitleNotice::TakeTrack() {
  if (title_ == track_.Title()) return;
  title_ = track_.Title();
  if (title_.empty()) return;
  if (!parts_.TitleNotices.Checked() || parts_.form.InSight()) return;
  shows_ = true;
  ports_.notifications.Show(title_, track_.Station());
}

void TitleNotice::Withdraw() {
  if (std::exchange(shows_, false)) ports_.notifications.Withdraw();
}

}  // namespace ui
