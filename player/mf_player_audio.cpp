// Volume and mute of the session, and the level of this program's sound.
#include <cstddef>
#include <limits>
#include <utility>

#include "app/text/numbers.h"
#include "player/mf_player.h"
#include "ports/media_interfaces.h"

namespace player {

namespace {

// A sound format counts its channels in 16 bits, so no meter has more; this limits the memory of a call.
constexpr std::int32_t kMostChannels = 65535;

}  // namespace

bool clsMFPlayer::GetAudioPeak(float& sngAudioPeakValue) {
  if (!audio_meter_) return false;
  float peak = sngAudioPeakValue;
  if (!IsOk(
          caller_.CallInterface(audio_meter_.Get(), platform::IAudioMeterInformation::GetPeakValue, &peak))) {
    return false;
  }
  sngAudioPeakValue = peak;
  return true;
}

std::int32_t clsMFPlayer::GetAudioChannelCount() {
  std::int32_t count = 0;
  const CallResult result = caller_.CallInterface(
      audio_meter_.Get(), platform::IAudioMeterInformation::GetMeteringChannelCount, &count);
  return IsOk(result) ? count : 0;
}

bool clsMFPlayer::GetAudioChannelsPeakValues(std::int32_t channels, std::vector<float>& peaks) {
  if (!audio_meter_ || channels <= 0 || channels > kMostChannels) return false;
  std::vector<float> values(static_cast<std::size_t>(channels));
  if (!IsOk(caller_.CallInterface(audio_meter_.Get(), platform::IAudioMeterInformation::GetChannelsPeakValues,
                                  channels, values.data()))) {
    return false;
  }
  peaks = std::move(values);
  return true;
}

std::optional<std::int32_t> clsMFPlayer::AnsweredMute() {
  std::int32_t mute = 0;
  const CallResult result =
      caller_.CallInterface(simple_volume_.Get(), platform::IMFSimpleAudioVolume::GetMute, &mute);
  if (!IsOk(result)) return std::nullopt;
  return mute == 1 ? 1 : 0;
}

std::int32_t clsMFPlayer::GetAudioSimpleMute() { return AnsweredMute().value_or(0); }

bool clsMFPlayer::SetAudioSimpleMute(bool bolMute) {
  if (!simple_volume_) return false;
  const std::int32_t mute = bolMute ? 1 : 0;
  return IsOk(caller_.CallInterface(simple_volume_.Get(), platform::IMFSimpleAudioVolume::SetMute, mute));
}

std::optional<std::int16_t> clsMFPlayer::AnsweredVolume() {
  float volume = 0.0f;
  if (!IsOk(caller_.CallInterface(simple_volume_.Get(), platform::IMFSimpleAudioVolume::GetMasterVolume,
                                  &volume))) {
    return std::nullopt;
  }
  const double hundredths = app::RoundTiesToEven(static_cast<double>(volume) * 100.0);
  using Limits = std::numeric_limits<std::int16_t>;
  const bool fits = hundredths >= Limits::min() && hundredths <= Limits::max();
  if (!fits) return std::nullopt;
  return static_cast<std::int16_t>(hundredths);
}

std::int16_t clsMFPlayer::GetAudioSimpleAudioVolume() { return AnsweredVolume().value_or(std::int16_t{0}); }

bool clsMFPlayer::SetAudioAudioVolume(float sngVolume) {
  if (!simple_volume_) return false;
  return IsOk(caller_.CallInterface(simple_volume_.Get(), platform::IMFSimpleAudioVolume::SetMasterVolume,
                                    sngVolume));
}

}  // namespace player
