#include "platform/gstreamer/item_state.h"

#include <algorithm>
#include <utility>

namespace platform::gstreamer {
namespace {

/// Rounded up, so that the last second before it counts as one.
int WholeSecondsUntil(ItemState::Clock::time_point time) {
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(time - ItemState::Clock::now());
  return static_cast<int>(std::max<std::chrono::seconds::rep>(0, seconds.count()));
}

}  // namespace

void ItemState::OnPipelineEvent(const PipelineEvent& event) {
  const std::lock_guard lock(mutex_);
  events_.push_back(event);
  supervisor_wakes_.notify_one();
}

void ItemState::OnTags(const GstTagList& tags) {
  const std::lock_guard lock(mutex_);
  MergeTags(tags, properties_);
}

void ItemState::Request(Wanted wanted) {
  const std::lock_guard lock(mutex_);
  if (wanted_ == Wanted::kShutDown) return;
  // What continues after a Stop begins again, even when the supervisor was too busy to see the Stop by
  // itself.
  stop_first_ = stop_first_ || wanted_ == Wanted::kStopped;
  wanted_ = wanted;
  ended_ = false;
  ++request_;
  supervisor_wakes_.notify_one();
}

void ItemState::Wake() {
  const std::lock_guard lock(mutex_);
  woken_ = true;
  supervisor_wakes_.notify_one();
}

Wanted ItemState::Requested() const {
  const std::lock_guard lock(mutex_);
  return wanted_;
}

bool ItemState::WaitCarriedOut(std::chrono::milliseconds limit) {
  std::unique_lock lock(mutex_);
  return caller_wakes_.wait_for(lock, limit, [this] { return carried_out_ == request_; });
}

std::optional<HResult> ItemState::WaitOpened(std::chrono::milliseconds limit) {
  std::unique_lock lock(mutex_);
  caller_wakes_.wait_for(lock, limit, [this] { return opened_.has_value(); });
  return opened_;
}

bool ItemState::Ended() const {
  const std::lock_guard lock(mutex_);
  return ended_;
}

std::int64_t ItemState::PlayedTime() {
  std::shared_ptr<Pipeline> pipeline;
  HeardTime::Base base{};
  {
    const std::lock_guard lock(mutex_);
    pipeline = current_;
    base = heard_time_.Read();
  }
  const std::int64_t present = pipeline ? pipeline->PlayedTime() : 0;
  const std::lock_guard lock(mutex_);
  return heard_time_.Reach(base, present);
}

std::int64_t ItemState::Duration() const {
  const std::lock_guard lock(mutex_);
  return duration_;
}

std::shared_ptr<Pipeline> ItemState::Current() const {
  const std::lock_guard lock(mutex_);
  return current_;
}

Properties ItemState::GetProperties() const {
  const std::lock_guard lock(mutex_);
  Properties properties = properties_;
  const int rate = current_ ? current_->SampleRate() : last_sample_rate_;
  const int channels = current_ ? current_->Channels() : last_channels_;
  if (rate > 0) properties[u"SampleRate"] = NumberProperty(static_cast<std::uint32_t>(rate));
  if (channels > 0) properties[u"Channels"] = NumberProperty(static_cast<std::uint32_t>(channels));
  return properties;
}

PlaybackStatus ItemState::Status() const {
  const std::lock_guard lock(mutex_);
  PlaybackStatus status;
  const bool ended_by_caller = wanted_ == Wanted::kStopped || wanted_ == Wanted::kShutDown;
  if (ended_by_caller && report_.state != PlaybackState::kFailed) return status;
  status.state = report_.state;
  status.failure = report_.cause.failure;
  status.http_status = report_.cause.http_status;
  status.format = report_.cause.format;
  status.package = report_.cause.package;
  status.buffered_percent = report_.buffered_percent;
  if (report_.next_try) status.seconds_to_next_try = WholeSecondsUntil(*report_.next_try);
  if (status.state != PlaybackState::kPlaying) return status;
  status.codec = ShortCodecName(properties_);
  status.bit_rate = BitRate(properties_);
  return status;
}

bool ItemState::HasReport() const {
  const std::lock_guard lock(mutex_);
  return has_report_;
}

int ItemState::Channels() const {
  const std::lock_guard lock(mutex_);
  return current_ ? current_->Channels() : last_channels_;
}

ItemState::Work ItemState::WaitForWork(std::optional<Clock::time_point> until) {
  std::unique_lock lock(mutex_);
  const auto has_work = [this] { return !events_.empty() || request_ != carried_out_ || woken_; };
  if (until) {
    supervisor_wakes_.wait_until(lock, *until, has_work);
  } else {
    supervisor_wakes_.wait(lock, has_work);
  }
  woken_ = false;
  return {std::exchange(events_, {}), std::exchange(stop_first_, false), wanted_, request_};
}

void ItemState::CarriedOut(std::uint64_t request) {
  const std::lock_guard lock(mutex_);
  carried_out_ = request;
  caller_wakes_.notify_all();
}

void ItemState::SetOpened(HResult result, const ItemReport& report) {
  const std::lock_guard lock(mutex_);
  if (!opened_) opened_ = result;
  report_ = report;
  has_report_ = true;
  caller_wakes_.notify_all();
}

void ItemState::SetReport(const ItemReport& report) {
  const std::lock_guard lock(mutex_);
  report_ = report;
  has_report_ = true;
}

void ItemState::SetEnded(std::uint64_t request) {
  const std::lock_guard lock(mutex_);
  if (request == request_) ended_ = true;
}

void ItemState::SetDuration(std::int64_t nanoseconds) {
  const std::lock_guard lock(mutex_);
  duration_ = nanoseconds;
}

void ItemState::SetCurrent(std::shared_ptr<Pipeline> pipeline) {
  const std::shared_ptr<Pipeline> old = Current();
  const std::int64_t played = old ? old->PlayedTime() : 0;
  const std::lock_guard lock(mutex_);
  if (old) {
    last_channels_ = old->Channels();
    last_sample_rate_ = old->SampleRate();
  }
  heard_time_.Add(played);
  current_ = std::move(pipeline);
}

void ItemState::RestartTime() {
  const std::lock_guard lock(mutex_);
  heard_time_.Restart();
}

}  // namespace platform::gstreamer
