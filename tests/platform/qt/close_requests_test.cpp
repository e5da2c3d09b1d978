#include "platform/qt/close_requests.h"

#include <gtest/gtest.h>

#include <csignal>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

TEST(CloseRequestsTest, SignalsCloseTheForm) {
  for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
    const QtMessageLoop loop;
    controls::Form form;
    const CloseRequests requests(form, loop);
    ::raise(signal);
    EXPECT_FALSE(form.Closing()) << "not inside the signal handler";
    EXPECT_TRUE(WaitFor([&] { return form.IsClosed(); })) << signal;
  }
}

TEST(CloseRequestsTest, SeveralSignalsCloseOnce) {
  const QtMessageLoop loop;
  controls::Form form;
  const CloseRequests requests(form, loop);
  const Counter asked(form.QueryUnload);
  for (int count = 0; count < 100; ++count) ::raise(SIGTERM);
  ASSERT_TRUE(WaitFor([&] { return form.IsClosed(); }));
  EXPECT_EQ(asked.Count(), 1);
}

TEST(CloseRequestsTest, SignalsWaitWhileOnlyPaintingIsAllowed) {
  QtMessageLoop loop;
  controls::Form form;
  const CloseRequests requests(form, loop);
  ::raise(SIGTERM);
  for (int round = 0; round < 10; ++round) loop.ProcessPaintMessages();
  EXPECT_FALSE(form.Closing());
  EXPECT_TRUE(WaitFor([&] { return form.IsClosed(); }));
}

TEST(CloseRequestsTest, FormerHandlingIsBackAfterwards) {
  struct sigaction before {};
  struct sigaction after {};
  ::sigaction(SIGTERM, nullptr, &before);
  {
    const QtMessageLoop loop;
    controls::Form form;
    const CloseRequests requests(form, loop);
  }
  ::sigaction(SIGTERM, nullptr, &after);
  EXPECT_EQ(before.sa_handler, after.sa_handler);
}

}  // namespace
}  // namespace platform::qt
