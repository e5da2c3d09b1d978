// From an address or a stream object to a source: results, events, and what is given back.
#include "tests/player/player_fixture.h"

namespace player {
namespace {

using PlayerSourceTest = PlayerTest;

constexpr HResult kAccessDenied = static_cast<HResult>(0x80070005u);

TEST_F(PlayerSourceTest, UnsupportedTypeIsReportedAsASignedNumberAndLeavesNoItem) {
  const auto player = MakePlayer();
  media_.open_result = platform::kMfEUnsupportedByteStreamType;
  player->MediaFileFromUrl(u"http://radio/page.html");
  EXPECT_EQ(events_, (Strings{"ready false", "create -1072875836"}));
  EXPECT_FALSE(player->IsMediaReady());
  EXPECT_EQ(media_.LiveHandles(), Strings{});
}

TEST_F(PlayerSourceTest, MissingFileIsReported) {
  const auto player = MakePlayer();
  media_.open_result = platform::kErrorFileNotFound;
  player->MediaFileFromUrl(u"C:\\gone.mp3");
  EXPECT_EQ(events_, (Strings{"ready false", "create -2147024894"}));
}

TEST_F(PlayerSourceTest, EveryOtherFailureIsNotReported) {
  const auto player = MakePlayer();
  for (const HResult result : {platform::kEFail, kAccessDenied, HResult{1}, platform::kErrorFileNotFound + 1,
                               platform::kErrorFileNotFound - 1, platform::kMfEUnsupportedByteStreamType + 1,
                               platform::kMfEUnsupportedByteStreamType - 1}) {
    events_.clear();
    media_.open_result = result;
    player->MediaFileFromUrl(u"http://radio/");
    EXPECT_EQ(events_, (Strings{"ready false"})) << result;
    EXPECT_EQ(media_.LiveHandles(), Strings{});
  }
}

TEST_F(PlayerSourceTest, CancelledOpeningIsNotReportedAndIsKnownUntilTheNextOne) {
  const auto player = MakePlayer();
  EXPECT_FALSE(player->OpeningCancelled());
  media_.open_result = platform::kErrorCancelled;
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_EQ(events_, (Strings{"ready false"}));
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_TRUE(player->OpeningCancelled());
  for (const HResult result : {platform::kEFail, platform::kSOk}) {
    media_.open_result = platform::kErrorCancelled;
    player->MediaFileFromUrl(u"http://radio/");
    media_.open_result = result;
    player->MediaFileFromUrl(u"http://radio/");
    EXPECT_FALSE(player->OpeningCancelled()) << result;
  }
}

TEST_F(PlayerSourceTest, OpeningIsNotCancelledAnyMoreOnceTheNextOneBegins) {
  const auto player = MakePlayer();
  media_.open_result = platform::kErrorCancelled;
  player->MediaFileFromUrl(u"http://radio/");
  media_.faults["MFCreateSourceResolver"] = platform::kEFail;
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_FALSE(player->OpeningCancelled());
}

TEST_F(PlayerSourceTest, ResolverThatCannotBeMadeIsNotReported) {
  const auto player = MakePlayer();
  media_.faults["MFCreateSourceResolver"] = platform::kErrorFileNotFound;
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_EQ(events_, (Strings{"ready false"}));
}

TEST_F(PlayerSourceTest, ObjectThatIsNoSourceIsReportedAsSuccessAndGivenBackUnasked) {
  const auto player = MakePlayer();
  media_.object_type = 1;
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_EQ(events_, (Strings{"ready false", "create 0"}));
  EXPECT_EQ(media_.TakeCalls(), (Strings{"MFCreateSourceResolver()",
                                         "resolver.CreateObjectFromURL(\"http://radio/\", 1, none, out, out)",
                                         "object.Release()", "resolver.Release()"}));
  EXPECT_FALSE(player->IsMediaReady());
}

TEST_F(PlayerSourceTest, ObjectThatRefusesTheSourceInterfaceIsGivenBack) {
  const auto player = MakePlayer();
  media_.faults["IUnknown::QueryInterface"] = platform::kENoInterface;
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_EQ(events_, (Strings{"ready false", "create 0"}));
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_THAT(media_.Calls(), testing::Not(testing::Contains("MFCreateTopology()")));
}

TEST_F(PlayerSourceTest, OpeningThatCannotBeCalledCountsAsSuccessWithoutASource) {
  const auto player = MakePlayer();
  media_.faults["IMFSourceResolver::CreateObjectFromURL"] = RecordingMedia::kImpossible;
  player->MediaFileFromUrl(u"http://radio/");
  EXPECT_EQ(events_, (Strings{"ready false", "create 0"}));
  EXPECT_FALSE(player->IsMediaReady());
}

TEST_F(PlayerSourceTest, ReportComesBeforeTheObjectIsAskedForTheSource) {
  const auto player = MakePlayer();
  Strings before_report;
  player->IsCreateOK = [&](std::int32_t) { before_report = media_.TakeCalls(); };
  player->MediaFileFromUrl(u"http://radio/");
  ASSERT_EQ(before_report.size(), 2u);
  EXPECT_EQ(media_.TakeCalls()[0], "object.QueryInterface(IMFMediaSource, out)");
}

TEST_F(PlayerSourceTest, AddressIsPassedOnAsItIs) {
  const auto player = MakePlayer();
  player->MediaFileFromUrl(u"");
  EXPECT_EQ(media_.TakeCalls()[1], "resolver.CreateObjectFromURL(\"\", 1, none, out, out)");
}

TEST_F(PlayerSourceTest, StreamObjectNeverReportsItsResult) {
  const auto player = MakePlayer();
  for (const HResult result : {platform::kErrorFileNotFound, platform::kMfEUnsupportedByteStreamType}) {
    events_.clear();
    media_.open_result = result;
    player->MediaFileFromIStream(platform::StreamObject{12});
    EXPECT_EQ(events_, (Strings{"ready false"}));
    EXPECT_EQ(media_.LiveHandles(), Strings{});
  }
}

TEST_F(PlayerSourceTest, StreamObjectWithoutAByteStreamIsNotResolved) {
  const auto player = MakePlayer();
  media_.faults["MFCreateMFByteStreamOnStream"] = platform::kEFail;
  player->MediaFileFromIStream(platform::StreamObject{12});
  EXPECT_EQ(media_.TakeCalls(),
            (Strings{"MFCreateSourceResolver()", "MFCreateMFByteStreamOnStream(12)", "resolver.Release()"}));
}

TEST_F(PlayerSourceTest, StreamObjectThatIsNoSourceIsGivenBack) {
  const auto player = MakePlayer();
  media_.object_type = platform::kMfObjectInvalid;
  player->MediaFileFromIStream(platform::StreamObject{12});
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_FALSE(player->IsMediaReady());
}

TEST_F(PlayerSourceTest, FailedOpeningLeavesNoItemOfTheOneBefore) {
  const auto player = MakeServedPlayer();
  media_.open_result = platform::kEFail;
  player->MediaFileFromUrl(u"http://other/");
  EXPECT_FALSE(player->IsMediaReady());
  EXPECT_FALSE(player->SetAudioAudioVolume(0.5f));
  EXPECT_EQ(media_.LiveHandles(), Strings{});
}

}  // namespace
}  // namespace player
