#pragma once
// Playing: Start and Stop, position, peak bars, volume and mute.
// Not the media player itself (player), nor the titles (ui/now_playing.h) and the information panel.

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "app/state/list_pair.h"
#include "app/state/runs.h"
#include "app/state/window_state.h"
#include "controls/captioned.h"
#include "controls/list_view.h"
#include "controls/timer.h"
#include "controls/value_controls.h"
#include "player/mf_player.h"
#include "ports/dialogs.h"
#include "ports/message_loop.h"
#include "ports/shell.h"
#include "ports/system_messages.h"
#include "stream/cls_funkhaus.h"
#include "ui/information_panel.h"
#include "ui/playing_mark.h"
#include "ui/status_line.h"

namespace ui {

class PlaybackControl {
 public:
  struct Parts {
    controls::CommandButton& Command1;                   ///< Start
    controls::CommandButton& Command2;                   ///< opens a station directory
    controls::CommandButton& Command6;                   ///< Stop
    controls::CommandButton& Command7;                   ///< opens the volume mixer
    controls::ScrollBar& hscSavVolume;                   ///< volume 0 to 100
    controls::CheckBox& ckSavMute;                       ///< mute
    controls::Timer& tmPlay;                             ///< position, every 500 ms
    controls::Timer& Timer1;                             ///< peak bars, every 20 ms
    controls::Timer& Timer2;                             ///< title, every 5000 ms
    std::array<controls::ProgressBar, 2>& ProgressBar1;  ///< peak bars, left and right
    controls::Label& Label1;                             ///< position and duration
    app::ListPair lists;
  };

  struct Ports {
    platform::Dialogs& dialogs;
    platform::MessageLoop& message_loop;
    platform::Shell& shell;
    platform::SystemMessages& system_messages;
  };

  /// Where it shows what happens, besides its own controls.
  struct Reports {
    InformationPanel& panel;
    StatusLine& status_line;
    PlayingMark& mark;
  };

  struct Actions {
    /// As after a change of the selection: resolves the selected row's details again.
    std::function<void()> show_station_details;
  };

  /// `cPlayer` and `cFunkhaus` are the owner's pointers, empty before the window is loaded and after it was
  /// unloaded.
  PlaybackControl(Parts parts, Ports ports, app::WindowState& state,
                  const std::shared_ptr<player::clsMFPlayer>& cPlayer,
                  const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus, Reports reports, Actions actions,
                  const app::Life& window);

  void Command1_Click();  ///< Start: resolves stale details first
  void Command2_Click();  ///< opens a station directory
  void Command6_Click();  ///< Stop
  void Command7_Click();  ///< opens the volume mixer
  void ckSavMute_Click();
  void hscSavVolume_Change();
  void hscSavVolume_Scroll();
  void tmPlay_Timer();  ///< position, and what the mixer was set to
  void Timer1_Timer();  ///< peak bars

  /// Opens `sLink` and shows what it offers; with `bStart` it starts to sound. Any failure ends the rest of
  /// the routine.
  void PlayStation(bool bStart, const platform::Text& sLink);

  void cPlayer_MediaFileIsReady(bool IsReady);
  void cPlayer_IsCreateOK(std::int32_t lngIsOk);

  /// The platform's message for an error code, "" for an unknown one.
  [[nodiscard]] platform::Text SystemErrorText(std::int32_t code) const;

 private:
  enum class StartState { kContinue, kEnd };
  StartState RefreshSelection();
  StartState ResolveAgain();
  void ShowServiceValues(player::clsMFPlayer& player);
  /// The slider and the mute box show what the user has set in the desktop's mixer, and write nothing back;
  /// without an answer they stay as they are.
  void FollowMixer(player::clsMFPlayer& player);
  /// What the stream says about itself, a line per name. Nothing when a name that was announced is missing.
  [[nodiscard]] std::optional<platform::Text> InformationText(player::clsMFPlayer& player) const;
  void HideBar(controls::ProgressBar& bar);
  /// Position and bars disappear.
  void ClearDisplay();
  /// After an opening that was given up: the previous item is closed, and titles are not fetched any more.
  void ShowNothingPlaying();
  [[nodiscard]] platform::Text PositionText(player::clsMFPlayer& player) const;

  Parts parts_;
  Ports ports_;
  app::WindowState& state_;
  const std::shared_ptr<player::clsMFPlayer>& cPlayer;
  const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus;
  Reports reports_;
  Actions actions_;
  const app::Life& window_;
  app::Runs starts_;      ///< a Start or Stop that comes in the middle of a start ends it
  bool stopped_ = false;  ///< Stop was pressed since the latest address was opened
  /// Volume or metadata of the open item were found, so that the mixer can be followed. False from the moment
  /// the next item is opened until its own are found.
  bool has_services_ = false;
  bool following_mixer_ = false;  ///< the slider and the box move by themselves
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
