#pragma once
// The audio sessions of the system: device enumerator, device, session manager, the program's own session
// and its meter. Not the volume of the media session, which is in session_objects.h.

#include <memory>

#include "platform/gstreamer/context.h"

namespace platform::gstreamer {

/// One default device for sound, with one session: the program's own, as long as it has an item.
class DeviceEnumerator : public Object {
 public:
  explicit DeviceEnumerator(Context& context);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

class Device : public Object {
 public:
  explicit Device(Context& context);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

class AudioSessionManager : public Object {
 public:
  explicit AudioSessionManager(Context& context);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

class AudioSessionEnumerator : public Object {
 public:
  explicit AudioSessionEnumerator(Context& context);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

/// The control of the program's own session, through either of its two interfaces.
class AudioSessionControl : public Object {
 public:
  AudioSessionControl(Context& context, Interface seen_through);
  std::shared_ptr<Object> As(const Guid& iid) override;

 private:
  Context& context_;
};

/// Measures the sound that the program plays, whichever item that is, and across new connections.
class AudioMeter : public Object {
 public:
  explicit AudioMeter(Context& context);
  std::shared_ptr<Object> As(const Guid& iid) override;
};

}  // namespace platform::gstreamer
