#include "platform/win32/media/stream_buffer.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace platform::win32 {
namespace {

/// A read that begins so far ahead of what was sent is none of the sound.
constexpr std::uint64_t kFarAhead = std::uint64_t{16} << 20;
constexpr std::chrono::milliseconds kCancelCheck{50};
/// A station sends in smaller pauses than this.
constexpr std::chrono::milliseconds kUsualPause{1000};

}  // namespace

void StreamBuffer::Read(std::uint64_t position, std::span<std::byte> target, Done done) {
  std::unique_lock lock(mutex_);
  const bool passed = position < begin_ || position > End() + kFarAhead;
  if (passed || target.empty()) {
    lock.unlock();
    done(0);
    return;
  }
  asked_up_to_ = std::max(asked_up_to_, position + target.size());
  waiting_.push_back({position, target, std::move(done)});
  auto answers = TakeAnswerable();
  lock.unlock();
  room_.notify_all();
  for (const Answer& answer : answers) answer.done(answer.count);
}

bool StreamBuffer::Append(std::span<const std::byte> bytes, const std::atomic<bool>& cancelled) {
  std::unique_lock lock(mutex_);
  const auto may_continue = [this] { return ended_ || End() < asked_up_to_ + kMostAhead; };
  while (!cancelled && !may_continue()) room_.wait_for(lock, kCancelCheck);
  if (cancelled || ended_) return false;
  appended_at_ = std::chrono::steady_clock::now();
  if (waiting_.empty()) hold_ = 0;
  bytes_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  // Whole blocks are dropped, because dropping moves the rest.
  const std::uint64_t kept_from = std::min(asked_up_to_, End());
  if (kept_from > begin_ + 2 * kKeptBehind) {
    const auto dropped = static_cast<std::size_t>(kept_from - begin_) - kKeptBehind;
    bytes_.erase(0, dropped);
    begin_ += dropped;
  }
  auto answers = TakeAnswerable();
  lock.unlock();
  for (const Answer& answer : answers) answer.done(answer.count);
  return true;
}

void StreamBuffer::Hold(std::size_t bytes) {
  const std::lock_guard lock(mutex_);
  hold_ = bytes;
}

void StreamBuffer::Finish() {
  std::unique_lock lock(mutex_);
  finished_ = true;
  auto answers = TakeAnswerable();
  lock.unlock();
  for (const Answer& answer : answers) answer.done(answer.count);
}

void StreamBuffer::EndReads() {
  std::unique_lock lock(mutex_);
  ended_ = true;
  auto answers = TakeAnswerable();
  lock.unlock();
  room_.notify_all();
  for (const Answer& answer : answers) answer.done(answer.count);
}

void StreamBuffer::Resume() {
  const std::lock_guard lock(mutex_);
  if (!std::exchange(ended_, false)) return;
  bytes_.clear();
  begin_ = 0;
  asked_up_to_ = 0;
  hold_ = 0;
}

bool StreamBuffer::ReadsWait() const {
  const std::lock_guard lock(mutex_);
  return !waiting_.empty();
}

bool StreamBuffer::Starves() const {
  const std::lock_guard lock(mutex_);
  const bool nothing_comes = std::chrono::steady_clock::now() - appended_at_ > kUsualPause;
  return !waiting_.empty() && (hold_ > 0 || nothing_comes);
}

bool StreamBuffer::Answerable(const Wanted& wanted) const {
  const std::uint64_t held = wanted.waits ? hold_ : 0;
  return ended_ || finished_ || End() >= wanted.position + wanted.target.size() + held;
}

StreamBuffer::Answer StreamBuffer::Take(Wanted wanted) {
  const bool nothing = ended_ || wanted.position < begin_ || wanted.position >= End();
  if (nothing) return {std::move(wanted.done), 0};
  const auto from = static_cast<std::size_t>(wanted.position - begin_);
  const std::size_t count = std::min(wanted.target.size(), bytes_.size() - from);
  std::memcpy(wanted.target.data(), bytes_.data() + from, count);
  return {std::move(wanted.done), count};
}

std::list<StreamBuffer::Answer> StreamBuffer::TakeAnswerable() {
  std::list<Answer> answers;
  for (auto wanted = waiting_.begin(); wanted != waiting_.end();) {
    if (!Answerable(*wanted)) {
      wanted->waits = true;
      ++wanted;
      continue;
    }
    hold_ = 0;
    answers.push_back(Take(std::move(*wanted)));
    wanted = waiting_.erase(wanted);
  }
  return answers;
}

}  // namespace platform::win32
