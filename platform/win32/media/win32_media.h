#pragma once
// The media framework, the audio sessions and the state of playing on Windows: implements their ports with
// Media Foundation and Core Audio. Not the player: the order of calls and what they mean is the logic's
// business.

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "ports/interface_call.h"
#include "ports/media_framework.h"
#include "ports/message_loop.h"
#include "ports/playback_monitor.h"

struct IStream;

namespace platform::win32 {

class AddressReader;

struct Win32MediaOptions {
  /// How long opening an address may take. The system has half of it for a web address, and the adapter's
  /// reader all of it for one that the system did not open.
  std::chrono::milliseconds open_deadline{10000};
  /// A live stream that sends nothing for this long is opened again, also one that the system reads.
  std::chrono::milliseconds stall_limit{15000};
  /// A session closes in a few milliseconds, on a busy machine in more. The window is held up no longer than
  /// this; what is left to do then is done when the session has closed.
  std::chrono::milliseconds close_limit{1000};
  Text user_agent = u"Funkhausplayer";
  /// What opens an address first; none is the system's resolver.
  std::shared_ptr<AddressReader> reader = nullptr;
  /// Whether a device takes sound; called on another thread, and may take long. Empty asks the system.
  std::function<bool()> look_for_device;
  /// Receives one line per event worth knowing; empty writes to the standard error stream and to whoever
  /// listens to the system's debugging messages. Called on the user-interface thread.
  std::function<void(const std::string&)> log;
};

/// All three ports in one object, because they are about the same items. All calls belong to the
/// user-interface thread, whose COM is initialised here.
///
/// An http address is first given to the system's resolver. What that does not open is read by the adapter,
/// which connects again when the connection is lost, and played by the system from there. So is a station
/// that the system opens and then loses. A station whose device is lost waits for another.
class Win32Media : public MediaFramework, public InterfaceCalls, public PlaybackMonitor {
 public:
  explicit Win32Media(MessageLoop& loop, const Win32MediaOptions& options = {});
  ~Win32Media() override;
  Win32Media(const Win32Media&) = delete;
  Win32Media& operator=(const Win32Media&) = delete;

  /// A stream object for MFCreateMFByteStreamOnStream; valid until UnregisterStream.
  StreamObject RegisterStream(::IStream* stream);
  void UnregisterStream(StreamObject stream);

  HResult MFStartup(std::int32_t version, std::int32_t flags) override;
  HResult MFShutdown() override;
  HResult MFCreateSourceResolver(InterfaceHandle& out) override;
  HResult MFCreateMFByteStreamOnStream(StreamObject stream, InterfaceHandle& out) override;
  HResult MFCreateTopology(InterfaceHandle& out) override;
  HResult MFCreateTopologyNode(std::int32_t type, InterfaceHandle& out) override;
  HResult MFCreateMediaSession(InterfaceHandle& out) override;
  HResult MFCreateAudioRendererActivate(InterfaceHandle& out) override;
  HResult MFCreateVideoRendererActivate(WindowHandle window, InterfaceHandle& out) override;
  HResult MFGetService(InterfaceHandle object, const Guid& service, const Guid& iid,
                       InterfaceHandle& out) override;

  std::optional<HResult> DispCallFunc(InterfaceHandle object, Interface interface_id, std::int32_t slot,
                                      std::span<const Argument> arguments) override;
  HResult CoCreateInstance(const Guid& clsid, InterfaceHandle outer, std::int32_t class_context,
                           const Guid& iid, InterfaceHandle& out) override;

  [[nodiscard]] PlaybackStatus Status() const override;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform::win32
