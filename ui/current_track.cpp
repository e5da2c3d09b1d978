#include "ui/current_track.h"

#include "ui/station_picture.h"

namespace ui {

using platform::Text;

CurrentTrack::CurrentTrack(Ports ports, PlayingMark& mark, NowPlaying& now_playing,
                           const app::WindowState& state)
    : ports_(ports), state_(state) {
  subscriptions_ += mark.Opened.Subscribe([this] { Take(); });
  subscriptions_ += now_playing.TitleFetched.Subscribe(
      [this](const Text& address, const Text& title) { TakeTitle(address, title); });
}

void CurrentTrack::Take() {
  ++number_;
  const Text& name = state_.current_station_name;
  address_ = state_.current_stream_address;
  station_ = name.empty() ? address_ : name;
  picture_ = StationPicturePath(ports_.environment, name);
  if (!ports_.files.PathFileExistsW(picture_)) picture_.clear();
  title_ = fetched_from_ == address_ ? fetched_ : Text();
  Changed.Raise();
}

void CurrentTrack::TakeTitle(const Text& address, const Text& title) {
  fetched_from_ = address;
  fetched_ = title;
  if (number_ == 0 || address != address_ || title == title_) return;
  title_ = title;
  Changed.Raise();
}

}  // namespace ui
