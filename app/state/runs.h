#pragma once
// Whether work that has waited is still wanted, or was overtaken, interrupted, or outlived its owner.
// Not the waiting itself (ports/message_loop.h).

#include <cstdint>
#include <memory>
#include <utility>

namespace app {

/// How long work may last: until End is called (a window begins to close) or the object is destroyed.
class Life {
 public:
  Life() = default;
  ~Life() { End(); }
  Life(const Life&) = delete;
  Life& operator=(const Life&) = delete;

  void End() { *ended_ = true; }
  [[nodiscard]] bool Ended() const { return *ended_; }

 private:
  friend class Runs;
  std::shared_ptr<bool> ended_ = std::make_shared<bool>(false);
};

/// The runs of one piece of work, of which only the newest counts. Code that waits asks its run after each
/// wait, before it touches anything:
///
///     const app::Runs::Run run = runs_.Begin();
///     ... a wait, in which anything can happen ...
///     if (!run.Wanted()) return;
class Runs {
 public:
  /// One run. May be asked after everything else is gone.
  class Run {
   public:
    /// False for good once a newer run has begun, this one was interrupted, the life that it belongs to has
    /// ended, or the Runs are gone.
    [[nodiscard]] bool Wanted() const { return *newest_ == number_ && !*ended_; }

   private:
    friend class Runs;
    Run(std::uint64_t number, std::shared_ptr<const std::uint64_t> newest, std::shared_ptr<const bool> ended)
        : number_(number), newest_(std::move(newest)), ended_(std::move(ended)) {}

    std::uint64_t number_;
    std::shared_ptr<const std::uint64_t> newest_;
    std::shared_ptr<const bool> ended_;
  };

  explicit Runs(const Life& life) : ended_(life.ended_) {}
  ~Runs() { Interrupt(); }
  Runs(const Runs&) = delete;
  Runs& operator=(const Runs&) = delete;

  /// From here on this run is the newest.
  Run Begin() { return {++*newest_, newest_, ended_}; }
  /// The run that is the newest now, for work that goes with it without overtaking it.
  [[nodiscard]] Run Newest() const { return {*newest_, newest_, ended_}; }
  /// The newest run is no longer wanted, and no other one takes its place.
  void Interrupt() { ++*newest_; }

 private:
  std::shared_ptr<std::uint64_t> newest_ = std::make_shared<std::uint64_t>(0);
  std::shared_ptr<const bool> ended_;
};

}  // namespace app
