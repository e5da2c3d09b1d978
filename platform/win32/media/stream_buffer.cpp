#include "platform/win32/media/stream_buffer.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

#include "platform/win32/media/locks.h"

namespace platform::win32 {
namespace {

/// A read that begins so far ahead of what was sent is none of the sound.
constexpr std::uint64_t kFarAhead = std::uint64_t{16} << 20;
constexpr std::chrono::milliseconds kCancelCheck{50};

}  // namespace

void StreamBuffer::Read(std::uint64_t position, std::span<std::byte> target, Done done) {
  Lock lock(mutex_);
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
  Lock lock(mutex_);
  const auto may_continue = [this] { return ended_ || End() < asked_up_to_ + kMostAhead; };
  while (!cancelled && !may_continue()) room_.wait_for(lock, kCancelCheck);
  if (cancelled || ended_) return false;
  appended_at_ = Clock::now();
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  bytes_ += text;
  frames_.Append(text);
  marks_.push_back({End(), frames_.Sound()});
  while (marks_.size() > 1 && marks_[1].position <= given_up_to_) marks_.pop_front();
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

void StreamBuffer::Set(Gate gate) {
  Lock lock(mutex_);
  gate_ = gate;
  auto answers = TakeAnswerable();
  lock.unlock();
  for (const Answer& answer : answers) answer.done(answer.count);
}

void StreamBuffer::Finish() {
  Lock lock(mutex_);
  finished_ = true;
  auto answers = TakeAnswerable();
  lock.unlock();
  for (const Answer& answer : answers) answer.done(answer.count);
}

void StreamBuffer::EndReads() {
  Lock lock(mutex_);
  ended_ = true;
  auto answers = TakeAnswerable();
  lock.unlock();
  room_.notify_all();
  for (const Answer& answer : answers) answer.done(answer.count);
}

void StreamBuffer::Resume() {
  const Lock lock(mutex_);
  if (!std::exchange(ended_, false)) return;
  bytes_.clear();
  begin_ = 0;
  asked_up_to_ = 0;
  given_up_to_ = 0;
  frames_ = {};
  marks_.clear();
  gate_ = Gate::kOpen;
}

StreamBuffer::Level StreamBuffer::Look() const {
  const Lock lock(mutex_);
  Level level;
  level.format = frames_.Format();
  level.bit_rate = frames_.BitRate();
  level.read_waits = !waiting_.empty();
  level.given = SoundBefore(given_up_to_);
  level.ahead = frames_.Sound() - level.given;
  level.bytes_ahead = static_cast<std::size_t>(End() - std::min(given_up_to_, End()));
  level.appended_at = appended_at_;
  return level;
}

bool StreamBuffer::IsOverAt(std::uint64_t position) const {
  const Lock lock(mutex_);
  return ended_ || (finished_ && position >= End());
}

bool StreamBuffer::BeginsWith(std::string_view text) const {
  const Lock lock(mutex_);
  return begin_ == 0 && bytes_.starts_with(text);
}

StreamBuffer::Length StreamBuffer::SoundBefore(std::uint64_t position) const {
  Length sound{};
  for (const Mark& mark : marks_) {
    if (mark.position > position) break;
    sound = mark.sound;
  }
  return sound;
}

bool StreamBuffer::Answerable(const Wanted& wanted) const {
  if (ended_ || finished_) return true;
  return gate_ == Gate::kOpen && End() >= wanted.position + std::min(wanted.target.size(), kEnough);
}

StreamBuffer::Answer StreamBuffer::Take(Wanted wanted) {
  const bool nothing = ended_ || wanted.position < begin_ || wanted.position >= End();
  if (nothing) return {std::move(wanted.done), 0};
  const auto from = static_cast<std::size_t>(wanted.position - begin_);
  const std::size_t count = std::min(wanted.target.size(), bytes_.size() - from);
  std::memcpy(wanted.target.data(), bytes_.data() + from, count);
  given_up_to_ = std::max(given_up_to_, wanted.position + count);
  return {std::move(wanted.done), count};
}

std::list<StreamBuffer::Answer> StreamBuffer::TakeAnswerable() {
  std::list<Answer> answers;
  for (auto wanted = waiting_.begin(); wanted != waiting_.end();) {
    if (!Answerable(*wanted)) {
      ++wanted;
      continue;
    }
    answers.push_back(Take(std::move(*wanted)));
    wanted = waiting_.erase(wanted);
  }
  return answers;
}

}  // namespace platform::win32
