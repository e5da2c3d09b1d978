#pragma once
// The adapter that plays, under the ports that it implements. Not what is played.

#include <memory>

namespace platform {
class InterfaceCalls;
class MediaFramework;
class MessageLoop;
class NativePaths;
class PlaybackMonitor;
}  // namespace platform

/// Everything given outlives it.
class SoundConnection {
 public:
  SoundConnection(platform::MessageLoop& loop, platform::NativePaths& paths);
  ~SoundConnection();
  SoundConnection(const SoundConnection&) = delete;
  SoundConnection& operator=(const SoundConnection&) = delete;

  [[nodiscard]] platform::MediaFramework& Framework() const;
  [[nodiscard]] platform::InterfaceCalls& Calls() const;
  [[nodiscard]] platform::PlaybackMonitor& Monitor() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};
