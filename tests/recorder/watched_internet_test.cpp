#include "recorder/watched_internet.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "tests/support/scripted_internet.h"

namespace recorder {
namespace {

using platform::InternetHandle;
using platform::InternetRead;

class Watched : public testing::Test {
 protected:
  InternetHandle Session() { return watched_.InternetOpenW(u"agent", platform::kInternetOpenTypeDirect); }
  InternetHandle Open() { return watched_.InternetOpenUrlW(Session(), u"http://h/", u"", 0); }
  bool Send() {
    const InternetHandle connection = watched_.InternetConnectW(Session(), u"h", 80, 3);
    return watched_.HttpSendRequestW(watched_.HttpOpenRequestW(connection, u"GET", u"/", u"HTTP/1.1", 0),
                                     u"");
  }

  test_support::ScriptedInternet inner_;
  std::vector<std::size_t> reported_;
  WatchedInternet watched_{inner_, [this](const InternetRead& read) { reported_.push_back(read.count); }};
};

TEST_F(Watched, EveryReadIsReported) {
  inner_.answer.reads = {{true, "abc"}, {false, ""}};
  const InternetHandle opened = Open();
  std::array<std::byte, 2> buffer{};
  EXPECT_EQ(watched_.InternetReadFile(opened, buffer).count, 2U);
  EXPECT_EQ(buffer[1], std::byte{'b'});
  watched_.InternetReadFile(opened, buffer);
  watched_.InternetReadFile(opened, buffer);
  EXPECT_EQ(reported_, (std::vector<std::size_t>{2, 1, 0}));
}

TEST_F(Watched, TheStatusIsThatOfTheLatestRequest) {
  EXPECT_EQ(watched_.AnswerStatus(), 0);
  inner_.answer.status = u"404";
  EXPECT_TRUE(Send());
  EXPECT_EQ(watched_.AnswerStatus(), 404);
  inner_.answer.status = u"200";
  EXPECT_NE(Open(), InternetHandle::kNone);
  EXPECT_EQ(watched_.AnswerStatus(), 200);
  inner_.answer.reachable = false;
  EXPECT_FALSE(Send());
  EXPECT_EQ(watched_.AnswerStatus(), 0);
  inner_.answer.reachable = true;
  EXPECT_TRUE(Send());
  watched_.ForgetAnswer();
  EXPECT_EQ(watched_.AnswerStatus(), 0);
  EXPECT_TRUE(Send());
  inner_.answer.reachable = false;
  EXPECT_EQ(Open(), InternetHandle::kNone);
  EXPECT_EQ(watched_.AnswerStatus(), 0);
}

TEST_F(Watched, WhatIsNotAnsweredWith200IsClosedAgain) {
  for (const platform::Text status : {u"404", u"503", u"204", u""}) {
    inner_.answer.status = status;
    const InternetHandle session = Session();
    const std::size_t open = inner_.OpenHandles();
    EXPECT_EQ(watched_.InternetOpenUrlW(session, u"http://h/", u"", 0), InternetHandle::kNone);
    EXPECT_EQ(inner_.OpenHandles(), open);
  }
}

}  // namespace
}  // namespace recorder
