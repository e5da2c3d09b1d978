#pragma once
// NowPlaying alone: the stream client over scripts, the panel over its own controls. Not the window.

#include <string>

#include "tests/support/feature_rig.h"
#include "tests/ui/titled_station.h"
#include "ui/information_panel.h"
#include "ui/now_playing.h"

namespace ui {

using test_support::StationPlaying;

class NowPlayingTest : public test_support::FeatureTest {
 protected:
  void AddPlayingStation(const Text& name, const std::string& title) {
    AddStation(name, u"http://" + name + u"/s");
    test_support::LetStationPlay(internet, name, title);
  }
  /// The station's address is the current one, and its title is fetched.
  void Select(const Text& name) {
    state.current_stream_address = u"http://" + name + u"/s";
    now_playing.CheckAktuellerSong();
  }
  Text TitleOf(const Text& name) {
    return form.SymbolListview.Cell(RowNamed(form.SymbolListview, name), app::kTitleCell);
  }
  /// What the label shows after the selected station has sent this title.
  Text TitleFetchedFor(const std::string& bytes) {
    internet.answers[u"http://a/s"] = StationPlaying(bytes);
    form.Timer2.SetEnabled(true);
    form.Timer2.Fire();
    return form.Label4.Caption();
  }
  void RunAllTitles() { form.Command3.Click(); }

  InformationPanel panel{{.Frame3 = form.Frame3,
                          .Label4 = form.Label4,
                          .Label3 = form.Label3,
                          .Image1 = form.Image1,
                          .CmdInfoClose = form.CmdInfoClose},
                         {.environment = environment, .files = files, .icons = icons}};
  NowPlaying now_playing{{.Command3 = form.Command3, .Timer2 = form.Timer2, .lists = lists},
                         {.dialogs = dialogs, .message_loop = message_loop, .conversion = conversion},
                         panel,
                         state,
                         cFunkhaus,
                         life};
};

}  // namespace ui
