#pragma once
// Marks the row that is being played, in both lists, whatever happens to the rows meanwhile.
// Not playing (ui/playback_control.h), and not how a mark looks.

#include <array>
#include <cstddef>
#include <cstdint>

#include "app/state/list_pair.h"
#include "controls/event.h"
#include "controls/list_view.h"
#include "ports/playback_monitor.h"
#include "ports/text.h"

namespace ui {

/// Follows one station through both lists: by its row as long as that exists, and by name and link once the
/// rows were loaded again. A name or link that is edited meanwhile becomes the station's. Of rows with the
/// same name and link, which are the same station, the first one is used after a load.
class FollowedStation {
 public:
  explicit FollowedStation(app::ListPair lists) : places_{{{&lists.full}, {&lists.filtered}}} {}

  /// Follows the station of this row from now on.
  void Take(const controls::ListView& list, controls::RowId row);

  /// `count` rows from `first` on are new in the list.
  void TakeNewRows(const controls::ListView& list, std::size_t first, std::size_t count);
  void TakeChangedRow(const controls::ListView& list, std::size_t position);

  /// The station's row in this list; kNone when it has none there.
  [[nodiscard]] controls::RowId RowIn(const controls::ListView& list) const;

  /// Marks the station's rows. Rows that were marked before lose their mark.
  void Mark(controls::RowMark mark);

 private:
  struct Station {
    platform::Text name;
    platform::Text link;
    friend bool operator==(const Station&, const Station&) = default;
  };
  /// Where the station is in one list.
  struct Place {
    controls::ListView* list;
    controls::RowId row = controls::RowId::kNone;
    Station seen{};  ///< the row's contents when last looked at
    controls::RowId marked = controls::RowId::kNone;
  };

  static Station StationOf(const controls::ListRow& row);
  void Search(Place& place, std::size_t first, std::size_t count) const;

  bool known_ = false;
  Station station_;
  std::array<Place, 2> places_;
};

class PlayingMark {
 public:
  /// The monitor is asked only while something plays.
  PlayingMark(app::ListPair lists, const platform::PlaybackMonitor& monitor);

  /// This row's address is what Start plays now.
  void Choose(const controls::ListView& list, controls::RowId row) { chosen_.Take(list, row); }

  /// Start opens the chosen row's address.
  void Opening();
  /// What was being opened plays from now on.
  void Playing();
  /// What was being opened will not play. Does nothing when it plays already.
  void GivenUp();
  void Stopped();

  /// Checks the state of playing; to be called regularly while something plays.
  void Follow();

  /// How playing stood at the last look: kConnecting from Opening on, kStopped from the end on.
  [[nodiscard]] platform::PlaybackState State() const { return state_; }
  /// The row of what was started last; kNone when it has none in this list.
  [[nodiscard]] controls::RowId RowIn(const controls::ListView& list) const { return playing_.RowIn(list); }
  /// Something else is being opened from now on; before State says so.
  controls::Event<> Opened;
  /// State has another value.
  controls::Event<> Changed;

 private:
  enum class Stage : std::uint8_t { kIdle, kOpening, kPlaying };
  void Bind(controls::ListView& list);
  void TakeNewRows(const controls::ListView& list, std::size_t first, std::size_t count);
  void Show(platform::PlaybackState state);

  const platform::PlaybackMonitor& monitor_;
  FollowedStation chosen_;
  FollowedStation playing_;
  Stage stage_ = Stage::kIdle;
  platform::PlaybackState state_ = platform::PlaybackState::kStopped;
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
