#pragma once
// Whether a device takes an item's sound, and when to look for one: decisions on times that are passed in.
// Not the search itself; that is device_search.h.

#include <chrono>
#include <optional>

namespace platform::gstreamer {

/// Begins with a device that takes the sound. Lose or Miss, then LookStarted and LookFailed alternately until
/// Found.
class DeviceWatch {
 public:
  using Clock = std::chrono::steady_clock;
  enum class State {
    kTaking,   ///< as far as is known
    kLost,     ///< its sink has failed or is stalled, or the last look found none; a look is due
    kLooking,  ///< a look is in progress
  };

  /// A look that fails costs a connection to the sound server at most.
  static constexpr Clock::duration kLookEvery = std::chrono::seconds(1);
  /// A device that is found again this soon was not away: the sound server only ended the stream.
  static constexpr Clock::duration kNotAway = std::chrono::milliseconds(500);

  /// The device that took the sound fails at `now`.
  void Lose(Clock::time_point now) {
    if (state_ != State::kTaking) return;
    state_ = State::kLost;
    lost_at_ = now;
    found_none_ = false;
  }
  /// There is none at `now`, as an attempt has shown.
  void Miss(Clock::time_point now) {
    Lose(now);
    state_ = State::kLost;
    found_none_ = true;
  }

  void LookStarted(Clock::time_point now) {
    state_ = State::kLooking;
    looked_at_ = now;
  }
  void LookFailed() {
    state_ = State::kLost;
    found_none_ = true;
  }
  /// The look was given up, because nobody wants the sound at present.
  void LookDropped() { state_ = State::kLost; }
  void Found() { state_ = State::kTaking; }

  [[nodiscard]] State Now() const { return state_; }
  /// When to look; nothing unless a look is due.
  [[nodiscard]] std::optional<Clock::time_point> NextLook() const {
    if (state_ != State::kLost) return std::nullopt;
    return looked_at_ ? *looked_at_ + kLookEvery : Clock::time_point{};
  }
  /// No device takes the sound at `now`.
  [[nodiscard]] bool IsAway(Clock::time_point now) const {
    return state_ != State::kTaking && (found_none_ || now >= lost_at_ + kNotAway);
  }
  /// When IsAway, false at `now`, becomes true by itself.
  [[nodiscard]] std::optional<Clock::time_point> CountsAsAwayAt(Clock::time_point now) const {
    if (state_ == State::kTaking || IsAway(now)) return std::nullopt;
    return lost_at_ + kNotAway;
  }

 private:
  State state_ = State::kTaking;
  Clock::time_point lost_at_{};
  std::optional<Clock::time_point> looked_at_;
  bool found_none_ = false;
};

/// Notices a device that takes no more sound, such as one that its sound server has suspended.
class Standstill {
 public:
  using Clock = std::chrono::steady_clock;
  /// A device asks for more before it has played what it holds. This long after that it is suspected of being
  /// stalled ...
  static constexpr Clock::duration kSuspected = std::chrono::milliseconds(600);
  /// ... and this long after that it is given up, because until then the whole program may have been held up.
  static constexpr Clock::duration kGivenUp = std::chrono::milliseconds(500);

  /// Whether the device is stalled at `now`, when all that it took has been played at `supplied_until`.
  [[nodiscard]] bool Check(Clock::time_point now, Clock::time_point supplied_until) {
    if (supplied_until != supplied_until_) suspected_at_.reset();
    supplied_until_ = supplied_until;
    if (now < supplied_until + kSuspected) return false;
    if (!suspected_at_) suspected_at_ = now;
    return now >= *suspected_at_ + kGivenUp;
  }
  /// When to check again.
  [[nodiscard]] Clock::time_point NextCheck(Clock::time_point supplied_until) const {
    const bool is_suspected = suspected_at_ && supplied_until == supplied_until_;
    return is_suspected ? *suspected_at_ + kGivenUp : supplied_until + kSuspected;
  }

 private:
  Clock::time_point supplied_until_{};
  std::optional<Clock::time_point> suspected_at_;
};

/// When the sound card may be taken without a sound server. A server that was there is waited for first: it
/// could not use a card that is taken meanwhile when it restarts.
class CardRule {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr Clock::duration kWaitForServer = std::chrono::seconds(30);

  void ServerAnswered() {
    server_seen_ = true;
    missing_since_.reset();
  }
  void ServerMissing(Clock::time_point now) {
    if (server_seen_ && !missing_since_) missing_since_ = now;
  }
  [[nodiscard]] bool MayTakeCard(Clock::time_point now) const {
    return !missing_since_ || now >= *missing_since_ + kWaitForServer;
  }

 private:
  bool server_seen_ = false;
  std::optional<Clock::time_point> missing_since_;
};

}  // namespace platform::gstreamer
