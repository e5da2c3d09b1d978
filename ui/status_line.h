#pragma once
// The status line: what playing does now, and one-sentence notices from features.
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

/// Empty until the first start or notice. From a start on, each Follow shows the state of playing, until a
/// stop, a failure or the end; that last sentence stays.
///
/// A notice is shown at once and stays until the state of playing changes; the new state waits until the
/// notice could be read, except for a new failure, which is shown at once. A start or a stop ends a notice. A
/// selected station's silent server is reported only while nothing plays.
class StatusLine final : public app::Notices {
 public:
  struct Ports {
    const platform::PlaybackMonitor& monitor;
    platform::Clock& clock;
  };
  /// The least time, in seconds, for which a notice is shown.
  static constexpr std::int64_t kReadableSeconds = 5;

  StatusLine(controls::Label& label, const app::Language& language, Ports ports)
      : label_(label), language_(language), ports_(ports) {}

  using Notices::Notify;
  void Notify(platform::TextView sentence, const std::vector<platform::Text>& arguments) override;

  /// The server of a selected station answered the header query with this. It is shown only when there was no
  /// answer at all, and only while nothing plays; the next selection removes it.
  void Selected(const platform::Text& station, const stream::QueryFailure& failure);
  /// A start first resolves its address.
  void Resolving();
  /// `station` is about to be opened.
  void Starting(const platform::Text& station);
  /// Shows the state of playing; nothing when nothing was started since the last stop.
  void Follow();
  /// The user pressed Stop. A paused item is still followed; a failure or an end of its own stays shown.
  void Stopped();
  /// A start did not lead to playing, although the monitor knows of no failure.
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
  bool is_current_ = false;                 // the caption shows that
  bool is_of_selection_ = false;            // the caption is about a selection
  std::optional<std::int64_t> noticed_at_;  // when the current notice was shown
};

}  // namespace ui
