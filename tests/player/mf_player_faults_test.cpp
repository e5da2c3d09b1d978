// Every single call going wrong in turn, once or always: described results, and nothing lost.
#include <algorithm>
#include <cstddef>
#include <ostream>
#include <set>
#include <string>
#include <utility>
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
    friend bool operator==(const Seen&, const Seen&) = default;
  };
  struct Outcome {
    Seen stream;
    Strings stream_events;
    Seen address;
    Strings address_events;
  };

  void Prepare() {
    media_.SetMetadata({{u"Title", u"Morgenmagazin"}});
    media_.duration = 10'000'000;
    media_.streams = {{1, test_support::kAudioType}, {1, test_support::kVideoType}};
    media_.audio_sessions = {{1}, {4711}};
  }

  /// Both forms of opening, one after the other on one player.
  Outcome Round() {
    Prepare();
    Outcome outcome;
    events_.clear();
    auto player = MakeFreshPlayer();
    player->MediaFileFromIStream(platform::StreamObject{12});
    outcome.stream_events = std::exchange(events_, {});
    outcome.stream = Use(*player);
    player->MediaFileFromUrl(u"http://radio/");
    outcome.address_events = std::exchange(events_, {});
    outcome.address = Use(*player);
    EXPECT_EQ(events_, Strings{}) << "using an item raises nothing";
    return outcome;
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
  const Outcome outcome = Round();
  EXPECT_EQ(outcome.stream, (Seen{true, true, true}));
  EXPECT_EQ(outcome.address, (Seen{true, true, true}));
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

/// One call of a round without a fault, and what its going wrong means.
struct CallOfRound {
  std::string call;
  int opening = 0;  ///< 1 while the stream object is opened or used, 2 for the address; 0 before both
  /// The first of the two streams; the second one decides alone.
  bool in_first_branch = false;

  [[nodiscard]] bool Is(const Strings& names) const {
    return std::any_of(names.begin(), names.end(),
                       [this](const std::string& name) { return call.find(name) != std::string::npos; });
  }
};

std::vector<CallOfRound> Located(const Strings& calls) {
  std::vector<CallOfRound> located;
  CallOfRound place;
  for (const std::string& call : calls) {
    place.call = call;
    if (place.Is({"MFCreateSourceResolver"})) ++place.opening;
    if (place.Is({"GetStreamDescriptorByIndex(0"})) place.in_first_branch = true;
    if (place.Is({"GetStreamDescriptorByIndex(1"})) place.in_first_branch = false;
    located.push_back(place);
  }
  return located;
}

/// The operations that an opening needs, when they fail and when they cannot be called. One that cannot be
/// called counts as done, so that only those matter whose output is missing then.
const Strings kNeededToSucceed = {"MFCreateSourceResolver",
                                  "CreateObjectFromURL",
                                  "MFCreateMFByteStreamOnStream",
                                  "CreateObjectFromByteStream",
                                  "(IMFMediaSource",
                                  "MFCreateTopology",
                                  "CreatePresentationDescriptor",
                                  "GetStreamDescriptorCount",
                                  "SetUnknown",
                                  "GetMediaTypeHandler",
                                  "GetStreamDescriptorByIndex",
                                  "GetMajorType",
                                  "SetObject",
                                  "MFCreateVideoRenderer",
                                  "AddNode",
                                  "ConnectOutput",
                                  "SetTopology",
                                  "MFCreateMediaSession",
                                  "GetClock"};
const Strings kNeededToBeCalled = {
    "CreateObjectFromURL",      "CreateObjectFromByteStream",   "(IMFMediaSource",
    "GetStreamDescriptorCount", "CreatePresentationDescriptor", "GetStreamDescriptorByIndex"};

class PlayerSingleFaultTest : public PlayerFaultsTest,
                              public testing::WithParamInterface<RecordingMedia::Fault> {
 protected:
  [[nodiscard]] bool Fails() const { return GetParam() != RecordingMedia::kImpossible; }

  [[nodiscard]] Seen ExpectedOf(int opening, const CallOfRound& fault) const {
    const Strings& needed = Fails() ? kNeededToSucceed : kNeededToBeCalled;
    const bool hit = fault.opening == opening && !fault.in_first_branch;
    const bool ready = !(hit && fault.Is(needed));
    const bool started =
        !(Fails() && fault.opening == opening && fault.Is({"session.Start", "session#2.Start"}));
    return {ready, ready, ready && started};
  }
  [[nodiscard]] Strings EventsOfAddress(const CallOfRound& fault) const {
    if (ExpectedOf(2, fault).ready) return {"ready false", "create 0", "ready false"};
    const bool before_report = fault.Is({"MFCreateSourceResolver", "CreateObjectFromURL"});
    // An opening that cannot be called counts as one that succeeded.
    return before_report && Fails() ? Strings{"ready false"} : Strings{"ready false", "create 0"};
  }
  [[nodiscard]] Strings EventsOfStream(const CallOfRound& fault) const {
    return ExpectedOf(1, fault).ready ? Strings{"ready false", "ready true"} : Strings{"ready false"};
  }
};

TEST_P(PlayerSingleFaultTest, EachCallGoingWrongOnceGivesTheDescribedResultsAndEventsAndLosesNothing) {
  Round();
  const std::vector<CallOfRound> calls = Located(media_.Calls());
  ASSERT_EQ(calls.size(), media_.CallCount());
  ASSERT_GT(calls.size(), 150u);
  for (std::size_t number = 1; number <= calls.size(); ++number) {
    const CallOfRound& fault = calls[number - 1];
    media_.fault_at = media_.CallCount() + number;
    media_.fault = GetParam();
    const Outcome outcome = Round();
    EXPECT_EQ(outcome.stream_events, EventsOfStream(fault));
    EXPECT_EQ(outcome.address_events, EventsOfAddress(fault));
    EXPECT_EQ(outcome.stream, ExpectedOf(1, fault));
    EXPECT_EQ(outcome.address, ExpectedOf(2, fault));
    ExpectNothingLost();
    ASSERT_FALSE(HasFailure()) << "call " << number << ": " << fault.call;
  }
}

INSTANTIATE_TEST_SUITE_P(, PlayerSingleFaultTest,
                         testing::Values(RecordingMedia::Fault(platform::kEFail),
                                         RecordingMedia::kImpossible),
                         [](const auto& test) { return test.index == 0 ? "Failing" : "Impossible"; });

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
        Consequence{"IUnknown::QueryInterface", kNo, kNo, kNo, kFailedAfterReport},
        Consequence{"IUnknown::Release", kYes, kYes, kYes, kOpened},
        Consequence{"IMFMediaSession::Pause", kYes, kYes, kYes, kOpened},
        Consequence{"IMFMediaSession::Stop", kYes, kYes, kYes, kOpened},
        Consequence{"IMFMediaSession::Close", kYes, kYes, kYes, kOpened},
        Consequence{"IMFClock::GetCorrelatedTime", kYes, kYes, kYes, kOpened},
        Consequence{"IMFClock::GetState", kYes, kYes, kYes, kOpened},
        Consequence{"IMFSimpleAudioVolume::SetMasterVolume", kYes, kYes, kYes, kOpened},
        Consequence{"IMFSimpleAudioVolume::GetMasterVolume", kYes, kYes, kYes, kOpened},
        Consequence{"IMFSimpleAudioVolume::SetMute", kYes, kYes, kYes, kOpened},
        Consequence{"IMFSimpleAudioVolume::GetMute", kYes, kYes, kYes, kOpened},
        Consequence{"IMFMetadata::GetProperty", kYes, kYes, kYes, kOpened},
        Consequence{"IMFMetadata::GetAllPropertyNames", kYes, kYes, kYes, kOpened},
        Consequence{"IMMDeviceEnumerator::GetDefaultAudioEndpoint", kYes, kYes, kYes, kOpened},
        Consequence{"IMMDevice::Activate", kYes, kYes, kYes, kOpened},
        Consequence{"IAudioSessionManager2::GetSessionEnumerator", kYes, kYes, kYes, kOpened},
        Consequence{"IAudioSessionEnumerator::GetCount", kYes, kYes, kYes, kOpened},
        Consequence{"IAudioSessionEnumerator::GetSession", kYes, kYes, kYes, kOpened},
        Consequence{"IAudioSessionControl2::GetProcessId", kYes, kYes, kYes, kOpened},
        Consequence{"IAudioMeterInformation::GetPeakValue", kYes, kYes, kYes, kOpened},
        Consequence{"IAudioMeterInformation::GetMeteringChannelCount", kYes, kYes, kYes, kOpened},
        Consequence{"IAudioMeterInformation::GetChannelsPeakValues", kYes, kYes, kYes, kOpened},
        Consequence{"MFShutdown", kYes, kYes, kYes, kOpened}),
    [](const auto& test) {
      std::string name = test.param.operation;
      std::erase(name, ':');
      return name;
    });

}  // namespace
}  // namespace player
