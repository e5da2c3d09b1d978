#pragma once
// The media framework, the audio sessions and the state of playing on Linux: implements their ports with
// GStreamer. Not the player: the order of calls and what they mean to the user is the logic's business.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "ports/interface_call.h"
#include "ports/media_framework.h"
#include "ports/message_loop.h"
#include "ports/native_paths.h"
#include "ports/playback_monitor.h"

namespace platform::gstreamer {

/// Where the sound goes.
enum class SoundOutput : std::uint8_t {
  kAutomatic,  ///< the sound server, else the sound card; without either (said once in the log) one is waited
               ///< for
  kNowhere,    ///< played in time, but not heard
};

struct GstMediaOptions {
  /// A live stream that sends nothing for this long is opened again; at least 1 s.
  std::chrono::seconds stall_limit{15};
  /// The name of the program's entry in the sound server's mixer.
  std::string application_name = "Funkhausplayer";
  std::string user_agent = "Funkhausplayer";
  /// How long opening an address may take once GStreamer is ready. User input can end it earlier.
  std::chrono::milliseconds open_deadline{10000};
  /// How long an opening waits until a list of segments can say its length, which its caller asks for once,
  /// when it is open; two seconds of open_deadline are left at least.
  std::chrono::milliseconds length_limit{1000};
  SoundOutput output = SoundOutput::kAutomatic;
  /// A PEM file whose certificates are trusted instead of the system's; empty is the system's.
  std::string certificate_file;
  /// Makes GStreamer ready for use and returns whether it is; empty is its own function for that. Called
  /// once, on a thread of the adapter.
  std::function<bool()> start_framework;
  /// Receives one line per event worth knowing; empty writes to the standard error stream. May be called
  /// from any thread, but not once the adapter is gone.
  std::function<void(const std::string&)> log;
};

/// What a registered stream object supplies. Every call comes from one thread of the adapter at a time,
/// never from the user-interface thread. A call should return soon: stopping waits for it.
class StreamReader {
 public:
  virtual ~StreamReader() = default;
  /// Fills the front of `buffer`; the number of bytes read, 0 at the end.
  virtual std::size_t Read(std::span<std::byte> buffer) = 0;
  /// Continues reading at `position` bytes from the start; false when that is not possible.
  virtual bool Seek(std::uint64_t position) = 0;
  /// The length in bytes, when known.
  virtual std::optional<std::uint64_t> Size() = 0;
};

/// All three ports in one object, because they are about the same items. All calls belong to the
/// user-interface thread, except RegisterStream's readers. An opened item is supervised by a thread of its
/// own: it pauses a buffer that ran dry until there is enough, and opens a lost live stream again until it is
/// stopped; no call waits for a server except opening an address, which is bounded.
///
/// Every item has one stream, its first audio stream. Pictures in it are not shown: there is no window
/// that they could appear in before the streams are chosen.
///
/// Properties of an item's metadata, each present when known: "Title", "Author", "Album", "Genre",
/// "StationName", "StationUrl", "Comment", "Copyright" (wide strings), "AudioCodec" (wide string), "BitRate"
/// (bits per second), "SampleRate" (Hz) and "Channels" (32-bit unsigned integers).
class GstMedia : public MediaFramework, public InterfaceCalls, public PlaybackMonitor {
 public:
  GstMedia(MessageLoop& message_loop, NativePaths& native_paths, const GstMediaOptions& options = {});
  ~GstMedia() override;
  GstMedia(const GstMedia&) = delete;
  GstMedia& operator=(const GstMedia&) = delete;

  /// Makes GStreamer ready on a thread of its own, at any time. Otherwise the first item does, which then
  /// takes longer to open: at the very first start of all GStreamer loads every plugin, which takes seconds.
  void LoadAhead();

  /// A stream object for MFCreateMFByteStreamOnStream; valid until UnregisterStream. Items made on it keep
  /// the reader alive.
  StreamObject RegisterStream(std::shared_ptr<StreamReader> reader);
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

}  // namespace platform::gstreamer
