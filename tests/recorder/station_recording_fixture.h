#pragma once
// What the tests of a whole recording share: the rig, and short ways to run it and to look at its attempts.
// Not for expectations.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "recorder/station_recording.h"
#include "tests/recorder/recorder_rig.h"

namespace recorder {

class Recording : public testing::Test {
 protected:
  /// Every phase once, in the order in which it was reported.
  void KeepPhases() {
    reported_ = rig_.recording.Changed.Subscribe([this] {
      const Phase phase = rig_.recording.GetStatus().phase;
      if (phases_.empty() || phases_.back() != phase) phases_.push_back(phase);
    });
  }
  const Status& Run(const Text& link = kLink) {
    rig_.recording.Run(link);
    return rig_.recording.GetStatus();
  }
  int Calls(const std::string& operation) const {
    return static_cast<int>(
        std::count_if(rig_.internet.calls.begin(), rig_.internet.calls.end(),
                      [&](const std::string& call) { return call.starts_with(operation + "("); }));
  }
  int Connections() const { return Calls("InternetOpenUrlW"); }
  int Queries() const { return Calls("HttpSendRequestW"); }
  /// The user ends it as soon as it waits for the next attempt.
  void StopInTheFirstPause() {
    rig_.loop.on_sleep = [this](std::uint32_t) { rig_.recording.Stop(); };
  }
  /// Runs at the beginning of every attempt with its number, from 1.
  void AtEachAttempt(const std::function<void(int)>& act) {
    attempts_ = rig_.recording.Changed.Subscribe([this, act, number = 0]() mutable {
      if (rig_.recording.GetStatus().phase == Phase::kConnecting) act(++number);
    });
  }

  RecorderRig rig_;
  std::vector<Phase> phases_;
  controls::Subscription reported_;
  controls::Subscription attempts_;
};

}  // namespace recorder
