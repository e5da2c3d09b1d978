#include "platform/gstreamer/media_objects.h"

#include <utility>

#include "platform/gstreamer/address.h"
#include "platform/gstreamer/identifiers.h"
#include "ports/media_framework.h"
#include "ports/media_interfaces.h"

namespace platform::gstreamer {
namespace {

/// How long the window goes unpainted while an address is opened.
constexpr std::chrono::milliseconds kPaintEvery{10};

/// How long an opening may take. GStreamer's own start does not count: when plugins were installed it looks
/// at each of them, which says nothing about a server or a device.
class OpeningLimit {
 public:
  explicit OpeningLimit(const ItemServices& services) : services_(services) {}

  [[nodiscard]] bool IsReached() {
    const auto now = Clock::now();
    if (end_ == kNotBegun && services_.framework.WasStarted()) end_ = now + services_.open_deadline;
    return now >= end_;
  }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr Clock::time_point kNotBegun = Clock::time_point::max();

  const ItemServices& services_;
  Clock::time_point end_ = kNotBegun;
};

}  // namespace

SourceResolver::SourceResolver(Context& context) : context_(context) {
  Bind(IMFSourceResolver::CreateObjectFromURL,
       [this](const Text* address, std::int32_t, InterfaceHandle, std::int32_t* type, InterfaceHandle* out) {
         if (address == nullptr) return kEPointer;
         const Address resolved = ResolveAddress(*address, context_.native_paths);
         if (resolved.result != kSOk) {
           context_.latest.Failed(resolved.local_file ? PlaybackFailure::kUnreadable
                                                      : PlaybackFailure::kBadAddress);
           return resolved.result;
         }
         return Open({resolved.uri, resolved.local_file, nullptr}, type, out);
       });
  Bind(IMFSourceResolver::CreateObjectFromByteStream,
       [this](InterfaceHandle handle, const Text*, std::int32_t, InterfaceHandle, std::int32_t* type,
              InterfaceHandle* out) {
         const auto stream = context_.handles.FindAs<ByteStream>(handle);
         return stream ? Open({{}, false, stream->Reader()}, type, out) : kEInvalidArg;
       });
}

HResult SourceResolver::Open(PipelineInput input, std::int32_t* type, InterfaceHandle* out) {
  if (type == nullptr || out == nullptr) return kEPointer;
  const auto item = std::make_shared<MediaItem>(std::move(input), context_.services);
  context_.latest.Opening(item->SharedState());
  OpeningLimit limit(*context_.services);
  std::optional<HResult> result;
  while (!(result = item->WaitOpened(kPaintEvery))) {
    context_.message_loop.ProcessPaintMessages();
    if (context_.message_loop.InputEndsWait()) {
      context_.latest.Failed(PlaybackFailure::kNone);  // nothing has failed, and nothing plays
      return kErrorCancelled;
    }
    if (limit.IsReached()) {
      // Before an address is opened, a device is; only a sound server that hangs can hold that up.
      const bool has_device = item->SharedState()->HasReport();
      context_.latest.Failed(has_device ? PlaybackFailure::kNoAnswer : PlaybackFailure::kNoSoundDevice);
      return kMfENetTimeout;
    }
  }
  if (*result != kSOk) return *result;
  *type = kMfObjectMediaSource;
  return context_.handles.Hand(std::make_shared<MediaSource>(context_, item), out);
}

std::shared_ptr<Object> SourceResolver::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

ByteStream::ByteStream(std::shared_ptr<StreamReader> reader) : reader_(std::move(reader)) {}

std::shared_ptr<Object> ByteStream::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

MediaSource::MediaSource(Context& context, std::shared_ptr<MediaItem> item) : item_(std::move(item)) {
  Bind(IMFMediaSource::CreatePresentationDescriptor, [this, &context](InterfaceHandle* out) {
    if (item_->IsShutDown()) return kMfEShutdown;
    return context.handles.Hand(std::make_shared<PresentationDescriptor>(context, item_), out);
  });
  Bind(IMFMediaSource::Shutdown, [this] {
    item_->ShutDown();
    return kSOk;
  });
}

std::shared_ptr<Object> MediaSource::As(const Guid& iid) {
  return iid == kIidUnknown || iid == kIidMediaSource ? shared_from_this() : nullptr;
}

PresentationDescriptor::PresentationDescriptor(Context& context, std::shared_ptr<MediaItem> item)
    : item_(std::move(item)) {
  Bind(IMFPresentationDescriptor::GetUINT64, [this](const Guid* key, std::int64_t* value) {
    if (key == nullptr || value == nullptr) return kEPointer;
    const std::int64_t duration = item_->Duration();
    if (*key != kDurationAttribute || duration == 0) return kMfEAttributeNotFound;
    *value = duration;
    return kSOk;
  });
  Bind(IMFPresentationDescriptor::GetStreamDescriptorCount, [](std::int32_t* count) {
    if (count == nullptr) return kEPointer;
    *count = 1;
    return kSOk;
  });
  Bind(IMFPresentationDescriptor::GetStreamDescriptorByIndex,
       [&context](std::int32_t index, std::int32_t* selected, InterfaceHandle* out) {
         if (selected == nullptr) return kEPointer;
         if (index != 0) return kEInvalidArg;
         const HResult result = context.handles.Hand(std::make_shared<StreamDescriptor>(context), out);
         if (result == kSOk) *selected = 1;
         return result;
       });
}

std::shared_ptr<Object> PresentationDescriptor::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

StreamDescriptor::StreamDescriptor(Context& context) {
  Bind(IMFStreamDescriptor::GetMediaTypeHandler, [&context](InterfaceHandle* out) {
    return context.handles.Hand(std::make_shared<MediaTypeHandler>(), out);
  });
}

std::shared_ptr<Object> StreamDescriptor::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

MediaTypeHandler::MediaTypeHandler() {
  Bind(IMFMediaTypeHandler::GetMajorType, [](Guid* type) {
    if (type == nullptr) return kEPointer;
    *type = kAudioMajorType;
    return kSOk;
  });
}

std::shared_ptr<Object> MediaTypeHandler::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

}  // namespace platform::gstreamer
