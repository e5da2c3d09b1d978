#pragma once
// The media session and what it gives: clock, volume, metadata.
// Not opening; and not the audio sessions of the system (endpoint_objects.h).

#include <memory>

#include "platform/gstreamer/context.h"

namespace platform::gstreamer {

/// The item that a session plays, shared with the session's clock and services.
struct SessionState {
  std::shared_ptr<MediaItem> item;
  bool shut_down = false;
};

class MediaSession : public Object {
 public:
  explicit MediaSession(Context& context);
  ~MediaSession() override;
  std::shared_ptr<Object> As(const Guid& iid) override;

  /// A service by its identifier, as MFGetService.
  HResult GetService(const Guid& service, const Guid& iid, InterfaceHandle* out);

 private:
  HResult SetTopology(InterfaceHandle topology);
  HResult Start(const Guid* time_format, const PropertyValue* position);
  /// kSOk when there is an item that can be played.
  [[nodiscard]] HResult Check() const;

  Context& context_;
  std::shared_ptr<SessionState> state_;
};

class SessionClock : public Object {
 public:
  explicit SessionClock(std::shared_ptr<SessionState> state);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

/// Counts on the scale of the desktop's mixers, so that both show the same number.
class SimpleAudioVolume : public Object {
 public:
  SimpleAudioVolume(Context& context, std::shared_ptr<SessionState> state);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

class MetadataProvider : public Object {
 public:
  explicit MetadataProvider(Context& context);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

class Metadata : public Object {
 public:
  explicit Metadata(std::shared_ptr<MediaItem> item);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

}  // namespace platform::gstreamer
