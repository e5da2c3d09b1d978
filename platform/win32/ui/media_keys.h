#pragma once
// The keyboard's keys for media, while the program's window has the keyboard or no other program used them.
// Not what a command means.

#include "ports/media_controls.h"

namespace platform::win32 {

/// By the system's message for such keys (WM_APPCOMMAND). It shows nothing of what plays.
class Win32MediaKeys final : public MediaControls {
 public:
  void Appear(MediaReceiver& receiver) override { receiver_ = &receiver; }
  void Publish(const MediaState& /*state*/) override {}
  void Withdraw() override { receiver_ = nullptr; }

  /// The key's number as the system gives it (APPCOMMAND_...). False for one that is no key for media.
  bool Press(int key);

 private:
  MediaReceiver* receiver_ = nullptr;
};

}  // namespace platform::win32
