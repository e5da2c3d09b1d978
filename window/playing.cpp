#include "window/playing.h"

namespace window {

using platform::Text;

namespace {

ui::NowPlaying::Parts TitleParts(app::Form1& form) {
  return {.Command3 = form.Command3, .Timer2 = form.Timer2, .lists = ListsOf(form)};
}

ui::InformationPanel::Parts PanelParts(app::Form1& form) {
  return {.Frame3 = form.Frame3,
          .Label4 = form.Label4,
          .Label3 = form.Label3,
          .Image1 = form.Image1,
          .CmdInfoClose = form.CmdInfoClose};
}

catalogue::StationDetails::Parts DetailsParts(app::Form1& form) {
  return {.fields = catalogue::EditorFields(form),
          .UpDownTextBox1 = form.UpDownTextBox1,
          .Label2 = form.Label2,
          .Command8_0 = form.Command8[0],
          .lists = ListsOf(form)};
}

ui::PlaybackControl::Parts PlaybackParts(app::Form1& form) {
  return {.Command1 = form.Command1,
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
          .lists = ListsOf(form)};
}

}  // namespace

Playing::Playing(const Foundation& base, const std::shared_ptr<stream::clsFunkhaus>& cFunkhaus,
                 const std::shared_ptr<player::clsMFPlayer>& cPlayer)
    : status_line(base.form.StatusLine, base.language,
                  {.monitor = base.platform.playback_monitor, .clock = base.platform.clock}),
      mark(ListsOf(base.form), base.platform.playback_monitor),
      panel(PanelParts(base.form), {.environment = base.platform.environment,
                                    .files = base.platform.files,
                                    .icons = base.platform.icons}),
      now_playing(TitleParts(base.form),
                  {.dialogs = base.platform.dialogs,
                   .message_loop = base.platform.message_loop,
                   .conversion = base.platform.conversion},
                  panel, base.state, cFunkhaus, base.life),
      details(DetailsParts(base.form), {.files = base.platform.files, .conversion = base.platform.conversion},
              base.state, cFunkhaus,
              {.take_row = [this](const auto& list, controls::RowId row) { mark.Choose(list, row); },
               .fetch_title = [this] { now_playing.CheckAktuellerSong(); },
               .report_server = [this](const Text& station,
                                       const auto& failure) { status_line.Selected(station, failure); },
               .show_picture = [this](const Text& station) { panel.ShowSelected(station); }},
              base.life),
      playback(PlaybackParts(base.form),
               {.dialogs = base.platform.dialogs,
                .message_loop = base.platform.message_loop,
                .shell = base.platform.shell,
                .system_messages = base.platform.system_messages},
               base.state, cPlayer, cFunkhaus, {.panel = panel, .status_line = status_line, .mark = mark},
               {.show_station_details = [this] { details.ShowStationDetails(); }}, base.life),
      recorder_launch({.UpDownTextBox1 = base.form.UpDownTextBox1, .lists = ListsOf(base.form)},
                      {.environment = base.platform.environment,
                       .dialogs = base.platform.dialogs,
                       .shell = base.platform.shell},
                      base.state, status_line, base.life) {}

}  // namespace window
