// The player's life, and the exact order of calls of opening, playing and closing.
#include "player/mf_player.h"

#include "tests/player/player_fixture.h"

namespace player {
namespace {

const Strings kOpenCalls = {
    "MFCreateSourceResolver()",
    "resolver.CreateObjectFromURL(\"http://radio/\", 1, none, out, out)",
    "object.QueryInterface(IMFMediaSource, out)",
    "object.Release()",
    "resolver.Release()",
    "source.CreatePresentationDescriptor(out)",
    "MFCreateTopology()",
    "descriptor.GetStreamDescriptorCount(out)",
    "descriptor.GetStreamDescriptorByIndex(0, out, out)",
    "MFCreateTopologyNode(1)",
    "source node.SetUnknown(MF_TOPONODE_SOURCE, source)",
    "source node.SetUnknown(MF_TOPONODE_PRESENTATION_DESCRIPTOR, descriptor)",
    "source node.SetUnknown(MF_TOPONODE_STREAM_DESCRIPTOR, stream 0)",
    "stream 0.GetMediaTypeHandler(out)",
    "handler.GetMajorType(out)",
    "MFCreateAudioRendererActivate()",
    "MFCreateTopologyNode(0)",
    "output node.SetObject(activation)",
    "activation.ShutdownObject()",
    "activation.Release()",
    "handler.Release()",
    "topology.AddNode(source node)",
    "topology.AddNode(output node)",
    "source node.ConnectOutput(0, output node, 0)",
    "output node.Release()",
    "source node.Release()",
    "stream 0.Release()",
    "MFCreateMediaSession()",
    "session.SetTopology(0, topology)",
    "session.GetClock(out)",
    "descriptor.GetUINT64(MF_PD_DURATION, out)",
    "topology.Release()",
};

const Strings kCloseCalls = {
    "session.Stop()",   "session.Close()",    "source.Shutdown()",    "source.Release()",
    "volume.Release()", "clock.Release()",    "descriptor.Release()", "metadata.Release()",
    "meter.Release()",  "session.Shutdown()", "session.Release()",
};

TEST_F(PlayerTest, CreationStartsTheFrameworkWithVersionOneAndNoFlags) {
  const auto player = MakeFreshPlayer();
  EXPECT_EQ(media_.TakeCalls(), (Strings{"MFStartup(1, 0)"}));
  EXPECT_EQ(events_, Strings{});
}

TEST_F(PlayerTest, DestructionWithoutAnItemOnlyShutsTheFrameworkDown) {
  MakePlayer();
  EXPECT_EQ(media_.TakeCalls(), (Strings{"MFShutdown()"}));
}

TEST_F(PlayerTest, FrameworkThatDidNotStartIsNotShutDown) {
  media_.faults["MFStartup"] = platform::kEFail;
  MakePlayer();
  EXPECT_EQ(media_.TakeCalls(), Strings{});
}

TEST_F(PlayerTest, PlayerWithoutAFrameworkStillGivesBackWhatItWasGiven) {
  media_.faults["MFStartup"] = platform::kEFail;
  { MakeServedPlayer(); }
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
  for (const std::string& call : media_.TakeCalls()) EXPECT_NE(call, "MFShutdown()");
}

TEST_F(PlayerTest, OpeningAnAddressCallsInExactOrder) {
  const auto player = MakePlayer();
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_EQ(media_.TakeCalls(), kOpenCalls);
  EXPECT_TRUE(player->IsMediaReady());
  EXPECT_EQ(media_.LiveHandles(), (Strings{"source", "descriptor", "session", "clock"}));
}

TEST_F(PlayerTest, OpeningAnAddressNeverRaisesReadyTrue) {
  const auto player = MakePlayer();
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_EQ(events_, (Strings{"ready false", "create 0", "ready false"}));
}

TEST_F(PlayerTest, OpeningAStreamObjectCallsInExactOrderAndRaisesReadyTrue) {
  const auto player = MakePlayer();
  player->MediaFileFromIStream(platform::StreamObject{12});
  Strings expected = kOpenCalls;
  expected.erase(expected.begin(), expected.begin() + 5);
  const Strings begin = {
      "MFCreateSourceResolver()",
      "MFCreateMFByteStreamOnStream(12)",
      "resolver.CreateObjectFromByteStream(byte stream, none, 17, none, out, out)",
      "object.QueryInterface(IMFMediaSource, out)",
      "object.Release()",
      "byte stream.Release()",
      "resolver.Release()",
  };
  expected.insert(expected.begin(), begin.begin(), begin.end());
  EXPECT_EQ(media_.TakeCalls(), expected);
  EXPECT_EQ(events_, (Strings{"ready false", "ready true"}));
  EXPECT_TRUE(player->IsMediaReady());
}

TEST_F(PlayerTest, SecondOpeningClosesTheFirstItemCompletelyBeforeItBegins) {
  const auto player = MakeServedPlayer();
  player->MediaFileFromUrl(u"http://other/");
  const Strings calls = media_.TakeCalls();
  ASSERT_GT(calls.size(), kCloseCalls.size());
  EXPECT_EQ(Strings(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(kCloseCalls.size())),
            kCloseCalls);
  EXPECT_EQ(calls[kCloseCalls.size()], "MFCreateSourceResolver()");
  EXPECT_EQ(media_.LiveHandles(), (Strings{"source#2", "descriptor#2", "session#2", "clock#2"}));
}

TEST_F(PlayerTest, ReadyFalseIsRaisedBeforeThePreviousItemIsClosed) {
  const auto player = MakeOpenPlayer();
  std::vector<Strings> calls_before_event;
  player->MediaFileIsReady = [&](bool) { calls_before_event.push_back(media_.TakeCalls()); };
  player->MediaFileFromUrl(u"http://other/");
  ASSERT_EQ(calls_before_event.size(), 2u);
  EXPECT_EQ(calls_before_event[0], Strings{});
}

TEST_F(PlayerTest, DurationIsEmptiedBeforeThePreviousItemIsClosed) {
  media_.duration = 36'000'000'000;
  const auto player = MakeOpenPlayer();
  ASSERT_NE(player->Duration(), 0);
  std::vector<std::int64_t> while_closing;
  media_.on_call = [&](const std::string& call) {
    if (call == "session.Stop()") while_closing.push_back(player->Duration());
  };
  player->MediaFileFromUrl(u"http://other/");
  EXPECT_EQ(while_closing, std::vector<std::int64_t>{0});
}

TEST_F(PlayerTest, DestructionClosesTheItemAndThenShutsTheFrameworkDown) {
  { MakeServedPlayer(); }
  Strings expected = kCloseCalls;
  expected.push_back("MFShutdown()");
  EXPECT_EQ(media_.TakeCalls(), expected);
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(PlayerTest, ClosingSkipsWhatIsAbsent) {
  { MakeOpenPlayer(); }
  EXPECT_EQ(media_.TakeCalls(), (Strings{"session.Stop()", "session.Close()", "source.Shutdown()",
                                         "source.Release()", "clock.Release()", "descriptor.Release()",
                                         "session.Shutdown()", "session.Release()", "MFShutdown()"}));
}

TEST_F(PlayerTest, ClosingIgnoresTheResultsOfStopAndClose) {
  media_.faults["IMFMediaSession::Stop"] = platform::kEFail;
  media_.faults["IMFMediaSession::Close"] = platform::kEFail;
  { MakeServedPlayer(); }
  Strings expected = kCloseCalls;
  expected.push_back("MFShutdown()");
  EXPECT_EQ(media_.TakeCalls(), expected);
}

TEST_F(PlayerTest, SourceThatRefusesToShutDownIsKeptForTheNextClosing) {
  auto player = MakeOpenPlayer();
  media_.faults["IMFMediaSource::Shutdown"] = platform::kEFail;
  media_.open_result = platform::kEFail;
  player->MediaFileFromUrl(u"http://other/");
  EXPECT_EQ(media_.LiveHandles(), (Strings{"source"}));
  media_.faults.clear();
  Forget();
  player->MediaFileFromUrl(u"http://other/");
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.TakeCalls()[0], "source.Shutdown()");
}

TEST_F(PlayerTest, SessionThatRefusesToShutDownStaysReadyUntilTheNextClosing) {
  auto player = MakeOpenPlayer();
  media_.faults["IMFMediaSession::Shutdown"] = platform::kEFail;
  media_.open_result = platform::kEFail;
  player->MediaFileFromUrl(u"http://other/");
  EXPECT_TRUE(player->IsMediaReady());
  EXPECT_EQ(media_.LiveHandles(), (Strings{"session"}));
  media_.faults.clear();
  player->MediaFileFromUrl(u"http://other/");
  EXPECT_FALSE(player->IsMediaReady());
  EXPECT_EQ(media_.LiveHandles(), Strings{});
}

TEST_F(PlayerTest, EvenWhatNeverShutsDownIsReleasedBeforeTheFramework) {
  media_.faults["IMFMediaSource::Shutdown"] = platform::kEFail;
  media_.faults["IMFMediaSession::Shutdown"] = platform::kEFail;
  { MakeServedPlayer(); }
  const Strings calls = media_.TakeCalls();
  ASSERT_GE(calls.size(), 3u);
  EXPECT_EQ(Strings(calls.end() - 3, calls.end()),
            (Strings{"source.Release()", "session.Release()", "MFShutdown()"}));
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(PlayerTest, PlayStartsWithTheZeroTimeFormatAndAnEmptyPosition) {
  const auto player = MakeOpenPlayer();
  EXPECT_TRUE(player->PlayMedia());
  EXPECT_EQ(media_.TakeCalls(), (Strings{"session.Start(zero GUID, out)"}));
  EXPECT_EQ(player->PlayState(), kPlayStateRunning);
}

TEST_F(PlayerTest, PlayIsFalseWhenTheSessionRefuses) {
  const auto player = MakeOpenPlayer();
  media_.faults["IMFMediaSession::Start"] = platform::kEFail;
  EXPECT_FALSE(player->PlayMedia());
}

TEST_F(PlayerTest, PauseAndStopAreAlwaysFalseAlthoughTheSessionObeys) {
  const auto player = MakeOpenPlayer();
  player->PlayMedia();
  EXPECT_FALSE(player->PauseMedia());
  EXPECT_EQ(player->PlayState(), kPlayStatePaused);
  EXPECT_FALSE(player->StopMedia());
  EXPECT_EQ(player->PlayState(), kPlayStateStopped);
}

TEST_F(PlayerTest, WithoutAnItemNothingIsCalledAndEverythingFails) {
  const auto player = MakePlayer();
  EXPECT_FALSE(player->IsMediaReady());
  EXPECT_FALSE(player->PlayMedia());
  EXPECT_FALSE(player->PauseMedia());
  EXPECT_FALSE(player->StopMedia());
  EXPECT_EQ(player->PlayState(), kPlayStateInvalid);
  EXPECT_EQ(media_.TakeCalls(), Strings{});
}

TEST_F(PlayerTest, PlayStateIsInvalidWhenTheClockDoesNotAnswer) {
  const auto player = MakeOpenPlayer();
  player->PlayMedia();
  media_.faults["IMFClock::GetState"] = platform::kEFail;
  EXPECT_EQ(player->PlayState(), kPlayStateInvalid);
}

TEST_F(PlayerTest, FullRoundLeavesNothingBehind) {
  {
    auto player = MakeFreshPlayer();
    for (const Text address : {u"http://one/", u"http://two/"}) {
      player->MediaFileFromUrl(address);
      EXPECT_TRUE(player->CreateService());
      EXPECT_TRUE(player->PlayMedia());
      player->StopMedia();
    }
  }
  EXPECT_EQ(media_.Calls().back(), "MFShutdown()");
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(PlayerTest, PlayerWorksWithoutHandlers) {
  auto player = MakePlayer();
  player->MediaFileIsReady = nullptr;
  player->IsCreateOK = nullptr;
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_TRUE(player->IsMediaReady());
}

}  // namespace
}  // namespace player
