#pragma once
// Remembers which addresses stayed silent, so that they are not asked, and waited for, again and again.
// Not for asking; the header query and the title readers ask here before they do.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "ports/clock.h"
#include "stream/query_failure.h"
#include "stream/text_pieces.h"

namespace stream {

/// How long the client waits for a server.
enum class Patience : std::uint8_t {
  kOfAWindow,    ///< briefly, because the window takes no input meanwhile; silent addresses are remembered
  kOfARecording  ///< as long as the internet library does, every time
};

/// The two queries, each waited for and remembered separately: many a server answers one connection and
/// leaves the next one waiting.
enum class Question : std::uint8_t { kHeaders, kTitle };

/// How long to wait for an address that was silent when the user wants it once more.
enum class Wait : std::uint8_t { kFull, kBrief };

/// An address that has failed to answer in time fails at once for the next 10 seconds, after each further
/// silence for 20, 40 and then always 60 seconds; an answer resets this. While the headers of an address are
/// silent, so is its title. Addresses are compared as they are, not by their host: behind one name there can
/// be many stations, of which one hangs.
class SilentAddresses {
 public:
  static constexpr std::uint32_t kFullWait = 3000;   ///< milliseconds, for an address that has answered last
  static constexpr std::uint32_t kBriefWait = 1250;  ///< milliseconds, for one that was silent last
  /// A failure that came sooner (in seconds) is not silence: the address may as well be asked again. Nor is a
  /// wait that was given up.
  static constexpr double kSoon = 0.25;
  /// Beyond this number, the address whose latest silence is the oldest is forgotten.
  static constexpr std::size_t kMost = 256;

  explicit SilentAddresses(platform::Clock& clock, Patience patience = Patience::kOfAWindow)
      : clock_(clock), patience_(patience) {}

  /// A query that is about to be sent.
  struct Attempt {
    std::uint32_t milliseconds = 0;  ///< the longest wait; 0: the internet library's own
    double began = 0;                ///< on the clock of the day
  };
  /// Nothing when the address must not be asked now. Otherwise Answered or Failed follows.
  std::optional<Attempt> Begin(Question question, TextView address);
  void Answered(Question question, TextView address);
  void Failed(Question question, TextView address, const Attempt& attempt, QueryFailure failure);

  /// The user wants the address: each query may be sent once more, however silent it was.
  void TryAgain(TextView address, Wait wait);

  /// Whether Begin would refuse a query for the headers.
  [[nodiscard]] bool IsSilent(TextView address) const;
  /// Of the latest silence of the headers; kNone when it is not remembered.
  [[nodiscard]] QueryFailure FailureOf(TextView address) const;

 private:
  struct Silence {
    int times = 0;           ///< in a row; 0: none
    std::int64_t since = 0;  ///< the latest one, in whole seconds
    QueryFailure failure;
    std::optional<Wait> one_more_try;
  };
  struct Entry {
    Text address;
    std::array<Silence, 2> silences;  ///< by question
    Silence& Of(Question question) { return silences[static_cast<std::size_t>(question)]; }
    [[nodiscard]] const Silence& Of(Question question) const {
      return silences[static_cast<std::size_t>(question)];
    }
  };

  [[nodiscard]] const Entry* Find(TextView address) const;
  [[nodiscard]] Entry* Find(TextView address);
  /// The entry as it is, or a new one, taken out of the list.
  Entry Take(TextView address);
  [[nodiscard]] bool IsRunning(const Silence& silence) const;
  [[nodiscard]] double SecondsSince(double began) const;

  platform::Clock& clock_;
  Patience patience_;
  std::vector<Entry> entries_;  ///< the one with the latest silence last
};

}  // namespace stream
