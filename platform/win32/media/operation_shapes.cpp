#include "platform/win32/media/operation_shapes.h"

#include "platform/win32/base/windows_api.h"

#include <mfidl.h>

// What this one includes cannot stand before the one above.
#include <audiopolicy.h>
#include <mmdeviceapi.h>

#include <algorithm>
#include <array>
#include <bit>
#include <type_traits>
#include <utility>

#include "ports/media_interfaces.h"

namespace platform::win32 {
namespace {

using enum Interface;

template <typename Type>
constexpr std::size_t TypeIndex() {
  return []<std::size_t... Index>(std::index_sequence<Index...>) {
    std::size_t found = std::variant_npos;
    ((std::is_same_v<Type, std::variant_alternative_t<Index, Argument>> ? found = Index : found), ...);
    return found;
  }
  (std::make_index_sequence<std::variant_size_v<Argument>>{});
}

template <typename... Arguments>
OperationShape Shape(const Operation<Arguments...>& operation, std::vector<Interface> handles = {},
                     ValueDirection values = ValueDirection::kOut) {
  return {operation.interface_id, operation.slot, {TypeIndex<Arguments>()...}, std::move(handles), values};
}

std::vector<OperationShape> AllShapes() {
  return {
      Shape(platform::IUnknown::QueryInterface, {kUnknown}),
      Shape(platform::IUnknown::Release),
      // The property store is never passed.
      Shape(platform::IMFSourceResolver::CreateObjectFromURL, {kUnknown, kUnknown}),
      Shape(platform::IMFSourceResolver::CreateObjectFromByteStream, {kUnknown, kUnknown, kUnknown}),
      Shape(platform::IMFMediaSource::CreatePresentationDescriptor, {kPresentationDescriptor}),
      Shape(platform::IMFMediaSource::Shutdown),
      Shape(platform::IMFPresentationDescriptor::GetUINT64),
      Shape(platform::IMFPresentationDescriptor::GetStreamDescriptorCount),
      Shape(platform::IMFPresentationDescriptor::GetStreamDescriptorByIndex, {kStreamDescriptor}),
      Shape(platform::IMFStreamDescriptor::GetMediaTypeHandler, {kMediaTypeHandler}),
      Shape(platform::IMFMediaTypeHandler::GetMajorType),
      Shape(platform::IMFTopologyNode::SetUnknown, {kUnknown}),
      Shape(platform::IMFTopologyNode::SetObject, {kUnknown}),
      Shape(platform::IMFTopologyNode::ConnectOutput, {kTopologyNode}),
      Shape(platform::IMFTopology::AddNode, {kTopologyNode}),
      Shape(platform::IMFActivate::ShutdownObject),
      Shape(platform::IMFMediaSession::SetTopology, {kTopology}),
      Shape(platform::IMFMediaSession::Start, {}, ValueDirection::kIn),
      Shape(platform::IMFMediaSession::Pause),
      Shape(platform::IMFMediaSession::Stop),
      Shape(platform::IMFMediaSession::Close),
      Shape(platform::IMFMediaSession::Shutdown),
      Shape(platform::IMFMediaSession::GetClock, {kClock}),
      Shape(platform::IMFClock::GetCorrelatedTime),
      Shape(platform::IMFClock::GetState),
      Shape(platform::IMFSimpleAudioVolume::SetMasterVolume),
      Shape(platform::IMFSimpleAudioVolume::GetMasterVolume),
      Shape(platform::IMFSimpleAudioVolume::SetMute),
      Shape(platform::IMFSimpleAudioVolume::GetMute),
      Shape(platform::IMFMetadataProvider::GetMFMetadata, {kPresentationDescriptor, kMetadata}),
      Shape(platform::IMFMetadata::GetProperty),
      Shape(platform::IMFMetadata::GetAllPropertyNames),
      Shape(platform::IMMDeviceEnumerator::GetDefaultAudioEndpoint, {kMMDevice}),
      // The activation parameters are never passed.
      Shape(platform::IMMDevice::Activate, {kUnknown, kUnknown}),
      Shape(platform::IAudioSessionManager2::GetSessionEnumerator, {kAudioSessionEnumerator}),
      Shape(platform::IAudioSessionEnumerator::GetCount),
      Shape(platform::IAudioSessionEnumerator::GetSession, {kAudioSessionControl}),
      Shape(platform::IAudioSessionControl2::GetProcessId),
      Shape(platform::IAudioMeterInformation::GetPeakValue),
      Shape(platform::IAudioMeterInformation::GetMeteringChannelCount),
      Shape(platform::IAudioMeterInformation::GetChannelsPeakValues),
  };
}

struct InterfaceIid {
  Interface interface_id;
  GUID iid;
};

/// IID_IAudioMeterInformation, which the compiler's headers declare, but do not give.
constexpr GUID kMeterIid{0xC02216F6, 0x8C67, 0x4B5B, {0x9D, 0x00, 0xD0, 0x08, 0xE7, 0x3E, 0x00, 0x64}};

const std::array kIids = {
    InterfaceIid{kUnknown, __uuidof(::IUnknown)},
    InterfaceIid{kSourceResolver, __uuidof(::IMFSourceResolver)},
    InterfaceIid{kMediaSource, __uuidof(::IMFMediaSource)},
    InterfaceIid{kPresentationDescriptor, __uuidof(::IMFPresentationDescriptor)},
    InterfaceIid{kStreamDescriptor, __uuidof(::IMFStreamDescriptor)},
    InterfaceIid{kMediaTypeHandler, __uuidof(::IMFMediaTypeHandler)},
    InterfaceIid{kTopologyNode, __uuidof(::IMFTopologyNode)},
    InterfaceIid{kTopology, __uuidof(::IMFTopology)},
    InterfaceIid{kActivate, __uuidof(::IMFActivate)},
    InterfaceIid{kMediaSession, __uuidof(::IMFMediaSession)},
    InterfaceIid{kClock, __uuidof(::IMFClock)},
    InterfaceIid{kSimpleAudioVolume, __uuidof(::IMFSimpleAudioVolume)},
    InterfaceIid{kMetadataProvider, __uuidof(::IMFMetadataProvider)},
    InterfaceIid{kMetadata, __uuidof(::IMFMetadata)},
    InterfaceIid{kMMDeviceEnumerator, __uuidof(::IMMDeviceEnumerator)},
    InterfaceIid{kMMDevice, __uuidof(::IMMDevice)},
    InterfaceIid{kAudioSessionManager2, __uuidof(::IAudioSessionManager2)},
    InterfaceIid{kAudioSessionEnumerator, __uuidof(::IAudioSessionEnumerator)},
    InterfaceIid{kAudioSessionControl, __uuidof(::IAudioSessionControl)},
    InterfaceIid{kAudioSessionControl2, __uuidof(::IAudioSessionControl2)},
    InterfaceIid{kAudioMeterInformation, kMeterIid},
};

}  // namespace

bool Matches(const OperationShape& shape, std::span<const Argument> list) {
  return std::equal(shape.types.begin(), shape.types.end(), list.begin(), list.end(),
                    [](std::size_t type, const Argument& argument) { return type == argument.index(); });
}

const OperationShape* FindShape(Interface interface_id, std::int32_t slot) {
  static const std::vector<OperationShape> shapes = AllShapes();
  const auto found = std::find_if(shapes.begin(), shapes.end(), [&](const OperationShape& shape) {
    return shape.interface_id == interface_id && shape.slot == slot;
  });
  return found == shapes.end() ? nullptr : &*found;
}

std::optional<Interface> InterfaceOf(const Guid& iid) {
  for (const InterfaceIid& known : kIids) {
    if (std::bit_cast<Guid>(known.iid) == iid) return known.interface_id;
  }
  return std::nullopt;
}

Guid IidOf(Interface interface_id) {
  for (const InterfaceIid& known : kIids) {
    if (known.interface_id == interface_id) return std::bit_cast<Guid>(known.iid);
  }
  return {};
}

}  // namespace platform::win32
