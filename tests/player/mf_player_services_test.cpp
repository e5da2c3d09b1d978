// Attaching volume, metadata and the meter of this program's sound.
#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <ostream>
#include <string>

#include "player/media_ids.h"
#include "ports/media_interfaces.h"
#include "tests/player/player_fixture.h"

namespace player {
namespace {

using testing::Contains;
using testing::Not;

using PlayerServicesTest = PlayerTest;

const Strings kVolumeCalls = {"MFGetService(session, MR_POLICY_VOLUME_SERVICE, IMFSimpleAudioVolume)"};
const Strings kMetadataCalls = {
    "MFGetService(session, MF_METADATA_PROVIDER_SERVICE, IMFMetadataProvider)",
    "provider.GetMFMetadata(descriptor, 0, 0, out)",
    "provider.Release()",
};
const Strings kMeterCalls = {
    "CoCreateInstance(MMDeviceEnumerator, none, 1, IMMDeviceEnumerator)",
    "enumerator.GetDefaultAudioEndpoint(0, 1, out)",
    "device.Activate(IAudioSessionManager2, 23, none, out)",
    "manager.GetSessionEnumerator(out)",
    "sessions.GetCount(out)",
    "sessions.GetSession(0, out)",
    "control 0.QueryInterface(IAudioSessionControl2, out)",
    "control2 0.GetProcessId(out)",
    "control2 0.QueryInterface(IAudioMeterInformation, out)",
    "control2 0.Release()",
    "control 0.Release()",
    "sessions.Release()",
    "manager.Release()",
    "device.Release()",
    "enumerator.Release()",
};

Strings Joined(std::initializer_list<Strings> lists) {
  Strings all;
  for (const Strings& list : lists) all.insert(all.end(), list.begin(), list.end());
  return all;
}

TEST_F(PlayerServicesTest, WithoutASessionItIsFalseWithoutWaiting) {
  const auto player = MakePlayer();
  EXPECT_FALSE(player->CreateService());
  EXPECT_EQ(loop_.pumps, 0);
  EXPECT_EQ(media_.TakeCalls(), Strings{});
}

TEST_F(PlayerServicesTest, WaitsHalfASecondFirstAndAsksForEachServiceOnce) {
  const auto player = MakeOpenPlayer();
  loop_.on_pump = [this] { EXPECT_EQ(media_.TakeCalls(), Strings{}); };
  EXPECT_TRUE(player->CreateService());
  EXPECT_EQ(loop_.pumps, 4) << "rounds of an eighth of a second";
  EXPECT_EQ(media_.TakeCalls(), Joined({kVolumeCalls, kMetadataCalls, kMeterCalls}));
}

TEST_F(PlayerServicesTest, TheWaitIsHalfASecondAndNotShorter) {
  const auto player = MakeOpenPlayer();
  constexpr double kSlice = 1.0 / 64;
  loop_.on_sleep = [this](std::uint32_t) { clock_.seconds_since_midnight += kSlice; };
  player->CreateService();
  EXPECT_EQ(loop_.pumps, 32);
}

TEST_F(PlayerServicesTest, VolumeAloneIsEnough) {
  const auto player = MakeOpenPlayer();
  media_.has_metadata = false;
  EXPECT_TRUE(player->CreateService());
  EXPECT_THAT(media_.LiveHandles(), Contains("volume"));
  EXPECT_EQ(media_.TakeCalls(), Joined({kVolumeCalls, {kMetadataCalls[0]}, kMeterCalls}));
}

TEST_F(PlayerServicesTest, MetadataAloneAreEnough) {
  const auto player = MakeOpenPlayer();
  media_.has_volume = false;
  EXPECT_TRUE(player->CreateService());
  EXPECT_THAT(media_.LiveHandles(), Contains("metadata"));
}

TEST_F(PlayerServicesTest, MeterAloneIsNotEnoughButIsAttached) {
  const auto player = MakeOpenPlayer();
  media_.has_volume = false;
  media_.has_metadata = false;
  EXPECT_FALSE(player->CreateService());
  EXPECT_EQ(player->GetAudioChannelCount(), 2);
}

TEST_F(PlayerServicesTest, ProviderIsReleasedAlsoWhenItHasNoMetadata) {
  const auto player = MakeOpenPlayer();
  media_.has_volume = false;
  media_.faults["IMFMetadataProvider::GetMFMetadata"] = platform::kEFail;
  EXPECT_FALSE(player->CreateService());
  EXPECT_THAT(media_.LiveHandles(), Not(Contains("provider")));
  EXPECT_THAT(media_.LiveHandles(), Not(Contains("metadata")));
}

TEST_F(PlayerServicesTest, MissingMeterDoesNotChangeTheResult) {
  const auto player = MakeOpenPlayer();
  media_.audio_sessions.clear();
  EXPECT_TRUE(player->CreateService());
  EXPECT_EQ(player->GetAudioChannelCount(), 0);
}

TEST_F(PlayerServicesTest, AttachingTwiceLeavesOneOfEach) {
  const auto player = MakeServedPlayer();
  EXPECT_TRUE(player->CreateService());
  EXPECT_EQ(media_.LiveHandles(),
            (Strings{"source", "descriptor", "session", "clock", "volume#2", "metadata#2", "meter#2"}));
}

TEST_F(PlayerServicesTest, FirstMatchingSessionWins) {
  const auto player = MakeOpenPlayer();
  media_.audio_sessions = {{1}, {4711}, {4711}};
  player->CreateService();
  EXPECT_THAT(media_.Calls(), Contains("control2 1.QueryInterface(IAudioMeterInformation, out)"));
  EXPECT_THAT(media_.Calls(), Not(Contains("sessions.GetSession(2, out)")));
  EXPECT_EQ(player->GetAudioChannelCount(), 2);
}

TEST_F(PlayerServicesTest, SessionsOfOtherProgramsAreGivenBackEachRound) {
  const auto player = MakeOpenPlayer();
  media_.audio_sessions = {{1}, {2}};
  player->CreateService();
  const Strings calls = media_.TakeCalls();
  const auto first = std::find(calls.begin(), calls.end(), "sessions.GetSession(0, out)");
  ASSERT_GE(calls.end() - first, 6);
  EXPECT_EQ(Strings(first, first + 6),
            (Strings{"sessions.GetSession(0, out)", "control 0.QueryInterface(IAudioSessionControl2, out)",
                     "control2 0.GetProcessId(out)", "control2 0.Release()", "control 0.Release()",
                     "sessions.GetSession(1, out)"}));
  EXPECT_EQ(player->GetAudioChannelCount(), 0);
}

TEST_F(PlayerServicesTest, OwnSessionWithoutAMeterIsPassedOver) {
  const auto player = MakeOpenPlayer();
  media_.audio_sessions = {{4711, true, false}, {4711, false, true}, {4711}};
  player->CreateService();
  EXPECT_THAT(media_.Calls(), Contains("control2 2.QueryInterface(IAudioMeterInformation, out)"));
  EXPECT_EQ(player->GetAudioChannelCount(), 2);
}

TEST_F(PlayerServicesTest, ProcessNumbersAreComparedInAll32Bits) {
  const auto player = MakeOpenPlayer();
  environment_.process_id = 0xFFFFFFF0u;
  media_.audio_sessions = {{0xFFFFFFF0u}};
  player->CreateService();
  EXPECT_EQ(player->GetAudioChannelCount(), 2);
}

/// Each way the search for the meter can end early, with the calls that are still to be made.
struct EarlyEnd {
  std::string operation;
  std::size_t calls_made;
  Strings released;

