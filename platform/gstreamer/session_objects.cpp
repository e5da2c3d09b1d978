#include "platform/gstreamer/session_objects.h"

#include <gst/audio/streamvolume.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/gstreamer/identifiers.h"
#include "platform/gstreamer/media_objects.h"
#include "platform/gstreamer/topology_objects.h"
#include "ports/media_interfaces.h"

namespace platform::gstreamer {
namespace {

std::int64_t SystemTime() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() / 100;
}

/// The desktop's mixers show the cube root of the factor by which samples are multiplied.
double LinearFromMixer(float volume) {
  return gst_stream_volume_convert_volume(GST_STREAM_VOLUME_FORMAT_CUBIC, GST_STREAM_VOLUME_FORMAT_LINEAR,
                                          static_cast<double>(volume));
}

float MixerFromLinear(double factor) {
  return static_cast<float>(gst_stream_volume_convert_volume(GST_STREAM_VOLUME_FORMAT_LINEAR,
                                                             GST_STREAM_VOLUME_FORMAT_CUBIC, factor));
}

}  // namespace

MediaSession::MediaSession(Context& context) : context_(context), state_(std::make_shared<SessionState>()) {
  Bind(IMFMediaSession::SetTopology,
       [this](std::int32_t, InterfaceHandle topology) { return SetTopology(topology); });
  Bind(IMFMediaSession::Start,
       [this](const Guid* time_format, PropertyValue* position) { return Start(time_format, position); });
  Bind(IMFMediaSession::Pause, [this] {
    if (const HResult result = Check(); result != kSOk) return result;
    if (state_->item->State() == ClockState::kStopped) return kMfEInvalidRequest;
    state_->item->Pause();
    return kSOk;
  });
  Bind(IMFMediaSession::Stop, [this] {
    if (const HResult result = Check(); result != kSOk) return result;
    state_->item->Stop();
    return kSOk;
  });
  Bind(IMFMediaSession::Close, [this] {
    if (state_->shut_down) return kMfEShutdown;
    if (state_->item) state_->item->Stop();
    return kSOk;
  });
  Bind(IMFMediaSession::Shutdown, [this] {
    state_->shut_down = true;
    if (state_->item) state_->item->ShutDown();
    return kSOk;
  });
  Bind(IMFMediaSession::GetClock, [this](InterfaceHandle* out) {
    if (state_->shut_down) return kMfEShutdown;
    return context_.handles.Hand(std::make_shared<SessionClock>(state_), out);
  });
}

MediaSession::~MediaSession() {
  if (state_->item && !state_->shut_down) state_->item->Stop();
}

std::shared_ptr<Object> MediaSession::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

HResult MediaSession::SetTopology(InterfaceHandle handle) {
  if (state_->shut_down) return kMfEShutdown;
  const auto topology = context_.handles.FindAs<Topology>(handle);
  const auto item = topology ? topology->HeardItem() : nullptr;
  if (!item) return kEInvalidArg;
  if (item->IsShutDown()) return kMfEShutdown;
  state_->item = item;
  context_.sounding = item;
  return kSOk;
}

HResult MediaSession::Check() const {
  if (state_->shut_down) return kMfEShutdown;
  if (!state_->item) return kMfENotInitialized;
  return state_->item->IsShutDown() ? kMfEShutdown : kSOk;
}

HResult MediaSession::Start(const Guid* time_format, const PropertyValue* position) {
  if (const HResult result = Check(); result != kSOk) return result;
  // Only "from the current position" is offered, in the one time format that everybody has.
  if (time_format != nullptr && *time_format != Guid{}) return kEInvalidArg;
  if (position != nullptr && position->type != PropertyType::kEmpty) return kEInvalidArg;
  state_->item->Start();
  return kSOk;
}

HResult MediaSession::GetService(const Guid& service, const Guid& iid, InterfaceHandle* out) {
  if (const HResult result = Check(); result != kSOk) return result;
  std::shared_ptr<Object> object;
  if (service == kPolicyVolumeService) object = std::make_shared<SimpleAudioVolume>(context_, state_);
  if (service == kMetadataProviderService) object = std::make_shared<MetadataProvider>(context_);
  if (!object) return kMfEUnsupportedService;
  const auto view = object->As(iid);
  return view ? context_.handles.Hand(view, out) : kENoInterface;
}

