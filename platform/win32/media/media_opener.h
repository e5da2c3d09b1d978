#pragma once
// Opens items by their addresses, and keeps what an opened live stream needs. Not the handles
// (media/handle_table.h).

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/win32/media/live_stream.h"
#include "platform/win32/media/opening.h"
#include "platform/win32/media/playback_notes.h"
#include "ports/message_loop.h"
#include "ports/text.h"

namespace platform::win32 {

/// Whether an opened source says no length: then it continues for ever.
bool IsEndless(::IUnknown& opened);

/// What it means that data which is there was not opened with that result.
HResult ResultOfData(HResult result);

/// What opens an address first. The system's, except in tests.
class AddressReader {
 public:
  virtual ~AddressReader() = default;
  virtual OpenedObject Open(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags,
                            const OpeningWait& wait) = 0;
};

struct MediaOpenerOptions {
  std::chrono::milliseconds deadline;
  LiveStreamOptions live;
  std::shared_ptr<AddressReader> reader;  ///< none is the system's
};

/// One live stream at most: the latest one's. Opening another item ends its reads.
class MediaOpener {
 public:
  MediaOpener(MessageLoop& loop, const MediaOpenerOptions& options, std::shared_ptr<PlaybackNotes> notes)
      : loop_(loop), options_(options), notes_(std::move(notes)) {}

  /// E_INVALIDARG for no address. A wait that input ends gives kErrorCancelled. A web address that the
  /// system's resolver does not open in half of the time is read here.
  OpenedObject Open(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags);

  [[nodiscard]] bool IsLive() const { return live_ != nullptr; }
  /// The item is a station that the system itself reads.
  [[nodiscard]] bool IsLiveOfTheSystem() const { return live_of_system_; }
  /// From now on such a station is read here: it is connected again and again until it brings sound. The
  /// sound is its own from then on, as that of any station that is read here.
  void ReadByItself();
  [[nodiscard]] bool IsDecided() const { return live_ && live_->Decided(); }
  /// It brought a text in place of sound.
  [[nodiscard]] bool IsText() const { return live_ && live_->Failure() == PlaybackFailure::kWebPage; }
  /// That text is a list of segments, which only the system can follow.
  [[nodiscard]] bool IsList() const { return live_ && live_->IsList(); }
  /// Begins to open what is read, once that is decided.
  BegunOpening BeginOwn(::IMFSourceResolver& resolver);
  /// Ends reads that wait for a server, before what waits for them is ended.
  void EndReads();
  void ResumeReads();
  /// What it reads continues without it until the result, which may be empty, is called or dropped, but no
  /// longer than ShutdownQueue::kReadsEnd.
  std::function<void()> LeaveReads();
  /// The session was started, or paused.
  void Playing();
  void Paused();
  /// The state of playing, where a live stream knows more.
  [[nodiscard]] PlaybackStatus Refine(const PlaybackStatus& status) const;

 private:
  OpenedObject OpenKind(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags);
  OpenedObject OpenLive(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags,
                        const OpeningWait& wait);
  void NoteFailure(PlaybackNotes::Item item, HResult result);

  MessageLoop& loop_;
  const MediaOpenerOptions options_;
  const std::shared_ptr<PlaybackNotes> notes_;
  std::unique_ptr<LiveStream> live_;
  Text address_;  ///< of the latest item
  bool live_of_system_ = false;
};

}  // namespace platform::win32
