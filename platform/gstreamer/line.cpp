#include "platform/gstreamer/line.h"

#include <algorithm>

namespace platform::gstreamer {
namespace {

/// How long a device is left alone once the buffer before it is dry: until it asks for more and gets none.
constexpr std::chrono::microseconds kPlayedWhenDry = kDeviceBuffer - kDeviceRequest;
/// A wireless device that was at rest takes its time to begin.
constexpr std::chrono::seconds kBegins{3};
/// While there is sound the buffer is only looked at when it runs dry.
constexpr std::chrono::milliseconds kRefillWhilePlaying{100};

}  // namespace

Line::Buffer Line::LookAtBuffer(Clock::time_point now) {
  if (filled) {
    if (!pipeline->IsDry()) return Buffer::kAsBefore;
    filled = false;
    percent = 0;
    reserve.RunDry(now);
    pipeline->SetRefill(reserve.Most());
    return Buffer::kDry;
  }
  percent = reserve.Percent(pipeline->Buffered(), now);
  if (percent < 100) return Buffer::kAsBefore;
  filled = true;
  dry_at.reset();
  reserve.Resume(now);
  pipeline->SetRefill(kRefillWhilePlaying);
  return Buffer::kFilled;
}

void Line::PauseOnceDeviceIsDry(Clock::time_point now) {
  if (playing) dry_at = now + kPlayedWhenDry;
}

void Line::SetPlaying(bool play, Clock::time_point now) {
  if (play == playing) return;
  playing = play;
  if (!play) return pipeline->Pause();
  playing_since = now;
  if (!played_since) played_since = now;
  pipeline->Play();
}

bool Line::StandsStill(Clock::time_point now) {
  return FeedsDevice() && standstill.Check(now, SuppliedUntil());
}

Timer Line::NextStandstillCheck() const {
  if (!FeedsDevice()) return std::nullopt;
  return standstill.NextCheck(SuppliedUntil());
}

Line::Clock::time_point Line::SuppliedUntil() const {
  return std::max(pipeline->SuppliedUntil(), playing_since + kBegins);
}

}  // namespace platform::gstreamer
