// The objects of the recording media framework and what their operations answer.
#include <cstddef>

#include "ports/media_interfaces.h"
#include "tests/support/media_guids.h"
#include "tests/support/recording_media.h"

namespace test_support {

using platform::Guid;
using platform::HResult;
using platform::InterfaceHandle;
using platform::kEInvalidArg;
using platform::kENoInterface;
using platform::kSOk;
using platform::PropertyValue;
using platform::Text;

void RecordingMedia::NewResolver(InterfaceHandle& out) {
  Object& resolver = New("resolver", out);
  Bind(resolver, platform::IMFSourceResolver::CreateObjectFromURL,
       [this](const Text*, std::int32_t, InterfaceHandle, std::int32_t* type, InterfaceHandle* object) {
         return ResolveObject(type, object);
       });
  Bind(resolver, platform::IMFSourceResolver::CreateObjectFromByteStream,
       [this](InterfaceHandle, const Text*, std::int32_t, InterfaceHandle, std::int32_t* type,
              InterfaceHandle* object) { return ResolveObject(type, object); });
}

HResult RecordingMedia::ResolveObject(std::int32_t* type, InterfaceHandle* out) {
  if (open_result != kSOk) return open_result;
  *type = object_type;
  Bind(New("object", *out), platform::IUnknown::QueryInterface,
       [this](const Guid* iid, InterfaceHandle* source) {
         if (*iid != media_guids::kMediaSource) return kENoInterface;
         NewSource(*source);
         return kSOk;
       });
  return kSOk;
}

void RecordingMedia::NewSource(InterfaceHandle& out) {
  Object& source = New("source", out);
  Bind(source, platform::IMFMediaSource::CreatePresentationDescriptor, [this](InterfaceHandle* descriptor) {
    NewDescriptor(*descriptor);
    return kSOk;
  });
  Bind(source, platform::IMFMediaSource::Shutdown, [] { return kSOk; });
}

void RecordingMedia::NewDescriptor(InterfaceHandle& out) {
  Object& descriptor = New("descriptor", out);
  Bind(descriptor, platform::IMFPresentationDescriptor::GetUINT64,
       [this](const Guid* key, std::int64_t* value) {
         if (*key != media_guids::kDurationKey || !duration) return kNoSuchProperty;
         *value = *duration;
         return kSOk;
       });
  Bind(descriptor, platform::IMFPresentationDescriptor::GetStreamDescriptorCount,
       [this](std::int32_t* count) {
         *count = static_cast<std::int32_t>(streams.size());
         return kSOk;
       });
  Bind(descriptor, platform::IMFPresentationDescriptor::GetStreamDescriptorByIndex,
       [this](std::int32_t index, std::int32_t* selected, InterfaceHandle* stream) {
         return NewStreamDescriptor(index, selected, stream);
       });
}

HResult RecordingMedia::NewStreamDescriptor(std::int32_t index, std::int32_t* selected,
                                            InterfaceHandle* out) {
  if (index < 0 || static_cast<std::size_t>(index) >= streams.size()) return kEInvalidArg;
  const Stream stream = streams[static_cast<std::size_t>(index)];
  *selected = stream.selected;
  Bind(New("stream " + std::to_string(index), *out), platform::IMFStreamDescriptor::GetMediaTypeHandler,
       [this, stream](InterfaceHandle* handler) {
         Bind(New("handler", *handler), platform::IMFMediaTypeHandler::GetMajorType, [stream](Guid* type) {
           *type = stream.major_type;
           return kSOk;
         });
         return kSOk;
       });
  return kSOk;
}

void RecordingMedia::NewTopologyNode(const std::string& label, InterfaceHandle& out) {
  Object& node = New(label, out);
  Bind(node, platform::IMFTopologyNode::SetUnknown, [](const Guid*, InterfaceHandle) { return kSOk; });
  Bind(node, platform::IMFTopologyNode::SetObject, [](InterfaceHandle) { return kSOk; });
  Bind(node, platform::IMFTopologyNode::ConnectOutput,
       [](std::int32_t, InterfaceHandle, std::int32_t) { return kSOk; });
}

void RecordingMedia::NewActivation(InterfaceHandle& out) {
  Bind(New("activation", out), platform::IMFActivate::ShutdownObject, [] { return kSOk; });
}

void RecordingMedia::NewSession(InterfaceHandle& out) {
  play_state = 0;
  const auto enter = [this](std::int32_t state) {
    play_state = state;
    return kSOk;
  };
  Object& session = New("session", out);
  Bind(session, platform::IMFMediaSession::SetTopology, [](std::int32_t, InterfaceHandle) { return kSOk; });
  Bind(session, platform::IMFMediaSession::Start, [enter](const Guid* format, PropertyValue* start) {
    const bool from_current_position = start->type == platform::PropertyType::kEmpty;
    return *format == Guid{} && from_current_position ? enter(1) : kEInvalidArg;
  });
  Bind(session, platform::IMFMediaSession::Pause, [enter] { return enter(3); });
  Bind(session, platform::IMFMediaSession::Stop, [enter] { return enter(2); });
  Bind(session, platform::IMFMediaSession::Close, [] { return kSOk; });
  Bind(session, platform::IMFMediaSession::Shutdown, [] { return kSOk; });
  Bind(session, platform::IMFMediaSession::GetClock, [this](InterfaceHandle* clock) {
    NewClock(*clock);
    return kSOk;
  });
}

void RecordingMedia::NewClock(InterfaceHandle& out) {
  Object& clock = New("clock", out);
  Bind(clock, platform::IMFClock::GetCorrelatedTime,
       [this](std::int32_t, std::int64_t* clock_time, std::int64_t* system_time) {
         *clock_time = position;
         *system_time = 1;
         return kSOk;
       });
  Bind(clock, platform::IMFClock::GetState, [this](std::int32_t, std::int32_t* state) {
    *state = play_state;
    return kSOk;
  });
}

void RecordingMedia::NewVolume(InterfaceHandle& out) {
  Object& object = New("volume", out);
  Bind(object, platform::IMFSimpleAudioVolume::SetMasterVolume, [this](float value) {
    volume = value;
    return kSOk;
  });
  Bind(object, platform::IMFSimpleAudioVolume::GetMasterVolume, [this](float* value) {
    *value = volume;
    return kSOk;
  });
  Bind(object, platform::IMFSimpleAudioVolume::SetMute, [this](std::int32_t value) {
    mute = value;
    return kSOk;
  });
  Bind(object, platform::IMFSimpleAudioVolume::GetMute, [this](std::int32_t* value) {
    *value = mute;
    return kSOk;
  });
}

void RecordingMedia::NewMetadataProvider(InterfaceHandle& out) {
  Bind(New("provider", out), platform::IMFMetadataProvider::GetMFMetadata,
       [this](InterfaceHandle, std::int32_t, std::int32_t, InterfaceHandle* result) {
         Object& metadata = New("metadata", *result);
         Bind(metadata, platform::IMFMetadata::GetAllPropertyNames, [this](PropertyValue* names) {
           *names = property_names;
           return kSOk;
         });
         Bind(metadata, platform::IMFMetadata::GetProperty, [this](const Text* name, PropertyValue* value) {
           const auto found = properties.find(*name);
           if (found == properties.end()) return kNoSuchProperty;
           *value = found->second;
           return kSOk;
         });
         return kSOk;
       });
}

void RecordingMedia::NewDeviceEnumerator(InterfaceHandle& out) {
  Bind(New("enumerator", out), platform::IMMDeviceEnumerator::GetDefaultAudioEndpoint,
       [this](std::int32_t, std::int32_t, InterfaceHandle* device) {
         Bind(New("device", *device), platform::IMMDevice::Activate,
              [this](const Guid* iid, std::int32_t, InterfaceHandle, InterfaceHandle* manager) {
                if (*iid != media_guids::kSessionManager) return kENoInterface;
                NewSessionManager(*manager);
                return kSOk;
              });
         return kSOk;
       });
}

void RecordingMedia::NewSessionManager(InterfaceHandle& out) {
  Bind(New("manager", out), platform::IAudioSessionManager2::GetSessionEnumerator,
       [this](InterfaceHandle* result) {
         Object& sessions = New("sessions", *result);
         Bind(sessions, platform::IAudioSessionEnumerator::GetCount, [this](std::int32_t* count) {
           *count = static_cast<std::int32_t>(audio_sessions.size());
           return kSOk;
         });
         Bind(sessions, platform::IAudioSessionEnumerator::GetSession,
              [this](std::int32_t index, InterfaceHandle* control) {
                return NewSessionControl(index, control);
              });
         return kSOk;
       });
}

HResult RecordingMedia::NewSessionControl(std::int32_t index, InterfaceHandle* out) {
  if (index < 0 || static_cast<std::size_t>(index) >= audio_sessions.size()) return kEInvalidArg;
  const AudioSession session = audio_sessions[static_cast<std::size_t>(index)];
  const std::string suffix = " " + std::to_string(index);
  Bind(New("control" + suffix, *out), platform::IUnknown::QueryInterface,
       [this, session, suffix](const Guid* iid, InterfaceHandle* control2) {
         if (*iid != media_guids::kSessionControl2 || !session.has_control2) return kENoInterface;
         NewSessionControl2(session, suffix, *control2);
         return kSOk;
       });
  return kSOk;
}

void RecordingMedia::NewSessionControl2(const AudioSession& session, const std::string& suffix,
                                        InterfaceHandle& out) {
  Object& control2 = New("control2" + suffix, out);
  Bind(control2, platform::IAudioSessionControl2::GetProcessId, [session](std::int32_t* process_id) {
    *process_id = static_cast<std::int32_t>(session.process_id);
    return kSOk;
  });
  Bind(control2, platform::IUnknown::QueryInterface,
       [this, session](const Guid* iid, InterfaceHandle* meter) {
         if (*iid != media_guids::kMeter || !session.has_meter) return kENoInterface;
         NewMeter(*meter);
         return kSOk;
       });
}

void RecordingMedia::NewMeter(InterfaceHandle& out) {
  Object& meter = New("meter", out);
  Bind(meter, platform::IAudioMeterInformation::GetPeakValue, [this](float* value) {
    *value = peak;
    return kSOk;
  });
  Bind(meter, platform::IAudioMeterInformation::GetMeteringChannelCount, [this](std::int32_t* count) {
    *count = static_cast<std::int32_t>(channel_peaks.size());
    return kSOk;
  });
  Bind(meter, platform::IAudioMeterInformation::GetChannelsPeakValues,
       [this](std::int32_t count, float* values) {
         if (static_cast<std::size_t>(count) != channel_peaks.size()) return kEInvalidArg;
         for (const float value : channel_peaks) *values++ = value;
         return kSOk;
       });
}

}  // namespace test_support
