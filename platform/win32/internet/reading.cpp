#include "platform/win32/internet/reading.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform::win32 {
namespace {

using Clock = Reading::Clock;

std::optional<milliseconds> Since(const std::optional<Clock::time_point>& start) {
  if (!start) return std::nullopt;
  return std::chrono::duration_cast<milliseconds>(Clock::now() - *start);
}

}  // namespace

void Reading::Note() {
  ++events_;
  changed_.notify_all();
}

void Reading::Begin() {
  const std::lock_guard lock(mutex_);
  connecting_since_ = Clock::now();
  owed_since_.reset();
}

void Reading::Sent() {
  const std::lock_guard lock(mutex_);
  connecting_since_.reset();
  if (!owed_since_ && !answered_) owed_since_ = Clock::now();
}

void Reading::Answer(const http::AnswerHeader& header) {
  const std::lock_guard lock(mutex_);
  if (cancelled_) return;
  header_ = header;
  answered_ = true;
  connecting_since_.reset();
  owed_since_.reset();
  last_arrival_ = Clock::now();
  Note();
}

bool Reading::Append(std::string_view bytes) {
  std::unique_lock lock(mutex_);
  while (!bytes.empty()) {
    changed_.wait(lock, [this] { return cancelled_ || BufferedLocked() < http::Exchange::kBufferLimit; });
    if (cancelled_) return false;
    buffer_.erase(0, std::exchange(taken_, 0));
    const std::size_t count = std::min(bytes.size(), http::Exchange::kBufferLimit - buffer_.size());
    buffer_ += bytes.substr(0, count);
    bytes.remove_prefix(count);
    last_arrival_ = Clock::now();
    Note();
  }
  return !cancelled_;
}

void Reading::EndLocked(InternetFailure failure, std::uint32_t error) {
  if (ended_) return;
  ended_ = true;
  failure_ = failure;
  error_ = error;
  connecting_since_.reset();
  owed_since_.reset();
  Note();
}

void Reading::End(InternetFailure failure, std::uint32_t error) {
  const std::lock_guard lock(mutex_);
  EndLocked(failure, error);
}

bool Reading::WaitUntil(const std::function<bool()>& condition) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this, &condition] { return cancelled_ || condition(); });
  return !cancelled_;
}

void Reading::Change(const std::function<void()>& change) {
  const std::lock_guard lock(mutex_);
  change();
  changed_.notify_all();
}

void Reading::Cancel() {
  const std::lock_guard lock(mutex_);
  cancelled_ = true;
  changed_.notify_all();
}

void Reading::Await(milliseconds slice) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, slice, [this] { return events_ != events_seen_; });
  events_seen_ = events_;
}

void Reading::LimitConnecting(milliseconds limit, std::uint32_t error) {
  const std::lock_guard lock(mutex_);
  const std::optional<milliseconds> time = Since(connecting_since_);
  if (!time || *time < limit) return;
  cancelled_ = true;
  EndLocked(InternetFailure::kNoAnswer, error);
}

std::optional<milliseconds> Reading::AnswerOwedFor() const {
  const std::lock_guard lock(mutex_);
  return Since(owed_since_);
}

bool Reading::IsAnswered() const {
  const std::lock_guard lock(mutex_);
  return answered_;
}

const http::AnswerHeader& Reading::Header() const {
  const std::lock_guard lock(mutex_);
  return header_;
}

bool Reading::HasEnded() const {
  const std::lock_guard lock(mutex_);
  return ended_;
}

InternetFailure Reading::Failure() const {
  const std::lock_guard lock(mutex_);
  return failure_;
}

std::uint32_t Reading::Error() const {
  const std::lock_guard lock(mutex_);
  return error_;
}

std::size_t Reading::Buffered() const {
  const std::lock_guard lock(mutex_);
  return BufferedLocked();
}

milliseconds Reading::QuietFor() const {
  const std::lock_guard lock(mutex_);
  return *Since(last_arrival_);
}

std::size_t Reading::Take(std::span<std::byte> buffer) {
  const std::lock_guard lock(mutex_);
  const std::size_t count = std::min(buffer.size(), BufferedLocked());
  if (count > 0) std::memcpy(buffer.data(), buffer_.data() + taken_, count);
  taken_ += count;
  changed_.notify_all();
  return count;
}

}  // namespace platform::win32
