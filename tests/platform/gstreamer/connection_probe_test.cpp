// The second look at a server that gave no answer: what it finds is covered by the causes of failures; here
// is how it begins and ends.
#include "platform/gstreamer/connection_probe.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>

#include "tests/support/child_process.h"
#include "tests/support/media_http_server.h"

namespace gstreamer_test {
namespace {

using namespace std::chrono_literals;
using platform::PlaybackFailure;
using platform::gstreamer::ConnectionProbe;
using test_support::MediaHttpServer;
using test_support::WaitUntil;

class ConnectionProbeTest : public testing::Test {
 protected:
  void Start(const std::string& address) {
    probe.Start({address, ""}, [this](PlaybackFailure failure) {
      found = failure;
      ++answers;
    });
  }
  /// An address at which the server waits for a request, and so says nothing of a secure connection.
  std::string Silent() const { return "https" + server.Url("/x").substr(4); }

  std::atomic<int> answers{0};
  std::atomic<PlaybackFailure> found{PlaybackFailure::kNone};
  MediaHttpServer server;
  ConnectionProbe probe;
};

TEST_F(ConnectionProbeTest, AServerThatAcceptsHasHungUpBefore) {
  Start(server.Url("/x"));
  ASSERT_TRUE(WaitUntil([&] { return answers == 1; }, 10s));
  EXPECT_EQ(found, PlaybackFailure::kHungUp);
}

TEST_F(ConnectionProbeTest, CancellingEndsItWithoutAnAnswer) {
  Start(Silent());
  ASSERT_TRUE(WaitUntil([&] { return server.Open() == 1; }, 10s));
  probe.Cancel();
  EXPECT_TRUE(WaitUntil([&] { return server.Open() == 0; }, 10s)) << "the connection is released";
  EXPECT_EQ(answers, 0);
}

TEST_F(ConnectionProbeTest, OnlyTheFirstStartCountsAndNoneAfterCancelling) {
  Start(Silent());
  Start(server.Url("/x"));
  ASSERT_TRUE(WaitUntil([&] { return server.Open() == 1; }, 10s));
  EXPECT_EQ(server.Connections(), 1);
  probe.Cancel();
  Start(server.Url("/x"));
  probe.Cancel();
  EXPECT_EQ(answers, 0);
  EXPECT_EQ(server.Connections(), 1);
}

TEST_F(ConnectionProbeTest, AfterCancellingNoneStarts) {
  probe.Cancel();
  Start(server.Url("/x"));
  EXPECT_FALSE(WaitUntil([&] { return server.Connections() > 0; }, 500ms));
  EXPECT_EQ(answers, 0);
}

}  // namespace
}  // namespace gstreamer_test
