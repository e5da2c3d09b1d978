// What an opened item offers besides playing: volume, metadata and the meter of this program's sound.
#include <utility>

#include "app/text/wait_seconds.h"
#include "player/media_ids.h"
#include "player/mf_player.h"
#include "ports/media_interfaces.h"

namespace player {

namespace {

// Time for a freshly configured session to settle.
constexpr float kSettleSeconds = 0.5f;
constexpr std::int32_t kRender = 0;
constexpr std::int32_t kMultimedia = 1;

}  // namespace

bool clsMFPlayer::CreateService() {
  if (!session_) return false;
  const OwnCall call{weak_from_this().lock(), openings_.Newest()};
  app::WaitSeconds(kSettleSeconds, ports_.clock, ports_.loop);
  if (!call.opening.Wanted()) return false;
  const bool has_volume = AttachVolume();
  const bool has_metadata = AttachMetadata();
  InterfaceRef meter(caller_);
  if (SetupAudioMeter(meter)) audio_meter_ = std::move(meter);
  return has_volume || has_metadata;
}

bool clsMFPlayer::CreateInterface(const Text& sCLSID, const Text& sIID, InterfaceHandle& pInterface) {
  return caller_.CreateInterface(sCLSID, sIID, pInterface);
}

bool clsMFPlayer::AttachVolume() {
  const Guid service = caller_.GuidFromString(media_ids::kMrPolicyVolumeService);
  const Guid iid = caller_.GuidFromString(media_ids::kIMFSimpleAudioVolume);
  InterfaceRef volume(caller_);
  if (!IsOk(ports_.framework.MFGetService(session_.Get(), service, iid, volume.Receive()))) return false;
  simple_volume_ = std::move(volume);
  return true;
}

bool clsMFPlayer::AttachMetadata() {
  const Guid service = caller_.GuidFromString(media_ids::kMfMetadataProviderService);
  const Guid iid = caller_.GuidFromString(media_ids::kIMFMetadataProvider);
  InterfaceRef provider(caller_);
  if (!IsOk(ports_.framework.MFGetService(session_.Get(), service, iid, provider.Receive()))) return false;
  InterfaceRef metadata(caller_);
  const CallResult result = caller_.CallInterface(
      provider.Get(), platform::IMFMetadataProvider::GetMFMetadata, presentation_descriptor_.Get(),
      std::int32_t{0}, std::int32_t{0}, &metadata.Receive());
  if (!IsOk(result)) return false;
  metadata_ = std::move(metadata);
  return true;
}

bool clsMFPlayer::SetupAudioMeter(InterfaceRef& meter) {
  InterfaceRef enumerator(caller_);
  if (!caller_.CreateInterface(media_ids::kMMDeviceEnumerator, media_ids::kIMMDeviceEnumerator,
                               enumerator.Receive())) {
    return false;
  }
  InterfaceRef device(caller_);
  if (!IsOk(caller_.CallInterface(enumerator.Get(), platform::IMMDeviceEnumerator::GetDefaultAudioEndpoint,
                                  kRender, kMultimedia, &device.Receive()))) {
    return false;
  }
  const Guid iid = caller_.GuidFromString(media_ids::kIAudioSessionManager2);
  InterfaceRef manager(caller_);
  if (!IsOk(caller_.CallInterface(device.Get(), platform::IMMDevice::Activate, &iid, platform::kClsctxAll,
                                  InterfaceHandle::kNone, &manager.Receive()))) {
    return false;
  }
  InterfaceRef sessions(caller_);
  if (!IsOk(caller_.CallInterface(manager.Get(), platform::IAudioSessionManager2::GetSessionEnumerator,
                                  &sessions.Receive()))) {
    return false;
  }
  return FindOwnMeter(sessions.Get(), meter);
}

bool clsMFPlayer::FindOwnMeter(InterfaceHandle sessions, InterfaceRef& meter) {
  std::int32_t count = 0;
  if (!IsOk(caller_.CallInterface(sessions, platform::IAudioSessionEnumerator::GetCount, &count))) {
    return false;
  }
  for (std::int32_t index = 0; index < count; ++index) {
    if (MeterOfOwnSession(sessions, index, meter)) return true;
  }
  return false;
}

bool clsMFPlayer::MeterOfOwnSession(InterfaceHandle sessions, std::int32_t index, InterfaceRef& meter) {
  using platform::IUnknown::QueryInterface;
  const Guid control_iid = caller_.GuidFromString(media_ids::kIAudioSessionControl2);
  InterfaceRef control(caller_);
  if (!IsOk(caller_.CallInterface(sessions, platform::IAudioSessionEnumerator::GetSession, index,
                                  &control.Receive()))) {
    return false;
  }
  InterfaceRef control2(caller_);
  if (!IsOk(caller_.CallInterface(control.Get(), QueryInterface, &control_iid, &control2.Receive()))) {
    return false;
  }
  std::int32_t process_id = 0;
  if (!IsOk(caller_.CallInterface(control2.Get(), platform::IAudioSessionControl2::GetProcessId,
                                  &process_id))) {
    return false;
  }
  if (static_cast<std::uint32_t>(process_id) != ports_.environment.GetCurrentProcessId()) return false;
  const Guid meter_iid = caller_.GuidFromString(media_ids::kIAudioMeterInformation);
  return IsOk(caller_.CallInterface(control2.Get(), QueryInterface, &meter_iid, &meter.Receive()));
}

}  // namespace player
