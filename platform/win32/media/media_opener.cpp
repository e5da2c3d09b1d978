#include "platform/win32/media/media_opener.h"

#include "platform/win32/base/windows_api.h"

#include <mfidl.h>

#include <thread>
#include <utility>

#include "platform/win32/base/wide.h"
#include "platform/win32/media/byte_stream.h"
#include "platform/win32/media/media_address.h"
#include "platform/win32/media/media_results.h"
#include "platform/win32/media/shutdown_queue.h"

namespace platform::win32 {
namespace {

constexpr int kStatusNotFound = 404;
constexpr std::chrono::milliseconds kDecisionLook{10};

bool IsMissing(const Text& path) {
  if (GetFileAttributesW(Wide(path)) != INVALID_FILE_ATTRIBUTES) return false;
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

OpenedObject OpenBySystem(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags,
                          const OpeningWait& wait) {
  OpenedObject opened = OpenAddress(resolver, address, flags, wait);
  opened.endless = opened.result == kSOk && IsEndless(*opened.object.Get());
  return opened;
}

/// The result for a live stream whose first connection brought nothing.
HResult ResultOf(const LiveStream& live) {
  switch (live.Failure()) {
    case PlaybackFailure::kHttpStatus:
      return live.HttpStatus() == kStatusNotFound ? kErrorFileNotFound : kEFail;
    case PlaybackFailure::kWebPage:
      return kMfEUnsupportedByteStreamType;
    case PlaybackFailure::kNoAnswer:
      return kMfENetTimeout;
    default:
      return kEFail;
  }
}

}  // namespace

bool IsEndless(::IUnknown& opened) {
  ComPointer<::IMFMediaSource> source;
  ComPointer<::IMFPresentationDescriptor> descriptor;
  UINT64 length = 0;
  const bool described = opened.QueryInterface(__uuidof(::IMFMediaSource), source.ReceiveAny()) == S_OK &&
                         source->CreatePresentationDescriptor(descriptor.Receive()) == S_OK;
  return described && (descriptor->GetUINT64(MF_PD_DURATION, &length) != S_OK || length == 0);
}

HResult ResultOfData(HResult result) {
  const bool refused = result != kSOk && result != kErrorCancelled && result != kMfENetTimeout;
  return refused ? kMfEUnsupportedByteStreamType : result;
}

OpenedObject MediaOpener::Open(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags) {
  const auto item = notes_->Open();
  live_.reset();
  live_of_system_ = false;
  OpenedObject opened = OpenKind(resolver, address, flags);
  if (opened.result != kSOk) NoteFailure(item, opened.result);
  return opened;
}

void MediaOpener::NoteFailure(PlaybackNotes::Item item, HResult result) {
  if (result == kErrorCancelled) {
    notes_->GivenUp(item);
  } else if (live_ && live_->Answer() && result == kMfEUnsupportedByteStreamType) {
    const Text format = live_->FormatName();
    notes_->OpeningFailed(item, format.empty() ? PlaybackFailure::kUnreadable : PlaybackFailure::kNoDecoder,
                          0, format);
  } else if (live_ && live_->Failure() != PlaybackFailure::kNone) {
    notes_->OpeningFailed(item, live_->Failure(), live_->HttpStatus());
  } else {
    notes_->OpeningFailed(item, result);
  }
  live_.reset();
}

OpenedObject MediaOpener::OpenKind(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags) {
  const MediaAddress read = ReadAddress(address);
  if (read.kind == AddressKind::kNone) return {kEInvalidArg, kMfObjectInvalid, {}};
  const auto from_now = [this](std::chrono::milliseconds time) {
    return OpeningWait{loop_, std::chrono::steady_clock::now() + time};
  };
  // Another reader comes after the system for an address that it may not open at all.
  const bool web = read.kind == AddressKind::kWeb;
  const OpeningWait first_wait = from_now(web ? options_.deadline / 2 : options_.deadline);
  address_ = read.text;
  OpenedObject opened = options_.reader ? options_.reader->Open(resolver, read.text, flags, first_wait)
                                        : OpenBySystem(resolver, read.text, flags, first_wait);
  live_of_system_ = opened.result == kSOk && web && opened.endless;
  const bool failed = opened.result != kSOk && opened.result != kErrorCancelled;
  if (failed && web) return OpenLive(resolver, read.text, flags, from_now(options_.deadline));
  // Not every system gives a missing file a result of its own.
  if (failed && read.kind == AddressKind::kFile && IsMissing(read.text)) opened.result = kErrorFileNotFound;
  return opened;
}

OpenedObject MediaOpener::OpenLive(::IMFSourceResolver& resolver, const Text& address, std::int32_t flags,
                                   const OpeningWait& wait) {
  live_ = std::make_unique<LiveStream>(address, options_.live);
  const HResult waited = wait.Until([this] {
    if (live_->Decided()) return true;
    std::this_thread::sleep_for(kDecisionLook);
    return false;
  });
  if (waited != kSOk) return {waited, kMfObjectInvalid, {}};
  const auto answer = live_->Answer();
  if (!answer) return {ResultOf(*live_), kMfObjectInvalid, {}};
  const auto stream = MakeByteStream(live_->Buffer(), answer->content_type);
  OpenedObject opened =
      OpenByteStream(resolver, *stream.Get(), address, flags | kMfResolutionContentNeedNotMatch, wait,
                     [this] { live_->EndReads(); });
  opened.result = ResultOfData(opened.result);
  return opened;
}

void MediaOpener::ReadByItself() {
  live_of_system_ = false;
  LiveStreamOptions live = options_.live;
  live.first = LiveStreamOptions::First::kIsOneOfMany;
  live_ = std::make_unique<LiveStream>(address_, live);
}

BegunOpening MediaOpener::BeginOwn(::IMFSourceResolver& resolver) {
  const auto stream = MakeByteStream(live_->Buffer(), live_->Answer()->content_type);
  return BegunOpening::OfByteStream(resolver, *stream.Get(), address_,
                                    kMfResolutionMediaSource | kMfResolutionContentNeedNotMatch);
}

void MediaOpener::EndReads() {
  if (live_) live_->EndReads();
}

void MediaOpener::ResumeReads() {
  if (live_) live_->ResumeReads();
}

std::function<void()> MediaOpener::LeaveReads() {
  if (!live_) return nullptr;
  live_->EndReadsIn(ShutdownQueue::kReadsEnd);
  return [left = std::shared_ptr<LiveStream>(std::move(live_))] { left->EndReads(); };
}

void MediaOpener::Playing() {
  if (live_) live_->Playing();
}

void MediaOpener::Paused() {
  if (live_) live_->Paused();
}

PlaybackStatus MediaOpener::Refine(const PlaybackStatus& status) const {
  return live_ && status.state == PlaybackState::kPlaying ? live_->Status() : status;
}

}  // namespace platform::win32
