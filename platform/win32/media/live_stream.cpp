#include "platform/win32/media/live_stream.h"

#include <algorithm>

namespace platform::win32 {
namespace {

constexpr std::chrono::milliseconds kConnectionLook{20};
/// Bits per second of a station that does not say it.
constexpr int kUsualBitRate = 128000;

}  // namespace

LiveStream::LiveStream(const Text& address, const LiveStreamOptions& options)
    : address_(address), options_(options), supervisor_([this] { Supervise(); }) {}

LiveStream::~LiveStream() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  buffer_->EndReads();
  supervisor_.join();
}

bool LiveStream::Decided() const {
  const std::lock_guard lock(mutex_);
  return answer_.has_value() || failed_;
}

std::optional<HttpAnswer> LiveStream::Answer() const {
  const std::lock_guard lock(mutex_);
  return answer_;
}

PlaybackFailure LiveStream::Failure() const {
  const std::lock_guard lock(mutex_);
  return failure_;
}

int LiveStream::HttpStatus() const {
  const std::lock_guard lock(mutex_);
  return http_status_;
}

PlaybackStatus LiveStream::Status() const {
  const std::lock_guard lock(mutex_);
  PlaybackStatus status;
  status.state = PlaybackState::kPlaying;
  if (connected_ && buffer_->Starves()) status.state = PlaybackState::kBuffering;
  if (!connected_ && buffer_->ReadsWait()) status.state = PlaybackState::kReconnecting;
  if (status.state == PlaybackState::kPlaying && answer_) status.bit_rate = answer_->bit_rate;
  if (status.state != PlaybackState::kReconnecting) return status;
  status.failure = failure_;
  status.http_status = http_status_;
  if (next_try_) {
    const auto left = std::chrono::ceil<std::chrono::seconds>(*next_try_ - Clock::now());
    status.seconds_to_next_try = static_cast<int>(std::max<std::chrono::seconds::rep>(left.count(), 0));
  }
  return status;
}

void LiveStream::EndReads() {
  {
    const std::lock_guard lock(mutex_);
    paused_ = true;
  }
  changed_.notify_all();
  buffer_->EndReads();
}

void LiveStream::ResumeReads() {
  {
    const std::lock_guard lock(mutex_);
    if (!paused_) return;
    paused_ = false;
    schedule_ = {};
  }
  buffer_->Resume();
  changed_.notify_all();
}

void LiveStream::Supervise() {
  std::unique_lock lock(mutex_);
  while (!stopping_) {
    if (paused_) {
      changed_.wait(lock);
      continue;
    }
    if (next_try_ && Clock::now() < *next_try_) {
      changed_.wait_until(lock, *next_try_);
      continue;
    }
    next_try_.reset();
    if (!Connect(lock)) return;
  }
}

bool LiveStream::Connect(std::unique_lock<std::mutex>& lock) {
  const auto begun = Clock::now();
  const auto connection = HttpStream::Open(address_, options_.user_agent, buffer_);
  // Ends with the connection, or with a server that is silent for too long.
  while (!stopping_ && !paused_ && !connection->Over()) {
    if (Clock::now() - connection->LatestNews() > options_.stall_limit) break;
    changed_.wait_for(lock, kConnectionLook);
    if (!connected_ && connection->Answer()) {
      connected_ = true;
      if (!answer_) answer_ = connection->Answer();
    }
  }
  connection->Cancel();
  connected_ = false;
  if (stopping_ || paused_) return !stopping_;
  failure_ = connection->Over() ? connection->Failure() : PlaybackFailure::kNoAnswer;
  http_status_ = connection->Status();
  if (connection->Complete()) {
    buffer_->Finish();
    return false;
  }
  failed_ = !answer_;
  if (failed_) return false;
  NoteLoss(*connection, begun);
  return true;
}

void LiveStream::NoteLoss(const HttpStream& connection, Clock::time_point begun) {
  const auto now = Clock::now();
  const auto sounded = connection.Answer() ? now - begun : Clock::duration::zero();
  next_try_ = schedule_.Lost(now, begun, sounded);
  if (!connection.Answer()) return;
  const int bit_rate = answer_->bit_rate > 0 ? answer_->bit_rate : kUsualBitRate;
  buffer_->Hold(static_cast<std::size_t>(reserve_.Next(now).count()) * static_cast<std::size_t>(bit_rate) /
                8000);
}

}  // namespace platform::win32
