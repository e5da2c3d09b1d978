#pragma once
// The status line: what playing does now, and what a feature has to say in one sentence.
// Not the message boxes, and not the causes themselves (ports/playback_monitor.h).

#include <cstdint>
#include <optional>
#include <vector>

#include "app/settings/language.h"
#include "app/state/notices.h"
#include "controls/captioned.h"
#include "ports/clock.h"
#include "ports/playback_monitor.h"
#include "stream/query_failure.h"

namespace ui {

/// Empty until the first start or notice. From a start on the line follows playing, whenever it is asked to
/// Follow, until a stop, a failure or the end; that last sentence stays.
///
/// A notice is shown at once and stays until playing is in another state than it was, which is not shown
/// before the notice could be read; only a new failure is shown at once. A start or a stop ends a notice.
/// A selection's silent server is named while nothing plays, and does not disturb what does.
class StatusLine final : public app::Notices {
 public:
  struct Ports {
    const platform::PlaybackMonitor& monitor;
    platform::Clock& clock;
  };
  /// How long a notice can be read at least.
  static constexpr std::int64_t kReadableSeconds = 5;

  StatusLine(controls::Label& label, const app::Language& language, Ports ports)
      : label_(label), language_(language), ports_(ports) {}

  using Notices::Notify;
  void Notify(platform::TextView sentence, const std::vector<platform::Text>& arguments) override;

  /// The server of a selected station gave this answer when it was asked for its headers. Only what is no
  /// answer at all is shown, and only while nothing plays; the next selection takes it away again.
  void Selected(const platform::Text& station, const stream::QueryFailure& failure);
  /// A start works out first which address it is.
  void Resolving();
  /// `station` is about to be opened.
  void Starting(const platform::Text& station);
  /// Shows how playing stands; nothing when nothing was started since the last stop.
  void Follow();
  /// The user pressed Stop. What is paused goes on; what has failed or ended by itself stays so.
  void Stopped();
  /// A start did not come to play, although nothing failed that the monitor knows.
  void NotPlayable();

 private:
  enum class Phase : std::uint8_t { kIdle, kResolving, kFollowing };
  void Show(const platform::PlaybackStatus& status);
  void Say(platform::TextView sentence, const std::vector<platform::Text>& arguments);
  [[nodiscard]] bool NoticeStays(const platform::PlaybackStatus& status) const;

  controls::Label& label_;
  const app::Language& language_;
  Ports ports_;
  Phase phase_ = Phase::kIdle;
  platform::Text station_;
  platform::PlaybackStatus shown_;          // what was shown of playing last
  bool is_current_ = false;                 // the caption says that, and not something else
  bool is_of_selection_ = false;            // the caption says what became of a selection
  std::optional<std::int64_t> noticed_at_;  // a notice stands there since then
};

}  // namespace ui
