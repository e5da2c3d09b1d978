#pragma once
// What was started last: its station, its address, its picture and the title that it sends. Not how playing
// stands (ui/playing_mark.h), nor the title of a station that is only selected.

#include <cstdint>

#include "app/state/window_state.h"
#include "controls/event.h"
#include "ports/environment.h"
#include "ports/files.h"
#include "ports/text.h"
#include "ui/now_playing.h"
#include "ui/playing_mark.h"

namespace ui {

class CurrentTrack {
 public:
  struct Ports {
    platform::Environment& environment;
    platform::Files& files;
  };

  CurrentTrack(Ports ports, PlayingMark& mark, NowPlaying& now_playing, const app::WindowState& state);

  /// Another one for every start, 0 before the first.
  [[nodiscard]] std::uint64_t Number() const { return number_; }
  /// The station's name, or its address where it has none.
  [[nodiscard]] const platform::Text& Station() const { return station_; }
  [[nodiscard]] const platform::Text& Address() const { return address_; }
  /// The path of the station's picture, empty without one.
  [[nodiscard]] const platform::Text& Picture() const { return picture_; }
  /// As the station sends it; empty while none is known.
  [[nodiscard]] const platform::Text& Title() const { return title_; }

  /// Something of this has another value.
  controls::Event<> Changed;

 private:
  void Take();
  void TakeTitle(const platform::Text& address, const platform::Text& title);

  Ports ports_;
  const app::WindowState& state_;
  std::uint64_t number_ = 0;
  platform::Text station_;
  platform::Text address_;
  platform::Text picture_;
  platform::Text title_;
  // The title that was fetched last: selecting a station fetches it before the station is started.
  platform::Text fetched_from_;
  platform::Text fetched_;
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
