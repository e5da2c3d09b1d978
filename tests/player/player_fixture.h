#pragma once
// A player on a recording media framework, with its events kept as texts. Not for window tests.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/values/portable_property_values.h"
#include "player/mf_player.h"
#include "tests/support/fakes.h"
#include "tests/support/recording_media.h"

namespace player {

using test_support::RecordingMedia;
using Strings = std::vector<std::string>;

class PlayerTest : public testing::Test {
 protected:
  PlayerTest() {
    loop_.on_sleep = [this](std::uint32_t) { clock_.seconds_since_midnight += 0.125; };
  }

  /// A new player, its events recorded; everything before its first operation is left out of the record.
  std::shared_ptr<clsMFPlayer> MakePlayer() {
    auto player = MakeFreshPlayer();
    media_.TakeCalls();
    return player;
  }

  std::shared_ptr<clsMFPlayer> MakeFreshPlayer() {
    auto player = clsMFPlayer::Make(clsMFPlayer::Ports{media_, media_, values_, environment_, clock_, loop_},
                                    duration_);
    player->MediaFileIsReady = [this](bool IsReady) {
      events_.push_back(IsReady ? "ready true" : "ready false");
    };
    player->IsCreateOK = [this](std::int32_t lngIsOk) {
      events_.push_back("create " + std::to_string(lngIsOk));
    };
    return player;
  }

  /// A player with an open item, before its services are attached.
  std::shared_ptr<clsMFPlayer> MakeOpenPlayer() {
    auto player = MakePlayer();
    player->MediaFileFromUrl(u"http://radio/");
    Forget();
    return player;
  }

  /// A player with an open item and its services.
  std::shared_ptr<clsMFPlayer> MakeServedPlayer() {
    auto player = MakeOpenPlayer();
    player->CreateService();
    Forget();
    return player;
  }

  void Forget() {
    media_.TakeCalls();
    events_.clear();
  }

  RecordingMedia media_;
  platform::values::PortablePropertyValues values_;
  test_support::FakeEnvironment environment_;
  test_support::FakeClock clock_;
  test_support::FakeMessageLoop loop_;
  ProgramDuration duration_;
  Strings events_;
};

}  // namespace player
