#include "stream/silent_addresses.h"

#include <algorithm>
#include <utility>

namespace stream {

namespace {

/// For how many seconds an address fails at once after this many silences in a row.
std::int64_t SecondsAfter(int times) {
  constexpr std::array<std::int64_t, 4> kSeconds = {10, 20, 40, 60};
  return kSeconds[std::min<std::size_t>(static_cast<std::size_t>(times), kSeconds.size()) - 1];
}

// Null without one.
template <typename Entries>
auto* FindIn(Entries& entries, TextView address) {
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [address](const auto& entry) { return entry.address == address; });
  return found == entries.end() ? nullptr : &*found;
}

}  // namespace

const SilentAddresses::Entry* SilentAddresses::Find(TextView address) const {
  return FindIn(entries_, address);
}

SilentAddresses::Entry* SilentAddresses::Find(TextView address) { return FindIn(entries_, address); }

bool SilentAddresses::IsRunning(const Silence& silence) const {
  if (silence.times == 0) return false;
  const std::int64_t elapsed = clock_.WholeSeconds() - silence.since;
  // A clock that was set back must not prolong it.
  return elapsed >= 0 && elapsed <= SecondsAfter(silence.times);
}

double SilentAddresses::SecondsSince(double began) const {
  constexpr double kSecondsOfADay = 86400.0;
  const double elapsed = clock_.SecondsSinceMidnight() - began;
  return elapsed < 0 ? elapsed + kSecondsOfADay : elapsed;
}

std::optional<SilentAddresses::Attempt> SilentAddresses::Begin(Question question, TextView address) {
  const double now = clock_.SecondsSinceMidnight();
  if (patience_ == Patience::kOfARecording) return Attempt{0, now};
  Entry* const entry = Find(address);
  if (!entry) return Attempt{kFullWait, now};
  if (question == Question::kTitle && IsRunning(entry->Of(Question::kHeaders))) return std::nullopt;
  Silence& silence = entry->Of(question);
  const std::optional<Wait> granted = std::exchange(silence.one_more_try, std::nullopt);
  if (!granted && IsRunning(silence)) return std::nullopt;
  const bool is_full = silence.times == 0 || granted == Wait::kFull;
  return Attempt{is_full ? kFullWait : kBriefWait, now};
}

void SilentAddresses::Answered(Question question, TextView address) {
  Entry* const entry = Find(address);
  if (!entry) return;
  entry->Of(question) = {};
  const bool is_needed = std::any_of(entry->silences.begin(), entry->silences.end(),
                                     [](const Silence& silence) { return silence.times > 0; });
  if (!is_needed) Take(address);
}

void SilentAddresses::Failed(Question question, TextView address, const Attempt& attempt,
                             QueryFailure failure) {
  const bool is_silence =
      failure.kind != QueryFailure::Kind::kGivenUp && SecondsSince(attempt.began) >= kSoon;
  if (patience_ == Patience::kOfARecording || !is_silence) return;
  Entry entry = Take(address);
  Silence& silence = entry.Of(question);
  ++silence.times;
  silence.since = clock_.WholeSeconds();
  silence.failure = failure;
  if (entries_.size() >= kMost) entries_.erase(entries_.begin());
  entries_.push_back(std::move(entry));
}

SilentAddresses::Entry SilentAddresses::Take(TextView address) {
  Entry entry;
  entry.address = address;
  if (Entry* const known = Find(address)) {
    entry = std::move(*known);
    entries_.erase(entries_.begin() + (known - entries_.data()));
  }
  return entry;
}

void SilentAddresses::TryAgain(TextView address, Wait wait) {
  Entry* const entry = Find(address);
  if (!entry) return;
  for (Silence& silence : entry->silences) silence.one_more_try = wait;
}

bool SilentAddresses::IsSilent(TextView address) const {
  const Entry* const entry = Find(address);
  if (!entry) return false;
  const Silence& silence = entry->Of(Question::kHeaders);
  return !silence.one_more_try && IsRunning(silence);
}

QueryFailure SilentAddresses::FailureOf(TextView address) const {
  const Entry* const entry = Find(address);
  return entry ? entry->Of(Question::kHeaders).failure : QueryFailure();
}

}  // namespace stream
