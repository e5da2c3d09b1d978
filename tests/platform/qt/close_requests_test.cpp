#include "platform/qt/close_requests.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QSessionManager>
#include <QTimer>
#include <csignal>

#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

TEST(CloseRequestsTest, SignalsCloseTheForm) {
  for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
    QtMessageLoop loop;
    controls::Form form;
    const CloseRequests requests(form, loop);
    ::kill(::getpid(), signal);
    EXPECT_FALSE(form.Closing()) << "not inside the signal handler";
    EXPECT_TRUE(WaitFor([&] { return form.IsClosed(); })) << signal;
  }
}

TEST(CloseRequestsTest, SeveralSignalsCloseOnce) {
  QtMessageLoop loop;
  controls::Form form;
  const CloseRequests requests(form, loop);
  const Counter asked(form.QueryUnload);
  for (int count = 0; count < 100; ++count) ::kill(::getpid(), SIGTERM);
  ASSERT_TRUE(WaitFor([&] { return form.IsClosed(); }));
  EXPECT_EQ(asked.Count(), 1);
}

TEST(CloseRequestsTest, WhatALibraryRaisesClosesNothing) {
  QtMessageLoop loop;
  controls::Form form;
  const CloseRequests requests(form, loop);
  for (const int signal : {SIGTERM, SIGHUP, SIGINT}) ::raise(signal);
  for (int round = 0; round < 10; ++round) loop.ProcessPendingMessages();
  EXPECT_FALSE(form.Closing());
  ::kill(::getpid(), SIGTERM);
  EXPECT_TRUE(WaitFor([&] { return form.IsClosed(); }));
}

TEST(CloseRequestsTest, SignalsWaitWhileOnlyPaintingIsAllowed) {
  QtMessageLoop loop;
  controls::Form form;
  const CloseRequests requests(form, loop);
  ::kill(::getpid(), SIGTERM);
  for (int round = 0; round < 10; ++round) loop.ProcessPaintMessages();
  EXPECT_FALSE(form.Closing());
  EXPECT_TRUE(WaitFor([&] { return form.IsClosed(); }));
}

/// The session's own object, which the application keeps.
QSessionManager& Session() { return *qApp->findChild<QSessionManager*>(); }

TEST(CloseRequestsTest, LogOutThatAllowsNoQuestionEndsTheFormsSession) {
  QtMessageLoop loop;
  controls::Form form;
  const CloseRequests requests(form, loop);
  ASSERT_NE(qApp->findChild<QSessionManager*>(), nullptr);
  ASSERT_FALSE(Session().allowsInteraction()) << "there is no session manager to allow it";
  Q_EMIT qApp->commitDataRequest(Session());
  EXPECT_TRUE(form.IsClosed());
  EXPECT_EQ(form.Reason(), controls::CloseReason::kSessionEnd);
}

TEST(CloseRequestsTest, LogOutThatAllowsAQuestionClosesTheFormForTheUser) {
  QtMessageLoop loop;
  controls::Form form;
  CloseRequests requests(form, loop);
  const Counter asked(form.QueryUnload);
  requests.EndSession(CloseRequests::Interaction::kAllowed);
  EXPECT_TRUE(form.IsClosed());
  EXPECT_EQ(asked.Count(), 1);
  EXPECT_EQ(form.Reason(), controls::CloseReason::kUser);
}

TEST(CloseRequestsTest, LogOutWaitsWhileOnlyPaintingIsAllowed) {
  QtMessageLoop loop;
  controls::Form form;
  CloseRequests requests(form, loop);
  bool asked = false;
  QTimer::singleShot(0, qApp, [&] {
    asked = true;
    requests.EndSession(CloseRequests::Interaction::kRefused);
  });
  for (int round = 0; round < 50 && !asked; ++round) loop.ProcessPaintMessages();
  ASSERT_TRUE(asked);
  EXPECT_FALSE(form.Closing());
  EXPECT_TRUE(WaitFor([&] { return form.IsClosed(); }));
  EXPECT_EQ(form.Reason(), controls::CloseReason::kSessionEnd);
}

TEST(CloseRequestsTest, FormerHandlingIsBackAfterwards) {
  struct sigaction before {};
  struct sigaction after {};
  ::sigaction(SIGTERM, nullptr, &before);
  {
    QtMessageLoop loop;
    controls::Form form;
    const CloseRequests requests(form, loop);
  }
  ::sigaction(SIGTERM, nullptr, &after);
  EXPECT_EQ(before.sa_handler, after.sa_handler);
}

}  // namespace
}  // namespace platform::qt
