// What the stream client does about an address that stays silent; the rules of that are those of
// stream/silent_addresses.h.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/stream/stream_rig.h"

namespace stream {
namespace {

class SilentStation : public testing::Test {
 protected:
  SilentStation() {
    rig_.internet.answer.raw_headers = u"ICY 200 OK\r\nicy-metaint:8\r\n\r\n";
    client_->StreamUrl(u"http://good/");
    rig_.internet.answers[u"silent:80/"].reachable = false;
    rig_.internet.answers[u"http://silent/"].reachable = false;
    rig_.internet.before_answer = [this](bool is_answered) {
      if (!is_answered) rig_.clock.seconds_since_midnight += 3;
    };
    rig_.internet.calls.clear();
  }
  // Sets the silent address; whether its server was asked.
  bool Asks(const Text& url = u"http://silent/") {
    rig_.internet.calls.clear();
    client_->StreamUrl(url);
    return !rig_.internet.calls.empty();
  }
  void StationAnswers() { rig_.internet.answers[u"silent:80/"] = rig_.internet.answer; }

  StreamRig rig_;
  std::unique_ptr<clsFunkhaus> client_ = std::make_unique<clsFunkhaus>(rig_.Through());
};

TEST_F(SilentStation, FailsAtOnceForAWhileAndIsAskedAgainThen) {
  EXPECT_TRUE(Asks());
  EXPECT_FALSE(Asks());
  rig_.clock.whole_seconds += 10;
  EXPECT_FALSE(Asks());
  rig_.clock.whole_seconds += 1;
  EXPECT_TRUE(Asks());
  EXPECT_THAT(rig_.internet.calls, testing::Contains(testing::HasSubstr("SetWaitLimit")));
  rig_.clock.whole_seconds += 20;
  EXPECT_FALSE(Asks());
}

TEST_F(SilentStation, ItsFailureIsReportedEveryTimeAndTheEarlierHeaderLinesStay) {
  std::vector<bool> outcomes;
  client_->QueryStream = [&](bool bQueryOk) { outcomes.push_back(bQueryOk); };
  EXPECT_EQ(client_->LastQueryFailure(), QueryFailure());
  for (int i = 0; i < 2; ++i) {
    Asks();
    EXPECT_EQ(client_->LastQueryFailure(), QueryFailure{QueryFailure::Kind::kNoAnswer}) << i;
  }
  EXPECT_EQ(outcomes, (std::vector<bool>{false, false}));
  EXPECT_EQ(client_->StreamUrl(), u"http://silent/");
  EXPECT_EQ(client_->GetStreamQueryInfo(9), u"8");
  client_->StreamUrl(u"http://good/");
  EXPECT_EQ(client_->LastQueryFailure(), QueryFailure());
}

TEST_F(SilentStation, NeitherItsTitleNorItsPlaylistIsAskedFor) {
  Asks();
  rig_.internet.calls.clear();
  rig_.requests.calls.clear();
  EXPECT_EQ(client_->ReadStreamMetaData(8), u"");
  EXPECT_EQ(client_->ReadStreamMetaData2(8), u"");
  EXPECT_EQ(client_->GetActiveMeta(u"", 8), u"");
  EXPECT_FALSE(client_->IsUrlPlaylist(u"  http://silent/ "));
  EXPECT_TRUE(rig_.internet.calls.empty());
  EXPECT_TRUE(rig_.requests.calls.empty());
}

TEST_F(SilentStation, OneThatTheUserWantsIsAskedOnceMore) {
  Asks();
  client_->TryAgain(u" http://silent/ ", Wait::kFull);
  rig_.requests.request = {{4}, u"http://h/stream"};
  EXPECT_TRUE(client_->IsUrlPlaylist(u"http://silent/"));
  EXPECT_TRUE(Asks(u" http://silent/ ")) << "addresses are compared without the blanks around them";
  EXPECT_FALSE(Asks());
}

TEST_F(SilentStation, AnAnswerOfAnyStatusEndsIt) {
  for (const Text status : {u"200", u"404"}) {
    rig_.internet.answers[u"silent:80/"].reachable = false;
    client_->TryAgain(u"http://silent/", Wait::kFull);
    EXPECT_TRUE(Asks());
    rig_.clock.whole_seconds += 61;
    StationAnswers();
    rig_.internet.answers[u"silent:80/"].status = status;
    EXPECT_TRUE(Asks());
    EXPECT_TRUE(Asks()) << "as often as it is wanted";
    EXPECT_THAT(rig_.internet.calls, testing::Contains(testing::HasSubstr(", 3000)")));
  }
  EXPECT_EQ(client_->LastQueryFailure(), (QueryFailure{QueryFailure::Kind::kHttpStatus, 404}));
}

TEST_F(SilentStation, AnAddressThatIsRefusedAtOnceIsAskedEveryTime) {
  rig_.internet.before_answer = nullptr;
  rig_.internet.answers[u"silent:80/"].failure = platform::InternetFailure::kRefused;
  EXPECT_TRUE(Asks());
  EXPECT_EQ(client_->LastQueryFailure(), QueryFailure{QueryFailure::Kind::kRefused});
  EXPECT_TRUE(Asks());
}

TEST_F(SilentStation, AClientForRecordingsAsksEveryTimeAndAsLongAsTheLibraryDoes) {
  clsFunkhaus::Options options;
  options.patience = Patience::kOfARecording;
  client_ = std::make_unique<clsFunkhaus>(rig_.Through(), options);
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(Asks());
    EXPECT_THAT(rig_.internet.calls, testing::Not(testing::Contains(testing::HasSubstr("SetWaitLimit"))));
  }
}

}  // namespace
}  // namespace stream
