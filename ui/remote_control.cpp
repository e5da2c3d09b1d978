#include "ui/remote_control.h"

#include <algorithm>
#include <utility>

#include "app/state/station.h"
#include "ui/title_parts.h"

namespace ui {

using controls::ListView;
using controls::RowId;
using platform::MediaCommand;
using platform::MediaPlayback;
using platform::MediaState;
using platform::PlaybackState;
using platform::TurnOnWait;
using platform::TurnWhenBlocked;

namespace {

MediaPlayback PlaybackOf(PlaybackState state) {
  switch (state) {
    case PlaybackState::kConnecting:
    case PlaybackState::kBuffering:
    case PlaybackState::kPlaying:
    case PlaybackState::kReconnecting:
    case PlaybackState::kNoDevice:
      return MediaPlayback::kPlaying;
    case PlaybackState::kPaused:
      return MediaPlayback::kPaused;
    case PlaybackState::kStopped:
    case PlaybackState::kEnded:
    case PlaybackState::kFailed:
      break;
  }
  return MediaPlayback::kStopped;
}

TurnOnWait UseOf(const controls::Control& control) {
  return control.EndsWaiting() ? TurnOnWait::kEndsWait : TurnOnWait::kWaits;
}

}  // namespace

RemoteControl::RemoteControl(Parts parts, Ports ports, const app::WindowState& state, CurrentTrack& track,
                             PlayingMark& mark, const app::Life& window)
    : parts_(parts),
      ports_(ports),
      state_(state),
      track_(track),
      mark_(mark),
      window_(window),
      starts_(window) {}

RemoteControl::~RemoteControl() { Withdraw(); }

void RemoteControl::Appear() {
  appears_ = true;
  ports_.media_controls.Appear(*this);
  shown_ = State();
  ports_.media_controls.Publish(shown_);
  subscriptions_ += mark_.Opened.Subscribe([this] { wanted_ = RowId::kNone; });
  subscriptions_ += mark_.Changed.Subscribe([this] { Publish(); });
  subscriptions_ += track_.Changed.Subscribe([this] { Publish(); });
  subscriptions_ += parts_.hscSavVolume.Changed.Subscribe([this] { Publish(); });
  subscriptions_ += parts_.form.Unloaded.Subscribe([this] { Withdraw(); });
  Bind(parts_.lists.full);
  Bind(parts_.lists.filtered);
}

void RemoteControl::Bind(ListView& list) {
  subscriptions_ += list.RowsAdded.Subscribe([this](std::size_t, std::size_t) { Publish(); });
  subscriptions_ += list.RowsReset.Subscribe([this] { Publish(); });
  subscriptions_ += list.RowRemoved.Subscribe([this](std::size_t) { Publish(); });
  subscriptions_ += list.Changed.Subscribe([this] { Publish(); });
}

void RemoteControl::Withdraw() {
  if (!std::exchange(appears_, false)) return;
  subscriptions_.Clear();
  ports_.media_controls.Withdraw();
}

void RemoteControl::Receive(MediaCommand command) {
  switch (command) {
    case MediaCommand::kPlay:
      return ReceivePlay();
    case MediaCommand::kPause:
      if (Plays()) ReceiveStop();
      return;
    case MediaCommand::kPlayPause:
      return Plays() ? ReceiveStop() : ReceivePlay();
    case MediaCommand::kStop:
      return ReceiveStop();
    case MediaCommand::kNext:
      return ReceiveStep(Step::kNext);
    case MediaCommand::kPrevious:
      return ReceiveStep(Step::kPrevious);
    case MediaCommand::kRaise:
      // The box or dialog that stands open comes along.
      return HandOver([this] { parts_.form.SetFocus(); }, TurnOnWait::kWaits, TurnWhenBlocked::kRuns);
    case MediaCommand::kQuit:
      return HandOver([this] { parts_.form.Close(); }, TurnOnWait::kEndsWait);
  }
}

void RemoteControl::HandOver(std::function<void()> procedure, TurnOnWait on_wait,
                             TurnWhenBlocked when_blocked) {
  if (waiting_.use_count() > kMostWaiting) return;
  ports_.turns.HandOver(
      [this, procedure = std::move(procedure), when_blocked, waiting = waiting_] {
        if (when_blocked == TurnWhenBlocked::kRuns || !window_.Ended()) procedure();
      },
      on_wait, when_blocked);
}

void RemoteControl::ReceivePlay() {
  if (Plays() || !CanPlay()) return;
  HandOver([this] { StartMarked(); }, UseOf(parts_.Command1));
}

void RemoteControl::ReceiveStop() {
  HandOver(
      [this] {
        starts_.Interrupt();
        parts_.Command6.Click();
      },
      UseOf(parts_.Command6));
}

void RemoteControl::ReceiveStep(Step step) {
  const Afterwards afterwards = Plays() ? Afterwards::kPlaying : Afterwards::kSelected;
  HandOver([this, step, afterwards] { Go(step, afterwards); }, UseOf(parts_.lists.Active()));
}

void RemoteControl::StartMarked() {
  const bool marked = parts_.lists.Active().SelectedRow() != RowId::kNone;
  if (!marked && state_.current_stream_address.empty()) return Go(Step::kNext, Afterwards::kPlaying);
  Start([this] { parts_.Command1.Click(); });
}

void RemoteControl::Go(Step step, Afterwards afterwards) {
  ListView& list = parts_.lists.Active();
  const auto target = Target(step, afterwards);
  if (!target) return;
  const RowId row = list.RowAt(*target);
  wanted_ = row;
  // Selecting waits for the station, in the end for its title; the start has its turn before that.
  if (afterwards == Afterwards::kPlaying) {
    HandOver([this, &list, row] { StartRow(list, row); }, TurnOnWait::kWaits);
  }
  list.EnsureVisible(row);
  list.Select(row);
}

void RemoteControl::StartRow(ListView& list, RowId row) {
  // Another row may have been selected meanwhile, and starting would play that one.
  if (list.SelectedRow() != row) return;
  Start([&] { list.DoubleClick(row); });
}

void RemoteControl::Start(const std::function<void()>& press) {
  const app::Runs::Run start = starts_.Begin();
  start_ = start;
  press();
  if (start.Wanted()) starts_.Interrupt();
}

std::optional<std::size_t> RemoteControl::Target(Step step, Afterwards afterwards) const {
  const ListView& list = parts_.lists.Active();
  RowId from = list.SelectedRow();
  const RowId playing = mark_.RowIn(list);
  const bool under_way = wanted_ != RowId::kNone && wanted_ == from;
  if (afterwards == Afterwards::kPlaying && !under_way && playing != RowId::kNone) from = playing;
  const auto position = list.IndexOf(from);
  const std::size_t count = list.Count();
  if (count == 0) return std::nullopt;
  if (step == Step::kNext) {
    if (!position) return 0;
    return *position + 1 < count ? std::optional(*position + 1) : std::nullopt;
  }
  if (!position) return count - 1;
  return *position > 0 ? std::optional(*position - 1) : std::nullopt;
}

void RemoteControl::ReceiveVolume(int volume) {
  const bool waits = std::exchange(wanted_volume_, std::clamp(volume, 0, 100)).has_value();
  if (waits) return;
  ports_.turns.HandOver(
      [this] {
        const auto wanted = std::exchange(wanted_volume_, std::nullopt);
        if (wanted && !window_.Ended()) parts_.hscSavVolume.SetValue(*wanted);
      },
      TurnOnWait::kWaits, TurnWhenBlocked::kRuns);
}

bool RemoteControl::Plays() const {
  const bool starts = start_ && start_->Wanted();
  return starts || PlaybackOf(mark_.State()) == MediaPlayback::kPlaying;
}

bool RemoteControl::CanPlay() const {
  if (!state_.current_stream_address.empty()) return true;
  const ListView& list = parts_.lists.Active();
  const RowId selected = list.SelectedRow();
  // A row that has just been selected is resolved next.
  return selected == RowId::kNone ? list.Count() > 0 : !list.Cell(selected, app::kLinkCell).empty();
}

MediaState RemoteControl::State() const {
  MediaState state;
  state.playback = PlaybackOf(mark_.State());
  const bool plays = state.playback != MediaPlayback::kStopped;
  if (plays) {
    TitleParts parts = SplitTitle(track_.Title());
    state.track = {track_.Number(),        track_.Station(), std::move(parts.artist),
                   std::move(parts.title), track_.Picture(), track_.Address()};
  }
  state.volume = parts_.hscSavVolume.Value();
  state.can_play = CanPlay();
  const Afterwards afterwards = plays ? Afterwards::kPlaying : Afterwards::kSelected;
  state.can_go_next = Target(Step::kNext, afterwards).has_value();
  state.can_go_previous = Target(Step::kPrevious, afterwards).has_value();
  return state;
}

void RemoteControl::Publish() {
  MediaState state = State();
  if (state == shown_) return;
  shown_ = std::move(state);
  ports_.media_controls.Publish(shown_);
}

}  // namespace ui
