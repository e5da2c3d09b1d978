#pragma once
// The media player: opens one item at a time, plays it, and reports volume, level, position and metadata.
// Not for titles, which the stream client reads, and not for the window's controls.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "app/state/runs.h"
#include "player/interface_caller.h"
#include "player/interface_ref.h"
#include "player/program_duration.h"
#include "ports/clock.h"
#include "ports/environment.h"
#include "ports/interface_call.h"
#include "ports/media_framework.h"
#include "ports/media_interfaces.h"
#include "ports/message_loop.h"
#include "ports/property_value.h"
#include "ports/text.h"

namespace player {

/// The states of the presentation clock, as PlayState gives them.
inline constexpr std::int32_t kPlayStateInvalid = static_cast<std::int32_t>(platform::ClockState::kInvalid);
inline constexpr std::int32_t kPlayStateRunning = static_cast<std::int32_t>(platform::ClockState::kRunning);
inline constexpr std::int32_t kPlayStateStopped = static_cast<std::int32_t>(platform::ClockState::kStopped);
inline constexpr std::int32_t kPlayStatePaused = static_cast<std::int32_t>(platform::ClockState::kPaused);

/// No operation raises an error: a failure gives false, 0 or "" and leaves the output as it was.
///
/// Order of calls: MediaFileFromUrl (or MediaFileFromIStream), then CreateService once, then everything
/// else. Opening closes the previous item first. Without an item every operation fails.
///
/// Re-entry: the events and the wait of CreateService run foreign code, which may open another item or
/// release the player. The newest opening wins: a call that finds its item overtaken, or its player released
/// by its owners, ends quietly and touches nothing more. A player from Make stays alive until its own calls
/// have returned; a caller that makes further calls after such a call keeps a pointer of its own.
class clsMFPlayer : public std::enable_shared_from_this<clsMFPlayer> {
 public:
  struct Ports {
    platform::MediaFramework& framework;
    platform::InterfaceCalls& calls;
    platform::PropertyValues& values;
    platform::Environment& environment;
    platform::Clock& clock;
    platform::MessageLoop& loop;
  };

  /// A player that may be released inside one of its own calls. It starts the media framework; if the
  /// framework does not start, every opening of this player fails.
  static std::shared_ptr<clsMFPlayer> Make(const Ports& ports, ProgramDuration& duration);
  /// As Make, for an owner that releases the player only between its calls.
  clsMFPlayer(const Ports& ports, ProgramDuration& duration);
  /// Closes the item and, when the framework was started, shuts it down.
  ~clsMFPlayer();
  clsMFPlayer(const clsMFPlayer&) = delete;
  clsMFPlayer& operator=(const clsMFPlayer&) = delete;

  /// Event: false at the beginning of an opening. After a successful one true for a stream object, but false
  /// again for an address: whoever opened an address starts the playback itself. Whoever sets a handler
  /// removes it before being destroyed.
  std::function<void(bool IsReady)> MediaFileIsReady;
  /// Event: the result of opening an address: 0, or 0x80070002 (file not found), or 0xC00D36C4
  /// (unsupported type) as a signed number. Other failures raise nothing.
  std::function<void(std::int32_t lngIsOk)> IsCreateOK;

  /// The window of a video stream; zero is ignored.
  void VideoRenderHwnd(platform::WindowHandle window);
  /// Whether a media session exists.
  [[nodiscard]] bool IsMediaReady() const;

  /// Opens a stream address; opening is bounded by the framework (10 s).
  void MediaFileFromUrl(Text address);
  /// Whether the last opening of an address was given up because user input was pending. Such an opening is
  /// not reported, and there is no item then.
  [[nodiscard]] bool OpeningCancelled() const { return opening_cancelled_; }
  void MediaFileFromIStream(platform::StreamObject stream);

  /// Starts from the current position; true when the session accepted.
  bool PlayMedia();
  /// Always false, whatever the session answered.
  bool PauseMedia();
  bool StopMedia();
  /// 0 invalid, 1 running, 2 stopped, 3 paused.
  std::int32_t PlayState();

  /// Attaches volume, metadata and peak meter to the session. Waits half a second first, while the window
  /// processes messages, and asks for each once. True when volume or metadata were found.
  bool CreateService();

  /// Creates an object of a class seen through an interface, both as GUID texts of 38 characters. True on
  /// S_OK; the object is then released by its receiver (IUnknown Release).
  bool CreateInterface(const Text& sCLSID, const Text& sIID, InterfaceHandle& pInterface);

