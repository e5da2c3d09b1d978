#include "ui/status_line.h"

#include <cstddef>
#include <utility>

#include "app/state/status_sentences.h"
#include "ui/playback_sentence.h"

namespace ui {

using platform::PlaybackFailure;
using platform::PlaybackState;
using platform::PlaybackStatus;
using platform::Text;
using platform::TextView;

namespace {

/// The beginning of a text that comes from a server or from somebody else's list. A line shows less than
/// this.
TextView Shortened(TextView argument) {
  constexpr std::size_t kLongestArgument = 1024;
  return argument.substr(0, kLongestArgument);
}

/// One pass from left to right, so that a "%1" within an argument stays as it is.
Text Filled(TextView sentence, const std::vector<Text>& arguments) {
  Text filled;
  for (std::size_t at = 0; at < sentence.size(); ++at) {
    const char16_t digit = at + 1 < sentence.size() ? sentence[at + 1] : u'\0';
    const std::size_t number = digit >= u'1' && digit <= u'9' ? static_cast<std::size_t>(digit - u'0') : 0;
    if (sentence[at] == u'%' && number > 0 && number <= arguments.size()) {
      filled += Shortened(arguments[number - 1]);
      ++at;
    } else {
      filled += sentence[at];
    }
  }
  return filled;
}

/// Why a server gave no answer; kNone when it gave one, good or bad, or was not waited for.
PlaybackFailure FailureOf(const stream::QueryFailure& failure) {
  using Kind = stream::QueryFailure::Kind;
  switch (failure.kind) {
    case Kind::kNoAnswer:
      return PlaybackFailure::kNoAnswer;
    case Kind::kUnknownHost:
      return PlaybackFailure::kUnknownHost;
    case Kind::kRefused:
      return PlaybackFailure::kRefused;
    default:
      return PlaybackFailure::kNone;
  }
}

/// Nothing more follows by itself.
bool IsOver(PlaybackState state) {
  return state == PlaybackState::kStopped || state == PlaybackState::kEnded ||
         state == PlaybackState::kFailed;
}

}  // namespace

void StatusLine::Notify(TextView sentence, const std::vector<Text>& arguments) {
  noticed_at_ = ports_.clock.WholeSeconds();
  Say(sentence, arguments);
}

void StatusLine::Selected(const Text& station, const stream::QueryFailure& failure) {
  if (phase_ != Phase::kIdle) return;
  PlaybackStatus status;
  status.state = PlaybackState::kFailed;
  status.failure = FailureOf(failure);
  if (status.failure == PlaybackFailure::kNone) {
    if (std::exchange(is_of_selection_, false)) label_.SetCaption(u"");
    return;
  }
  const Sentence sentence = SentenceOf(status, station);
  Say(sentence.text, sentence.arguments);
  is_of_selection_ = true;
}

void StatusLine::Resolving() {
  phase_ = Phase::kResolving;
  Say(app::sentences::kResolving, {});
}

void StatusLine::Starting(const Text& station) {
  phase_ = Phase::kFollowing;
  station_ = station;
  is_current_ = false;
  PlaybackStatus status;
  status.state = PlaybackState::kConnecting;
  Show(status);
}

void StatusLine::Follow() {
  if (phase_ != Phase::kFollowing) return;
  const PlaybackStatus status = ports_.monitor.Status();
  if (!NoticeStays(status)) Show(status);
}

void StatusLine::Stopped() {
  if (phase_ == Phase::kIdle) return;
  PlaybackStatus status = phase_ == Phase::kFollowing ? ports_.monitor.Status() : PlaybackStatus{};
  if (status.state == PlaybackState::kPaused) return Follow();
  if (!IsOver(status.state)) status = {};
  Show(status);
}

void StatusLine::NotPlayable() {
  Follow();
  if (phase_ != Phase::kFollowing) return;
  phase_ = Phase::kIdle;
  Say(app::sentences::kCannotPlay, {station_});
}

void StatusLine::Show(const PlaybackStatus& status) {
  if (IsOver(status.state)) phase_ = Phase::kIdle;
  noticed_at_.reset();
  if (is_current_ && status == shown_) return;
  const Sentence sentence = SentenceOf(status, station_);
  Say(sentence.text, sentence.arguments);
  shown_ = status;
  is_current_ = true;
}

void StatusLine::Say(TextView sentence, const std::vector<Text>& arguments) {
  is_current_ = false;
  is_of_selection_ = false;
  const Text key(sentence);
  label_.SetCaption(Filled(language_.GetLangText(key, key), arguments));
}

bool StatusLine::NoticeStays(const PlaybackStatus& status) const {
  if (!noticed_at_) return false;
  if (status.state == shown_.state) return true;
  if (status.state == PlaybackState::kFailed) return false;
  const std::int64_t age = ports_.clock.WholeSeconds() - *noticed_at_;
  // A clock that was set back must not keep the notice for hours.
  return age >= 0 && age < kReadableSeconds;
}

}  // namespace ui
