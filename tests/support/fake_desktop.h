#pragma once
// Doubles of what the player asks of a desktop: what was shown there is kept, and commands come as a test
// wants. Not a bus.

#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "ports/media_controls.h"
#include "ports/notifications.h"
#include "ports/sleep_inhibitor.h"
#include "ports/turns.h"
#include "window/platform.h"

namespace test_support {

class FakeMediaControls final : public platform::MediaControls {
 public:
  void Appear(platform::MediaReceiver& to) override { receiver = &to; }
  void Publish(const platform::MediaState& state) override { published.push_back(state); }
  void Withdraw() override {
    receiver = nullptr;
    ++withdrawn;
  }
  [[nodiscard]] const platform::MediaState& Shown() const { return published.back(); }

  platform::MediaReceiver* receiver = nullptr;
  std::vector<platform::MediaState> published;
  int withdrawn = 0;
};

class FakeSleepInhibitor final : public platform::SleepInhibitor {
 public:
  void Hold() override { ++held; }
  void Release() override { ++released; }
  [[nodiscard]] bool Awake() const { return held > released; }
  int held = 0;
  int released = 0;
};

class FakeNotifications final : public platform::Notifications {
 public:
  void Show(const platform::Text& heading, const platform::Text& line) override {
    shown.emplace_back(heading, line);
    visible = true;
  }
  void Withdraw() override { visible = false; }
  std::vector<std::pair<platform::Text, platform::Text>> shown;
  bool visible = false;
};

/// Keeps what was handed over until the test runs it.
class FakeTurns final : public platform::Turns {
 public:
  struct Turn {
    std::function<void()> procedure;
    platform::TurnOnWait on_wait;
    platform::TurnWhenBlocked when_blocked;
  };
  void HandOver(std::function<void()> procedure, platform::TurnOnWait on_wait,
                platform::TurnWhenBlocked when_blocked) override {
    turns.push_back({std::move(procedure), on_wait, when_blocked});
  }
  /// Runs what waits, and what is handed over meanwhile.
  void Run() {
    while (!turns.empty()) RunNext();
  }
  void RunNext() {
    const Turn next = std::move(turns.front());
    turns.pop_front();
    next.procedure();
  }
  /// As turns that come while a dialog blocks the window.
  void RunBlocked() {
    while (!turns.empty()) {
      const Turn next = std::move(turns.front());
      turns.pop_front();
      if (next.when_blocked == platform::TurnWhenBlocked::kRuns) next.procedure();
    }
  }
  std::deque<Turn> turns;
};

struct FakeDesktop {
  window::DesktopPorts Ports() { return {media_controls, sleep_inhibitor, notifications, turns}; }

  FakeMediaControls media_controls;
  FakeSleepInhibitor sleep_inhibitor;
  FakeNotifications notifications;
  FakeTurns turns;
};

}  // namespace test_support
