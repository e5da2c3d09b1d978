// What may happen inside the player's own calls: another opening, and the window releasing the player.
#include <utility>

#include "tests/player/player_fixture.h"

namespace player {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

using PlayerReentryTest = PlayerTest;

TEST_F(PlayerReentryTest, WaitThatWasOvertakenByAnotherOpeningAttachesNothing) {
  const auto player = MakeOpenPlayer();
  loop_.on_pump = [&] {
    if (loop_.pumps == 2) player->MediaFileFromUrl(u"http://other/");
  };
  EXPECT_FALSE(player->CreateService());
  EXPECT_EQ(media_.LiveHandles(), (Strings{"source#2", "descriptor#2", "session#2", "clock#2"}));
  EXPECT_TRUE(player->IsMediaReady());
}

TEST_F(PlayerReentryTest, WaitWhoseItemWasClosedAttachesNothing) {
  const auto player = MakeOpenPlayer();
  media_.open_result = platform::kEFail;
  loop_.on_pump = [&] {
    if (loop_.pumps == 1) player->MediaFileFromUrl(u"http://other/");
  };
  EXPECT_FALSE(player->CreateService());
  EXPECT_THAT(media_.TakeCalls(), Not(Contains(HasSubstr("MFGetService"))));
  EXPECT_EQ(media_.LiveHandles(), Strings{});
}

TEST_F(PlayerReentryTest, WholePlayInsideTheWaitKeepsItsOwnServices) {
  const auto player = MakeOpenPlayer();
  bool inner = false;
  loop_.on_pump = [&] {
    if (loop_.pumps != 1) return;
    player->MediaFileFromUrl(u"http://other/");
    inner = player->CreateService() && player->PlayMedia();
  };
  EXPECT_FALSE(player->CreateService());
  EXPECT_TRUE(inner);
  EXPECT_EQ(media_.LiveHandles(),
            (Strings{"source#2", "descriptor#2", "session#2", "clock#2", "volume", "metadata", "meter"}));
  EXPECT_EQ(player->PlayState(), kPlayStateRunning);
}

TEST_F(PlayerReentryTest, StopInsideTheWaitDoesNotDisturbTheServices) {
  const auto player = MakeOpenPlayer();
  loop_.on_pump = [&] { player->StopMedia(); };
  EXPECT_TRUE(player->CreateService());
}

TEST_F(PlayerReentryTest, PlayerReleasedInTheWaitLivesUntilTheCallReturnsAndAsksForNothing) {
  auto owner = MakeOpenPlayer();
  clsMFPlayer& player = *owner;
  bool alive_after_release = false;
  loop_.on_pump = [&] {
    if (loop_.pumps != 2) return;
    owner.reset();
    alive_after_release = player.IsMediaReady();
  };
  EXPECT_FALSE(player.CreateService());
  EXPECT_TRUE(alive_after_release);
  const Strings calls = media_.TakeCalls();
  EXPECT_THAT(calls, Not(Contains(HasSubstr("MFGetService"))));
  EXPECT_EQ(calls.back(), "MFShutdown()");
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(PlayerReentryTest, PlayerReleasedInTheReadyEventOpensNothing) {
  auto owner = MakeOpenPlayer();
  clsMFPlayer& player = *owner;
  player.MediaFileIsReady = [&](bool) { owner.reset(); };
  player.MediaFileFromUrl(u"http://other/");
  EXPECT_THAT(media_.TakeCalls(), Not(Contains("MFCreateSourceResolver()")));
  EXPECT_EQ(media_.LiveHandles(), Strings{});
}

TEST_F(PlayerReentryTest, PlayerReleasedInTheCreateEventGivesEverythingBack) {
  auto owner = MakePlayer();
  clsMFPlayer& player = *owner;
  player.IsCreateOK = [&](std::int32_t) { owner.reset(); };
  player.MediaFileFromUrl(u"http://radio/");
  EXPECT_EQ(events_, (Strings{"ready false"}));
  EXPECT_EQ(media_.Calls().back(), "MFShutdown()");
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(PlayerReentryTest, PlayerReleasedInTheLastEventGivesEverythingBack) {
  auto owner = MakePlayer();
  clsMFPlayer& player = *owner;
  player.MediaFileIsReady = [&](bool IsReady) {
    if (IsReady) owner.reset();
  };
  player.MediaFileFromIStream(platform::StreamObject{12});
  EXPECT_EQ(owner, nullptr);
  EXPECT_EQ(media_.Calls().back(), "MFShutdown()");
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(PlayerReentryTest, NewestOpeningWinsWhenTheReadyEventOpensAnother) {
  const auto player = MakePlayer();
  bool nested = false;
  player->MediaFileIsReady = [&](bool) {
    if (!std::exchange(nested, true)) player->MediaFileFromUrl(u"http://newer/");
  };
  player->MediaFileFromUrl(u"http://older/");
  EXPECT_TRUE(player->IsMediaReady());
  EXPECT_THAT(media_.TakeCalls(), Not(Contains(HasSubstr("older"))));
  EXPECT_EQ(media_.LiveHandles(), (Strings{"source", "descriptor", "session", "clock"}));
}

TEST_F(PlayerReentryTest, NewestOpeningWinsWhenTheCreateEventOpensAnother) {
  const auto player = MakePlayer();
  bool nested = false;
  player->IsCreateOK = [&](std::int32_t) {
    if (!std::exchange(nested, true)) player->MediaFileFromUrl(u"http://newer/");
  };
  player->MediaFileFromUrl(u"http://older/");
  EXPECT_TRUE(player->IsMediaReady());
  EXPECT_EQ(events_, (Strings{"ready false", "ready false", "ready false"}));
  EXPECT_EQ(media_.LiveHandles(), (Strings{"source", "descriptor", "session", "clock"}));
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(PlayerReentryTest, HandlerMayReplaceItselfWhileItRuns) {
  const auto player = MakePlayer();
  int calls = 0;
  player->MediaFileIsReady = [&, guard = std::string(100, 'x')](bool) {
    ++calls;
    player->MediaFileIsReady = nullptr;
    EXPECT_EQ(guard.size(), 100u);
  };
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_EQ(calls, 1);
}

TEST_F(PlayerReentryTest, AddressThatTheHandlerOverwritesIsStillTheOneThatWasGiven) {
  const auto player = MakePlayer();
  Text current_address = u"http://given/";
  player->MediaFileIsReady = [&](bool) { current_address = u"http://changed/"; };
  player->MediaFileFromUrl(current_address);
  EXPECT_THAT(media_.TakeCalls(), Contains(HasSubstr("http://given/")));
}

TEST_F(PlayerReentryTest, PlayerOnTheStackWorksToo) {
  {
    clsMFPlayer player({media_, media_, values_, environment_, clock_, loop_}, duration_);
    player.MediaFileFromUrl(u"http://radio/");
    EXPECT_TRUE(player.CreateService());
  }
  EXPECT_EQ(media_.LiveHandles(), Strings{});
}

}  // namespace
}  // namespace player
