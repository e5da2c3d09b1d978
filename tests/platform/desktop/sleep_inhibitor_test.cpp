#include "platform/desktop/sleep_inhibitor.h"

#include <QDBusObjectPath>

#include "tests/platform/desktop/bus_fixture.h"

namespace platform::desktop {
namespace {

constexpr char kRequest[] = "/org/freedesktop/portal/desktop/request/1/x";

class SleepInhibitorTest : public BusTest {
 protected:
  bool OfferPortal() {
    portal_.answer = [](const QDBusMessage& call) {
      if (call.member() != QLatin1String("Inhibit")) return call.createReply();
      return call.createReply(QVariant::fromValue(QDBusObjectPath(QLatin1String(kRequest))));
    };
    return Offer(portal_, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop");
  }
  bool OfferPowerManagement() {
    power_.answer = [](const QDBusMessage& call) {
      return call.member() == QLatin1String("Inhibit") ? call.createReply(QVariant(42U)) : call.createReply();
    };
    return Offer(power_, "org.freedesktop.PowerManagement", "/org/freedesktop/PowerManagement/Inhibit");
  }
  FakeService portal_;
  FakeService power_;
};

TEST_F(SleepInhibitorTest, PortalIsAskedOnceAndItsRequestClosed) {
  ASSERT_TRUE(OfferPortal());
  ASSERT_TRUE(OfferPowerManagement());
  BusSleepInhibitor inhibitor(Program());
  inhibitor.Hold();
  inhibitor.Hold();
  ASSERT_TRUE(WaitFor([&] { return portal_.Count("Inhibit") == 1; }));
  EXPECT_EQ(portal_.calls[0].interface(), QStringLiteral("org.freedesktop.portal.Inhibit"));
  EXPECT_EQ(portal_.calls[0].signature(), QStringLiteral("sua{sv}"));
  EXPECT_EQ(portal_.calls[0].arguments().value(1).toUInt(), 4U) << "against falling asleep, nothing else";
  Settle();
  inhibitor.Hold();
  inhibitor.Release();
  ASSERT_TRUE(WaitFor([&] { return portal_.Count("Close") == 1; }));
  EXPECT_EQ(portal_.Last("Close").path(), QLatin1String(kRequest));
  EXPECT_EQ(portal_.Last("Close").interface(), QStringLiteral("org.freedesktop.portal.Request"));
  inhibitor.Release();
  Settle();
  EXPECT_EQ(portal_.calls.size(), 2U);
  EXPECT_TRUE(power_.calls.empty());
}

TEST_F(SleepInhibitorTest, WithoutThePortalThePowerManagementIsAsked) {
  ASSERT_TRUE(OfferPowerManagement());
  BusSleepInhibitor inhibitor(Program());
  inhibitor.Hold();
  ASSERT_TRUE(WaitFor([&] { return power_.Count("Inhibit") == 1; }));
  EXPECT_EQ(power_.calls[0].arguments().value(0).toString(), QStringLiteral("Funkhausplayer"));
  Settle();
  inhibitor.Release();
  ASSERT_TRUE(WaitFor([&] { return power_.Count("UnInhibit") == 1; }));
  EXPECT_EQ(power_.Last("UnInhibit").arguments().value(0).toUInt(), 42U);
}

TEST_F(SleepInhibitorTest, PortalThatCannotDoItIsPassedOver) {
  ASSERT_TRUE(OfferPortal());
  ASSERT_TRUE(OfferPowerManagement());
  portal_.answer = [](const QDBusMessage& call) {
    return call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no such interface"));
  };
  BusSleepInhibitor inhibitor(Program());
  inhibitor.Hold();
  EXPECT_TRUE(WaitFor([&] { return power_.Count("Inhibit") == 1; }));
}

TEST_F(SleepInhibitorTest, ReleaseBeforeTheAnswerEndsItWithTheAnswer) {
  ASSERT_TRUE(OfferPortal());
  portal_.holds_back = true;
  BusSleepInhibitor inhibitor(Program());
  inhibitor.Hold();
  ASSERT_TRUE(WaitFor([&] { return portal_.Count("Inhibit") == 1; }));
  inhibitor.Release();
  portal_.holds_back = false;
  Service().send(portal_.answer(portal_.calls[0]));
  EXPECT_TRUE(WaitFor([&] { return portal_.Count("Close") == 1; }));
}

TEST_F(SleepInhibitorTest, HeldAgainBeforeTheAnswerItIsKept) {
  ASSERT_TRUE(OfferPortal());
  portal_.holds_back = true;
  BusSleepInhibitor inhibitor(Program());
  inhibitor.Hold();
  ASSERT_TRUE(WaitFor([&] { return portal_.Count("Inhibit") == 1; }));
  inhibitor.Release();
  inhibitor.Hold();
  portal_.holds_back = false;
  Service().send(portal_.answer(portal_.calls[0]));
  Settle();
  EXPECT_EQ(portal_.calls.size(), 1U);
}

TEST_F(SleepInhibitorTest, EndOfTheObjectReleases) {
  ASSERT_TRUE(OfferPortal());
  {
    BusSleepInhibitor inhibitor(Program());
    inhibitor.Hold();
    ASSERT_TRUE(WaitFor([&] { return portal_.Count("Inhibit") == 1; }));
    Settle();
  }
  EXPECT_TRUE(WaitFor([&] { return portal_.Count("Close") == 1; }));
}

TEST_F(SleepInhibitorTest, DesktopWithoutAnyOfThemIsAskedAgainNextTime) {
  BusSleepInhibitor inhibitor(Program());
  inhibitor.Hold();
  Settle();
  inhibitor.Release();
  Settle();
  ASSERT_TRUE(OfferPowerManagement());
  inhibitor.Hold();
  EXPECT_TRUE(WaitFor([&] { return power_.Count("Inhibit") == 1; }));
}

TEST_F(SleepInhibitorTest, NoBusAndABusThatClosesChangeNothing) {
  ::testing::internal::CaptureStderr();
  BusSleepInhibitor nowhere(QDBusConnection(QStringLiteral("none")));
  nowhere.Hold();
  nowhere.Release();
  BusSleepInhibitor inhibitor(Program());
  inhibitor.Hold();
  bus_.Stop();
  EXPECT_TRUE(WaitFor([this] { return !Program().isConnected(); }));
  inhibitor.Release();
  inhibitor.Hold();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace platform::desktop
