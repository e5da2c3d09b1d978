#include "platform/win32/ui/media_keys.h"

#include "platform/win32/base/windows_api.h"

#include <optional>

namespace platform::win32 {
namespace {

std::optional<MediaCommand> CommandOf(int key) {
  switch (key) {
    case APPCOMMAND_MEDIA_PLAY:
      return MediaCommand::kPlay;
    case APPCOMMAND_MEDIA_PAUSE:
      return MediaCommand::kPause;
    case APPCOMMAND_MEDIA_PLAY_PAUSE:
      return MediaCommand::kPlayPause;
    case APPCOMMAND_MEDIA_STOP:
      return MediaCommand::kStop;
    case APPCOMMAND_MEDIA_NEXTTRACK:
    case APPCOMMAND_MEDIA_CHANNEL_UP:
      return MediaCommand::kNext;
    case APPCOMMAND_MEDIA_PREVIOUSTRACK:
    case APPCOMMAND_MEDIA_CHANNEL_DOWN:
      return MediaCommand::kPrevious;
    default:
      return std::nullopt;
  }
}

}  // namespace

bool Win32MediaKeys::Press(int key, KeyboardIn keyboard) {
  if (keyboard == KeyboardIn::kOtherProgram && playback_ == MediaPlayback::kStopped) return false;
  const auto command = CommandOf(key);
  if (!command || receiver_ == nullptr) return false;
  receiver_->Receive(*command);
  return true;
}

}  // namespace platform::win32
