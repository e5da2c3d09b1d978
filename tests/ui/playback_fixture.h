#pragma once
// PlaybackControl alone: its player and stream client over doubles of the platform, its details a callable.
// Not the window, and not real sound.

#include <functional>
#include <memory>
#include <string>

#include "platform/values/portable_property_values.h"
#include "player/mf_player.h"
#include "tests/support/feature_rig.h"
#include "tests/support/recording_media.h"
#include "ui/information_panel.h"
#include "ui/playback_control.h"
#include "ui/playing_mark.h"
#include "ui/status_line.h"

namespace ui {

class PlaybackControlTest : public test_support::FeatureTest {
 protected:
  PlaybackControlTest() {
    media.SetMetadata({{u"Title", u"Lied"}, {u"Genre", u"Rock"}});
    AddStation(u"A", u"http://a/");
    AddStation(u"B", u"http://b/");
    cPlayer->MediaFileIsReady = [this](bool ready) { playback.cPlayer_MediaFileIsReady(ready); };
    cPlayer->IsCreateOK = [this](std::int32_t result) { playback.cPlayer_IsCreateOK(result); };
    form.tmPlay.SetInterval(500);
  }

  /// The row is selected and its details are known.
  void Select(const Text& name) {
    form.SymbolListview.Select(RowNamed(form.SymbolListview, name));
    state.current_station_name = name;
    state.current_stream_address =
        form.SymbolListview.Cell(form.SymbolListview.SelectedRow(), app::kLinkCell);
    mark.Choose(form.SymbolListview, form.SymbolListview.SelectedRow());
  }
  void StartAndPlay() {
    Select(u"A");
    form.Command1.Click();
    media.play_state = player::kPlayStateRunning;
    media.TakeCalls();
  }
  std::size_t CountCalls(const std::string& part) const {
    std::size_t count = 0;
    for (const std::string& call : media.Calls()) count += call.find(part) != std::string::npos ? 1U : 0U;
    return count;
  }
  bool AnyTimerRuns() const {
    return form.tmPlay.Enabled() || form.Timer1.Enabled() || form.Timer2.Enabled();
  }

  test_support::RecordingMedia media;
  platform::values::PortablePropertyValues values;
  player::ProgramDuration duration;
  std::shared_ptr<player::clsMFPlayer> cPlayer = player::clsMFPlayer::Make(
      player::clsMFPlayer::Ports{media, media, values, environment, clock, message_loop}, duration);
  StatusLine status_line{form.StatusLine, language, {playback_monitor, clock}};
  PlayingMark mark{lists, playback_monitor};
  InformationPanel panel{{.Frame3 = form.Frame3,
                          .Label4 = form.Label4,
                          .Label3 = form.Label3,
                          .Image1 = form.Image1,
                          .CmdInfoClose = form.CmdInfoClose},
                         {environment, files, icons}};
  int details_shown = 0;
  std::function<void()> on_details = [] {};
  PlaybackControl playback{{.Command1 = form.Command1,
                            .Command2 = form.Command2,
                            .Command6 = form.Command6,
                            .Command7 = form.Command7,
                            .hscSavVolume = form.hscSavVolume,
                            .ckSavMute = form.ckSavMute,
                            .tmPlay = form.tmPlay,
                            .Timer1 = form.Timer1,
                            .Timer2 = form.Timer2,
                            .ProgressBar1 = form.ProgressBar1,
                            .Label1 = form.Label1,
                            .lists = lists},
                           {dialogs, message_loop, shell, system_messages},
                           state,
                           cPlayer,
                           cFunkhaus,
                           {.panel = panel, .status_line = status_line, .mark = mark},
                           {.show_station_details =
                                [this] {
                                  ++details_shown;
                                  on_details();
                                }},
                           life};
};

}  // namespace ui
