#include "platform/win32/media/sound_gate.h"

namespace platform::win32 {
namespace {

/// The sound that is there and was not read yet.
SoundGate::Clock::duration Ahead(const StreamBuffer::Level& level, int bit_rate) {
  if (level.format != live::SoundFormat::kUnknown) return level.ahead;
  return std::chrono::nanoseconds(std::chrono::seconds(8)) * level.bytes_ahead / bit_rate;
}

}  // namespace

void SoundGate::Run(Clock::time_point now) {
  running_ = true;
  if (!IsShut()) played_.Run(now);
}

void SoundGate::Rest(Clock::time_point now) {
  running_ = false;
  played_.Rest(now);
}

void SoundGate::Connected() { reserve_ = {}; }

StreamBuffer::Gate SoundGate::Look(const StreamBuffer::Level& level, Link link, int bit_rate,
                                   Clock::time_point now) {
  if (!running_) return gate_;
  if (IsShut()) {
    percent_ = reserve_.Percent(Ahead(level, bit_rate), now);
    if (percent_ == 100) Open(now);
  } else if (IsDry(level, link, now)) {
    Shut(link, now);
  }
  return gate_;
}

bool SoundGate::IsDry(const StreamBuffer::Level& level, Link link, Clock::time_point now) const {
  if (!level.read_waits) return false;
  if (level.format != live::SoundFormat::kUnknown) return played_.At(now) + kMargin >= level.given;
  return link == Link::kDown || now - level.appended_at > kUsualPause;
}

void SoundGate::Shut(Link link, Clock::time_point now) {
  // The next connection begins with the smallest reserve in any case.
  if (link == Link::kUp) reserve_.RunDry(now);
  gate_ = StreamBuffer::Gate::kShut;
  percent_ = 0;
  played_.Rest(now);
}

void SoundGate::Open(Clock::time_point now) {
  reserve_.Resume(now);
  gate_ = StreamBuffer::Gate::kOpen;
  played_.Run(now);
}

}  // namespace platform::win32
