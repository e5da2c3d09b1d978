#pragma once
// The interfaces, services, attributes and media types that the player uses, as GUID texts.
// Not the operations of those interfaces (ports/media_interfaces.h).
//
// Public source of the values: the headers and documentation of Media Foundation and Core Audio.

#include "ports/text.h"

namespace player::media_ids {

using platform::TextView;

// Interfaces.
inline constexpr TextView kIMFMediaSource = u"{279a808d-aec7-40c8-9c6b-a6b492c78a66}";
inline constexpr TextView kIMFSimpleAudioVolume = u"{089edf13-cf71-4338-8d13-9e569dbdc319}";
inline constexpr TextView kIMFMetadataProvider = u"{56181d2d-e221-4adb-b1c8-3cee6a53f76f}";
inline constexpr TextView kIMMDeviceEnumerator = u"{a95664d2-9614-4f35-a746-de8db63617e6}";
inline constexpr TextView kIAudioSessionManager2 = u"{77aa99a0-1bd6-484f-8bc7-2c654c9a9b6f}";
inline constexpr TextView kIAudioSessionControl2 = u"{bfb7ff88-7239-4fc9-8fa2-07c950be9c6d}";
inline constexpr TextView kIAudioMeterInformation = u"{c02216f6-8c67-4b5b-9d00-d008e73e0064}";

// The class of the device enumerator.
inline constexpr TextView kMMDeviceEnumerator = u"{bcde0395-e52f-467c-8e3d-c4579291692e}";

// Services of a session.
inline constexpr TextView kMrPolicyVolumeService = u"{1abaa2ac-9d3b-47c6-ab48-c59506de784d}";
inline constexpr TextView kMfMetadataProviderService = u"{db214084-58a4-4d2e-b84f-6f755b2f7a0d}";

// Attributes.
inline constexpr TextView kMfPdDuration = u"{6C990D33-BB8E-477A-8598-0D5D96FCD88A}";
inline constexpr TextView kMfTopoNodeSource = u"{835c58ec-e075-4bc7-bcba-4de000df9ae6}";
inline constexpr TextView kMfTopoNodePresentationDescriptor = u"{835c58ed-e075-4bc7-bcba-4de000df9ae6}";
inline constexpr TextView kMfTopoNodeStreamDescriptor = u"{835c58ee-e075-4bc7-bcba-4de000df9ae6}";

// Major media types.
inline constexpr TextView kAudio = u"{73647561-0000-0010-8000-00aa00389b71}";
inline constexpr TextView kVideo = u"{73646976-0000-0010-8000-00aa00389b71}";

// The time format that means 100-nanosecond units.
inline constexpr TextView kZero = u"{00000000-0000-0000-0000-000000000000}";

}  // namespace player::media_ids
