#pragma once
// Listens to a private sound server and says how loud it is, by time.
// Not a meter of the program; it hears what a user would hear.

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/pulse_server.h"

namespace test_support {

/// Records the null sink's monitor from construction to destruction, in blocks of 10 ms.
class Loudness {
 public:
  using Clock = std::chrono::steady_clock;
  /// A sine of full scale has 0.707; quieter than this is silence.
  static constexpr double kSilence = 0.001;

  explicit Loudness(const PulseServer& server);
  ~Loudness();

  /// The root mean square (0 to 1) of the last `span`; 0 before anything arrived.
  [[nodiscard]] double Last(std::chrono::milliseconds span) const;
  /// Waits until sound (or silence) has lasted `span`.
  [[nodiscard]] bool WaitForSound(std::chrono::milliseconds span, std::chrono::milliseconds limit) const;
  [[nodiscard]] bool WaitForSilence(std::chrono::milliseconds span, std::chrono::milliseconds limit) const;
  /// When the first block with sound after `since` arrived.
  [[nodiscard]] std::optional<Clock::time_point> FirstSoundAfter(Clock::time_point since) const;
  /// How much sound arrived since `since`, and how much silence.
  [[nodiscard]] std::chrono::milliseconds SoundSince(Clock::time_point since) const;
  [[nodiscard]] std::chrono::milliseconds SilenceSince(Clock::time_point since) const;
  /// The strongest frequency of the last `span` in hertz, by counting zero crossings; for a lone sine.
  [[nodiscard]] double Frequency(std::chrono::milliseconds span) const;

 private:
  struct Block {
    Clock::time_point arrived;
    double level;
    int crossings;
  };
  void Record();
  [[nodiscard]] std::vector<Block> LastBlocks(std::chrono::milliseconds span) const;

  ChildProcess recorder_;
  mutable std::mutex mutex_;
  std::vector<Block> blocks_;
  std::atomic<bool> stopping_{false};
  std::thread thread_;
};

}  // namespace test_support
