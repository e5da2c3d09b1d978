#pragma once
// Events and subscriptions: how a control notifies its feature and its widget.
// Not thread-safe; everything runs on the user-interface thread.

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace controls {

/// Ends its subscription when destroyed; may outlive the event it belongs to.
class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
  Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      End();
      end_ = std::exchange(other.end_, nullptr);
    }
    return *this;
  }
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;
  ~Subscription() { End(); }

  void End() {
    if (auto end = std::exchange(end_, nullptr)) end();
  }

 private:
  std::function<void()> end_;
};

/// Several subscriptions with one lifetime.
class Subscriptions {
 public:
  void Add(Subscription subscription) { list_.push_back(std::move(subscription)); }
  Subscriptions& operator+=(Subscription subscription) {
    Add(std::move(subscription));
    return *this;
  }
  void Clear() { list_.clear(); }

 private:
  std::vector<Subscription> list_;
};

/// Calls its subscribers in the order in which they subscribed. A subscriber may subscribe, end any
/// subscription or destroy the event itself while it is called: an ended subscription is not called any more,
/// one that was added during a call is called from the next one on.
template <typename... Arguments>
class Event {
 public:
  using Handler = std::function<void(Arguments...)>;

  Event() : state_(std::make_shared<State>()) {}
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  [[nodiscard]] Subscription Subscribe(Handler handler) {
    auto slot = std::make_shared<Slot>(Slot{std::move(handler), true});
    state_->slots.push_back(slot);
    return Subscription([slot, state = std::weak_ptr<State>(state_)] {
      slot->active = false;
      if (auto live = state.lock()) std::erase(live->slots, slot);
    });
  }

  void Raise(Arguments... arguments) const {
    const auto slots = state_->slots;
    for (const auto& slot : slots) {
      if (slot->active) slot->handler(arguments...);
    }
  }

 private:
  struct Slot {
    Handler handler;
    bool active;
  };
  struct State {
    std::vector<std::shared_ptr<Slot>> slots;
  };
  std::shared_ptr<State> state_;
};

}  // namespace controls
