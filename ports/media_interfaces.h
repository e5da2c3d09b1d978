#pragma once
// No port: every interface operation that the player calls, as a typed constant: interface, slot, argument
// types. Not code: ports/interface_call.h says how they are called.
//
// Slots count from 0 (QueryInterface). The argument types are those of the operation's public documentation
// (Media Foundation, Core Audio); an optional address is InterfaceHandle kNone or a null pointer of its type
// when left out.

#include <cstdint>

#include "ports/interface_call.h"

namespace platform {

namespace IUnknown {
inline constexpr Operation<const Guid*, InterfaceHandle*> QueryInterface{Interface::kUnknown, 0,
                                                                         "IUnknown::QueryInterface"};
inline constexpr Operation<> Release{Interface::kUnknown, 2, "IUnknown::Release"};
}  // namespace IUnknown

namespace IMFSourceResolver {
/// Address, resolution flags, property store (none), type of the object, the object.
inline constexpr Operation<const Text*, std::int32_t, InterfaceHandle, std::int32_t*, InterfaceHandle*>
    CreateObjectFromURL{Interface::kSourceResolver, 3, "IMFSourceResolver::CreateObjectFromURL"};
/// Byte stream, address (none), resolution flags, property store (none), type of the object, the object.
inline constexpr Operation<InterfaceHandle, const Text*, std::int32_t, InterfaceHandle, std::int32_t*,
                           InterfaceHandle*>
    CreateObjectFromByteStream{Interface::kSourceResolver, 4,
                               "IMFSourceResolver::CreateObjectFromByteStream"};
}  // namespace IMFSourceResolver

namespace IMFMediaSource {
inline constexpr Operation<InterfaceHandle*> CreatePresentationDescriptor{
    Interface::kMediaSource, 8, "IMFMediaSource::CreatePresentationDescriptor"};
inline constexpr Operation<> Shutdown{Interface::kMediaSource, 12, "IMFMediaSource::Shutdown"};
}  // namespace IMFMediaSource

namespace IMFPresentationDescriptor {
inline constexpr Operation<const Guid*, std::int64_t*> GetUINT64{Interface::kPresentationDescriptor, 8,
                                                                 "IMFPresentationDescriptor::GetUINT64"};
inline constexpr Operation<std::int32_t*> GetStreamDescriptorCount{
    Interface::kPresentationDescriptor, 33, "IMFPresentationDescriptor::GetStreamDescriptorCount"};
/// Index, selected (1 or 0), the stream descriptor.
inline constexpr Operation<std::int32_t, std::int32_t*, InterfaceHandle*> GetStreamDescriptorByIndex{
    Interface::kPresentationDescriptor, 34, "IMFPresentationDescriptor::GetStreamDescriptorByIndex"};
}  // namespace IMFPresentationDescriptor

namespace IMFStreamDescriptor {
inline constexpr Operation<InterfaceHandle*> GetMediaTypeHandler{Interface::kStreamDescriptor, 34,
                                                                 "IMFStreamDescriptor::GetMediaTypeHandler"};
}  // namespace IMFStreamDescriptor

namespace IMFMediaTypeHandler {
inline constexpr Operation<Guid*> GetMajorType{Interface::kMediaTypeHandler, 8,
                                               "IMFMediaTypeHandler::GetMajorType"};
}  // namespace IMFMediaTypeHandler

namespace IMFTopologyNode {
inline constexpr Operation<const Guid*, InterfaceHandle> SetUnknown{Interface::kTopologyNode, 27,
                                                                    "IMFTopologyNode::SetUnknown"};
inline constexpr Operation<InterfaceHandle> SetObject{Interface::kTopologyNode, 33,
                                                      "IMFTopologyNode::SetObject"};
/// Output index of this node, the node after it, input index of that node.
inline constexpr Operation<std::int32_t, InterfaceHandle, std::int32_t> ConnectOutput{
    Interface::kTopologyNode, 40, "IMFTopologyNode::ConnectOutput"};
}  // namespace IMFTopologyNode

namespace IMFTopology {
inline constexpr Operation<InterfaceHandle> AddNode{Interface::kTopology, 34, "IMFTopology::AddNode"};
}  // namespace IMFTopology

namespace IMFActivate {
inline constexpr Operation<> ShutdownObject{Interface::kActivate, 34, "IMFActivate::ShutdownObject"};
}  // namespace IMFActivate

namespace IMFMediaSession {
/// Flags, topology.
inline constexpr Operation<std::int32_t, InterfaceHandle> SetTopology{Interface::kMediaSession, 7,
                                                                      "IMFMediaSession::SetTopology"};
/// Time format (all zero: 100-nanosecond units), start position (empty: from the current one).
inline constexpr Operation<const Guid*, PropertyValue*> Start{Interface::kMediaSession, 9,
                                                              "IMFMediaSession::Start"};
inline constexpr Operation<> Pause{Interface::kMediaSession, 10, "IMFMediaSession::Pause"};
inline constexpr Operation<> Stop{Interface::kMediaSession, 11, "IMFMediaSession::Stop"};
inline constexpr Operation<> Close{Interface::kMediaSession, 12, "IMFMediaSession::Close"};
inline constexpr Operation<> Shutdown{Interface::kMediaSession, 13, "IMFMediaSession::Shutdown"};
inline constexpr Operation<InterfaceHandle*> GetClock{Interface::kMediaSession, 14,
                                                      "IMFMediaSession::GetClock"};
}  // namespace IMFMediaSession

/// The result of IMFClock::GetState.
enum class ClockState : std::int32_t { kInvalid = 0, kRunning = 1, kStopped = 2, kPaused = 3 };

namespace IMFClock {
/// Reserved (0), clock time and system time in 100-nanosecond units.
inline constexpr Operation<std::int32_t, std::int64_t*, std::int64_t*> GetCorrelatedTime{
    Interface::kClock, 4, "IMFClock::GetCorrelatedTime"};
/// Reserved (0), state (a ClockState).
inline constexpr Operation<std::int32_t, std::int32_t*> GetState{Interface::kClock, 6, "IMFClock::GetState"};
}  // namespace IMFClock

namespace IMFSimpleAudioVolume {
/// Volume, 0.0 (silent) to 1.0 (full).
inline constexpr Operation<float> SetMasterVolume{Interface::kSimpleAudioVolume, 3,
                                                  "IMFSimpleAudioVolume::SetMasterVolume"};
inline constexpr Operation<float*> GetMasterVolume{Interface::kSimpleAudioVolume, 4,
                                                   "IMFSimpleAudioVolume::GetMasterVolume"};
inline constexpr Operation<std::int32_t> SetMute{Interface::kSimpleAudioVolume, 5,
                                                 "IMFSimpleAudioVolume::SetMute"};
inline constexpr Operation<std::int32_t*> GetMute{Interface::kSimpleAudioVolume, 6,
                                                  "IMFSimpleAudioVolume::GetMute"};
}  // namespace IMFSimpleAudioVolume

namespace IMFMetadataProvider {
/// Presentation descriptor, stream (0), flags (0), the metadata.
inline constexpr Operation<InterfaceHandle, std::int32_t, std::int32_t, InterfaceHandle*> GetMFMetadata{
    Interface::kMetadataProvider, 3, "IMFMetadataProvider::GetMFMetadata"};
}  // namespace IMFMetadataProvider

namespace IMFMetadata {
inline constexpr Operation<const Text*, PropertyValue*> GetProperty{Interface::kMetadata, 7,
                                                                    "IMFMetadata::GetProperty"};
inline constexpr Operation<PropertyValue*> GetAllPropertyNames{Interface::kMetadata, 9,
                                                               "IMFMetadata::GetAllPropertyNames"};
}  // namespace IMFMetadata

namespace IMMDeviceEnumerator {
/// Data flow (0 = render), role (1 = multimedia), the device.
inline constexpr Operation<std::int32_t, std::int32_t, InterfaceHandle*> GetDefaultAudioEndpoint{
    Interface::kMMDeviceEnumerator, 4, "IMMDeviceEnumerator::GetDefaultAudioEndpoint"};
}  // namespace IMMDeviceEnumerator

namespace IMMDevice {
/// Interface, class context, activation parameters (none), the object.
inline constexpr Operation<const Guid*, std::int32_t, InterfaceHandle, InterfaceHandle*> Activate{
    Interface::kMMDevice, 3, "IMMDevice::Activate"};
}  // namespace IMMDevice

namespace IAudioSessionManager2 {
inline constexpr Operation<InterfaceHandle*> GetSessionEnumerator{
    Interface::kAudioSessionManager2, 5, "IAudioSessionManager2::GetSessionEnumerator"};
}  // namespace IAudioSessionManager2

namespace IAudioSessionEnumerator {
inline constexpr Operation<std::int32_t*> GetCount{Interface::kAudioSessionEnumerator, 3,
                                                   "IAudioSessionEnumerator::GetCount"};
inline constexpr Operation<std::int32_t, InterfaceHandle*> GetSession{Interface::kAudioSessionEnumerator, 4,
                                                                      "IAudioSessionEnumerator::GetSession"};
}  // namespace IAudioSessionEnumerator

namespace IAudioSessionControl2 {
inline constexpr Operation<std::int32_t*> GetProcessId{Interface::kAudioSessionControl2, 14,
                                                       "IAudioSessionControl2::GetProcessId"};
}  // namespace IAudioSessionControl2

namespace IAudioMeterInformation {
inline constexpr Operation<float*> GetPeakValue{Interface::kAudioMeterInformation, 3,
                                                "IAudioMeterInformation::GetPeakValue"};
inline constexpr Operation<std::int32_t*> GetMeteringChannelCount{
    Interface::kAudioMeterInformation, 4, "IAudioMeterInformation::GetMeteringChannelCount"};
/// Channel count, the first of that many floats.
inline constexpr Operation<std::int32_t, float*> GetChannelsPeakValues{
    Interface::kAudioMeterInformation, 5, "IAudioMeterInformation::GetChannelsPeakValues"};
}  // namespace IAudioMeterInformation

}  // namespace platform