  /// The level of all channels together, 0.0 to 1.0.
  bool GetAudioPeak(float& sngAudioPeakValue);
  std::int32_t GetAudioChannelCount();
  /// The levels of the first `channels` channels, 0.0 to 1.0 each. False for a count
  /// below 1 or above 65535.
  bool GetAudioChannelsPeakValues(std::int32_t channels, std::vector<float>& peaks);
  /// 1 muted, 0 not; nothing when the session gives no answer.
  std::optional<std::int32_t> AnsweredMute();
  /// As before, but 0 without an answer.
  std::int32_t GetAudioSimpleMute();
  bool SetAudioSimpleMute(bool bolMute);
  /// The volume in hundredths, 0 (silent) to 100, ties rounded to the even number; nothing when the session
  /// gives no answer, or none that is a volume.
  std::optional<std::int16_t> AnsweredVolume();
  /// As before, but 0 without an answer.
  std::int16_t GetAudioSimpleAudioVolume();
  /// 0.0 (silent) to 1.0 (full); passed on unchanged.
  bool SetAudioAudioVolume(float sngVolume);

  /// Times are counts of 100-nanosecond units; their texts have the form hh:mm:ss.
  std::int64_t CurrentPlayPosition();
  Text CurrentPlayPositionHMS();
  [[nodiscard]] std::int64_t Duration() const;
  [[nodiscard]] Text DurationHMS() const;
  /// Rounded to whole seconds, ties to the even one; 100 hours give "100:00:00".
  static Text CurrencyTime2HMS(std::int64_t time);

  /// The names of the item's properties, and their number. Without metadata 0. When the metadata refuses, the
  /// result is 1 although `names` stays as it was.
  std::int32_t GetAllMetadataNames(std::vector<Text>& names);
  /// The text of a property; 1 when the item has it, otherwise 0 and `strWert` stays as it was.
  std::int32_t GetMetadata(const Text& StrName, Text& strWert);
  /// The text of a number, boolean, text or GUID, or a vector of texts joined by ";"; "" for every other
  /// type and on failure. Clears `value`.
  void PropVariantToText(platform::PropertyValue& value, Text& text);

 private:
  struct Ownership;
  /// Belongs to a call that runs foreign code: keeps the player alive, and knows whether the call's item is
  /// still the newest of a player that still has an owner.
  struct OwnCall {
    std::shared_ptr<clsMFPlayer> alive;
    app::Runs::Run opening;
  };
  void RaiseMediaFileIsReady(bool IsReady);
  void RaiseIsCreateOK(std::int32_t lngIsOk);

  /// From now on this opening is the newest.
  OwnCall BeginOpening();
  /// The common beginning of both openings; false when the opening was overtaken.
  bool ClosePrevious(const OwnCall& call);
  bool CreateSourceFromUrl(const Text& address, const OwnCall& call);
  bool CreateSourceFromStream(platform::StreamObject stream);
  bool KeepSource(std::int32_t object_type, const InterfaceRef& object);
  void FreeMedia();
  void ReleaseWhatStayed();

  bool BuildSession(InterfaceHandle source);
  bool AddStreamBranches(InterfaceHandle source, InterfaceHandle topology);
  bool AddStreamBranch(InterfaceHandle source, std::int32_t index, InterfaceHandle descriptor,
                       InterfaceHandle topology);
  bool ConnectBranch(InterfaceHandle topology, InterfaceHandle source_node, InterfaceHandle output_node);
  bool CreateSourceStreamNode(InterfaceHandle source, InterfaceHandle descriptor,
                              InterfaceHandle stream_descriptor, InterfaceRef& node);
  bool CreateOutputNode(InterfaceHandle stream_descriptor, InterfaceRef& node);
  bool CreateRendererActivate(const Guid& major_type, InterfaceRef& activation);
  bool ConfigureSession(InterfaceHandle topology);
  void ReadDuration();

  bool AttachVolume();
  bool AttachMetadata();
  bool SetupAudioMeter(InterfaceRef& meter);
  bool FindOwnMeter(InterfaceHandle sessions, InterfaceRef& meter);
  bool MeterOfOwnSession(InterfaceHandle sessions, std::int32_t index, InterfaceRef& meter);

  Ports ports_;
  ProgramDuration& duration_;
  InterfaceCaller caller_;
  bool started_ = false;
  app::Life owned_;
  app::Runs openings_{owned_};
  bool opening_cancelled_ = false;
  platform::WindowHandle video_window_ = platform::WindowHandle::kNone;
  InterfaceRef clock_{caller_};
  InterfaceRef metadata_{caller_};
  InterfaceRef source_{caller_};
  InterfaceRef session_{caller_};
  InterfaceRef simple_volume_{caller_};
  InterfaceRef presentation_descriptor_{caller_};
  InterfaceRef audio_meter_{caller_};
};

}  // namespace player
