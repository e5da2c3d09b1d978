// Every single call going wrong in turn, once or always: described results, and nothing lost.
#include <cstddef>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "tests/player/player_fixture.h"

namespace player {
namespace {

/// One round over two items that uses every operation of the player.
class PlayerFaultsTest : public PlayerTest {
 protected:
  struct Seen {
    bool ready = false;
    bool served = false;
    bool played = false;
  };

  void Prepare() {
    media_.SetMetadata({{u"Title", u"Morgenmagazin"}});
    media_.duration = 10'000'000;
    media_.streams = {{1, test_support::kAudioType}, {1, test_support::kVideoType}};
    media_.audio_sessions = {{1}, {4711}};
  }

  Seen Round() {
    Prepare();
    auto player = MakeFreshPlayer();
    player->MediaFileFromIStream(platform::StreamObject{12});
    Use(*player);
    player->MediaFileFromUrl(u"http://radio/");
    return Use(*player);
  }

  Seen Use(clsMFPlayer& player) {
    Seen seen;
    seen.ready = player.IsMediaReady();
    seen.served = player.CreateService();
    seen.played = player.PlayMedia();
    player.PauseMedia();
    player.PlayState();
    player.CurrentPlayPosition();
    Text text;
    std::vector<Text> names;
    player.GetAllMetadataNames(names);
    player.GetMetadata(u"Title", text);
    float peak = 0.0f;
    std::vector<float> peaks;
    player.GetAudioPeak(peak);
    player.GetAudioChannelsPeakValues(player.GetAudioChannelCount(), peaks);
    player.SetAudioSimpleMute(player.GetAudioSimpleMute() == 0);
    player.SetAudioAudioVolume(0.5f);
    player.GetAudioSimpleAudioVolume();
    player.StopMedia();
    return seen;
  }

  void ExpectNothingLost() {
    EXPECT_EQ(media_.LiveHandles(), Strings{});
    EXPECT_EQ(media_.Misuses(), Strings{});
  }
};

TEST_F(PlayerFaultsTest, TheRoundUsesEveryOperation) {
  const Seen seen = Round();
  EXPECT_TRUE(seen.ready && seen.served && seen.played);
  std::set<std::string> operations;
  for (const std::string& call : media_.Calls()) {
    const std::size_t dot = call.find('.');
    const std::size_t begin = dot < call.find('(') ? dot + 1 : 0;
    operations.insert(call.substr(begin, call.find('(') - begin));
  }
  // 41 operations of objects (two of them are called Shutdown), 10 functions and the creation by class.
  EXPECT_EQ(operations.size(), 40u + 10u + 1u);
  ExpectNothingLost();
}

TEST_F(PlayerFaultsTest, EveryCallFailingOnceLosesNothing) {
  Round();
  const std::size_t calls = media_.CallCount();
  ASSERT_GT(calls, 150u);
  for (std::size_t number = 1; number <= calls; ++number) {
    media_.fault_at = media_.CallCount() + number;
    media_.fault = platform::kEFail;
    const std::size_t before = media_.Calls().size();
    Round();
    ExpectNothingLost();
    ASSERT_FALSE(HasFailure()) << "failing " << media_.Calls()[before + number - 1];
  }
}

TEST_F(PlayerFaultsTest, EveryCallBeingImpossibleOnceLosesNothing) {
  Round();
  const std::size_t calls = media_.CallCount();
  for (std::size_t number = 1; number <= calls; ++number) {
    media_.fault_at = media_.CallCount() + number;
    media_.fault = RecordingMedia::kImpossible;
    const std::size_t before = media_.Calls().size();
    Round();
    ExpectNothingLost();
    ASSERT_FALSE(HasFailure()) << "impossible " << media_.Calls()[before + number - 1];
  }
}

/// What becomes of the address form when an operation always fails.
struct Consequence {
  std::string operation;
  bool ready;
  bool served;
  bool played;
  Strings events;

  friend std::ostream& operator<<(std::ostream& out, const Consequence& consequence) {
    return out << consequence.operation;
  }
};

class PlayerConsequenceTest : public PlayerFaultsTest, public testing::WithParamInterface<Consequence> {};

const Strings kFailedBeforeReport = {"ready false"};
const Strings kFailedAfterReport = {"ready false", "create 0"};
const Strings kOpened = {"ready false", "create 0", "ready false"};

TEST_P(PlayerConsequenceTest, FailingAlwaysGivesTheDescribedResultAndLosesNothing) {
  const Consequence& expected = GetParam();
  Prepare();
  media_.faults[expected.operation] = platform::kEFail;
  {
    auto player = MakeFreshPlayer();
    player->MediaFileFromUrl(u"http://radio/");
    EXPECT_EQ(events_, expected.events);
    const Seen seen = Use(*player);
    EXPECT_EQ(seen.ready, expected.ready);
    EXPECT_EQ(seen.served, expected.served);
    EXPECT_EQ(seen.played, expected.played);
  }
  ExpectNothingLost();
}

constexpr bool kYes = true;
constexpr bool kNo = false;

INSTANTIATE_TEST_SUITE_P(
    , PlayerConsequenceTest,
    testing::Values(
        Consequence{"MFStartup", kYes, kYes, kYes, kOpened},
        Consequence{"MFCreateSourceResolver", kNo, kNo, kNo, kFailedBeforeReport},
        Consequence{"IMFSourceResolver::CreateObjectFromURL", kNo, kNo, kNo, kFailedBeforeReport},
        Consequence{"IMFMediaSource::CreatePresentationDescriptor", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"MFCreateTopology", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFPresentationDescriptor::GetStreamDescriptorCount", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFPresentationDescriptor::GetStreamDescriptorByIndex", kNo, kNo, kNo,
                    kFailedAfterReport},
        Consequence{"MFCreateTopologyNode", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFTopologyNode::SetUnknown", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFStreamDescriptor::GetMediaTypeHandler", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFMediaTypeHandler::GetMajorType", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"MFCreateVideoRendererActivate", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"MFCreateAudioRendererActivate", kYes, kYes, kYes, kOpened},
        Consequence{"IMFTopologyNode::SetObject", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFActivate::ShutdownObject", kYes, kYes, kYes, kOpened},
        Consequence{"IMFTopology::AddNode", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFTopologyNode::ConnectOutput", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"MFCreateMediaSession", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFMediaSession::SetTopology", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFMediaSession::GetClock", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IMFPresentationDescriptor::GetUINT64", kYes, kYes, kYes, kOpened},
        Consequence{"MFGetService", kYes, kNo, kYes, kOpened},
        Consequence{"IMFMetadataProvider::GetMFMetadata", kYes, kYes, kYes, kOpened},
        Consequence{"CoCreateInstance", kYes, kYes, kYes, kOpened},
        Consequence{"IMFMediaSession::Start", kYes, kYes, kNo, kOpened},
        Consequence{"IMFMediaSession::Shutdown", kYes, kYes, kYes, kOpened},
        Consequence{"IMFMediaSource::Shutdown", kYes, kYes, kYes, kOpened},
        Consequence{"MFShutdown", kYes, kYes, kYes, kOpened}),
    [](const auto& test) {
      std::string name = test.param.operation;
      std::erase(name, ':');
      return name;
    });

}  // namespace
}  // namespace player
