#include "platform/win32/media/live_stream.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/live/text_types.h"

namespace platform::win32 {
namespace {

/// While the first connection is being judged, for it keeps the user waiting; and later.
constexpr std::chrono::milliseconds kFirstLook{20};
constexpr std::chrono::milliseconds kLook{50};
/// By then two frames of sound must have followed each other, if it is sound of a kind that is measured.
constexpr std::size_t kJudgedFrom = 4096;
constexpr std::string_view kListBegins = "#EXTM3U";
/// Bits per second of a station that does not say it.
constexpr int kUsualBitRate = 128000;

/// As the server should have called it.
std::string TypeOf(live::SoundFormat format, const std::string& said) {
  if (format == live::SoundFormat::kMp3) return "audio/mpeg";
  return format == live::SoundFormat::kAac ? "audio/aac" : said;
}

}  // namespace

LiveStream::LiveStream(const Text& address, const LiveStreamOptions& options)
    : address_(address), options_(options), supervisor_([this] { Supervise(); }) {}

LiveStream::~LiveStream() {
  {
    const Lock lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  buffer_->EndReads();
  supervisor_.join();
}

bool LiveStream::Decided() const {
  const Lock lock(mutex_);
  return answer_.has_value() || failed_;
}

std::optional<HttpAnswer> LiveStream::Answer() const {
  const Lock lock(mutex_);
  return answer_;
}

PlaybackFailure LiveStream::Failure() const {
  const Lock lock(mutex_);
  return failure_;
}

int LiveStream::HttpStatus() const {
  const Lock lock(mutex_);
  return http_status_;
}

bool LiveStream::IsList() const {
  const Lock lock(mutex_);
  return list_;
}

PlaybackStatus LiveStream::Status() const {
  const Lock lock(mutex_);
  PlaybackStatus status;
  status.state = PlaybackState::kPlaying;
  if (!answer_) status.state = PlaybackState::kReconnecting;
  if (gate_.IsShut()) status.state = connected_at_ ? PlaybackState::kBuffering : PlaybackState::kReconnecting;
  if (status.state == PlaybackState::kBuffering) status.buffered_percent = gate_.Percent();
  if (status.state == PlaybackState::kPlaying) {
    const int measured = buffer_->Look().bit_rate;
    status.bit_rate = measured > 0 ? measured : answer_ ? answer_->bit_rate : 0;
    status.codec = FormatName();
  }
  if (status.state != PlaybackState::kReconnecting) return status;
  status.failure = failure_;
  status.http_status = http_status_;
  if (!connecting_) {
    const auto left = std::chrono::ceil<std::chrono::seconds>(schedule_.NextAttempt() - Clock::now());
    status.seconds_to_next_try = static_cast<int>(std::max<std::chrono::seconds::rep>(left.count(), 0));
  }
  return status;
}

Text LiveStream::FormatName() const {
  switch (buffer_->Look().format) {
    case live::SoundFormat::kMp3:
      return u"MP3";
    case live::SoundFormat::kAac:
      return u"AAC";
    default:
      return {};
  }
}

void LiveStream::EndReads() {
  {
    const Lock lock(mutex_);
    ended_ = true;
  }
  changed_.notify_all();
  buffer_->EndReads();
}

void LiveStream::EndReadsIn(std::chrono::milliseconds time) {
  {
    const Lock lock(mutex_);
    reads_end_at_ = Clock::now() + time;
  }
  changed_.notify_all();
}

void LiveStream::EndReadsWhenDue(Lock& lock) {
  if (!reads_end_at_ || Clock::now() < *reads_end_at_) return;
  reads_end_at_.reset();
  ended_ = true;
  // Reads that waited are answered in it.
  lock.unlock();
  buffer_->EndReads();
  lock.lock();
}

void LiveStream::ResumeReads() {
  {
    const Lock lock(mutex_);
    if (!ended_) return;
    ended_ = false;
    schedule_.Reset();
    gate_ = {};
  }
  buffer_->Resume();
  changed_.notify_all();
}

void LiveStream::Playing() {
  {
    const Lock lock(mutex_);
    paused_ = false;
    gate_.Run(Clock::now());
  }
  changed_.notify_all();
}

void LiveStream::Paused() {
  const Lock lock(mutex_);
  paused_ = true;
  gate_.Rest(Clock::now());
}

bool LiveStream::MayTry() const {
  return !ended_ && !(paused_ && schedule_.Lost()) && Clock::now() >= schedule_.NextAttempt();
}

void LiveStream::WaitForTurn(Lock& lock) {
  if (ended_ || (paused_ && !reads_end_at_)) {
    changed_.wait(lock);
    return;
  }
  if (paused_) {
    changed_.wait_until(lock, *reads_end_at_);
    return;
  }
  changed_.wait_until(lock, std::min(schedule_.NextAttempt(), Clock::now() + kLook));
  WatchSound(lock);
}

void LiveStream::Supervise() {
  Lock lock(mutex_);
  while (!stopping_) {
    EndReadsWhenDue(lock);
    if (stopping_) return;
    if (!MayTry()) {
      WaitForTurn(lock);
    } else if (!Connect(lock)) {
      return;
    }
  }
}

bool LiveStream::Connect(Lock& lock) {
  if (schedule_.Lost()) schedule_.AttemptStarted(Clock::now());
  connecting_ = true;
  page_ = false;
  lock.unlock();
  const auto connection = HttpStream::Open(address_, options_.user_agent, buffer_);
  lock.lock();
  Follow(*connection, lock);
  connection->Cancel();
  connecting_ = false;
  const auto sound_since = std::exchange(connected_at_, std::nullopt);
  if (stopping_ || ended_) return !stopping_;
  if (answer_ && connection->Complete() && !page_) {
    // Reads that waited are answered in it.
    lock.unlock();
    buffer_->Finish();
    return false;
  }
  NoteEnd(*connection, sound_since);
  return !failed_;
}

void LiveStream::NoteEnd(const HttpStream& connection, std::optional<Clock::time_point> sound_since) {
  http_status_ = connection.Status();
  failure_ = !connection.Over() ? PlaybackFailure::kNoAnswer : connection.Failure();
  if (page_) failure_ = PlaybackFailure::kWebPage;
  failed_ = !answer_ && options_.first == LiveStreamOptions::First::kDecides;
  if (sound_since) {
    schedule_.Lose(Clock::now(), sound_since);
  } else {
    schedule_.AttemptFailed(Clock::now(), live::ReconnectSchedule::Weigh(failure_, http_status_));
  }
}

void LiveStream::Follow(const HttpStream& connection, Lock& lock) {
  while (!stopping_ && !ended_ && !page_) {
    EndReadsWhenDue(lock);
    const bool over = connection.Over();
    if (!connected_at_ && connection.Answer()) Judge(connection);
    WatchSound(lock);
    // It ends by itself, or with a server that is silent for too long.
    if (over || Clock::now() - connection.LatestNews() > options_.stall_limit) return;
    changed_.wait_for(lock, answer_ ? kLook : kFirstLook);
  }
}

void LiveStream::Judge(const HttpStream& connection) {
  const StreamBuffer::Level level = buffer_->Look();
  const bool measured = level.format != live::SoundFormat::kUnknown;
  if (!answer_ && !measured && !connection.Over() && level.bytes_ahead < kJudgedFrom) return;
  HttpAnswer answer = *connection.Answer();
  // Before the first sound the buffer begins with what this connection has brought.
  const bool list = live::IsListType(answer.content_type) || (!answer_ && buffer_->BeginsWith(kListBegins));
  const bool text = list || live::IsTextType(answer.content_type);
  // A network that wants a login answers for the station.
  page_ = text && (answer_ ? !sound_called_text_ : !measured);
  list_ = page_ && list;
  if (page_) return;
  if (!answer_) {
    sound_called_text_ = text;
    answer.content_type = TypeOf(level.format, answer.content_type);
    answer_ = std::move(answer);
  }
  connected_at_ = Clock::now();
  schedule_.AttemptOpened();
  gate_.Connected();
}

void LiveStream::WatchSound(Lock& lock) {
  const int bit_rate = answer_ && answer_->bit_rate > 0 ? answer_->bit_rate : kUsualBitRate;
  const auto link = connected_at_ ? SoundGate::Link::kUp : SoundGate::Link::kDown;
  const StreamBuffer::Gate gate = gate_.Look(buffer_->Look(), link, bit_rate, Clock::now());
  // Reads that waited are answered in it.
  lock.unlock();
  buffer_->Set(gate);
  lock.lock();
}

}  // namespace platform::win32
