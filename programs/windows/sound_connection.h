#pragma once
// The adapter that plays, under the ports that it implements. Not what is played.

#include <memory>

namespace platform {
class InterfaceCalls;
class MediaFramework;
class MessageLoop;
class PlaybackMonitor;
class PropertyValues;
}  // namespace platform

/// `loop` outlives it. Order: created and destroyed on the user-interface thread.
class SoundConnection {
 public:
  explicit SoundConnection(platform::MessageLoop& loop);
  ~SoundConnection();
  SoundConnection(const SoundConnection&) = delete;
  SoundConnection& operator=(const SoundConnection&) = delete;

  [[nodiscard]] platform::MediaFramework& Framework() const;
  [[nodiscard]] platform::InterfaceCalls& Calls() const;
  [[nodiscard]] platform::PlaybackMonitor& Monitor() const;
  [[nodiscard]] platform::PropertyValues& Values() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};