SessionClock::SessionClock(std::shared_ptr<SessionState> state) {
  Bind(IMFClock::GetCorrelatedTime, [state](std::int32_t, std::int64_t* clock, std::int64_t* system) {
    if (clock == nullptr || system == nullptr) return kEPointer;
    if (state->shut_down) return kMfEShutdown;
    *clock = state->item ? state->item->Position() : 0;
    *system = SystemTime();
    return kSOk;
  });
  Bind(IMFClock::GetState, [state](std::int32_t, std::int32_t* value) {
    if (value == nullptr) return kEPointer;
    if (state->shut_down) return kMfEShutdown;
    *value = static_cast<std::int32_t>(state->item ? state->item->State() : ClockState::kInvalid);
    return kSOk;
  });
}

std::shared_ptr<Object> SessionClock::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

SimpleAudioVolume::SimpleAudioVolume(Context& context, std::shared_ptr<SessionState> state) {
  Bind(IMFSimpleAudioVolume::SetMasterVolume, [&context, state](float volume) {
    if (!(volume >= 0.0F && volume <= 1.0F)) return kEInvalidArg;
    context.services->sound.SetVolume(LinearFromMixer(volume));
    if (state->item) state->item->VolumeChanged();
    return kSOk;
  });
  Bind(IMFSimpleAudioVolume::GetMasterVolume, [&context](float* volume) {
    if (volume == nullptr) return kEPointer;
    // The mixer can amplify beyond full volume; the program's scale ends there.
    *volume = MixerFromLinear(std::min(1.0, context.services->sound.Current().volume));
    return kSOk;
  });
  Bind(IMFSimpleAudioVolume::SetMute, [&context, state](std::int32_t mute) {
    context.services->sound.SetMute(mute != 0);
    if (state->item) state->item->VolumeChanged();
    return kSOk;
  });
  Bind(IMFSimpleAudioVolume::GetMute, [&context](std::int32_t* mute) {
    if (mute == nullptr) return kEPointer;
    *mute = context.services->sound.Current().mute ? 1 : 0;
    return kSOk;
  });
}

std::shared_ptr<Object> SimpleAudioVolume::As(const Guid& iid) {
  return iid == kIidUnknown || iid == kIidSimpleAudioVolume ? shared_from_this() : nullptr;
}

MetadataProvider::MetadataProvider(Context& context) {
  Bind(IMFMetadataProvider::GetMFMetadata,
       [&context](InterfaceHandle descriptor, std::int32_t stream, std::int32_t, InterfaceHandle* out) {
         const auto presentation = context.handles.FindAs<PresentationDescriptor>(descriptor);
         if (!presentation || stream < 0) return kEInvalidArg;
         if (stream > 0) return kMfEPropertyNotFound;
         return context.handles.Hand(std::make_shared<Metadata>(presentation->Item()), out);
       });
}

std::shared_ptr<Object> MetadataProvider::As(const Guid& iid) {
  return iid == kIidUnknown || iid == kIidMetadataProvider ? shared_from_this() : nullptr;
}

Metadata::Metadata(std::shared_ptr<MediaItem> item) {
  Bind(IMFMetadata::GetProperty, [item](const Text* name, PropertyValue* value) {
    if (name == nullptr || value == nullptr) return kEPointer;
    const Properties properties = item->GetProperties();
    const auto found = properties.find(*name);
    if (found == properties.end()) return kMfEPropertyNotFound;
    *value = found->second;
    return kSOk;
  });
  Bind(IMFMetadata::GetAllPropertyNames, [item](PropertyValue* names) {
    if (names == nullptr) return kEPointer;
    *names = {PropertyType::kWideStringVector, OrderedNames(item->GetProperties())};
    return kSOk;
  });
}

std::shared_ptr<Object> Metadata::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

}  // namespace platform::gstreamer
