#pragma once
// The player on the desktop: media keys and panels press the window's controls, and see what plays. Not how
// the desktop is reached (ports/media_controls.h), nor playing itself.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "app/state/list_pair.h"
#include "app/state/runs.h"
#include "app/state/window_state.h"
#include "controls/captioned.h"
#include "controls/form.h"
#include "controls/list_view.h"
#include "controls/value_controls.h"
#include "ports/media_controls.h"
#include "ports/turns.h"
#include "ui/current_track.h"
#include "ui/playing_mark.h"

namespace ui {

/// A command has its turn as user input has. What it means is settled when it comes: the wait that it ends
/// may change what plays before its turn.
///
/// A live station cannot be held, so Pause is Stop. Play does nothing while something plays; without a marked
/// station it starts the first row. Next and Previous walk the rows of the visible list, from the row that
/// plays or else from the selected one, and end at the ends; they start the row when something plays, and
/// only select it otherwise.
class RemoteControl final : public platform::MediaReceiver {
 public:
  struct Parts {
    controls::Form& form;
    controls::CommandButton& Command1;
    controls::CommandButton& Command6;
    controls::ScrollBar& hscSavVolume;
    app::ListPair lists;
  };
  struct Ports {
    platform::MediaControls& media_controls;
    platform::Turns& turns;
  };
  /// As many commands may wait for their turn; what comes beyond is dropped.
  static constexpr long kMostWaiting = 32;

  RemoteControl(Parts parts, Ports ports, const app::WindowState& state, CurrentTrack& track,
                PlayingMark& mark, const app::Life& window);
  ~RemoteControl() override;
  RemoteControl(const RemoteControl&) = delete;
  RemoteControl& operator=(const RemoteControl&) = delete;

  /// The player appears on the desktop, until the window is unloaded. Once, when the window has loaded.
  void Appear();

  void Receive(platform::MediaCommand command) override;
  void ReceiveVolume(int volume) override;

 private:
  enum class Step { kNext, kPrevious };
  enum class Afterwards { kSelected, kPlaying };
  void Bind(controls::ListView& list);
  void HandOver(std::function<void()> procedure, platform::TurnOnWait on_wait,
                platform::TurnWhenBlocked when_blocked = platform::TurnWhenBlocked::kIsDropped);
  void ReceivePlay();
  void ReceiveStop();
  void ReceiveStep(Step step);
  void StartMarked();
  void Go(Step step, Afterwards afterwards);
  void StartRow(controls::ListView& list, controls::RowId row);
  void Start(const std::function<void()>& press);
  /// Where a step leads; nothing at the end of the list.
  [[nodiscard]] std::optional<std::size_t> Target(Step step, Afterwards afterwards) const;
  [[nodiscard]] bool Plays() const;
  [[nodiscard]] bool CanPlay() const;
  [[nodiscard]] platform::MediaState State() const;
  void Publish();
  void Withdraw();

  Parts parts_;
  Ports ports_;
  const app::WindowState& state_;
  CurrentTrack& track_;
  PlayingMark& mark_;
  const app::Life& window_;
  bool appears_ = false;
  app::Runs starts_;
  std::optional<app::Runs::Run>
      start_;  // while it is wanted Start runs, and may have stopped what played before
  controls::RowId wanted_ = controls::RowId::kNone;  // a step has led here, and it does not play yet
  std::optional<int> wanted_volume_;                 // has not had its turn yet
  std::shared_ptr<const int> waiting_ = std::make_shared<const int>();  // shared by every command that waits
  platform::MediaState shown_;
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
