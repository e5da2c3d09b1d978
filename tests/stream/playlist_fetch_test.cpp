#include "stream/playlist_fetch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/stream/stream_rig.h"

namespace stream {
namespace {

using testing::ElementsAre;

class PlaylistFetch : public testing::Test {
 protected:
  std::optional<Text> Fetch() { return FetchPlaylistText(state_, u"http://h/list.pls"); }

  StreamRig rig_;
  StreamState state_{rig_.Through()};
};

TEST_F(PlaylistFetch, AsksAsynchronouslyIgnoringCertificateErrorsAndEndsWithAbort) {
  rig_.requests.request = {{4}, u"text"};
  EXPECT_EQ(Fetch(), u"text");
  EXPECT_THAT(rig_.requests.calls, ElementsAre("CreateObject(MSXML2.ServerXMLHTTP.6.0)",
                                               "SetOption(2, 13056)", "Open(GET, http://h/list.pls, True)",
                                               "Send()", "ResponseText()", "Abort()", "release"));
  EXPECT_EQ(rig_.loop.pumps, 0) << "a completed request does not wait";
}

TEST_F(PlaylistFetch, LetsTheWindowWorkUntilTheAnswerIsComplete) {
  rig_.requests.request = {{1, 1, 2, 3, 4}, u"text"};
  EXPECT_EQ(Fetch(), u"text");
  EXPECT_EQ(rig_.loop.pumps, 4);
}

TEST_F(PlaylistFetch, EndsWhenTheWholeSecondClockHasMovedOnByOne) {
  rig_.requests.request = {{3}, u"endless"};
  rig_.loop.on_pump = [this] {
    if (rig_.loop.pumps == 7) ++rig_.clock.whole_seconds;
  };
  EXPECT_EQ(Fetch(), std::nullopt);
  EXPECT_EQ(rig_.loop.pumps, 7);
  EXPECT_THAT(rig_.requests.calls, testing::Not(testing::Contains("ResponseText()")));
  EXPECT_THAT(rig_.requests.calls, testing::Contains("Abort()"));
  EXPECT_EQ(rig_.requests.live_objects, 0);
}

TEST_F(PlaylistFetch, ARequestCompletedAtTheDeadlineStillCounts) {
  rig_.requests.request = {{3, 4}, u"just in time"};
  rig_.loop.on_pump = [this] { ++rig_.clock.whole_seconds; };
  EXPECT_EQ(Fetch(), u"just in time");
}

TEST_F(PlaylistFetch, WithoutTheRequestObjectThereIsNoText) {
  rig_.requests.class_is_known = false;
  EXPECT_EQ(Fetch(), std::nullopt);
}

TEST_F(PlaylistFetch, AStepThatFailsIsPassedOver) {
  rig_.requests.request = {{4}, u"text"};
  for (const std::string step : {"SetOption", "Open", "Send"}) {
    rig_.requests.failing = {step};
    rig_.requests.calls.clear();
    EXPECT_EQ(Fetch(), u"text") << step;
    EXPECT_EQ(rig_.requests.calls.size(), 7U) << step;
  }
}

TEST_F(PlaylistFetch, EndsAtOnceWhenTheOwnerHasReleasedIt) {
  rig_.requests.request = {{3}, u"endless"};
  rig_.loop.on_pump = [this] { state_.abort_flag = true; };
  EXPECT_EQ(Fetch(), std::nullopt);
  EXPECT_EQ(rig_.loop.pumps, 1);
}

TEST_F(PlaylistFetch, TheDeadlineCountsFromAfterTheSending) {
  rig_.requests.request = {{1, 1, 4}, u"text"};
  rig_.requests.on_send = [this] { rig_.clock.whole_seconds += 3; };
  EXPECT_EQ(Fetch(), u"text");
}

}  // namespace
}  // namespace stream
