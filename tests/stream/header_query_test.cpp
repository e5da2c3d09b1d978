#include "stream/header_query.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/scripted_internet.h"

namespace stream {
namespace {

using testing::ElementsAre;
using Lines = std::vector<Text>;
using Kind = QueryFailure::Kind;

class HeaderQuery : public testing::Test {
 protected:
  /// Nothing when the query fails, why is then in `failure_`.
  std::optional<Lines> Query(const Text& address) {
    QueriedHeaders headers = QueryStreamHeaders(internet_, address, 3000);
    failure_ = headers.failure;
    const bool is_ok = failure_.kind == Kind::kNone;
    EXPECT_EQ(headers.lines.empty(), !is_ok) << "lines or a failure, never both";
    return is_ok ? std::optional<Lines>(std::move(headers.lines)) : std::nullopt;
  }

  test_support::ScriptedInternet internet_;
  QueryFailure failure_;
};

TEST_F(HeaderQuery, RunsTheOperationsInOrderAndClosesThemFromTheInside) {
  internet_.answer.raw_headers = u"ICY 200 OK\r\n\r\n";
  ASSERT_TRUE(Query(u"https://radio.example:8443/live?a=b"));
  EXPECT_THAT(internet_.calls,
              ElementsAre("InternetOpenW(WinampMPEG/5.09, 1) = 1", "SetWaitLimit(1, 3000)",
                          "InternetConnectW(1, radio.example, 8443, 3) = 2",
                          "HttpOpenRequestW(2, GET, /live?a=b, HTTP/1.1, 2155872256) = 3",
                          "HttpSendRequestW(3, Icy-MetaData:1) = 1", "HttpQueryInfoW(3, 19, 0) = 0",
                          "HttpQueryInfoW(3, 19, 6) = 1", "HttpQueryInfoW(3, 22, 0) = 0",
                          "HttpQueryInfoW(3, 22, 28) = 1", "InternetCloseHandle(3)", "InternetCloseHandle(2)",
                          "InternetCloseHandle(1)"));
  EXPECT_TRUE(internet_.reads.empty()) << "the query reads no audio";
}

TEST_F(HeaderQuery, GivesTheLinesWithTheStatusLineFirstAndTheEmptyOnesLast) {
  internet_.answer.raw_headers = u"ICY 200 OK\r\nicy-name:X\r\n\r\n";
  EXPECT_EQ(Query(u"http://h/"), (Lines{u"ICY 200 OK", u"icy-name:X", u"", u""}));
}

TEST_F(HeaderQuery, TakesOnlyTheStatus200) {
  for (const Text status : {u"404", u"206", u"2000", u" 200", u""}) {
    internet_.answer.status = status;
    EXPECT_EQ(Query(u"http://h/"), std::nullopt) << test_support::Ascii(status);
  }
}

TEST_F(HeaderQuery, AnEmptyHeaderBlockIsAFailure) {
  internet_.answer.raw_headers = u"";
  EXPECT_EQ(Query(u"http://h/"), std::nullopt);
  EXPECT_EQ(failure_, QueryFailure{Kind::kOther});
  EXPECT_EQ(internet_.OpenHandles(), 0U);
}

TEST_F(HeaderQuery, EveryFailingStepClosesWhatWasOpenedBefore) {
  for (const std::string step :
       {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"}) {
    internet_.failing = {step};
    internet_.calls.clear();
    EXPECT_EQ(Query(u"http://h/x"), std::nullopt) << step;
    EXPECT_EQ(internet_.OpenHandles(), 0U) << step;
  }
  EXPECT_THAT(internet_.calls, testing::Contains(testing::StartsWith("HttpSendRequestW")).Times(1));
}

TEST_F(HeaderQuery, AnAddressWithoutAHostFailsInTheConnection) {
  EXPECT_EQ(Query(u"http://radio.example"), std::nullopt);
  EXPECT_THAT(internet_.calls, ElementsAre("InternetOpenW(WinampMPEG/5.09, 1) = 1", "SetWaitLimit(1, 3000)",
                                           "InternetConnectW(1, , 80, 3) = 0", "InternetCloseHandle(1)"));
  EXPECT_EQ(failure_, QueryFailure{Kind::kOther});
}

TEST_F(HeaderQuery, APortThatIsNoNumberOpensNothing) {
  EXPECT_EQ(Query(u"http://radio.example:http/"), std::nullopt);
  EXPECT_EQ(failure_, QueryFailure{Kind::kOther});
  EXPECT_TRUE(internet_.calls.empty());
}

TEST_F(HeaderQuery, WithoutALimitTheInternetLibrarysOwnOneHolds) {
  EXPECT_EQ(QueryStreamHeaders(internet_, u"http://h/", 0).failure, QueryFailure());
  EXPECT_THAT(internet_.calls, testing::Not(testing::Contains(testing::StartsWith("SetWaitLimit"))));
}

TEST_F(HeaderQuery, SaysWhyItHasFailed) {
  using platform::InternetFailure;
  internet_.answer.reachable = false;
  for (const auto& [failure, kind] : {std::pair(InternetFailure::kNoAnswer, Kind::kNoAnswer),
                                      std::pair(InternetFailure::kUnknownHost, Kind::kUnknownHost),
                                      std::pair(InternetFailure::kRefused, Kind::kRefused),
                                      std::pair(InternetFailure::kGivenUp, Kind::kGivenUp),
                                      std::pair(InternetFailure::kOther, Kind::kOther)}) {
    internet_.answer.failure = failure;
    Query(u"http://h/");
    EXPECT_EQ(failure_, QueryFailure{kind});
  }
  internet_.answer.reachable = true;
  internet_.answer.status = u"404";
  Query(u"http://h/");
  EXPECT_EQ(failure_, (QueryFailure{Kind::kHttpStatus, 404}));
  for (const Text status : {u"", u"abc", u"2000", u" 20"}) {
    internet_.answer.status = status;
    Query(u"http://h/");
    EXPECT_EQ(failure_, QueryFailure{Kind::kOther}) << test_support::Ascii(status);
  }
}

TEST_F(HeaderQuery, HeaderTextOfAQuarterMebibyteComesThrough) {
  internet_.answer.raw_headers = u"HTTP/1.1 200 OK\r\nx:" + Text(256 * 1024 - 23, u'x') + u"\r\n";
  const auto lines = Query(u"http://h/");
  ASSERT_TRUE(lines);
  EXPECT_EQ(lines->at(1).size(), 256U * 1024 - 21);
}

/// Answers a query without a buffer, and one with it, as the test says.
class OddHeaders : public test_support::ScriptedInternet {
 public:
  bool HttpQueryInfoW(platform::InternetHandle, std::uint32_t, std::span<std::byte> buffer,
                      std::uint32_t& size) override {
    ++queries;
    size = buffer.empty() ? needed : returned;
    for (std::size_t i = 0; i < buffer.size(); ++i) buffer[i] = std::byte(i % 2 == 0 ? 'a' + i / 2 : 0);
    return buffer.empty() ? succeeds_without_buffer : succeeds_with_buffer;
  }
  bool succeeds_without_buffer = false;
  bool succeeds_with_buffer = true;
  std::uint32_t needed = 8;
  std::uint32_t returned = 8;
  int queries = 0;
};

Text HeaderText(OddHeaders& internet) { return QueryHeaderText(internet, platform::InternetHandle{1}, 22); }

TEST(HeaderText, IsCutToTheBytesThatWereReturned) {
  OddHeaders internet;
  EXPECT_EQ(HeaderText(internet), u"abcd");
  internet.returned = 5;
  EXPECT_EQ(HeaderText(internet), u"ab");
  internet.returned = 1000;
  EXPECT_EQ(HeaderText(internet), u"abcd") << "never more than the buffer holds";
}

TEST(HeaderText, IsEmptyWhenTheQueryFailsOrSucceedsUnexpectedly) {
  OddHeaders internet;
  internet.succeeds_with_buffer = false;
  EXPECT_EQ(HeaderText(internet), u"");
  EXPECT_EQ(internet.queries, 2);
  internet.succeeds_without_buffer = true;
  internet.succeeds_with_buffer = true;
  EXPECT_EQ(HeaderText(internet), u"");
  EXPECT_EQ(internet.queries, 3) << "without a failure at first there is no second query";
}

}  // namespace
}  // namespace stream
