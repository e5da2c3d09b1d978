#include "window/desktop.h"

namespace window {

Desktop::Desktop(const Foundation& base, Playing& playing)
    : track({.environment = base.platform.environment, .files = base.platform.files}, playing.mark,
            playing.now_playing, base.state),
      remote_control(
          {.form = base.form.form,
           .Command1 = base.form.Command1,
           .Command6 = base.form.Command6,
           .hscSavVolume = base.form.hscSavVolume,
           .lists = ListsOf(base.form)},
          {.media_controls = base.platform.desktop.media_controls, .turns = base.platform.desktop.turns},
          base.state, track, playing.mark, base.life),
      sleep_guard({.inhibitor = base.platform.desktop.sleep_inhibitor, .clock = base.platform.clock},
                  playing.mark, base.form.tmPlay, base.form.form),
      title_notice({.form = base.form.form, .TitleNotices = base.form.TitleNotices},
                   {.notifications = base.platform.desktop.notifications, .files = base.platform.files},
                   track, playing.mark),
      users_guide(base.form.ShowGuide, base.platform.shell, playing.status_line,
                  base.platform.guide_address) {}

void Desktop::Appear(const Foundation& base) {
  const platform::Text station_file = base.settings.SettingsFolder + base.settings.StationFileName;
  title_notice.Restore(base.platform.environment.StateFile(station_file, u".notices"));
  remote_control.Appear();
}

}  // namespace window
