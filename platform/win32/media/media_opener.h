#pragma once
// Opens items by their addresses, and keeps what an opened live stream needs. Not the handles
// (media/handle_table.h).

#include <chrono>
#include <cstdint>
#include <memory>

#include "platform/win32/media/opening.h"
#include "platform/win32/media/playback_notes.h"
#include "ports/message_loop.h"
#include "ports/text.h"

namespace platform::win32 {

struct MediaOpenerOptions {
  std::chrono::milliseconds deadline;
};

class MediaOpener {
 public:
  MediaOpener(MessageLoop& loop, const MediaOpenerOptions& options, std::shared_ptr<PlaybackNotes> notes)
      : loop_(loop), options_(options), notes_(std::move(notes)) {}

  /// E_INVALIDARG for no address. A wait that input ends gives kErrorCancelled.
  OpenedObject Open(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags);

 private:
  OpenedObject OpenKind(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags);

  MessageLoop& loop_;
  const MediaOpenerOptions options_;
  const std::shared_ptr<PlaybackNotes> notes_;
};

}  // namespace platform::win32
