#include "platform/gstreamer/endpoint_objects.h"

#include <unistd.h>

#include <algorithm>
#include <vector>

#include "platform/gstreamer/identifiers.h"
#include "ports/media_interfaces.h"

namespace platform::gstreamer {
namespace {

constexpr std::int32_t kRenderFlow = 0;
constexpr std::int32_t kLastRole = 2;

std::shared_ptr<MediaItem> SoundingItem(const Context& context) {
  auto item = context.sounding.lock();
  return item && !item->IsShutDown() ? item : nullptr;
}

}  // namespace

DeviceEnumerator::DeviceEnumerator(Context& context) {
  Bind(IMMDeviceEnumerator::GetDefaultAudioEndpoint,
       [&context](std::int32_t flow, std::int32_t role, InterfaceHandle* out) {
         if (role < 0 || role > kLastRole) return kEInvalidArg;
         if (flow != kRenderFlow) return kENotFound;
         return context.handles.Hand(std::make_shared<Device>(context), out);
       });
}

std::shared_ptr<Object> DeviceEnumerator::As(const Guid& iid) {
  return iid == kIidUnknown || iid == kIidMMDeviceEnumerator ? shared_from_this() : nullptr;
}

Device::Device(Context& context) {
  Bind(IMMDevice::Activate, [&context](const Guid* iid, std::int32_t, InterfaceHandle, InterfaceHandle* out) {
    if (iid == nullptr) return kEPointer;
    if (*iid != kIidAudioSessionManager2) return kENoInterface;
    return context.handles.Hand(std::make_shared<AudioSessionManager>(context), out);
  });
}

std::shared_ptr<Object> Device::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

AudioSessionManager::AudioSessionManager(Context& context) {
  Bind(IAudioSessionManager2::GetSessionEnumerator, [&context](InterfaceHandle* out) {
    return context.handles.Hand(std::make_shared<AudioSessionEnumerator>(context), out);
  });
}

std::shared_ptr<Object> AudioSessionManager::As(const Guid& iid) {
  return iid == kIidUnknown || iid == kIidAudioSessionManager2 ? shared_from_this() : nullptr;
}

AudioSessionEnumerator::AudioSessionEnumerator(Context& context) {
  const std::int32_t sessions = SoundingItem(context) ? 1 : 0;
  Bind(IAudioSessionEnumerator::GetCount, [sessions](std::int32_t* count) {
    if (count == nullptr) return kEPointer;
    *count = sessions;
    return kSOk;
  });
  Bind(IAudioSessionEnumerator::GetSession, [&context, sessions](std::int32_t index, InterfaceHandle* out) {
    if (index < 0 || index >= sessions) return kEInvalidArg;
    return context.handles.Hand(
        std::make_shared<AudioSessionControl>(context, Interface::kAudioSessionControl), out);
  });
}

std::shared_ptr<Object> AudioSessionEnumerator::As(const Guid& iid) {
  return iid == kIidUnknown ? shared_from_this() : nullptr;
}

AudioSessionControl::AudioSessionControl(Context& context, Interface seen_through) : context_(context) {
  if (seen_through != Interface::kAudioSessionControl2) return;
  Bind(IAudioSessionControl2::GetProcessId, [](std::int32_t* process) {
    if (process == nullptr) return kEPointer;
    *process = static_cast<std::int32_t>(getpid());
    return kSOk;
  });
}

std::shared_ptr<Object> AudioSessionControl::As(const Guid& iid) {
  if (iid == kIidUnknown) return shared_from_this();
  if (iid == kIidAudioSessionControl) {
    return std::make_shared<AudioSessionControl>(context_, Interface::kAudioSessionControl);
  }
  if (iid == kIidAudioSessionControl2) {
    return std::make_shared<AudioSessionControl>(context_, Interface::kAudioSessionControl2);
  }
  if (iid == kIidAudioMeterInformation) return std::make_shared<AudioMeter>(context_);
  return nullptr;
}

AudioMeter::AudioMeter(Context& context) {
  Bind(IAudioMeterInformation::GetPeakValue, [&context](float* peak) {
    if (peak == nullptr) return kEPointer;
    const auto item = SoundingItem(context);
    const auto peaks = item ? item->Peaks() : std::vector<float>();
    *peak = peaks.empty() ? 0.0F : *std::max_element(peaks.begin(), peaks.end());
    return kSOk;
  });
  Bind(IAudioMeterInformation::GetMeteringChannelCount, [&context](std::int32_t* count) {
    if (count == nullptr) return kEPointer;
    const auto item = SoundingItem(context);
    *count = item ? item->Channels() : 0;
    return kSOk;
  });
  Bind(IAudioMeterInformation::GetChannelsPeakValues, [&context](std::int32_t count, float* values) {
    if (values == nullptr) return kEPointer;
    const auto item = SoundingItem(context);
    const auto peaks = item ? item->Peaks() : std::vector<float>();
    if (count < 1 || static_cast<std::size_t>(count) != peaks.size()) return kEInvalidArg;
    std::copy(peaks.begin(), peaks.end(), values);
    return kSOk;
  });
}

std::shared_ptr<Object> AudioMeter::As(const Guid& iid) {
  return iid == kIidUnknown || iid == kIidAudioMeterInformation ? shared_from_this() : nullptr;
}

}  // namespace platform::gstreamer
