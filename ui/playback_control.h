#pragma once
// Playing: Start and Stop, position, peak bars, volume and mute, the information panel.
// Not the media player itself (player), nor the titles (ui/now_playing.h).

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "app/state/runs.h"
#include "app/state/station_picture.h"
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
#include "ui/playing_mark.h"
#include "ui/status_line.h"

namespace ui {

class PlaybackControl {
 public:
  struct Parts {
    controls::CommandButton& Command1;
    controls::CommandButton& Command2;
    controls::CommandButton& Command6;
    controls::CommandButton& Command7;
    controls::CommandButton& CmdInfoClose;
    controls::ScrollBar& hscSavVolume;
    controls::CheckBox& ckSavMute;
    controls::Timer& tmPlay;
    controls::Timer& Timer1;
    controls::Timer& Timer2;
    std::array<controls::ProgressBar, 2>& ProgressBar1;
    controls::Frame& Frame3;
    controls::Label& Label1;
    controls::Label& Label3;
    controls::Label& Label4;
    controls::Image& Image1;
    controls::ListPair lists;
  };

  struct Ports {
    platform::Dialogs& dialogs;
    platform::MessageLoop& message_loop;
    platform::Shell& shell;
    platform::SystemMessages& system_messages;
  };

  /// Where it shows what happens, beside its own controls.
  struct Reports {
    StatusLine& status_line;
    PlayingMark& mark;
  };

  struct Actions {
    /// What a change of the selection does: works out the selected row's details again.
    std::function<void()> show_station_details;
  };

  /// `cPlayer` and `cFunkhaus` are the owner's pointers, empty before the window is loaded and after it was
  /// unloaded.
  PlaybackControl(Parts parts, Ports ports, app::WindowState& state, app::StationPicture& picture,
                  const std::shared_ptr<player::clsMFPlayer>& cPlayer,
                  const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus, Reports reports, Actions actions,
                  const app::Life& window);

  void Command1_Click();
  void Command2_Click();
  void Command6_Click();
  void Command7_Click();
  void CmdInfoClose_Click();
  void ckSavMute_Click();
  void hscSavVolume_Change();
  void hscSavVolume_Scroll();
  void tmPlay_Timer();
  void Timer1_Timer();

  /// Opens `sLink` and shows what it offers; with `bStart` it starts to sound. Whatever fails ends the rest
  /// of the routine.
  void PlayStation(bool bStart, const platform::Text& sLink);

  void cPlayer_MediaFileIsReady(bool IsReady);
  void cPlayer_IsCreateOK(std::int32_t lngIsOk);

  /// The platform's message for an error code, "" for an unknown one.
  [[nodiscard]] platform::Text SystemErrorText(std::int32_t code) const;

 private:
  enum class StartState { kGoOn, kEnd };
  StartState RefreshSelection();
  StartState WorkOutAgain();
  void ShowServiceValues(player::clsMFPlayer& player);
  /// The slider and the mute box take what the user has set in the desktop's mixer, and write nothing back;
  /// without an answer they stay as they are.
  void FollowMixer(player::clsMFPlayer& player);
  /// What the stream says of itself, a line per name. Nothing when a name that was announced is missing.
  [[nodiscard]] std::optional<platform::Text> InformationText(player::clsMFPlayer& player) const;
  void ShowPicture(const platform::Text& station_name);
  void HideBar(controls::ProgressBar& bar);
  /// Position and bars disappear.
  void ClearDisplay();
  /// After an opening that was given up: the item before it was closed, and nobody asks for titles.
  void ShowNothingPlaying();
  [[nodiscard]] platform::Text PositionText(player::clsMFPlayer& player) const;

  Parts parts_;
  Ports ports_;
  app::WindowState& state_;
  app::StationPicture& picture_;
  const std::shared_ptr<player::clsMFPlayer>& cPlayer;
  const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus;
  Reports reports_;
  Actions actions_;
  const app::Life& window_;
  app::Runs starts_;              // of which a Start or Stop that comes in the middle of one ends it
  bool has_services_ = false;     // the item that was opened last has a volume to follow
  bool following_mixer_ = false;  // the slider and the box move by themselves
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
