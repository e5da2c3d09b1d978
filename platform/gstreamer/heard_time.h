#pragma once
// How long an item has been heard, over all its pipelines.
// Not a clock, and not safe to share between threads without a lock.

#include <algorithm>
#include <cstdint>

namespace platform::gstreamer {

/// Nanoseconds. The time never runs backwards until it restarts.
class HeardTime {
 public:
  /// What was played before the present pipeline. Valid until the next Restart, because asking the pipeline
  /// takes a while, in which the item may end or be stopped.
  struct Base {
    std::int64_t before;
    std::uint64_t restarts;
  };
  [[nodiscard]] Base Read() const { return {before_, restarts_}; }

  /// The time played when the present pipeline has played `present`, which was queried after Read.
  std::int64_t Reach(const Base& base, std::int64_t present) {
    if (base.restarts == restarts_) latest_ = std::max(latest_, base.before + present);
    return latest_;
  }

  /// A pipeline that has played this long is no longer the present one.
  void Add(std::int64_t played) { before_ += played; }
  void Restart() { *this = HeardTime(restarts_ + 1); }

  HeardTime() = default;

 private:
  explicit HeardTime(std::uint64_t restarts) : restarts_(restarts) {}

  std::int64_t before_ = 0;
  std::int64_t latest_ = 0;
  std::uint64_t restarts_ = 0;
};

}  // namespace platform::gstreamer
