#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "platform/win32/media/com_calls.h"
#include "platform/win32/media/operation_shapes.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/slot_object.h"

namespace platform::win32 {
namespace {

HRESULT STDMETHODCALLTYPE NoteCall(SlotObject* self) {
  self->calls.emplace_back("called");
  return S_OK;
}

/// A variable of each type that an operation takes.
struct Variables {
  template <typename Type>
  Argument Of() {
    if constexpr (std::is_same_v<Type, std::int32_t>) return std::int32_t{1};
    if constexpr (std::is_same_v<Type, float>) return 0.5f;
    if constexpr (std::is_same_v<Type, InterfaceHandle>) return InterfaceHandle::kNone;
    if constexpr (std::is_same_v<Type, const Guid*>) return static_cast<const Guid*>(&guid);
    if constexpr (std::is_same_v<Type, const Text*>) return static_cast<const Text*>(&text);
    if constexpr (std::is_same_v<Type, std::int32_t*>) return &number;
    if constexpr (std::is_same_v<Type, float*>) return &peak;
    if constexpr (std::is_same_v<Type, std::int64_t*>) return &time;
    if constexpr (std::is_same_v<Type, InterfaceHandle*>) return &handle;
    if constexpr (std::is_same_v<Type, Guid*>) return &guid;
    if constexpr (std::is_same_v<Type, PropertyValue*>) return &value;
  }

  Guid guid;
  Text text = u"x";
  std::int32_t number = 0;
  float peak = 0;
  std::int64_t time = 0;
  InterfaceHandle handle = InterfaceHandle::kNone;
  PropertyValue value;
};

template <typename... Arguments>
void Reaches(const Operation<Arguments...>& operation) {
  SlotObject object;
  object.Answer(static_cast<std::size_t>(operation.slot), &NoteCall);
  HandleTable table;
  ComCalls calls(table);
  Variables variables;
  const auto handle = table.Enter(object.Reference(), operation.interface_id);
  const std::vector<Argument> list = {variables.Of<Arguments>()...};
  EXPECT_EQ(calls.DispCallFunc(handle, operation.interface_id, operation.slot, list), kSOk) << operation.name;
  EXPECT_EQ(object.calls.size(), 1u) << operation.name;
}

// All but Release, which is the table's own business.
TEST(EveryOperation, ReachesItsSlot) {
  Reaches(IUnknown::QueryInterface);
  Reaches(IMFSourceResolver::CreateObjectFromURL);
  Reaches(IMFSourceResolver::CreateObjectFromByteStream);
  Reaches(IMFMediaSource::CreatePresentationDescriptor);
  Reaches(IMFMediaSource::Shutdown);
  Reaches(IMFPresentationDescriptor::GetUINT64);
  Reaches(IMFPresentationDescriptor::GetStreamDescriptorCount);
  Reaches(IMFPresentationDescriptor::GetStreamDescriptorByIndex);
  Reaches(IMFStreamDescriptor::GetMediaTypeHandler);
  Reaches(IMFMediaTypeHandler::GetMajorType);
  Reaches(IMFTopologyNode::SetUnknown);
  Reaches(IMFTopologyNode::SetObject);
  Reaches(IMFTopologyNode::ConnectOutput);
  Reaches(IMFTopology::AddNode);
  Reaches(IMFActivate::ShutdownObject);
  Reaches(IMFMediaSession::SetTopology);
  Reaches(IMFMediaSession::Start);
  Reaches(IMFMediaSession::Pause);
  Reaches(IMFMediaSession::Stop);
  Reaches(IMFMediaSession::Close);
  Reaches(IMFMediaSession::Shutdown);
  Reaches(IMFMediaSession::GetClock);
  Reaches(IMFClock::GetCorrelatedTime);
  Reaches(IMFClock::GetState);
  Reaches(IMFSimpleAudioVolume::SetMasterVolume);
  Reaches(IMFSimpleAudioVolume::GetMasterVolume);
  Reaches(IMFSimpleAudioVolume::SetMute);
  Reaches(IMFSimpleAudioVolume::GetMute);
  Reaches(IMFMetadataProvider::GetMFMetadata);
  Reaches(IMFMetadata::GetProperty);
  Reaches(IMFMetadata::GetAllPropertyNames);
  Reaches(IMMDeviceEnumerator::GetDefaultAudioEndpoint);
  Reaches(IMMDevice::Activate);
  Reaches(IAudioSessionManager2::GetSessionEnumerator);
  Reaches(IAudioSessionEnumerator::GetCount);
  Reaches(IAudioSessionEnumerator::GetSession);
  Reaches(IAudioSessionControl2::GetProcessId);
  Reaches(IAudioMeterInformation::GetPeakValue);
  Reaches(IAudioMeterInformation::GetMeteringChannelCount);
  Reaches(IAudioMeterInformation::GetChannelsPeakValues);
}

}  // namespace
}  // namespace platform::win32