  friend std::ostream& operator<<(std::ostream& out, const EarlyEnd& end) { return out << end.operation; }
};

class MeterSearchTest : public PlayerTest, public testing::WithParamInterface<EarlyEnd> {};

TEST_P(MeterSearchTest, EndsAtTheFirstFailureAndGivesEverythingBack) {
  const auto player = MakeOpenPlayer();
  media_.has_metadata = false;
  media_.faults[GetParam().operation] = platform::kEFail;
  EXPECT_TRUE(player->CreateService());
  const Strings made(kMeterCalls.begin(),
                     kMeterCalls.begin() + static_cast<std::ptrdiff_t>(GetParam().calls_made));
  EXPECT_EQ(media_.TakeCalls(), Joined({kVolumeCalls, {kMetadataCalls[0]}, made, GetParam().released}));
  float peak = 0.25f;
  EXPECT_FALSE(player->GetAudioPeak(peak));
  EXPECT_EQ(peak, 0.25f);
}

INSTANTIATE_TEST_SUITE_P(
    , MeterSearchTest,
    testing::Values(EarlyEnd{"CoCreateInstance", 1, {}},
                    EarlyEnd{"IMMDeviceEnumerator::GetDefaultAudioEndpoint", 2, {"enumerator.Release()"}},
                    EarlyEnd{"IMMDevice::Activate", 3, {"device.Release()", "enumerator.Release()"}},
                    EarlyEnd{"IAudioSessionManager2::GetSessionEnumerator",
                             4,
                             {"manager.Release()", "device.Release()", "enumerator.Release()"}},
                    EarlyEnd{"IAudioSessionEnumerator::GetCount",
                             5,
                             {"sessions.Release()", "manager.Release()", "device.Release()",
                              "enumerator.Release()"}}),
    [](const auto& test) { return test.param.operation.substr(test.param.operation.rfind(':') + 1); });

TEST_F(PlayerServicesTest, CreateInterfaceGivesTheObjectToItsReceiver) {
  const auto player = MakePlayer();
  InterfaceHandle created{};
  EXPECT_TRUE(player->CreateInterface(Text(media_ids::kMMDeviceEnumerator),
                                      Text(media_ids::kIMMDeviceEnumerator), created));
  EXPECT_EQ(media_.LiveHandles(), (Strings{"enumerator"}));
  EXPECT_FALSE(player->CreateInterface(u"", u"", created));
  EXPECT_NE(created, InterfaceHandle::kNone);
  media_.DispCallFunc(created, platform::Interface::kUnknown, platform::IUnknown::Release.slot, {});
}

}  // namespace
}  // namespace player
