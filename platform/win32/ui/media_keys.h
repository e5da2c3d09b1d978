#pragma once
// The keyboard's keys for media: those of the program's own window, and while something plays or is paused
// those that no other program used. Not what a command means.

#include "ports/media_controls.h"

namespace platform::win32 {

/// Which window has the keyboard while a key is pressed. The system reports keys of other programs' windows
/// to everybody, and passes them to the players that it knows as well: whoever obeys them then starts a
/// second one.
enum class KeyboardIn { kOwnWindow, kOtherProgram };

/// By the system's message for such keys (WM_APPCOMMAND). It shows nothing of what plays.
class Win32MediaKeys final : public MediaControls {
 public:
  void Appear(MediaReceiver& receiver) override { receiver_ = &receiver; }
  void Publish(const MediaState& state) override { playback_ = state.playback; }
  void Withdraw() override { receiver_ = nullptr; }

  /// The key's number as the system gives it (APPCOMMAND_...). False for one that is no key for media, and
  /// for one that was pressed in another program while nothing plays or is paused here.
  bool Press(int key, KeyboardIn keyboard);

 private:
  MediaReceiver* receiver_ = nullptr;
  MediaPlayback playback_ = MediaPlayback::kStopped;
};

}  // namespace platform::win32
