// The numbers by which the platform knows its operations and value types, written out once more on purpose:
// the player and every test double use the same constants, so that a wrong one would go unnoticed otherwise.
#include "ports/media_interfaces.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>

#include "ports/media_framework.h"
#include "ports/property_value.h"

namespace platform {
namespace {

using Slots = std::map<std::string, std::int32_t>;

template <typename... Operations>
Slots SlotsOf(const Operations&... operations) {
  return {{std::string(operations.name), operations.slot}...};
}

TEST(MediaInterfaces, OperationsOfTheSessionHaveThePlatformsSlots) {
  EXPECT_EQ(
      SlotsOf(IUnknown::QueryInterface, IUnknown::Release, IMFSourceResolver::CreateObjectFromURL,
              IMFSourceResolver::CreateObjectFromByteStream, IMFMediaSource::CreatePresentationDescriptor,
              IMFMediaSource::Shutdown, IMFPresentationDescriptor::GetUINT64,
              IMFPresentationDescriptor::GetStreamDescriptorCount,
              IMFPresentationDescriptor::GetStreamDescriptorByIndex, IMFStreamDescriptor::GetMediaTypeHandler,
              IMFMediaTypeHandler::GetMajorType, IMFTopologyNode::SetUnknown, IMFTopologyNode::SetObject,
              IMFTopologyNode::ConnectOutput, IMFTopology::AddNode, IMFActivate::ShutdownObject),
      (Slots{{"IUnknown::QueryInterface", 0},
             {"IUnknown::Release", 2},
             {"IMFSourceResolver::CreateObjectFromURL", 3},
             {"IMFSourceResolver::CreateObjectFromByteStream", 4},
             {"IMFMediaSource::CreatePresentationDescriptor", 8},
             {"IMFMediaSource::Shutdown", 12},
             {"IMFPresentationDescriptor::GetUINT64", 8},
             {"IMFPresentationDescriptor::GetStreamDescriptorCount", 33},
             {"IMFPresentationDescriptor::GetStreamDescriptorByIndex", 34},
             {"IMFStreamDescriptor::GetMediaTypeHandler", 34},
             {"IMFMediaTypeHandler::GetMajorType", 8},
             {"IMFTopologyNode::SetUnknown", 27},
             {"IMFTopologyNode::SetObject", 33},
             {"IMFTopologyNode::ConnectOutput", 40},
             {"IMFTopology::AddNode", 34},
             {"IMFActivate::ShutdownObject", 34}}));
  EXPECT_EQ(SlotsOf(IMFMediaSession::SetTopology, IMFMediaSession::Start, IMFMediaSession::Pause,
                    IMFMediaSession::Stop, IMFMediaSession::Close, IMFMediaSession::Shutdown,
                    IMFMediaSession::GetClock, IMFClock::GetCorrelatedTime, IMFClock::GetState),
            (Slots{{"IMFMediaSession::SetTopology", 7},
                   {"IMFMediaSession::Start", 9},
                   {"IMFMediaSession::Pause", 10},
                   {"IMFMediaSession::Stop", 11},
                   {"IMFMediaSession::Close", 12},
                   {"IMFMediaSession::Shutdown", 13},
                   {"IMFMediaSession::GetClock", 14},
                   {"IMFClock::GetCorrelatedTime", 4},
                   {"IMFClock::GetState", 6}}));
}

TEST(MediaInterfaces, OperationsOfTheServicesHaveThePlatformsSlots) {
  EXPECT_EQ(
      SlotsOf(IMFSimpleAudioVolume::SetMasterVolume, IMFSimpleAudioVolume::GetMasterVolume,
              IMFSimpleAudioVolume::SetMute, IMFSimpleAudioVolume::GetMute,
              IMFMetadataProvider::GetMFMetadata, IMFMetadata::GetProperty, IMFMetadata::GetAllPropertyNames,
              IMMDeviceEnumerator::GetDefaultAudioEndpoint, IMMDevice::Activate,
              IAudioSessionManager2::GetSessionEnumerator, IAudioSessionEnumerator::GetCount,
              IAudioSessionEnumerator::GetSession, IAudioSessionControl2::GetProcessId,
              IAudioMeterInformation::GetPeakValue, IAudioMeterInformation::GetMeteringChannelCount,
              IAudioMeterInformation::GetChannelsPeakValues),
      (Slots{{"IMFSimpleAudioVolume::SetMasterVolume", 3},
             {"IMFSimpleAudioVolume::GetMasterVolume", 4},
             {"IMFSimpleAudioVolume::SetMute", 5},
             {"IMFSimpleAudioVolume::GetMute", 6},
             {"IMFMetadataProvider::GetMFMetadata", 3},
             {"IMFMetadata::GetProperty", 7},
             {"IMFMetadata::GetAllPropertyNames", 9},
             {"IMMDeviceEnumerator::GetDefaultAudioEndpoint", 4},
             {"IMMDevice::Activate", 3},
             {"IAudioSessionManager2::GetSessionEnumerator", 5},
             {"IAudioSessionEnumerator::GetCount", 3},
             {"IAudioSessionEnumerator::GetSession", 4},
             {"IAudioSessionControl2::GetProcessId", 14},
             {"IAudioMeterInformation::GetPeakValue", 3},
             {"IAudioMeterInformation::GetMeteringChannelCount", 4},
             {"IAudioMeterInformation::GetChannelsPeakValues", 5}}));
}

TEST(MediaInterfaces, ValueTypesAndResultsHaveThePlatformsNumbers) {
  const std::map<PropertyType, std::uint16_t> numbers = {
      {PropertyType::kBoolean, 11},      {PropertyType::kString, 8},  {PropertyType::kAnsiString, 30},
      {PropertyType::kWideString, 31},   {PropertyType::kInt, 22},    {PropertyType::kUInt, 23},
      {PropertyType::kInt8, 16},         {PropertyType::kUInt8, 17},  {PropertyType::kInt16, 2},
      {PropertyType::kUInt16, 18},       {PropertyType::kInt32, 3},   {PropertyType::kUInt32, 19},
      {PropertyType::kInt64, 20},        {PropertyType::kUInt64, 21}, {PropertyType::kFloat, 4},
      {PropertyType::kDouble, 5},        {PropertyType::kGuid, 72},   {PropertyType::kWideStringVector, 4127},
      {PropertyType::kStringArray, 8200}};
  for (const auto& [type, number] : numbers) EXPECT_EQ(static_cast<std::uint16_t>(type), number);
  EXPECT_EQ(static_cast<int>(ClockState::kInvalid), 0);
  EXPECT_EQ(static_cast<int>(ClockState::kRunning), 1);
  EXPECT_EQ(static_cast<int>(ClockState::kStopped), 2);
  EXPECT_EQ(static_cast<int>(ClockState::kPaused), 3);
  EXPECT_EQ(kErrorFileNotFound, -2147024894);
  EXPECT_EQ(kMfEUnsupportedByteStreamType, -1072875836);
}

}  // namespace
}  // namespace platform
