#pragma once
// A window with three stations on a desktop of doubles, and titles that stations send when a test wants.
// Not a bus; that is with the desktop's adapters.

#include <string>

#include "tests/ui/titled_window_fixture.h"

namespace app {

class DesktopTest : public TitledWindowTest {
 protected:
  DesktopTest() {
    AddPlayingStation(u"a", "Eins - Lied A");
    AddPlayingStation(u"b", "Zwei - Lied B");
    AddPlayingStation(u"c", "");
    media.SetMetadata({{u"Title", u"Lied"}});
    // What was opened waits for its first sound until a test says otherwise.
    playback_monitor.status.state = platform::PlaybackState::kConnecting;
  }

  [[nodiscard]] const platform::MediaState& Shown() const { return desktop.media_controls.Shown(); }
  /// A command with its turn.
  void Command(platform::MediaCommand command) {
    desktop.media_controls.receiver->Receive(command);
    desktop.turns.Run();
  }
  /// The next look at the player, which is in this state then.
  void Reach(platform::PlaybackState state) {
    playback_monitor.status.state = state;
    Form().tmPlay.Fire();
  }
  /// What was started is heard.
  void Sound() {
    media.play_state = player::kPlayStateRunning;
    Reach(platform::PlaybackState::kPlaying);
  }
  void Play(const Text& name) {
    Select(name);
    Form().Command1.Click();
    Sound();
  }
  void Stop() {
    Form().Command6.Click();
    media.play_state = player::kPlayStateStopped;
    playback_monitor.status.state = platform::PlaybackState::kConnecting;
  }
  Text Selected() { return Form().SymbolListview.Cell(Form().SymbolListview.SelectedRow(), kNameCell); }
  void SendTitle(const Text& host, const std::string& title) {
    test_support::LetStationPlay(internet, host, title);
  }
};

}  // namespace app
