#pragma once
// A look for a sound device on a thread of its own, because the system may take seconds to answer while its
// sound service restarts or a device connects. Not when to look (media/device_wait.h).

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace platform::win32 {

/// One look at a time. A look that is under way in the end is left behind.
class DeviceSearch {
 public:
  /// Whether a device takes sound. Called on a thread whose COM is initialised.
  using Look = std::function<bool()>;

  explicit DeviceSearch(Look look) : look_(std::move(look)) {}

  /// Returns at once; nothing happens while a look is under way.
  void Begin();
  /// What it has found, once; nothing before that.
  std::optional<bool> Take();
  /// Nothing that a look has found, or will find, matters any more.
  void Forget();

 private:
  enum class Stage : std::uint8_t { kUnderWay, kFound, kFoundNone };
  struct State {
    std::atomic<Stage> stage = Stage::kUnderWay;
  };

  const Look look_;
  std::shared_ptr<State> state_;  ///< of the look; null for none
  bool unwanted_ = false;
};

}  // namespace platform::win32
