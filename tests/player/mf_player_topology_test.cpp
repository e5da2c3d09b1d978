// From a source to a session: which streams get a branch, which renderer, and what decides.
#include <algorithm>
#include <cstddef>

#include "tests/player/player_fixture.h"

namespace player {
namespace {

using test_support::kAudioType;
using test_support::kVideoType;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr Guid kScriptType{0x73647574, 0x0000, 0x0010, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}};

class PlayerTopologyTest : public PlayerTest {
 protected:
  PlayerTopologyTest() : player_(MakePlayer()) {}

  Strings Open() {
    media_.TakeCalls();
    player_->MediaFileFromUrl(u"http://radio/");
    return media_.TakeCalls();
  }
  std::ptrdiff_t Count(const Strings& calls, const std::string& call) {
    return std::count(calls.begin(), calls.end(), call);
  }

  std::shared_ptr<clsMFPlayer> player_;
};

TEST_F(PlayerTopologyTest, SourceWithoutStreamsFailsBeforeASessionIsMade) {
  media_.streams.clear();
  EXPECT_THAT(Open(), Not(Contains("MFCreateMediaSession()")));
  EXPECT_FALSE(player_->IsMediaReady());
  EXPECT_EQ(media_.LiveHandles(), (Strings{"source", "descriptor"}));
}

TEST_F(PlayerTopologyTest, EveryStreamGetsABranch) {
  media_.streams = {{1, kAudioType}, {1, kAudioType}};
  const Strings calls = Open();
  EXPECT_THAT(calls, Contains("source node.ConnectOutput(0, output node, 0)"));
  EXPECT_THAT(calls, Contains("source node#2.ConnectOutput(0, output node#2, 0)"));
  EXPECT_TRUE(player_->IsMediaReady());
}

TEST_F(PlayerTopologyTest, LastStreamDecidesAloneSoADeselectedOneFailsTheBuild) {
  media_.streams = {{1, kAudioType}, {0, kAudioType}};
  const Strings calls = Open();
  EXPECT_EQ(Count(calls, "topology.AddNode(source node)"), 1);
  EXPECT_FALSE(player_->IsMediaReady());
  EXPECT_THAT(calls, Not(Contains("MFCreateMediaSession()")));
}

TEST_F(PlayerTopologyTest, LastStreamDecidesAloneSoASelectedOneMakesUpForTheOthers) {
  media_.streams = {{0, kAudioType}, {2, kAudioType}, {1, kAudioType}};
  Open();
  EXPECT_TRUE(player_->IsMediaReady());
}

TEST_F(PlayerTopologyTest, SelectedMeansExactlyOne) {
  media_.streams = {{2, kAudioType}};
  EXPECT_THAT(Open(), Contains("stream 0.Release()"));
  EXPECT_FALSE(player_->IsMediaReady());
}

TEST_F(PlayerTopologyTest, VideoIsRenderedOnTheWindowThatWasSetLast) {
  media_.streams = {{1, kVideoType}};
  EXPECT_THAT(Open(), Contains("MFCreateVideoRendererActivate(0)"));
  player_->VideoRenderHwnd(platform::WindowHandle{4242});
  EXPECT_THAT(Open(), Contains("MFCreateVideoRendererActivate(4242)"));
}

TEST_F(PlayerTopologyTest, ZeroLeavesTheVideoWindowUnchanged) {
  media_.streams = {{1, kVideoType}};
  player_->VideoRenderHwnd(platform::WindowHandle{4242});
  player_->VideoRenderHwnd(platform::WindowHandle::kNone);
  EXPECT_THAT(Open(), Contains("MFCreateVideoRendererActivate(4242)"));
}

TEST_F(PlayerTopologyTest, OtherTypesGetAnOutputNodeWithoutAnActivationObject) {
  media_.streams = {{1, kScriptType}};
  const Strings calls = Open();
  EXPECT_THAT(calls, Contains("output node.SetObject(none)"));
  EXPECT_THAT(calls, Not(Contains(HasSubstr("RendererActivate"))));
  EXPECT_THAT(calls, Not(Contains(HasSubstr("ShutdownObject"))));
  EXPECT_TRUE(player_->IsMediaReady()) << "shutting down an absent activation object counts as done";
}

TEST_F(PlayerTopologyTest, RendererThatCannotBeMadeFailsTheBranchWithoutAnOutputNode) {
  media_.faults["MFCreateAudioRendererActivate"] = platform::kEFail;
  const Strings calls = Open();
  EXPECT_THAT(calls, Contains("handler.Release()"));
  EXPECT_THAT(calls, Not(Contains("MFCreateTopologyNode(0)")));
  EXPECT_FALSE(player_->IsMediaReady());
}

TEST_F(PlayerTopologyTest, ActivationObjectIsShutDownAlsoWhenItsNodeFails) {
  media_.faults["IMFTopologyNode::SetObject"] = platform::kEFail;
  const Strings calls = Open();
  const auto failed = std::find(calls.begin(), calls.end(), "output node.SetObject(activation)");
  ASSERT_GE(calls.end() - failed, 7);
  EXPECT_EQ(Strings(failed + 1, failed + 7),
            (Strings{"output node.Release()", "activation.ShutdownObject()", "activation.Release()",
                     "handler.Release()", "source node.Release()", "stream 0.Release()"}));
}

TEST_F(PlayerTopologyTest, ActivationObjectThatRefusesToShutDownIsReleasedAtTheNextClosing) {
  media_.faults["IMFActivate::ShutdownObject"] = platform::kEFail;
  Open();
  EXPECT_TRUE(player_->IsMediaReady());
  EXPECT_THAT(media_.LiveHandles(), Contains("activation"));
  media_.faults.clear();
  const Strings calls = Open();
  EXPECT_EQ(Count(calls, "activation.Release()"), 1);
  EXPECT_THAT(media_.LiveHandles(), Not(Contains("activation")));
}

TEST_F(PlayerTopologyTest, SourceNodeIsReleasedAtItsFirstRefusedAttribute) {
  media_.on_call = [this](const std::string& call) {
    const bool second = call.find("MF_TOPONODE_PRESENTATION_DESCRIPTOR") != std::string::npos;
    media_.fault_at = second ? media_.CallCount() : 0;
    media_.fault = platform::kEFail;
  };
  const Strings calls = Open();
  EXPECT_THAT(calls, Not(Contains(HasSubstr("MF_TOPONODE_STREAM_DESCRIPTOR"))));
  EXPECT_EQ(Count(calls, "source node.Release()"), 1);
  EXPECT_THAT(calls, Not(Contains("MFCreateTopologyNode(0)")));
}

TEST_F(PlayerTopologyTest, NodesAreAddedAndConnectedOnlyAsLongAsEachStepSucceeds) {
  media_.faults["IMFTopology::AddNode"] = platform::kEFail;
  const Strings calls = Open();
  EXPECT_EQ(Count(calls, "topology.AddNode(source node)"), 1);
  EXPECT_EQ(Count(calls, "topology.AddNode(output node)"), 0);
  EXPECT_THAT(calls, Not(Contains(HasSubstr("ConnectOutput"))));
  EXPECT_FALSE(player_->IsMediaReady());
}

TEST_F(PlayerTopologyTest, SessionThatRefusesTheTopologyIsReleasedWithoutAClock) {
  media_.on_call = [this](const std::string& call) {
    if (call == "MFCreateMediaSession()") duration_.value = 5;
  };
  media_.faults["IMFMediaSession::SetTopology"] = platform::kEFail;
  const Strings calls = Open();
  EXPECT_EQ(Strings(calls.end() - 4, calls.end()),
            (Strings{"MFCreateMediaSession()", "session.SetTopology(0, topology)", "session.Release()",
                     "topology.Release()"}));
  EXPECT_FALSE(player_->IsMediaReady());
  EXPECT_EQ(player_->Duration(), 0);
}

TEST_F(PlayerTopologyTest, SessionWithoutAClockIsReleased) {
  media_.faults["IMFMediaSession::GetClock"] = platform::kEFail;
  const Strings calls = Open();
  EXPECT_EQ(Strings(calls.end() - 3, calls.end()),
            (Strings{"session.GetClock(out)", "session.Release()", "topology.Release()"}));
  EXPECT_FALSE(player_->IsMediaReady());
}

TEST_F(PlayerTopologyTest, ClockThatCannotBeAskedForCountsAsThere) {
  media_.faults["IMFMediaSession::GetClock"] = RecordingMedia::kImpossible;
  Open();
  EXPECT_TRUE(player_->IsMediaReady());
  EXPECT_EQ(player_->PlayState(), kPlayStateInvalid);
}

TEST_F(PlayerTopologyTest, DescriptorThatCannotBeAskedForHasNoStreams) {
  media_.faults["IMFMediaSource::CreatePresentationDescriptor"] = RecordingMedia::kImpossible;
  EXPECT_THAT(Open(), Contains("topology.Release()"));
  EXPECT_FALSE(player_->IsMediaReady());
}

TEST_F(PlayerTopologyTest, DurationIsReadFromTheDescriptor) {
  media_.duration = 595'000'000;
  Open();
  EXPECT_EQ(player_->Duration(), 595'000'000);
}

TEST_F(PlayerTopologyTest, ItemWithoutADurationHasNone) {
  media_.duration = 595'000'000;
  Open();
  media_.duration.reset();
  Open();
  EXPECT_TRUE(player_->IsMediaReady());
  EXPECT_EQ(player_->Duration(), 0);
}

TEST_F(PlayerTopologyTest, DurationIsOneForAllPlayersOfTheProgram) {
  const auto other = MakePlayer();
  media_.duration = 20'000'000;
  Open();
  EXPECT_EQ(other->Duration(), 20'000'000);
  EXPECT_EQ(other->DurationHMS(), u"00:00:02");
}

}  // namespace
}  // namespace player
